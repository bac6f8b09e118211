#include "finish/FinishBoard.h"

#include <gtest/gtest.h>

#include "tests/finish/ImportBoard.h"

namespace tessaly {
namespace {

using testing::ImportBoard;
using Values = std::vector<std::string>;

// Columns of the tables, from 0.
enum ForumColumn { kFid = 0, kForumName, kType = 3, kParent, kParentList, kOrder, kThreads = 9, kPosts };
enum ThreadColumn {
    kTid = 0,
    kThreadForum,
    kThreadSubject,
    kThreadUid,
    kThreadUser,
    kThreadTime,
    kFirstPost,
    kLastTime,
    kLastPoster,
    kLastUid,
    kViews,
    kReplies,
    kAttachments
};
enum PostColumn { kPid = 0, kPostThread, kPostForum, kPostSubject, kPostUid, kPostUser, kPostTime, kMessage };

std::string Narrow(std::u16string_view text) {
    return {text.begin(), text.end()};
}

bool Holds(const std::string& text, const std::string& what) {
    return text.find(what) != std::string::npos;
}

// Why finishing is refused; empty when it is not.
std::string RefusalOf(ImportBoard& board) {
    try {
        board.Finish();
        return {};
    } catch (const FinishError& error) {
        return Narrow(error.text);
    }
}

// A category 1 and the forum 2 in it.
class FinishBoardTest : public ::testing::Test {
  protected:
    FinishBoardTest() {
        board.Category(1, u"Things");
        board.Forum(2, 1, u"Radios");
    }

    // A page of one thread with one post below a forum, which numbers them all alike.
    void Page(int fid, int pid, int number) {
        board.Forum(fid, pid, u"Page " + ToText(number));
        board.Thread(number, fid, u"Page " + ToText(number), number, 1);
        board.AddPost(number, 2, 1000 + number, u"x", u"3^" + ToText(100 + number) + u"^1");
    }

    ImportBoard board;
};

// Threads own their posts

TEST_F(FinishBoardTest, APostBelongsToTheThreadThatSpansItsNumber) {
    board.Thread(1, 2, u"One", 1, 2);
    board.Thread(2, 2, u"Two", 3, 1);
    board.AddPost(1, 2, 10, u"a", u"3^111^1");
    board.AddPost(2, 2, 20, u"b", u"3^111^2");
    board.AddPost(3, 2, 30, u"c", u"3^112^3");
    board.Finish();
    EXPECT_EQ(board.Column("posts", kPostThread), (Values{"1", "1", "2"}));
    EXPECT_EQ(board.Column("posts", kPostForum), (Values{"4", "4", "4"}));
    EXPECT_EQ(board.Column("threads", kViews), (Values{"2", "1"}));
    EXPECT_EQ(board.Column("threads", kReplies), (Values{"1", "0"}));
}

TEST_F(FinishBoardTest, FirstAndLastPostAreTakenByTime) {
    board.AddUser(2, u"anna");
    board.AddUser(3, u"bert");
    board.AddUser(4, u"carla");
    board.Thread(1, 2, u"One", 1, 3);
    board.AddPost(1, 3, 200, u"middle", u"3^111^1");
    board.AddPost(2, 4, 300, u"late", u"3^111^2");
    board.AddPost(3, 2, 100, u"early", u"3^111^3");
    board.Finish();
    const Values thread = board.Table("threads").at(0);
    EXPECT_EQ(thread[kThreadUid], "2");
    EXPECT_EQ(thread[kThreadUser], "anna");
    EXPECT_EQ(thread[kThreadTime], "100");
    EXPECT_EQ(thread[kFirstPost], "3");
    EXPECT_EQ(thread[kLastTime], "300");
    EXPECT_EQ(thread[kLastPoster], "carla");
    EXPECT_EQ(thread[kLastUid], "4");
}

TEST_F(FinishBoardTest, PostsOfOneTimeStandInTheOrderOfTheFile) {
    board.AddUser(2, u"anna");
    board.AddUser(3, u"bert");
    board.Thread(1, 2, u"One", 1, 2);
    // A page that stood newest first: its numbers fall.
    board.AddPost(2, 3, 100, u"first", u"3^111^2");
    board.AddPost(1, 2, 100, u"second", u"3^111^1");
    board.Finish();
    EXPECT_EQ(board.Column("posts", kPid), (Values{"1", "2"}));
    EXPECT_EQ(board.Column("posts", kMessage), (Values{"first", "second"}));
    const Values thread = board.Table("threads").at(0);
    EXPECT_EQ(thread[kFirstPost], "1");
    EXPECT_EQ(thread[kThreadUser], "bert");
    EXPECT_EQ(thread[kLastPoster], "anna");
}

TEST_F(FinishBoardTest, AThreadWithoutPostsGoesAndLeavesThePostToTheNext) {
    // The page on which no post was found counts one, the first of the next page.
    board.Thread(1, 2, u"Empty", 1, 1);
    board.Thread(2, 2, u"Full", 1, 2);
    board.Thread(3, 2, u"Empty at the end", 3, 1);
    board.AddPost(1, 2, 10, u"a", u"3^112^1");
    board.AddPost(2, 2, 20, u"b", u"3^112^2");
    board.Finish();
    EXPECT_EQ(board.Column("threads", kThreadSubject), (Values{"Full"}));
    EXPECT_EQ(board.Column("posts", kPostThread), (Values{"1", "1"}));
    EXPECT_EQ(board.Table("forums").at(1)[kThreads], "1");
}

TEST_F(FinishBoardTest, PostsWithoutAThreadRowBecomeOneOfTheirOwn) {
    // What a run leaves of the page in which it was cancelled.
    board.Thread(1, 2, u"One", 1, 1);
    board.AddPost(1, 2, 10, u"a", u"3^111^1");
    board.AddPost(2, 2, 20, u"b", u"3^112^2");
    board.AddPost(3, 2, 30, u"c", u"3^112^3");
    board.Finish();
    EXPECT_EQ(board.Column("posts", kPostThread), (Values{"1", "2", "2"}));
    EXPECT_EQ(board.Column("threads", kThreadSubject), (Values{"One", "Subject"}));
    EXPECT_EQ(board.Column("threads", kReplies), (Values{"0", "1"}));
}

TEST_F(FinishBoardTest, ARunThatWasCutOffIsTold) {
    board.Thread(1, 2, u"One", 1, 1);
    board.AddPost(1, 2, 10, u"a", u"3^111^1");
    board.AddPost(2, 2, 20, u"b", u"3^112^2");
    const std::u16string warning =
        u"The conversion was cut off: the posts of 1 page have no thread row. Convert the board again.";
    EXPECT_EQ(board.Finish().warnings, std::vector<std::u16string>{warning});
    EXPECT_TRUE(Holds(board.Read("Left over.txt"), "The conversion was cut off"));
}

TEST_F(FinishBoardTest, AWholeRunIsNotTakenForOneThatWasCutOff) {
    board.Thread(1, 2, u"One", 1, 1);
    board.AddPost(1, 2, 10, u"a", u"3^111^1");
    EXPECT_EQ(board.Finish().warnings, std::vector<std::u16string>{});
}

TEST_F(FinishBoardTest, TheStartNumbersAreThoseAskedFor) {
    board.options.firstForum = 100;
    board.options.firstThread = 200;
    board.options.firstPost = 300;
    board.Thread(1, 2, u"One", 1, 1);
    board.Thread(2, 2, u"Two", 2, 1);
    board.AddPost(1, 2, 10, u"a", u"3^111^1");
    board.AddPost(2, 2, 20, u"b", u"3^112^2");
    board.Finish();
    EXPECT_EQ(board.Column("forums", kFid), (Values{"100", "101"}));
    EXPECT_EQ(board.Column("threads", kTid), (Values{"200", "201"}));
    EXPECT_EQ(board.Column("threads", kFirstPost), (Values{"300", "301"}));
    EXPECT_EQ(board.Column("posts", kPid), (Values{"300", "301"}));
}

TEST_F(FinishBoardTest, ATimeBeforeTheEpochIsTheEpoch) {
    board.Thread(1, 2, u"One", 1, 1);
    board.AddPost(1, 2, -5, u"a", u"3^111^1");
    board.Finish();
    EXPECT_EQ(board.Column("posts", kPostTime), Values{"0"});
    EXPECT_EQ(board.Column("threads", kLastTime), Values{"0"});
}

// Pages become threads

TEST_F(FinishBoardTest, AForumOfOneThreadBelowAForumIsFoldedIntoIt) {
    Page(3, 2, 1);
    Page(4, 2, 2);
    board.Finish();
    EXPECT_EQ(board.Column("forums", kForumName), (Values{"Things", "Radios"}));
    EXPECT_EQ(board.Column("threads", kThreadForum), (Values{"4", "4"}));
    EXPECT_EQ(board.Column("posts", kPostForum), (Values{"4", "4"}));
    EXPECT_EQ(board.Table("forums").at(1)[kThreads], "2");
}

TEST_F(FinishBoardTest, AForumBelowACategoryStays) {
    Page(3, 1, 1);
    board.Finish();
    EXPECT_EQ(board.Column("forums", kForumName), (Values{"Things", "Radios", "Page 1"}));
}

TEST_F(FinishBoardTest, AForumWithASubForumStays) {
    // A discussion and its archive.
    Page(3, 2, 1);
    Page(4, 3, 2);
    board.Finish();
    EXPECT_EQ(board.Column("forums", kForumName), (Values{"Things", "Radios", "Page 1"}));
    EXPECT_EQ(board.Column("threads", kThreadForum), (Values{"5", "5"}));
}

TEST_F(FinishBoardTest, AListOfOnePageStaysAList) {
    board.Forum(3, 2, u"List");
    Page(4, 3, 1);
    board.Finish();
    EXPECT_EQ(board.Column("forums", kForumName), (Values{"Things", "Radios", "List"}));
    EXPECT_EQ(board.Column("threads", kThreadForum), (Values{"5"}));
}

TEST_F(FinishBoardTest, AForumOfNoThreadOrTwoStays) {
    board.Forum(3, 2, u"None");
    board.Forum(4, 2, u"Two");
    board.Thread(1, 4, u"a", 1, 1);
    board.Thread(2, 4, u"b", 2, 1);
    board.AddPost(1, 2, 10, u"a", u"3^111^1");
    board.AddPost(2, 2, 20, u"b", u"3^111^2");
    board.Finish();
    EXPECT_EQ(board.Column("forums", kForumName), (Values{"Things", "Radios", "None", "Two"}));
}

TEST_F(FinishBoardTest, PagesStayForumsWhenTheyAreToBeKept) {
    board.options.keepPagesAsForums = true;
    Page(3, 2, 1);
    board.Finish();
    EXPECT_EQ(board.Column("forums", kForumName), (Values{"Things", "Radios", "Page 1"}));
    EXPECT_EQ(board.Column("threads", kThreadForum), (Values{"5"}));
}

class ManyForums : public FinishBoardTest {
  protected:
    // So many forums and categories in all, none of which is folded.
    void GrowTo(int count) {
        for (int fid = 3; fid <= count; ++fid) board.Forum(fid, 2, u"x");
    }
};

TEST_F(ManyForums, AreTakenUpTo65535) {
    GrowTo(65535);
    board.options.firstForum = 1;
    board.Finish();
    EXPECT_EQ(board.Table("forums").back()[kFid], "65535");
}

TEST_F(ManyForums, AreRefusedBeyondWithTheirCount) {
    GrowTo(65536);
    board.options.firstForum = 1;
    EXPECT_EQ(RefusalOf(board), "The board has 65536 forums, and the new forum takes 65535 at most.");
    EXPECT_FALSE(board.folder.Exists("finish"));
}

TEST_F(ManyForums, AreRefusedWhenTheirNumbersGoBeyond) {
    GrowTo(10);
    board.options.firstForum = 65530;
    EXPECT_EQ(
        RefusalOf(board),
        "The forums would have numbers up to 65539, and 65535 is the highest. Take a smaller --first-forum.");
}

// Forums

TEST_F(FinishBoardTest, TheParentListEndsWithTheForumsOwnNumber) {
    board.Forum(3, 2, u"Tubes");
    board.Forum(4, 1, u"Cameras");
    board.Category(5, u"Others");
    board.Finish();
    EXPECT_EQ(board.Column("forums", kParentList), (Values{"3", "3,4", "3,4,5", "3,6", "7"}));
    EXPECT_EQ(board.Column("forums", kParent), (Values{"0", "3", "4", "3", "0"}));
    EXPECT_EQ(board.Column("forums", kType), (Values{"c", "f", "f", "f", "c"}));
}

TEST_F(FinishBoardTest, ForumsStandInTheOrderOfTheBoard) {
    Page(3, 2, 1);
    board.Forum(4, 2, u"Tubes");
    board.Forum(5, 2, u"Knobs");
    board.Forum(6, 1, u"Cameras");
    board.Category(7, u"Others");
    board.Finish();
    // Things, Radios, Tubes, Knobs, Cameras, Others: the page is a thread.
    EXPECT_EQ(board.Column("forums", kOrder), (Values{"1", "1", "1", "2", "2", "2"}));
}

TEST_F(FinishBoardTest, AForumTellsItsCountsAndItsLastPost) {
    board.AddUser(2, u"anna");
    board.AddUser(3, u"bert");
    board.Thread(1, 2, u"Late", 1, 2);
    board.Thread(2, 2, u"Early", 3, 1);
    board.AddPost(1, 2, 100, u"a", u"3^111^1");
    board.AddPost(2, 3, 900, u"b", u"3^111^2");
    board.AddPost(3, 2, 500, u"c", u"3^112^3");
    board.Finish();
    const Values forum = board.Table("forums").at(1);
    EXPECT_EQ(forum[kThreads], "2");
    EXPECT_EQ(forum[kPosts], "3");
    // Time, poster, his number, thread, its subject.
    EXPECT_EQ(Values(forum.begin() + 11, forum.begin() + 16), (Values{"900", "bert", "3", "1", "Late"}));
    const Values category = board.Table("forums").at(0);
    EXPECT_EQ(Values(category.begin() + 9, category.begin() + 16), (Values{"0", "0", "0", "", "0", "0", ""}));
}

// Texts

TEST_F(FinishBoardTest, TokensAreTurnedBackInAllTexts) {
    board.Forum(3, 2, u"Knobs([) dials({)");
    board.Forum(4, 3, u"x");
    board.Thread(1, 2, u"(})Old(}) one", 1, 1);
    clsTblPosts post = board.Post(1, 1, 10, u"a(:)b([) c(>)d", u"3^111^1");
    post.subject = u"So(:)on";
    post.username = u"O({)Hara";
    board.Add("mybb_posts", post);
    board.Announcement(2, u"News([) old", u"x(:)y");
    board.Group(8, u"Tape({)s");
    board.Finish();
    EXPECT_EQ(board.Table("forums").at(2)[kForumName], "Knobs, dials'");
    EXPECT_EQ(board.Table("threads").at(0)[kThreadSubject], "\"Old\" one");
    // Line feeds and backslashes are escaped in the file.
    EXPECT_EQ(board.Table("posts").at(0)[kMessage], "a\\nb, c\\\\d");
    EXPECT_EQ(board.Table("posts").at(0)[kPostSubject], "So\\non");
    EXPECT_EQ(board.Table("posts").at(0)[kPostUser], "O'Hara");
    EXPECT_EQ(board.Table("announcements").at(0)[3], "News, old");
    EXPECT_EQ(board.Table("announcements").at(0)[4], "x\\ny");
    EXPECT_EQ(board.Table("usergroups").at(0)[1], "Tape's");
}

TEST_F(FinishBoardTest, TitlesAreCutTo120CharactersAndPostersTo80) {
    board.Forum(3, 2, std::u16string(121, u'f'));
    board.Forum(4, 3, u"x");
    board.Thread(1, 2, std::u16string(121, u't'), 1, 1);
    clsTblPosts post = board.Post(1, 1, 10, u"a", u"3^111^1");
    post.subject = std::u16string(121, u's');
    post.username = std::u16string(81, u'n');
    board.Add("mybb_posts", post);
    board.Finish();
    EXPECT_EQ(board.Table("forums").at(2)[kForumName], std::string(120, 'f'));
    EXPECT_EQ(board.Table("forums").at(1)[15], std::string(120, 't'));
    EXPECT_EQ(board.Table("threads").at(0)[kThreadSubject], std::string(120, 't'));
    EXPECT_EQ(board.Table("threads").at(0)[kThreadUser], std::string(80, 'n'));
    EXPECT_EQ(board.Table("posts").at(0)[kPostSubject], std::string(120, 's'));
    EXPECT_EQ(board.Table("posts").at(0)[kPostUser], std::string(80, 'n'));
}

// Long messages

std::u16string Words(int count) {
    std::u16string text;
    for (int word = 0; word < count; ++word) text += u"nineteen characters ";
    return text;
}

TEST_F(FinishBoardTest, AMessageThatIsTooLongGoesOnInASecondPostRightBehind) {
    board.AddUser(2, u"anna");
    board.Thread(1, 2, u"One", 1, 2);
    board.AddPost(1, 2, 10, Words(4000), u"3^111^1");
    board.AddPost(2, 2, 20, u"short", u"3^111^2");
    board.Finish();
    EXPECT_EQ(board.Column("posts", kPid), (Values{"1", "2", "3"}));
    EXPECT_EQ(board.Column("posts", kPostTime), (Values{"10", "10", "20"}));
    EXPECT_EQ(board.Column("posts", kPostThread), (Values{"1", "1", "1"}));
    const Values messages = board.Column("posts", kMessage);
    EXPECT_LE(messages[0].size(), 65535u);
    EXPECT_EQ(messages[0] + messages[1], Narrow(Words(4000)));
    EXPECT_EQ(messages[2], "short");
    EXPECT_EQ(board.Column("threads", kReplies), Values{"2"});
    // The account's count of posts.
    EXPECT_EQ(board.Table("users").at(0)[6], "3");
    EXPECT_TRUE(Holds(board.Read("Left over.txt"), "post 1 goes on up to post 2"));
}

TEST_F(FinishBoardTest, AMessageOf65535BytesFits) {
    board.Thread(1, 2, u"One", 1, 2);
    board.AddPost(1, 1, 10, std::u16string(65535, u'x'), u"3^111^1");
    board.AddPost(2, 1, 20, u"short", u"3^111^2");
    board.Finish();
    EXPECT_EQ(board.Column("posts", kPid), (Values{"1", "2"}));
    EXPECT_FALSE(Holds(board.Read("Left over.txt"), "goes on"));
}

TEST_F(FinishBoardTest, AMessageIsMeasuredInBytes) {
    board.Thread(1, 2, u"One", 1, 1);
    board.AddPost(1, 1, 10, std::u16string(21846, u'\u65E5'), u"3^111^1");
    board.Finish();
    // 21,846 times three bytes is one character too much.
    EXPECT_EQ(board.Column("posts", kPid), (Values{"1", "2"}));
}

TEST_F(FinishBoardTest, APictureThatNoPostHoldsIsTold) {
    board.Thread(1, 2, u"One", 1, 1);
    board.AddPost(1, 1, 10, u"[img]" + std::u16string(70000, u'x') + u"[/img]", u"3^111^1");
    board.Finish();
    EXPECT_TRUE(Holds(board.Read("Left over.txt"),
                      "1 message was too long for one post:\r\n"
                      "    post 1 goes on up to post 2, and a link, a picture or another tag is cut in two "
                      "there\r\n"));
}

TEST_F(FinishBoardTest, AnAnnouncementThatIsTooLongGoesOnInThoseBehind) {
    board.Announcement(2, u"News", Words(4000));
    board.Finish();
    const Values messages = board.Column("announcements", 4);
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0] + messages[1], Narrow(Words(4000)));
    EXPECT_TRUE(Holds(board.Read("Left over.txt"), "    announcement \"News\" goes on in those behind\r\n"));
}

// Links

class Links : public FinishBoardTest {
  protected:
    Links() {
        board.Thread(1, 2, u"One", 1, 2);
        board.Thread(2, 2, u"Two", 3, 1);
    }

    void FinishWith(std::u16string message) {
        board.AddPost(1, 2, 10, std::move(message), u"3^111^11");
        board.AddPost(2, 2, 20, u"x", u"3^111^12");
        board.AddPost(3, 2, 30, u"x", u"3^112^13");
        board.Finish();
    }

    std::string Message() const { return board.Table("posts").at(0)[kMessage]; }
};

TEST_F(Links, LeadToTheThreadThatThePageHasBecome) {
    board.Link(u"http://old/discus/messages/3/112.html", 2, 1, u"3^112");
    FinishWith(u"see [url=http://old/discus/messages/3/112.html]a link[/url].");
    EXPECT_EQ(Message(), "see [url=http://new.example/showthread.php?tid=2]a link[/url].");
}

TEST_F(Links, LeadToThePostThatTheOldAddressNames) {
    board.Link(u"http://old/discus/messages/3/111.html#POST12", 2, 1, u"3^111");
    board.Link(u"http://old/discus/messages/3/111.html?104#post11", 2, 1, u"3^111");
    FinishWith(
        u"[url=http://old/discus/messages/3/111.html#POST12]a[/url] "
        u"[url=http://old/discus/messages/3/111.html?104#post11]b[/url]");
    EXPECT_EQ(Message(),
              "[url=http://new.example/showthread.php?tid=1&pid=2#pid2]a[/url] "
              "[url=http://new.example/showthread.php?tid=1&pid=1#pid1]b[/url]");
}

TEST_F(Links, LeadToTheThreadWhenThePostIsNotOnThePage) {
    board.Link(u"http://old/discus/messages/3/111.html#POST13", 2, 1, u"3^111");
    FinishWith(u"[url=http://old/discus/messages/3/111.html#POST13]a[/url]");
    EXPECT_EQ(Message(), "[url=http://new.example/showthread.php?tid=1]a[/url]");
}

TEST_F(Links, AreAllReplacedTheSameOneTwiceToo) {
    board.Link(u"http://old/discus/messages/3/112.html", 2, 1, u"3^112");
    board.Link(u"http://old/discus/messages/3/111.html", 2, 1, u"3^111");
    FinishWith(
        u"[url=http://old/discus/messages/3/112.html]a[/url]"
        u"[url=http://old/discus/messages/3/111.html]b[/url]"
        u"[url=http://old/discus/messages/3/112.html]a[/url]");
    EXPECT_EQ(Message(),
              "[url=http://new.example/showthread.php?tid=2]a[/url]"
              "[url=http://new.example/showthread.php?tid=1]b[/url]"
              "[url=http://new.example/showthread.php?tid=2]a[/url]");
}

TEST_F(Links, KeepTheirAddressAndAreListedWhenTheTargetWasNotConverted) {
    board.Link(u"http://old/discus/messages/3/999.html", 2, 3, u"3^999");
    FinishWith(u"[url=http://old/discus/messages/3/999.html]a[/url]");
    EXPECT_EQ(Message(), "[url=http://old/discus/messages/3/999.html]a[/url]");
    EXPECT_TRUE(Holds(board.Read("Left over.txt"),
                      "1 link leads to a page that was not converted and keeps its old address:\r\n"
                      "    http://old/discus/messages/3/999.html in post 3\r\n"));
}

TEST_F(Links, AreKnownBehindWhatTheMarkupStepChangedInThem) {
    // It took the sign out of "=-1", and a target attribute stays in the address.
    board.Link(u"http://old/discus/messages/3/112.html?a=-1 target=_top", 2, 1, u"3^112");
    FinishWith(u"[url=http://old/discus/messages/3/112.html?a=1 target=_top]a[/url]");
    EXPECT_EQ(Message(), "[url=http://new.example/showthread.php?tid=2]a[/url]");
}

TEST_F(Links, AreReadBehindATextWithTheirDivider) {
    board.folder.Write("InternalLinks1.txt",
                       "[url=http://old/discus/messages/3/112.html]x^2^3[/url]^^2^1^1^111^3^112\r\n");
    FinishWith(u"[url=http://old/discus/messages/3/112.html]x^2^3[/url]");
    EXPECT_EQ(Message(), "[url=http://new.example/showthread.php?tid=2]x^2^3[/url]");
}

TEST_F(Links, OfAnnouncementsAreReplacedToo) {
    board.Link(u"http://old/discus/messages/3/112.html", 0, 3, u"3^112");
    board.Link(u"http://old/discus/messages/3/998.html", 0, 3, u"3^998");
    board.Announcement(2, u"News", u"[url=http://old/discus/messages/3/112.html]a[/url]");
    FinishWith(u"x");
    EXPECT_EQ(board.Table("announcements").at(0)[4], "[url=http://new.example/showthread.php?tid=2]a[/url]");
    EXPECT_TRUE(Holds(board.Read("Left over.txt"), "998.html in an announcement\r\n"));
}

TEST_F(Links, ToAPageThatOnlyListsOthersLeadToItsForum) {
    board.Note("page,0,/discus/messages/board-topics.html\r\npage,2,/discus/messages/3/3.html\r\n");
    board.Link(u"http://old/discus/messages/3/3.html", 2, 1, u"3^3");
    FinishWith(u"[url=http://old/discus/messages/3/3.html]a[/url]");
    EXPECT_EQ(Message(), "[url=http://new.example/forumdisplay.php?fid=4]a[/url]");
}

TEST_F(Links, TellTwoPagesWithOneNumberByTheirFolder) {
    board.Thread(3, 2, u"Three", 4, 1);
    board.Link(u"http://old/discus/messages/7/112.html", 2, 1, u"7^112");
    board.Link(u"http://old/discus/messages/8/112.html", 2, 1, u"8^112");
    board.AddPost(4, 2, 40, u"x", u"7^112^14");
    FinishWith(
        u"[url=http://old/discus/messages/7/112.html]a[/url]"
        u"[url=http://old/discus/messages/8/112.html]b[/url]");
    EXPECT_EQ(board.Table("posts").at(1)[kMessage],
              "[url=http://new.example/showthread.php?tid=3]a[/url]"
              "[url=http://old/discus/messages/8/112.html]b[/url]");
}

TEST_F(Links, HaveNoHostWhenTheForumsAddressIsNotKnown) {
    board.options.forumAddress.clear();
    board.Link(u"http://old/discus/messages/3/112.html", 2, 1, u"3^112");
    board.AddPost(1, 2, 10, u"[url=http://old/discus/messages/3/112.html]a[/url]", u"3^111^11");
    board.AddPost(3, 2, 30, u"x", u"3^112^13");
    EXPECT_EQ(board.Finish().warnings.size(), 1u);
    EXPECT_EQ(Message(), "[url=showthread.php?tid=2]a[/url]");
}

TEST_F(Links, TakeTheForumsAddressFromTheNote) {
    board.options.forumAddress.clear();
    board.Note("forum,http://noted.example/forum\r\n");
    board.Link(u"http://old/discus/messages/3/112.html", 2, 1, u"3^112");
    FinishWith(u"[url=http://old/discus/messages/3/112.html]a[/url]");
    EXPECT_EQ(Message(), "[url=http://noted.example/forum/showthread.php?tid=2]a[/url]");
}

std::u16string ManyLinks(const std::u16string& address, int count) {
    std::u16string text;
    for (int link = 0; link < count; ++link) text += u"[url=" + address + u"]x[/url]";
    return text;
}

TEST_F(Links, CountWithTheirLongOldAddressWhenTheTargetWasNotConverted) {
    const std::u16string address = u"http://old/discus/messages/3/999.html?" + std::u16string(200, u'a');
    board.Link(address, 2, 1, u"3^999");
    FinishWith(ManyLinks(address, 300));
    // 300 times 251 bytes.
    EXPECT_EQ(board.Column("posts", kPid), (Values{"1", "2", "3", "4"}));
}

TEST_F(Links, LeaveANumberOverWhenTheMessageFitsByTheirNewAddresses) {
    board.Link(u"http://old/discus/messages/3/112.html", 2, 1, u"3^112");
    FinishWith(ManyLinks(u"http://old/discus/messages/3/112.html", 700));
    // 700 times 52 bytes, where 700 times 102 are foreseen.
    EXPECT_EQ(board.Column("posts", kPid), (Values{"1", "3", "4"}));
}

TEST_F(Links, OfALongMessageAreReplacedInAllItsPieces) {
    board.Link(u"http://old/discus/messages/3/112.html", 2, 1, u"3^112");
    FinishWith(ManyLinks(u"http://old/discus/messages/3/112.html", 1300));
    const Values messages = board.Column("posts", kMessage);
    // 1,300 times 102 bytes are foreseen, of which 63,735 fit into a post.
    ASSERT_EQ(messages.size(), 5u);
    EXPECT_TRUE(messages[0] + messages[1] + messages[2] ==
                Narrow(ManyLinks(u"http://new.example/showthread.php?tid=2", 1300)));
}

// Attachments

class Attachments : public FinishBoardTest {
  protected:
    Attachments() {
        board.AddUser(2, u"anna");
        board.Thread(1, 2, u"One", 1, 2);
        board.AddPost(1, 2, 10, u"Here:(:)", u"3^111^11");
        board.AddPost(2, 2, 20, u"And here", u"3^111^12");
    }
};

TEST_F(Attachments, StandOnTheRightPost) {
    board.Note("attachment,1,2\r\n");
    board.Attachment(1, 2, u"\\srv\\discus\\messages\\3\\parts, list.txt", u"txt");
    board.Finish();
    // aid, pid, posthash, uid, filename, filetype, filesize, attachname
    EXPECT_EQ(board.Table("attachments").at(0),
              (Values{"1", "2", "AB", "2", "parts, list.txt", "text/plain", "7", "1_AB"}));
    EXPECT_EQ(board.Column("posts", kMessage), (Values{"Here:\\n", "And here\\n[attachment=1]"}));
    EXPECT_EQ(board.Column("threads", kAttachments), Values{"1"});
}

TEST_F(Attachments, OfOnePostStandOneBelowTheOther) {
    board.Note("attachment,1,1\r\nattachment,2,1\r\n");
    board.Attachment(1, 2, u"\\a\\b.png", u"png");
    board.Attachment(2, 2, u"\\a\\c.JPG", u"JPG");
    board.Finish();
    EXPECT_EQ(board.Table("posts").at(0)[kMessage], "Here:\\n[attachment=1]\\n[attachment=2]");
    EXPECT_EQ(board.Column("attachments", 5), (Values{"image/png", "image/jpeg"}));
    EXPECT_EQ(board.Column("threads", kAttachments), Values{"2"});
}

TEST_F(Attachments, CountFromTheFirstPostsNumber) {
    board.options.firstPost = 1001;
    board.Note("attachment,3,1\r\n");
    board.Attachment(3, 2, u"\\a\\b.unknown", u"unknown");
    board.Finish();
    const Values row = board.Table("attachments").at(0);
    EXPECT_EQ(row[0], "1003");
    EXPECT_EQ(row[1], "1001");
    EXPECT_EQ(row[5], "application/octet-stream");
    // The copy keeps its name.
    EXPECT_EQ(row[7], "3_AB");
    EXPECT_EQ(board.Table("posts").at(0)[kMessage], "Here:\\n[attachment=1003]");
}

TEST_F(Attachments, WithoutANoteAreListedAsNotPlaced) {
    board.Attachment(1, 2, u"\\a\\b.png", u"png");
    board.Finish();
    EXPECT_EQ(board.Read("attachments.txt"), "");
    EXPECT_EQ(board.Column("posts", kMessage), (Values{"Here:\\n", "And here"}));
    EXPECT_TRUE(Holds(board.Read("Left over.txt"), "1_AB, \\a\\b.png"));
}

TEST_F(Attachments, WhoseRowWasNotWrittenOrWhosePostIsMissingAreListed) {
    board.Note("attachment,1,2\r\nattachment,2,2\r\nattachment,3,77\r\n");
    board.Attachment(1, 2, u"\\a\\b.png", u"png");
    board.Attachment(3, 2, u"\\a\\c.png", u"png");
    board.Finish();
    EXPECT_EQ(board.Column("attachments", 0), Values{"1"});
    const std::string list = board.Read("Left over.txt");
    EXPECT_TRUE(Holds(list, "the copy that begins with 2_, which has no row"));
    EXPECT_TRUE(Holds(list, "the copy that begins with 3_, whose post was not converted"));
}

TEST_F(Attachments, BeyondThePostsOfAPageHaveTheirRowsFromTheNote) {
    board.Note("attachment,1,1,2,7,AB,b.png\r\nattachment,2,1,2,9,CD,parts, list.txt\r\n");
    board.Attachment(1, 2, u"\\a\\b.png", u"png");
    board.Finish();
    EXPECT_EQ(board.Table("attachments").at(1),
              (Values{"2", "1", "CD", "2", "parts, list.txt", "text/plain", "9", "2_CD"}));
    EXPECT_EQ(board.Table("posts").at(0)[kMessage], "Here:\\n[attachment=1]\\n[attachment=2]");
    EXPECT_EQ(board.Column("threads", kAttachments), Values{"2"});
    EXPECT_FALSE(board.folder.Exists("finish/Left over.txt"));
}

TEST_F(Attachments, OfAnAnnouncementHangOnNoPostAndAreListed) {
    board.Note("attachment,1,0,2,9,CD,parts, list.txt\r\n");
    board.Finish();
    EXPECT_EQ(board.Read("attachments.txt"), "");
    EXPECT_EQ(board.Column("posts", kMessage), (Values{"Here:\\n", "And here"}));
    EXPECT_TRUE(Holds(board.Read("Left over.txt"),
                      "1 file of an announcement is copied and hangs on no post:\r\n"
                      "    1_CD, parts, list.txt\r\n"));
}

TEST_F(Attachments, OfALongMessageStandAtTheEndOfItsFirstPost) {
    board.Thread(2, 2, u"Two", 3, 1);
    board.AddPost(3, 2, 30, Words(4000), u"3^112^13");
    board.Note("attachment,1,3\r\n");
    board.Attachment(1, 2, u"\\a\\b.png", u"png");
    board.Finish();
    EXPECT_EQ(board.Table("attachments").at(0)[1], "3");
    EXPECT_TRUE(board.Table("posts").at(2)[kMessage].ends_with("characters \\n[attachment=1]"));
    EXPECT_TRUE(board.Table("posts").at(3)[kMessage].ends_with("characters "));
}

// Members

class Members : public FinishBoardTest {
  protected:
    // uid, username, password, salt, loginkey, email, postnum, threadnum, usergroup, regdate, lastpost
    Values User(std::size_t at) const { return board.Table("users").at(at); }
};

TEST_F(Members, HaveTheirRealCounts) {
    board.AddUser(2, u"anna");
    board.AddUser(3, u"bert");
    board.Thread(1, 2, u"One", 1, 2);
    board.Thread(2, 2, u"Two", 3, 1);
    board.AddPost(1, 2, 10, u"a", u"3^111^1");
    board.AddPost(2, 3, 20, u"b", u"3^111^2");
    board.AddPost(3, 2, 30, u"c", u"3^112^3");
    board.Finish();
    EXPECT_EQ(board.Column("users", 6), (Values{"2", "1"}));
    EXPECT_EQ(board.Column("users", 7), (Values{"2", "0"}));
}

TEST_F(Members, WithoutAGroupAreRegistered) {
    board.Note("nogroup,3\r\n");
    board.AddUser(2, u"anna");
    board.AddUser(3, u"bert");
    clsTblUsers first = board.User(4, u"carla");
    first.usergroup = 0;
    board.Add("mybb_users", first);
    board.Finish();
    EXPECT_EQ(board.Column("users", 8), (Values{"8", "2", "2"}));
}

TEST_F(Members, WhoWereAddedForAPostAreRegisteredWithoutANoteToo) {
    clsTblUsers visitor = board.User(2, u"Visitor");
    visitor.password.clear();
    visitor.email.clear();
    visitor.regdate = 0;
    board.Add("mybb_users", visitor);
    board.AddUser(3, u"anna");
    board.Finish();
    EXPECT_EQ(board.Column("users", 8), (Values{"2", "8"}));
}

TEST_F(Members, HavePasswordsThatNobodyKnows) {
    board.AddUser(2, u"anna");
    board.AddUser(3, u"bert");
    board.Finish();
    EXPECT_TRUE(User(0)[2].starts_with("!"));
    EXPECT_EQ(User(0)[2].size(), 41u);
    EXPECT_NE(User(0)[2], User(1)[2]);
    EXPECT_EQ(User(0)[3].size(), 8u);
    EXPECT_EQ(User(0)[4].size(), 50u);
    EXPECT_NE(User(0)[4], User(1)[4]);
    EXPECT_FALSE(Holds(board.Read("users.txt"), "aB3dE7gH1jK2m"));
    // The address of the member's machine.
    EXPECT_FALSE(Holds(board.Read("users.txt"), "49494953"));
}

TEST_F(Members, HaveNamesCutWithoutMakingTwoEqual) {
    board.AddUser(2, std::u16string(125, u'n') + u"1");
    board.AddUser(3, std::u16string(125, u'n') + u"2");
    board.Finish();
    EXPECT_EQ(User(0)[1], std::string(120, 'n'));
    EXPECT_EQ(User(1)[1], std::string(118, 'n') + "_3");
    EXPECT_TRUE(Holds(board.Read("Left over.txt"), "2 members have other names"));
}

TEST_F(Members, WithoutARowAreGuests) {
    board.Thread(1, 2, u"One", 1, 2);
    board.AddPost(1, 7, 10, u"a", u"3^111^1");
    board.AddPost(2, 1, 20, u"b", u"3^111^2");
    board.Finish();
    // The administrator has no row either and is the forum's own.
    EXPECT_EQ(board.Column("posts", kPostUid), (Values{"0", "1"}));
    EXPECT_EQ(board.Column("posts", kPostUser), (Values{"Real Name 7", "Real Name 1"}));
    const Values thread = board.Table("threads").at(0);
    EXPECT_EQ(thread[kThreadUid], "0");
    EXPECT_EQ(thread[kThreadUser], "Real Name 7");
    EXPECT_EQ(thread[kLastUid], "1");
    EXPECT_TRUE(Holds(board.Read("Left over.txt"), "1 posts are by members that have no row"));
}

// Announcements

TEST_F(FinishBoardTest, AnAnnouncementHasItsForumsNewNumber) {
    Page(3, 2, 1);
    board.Announcement(1, u"a", u"in the category");
    board.Announcement(2, u"b", u"in the forum");
    board.Announcement(3, u"c", u"in a page that became a thread");
    board.Finish();
    EXPECT_EQ(board.Column("announcements", 1), (Values{"3", "4", "4"}));
}

// The files

TEST_F(FinishBoardTest, WritesSevenTablesAndWhatLeadsThroughThem) {
    board.Note("charset,utf-8\r\n");
    board.Finish();
    // Nothing is left over.
    EXPECT_EQ(board.folder.Files("finish"),
              (Values{"1 Check.sql", "2 Load.sql", "3 After.txt", "README.txt", "announcements.txt",
                      "attachments.txt", "forums.txt", "posts.txt", "redirect.apache.txt",
                      "redirect.nginx.conf", "threads.txt", "usergroups.txt", "users.txt"}));
}

TEST_F(FinishBoardTest, ReplacesTheFolderOfAnEarlierTime) {
    board.folder.Write("finish/old.txt", "x");
    board.folder.Write("finish.part/half.txt", "x");
    board.Finish();
    EXPECT_FALSE(board.folder.Exists("finish/old.txt"));
    EXPECT_FALSE(board.folder.Exists("finish.part"));
    EXPECT_TRUE(board.folder.Exists("finish/README.txt"));
}

TEST_F(FinishBoardTest, LeavesTheEarlierFolderWhenItIsRefused) {
    board.folder.Write("finish/old.txt", "x");
    board.Thread(1, 77, u"In no forum", 1, 1);
    EXPECT_EQ(RefusalOf(board),
              "The rows of threads and forums do not fit together. Convert the board again.");
    EXPECT_TRUE(board.folder.Exists("finish/old.txt"));
}

TEST_F(FinishBoardTest, LeavesNoHalfFolderBehind) {
    board.Finish();
    const std::string readme = board.Read("README.txt");
    // Announcements are read last, when most tables are written.
    board.folder.Write("mybb_announcements1.txt", "no row\r\n");
    EXPECT_TRUE(RefusalOf(board).starts_with("Row 1 of "));
    EXPECT_FALSE(board.folder.Exists("finish.part"));
    EXPECT_EQ(board.Read("README.txt"), readme);
}

TEST_F(FinishBoardTest, LeavesAFolderThatMustBeKept) {
    board.folder.Write("finish/source/page.html", "x");
    board.options.sourceFolders = {board.folder.Path("finish/source")};
    EXPECT_TRUE(Holds(RefusalOf(board), "it is or holds a folder of the Discus copy"));
    EXPECT_TRUE(board.folder.Exists("finish/source/page.html"));
}

TEST_F(FinishBoardTest, ChangesNothingOutsideItsFolder) {
    board.AddUser(2, u"anna");
    board.Finish();
    const std::string users = board.folder.Read("mybb_users1.txt");
    board.Finish();
    EXPECT_EQ(board.folder.Read("mybb_users1.txt"), users);
    EXPECT_TRUE(board.folder.Exists("mybb_forums1.txt"));
}

TEST_F(FinishBoardTest, TheRedirectMapHasALineAPage) {
    board.Thread(1, 2, u"One", 1, 1);
    board.AddPost(1, 2, 10, u"a", u"3^111^1");
    board.Note(
        "page,0,/old/discus/messages/board-topics.html\r\npage,2,/old/discus/messages/3/3.html\r\n"
        "page,2,/old/discus/messages/3/111.html\r\npage,77,/old/discus/messages/3/4.html\r\n");
    board.Finish();
    EXPECT_EQ(board.Read("redirect.apache.txt"),
              "/old/discus/messages/board-topics.html http://new.example/index.php\n"
              "/old/discus/messages/3/3.html http://new.example/forumdisplay.php?fid=4\n"
              "/old/discus/messages/3/111.html http://new.example/showthread.php?tid=1\n");
    EXPECT_EQ(board.Read("redirect.nginx.conf"),
              "map $uri $new_address {\n"
              "    /old/discus/messages/board-topics.html \"http://new.example/index.php\";\n"
              "    /old/discus/messages/3/3.html \"http://new.example/forumdisplay.php?fid=4\";\n"
              "    /old/discus/messages/3/111.html \"http://new.example/showthread.php?tid=1\";\n"
              "}\n");
}

TEST_F(FinishBoardTest, TheRedirectMapHasThePagesWithMessagesWithoutANote) {
    board.Thread(1, 2, u"One", 1, 1);
    board.AddPost(1, 2, 10, u"a", u"3^111^1");
    // The same page was reached a second time.
    board.Thread(2, 2, u"One", 2, 1);
    board.AddPost(2, 2, 10, u"a", u"3^111^1");
    board.Finish();
    EXPECT_EQ(board.Read("redirect.apache.txt"),
              "/discus/messages/board-topics.html http://new.example/index.php\n"
              "/discus/messages/3/111.html http://new.example/showthread.php?tid=1\n");
}

TEST_F(FinishBoardTest, PagesThatWereHiddenAreListed) {
    board.Thread(1, 2, u"One", 1, 1);
    board.AddPost(1, 2, 10, u"a", u"3^111^1");
    board.Note("page,0,/discus/messages/board-topics.html\r\npage,2,/discus_admin_1/secure/3/111.html\r\n");
    board.Finish();
    EXPECT_TRUE(
        Holds(board.Read("Left over.txt"),
              "1 page was hidden on the old board, and all can read it now:\r\n"
              "    /discus_admin_1/secure/3/111.html is http://new.example/showthread.php?tid=1\r\n"));
}

TEST_F(FinishBoardTest, TheReadmeLeadsThroughAllSteps) {
    board.Finish();
    const std::string readme = board.Read("README.txt");
    for (const std::string step :
         {"Back up", "\"1 Check.sql\"", "\"2 Load.sql\"", "\"uploads\"", "\"3 After.txt\"",
          "redirect.nginx.conf", "RewriteMap", "\"redirect\"", "passwords"})
        EXPECT_TRUE(Holds(readme, step)) << step;
    // Apache lets a "?" pass that stands in the rule, and none that comes out of the map.
    EXPECT_TRUE(Holds(readme,
                      "RewriteCond ${discus:%{REQUEST_URI}} ^([^?]+)[?]?(.*)$\r\n"
                      "       RewriteRule ^ %1?%2 [R=301,L,NE]\r\n"));
    const std::string after = board.Read("3 After.txt");
    EXPECT_TRUE(Holds(after, "Cache Manager: \"Rebuild & Reload All\""));
    EXPECT_TRUE(Holds(after, "Recount & Rebuild"));
    EXPECT_TRUE(Holds(after, "Lost password"));
}

TEST_F(FinishBoardTest, TheScriptsSpeakOfTheTablesByTheirPrefix) {
    board.options.prefix = u"club_";
    board.AddUser(2, u"anna");
    board.Finish();
    const std::string check = board.Read("1 Check.sql");
    EXPECT_TRUE(Holds(check, "FROM `club_forums` WHERE fid BETWEEN 3 AND 4"));
    EXPECT_TRUE(Holds(check, "FROM `club_users` WHERE CONVERT(username USING utf8mb4)"));
    EXPECT_FALSE(Holds(check, "mybb_"));
    const std::string load = board.Read("2 Load.sql");
    EXPECT_TRUE(
        Holds(load, "LOAD DATA LOCAL INFILE 'forums.txt' INTO TABLE `club_forums` CHARACTER SET utf8mb4\n"));
    EXPECT_FALSE(Holds(load, "mybb_"));
}

TEST_F(FinishBoardTest, TheScriptsQuoteTheMembersNames) {
    board.AddUser(2, u"O({)Hara(>)");
    board.Finish();
    // Twice, since the names stand in a statement within a text.
    EXPECT_TRUE(Holds(board.Read("1 Check.sql"), "' IN (''O''''Hara\\\\\\\\'') INTO @taken_names"));
    EXPECT_EQ(board.Table("users").at(0)[1], "O'Hara\\\\");
}

TEST_F(FinishBoardTest, APrefixThatIsNoNameIsRefused) {
    board.options.prefix = u"mybb`; DROP";
    EXPECT_TRUE(Holds(RefusalOf(board), "A prefix of table names"));
}

TEST_F(FinishBoardTest, AFolderWithoutImportFilesIsRefused) {
    board.options.folder = board.folder.Path("nowhere") + u"\\";
    EXPECT_TRUE(RefusalOf(board).starts_with("There are no import files in "));
}

TEST_F(FinishBoardTest, AnAddressThatIsNoneIsRefused) {
    board.options.forumAddress = u"http://new example/";
    EXPECT_EQ(RefusalOf(board), "The address of the new forum cannot be http://new example/");
}

// The charset

class Charsets : public FinishBoardTest {
  protected:
    Charsets() { board.options.charset.clear(); }

    // Finishes with the bytes as the forum's name.
    Finished FinishWithName(const std::string& bytes) {
        board.folder.Write("mybb_usergroups1.txt", "");
        board.Finish();
        std::string forums = board.folder.Read("mybb_forums1.txt");
        forums.replace(forums.find("Radios"), 6, bytes);
        board.folder.Write("mybb_forums1.txt", forums);
        return FinishBoard(board.options);
    }

    std::string Name() const { return board.Table("forums").at(1)[kForumName]; }
};

TEST_F(Charsets, IsTheOneAskedFor) {
    board.options.charset = u"koi8-r";
    FinishWithName("\xF2\xC1\xC4\xC9\xCF");
    EXPECT_EQ(Name(), "\xD0\xA0\xD0\xB0\xD0\xB4\xD0\xB8\xD0\xBE");
}

TEST_F(Charsets, IsTheOneThatTheNoteTells) {
    board.Note("charset,shift-jis\r\n");
    EXPECT_EQ(FinishWithName("\x95\x5C").warnings.size(), 0u);
    EXPECT_EQ(Name(), "\xE8\xA1\xA8");
}

TEST_F(Charsets, IsUtf8WhereTheFilesLookLikeIt) {
    EXPECT_EQ(FinishWithName("\xC3\xA4").warnings.size(), 0u);
    EXPECT_EQ(Name(), "\xC3\xA4");
}

TEST_F(Charsets, IsTakenForIso88591WhereItMayBeAndTold) {
    const Finished finished = FinishWithName("\xE4 \x80");
    EXPECT_EQ(Name(), "\xC3\xA4 \xE2\x82\xAC");
    ASSERT_EQ(finished.warnings.size(), 1u);
    EXPECT_EQ(
        finished.warnings[0],
        u"The import files are read as iso-8859-1, since no note tells their charset. Where that is wrong, "
        u"say by --charset which one the old board's pages have.");
}

TEST_F(Charsets, MustBeToldWhereItCannotBeKnown) {
    try {
        FinishWithName("\x93\xFA\x81\x42");
        FAIL();
    } catch (const FinishError& error) {
        EXPECT_TRUE(
            error.text.starts_with(u"The charset of the import files is not known: say by --charset"));
    }
}

TEST_F(Charsets, ThatNobodyKnowsIsRefused) {
    board.options.charset = u"klingon";
    EXPECT_EQ(RefusalOf(board), "There is no charset named klingon.");
}

}  // namespace
}  // namespace tessaly
