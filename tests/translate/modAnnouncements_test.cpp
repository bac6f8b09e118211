#include "translate/modAnnouncements.h"

#include "tests/translate/TranslateTest.h"
#include "translate/modMessages.h"

namespace tessaly {
namespace {

std::u16string Section(std::u16string_view text) {
    return u"<!--Announcement-->" + std::u16string(text) + u"<!--/Announcement-->";
}

class AnnouncementTest : public testing::TranslateTest {
  protected:
    AnnouncementTest() {
        state.PageSerial = 3;
        state.PostCounter = 77;
    }

    void Write(std::u16string_view text) {
        mybbWriteAnnouncementMsg(state, Section(text), 4, 5, u"The club");
    }

    std::vector<std::string> Announcements() { return Rows(state.AnnouncementsFile); }
};

TEST_F(AnnouncementTest, TheRowTakesForumPosterAndSubjectAsGiven) {
    Write(u"Welcome");
    EXPECT_EQ(Announcements(), (std::vector<std::string>{R"(1,4,5,"The club","Welcome",0,0,1,1,1)"}));
}

TEST_F(AnnouncementTest, UnlikeAPostItKeepsNoFormattingAndItsQuotesAsTokens) {
    Write(u"<b>Bold</b>, <font size=2>\"big\"</font> a=-1 <center>x</center>");
    EXPECT_EQ(Announcements(),
              (std::vector<std::string>{R"(1,4,5,"The club","Bold([) (})big(}) a=-1 x",0,0,1,1,1)"}));
}

TEST_F(AnnouncementTest, AnUnbalancedFontTagDoesNotEndTheRun) {
    Write(u"<font size=2><font size=3>x</font>");
    EXPECT_EQ(Announcements(), (std::vector<std::string>{R"(1,4,5,"The club","x",0,0,1,1,1)"}));
    EXPECT_FALSE(state.CancelRequested);
}

TEST_F(AnnouncementTest, NoTextButTheTagsGivesAnEmptyMessage) {
    Write(u"");
    EXPECT_EQ(Announcements(), (std::vector<std::string>{R"(1,4,5,"The club","",0,0,1,1,1)"}));
}

TEST_F(AnnouncementTest, EachAnnouncementGetsItsOwnNumber) {
    Write(u"one");
    Write(u"two");
    EXPECT_EQ(Announcements(), (std::vector<std::string>{R"(1,4,5,"The club","one",0,0,1,1,1)",
                                                         R"(2,4,5,"The club","two",0,0,1,1,1)"}));
}

TEST_F(AnnouncementTest, TheFirstLocalImageBecomesABBCodeImage) {
    Write(u"<img src=\"/discus/messages/3/p.jpg\" alt=\"P\">");
    EXPECT_EQ(
        Announcements(),
        (std::vector<std::string>{R"(1,4,5,"The club","[img]/discus/messages/3/p.jpg[/img]",0,0,1,1,1)"}));
}

TEST_F(AnnouncementTest, ALinkIsNotedWithForum0AndThePidOfTheLastPostRead) {
    board.WritePage("12/345.html", "x");
    Write(u"See <a href=\"/discus/messages/12/345.html\">there</a>");
    EXPECT_EQ(Rows(state.InternalLinksFile),
              (std::vector<std::string>{"[url=/discus/messages/12/345.html]there[/url]^^0^3^77^34^12^345"}));
    EXPECT_EQ(Announcements(),
              (std::vector<std::string>{
                  R"(1,4,5,"The club","See [url=/discus/messages/12/345.html]there[/url]",0,0,1,1,1)"}));
}

// An attachment section is not looked for; its anchor is a link like any other.
TEST_F(AnnouncementTest, AFileLinkedFromAnAnnouncementIsCopiedAndItsRowDroppedWithTheNextPage) {
    board.WritePage("12/a.txt", "hello");
    state.CurrentPosterId = 9;
    Write(
        u"<!--attachment: <a href=\"http://old.example/discus/messages/12/a.txt\" target=x>a</a>"
        u"<!--/attachment-->.");
    EXPECT_EQ(state.AttachmentCounter, 1);
    EXPECT_EQ(board.Output("attachments/1_5D41402ABC4B2A76B9719D911017C592"), "hello");
    EXPECT_EQ(state.PageAttachmentRows.Count(), 1);

    const std::string page = testing::Post(5, "Admin", "1000", "no file");
    DiscusProcessPostsOnPage(state, state.DiscusMessageFolder + u"12\\34.html", u"", u"", u"", u"", 4, 0, 0,
                             testing::Wide(page));
    EXPECT_EQ(Rows(state.PostsFile).size(), 1u);
    EXPECT_EQ(Rows(state.AttachmentsFile).size(), 0u);
    EXPECT_EQ(Announcements(), (std::vector<std::string>{R"(1,4,5,"The club",".",0,0,1,1,1)"}));
}

TEST_F(AnnouncementTest, AnImageWithoutQuotesEndsTheRunAndTheRowIsNotWritten) {
    Write(u"<img src=/discus/messages/3/p.jpg alt=P>");
    EXPECT_EQ(board.messages,
              (std::vector<std::u16string>{
                  u"5 - mybbWriteAnnouncementMsg()\r\n\r\nInvalid procedure call or argument"}));
    EXPECT_EQ(state.ToolboxA.RecordedErrors, board.messages);
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(state.AnnouncementCounter, 0);
    EXPECT_EQ(Announcements().size(), 0u);
}

TEST_F(AnnouncementTest, AFailureInTheLinksGivesARowWithAnEmptyMessage) {
    Write(u"text <a href=\"page.html\">/discus/messages/</a>");
    EXPECT_EQ(board.messages,
              (std::vector<std::u16string>{u"9 - DiscusProcessLinks()\r\n\r\nSubscript out of range"}));
    EXPECT_EQ(Announcements(), (std::vector<std::string>{R"(1,4,5,"The club","",0,0,1,1,1)"}));
}

TEST_F(AnnouncementTest, AfterACancelTheRowIsWrittenWithAnEmptyMessage) {
    state.CancelRequested = true;
    Write(u"text");
    EXPECT_EQ(Announcements(), (std::vector<std::string>{R"(1,4,5,"The club","",0,0,1,1,1)"}));
}

std::string Announcement(std::string_view text) {
    return "<!--Announcement-->" + std::string(text) + "<!--/Announcement-->\n";
}

TEST(AnnouncementsOfARunTest, TwoOnAPageAreTreatedOneAPass) {
    testing::TestBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                                      Announcement("one") + Announcement("two"));
    board.Convert();
    EXPECT_EQ(
        board.Rows("mybb_announcements1.txt"),
        (std::vector<std::string>{R"(1,1,0,"Radios","one",0,0,1,1,1)", R"(2,1,0,"Radios","two",0,0,1,1,1)"}));
}

// The forum is the one above the page, the poster the one of the page's newest post.
TEST(AnnouncementsOfARunTest, ForumAndPosterComeFromThePage) {
    testing::TestBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                                      testing::Post(1, "Anna", "1000", "first") +
                                      testing::Post(2, "Rolf", "2000", "second") + Announcement("news"));
    board.Convert();
    EXPECT_EQ(board.Rows("mybb_announcements1.txt"),
              (std::vector<std::string>{R"(1,1,3,"Radios","news",0,0,1,1,1)"}));
}

TEST(AnnouncementsOfARunTest, TheNumbersRunOnInASecondRun) {
    testing::TestBoard board;
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.WritePage("12/12.html", testing::PageHead("12/Radios", "12/Radios", "Radios", "Old radios") +
                                      Announcement("one") + Announcement("two"));
    board.Convert();
    board.Convert();
    EXPECT_EQ(
        board.Rows("mybb_announcements1.txt"),
        (std::vector<std::string>{R"(3,1,0,"Radios","one",0,0,1,1,1)", R"(4,1,0,"Radios","two",0,0,1,1,1)"}));
}

}  // namespace
}  // namespace tessaly
