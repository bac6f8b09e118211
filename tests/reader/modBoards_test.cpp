#include "reader/modBoards.h"

#include <gtest/gtest.h>

#include "platform/paths.h"
#include "tests/support/ReadyBoard.h"

namespace tessaly {
namespace {

using testing::ForumRow;
using testing::PageHead;
using testing::ReadyBoard;
using Rows = std::vector<std::string>;
using Texts = std::vector<std::u16string>;

std::string Category(std::string_view name) {
    return "<!--Category: 1--><!--Text-->" + std::string(name) + "<!--/Text--><!--/Category-->\n";
}

std::string Top(std::string_view number) {
    return "<!--Top: " + std::string(number) + "-->board<!--/Top-->\n";
}

class DiscusProcessDiscusMainBoardFileTest : public ::testing::Test {
  protected:
    DiscusProcessDiscusMainBoardFileTest() {
        state.optCreateRedirectionFiles = false;
        state.DefaultUserCount = 0;
        board.AddMember(u"Admin:::::::::");
    }

    bool Read(std::string_view boardFile) {
        board.WriteBoardFile(boardFile);
        return DiscusProcessDiscusMainBoardFile(state);
    }

    // A page without sections: it becomes a forum and nothing else.
    void WritePage(const std::string& number, std::string_view name) {
        board.WritePage(number + "/" + number + ".html",
                        PageHead(number + "/Topic", number + "/" + std::string(name), "Title", "Subject"));
    }

    std::string Statement(const std::string& name, const std::string& table) {
        return "LOAD DATA LOCAL INFILE '" + testing::SqlName(board.folder.Native("output/" + name)) +
               "' INTO TABLE " + table +
               "\r\nFIELDS TERMINATED BY ','\r\nENCLOSED BY '\"'LINES TERMINATED BY '\\r\\n';\r\n\r\n\r\n";
    }

    ReadyBoard board;
    ConversionState& state = board.state;
};

using MainBoardFile = DiscusProcessDiscusMainBoardFileTest;

TEST_F(MainBoardFile, ACategoryWithoutTopsIsOneRowAndItsFileIsFinished) {
    EXPECT_TRUE(Read(Category("Main")));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"), (Rows{ForumRow(1, "Main", "c", 0, "")}));
    EXPECT_EQ(board.Output("Discus Conversion Import SQL.sql"), Statement("mybb_forums1.txt", "mybb_forums"));
    EXPECT_EQ(state.ForumsFile.Stream, nullptr);
    EXPECT_TRUE(state.cboProcessedFolders.Items.empty());
}

TEST_F(MainBoardFile, WithBothFilesThereTheCgiFileIsNotLookedAt) {
    board.WritePage("discus.cgi", Category("Other"));
    EXPECT_TRUE(Read(Category("Main")));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"), (Rows{ForumRow(1, "Main", "c", 0, "")}));
}

TEST_F(MainBoardFile, WithoutTheHtmlFileTheCgiFileIsRead) {
    board.WritePage("discus.cgi", Category("Other"));
    EXPECT_TRUE(DiscusProcessDiscusMainBoardFile(state));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"), (Rows{ForumRow(1, "Other", "c", 0, "")}));
}

TEST_F(MainBoardFile, WithNeitherFileAMessageTellsBothAndNoRowIsWritten) {
    EXPECT_FALSE(DiscusProcessDiscusMainBoardFile(state));
    const std::u16string folder = board.folder.Path("source/discus/messages");
    EXPECT_EQ(board.messages, (Texts{u"Missing File - " + folder + u"\\board-topics.html\r\nMissing File - " +
                                     folder + u"\\discus.cgi\r\nOne file must exist"}));
    EXPECT_FALSE(state.CancelRequested);
    EXPECT_EQ(state.ForumsFile.Stream, nullptr);
    EXPECT_TRUE(board.folder.Files("output").empty());
}

TEST_F(MainBoardFile, AFileWithoutACategoryWritesNothing) {
    for (const std::string_view text :
         {"", "just a page", "<!--Top: 12-->x<!--/Top-->", "<!--Category: 1--><!--Text-->Main<!--/Text-->"}) {
        EXPECT_TRUE(Read(text));
        EXPECT_TRUE(board.folder.Files("output").empty());
        EXPECT_TRUE(state.cboProcessedFolders.Items.empty());
    }
}

TEST_F(MainBoardFile, NumbersComeOutInReadingOrder) {
    WritePage("12", "Radios");
    WritePage("13", "Tapes");
    WritePage("20", "Gossip");
    EXPECT_TRUE(Read(Category("Technology") + Top("12") + Top("13") + Category("Society") + Top("20")));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"),
              (Rows{ForumRow(1, "Technology", "c", 0, ""), ForumRow(2, "Radios", "f", 1, "1"),
                    ForumRow(3, "Tapes", "f", 1, "1"), ForumRow(4, "Society", "c", 0, ""),
                    ForumRow(5, "Gossip", "f", 4, "4")}));
    EXPECT_EQ(state.cboProcessedFolders.Items, (Texts{u"12", u"13", u"20"}));
    EXPECT_EQ(state.ForumIdsByName.Get(u"society"), 4);
}

TEST_F(MainBoardFile, CountersAndTheMapOfForumsBeginAnew) {
    state.ForumCounter = 41;
    state.ForumOrder = 7;
    state.BoardSpare = 8;
    state.BoardSpare2 = 9;
    state.ForumIdsByName.Add(u"Old", 41);
    EXPECT_TRUE(Read(Category("Main")));
    EXPECT_EQ(state.ForumCounter, 1);
    EXPECT_EQ(state.ForumOrder, 1);
    EXPECT_EQ(state.BoardSpare, 0);
    EXPECT_EQ(state.BoardSpare2, 0);
    EXPECT_EQ(state.ForumIdsByName.Find(u"Old"), nullptr);
}

TEST_F(MainBoardFile, TwoCategoriesOfOneNameTakeEachItsOwnTops) {
    WritePage("12", "Radios");
    WritePage("20", "Gossip");
    EXPECT_TRUE(Read(Category("Main") + Top("12") + Category("MAIN") + Top("20")));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"),
              (Rows{ForumRow(1, "Main", "c", 0, ""), ForumRow(2, "Radios", "f", 1, "1"),
                    ForumRow(3, "MAIN", "c", 0, ""), ForumRow(4, "Gossip", "f", 3, "3")}));
    EXPECT_EQ(state.ForumIdsByName.Get(u"Main"), 3);
}

// The page takes the name away from its category: the next top hangs below the page.
TEST_F(MainBoardFile, APageOfItsCategorysNameTakesTheNextTop) {
    WritePage("12", "Main");
    WritePage("13", "Tapes");
    EXPECT_TRUE(Read(Category("Main") + Top("12") + Top("13")));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"),
              (Rows{ForumRow(1, "Main", "c", 0, ""), ForumRow(2, "Main", "f", 1, "1"),
                    ForumRow(3, "Tapes", "f", 2, "2")}));
}

TEST_F(MainBoardFile, AFileThatEndsExactlyWithACategorysHeaderIsLeftWithoutFinishingFiles) {
    std::string text = Category("Main") + Category("Last");
    text.pop_back();
    ASSERT_TRUE(text.ends_with("<!--/Category-->"));
    EXPECT_FALSE(Read(text));
    EXPECT_EQ(board.RowsOf(state.ForumsFile), (Rows{ForumRow(1, "Main", "c", 0, "")}));
    EXPECT_NE(state.ForumsFile.Stream, nullptr);
    EXPECT_FALSE(board.HasOutput("Discus Conversion Import SQL.sql"));
    EXPECT_FALSE(state.CancelRequested);
    EXPECT_TRUE(board.messages.empty());
}

TEST_F(MainBoardFile, OneCharacterBehindTheLastHeaderIsEnough) {
    EXPECT_TRUE(Read("<!--Category: 1--><!--Text-->Main<!--/Text--><!--/Category-->x"));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"), (Rows{ForumRow(1, "Main", "c", 0, "")}));
}

TEST_F(MainBoardFile, ACategoryThatTouchesTheOneBeforeIsNotFoundAndItsTopsGoToThatOne) {
    std::string first = Category("First");
    first.pop_back();
    WritePage("12", "Radios");
    EXPECT_TRUE(Read(first + Category("Second") + Top("12")));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"),
              (Rows{ForumRow(1, "First", "c", 0, ""), ForumRow(2, "Radios", "f", 1, "1")}));
}

TEST_F(MainBoardFile, ATopThatTouchesTheOneBeforeIsNotFound) {
    WritePage("12", "Radios");
    WritePage("13", "Tapes");
    WritePage("14", "Wires");
    EXPECT_TRUE(Read(Category("Main") +
                     "<!--Top: 12-->a<!--/Top--><!--Top: 13-->b<!--/Top--> <!--Top: 14-->c<!--/Top-->"));
    EXPECT_EQ(state.cboProcessedFolders.Items, (Texts{u"12", u"14"}));
    EXPECT_EQ(board.Rows("mybb_forums1.txt").size(), 3u);
}

TEST_F(MainBoardFile, ATopWithinTheCategorysOwnHeaderBelongsToIt) {
    EXPECT_TRUE(
        Read("<!--Category: 1--><!--Text-->Main<!--/Text--><!--Top: 12-->x<!--/Top--><!--/Category-->\n"));
    EXPECT_EQ(state.cboProcessedFolders.Items, (Texts{u"12"}));
}

TEST_F(MainBoardFile, TopsBeforeTheFirstCategoryAreNotWalked) {
    EXPECT_TRUE(Read(Top("12") + Category("Main") + Top("13")));
    EXPECT_EQ(state.cboProcessedFolders.Items, (Texts{u"13"}));
}

TEST_F(MainBoardFile, ATopsNumberIsTheDigitsOfTheTenCharactersBehindItsTag) {
    EXPECT_TRUE(
        Read(Category("Main") + Top("12345678901234") + Top(" 7") + Top("007x9") + Top("        42")));
    EXPECT_EQ(state.cboProcessedFolders.Items, (Texts{u"1234567890", u"7", u"007", u"42"}));
    state.cboProcessedFolders.Items.clear();
    EXPECT_TRUE(Read(Category("Main") + Top("         42")));
    EXPECT_EQ(state.cboProcessedFolders.Items, (Texts{u"4"}));
}

TEST_F(MainBoardFile, ATopWithoutANumberIsAMissingPageAndTheNextTopFollows) {
    WritePage("12", "Radios");
    EXPECT_TRUE(Read(Category("Main") + Top("x") + Top("12")));
    EXPECT_EQ(state.cboProcessedFolders.Items, (Texts{u"", u"12"}));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"),
              (Rows{ForumRow(1, "Main", "c", 0, ""), ForumRow(2, "Radios", "f", 1, "1")}));
    EXPECT_TRUE(state.txtArea.Text.starts_with(
        u"File Does Not Exist - " + board.folder.Path("source/discus/messages") +
        u"\\\\.html nor does \r\n    " + board.folder.Path("source/discus_admin_1/secure") +
        u"\\\\.html\r\n"));
}

TEST_F(MainBoardFile, ANameLosesItsTagsAndIsEscaped) {
    WritePage("12", "Radios");
    EXPECT_TRUE(Read(Category("<b>Radio, \"wire\"</b> & &auml;") + Top("12")));
    // No character file is loaded: the sequence stays.
    EXPECT_EQ(board.Rows("mybb_forums1.txt"), (Rows{ForumRow(1, "Radio([) (})wire(}) & &auml;", "c", 0, ""),
                                                    ForumRow(2, "Radios", "f", 1, "1")}));
}

TEST_F(MainBoardFile, ACategoryWithoutANameIsAForumWithAnEmptyOne) {
    WritePage("12", "Radios");
    EXPECT_TRUE(Read("<!--Category: 1-->no name<!--/Category-->\n" + Top("12")));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"),
              (Rows{ForumRow(1, "", "c", 0, ""), ForumRow(2, "Radios", "f", 1, "1")}));
}

TEST_F(MainBoardFile, TagsOfAnyCaseAreRead) {
    WritePage("12", "Radios");
    EXPECT_TRUE(
        Read("<!--CATEGORY: 1--><!--TEXT-->Main<!--/text--><!--/CATEGORY-->\n"
             "<!--TOP: 12-->x<!--/TOP-->"));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"),
              (Rows{ForumRow(1, "Main", "c", 0, ""), ForumRow(2, "Radios", "f", 1, "1")}));
}

TEST_F(MainBoardFile, SequencesOfTheBoardFileAreExchanged) {
    state.ReplaceableCharacters.Add(u"&auml;", u"\u00E4");
    EXPECT_TRUE(Read(Category("R&auml;der")));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"), (Rows{ForumRow(1,
                                                             "R\xC3\xA4"
                                                             "der",
                                                             "c", 0, "")}));
}

// The escaped back-quote and backslash look like a tag, which the forum's row loses, and with it its key.
TEST_F(MainBoardFile, ANameWhoseTokensLookLikeATagIsNotFoundForItsTops) {
    EXPECT_FALSE(Read(Category("a`b\\c") + Top("12") + Top("13")));
    EXPECT_EQ(board.RowsOf(state.ForumsFile), (Rows{ForumRow(1, "a()c", "c", 0, "")}));
    EXPECT_EQ(board.messages, (Texts{u"5 - DiscusProcessDiscusMainBoardFile() - " +
                                     board.folder.Path("source/discus/messages/board-topics.html") +
                                     u"\r\n\r\nInvalid procedure call or argument"}));
    EXPECT_TRUE(state.CancelRequested);
    // The top in hand is noted already, and the files stay unfinished.
    EXPECT_EQ(state.cboProcessedFolders.Items, (Texts{u"12"}));
    EXPECT_NE(state.ForumsFile.Stream, nullptr);
    EXPECT_FALSE(board.HasOutput("Discus Conversion Import SQL.sql"));
}

TEST_F(MainBoardFile, ACancelLeavesTheTopsStartedSoFarAndStillFinishesTheFiles) {
    board.WritePage("12/12.html", PageHead("12/T", "12/Radios", "Title", "Subject") +
                                      testing::Post(1, "Anna", "100", "one") +
                                      testing::Post(2, "Anna", "no time", "two"));
    WritePage("13", "Tapes");
    EXPECT_TRUE(Read(Category("Main") + Top("12") + Top("13") + Category("Second") + Top("13")));
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(state.cboProcessedFolders.Items, (Texts{u"12"}));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"),
              (Rows{ForumRow(1, "Main", "c", 0, ""), ForumRow(2, "Radios", "f", 1, "1")}));
    EXPECT_EQ(board.Output("Discus Conversion Import SQL.sql"), Statement("mybb_forums1.txt", "mybb_forums"));
}

TEST_F(MainBoardFile, AfterACancelNothingIsTouched) {
    state.CancelRequested = true;
    state.ForumCounter = 41;
    state.ForumIdsByName.Add(u"Old", 41);
    EXPECT_FALSE(Read(Category("Main")));
    EXPECT_EQ(state.ForumCounter, 41);
    EXPECT_NE(state.ForumIdsByName.Find(u"Old"), nullptr);
    EXPECT_TRUE(board.folder.Files("output").empty());
}

TEST_F(MainBoardFile, ForumsPostsAndLinksAreFinishedInThisOrderTheLinksWithoutAStatement) {
    board.WritePage("12/12.html",
                    PageHead("12/T", "12/Radios", "Title", "Subject") +
                        testing::Post(1, "Anna", "100",
                                      "<a href=\"http://old.example/discus/messages/12/13.html?5\">x</a>"));
    EXPECT_TRUE(Read(Category("Main") + Top("12")));
    EXPECT_EQ(board.Output("Discus Conversion Import SQL.sql"),
              Statement("mybb_forums1.txt", "mybb_forums") + Statement("mybb_posts1.txt", "mybb_posts"));
    EXPECT_EQ(board.Rows("mybb_posts1.txt").size(), 1u);
    EXPECT_EQ(board.Rows("InternalLinks1.txt").size(), 1u);
    EXPECT_EQ(state.PostsFile.Stream, nullptr);
    EXPECT_EQ(state.InternalLinksFile.Stream, nullptr);
    // Threads are finished at the end of the run.
    EXPECT_NE(state.ThreadsFile.Stream, nullptr);
}

TEST_F(MainBoardFile, TheBoardIsReadInTheRunsCharset) {
    state.Charset = u"iso-8859-1";
    EXPECT_TRUE(
        Read(Category("R\xE4"
                      "der")));
    EXPECT_EQ(board.Rows("mybb_forums1.txt"), (Rows{ForumRow(1,
                                                             "R\xE4"
                                                             "der",
                                                             "c", 0, "")}));
}

TEST_F(MainBoardFile, AFileThatCannotBeDecodedGivesNoForumsAndStopsTheRun) {
    state.Charset = u"no-such-charset";
    EXPECT_TRUE(Read(Category("Main")));
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(board.messages.size(), 1u);
    EXPECT_TRUE(board.folder.Files("output").empty());
}

}  // namespace
}  // namespace tessaly
