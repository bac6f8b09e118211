#include "reader/modThreads.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tests/support/ReadyBoard.h"

namespace tessaly {
namespace {

using testing::ForumRow;
using testing::PageHead;
using testing::Post;
using testing::ReadyBoard;
using testing::Top;
using Rows = std::vector<std::string>;
using Texts = std::vector<std::u16string>;

constexpr const char* kAnnouncement = "<!--Announcement-->closed on Monday<!--/Announcement-->\n";

// A board whose category "Main" has number 1, with the administrator as its one member.
class TopicWalk : public ::testing::Test {
  protected:
    TopicWalk() {
        state.optCreateRedirectionFiles = false;
        state.DefaultUserCount = 0;
        board.AddMember(u"Admin:::::::::");
        state.ForumCounter = 1;
        state.ForumIdsByName.Add(u"Main", 1);
    }

    static std::string Address(const std::string& page) {
        return "http://old.example/discus/messages/" + page;
    }

    // The head of page 12/<number>, whose name and subject are told.
    static std::string Head(const std::string& number, std::string_view name,
                            std::string_view subject = "Subject") {
        return PageHead("12/Topic", number + "/" + std::string(name), "Title", subject);
    }

    // A Top section that leads to a page of folder 12.
    static std::string TopTo(const std::string& number) {
        return Top(std::stoi(number), Address("12/" + number + ".html"), "sub");
    }

    void WritePage(const std::string& number, const std::string& bytes) {
        board.WritePage("12/" + number + ".html", bytes);
    }

    void WalkTop(std::u16string_view number = u"12") {
        DiscusProcessBoardTopics(state, number, u"Main", 1, false);
    }

    std::u16string Page(const std::string& number) const {
        return board.folder.Path("source/discus/messages/12/" + number + ".html");
    }

    std::u16string SecurePage(const std::string& number) const {
        return board.folder.Path("source/discus_admin_1/secure/12/" + number + ".html");
    }

    Rows Forums() const { return board.RowsOf(board.state.ForumsFile); }

    // Calls `look` wherever the walk lets the form handle what is pending.
    void AtEachEvent(std::function<void()> look) {
        state.ToolboxA.EventInterval = 0;
        state.ToolboxA.HandleEvents = std::move(look);
    }

    ReadyBoard board;
    ConversionState& state = board.state;
};

std::string ThreadRow(int tid, int fid, std::string_view subject, int firstPoster, std::string_view firstName,
                      int firstTime, int firstPost, int lastTime, std::string_view lastName, int lastPoster,
                      int views) {
    return std::to_string(tid) + "," + std::to_string(fid) + ",\"" + std::string(subject) + "\",0,0,0," +
           std::to_string(firstPoster) + ",\"" + std::string(firstName) + "\"," + std::to_string(firstTime) +
           "," + std::to_string(firstPost) + "," + std::to_string(lastTime) + ",\"" + std::string(lastName) +
           "\"," + std::to_string(lastPoster) + "," + std::to_string(views) + "," +
           std::to_string(views - 1) + ",\"\",0,0,0,\"\",1,0,0,0,0";
}

TEST_F(TopicWalk, APageWithoutSectionsIsOneForumAndNoThread) {
    WritePage("12", Head("12", "Radios"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1")}));
    EXPECT_EQ(state.ThreadsFile.Stream, nullptr);
    EXPECT_EQ(state.ThreadCounter, 0);
    EXPECT_EQ(state.ForumIdsByName.Get(u"Radios"), 2);
}

TEST_F(TopicWalk, AFinishedPageLeavesNothingBehind) {
    WritePage("12", Head("12", "Radios") + TopTo("13"));
    WritePage("13", Head("13", "Tubes") + Post(1, "Anna", "100", "one"));
    state.PreviousDepth = 7;
    WalkTop();
    EXPECT_EQ(state.Depth, 0);
    EXPECT_EQ(state.PreviousDepth, 0);
    ASSERT_EQ(state.DataIndex.size(), 1u);
    // Element 0 keeps the category's name.
    EXPECT_EQ(state.DataIndex[0].MeName, u"Main");
}

TEST_F(TopicWalk, APassTakesOneTopAndOneAnnouncement) {
    WritePage("12", Head("12", "Radios") + TopTo("13") + TopTo("14") + kAnnouncement + TopTo("15"));
    for (const char* number : {"13", "14", "15"})
        WritePage(number, Head(number, "Page " + std::string(number)));
    std::vector<std::pair<int, int>> counters{{1, 0}};
    int passes = 0;
    AtEachEvent([&] {
        const std::pair<int, int> now{state.ForumCounter, state.AnnouncementCounter};
        if (now != counters.back()) counters.push_back(now);
        if (state.DataIndex.size() > 1) passes = std::max(passes, state.DataIndex[1].PageLoopCount);
    });
    WalkTop();
    // The page, the first top, the announcement, the second top, the third top; the fourth pass finds
    // nothing.
    EXPECT_EQ(counters, (std::vector<std::pair<int, int>>{{1, 0}, {2, 0}, {3, 0}, {3, 1}, {4, 1}, {5, 1}}));
    EXPECT_EQ(passes, 3);
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1"), ForumRow(3, "Page 13", "f", 2, "1,2"),
                              ForumRow(4, "Page 14", "f", 2, "1,2"), ForumRow(5, "Page 15", "f", 2, "1,2")}));
    EXPECT_EQ(board.RowsOf(state.AnnouncementsFile),
              (Rows{R"(1,1,0,"Radios","closed on Monday",0,0,1,1,1)"}));
}

TEST_F(TopicWalk, EachAnnouncementOfAPageGetsARow) {
    WritePage("12", Head("12", "Radios") + kAnnouncement + "<!--Announcement-->two<!--/Announcement-->");
    WalkTop();
    EXPECT_EQ(board.RowsOf(state.AnnouncementsFile),
              (Rows{R"(1,1,0,"Radios","closed on Monday",0,0,1,1,1)", R"(2,1,0,"Radios","two",0,0,1,1,1)"}));
    EXPECT_EQ(Forums().size(), 1u);
}

TEST_F(TopicWalk, SectionsThatTouchAreFoundInAPage) {
    WritePage("12", Head("12", "Radios") + "<!--Top: 13--><a href=\"" + Address("12/13.html") +
                        "?9\">a</a><!--/Top--><!--Top: 14--><a href=\"" + Address("12/14.html") +
                        "?9\">b</a><!--/Top-->");
    WritePage("13", Head("13", "Tubes"));
    WritePage("14", Head("14", "Wires"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1"), ForumRow(3, "Tubes", "f", 2, "1,2"),
                              ForumRow(4, "Wires", "f", 2, "1,2")}));
}

// The page's posts carry the number that the next thread had when the page was entered, its row the number
// that it has when it is written: the sub-topic's thread came between.
TEST_F(TopicWalk, AFirstSubTopicIsEnteredBeforeThePagesOwnPosts) {
    WritePage("12", Head("12", "Radios") + Post(5, "Anna", "100", "hello") + TopTo("13") + TopTo("14"));
    WritePage("13", Head("13", "Tubes", "About tubes") + Post(6, "Bert", "200", "glass"));
    WritePage("14", Head("14", "Wires", "About wires") + Post(7, "Carl", "300", "copper"));
    WalkTop();
    EXPECT_EQ(board.RowsOf(state.PostsFile),
              (Rows{R"(1,1,0,3,"About tubes",0,2,"Bert",200,"glass",0,0,0,0,0,"12^13^6",1)",
                    R"(2,1,0,2,"Subject",0,3,"Anna",100,"hello",0,0,0,0,0,"12^12^5",1)",
                    R"(3,3,0,4,"About wires",0,4,"Carl",300,"copper",0,0,0,0,0,"12^14^7",1)"}));
    EXPECT_EQ(board.RowsOf(state.ThreadsFile),
              (Rows{ThreadRow(1, 3, "Tubes", 2, "Bert", 200, 1, 0, "Bert", 2, 1),
                    ThreadRow(2, 2, "Radios", 3, "Anna", 100, 2, 0, "Anna", 3, 1),
                    ThreadRow(3, 4, "Wires", 4, "Carl", 300, 3, 0, "Carl", 4, 1)}));
}

TEST_F(TopicWalk, ThePostsOfAPageAreTakenOnce) {
    WritePage("12", Head("12", "Radios") + TopTo("13") + Post(5, "Anna", "100", "one") + TopTo("14") +
                        Post(6, "Anna", "200", "two") + TopTo("15"));
    for (const char* number : {"13", "14", "15"}) WritePage(number, Head(number, number));
    WalkTop();
    EXPECT_EQ(board.RowsOf(state.PostsFile).size(), 2u);
    EXPECT_EQ(board.RowsOf(state.ThreadsFile).size(), 1u);
    EXPECT_EQ(Forums().size(), 4u);
}

TEST_F(TopicWalk, BehindThePostsTheSearchForThemStandsAtTheLastButOneCharacter) {
    const std::string page = Head("12", "Radios") + Post(5, "Anna", "100", "one") + TopTo("13") + TopTo("14");
    WritePage("12", page);
    WritePage("13", Head("13", "Tubes"));
    WritePage("14", Head("14", "Wires"));
    std::vector<std::pair<Position, Position>> positions;
    AtEachEvent([&] {
        if (state.ForumCounter == 4 && state.Depth == 2) {
            positions.emplace_back(state.DataIndex[1].PostPos, state.DataIndex[1].PostNext);
        }
    });
    WalkTop();
    const auto place = static_cast<Position>(page.size()) - 1;
    ASSERT_FALSE(positions.empty());
    EXPECT_EQ(positions.front(), (std::pair<Position, Position>{place, place}));
}

TEST_F(TopicWalk, TheThreadsFirstPosterIsThatOfItsNewestPost) {
    WritePage("12", Head("12", "Radios") + Post(5, "Anna", "100", "one") + Post(6, "Bert", "200", "two") +
                        Post(7, "Carl", "300", "three") + kAnnouncement);
    WalkTop();
    // Anna is 2, Bert 3, Carl 4.
    EXPECT_EQ(board.RowsOf(state.ThreadsFile),
              (Rows{ThreadRow(1, 2, "Radios", 4, "Carl", 100, 1, 300, "Anna", 2, 3)}));
    // The announcement comes behind the posts and takes the first poster.
    EXPECT_EQ(board.RowsOf(state.AnnouncementsFile),
              (Rows{R"(1,1,4,"Radios","closed on Monday",0,0,1,1,1)"}));
}

TEST_F(TopicWalk, APageNewestFirstHasTheSameFirstPoster) {
    WritePage("12", Head("12", "Radios") + Post(7, "Carl", "300", "three") + Post(6, "Bert", "200", "two") +
                        Post(5, "Anna", "100", "one"));
    WalkTop();
    // Carl is 2, Bert 3, Anna 4.
    EXPECT_EQ(board.RowsOf(state.ThreadsFile),
              (Rows{ThreadRow(1, 2, "Radios", 2, "Carl", 100, 1, 300, "Anna", 4, 3)}));
}

TEST_F(TopicWalk, APostSectionWithoutItsExactCounterpartStillMakesAThread) {
    WritePage("12", Head("12", "Radios") + "<!--Post: 5-->lost<!--/Post: 6-->");
    WalkTop();
    EXPECT_EQ(state.PostsFile.Stream, nullptr);
    EXPECT_EQ(board.RowsOf(state.ThreadsFile),
              (Rows{ThreadRow(1, 2, "Radios", 1, "Admin", 0, 1, 0, "Admin", 1, 1)}));
}

TEST_F(TopicWalk, WithoutASubjectOfThePageInHandNoSubTopicIsEntered) {
    WritePage("12",
              "<!--Topic: 12/Topic--><!--Me: 12/Radios-->" +
                  std::string("<!--Top: 13--><a href=\"/discus/messages/12/13.html\">Tubes</a><!--/Top-->") +
                  "<!--Top: 14-->no link<!--/Top-->" + Post(5, "Anna", "100", "one") + kAnnouncement);
    WritePage("13", Head("13", "Tubes"));
    WalkTop();
    const std::u16string line = u"\r\nEncountered Topic with no Subject on - " + Page("12") + u"\r\n";
    const std::u16string area = board.TakeArea();
    const auto first = area.find(line);
    ASSERT_NE(first, area.npos);
    EXPECT_NE(area.find(line, first + 1), area.npos);
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1")}));
    EXPECT_EQ(board.RowsOf(state.PostsFile),
              (Rows{R"(1,1,0,2,"",0,2,"Anna",100,"one",0,0,0,0,0,"12^12^5",1)"}));
    EXPECT_EQ(board.RowsOf(state.ThreadsFile).size(), 1u);
    EXPECT_EQ(board.RowsOf(state.AnnouncementsFile).size(), 1u);
    EXPECT_FALSE(state.CancelRequested);
}

// The link of the page's own Top section can be the first link with a query.
TEST_F(TopicWalk, TheSubjectIsTheTextOfTheFirstLinkWithAQueryWhereverItStands) {
    WritePage("12", "<!--Topic: 12/Topic--><!--Me: 12/Radios--><a href=\"/x.html\">plain</a>" + TopTo("13") +
                        "<a href=\"/y.html?1\">later</a>" + Post(5, "Anna", "100", "one"));
    WritePage("13", Head("13", "Tubes"));
    WalkTop();
    EXPECT_EQ(board.RowsOf(state.PostsFile),
              (Rows{R"(1,1,0,2,"sub",0,2,"Anna",100,"one",0,0,0,0,0,"12^12^5",1)"}));
}

std::string SubjectColumn(const std::string& link) {
    ReadyBoard board;
    board.state.optCreateRedirectionFiles = false;
    board.AddMember(u"Admin:::::::::");
    board.WritePage("12/12.html",
                    "<!--Topic: 12/Topic--><!--Me: 12/Radios-->" + link + Post(5, "Admin", "100", "one"));
    DiscusProcessBoardTopics(board.state, u"12", u"Main", 1, false);
    const Rows rows = board.RowsOf(board.state.PostsFile);
    if (rows.size() != 1) return "no row";
    constexpr std::string_view kBefore = "1,1,0,1,\"";
    constexpr std::string_view kBehind = "\",0,2,\"Admin\",100,\"one\",0,0,0,0,0,\"12^12^5\",1";
    if (!rows[0].starts_with(kBefore) || !rows[0].ends_with(kBehind)) return rows[0];
    return rows[0].substr(kBefore.size(), rows[0].size() - kBefore.size() - kBehind.size());
}

TEST(PageSubject, ItLosesItsTagsAndIsEscaped) {
    EXPECT_EQ(SubjectColumn("<a href=\"1.html?9\"><b>Tubes, \"old\"</b></a>"), "Tubes([) (})old(})");
}

TEST(PageSubject, ItBeginsBehindTheFirstGreaterThanBehindTheQuery) {
    EXPECT_EQ(SubjectColumn("<a href=\"1.html?9\" title=\"x>y\">z</a>"), "y(})>z");
}

TEST(PageSubject, ALinkWithoutTextOrWithoutAnEndGivesNone) {
    EXPECT_EQ(SubjectColumn("<a href=\"1.html?9\"></a>"), "");
    EXPECT_EQ(SubjectColumn("<a href=\"1.html?9\">endless"), "");
    EXPECT_EQ(SubjectColumn("<a href=\"1.html?9</a>"), "");
    EXPECT_EQ(SubjectColumn("<a href=\"1.html\">no query</a>"), "");
}

TEST(PageSubject, TheLinksCaseDoesNotMatter) {
    EXPECT_EQ(SubjectColumn("<A HREF=\"1.HTML?9\">Tubes</A>"), "Tubes");
}

TEST_F(TopicWalk, ThreeLevelsDeepEachRowTellsTheForumsAboveIt) {
    WritePage("12", Head("12", "One") + TopTo("13") + TopTo("16"));
    WritePage("13", Head("13", "Two") + TopTo("14"));
    WritePage("14", Head("14", "Three") + TopTo("15"));
    WritePage("15", Head("15", "Four"));
    WritePage("16", Head("16", "Two again"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "One", "f", 1, "1"), ForumRow(3, "Two", "f", 2, "1,2"),
                              ForumRow(4, "Three", "f", 3, "1,2,3"), ForumRow(5, "Four", "f", 4, "1,2,3,4"),
                              ForumRow(6, "Two again", "f", 2, "1,2")}));
}

TEST_F(TopicWalk, TheProgressTellsEachPageWithItsIndent) {
    WritePage("12", Head("12", "Radios") + TopTo("13"));
    WritePage("13", Head("13", "Tubes, old"));
    WalkTop();
    EXPECT_EQ(board.TakeArea(), u"\r\n\r\n\tProcessing Page Topic - Radios - " + Page("12") +
                                    u"\r\n\tProcessing Topic - Radios\r\n" +
                                    u"\r\n\r\n\t\tProcessing Page Topic - Tubes([) old - " + Page("13") +
                                    u"\r\n");
}

TEST_F(TopicWalk, ProgressIsNotForced) {
    state.optDisplay = false;
    WritePage("12", "<!--Me: 12/Radios--><!--Top: 13-->x<!-- Topic Hidden --><!--/Top-->" +
                        Post(5, "Anna", "100", "one"));
    WalkTop();
    EXPECT_EQ(state.txtArea.Text, u"");
}

TEST_F(TopicWalk, TheCountOfMessagesIsShownAtEachPage) {
    WritePage("12", Head("12", "Radios") + TopTo("13") + TopTo("14"));
    WritePage("13", Head("13", "Tubes") + Post(5, "Anna", "100", "one") + Post(6, "Anna", "200", "two"));
    WritePage("14", Head("14", "Wires"));
    Texts shown;
    state.txtMsgCount.Changed = [&] { shown.push_back(state.txtMsgCount.Text); };
    WalkTop();
    EXPECT_EQ(shown, (Texts{u"0", u"0", u"2"}));
}

TEST_F(TopicWalk, APageOnlyInTheSecureFolderIsReadFromThereWithTheOption) {
    board.WriteSecurePage("12/12.html", Head("12", "Radios"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1")}));
    EXPECT_NE(board.TakeArea().find(u"Processing Page Topic - Radios - " + SecurePage("12")),
              std::u16string::npos);
}

TEST_F(TopicWalk, APageOnlyInTheSecureFolderIsPassedOverSilentlyWithoutTheOption) {
    state.optCreateHiddenTopics = false;
    board.WriteSecurePage("12/12.html", Head("12", "Radios"));
    WalkTop();
    EXPECT_EQ(Forums(), Rows{});
    EXPECT_EQ(state.txtArea.Text, u"");
    EXPECT_EQ(state.Depth, 0);
    EXPECT_EQ(state.DataIndex.size(), 1u);
}

TEST_F(TopicWalk, APageInBothFoldersIsThePublicOne) {
    WritePage("12", Head("12", "Radios"));
    board.WriteSecurePage("12/12.html", Head("12", "Secret"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1")}));
}

TEST_F(TopicWalk, AMissingPageIsReportedWithBothItsPathsAndTheWalkGoesOn) {
    state.optDisplay = false;
    WritePage("12", Head("12", "Radios") + TopTo("13") + TopTo("14"));
    WritePage("14", Head("14", "Wires"));
    WalkTop();
    EXPECT_EQ(state.txtArea.Text,
              u"File Does Not Exist - " + Page("13") + u" nor does \r\n    " + SecurePage("13") + u"\r\n");
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1"), ForumRow(3, "Wires", "f", 2, "1,2")}));
    EXPECT_FALSE(state.CancelRequested);
    EXPECT_EQ(state.Depth, 0);
}

TEST_F(TopicWalk, AMissingPageIsReportedInTheErrorLogToo) {
    board.WriteBoardFile(testing::BoardFile("Main", {12}));
    board.Convert();
    const std::string report = "File Does Not Exist - ";
    EXPECT_NE(board.Output("LogError.txt").find(report), std::string::npos);
    EXPECT_NE(board.Log().find(u"File Does Not Exist - " + Page("12")), std::u16string::npos);
}

TEST_F(TopicWalk, AMissingPageIsPassedOverSilentlyWithoutTheOption) {
    state.optCreateHiddenTopics = false;
    WalkTop();
    EXPECT_EQ(state.txtArea.Text, u"");
    EXPECT_EQ(state.Depth, 0);
}

TEST_F(TopicWalk, AHiddenLinkLeadsToTheSecureFolderAndTheReportNamesThePageThatHoldsIt) {
    WritePage("12", Head("12", "Radios") + "<!--Top: 13--><!-- Topic Hidden --><a href=\"" +
                        Address("77/13.html") + "?9\">x</a><!--/Top-->");
    board.WriteSecurePage("77/13.html", Head("13", "Secret"));
    board.WritePage("77/13.html", Head("13", "Public"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1"), ForumRow(3, "Secret", "f", 2, "1,2")}));
    const std::u16string area = board.TakeArea();
    EXPECT_NE(area.find(u"\r\nEncountered Hidden Topic - " + Page("12") + u"\r\n"), area.npos);
    EXPECT_NE(area.find(u" - Secret - " + board.folder.Path("source/discus_admin_1/secure/77/13.html")),
              area.npos);
}

TEST_F(TopicWalk, AHiddenLinkIsFollowedWithoutTheOptionToo) {
    state.optCreateHiddenTopics = false;
    WritePage("12", Head("12", "Radios") + "<!--Top: 13--><!-- TOPIC hidden --><a href=\"" +
                        Address("12/13.html") + "?9\">x</a><!--/Top-->");
    board.WriteSecurePage("12/13.html", Head("13", "Secret"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1"), ForumRow(3, "Secret", "f", 2, "1,2")}));
}

TEST_F(TopicWalk, HiddenCountsForTheTopThatSaysSoAlone) {
    WritePage("12", Head("12", "Radios") + "<!--Top: 13--><!-- Topic Hidden --><a href=\"" +
                        Address("12/13.html") + "?9\">x</a><!--/Top-->" + TopTo("14"));
    board.WriteSecurePage("12/13.html", Head("13", "Secret"));
    WritePage("14", Head("14", "Wires"));
    WalkTop();
    EXPECT_EQ(Forums().back(), ForumRow(4, "Wires", "f", 2, "1,2"));
}

TEST_F(TopicWalk, APageFoundInTheSecureFolderIsForgottenToBeHiddenWhenItsSectionsCome) {
    state.optCreateRedirectionFiles = true;
    board.WriteSecurePage("12/12.html", Head("12", "Radios") + Post(5, "Anna", "100", "one"));
    WalkTop();
    EXPECT_FALSE(state.HiddenTopic);
    EXPECT_TRUE(board.HasOutput("redirect/discus/messages/12/12.html"));
    EXPECT_FALSE(board.HasOutput("redirect/discus_admin_1/secure/12/12.html"));
}

// A sub-topic without sections leaves `HiddenTopic` as its own search for a file set it, and so the page
// above counts as hidden while its own posts are taken.
TEST_F(TopicWalk, WhetherAPageIsHiddenIsNotRestoredBehindItsSubTopic) {
    state.optCreateRedirectionFiles = true;
    WritePage("12", Head("12", "Radios") + TopTo("13") + Post(5, "Anna", "100", "one"));
    board.WriteSecurePage("12/13.html", Head("13", "Empty"));
    WalkTop();
    EXPECT_TRUE(board.HasOutput("redirect/discus_admin_1/secure/12/12.html"));
    EXPECT_FALSE(board.HasOutput("redirect/discus/messages/12/12.html"));
}

TEST_F(TopicWalk, AHiddenSubTopicWithSectionsLeavesThePageAbovePublic) {
    state.optCreateRedirectionFiles = true;
    WritePage("12", Head("12", "Radios") + "<!--Top: 13--><!-- Topic Hidden --><a href=\"" +
                        Address("12/13.html") + "?9\">x</a><!--/Top-->" + Post(5, "Anna", "100", "one"));
    board.WriteSecurePage("12/13.html", Head("13", "Secret") + kAnnouncement);
    WalkTop();
    EXPECT_TRUE(board.HasOutput("redirect/discus/messages/12/12.html"));
    EXPECT_TRUE(board.HasOutput("redirect/discus_admin_1/secure/12/13.html"));
}

TEST_F(TopicWalk, TheRedirectionPageOfASubTopicTellsThePageInHand) {
    state.optCreateRedirectionFiles = true;
    WritePage("12", PageHead("12/Hobby", "12/Radios", "<b>Old</b>, cold", "About") + TopTo("13"));
    WritePage("13", Head("13", "Tubes"));
    WalkTop();
    EXPECT_EQ(board.Output("redirect/discus/messages/12/13.html"),
              "Hobby|About|1.0|Old([) cold|http://new.example/");
}

TEST_F(TopicWalk, ALinkMayGoWithoutQuotesAndEndsAtItsFirstQuestionMark) {
    WritePage("12", Head("12", "Radios") +
                        "<!--Top: 13--><A HREF=/discus/messages/12/13.html?9?8>x</a><!--/Top-->");
    WritePage("13", Head("13", "Tubes"));
    WalkTop();
    EXPECT_EQ(Forums().size(), 2u);
}

TEST_F(TopicWalk, ATopWithoutALinkIsAMissingPage) {
    state.optDisplay = false;
    WritePage("12", Head("12", "Radios") + "<!--Top: 13-->no link<!--/Top-->");
    WalkTop();
    EXPECT_EQ(state.txtArea.Text, u"File Does Not Exist - " + board.folder.Path("source/discus/messages") +
                                      u"\\\\ nor does \r\n    " +
                                      board.folder.Path("source/discus_admin_1/secure") + u"\\\\\r\n");
    EXPECT_FALSE(state.CancelRequested);
}

TEST_F(TopicWalk, ALinkWhoseOnlySlashIsItsFirstCharacterStopsTheRun) {
    WritePage("12", Head("12", "Radios") + "<!--Top: 13--><a href=\"/13.html?9\">x</a><!--/Top-->");
    WalkTop();
    EXPECT_EQ(board.messages, (Texts{u"5 - DiscusProcessBoardTopics() - " + Page("12") +
                                     u"\r\n\r\nInvalid procedure call or argument"}));
    EXPECT_TRUE(state.CancelRequested);
}

TEST_F(TopicWalk, ALinkOutOfTheSourceIsAMissingPage) {
    state.optDisplay = false;
    board.folder.Write("outside.html", Head("13", "Outside"));
    WritePage("12",
              Head("12", "Radios") +
                  "<!--Top: 13--><a href=\"/discus/12/..\\..\\..\\..\\outside.html?9\">x</a><!--/Top-->");
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1")}));
    EXPECT_TRUE(state.txtArea.Text.starts_with(u"File Does Not Exist - " +
                                               board.folder.Path("source/discus/messages") +
                                               u"\\12\\..\\..\\..\\..\\outside.html nor does "));
}

TEST_F(TopicWalk, ALinkWithPointsThatStaysWithinTheSourceIsFollowed) {
    WritePage("12", Head("12", "Radios") +
                        "<!--Top: 13--><a href=\"/discus/12/..\\20\\13.html?9\">x</a><!--/Top-->");
    board.WritePage("20/13.html", Head("13", "Tubes"));
    WalkTop();
    EXPECT_EQ(Forums().size(), 2u);
}

TEST_F(TopicWalk, ASymbolicLinkOutOfTheSourceIsAMissingPage) {
    board.folder.Write("outside.html", Head("13", "Outside"));
    WritePage("12", Head("12", "Radios") + TopTo("13") + TopTo("14"));
    std::filesystem::create_symlink(board.folder.Native("outside.html"),
                                    board.folder.Native("source/discus/messages/12/13.html"));
    board.folder.Write("source/elsewhere/14.html", Head("14", "Wires"));
    std::filesystem::create_symlink(board.folder.Native("source/elsewhere/14.html"),
                                    board.folder.Native("source/discus/messages/12/14.html"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1"), ForumRow(3, "Wires", "f", 2, "1,2")}));
}

TEST_F(TopicWalk, APageIsFoundInAnotherSpelling) {
    WritePage("12", Head("12", "Radios") + Top(13, "/discus/messages/12/ABC.HTML", "x"));
    WritePage("abc", Head("13", "Tubes"));
    WalkTop();
    EXPECT_EQ(Forums().size(), 2u);
}

TEST_F(TopicWalk, TheFileNumberIsTheDigitsOfThePathsLastStep) {
    board.WritePage("12/034abc5.html", Head("13", "Tubes") + Post(5, "Anna", "100", "one"));
    DiscusProcessBoardTopics(state, board.folder.Path("source/discus/messages/12/034abc5.html"), u"Main", 1,
                             true);
    EXPECT_EQ(board.RowsOf(state.PostsFile),
              (Rows{R"(1,1,0,2,"Subject",0,2,"Anna",100,"one",0,0,0,0,0,"12^034^5",1)"}));
}

TEST_F(TopicWalk, TheSecurePathIsThePathWithTheMessageFolderExchangedWhateverItsCase) {
    state.optDisplay = false;
    state.DiscusMessageFolder = u"M:\\Messages\\";
    state.DiscusSecureMessageFolder = u"S:\\secure\\";
    DiscusProcessBoardTopics(state, u"m:\\MESSAGES\\12\\13.html", u"Main", 1, true);
    EXPECT_EQ(state.txtArea.Text,
              u"File Does Not Exist - m:\\MESSAGES\\12\\13.html nor does \r\n"
              u"    S:\\secure\\12\\13.html\r\n");
}

TEST_F(TopicWalk, NamesAreComparedWithoutRegardToCaseTheKelvinSignIncluded) {
    // The sub-topic takes its parent's name away, and with it the parent's posts.
    WritePage("12", Head("12", "Kilo") + TopTo("13") + Post(5, "Anna", "100", "one") + TopTo("14"));
    WritePage("13", Head("13", "\xE2\x84\xAAILO"));
    WritePage("14", Head("14", "Wires"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Kilo", "f", 1, "1"), ForumRow(3, "\xE2\x84\xAAILO", "f", 2, "1,2"),
                              ForumRow(4, "Wires", "f", 3, "1,3")}));
    EXPECT_EQ(board.RowsOf(state.PostsFile),
              (Rows{R"(1,1,0,3,"Subject",0,2,"Anna",100,"one",0,0,0,0,0,"12^12^5",1)"}));
    EXPECT_EQ(board.RowsOf(state.ThreadsFile),
              (Rows{ThreadRow(1, 3, "Kilo", 2, "Anna", 100, 1, 0, "Anna", 2, 1)}));
}

// The escaped back-quote and backslash look like a tag, which the forum's row loses, and with it its key.
TEST_F(TopicWalk, ANameWhoseTokensLookLikeATagIsNotFoundAndStopsTheRun) {
    WritePage("12", Head("12", "a`b\\c") + Post(5, "Anna", "100", "one"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "a()c", "f", 1, "1")}));
    EXPECT_EQ(board.messages, (Texts{u"5 - DiscusProcessBoardTopics() - " + Page("12") +
                                     u"\r\n\r\nInvalid procedure call or argument"}));
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(state.Depth, 1);
}

TEST_F(TopicWalk, AnEmptyFileIsAForumWithoutAName) {
    WritePage("12", "");
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "", "f", 1, "1")}));
    EXPECT_EQ(board.TakeArea(), u"\r\n\r\n\tProcessing Page  -  - " + Page("12") + u"\r\n");
    EXPECT_FALSE(state.CancelRequested);
}

TEST_F(TopicWalk, SectionsWithoutAnEndAreNone) {
    WritePage("12", Head("12", "Radios") + "<!--Top: 13--><!--Announcement-->x<!--Post: 5-->y");
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "Radios", "f", 1, "1")}));
    EXPECT_EQ(state.ThreadsFile.Stream, nullptr);
    EXPECT_EQ(state.AnnouncementsFile.Stream, nullptr);
}

TEST_F(TopicWalk, APageThatCannotBeReadIsAForumWithoutANameAndStopsTheRun) {
    if (!std::filesystem::exists("/proc/self/mem")) GTEST_SKIP() << "this system has no such file";
    state.DiscusMainFolder = u"\\proc\\self\\";
    board.folder.MakeFolder("source/discus/messages/12");
    std::filesystem::create_symlink("/proc/self/mem",
                                    board.folder.Native("source/discus/messages/12/12.html"));
    WalkTop();
    EXPECT_EQ(Forums(), (Rows{ForumRow(2, "", "f", 1, "1")}));
    EXPECT_EQ(board.messages,
              (Texts{u"57 - GetFileDataCharset() - " + Page("12") + u"\r\n\r\nDevice I/O error"}));
    EXPECT_EQ(state.Depth, 1);
}

TEST_F(TopicWalk, APageThatLeadsBackToItselfEndsWithoutACrash) {
    WritePage("12", Head("12", "Radios") + TopTo("12"));
    WalkTop();
    EXPECT_EQ(board.messages,
              (Texts{u"28 - DiscusProcessBoardTopics() - " + Page("12") + u"\r\n\r\nOut of stack space"}));
    EXPECT_TRUE(state.CancelRequested);
    EXPECT_EQ(state.Depth, 1001);
    EXPECT_EQ(state.ForumCounter, 1001);
}

TEST_F(TopicWalk, AfterACancelNothingIsEntered) {
    WritePage("12", Head("12", "Radios"));
    state.CancelRequested = true;
    state.HiddenTopic = true;
    WalkTop();
    EXPECT_EQ(state.Depth, 0);
    EXPECT_TRUE(state.HiddenTopic);
    EXPECT_EQ(state.ForumsFile.Stream, nullptr);
}

TEST_F(TopicWalk, ACancelDeepInTheTreeLeavesTheDepthAndTheIndexAsTheyAre) {
    WritePage("12", Head("12", "One") + TopTo("13"));
    WritePage("13", Head("13", "Two") + TopTo("14") + TopTo("15"));
    WritePage("14", Head("14", "Three") + kAnnouncement);
    WritePage("15", Head("15", "Four"));
    AtEachEvent([&] {
        if (state.ForumCounter == 4) state.CancelRequested = true;
    });
    WalkTop();
    EXPECT_EQ(state.Depth, 3);
    ASSERT_EQ(state.DataIndex.size(), 4u);
    EXPECT_EQ(state.DataIndex[3].MeName, u"Three");
    EXPECT_EQ(state.DataIndex[2].MeName, u"Two");
    EXPECT_EQ(Forums().size(), 3u);
    EXPECT_TRUE(board.messages.empty());
}

// The steps behind a sub-topic go by the depth in hand, which a cancel leaves at the sub-topic's: its
// announcement is written once more for each page above. After a cancel the step of its links gives no text.
TEST_F(TopicWalk, BehindASubTopicLeftByACancelItsOwnSectionsAreTakenForThePages) {
    WritePage("12", Head("12", "One") + TopTo("13"));
    WritePage("13", Head("13", "Two") + TopTo("14"));
    WritePage("14", Head("14", "Three") + Post(5, "Anna", "no time", "x") + kAnnouncement);
    WalkTop();
    EXPECT_EQ(board.messages, (Texts{u"13 - DiscusProcessPostsOnPage()\r\n\r\nType mismatch"}));
    EXPECT_EQ(board.RowsOf(state.AnnouncementsFile),
              (Rows{R"(1,3,0,"Three","",0,0,1,1,1)", R"(2,3,0,"Three","",0,0,1,1,1)",
                    R"(3,3,0,"Three","",0,0,1,1,1)"}));
    EXPECT_EQ(state.ThreadsFile.Stream, nullptr);
    EXPECT_EQ(state.Depth, 3);
}

TEST_F(TopicWalk, AForumsListLosesItsLastCommaInTheIndexToo) {
    WritePage("12", Head("12", "Radios") + TopTo("13"));
    WritePage("13", Head("13", "Tubes"));
    Texts lists;
    AtEachEvent([&] {
        if (state.Depth == 0) return;
        const std::u16string& list = state.DataIndex[static_cast<std::size_t>(state.Depth)].ParentList;
        if (!list.empty() && (lists.empty() || lists.back() != list)) lists.push_back(list);
    });
    WalkTop();
    EXPECT_EQ(lists, (Texts{u"1,", u"1", u"1,2,", u"1,2", u"1"}));
}

TEST_F(TopicWalk, AMegabytePageOfManyTopsIsWalked) {
    std::string page = Head("12", "Radios");
    for (int top = 0; top < 12000; ++top) page += TopTo("13");
    WritePage("12", page);
    state.optDisplay = false;
    state.optCreateHiddenTopics = false;
    WalkTop();
    EXPECT_EQ(Forums().size(), 1u);
    EXPECT_FALSE(state.CancelRequested);
}

TEST(ResetDataIndex, ElementsThatFitStayAndNewOnesAreBlank) {
    ConversionState state;
    state.DataIndex[0].MeName = u"zero";
    ResetDataIndex(state, 2);
    ASSERT_EQ(state.DataIndex.size(), 3u);
    EXPECT_EQ(state.DataIndex[0].MeName, u"zero");
    EXPECT_EQ(state.DataIndex[2].TopicNumber, u"");
    EXPECT_EQ(state.DataIndex[2].TopPos, 0);
    state.DataIndex[1].MeName = u"one";
    state.DataIndex[2].MeName = u"two";
    ResetDataIndex(state, 1);
    ASSERT_EQ(state.DataIndex.size(), 2u);
    EXPECT_EQ(state.DataIndex[1].MeName, u"one");
    ResetDataIndex(state, 2);
    EXPECT_EQ(state.DataIndex[2].MeName, u"");
}

TEST(ResetDataIndex, ADepthBelow0IsAFailure) {
    ReadyBoard board;
    ResetDataIndex(board.state, -1);
    EXPECT_EQ(board.messages, (Texts{u"9 - ResetDataIndex()\r\n\r\nSubscript out of range"}));
    EXPECT_TRUE(board.state.CancelRequested);
}

TEST(InitDataIndex, TheTopicNumberBecomes0AndThePositionOfTheTopSearchStays) {
    ConversionState state;
    DataIndexElement& element = state.DataIndex[0];
    element.PageData = element.PagePath = element.SecurePagePath = element.PageName = element.TopicNumber =
        element.FileNumber = element.PostSection = element.AnnouncementSection = element.TopSection =
            element.TopicName = element.MeName = element.ParentList = element.SubPagePath =
                element.PageTitle = element.PageSubject = u"x";
    element.TopPos = element.TopNext = element.AnnouncementPos = element.AnnouncementNext = element.PostPos =
        element.PostNext = element.SparePos = element.SpareNext = element.PageLoopCount =
            element.SectionFlags = element.FirstPostId = element.LastPostId = element.FirstPosterId =
                element.LastPosterId = element.ParentForumId = element.ThreadBase = 5;
    InitDataIndex(state, 0);
    EXPECT_EQ(element.TopicNumber, u"0");
    EXPECT_EQ(element.TopPos, 5);
    for (const std::u16string* text :
         {&element.PageData, &element.PagePath, &element.SecurePagePath, &element.PageName,
          &element.FileNumber, &element.PostSection, &element.AnnouncementSection, &element.TopSection,
          &element.TopicName, &element.MeName, &element.ParentList, &element.SubPagePath, &element.PageTitle,
          &element.PageSubject}) {
        EXPECT_EQ(*text, u"");
    }
    for (const std::int32_t number :
         {element.TopNext, element.AnnouncementPos, element.AnnouncementNext, element.PostPos,
          element.PostNext, element.SparePos, element.SpareNext, element.PageLoopCount, element.SectionFlags,
          element.FirstPostId, element.LastPostId, element.FirstPosterId, element.LastPosterId,
          element.ParentForumId, element.ThreadBase}) {
        EXPECT_EQ(number, 0);
    }
}

TEST(InitDataIndex, ADepthThatIsNotThereIsAFailure) {
    for (const std::int32_t depth : {-1, 1}) {
        ReadyBoard board;
        InitDataIndex(board.state, depth);
        EXPECT_EQ(board.messages, (Texts{u"9 - InitDataIndex()\r\n\r\nSubscript out of range"}));
        EXPECT_TRUE(board.state.CancelRequested);
    }
}

}  // namespace
}  // namespace tessaly
