#include "platform/LineReader.h"

#include <gtest/gtest.h>

#include "platform/TextFile.h"
#include "platform/TextStream.h"
#include "platform/collation.h"
#include "tests/support/MachineCharsets.h"
#include "tests/support/TemporaryFolder.h"

namespace tessaly::platform {
namespace {

using tessaly::testing::TemporaryFolder;

std::vector<std::u16string> LinesOf(const TemporaryFolder& folder, std::u16string_view charset) {
    LineReader reader(folder.Path("file.txt"), charset);
    std::vector<std::u16string> lines;
    for (std::u16string_view line; reader.Next(line);) lines.emplace_back(line);
    return lines;
}

TEST(LineReader, TakesBothKindsOfLineEndsAndALastLineWithoutOne) {
    const TemporaryFolder folder;
    folder.Write("file.txt", "a\r\nb\n\r\nc");
    EXPECT_EQ(LinesOf(folder, u"utf-8"), (std::vector<std::u16string>{u"a", u"b", u"", u"c"}));
}

TEST(LineReader, GivesNoLineOfAnEmptyFile) {
    const TemporaryFolder folder;
    folder.Write("file.txt", "");
    EXPECT_EQ(LinesOf(folder, u"utf-8"), std::vector<std::u16string>{});
}

TEST(LineReader, TellsAFileThatIsNotThere) {
    const TemporaryFolder folder;
    EXPECT_THROW(LineReader(folder.Path("none.txt"), u"utf-8"), RunTimeError);
}

TEST(LineReader, ReadsALineThatIsLongerThanABlock) {
    const TemporaryFolder folder;
    folder.Write("file.txt", std::string(3000000, 'x') + "\r\ny\r\n");
    const auto lines = LinesOf(folder, u"utf-8");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].size(), 3000000u);
    EXPECT_EQ(lines[1], u"y");
}

// What encoders write line by line comes back across the blocks, under the charsets that shift as well.
TEST(LineReader, ReadsEveryKindOfCharsetAcrossBlocks) {
    for (const std::u16string_view charset :
         {u"utf-8", u"utf-7", u"iso-8859-1", u"shift-jis", u"euc-jp", u"iso-2022-jp"}) {
        if (!tessaly::testing::IsThere(charset)) continue;
        const TemporaryFolder folder;
        const bool isWestern = charset == u"iso-8859-1";
        const std::u16string line =
            isWestern ? u"12,\"Gr\u00FC\u00DFe\"" : u"12,\"\u65E5\u672C\u8A9E \u8868\"";
        TextStream stream(charset);
        for (int at = 0; at < 100000; ++at) stream.WriteLine(line);
        stream.SaveToFile(folder.Path("file.txt"));
        const auto lines = LinesOf(folder, charset);
        ASSERT_EQ(lines.size(), 100000u);
        for (const std::u16string& read : lines) ASSERT_EQ(read, line);
    }
}

TEST(LineReader, ReadsKoreanAcrossBlocks) {
    for (const std::u16string_view charset : {u"euc-kr", u"iso-2022-kr"}) {
        if (!tessaly::testing::IsThere(charset)) continue;
        const TemporaryFolder folder;
        const std::u16string line = u"12,\"\uD55C\uAD6D\uC5B4\"";
        TextStream stream(charset);
        for (int at = 0; at < 100000; ++at) stream.WriteLine(line);
        stream.SaveToFile(folder.Path("file.txt"));
        const auto lines = LinesOf(folder, charset);
        ASSERT_EQ(lines.size(), 100000u);
        for (const std::u16string& read : lines) ASSERT_EQ(read, line);
    }
}

TEST(LookAtBytes, KnowsUtf8) {
    const TemporaryFolder folder;
    folder.Write("file.txt", "Gr\xC3\xBC\xC3\x9F\x65\n\xEF\xBF\xBD\n");
    EXPECT_TRUE(LookAtBytes(folder.Path("file.txt")).isUtf8);
    folder.Write("file.txt", "a\nGr\xFC\xDF\x65\n");
    EXPECT_FALSE(LookAtBytes(folder.Path("file.txt")).isUtf8);
    EXPECT_FALSE(LookAtBytes(folder.Path("file.txt")).hasControls);
}

TEST(LookAtBytes, FindsBytesThatWindows1252HasNoCharacterFor) {
    const TemporaryFolder folder;
    folder.Write("file.txt", "\x93\xFA\x81\x42\n");
    EXPECT_FALSE(LookAtBytes(folder.Path("file.txt")).isUtf8);
    EXPECT_TRUE(LookAtBytes(folder.Path("file.txt")).hasControls);
}

TEST(TextFileInUtf8, WritesTheTextAsItStandsWithoutAMark) {
    const TemporaryFolder folder;
    TextFile file(folder.Path("file.txt"), OpenMode::kWriting, TextFormat::kUtf8);
    file.Write(u"\u00E9\n");
    file.WriteLine(u"\U0001F389");
    file.Close();
    EXPECT_EQ(folder.Read("file.txt"), "\xC3\xA9\n\xF0\x9F\x8E\x89\r\n");
}

TEST(LooseKey, TakesCaseAccentsAndBlanksAtTheEndForNothing) {
    EXPECT_EQ(LooseKey(u"\u00C9va "), LooseKey(u"eva"));
    EXPECT_EQ(LooseKey(u"e\u0301va"), LooseKey(u"\u00E9va"));
    EXPECT_NE(LooseKey(u"eva"), LooseKey(u"evb"));
    EXPECT_NE(LooseKey(u"e va"), LooseKey(u"eva"));
    EXPECT_NE(LooseKey(u"anna1"), LooseKey(u"anna2"));
    EXPECT_NE(LooseKey(u"anna_1"), LooseKey(u"anna1"));
}

}  // namespace
}  // namespace tessaly::platform
