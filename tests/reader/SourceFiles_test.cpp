#include "reader/SourceFiles.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/ReadyBoard.h"

namespace tessaly {
namespace {

using testing::ReadyBoard;

// Writes the bytes to a file and reads it.
std::u16string Reading(ReadyBoard& board, std::string_view bytes, std::u16string_view charset = u"utf-8",
                       bool findSequences = false) {
    board.folder.Write("page.html", bytes);
    std::u16string text = u"old";
    GetFileDataCharset(board.state, board.folder.Path("page.html"), text, charset, findSequences);
    return text;
}

std::u16string ReadingANSI(ReadyBoard& board, std::string_view bytes, bool findSequences = false) {
    board.folder.Write("page.html", bytes);
    std::u16string text = u"old";
    GetFileDataANSI(board.state, board.folder.Path("page.html"), text, findSequences);
    return text;
}

TEST(GetFileDataCharset, AFileIsReadInTheCharsetGiven) {
    ReadyBoard board;
    EXPECT_EQ(Reading(board, "\xC3\xA4", u"utf-8"), u"\u00E4");
    EXPECT_EQ(Reading(board, "\xC3\xA4", u"iso-8859-1"), u"\u00C3\u00A4");
    EXPECT_EQ(Reading(board, "\xC4", u"koi8-r"), u"\u0434");
}

TEST(GetFileDataCharset, AnEmptyCharsetStandsForThatOfTheRunAndThatEmptyForUtf8) {
    ReadyBoard board;
    board.state.Charset = u"iso-8859-2";
    EXPECT_EQ(Reading(board, "\xB1", u""), u"\u0105");
    board.state.Charset.clear();
    EXPECT_EQ(Reading(board, "\xC4\x85", u""), u"\u0105");
}

TEST(GetFileDataCharset, AByteOrderMarkIsNoPartOfTheText) {
    ReadyBoard board;
    EXPECT_EQ(Reading(board, "\xEF\xBB\xBFtext"), u"text");
}

TEST(GetFileDataCharset, BytesThatDoNotDecodeBecomeReplacementCharacters) {
    ReadyBoard board;
    EXPECT_EQ(Reading(board, "a\xFFz"), u"a\uFFFDz");
}

TEST(GetFileDataCharset, AnEmptyFileGivesAnEmptyText) {
    ReadyBoard board;
    EXPECT_EQ(Reading(board, ""), u"");
    EXPECT_TRUE(board.messages.empty());
}

TEST(GetFileDataCharset, NulCharactersGo) {
    ReadyBoard board;
    EXPECT_EQ(Reading(board, std::string_view("\0a\0\0b\0", 6)), u"ab");
}

TEST(GetFileDataCharset, NulCharactersGoOnlyBehindTheSearchForSequences) {
    ReadyBoard board;
    board.state.ReplaceableCharacters.Add(u"&auml;", u"\u00E4");
    EXPECT_EQ(Reading(board, std::string_view("&au\0ml; &auml;", 14), u"utf-8", true), u"&auml; \u00E4");
    EXPECT_EQ(board.Output("Discus Special Characters.txt"), std::string_view("&au\0ml;\r\n", 9));
}

TEST(GetFileDataCharset, SequencesAreExchangedWhenAskedFor) {
    ReadyBoard board;
    board.state.ReplaceableCharacters.Add(u"&auml;", u"\u00E4");
    EXPECT_EQ(Reading(board, "&auml;", u"utf-8", true), u"\u00E4");
    EXPECT_EQ(Reading(board, "&auml;", u"utf-8", false), u"&auml;");
}

TEST(GetFileDataCharset, AFileInAnotherSpellingIsFound) {
    ReadyBoard board;
    board.folder.Write("Docs/users.txt", "anna");
    std::u16string text;
    GetFileDataCharset(board.state, board.folder.Path("DOCS/Users.txt"), text, u"utf-8", false);
    EXPECT_EQ(text, u"anna");
}

TEST(GetFileDataCharset, AFileOfFiveMegabytesIsReadWhole) {
    ReadyBoard board;
    const std::string bytes(5 * 1024 * 1024, 'x');
    EXPECT_EQ(Reading(board, bytes).size(), bytes.size());
}

TEST(GetFileDataCharset, AFileThatIsNotThereIsAFailureThatStopsTheRun) {
    ReadyBoard board;
    const std::u16string path = board.folder.Path("missing.html");
    std::u16string text = u"old";
    GetFileDataCharset(board.state, path, text, u"utf-8", true);
    const std::u16string message =
        u"3002 - GetFileDataCharset() - " + path + u"\r\n\r\nFile could not be opened.";
    EXPECT_EQ(board.messages, std::vector<std::u16string>{message});
    EXPECT_EQ(board.state.ToolboxA.RecordedErrors, std::vector<std::u16string>{message});
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(text, u"");
}

TEST(GetFileDataCharset, AFolderIsNoFile) {
    ReadyBoard board;
    const std::u16string path = board.folder.Path("output");
    std::u16string text = u"old";
    GetFileDataCharset(board.state, path, text, u"utf-8", true);
    EXPECT_EQ(board.messages, std::vector<std::u16string>{u"3002 - GetFileDataCharset() - " + path +
                                                          u"\r\n\r\nFile could not be opened."});
    EXPECT_EQ(text, u"");
}

// A regular file that opens and then cannot be read.
TEST(GetFileDataCharset, AFileThatCannotBeReadIsAFailureThatStopsTheRun) {
    if (!std::filesystem::exists("/proc/self/mem")) GTEST_SKIP() << "this system has no such file";
    ReadyBoard board;
    std::u16string text = u"old";
    GetFileDataCharset(board.state, u"\\proc\\self\\mem", text, u"utf-8", true);
    EXPECT_EQ(board.messages, std::vector<std::u16string>{
                                  u"57 - GetFileDataCharset() - \\proc\\self\\mem\r\n\r\nDevice I/O error"});
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(text, u"");
}

TEST(GetFileDataCharset, AnUnknownCharsetIsAFailureThatStopsTheRun) {
    ReadyBoard board;
    EXPECT_EQ(Reading(board, "text", u"no-such-charset"), u"");
    EXPECT_EQ(board.messages,
              std::vector<std::u16string>{u"5 - GetFileDataCharset() - " + board.folder.Path("page.html") +
                                          u"\r\n\r\nInvalid procedure call or argument"});
    EXPECT_TRUE(board.state.CancelRequested);
}

TEST(GetFileDataANSI, ItsCharsetIsFixed) {
    ReadyBoard board;
    board.state.Charset = u"utf-8";
    EXPECT_EQ(ReadingANSI(board, "\xE4"), u"\u00E4");
    EXPECT_EQ(ReadingANSI(board, "\xC3\xA4"), u"\u00C3\u00A4");
}

TEST(GetFileDataANSI, ASearchForSequencesLeavesTheTextAloneYetLogsWhatItFinds) {
    ReadyBoard board;
    board.state.ReplaceableCharacters.Add(u"&auml;", u"\u00E4");
    EXPECT_EQ(ReadingANSI(board, "&auml; &what;", true), u"&auml; &what;");
    EXPECT_EQ(board.Output("Discus Special Characters.txt"), "&what;\r\n");
}

TEST(GetFileDataANSI, NulCharactersGo) {
    ReadyBoard board;
    EXPECT_EQ(ReadingANSI(board, std::string_view("a\0b", 3)), u"ab");
}

TEST(GetFileDataANSI, AFileThatIsNotThereIsAFailureUnderItsOwnLabel) {
    ReadyBoard board;
    const std::u16string path = board.folder.Path("missing.html");
    std::u16string text = u"old";
    GetFileDataANSI(board.state, path, text, false);
    EXPECT_EQ(board.messages, std::vector<std::u16string>{u"3002 - GetFileDataANSI() - " + path +
                                                          u"\r\n\r\nFile could not be opened."});
    EXPECT_TRUE(board.state.CancelRequested);
    EXPECT_EQ(text, u"");
}

}  // namespace
}  // namespace tessaly
