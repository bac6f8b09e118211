#include "control/DetectCharset.h"

#include <gtest/gtest.h>

#include "tests/support/Program.h"
#include "tests/support/TestBoard.h"

namespace tessaly {
namespace {

using testing::SettingIn;
using testing::TemporaryFolder;
using testing::TestBoard;

std::optional<std::string> CharsetSettingOf(const TestBoard& board) {
    return SettingIn(board.folder.Read("program/tessaly-test.ini"), "Charset");
}

TEST(FindTheFile, FindsAFileOneLevelBelowTheFolder) {
    TemporaryFolder folder;
    folder.Write("messages/12/12.html", "");
    EXPECT_EQ(FindTheFile(folder.Path("messages"), u".html"), folder.Path("messages/12/12.html"));
    EXPECT_EQ(FindTheFile(folder.Path("messages") + u"\\", u".html"), folder.Path("messages/12/12.html"));
}

TEST(FindTheFile, PassesOverTheFilesOfTheFolderItself) {
    TemporaryFolder folder;
    folder.Write("messages/board-topics.html", "");
    folder.MakeFolder("messages/12");
    EXPECT_EQ(FindTheFile(folder.Path("messages"), u".html"), u"");
}

TEST(FindTheFile, DropsTheHitsOfDeeperLevels) {
    TemporaryFolder folder;
    folder.Write("messages/12/deep/1.html", "");
    EXPECT_EQ(FindTheFile(folder.Path("messages"), u".html"), u"");
    folder.Write("messages/13/2.html", "");
    EXPECT_EQ(FindTheFile(folder.Path("messages"), u".html"), folder.Path("messages/13/2.html"));
}

TEST(FindTheFile, GivesNothingWithoutSubfolders) {
    TemporaryFolder folder;
    folder.MakeFolder("messages");
    EXPECT_EQ(FindTheFile(folder.Path("messages"), u".html"), u"");
}

TEST(FindTheFile, TellsUpperFromLowerCase) {
    TemporaryFolder folder;
    folder.Write("messages/1/1.HTML", "");
    folder.Write("messages/2/2.html", "");
    EXPECT_EQ(FindTheFile(folder.Path("messages"), u".html"), folder.Path("messages/2/2.html"));
}

TEST(FindTheFile, FindsThePatternAnywhereInTheName) {
    TemporaryFolder folder;
    folder.Write("messages/1/1.html.bak", "");
    EXPECT_EQ(FindTheFile(folder.Path("messages"), u".html"), folder.Path("messages/1/1.html.bak"));
}

TEST(FindTheFile, GoesByTheNamesIgnoringCase) {
    TemporaryFolder folder;
    folder.Write("messages/B/1.html", "");
    folder.Write("messages/a/Z.html", "");
    folder.Write("messages/a/y.html", "");
    EXPECT_EQ(FindTheFile(folder.Path("messages"), u".html"), folder.Path("messages/a/y.html"));
}

TEST(FindTheFile, TakesNoFolderForAFile) {
    TemporaryFolder folder;
    folder.MakeFolder("messages/12/folder.html");
    EXPECT_EQ(FindTheFile(folder.Path("messages"), u".html"), u"");
}

TEST(FindTheFile, RaisesWhenTheFolderIsNotThere) {
    TemporaryFolder folder;
    EXPECT_EQ(IgnoringErrors([&] { FindTheFile(folder.Path("nowhere"), u".html"); }), 76);
}

TEST(DetectCharset, GivesAnUpperCaseValueInLowerCase) {
    TestBoard board;
    board.WritePage("1/1.html", "<meta content=\"text/html; charset=ISO-8859-2\">");
    EXPECT_EQ(DetectCharset(board.state), u"");
    EXPECT_EQ(board.state.Charset, u"iso-8859-2");
    EXPECT_EQ(board.state.cboCharset.Text, u"iso-8859-2");
    EXPECT_EQ(CharsetSettingOf(board), "iso-8859-2");
}

TEST(DetectCharset, TakesAllUpToTheNextQuote) {
    TestBoard board;
    board.WritePage("1/1.html", "<meta content=\"text/html; charset= Big5 ; x\" a=\"b\">");
    DetectCharset(board.state);
    EXPECT_EQ(board.state.Charset, u" big5 ; x");
}

TEST(DetectCharset, TakesAnEmptyValueAsItIs) {
    TestBoard board;
    board.WritePage("1/1.html", "<meta content=\"text/html; charset=\">");
    DetectCharset(board.state);
    EXPECT_EQ(board.state.Charset, u"");
    EXPECT_EQ(board.state.cboCharset.Text, u"");
}

TEST(DetectCharset, TakesUtf8ForAPageThatNamesNone) {
    TestBoard board;
    board.WritePage("1/1.html", "<html>");
    DetectCharset(board.state);
    EXPECT_EQ(board.state.Charset, u"utf-8");
    EXPECT_EQ(CharsetSettingOf(board), "utf-8");
}

TEST(DetectCharset, TellsUpperFromLowerCaseInTheTag) {
    TestBoard board;
    board.WritePage("1/1.html", "<META CONTENT=\"TEXT/HTML; CHARSET=koi8-r\">");
    DetectCharset(board.state);
    EXPECT_EQ(board.state.Charset, u"utf-8");
}

TEST(DetectCharset, LooksAtTheFirstPageAlone) {
    TestBoard board;
    board.WritePage("1/1.html", "<html>");
    board.WritePage("2/2.html", "<meta content=\"text/html; charset=koi8-r\">");
    DetectCharset(board.state);
    EXPECT_EQ(board.state.Charset, u"utf-8");
}

TEST(DetectCharset, BlanksTheBoxWithoutAPage) {
    TestBoard board;
    board.WriteBoardFile("<meta content=\"text/html; charset=koi8-r\">");
    board.state.cboCharset.SetText(u"koi8-r");
    DetectCharset(board.state);
    EXPECT_EQ(board.state.cboCharset.Text, u"");
    EXPECT_EQ(CharsetSettingOf(board), "");
}

TEST(DetectCharset, LooksBelowTheFieldsFolderAndNotTheVariables) {
    TestBoard board;
    board.folder.Write("other/1/1.html", "<meta content=\"text/html; charset=koi8-r\">");
    board.state.txtDiscusMessageFolder.SetText(board.folder.Path("other"));
    DetectCharset(board.state);
    EXPECT_EQ(board.state.Charset, u"koi8-r");
}

TEST(DetectCharset, RaisesForATagThatNoQuoteEnds) {
    TestBoard board;
    board.WritePage("1/1.html", "<meta content='text/html; charset=koi8-r'>");
    EXPECT_EQ(IgnoringErrors([&] { DetectCharset(board.state); }), 5);
}

TEST(DetectCharset, RaisesWithoutAMessageFolder) {
    TestBoard board;
    board.state.txtDiscusMessageFolder.SetText(board.folder.Path("nowhere"));
    EXPECT_EQ(IgnoringErrors([&] { DetectCharset(board.state); }), 76);
}

}  // namespace
}  // namespace tessaly
