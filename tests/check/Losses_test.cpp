#include <gtest/gtest.h>

#include "tests/support/CheckedBoard.h"

namespace tessaly {
namespace {

using testing::BoardFile;
using testing::CheckedBoard;
using testing::PageHead;
using testing::Post;
using testing::Top;

using enum FindingKind;

std::string Head() {
    return PageHead("12/Radios", "12/Radios", "Radios", "Old radios");
}

std::string Address(const std::string& name) {
    return "http://old.example/discus/messages/" + name;
}

// A board of one page.
struct OnePage : CheckedBoard {
    explicit OnePage(const std::string& sections) {
        WriteBoardFile(BoardFile("Main", {12}));
        WritePage("12/12.html", Head() + sections);
        Check();
    }
};

OnePage PageWithBody(const std::string& body) {
    return OnePage(Post(5, "Anna", "1043846797", body));
}

struct WithMembers : CheckedBoard {
    explicit WithMembers(const std::string& lines) {
        WriteBoardFile(BoardFile("Main", {}));
        WriteMembers(lines);
        Check();
    }
};

std::string Member(const std::string& name, const std::string& realName, const std::string& groups) {
    return name + ":pw:a@host.example:" + realName + ":::1012345678:10.0.0.1:0:" + groups + "\n";
}

TEST(Losses, ASoundBoardHasNone) {
    const OnePage board(Post(5, "Admin", "1043846797", "Hello, <b>all</b>"));
    for (const KindTexts& texts : AllKinds()) {
        if (texts.kind == kNoMemberFile) continue;
        EXPECT_EQ(board.CountOf(texts.kind), 0) << static_cast<int>(texts.kind);
    }
    EXPECT_EQ(board.CountOf(kNoMemberFile), 1);
}

TEST(Losses, PostsBehindOneThatIsNotClosedAreToldAtItsPlace) {
    const OnePage board(Post(5, "Anna", "1043846797", "Hello") +
                        "<!--Post: 6--><!--Time: 1043846798--><!--Text-->x<!--/Text--><!--/Post: 60-->\n" +
                        Post(7, "Anna", "1043846799", "Bye"));
    EXPECT_EQ(board.CountOf(kPostsBehindUnclosed), 2);
    ASSERT_EQ(board.Of(kPostsBehindUnclosed).size(), 1u);
    EXPECT_EQ(board.Of(kPostsBehindUnclosed).front().post, u"6");
    // Four lines of the head and four of the first post stand before it.
    EXPECT_EQ(board.Of(kPostsBehindUnclosed).front().line, 9);
}

TEST(Losses, APostWithoutATextIsTold) {
    const OnePage board("<!--Post: 6--><!--Time: 1043846798--><!--name-->Anna<!--/name--><!--/Post: 6-->\n");
    ASSERT_EQ(board.CountOf(kPostWithoutText), 1);
    EXPECT_EQ(board.Of(kPostWithoutText).front().post, u"6");
}

TEST(Losses, OnlyTheFirstLocalImageOfAPostStays) {
    const auto board = PageWithBody("<img src=\"" + Address("12/a-1.jpg") + "\" alt=\"a\"> <img src=\"" +
                                    Address("12/b-2.jpg") + "\" alt=\"b\">");
    ASSERT_EQ(board.CountOf(kFurtherImage), 1);
    EXPECT_NE(board.Of(kFurtherImage).front().words.find(u"b-2.jpg"), std::u16string::npos);
    EXPECT_EQ(board.CountOf(kImageElsewhere), 0);
}

TEST(Losses, PicturesAndLinksThatAreSpelledAlikeAreToldEachAtItsPlace) {
    const std::string picture = "<img src=\"" + Address("12/a-1.jpg") + "\" alt=\"a\">";
    const std::string link = "<a href=\"http://elsewhere.example\">there</a>";
    const auto board = PageWithBody(link + "\n" + link + "\n" + picture + "\n" + picture);
    ASSERT_EQ(board.CountOf(kLinkElsewhere), 2);
    // The page's head has four lines, and the post's text begins on its third.
    EXPECT_EQ(board.Of(kLinkElsewhere).front().line, 7);
    EXPECT_EQ(board.Of(kLinkElsewhere).back().line, 8);
    // The first picture stays.
    ASSERT_EQ(board.CountOf(kFurtherImage), 1);
    EXPECT_EQ(board.Of(kFurtherImage).front().line, 10);
}

TEST(Losses, AFileThatIsNotThereIsToldOncePerPlace) {
    const std::string link = "<a href=\"" + Address("12/a-1.pdf") + "\" target=_blank>a</a>";
    const auto board =
        PageWithBody("<!--attachment: x-->" + link + "<!--/attachment-->\nquite some words in between\n" +
                     "and then again far enough behind, as the first link is gone by then: " + link);
    ASSERT_EQ(board.CountOf(kMissingAttachment), 2);
    EXPECT_EQ(board.Of(kMissingAttachment).front().line, 7);
    EXPECT_EQ(board.Of(kMissingAttachment).back().line, 9);
}

TEST(Losses, ASmileyGoes) {
    EXPECT_EQ(PageWithBody("x <img src=\"http://old.example/discus/clipart/happy.gif\" alt=\":-)\">")
                  .CountOf(kImageElsewhere),
              1);
}

TEST(Losses, APictureWhoseTagBeginsOtherwiseGoesToo) {
    EXPECT_EQ(PageWithBody("x <IMG border=0 src=\"" + Address("12/a-1.jpg") + "\" alt=\"a\">")
                  .CountOf(kFurtherImage),
              1);
}

TEST(Losses, LinksToOtherSitesAndToScriptsAreTold) {
    const auto board = PageWithBody(
        "<a href=\"http://elsewhere.example\">there</a> "
        "<a href=\"http://old.example/discus/show.cgi?tpc=12\">script</a>");
    EXPECT_EQ(board.CountOf(kLinkElsewhere), 1);
    EXPECT_EQ(board.CountOf(kScriptLink), 1);
}

TEST(Losses, ALinkCloseBehindAShortenedOneIsTold) {
    const auto board = PageWithBody(
        "x <a href=\"http://old.example/discus/show.cgi?tpc=12\">script</a> "
        "<a href=\"http://elsewhere.example\">there</a>");
    ASSERT_EQ(board.CountOf(kSkippedLink), 1);
    EXPECT_EQ(board.Of(kSkippedLink).front().post, u"5");
    EXPECT_EQ(board.CountOf(kLinkElsewhere), 0);
}

// A quoted link to a topic becomes three characters shorter: the first three behind it are passed over, a
// blank and two of the next link.
TEST(Losses, ALinkWhoseBeginningIsPassedOverIsTold) {
    const std::string link = "<a href=\"" + Address("12/12.html") + "\">a</a>";
    const auto board = PageWithBody("see " + link + "\n" + link + " " + link);
    ASSERT_EQ(board.CountOf(kSkippedLink), 1);
    EXPECT_EQ(board.Of(kSkippedLink).front().line, 8);
    EXPECT_EQ(PageWithBody("see " + link + "    " + link).CountOf(kSkippedLink), 0);
}

TEST(Losses, ALinkThatIsNotClosedIsTold) {
    EXPECT_EQ(PageWithBody("see <a href=\"http://elsewhere.example\">there").CountOf(kUnclosedLink), 1);
    EXPECT_EQ(PageWithBody("see there").CountOf(kUnclosedLink), 0);
}

TEST(Losses, AFileWhoseNameBeginsWithADigitIsTakenForATopic) {
    const auto board = PageWithBody("see <a href=\"" + Address("12/7segments.pdf") + "\">this</a>");
    EXPECT_EQ(board.CountOf(kFileTakenForTopic), 1);
    EXPECT_EQ(board.CountOf(kMissingTopic), 1);
    ASSERT_EQ(board.CountOf(kLinkElsewhere), 0);
}

TEST(Losses, MissingAndForeignAttachmentsAreToldAtTheirPost) {
    const auto attachment = [](const std::string& address) {
        return "<!--attachment: x--><a href=\"" + address + "\" target=_blank>a</a><!--/attachment-->";
    };
    const OnePage board(
        Post(5, "Anna", "1043846797", attachment(Address("12/a-1.pdf"))) +
        Post(6, "Anna", "1043846798", attachment("http://other.example/discus/messages/12/b.pdf")) +
        Post(7, "Anna", "1043846799", attachment("http://old.example/discus/show.cgi/x")));
    ASSERT_EQ(board.CountOf(kMissingAttachment), 1);
    EXPECT_EQ(board.Of(kMissingAttachment).front().post, u"5");
    EXPECT_TRUE(board.Of(kMissingAttachment).front().detail.ends_with(u"a-1.pdf"));
    ASSERT_EQ(board.CountOf(kAttachmentElsewhere), 1);
    EXPECT_EQ(board.Of(kAttachmentElsewhere).front().post, u"6");
    ASSERT_EQ(board.CountOf(kNoAttachment), 1);
    EXPECT_EQ(board.Of(kNoAttachment).front().post, u"7");
}

TEST(Losses, MoreFilesThanPostsOnAPageLoseTheirRows) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    for (const char* const name : {"a.pdf", "b.pdf", "c.pdf"})
        board.WritePage("12/" + std::string(name), "x");
    std::string links;
    for (const char* const name : {"a.pdf", "b.pdf", "c.pdf"}) {
        links +=
            "and quite far behind it, beyond what is skipped, yet another file that is worth a look, namely "
            "<a href=\"" +
            Address("12/" + std::string(name)) + "\">this</a> ";
    }
    board.WritePage("12/12.html", Head() + Post(5, "Anna", "1043846797", links));
    board.Check();
    ASSERT_EQ(board.CountOf(kSurplusAttachment), 2);
    EXPECT_EQ(board.Of(kSurplusAttachment).front().detail, u"3 files in 1 posts of the page");
}

TEST(Losses, AFileOfAnAnnouncementHasNoRow) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/a.pdf", "x");
    board.WritePage("12/12.html", Head() + "<!--Announcement-->see <a href=\"" + Address("12/a.pdf") +
                                      "\">this</a><!--/Announcement-->\n");
    board.Check();
    EXPECT_EQ(board.CountOf(kSurplusAttachment), 1);
}

TEST(Losses, ASubtopicOfAPageWithoutASubjectIsNotEntered) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", "<!--Me: 12/Radios-->\n<!--Top: 13--><a href=\"" + Address("12/13.html") +
                                      "\">Valves</a><!--/Top-->\n");
    board.WritePage("12/13.html", Head());
    board.WritePage("12/14.html", Head());
    board.Check();
    ASSERT_EQ(board.CountOf(kNoSubject), 1);
    EXPECT_EQ(board.Of(kNoSubject).front().position, 22);
    EXPECT_TRUE(board.Of(kNoSubject).front().detail.ends_with(u"13.html"));
    // The page that the entry leads to is told by it alone.
    ASSERT_EQ(board.CountOf(kUnreachedPage), 1);
    EXPECT_TRUE(board.Of(kUnreachedPage).front().page.ends_with(u"\\12\\14.html"));
}

TEST(Losses, AHiddenSubtopicOfAPageWithoutASubjectIsToldByItsEntryAlone) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", "<!--Me: 12/Radios-->\n<!--Top: 13--><a href=\"" + Address("12/13.html") +
                                      "\">Valves</a><!--/Top-->\n");
    board.WriteSecurePage("12/13.html", Head());
    board.Check();
    EXPECT_EQ(board.CountOf(kNoSubject), 1);
    EXPECT_EQ(board.CountOf(kUnreachedPage), 0);
}

TEST(Losses, AMissingPageIsToldWhereAnEntryLeadsToIt) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12, 20}));
    board.WritePage("12/12.html", Head() + Top(13, Address("12/13.html"), "Valves"));
    board.Check();
    ASSERT_EQ(board.CountOf(kMissingPage), 2);
    const Finding& below = board.Of(kMissingPage).front();
    EXPECT_TRUE(below.page.ends_with(u"\\12\\12.html"));
    EXPECT_EQ(below.line, 5);
    EXPECT_TRUE(below.detail.ends_with(u"13.html"));
    const Finding& top = board.Of(kMissingPage).back();
    EXPECT_TRUE(top.page.ends_with(u"\\board-topics.html"));
    EXPECT_EQ(top.line, 3);
}

TEST(Losses, AHiddenPageThatIsLeftOutIsWorthKnowing) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WriteSecurePage("12/12.html", Head());
    board.state.optCreateHiddenTopics = false;
    board.Check();
    EXPECT_EQ(board.CountOf(kHiddenPageLeftOut), 1);
    EXPECT_EQ(board.CountOf(kMissingPage), 0);
}

TEST(Losses, AHiddenPageThatIsLeftOutIsNoneThatNothingLeadsTo) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12, 13}));
    board.WritePage("13/13.html", Head());
    board.WriteSecurePage("12/12.html", Head());
    board.state.optCreateHiddenTopics = false;
    board.Check();
    EXPECT_EQ(board.CountOf(kHiddenPageLeftOut), 1);
    EXPECT_EQ(board.CountOf(kUnreachedPage), 0);
}

TEST(Losses, WithoutABoardFileNoPageIsToldAsUnreached) {
    CheckedBoard board;
    board.WritePage("12/12.html", Head());
    board.Check();
    EXPECT_EQ(board.CountOf(kMessage), 1);
    EXPECT_EQ(board.CountOf(kUnreachedPage), 0);
}

TEST(Losses, TopsThatTouchInTheBoardFileAreTold) {
    CheckedBoard board;
    board.WriteBoardFile(
        "<!--Category: 1--><!--Text-->Main<!--/Text--><!--/Category-->\n"
        "<!--Top: 12--><!--/Top--><!--Top: 13--><!--/Top-->\n");
    board.WritePage("12/12.html", Head());
    board.WritePage("13/13.html", Head());
    board.Check();
    ASSERT_EQ(board.CountOf(kTouchingSection), 1);
    EXPECT_EQ(board.Of(kTouchingSection).front().line, 2);
    EXPECT_EQ(board.CountOf(kUnreachedPage), 0);
}

TEST(Losses, ABoardFileThatEndsWithACategoryIsTold) {
    CheckedBoard board;
    board.WriteBoardFile("<!--Category: 1--><!--Text-->Main<!--/Text--><!--/Category-->");
    board.Check();
    EXPECT_EQ(board.CountOf(kForumsNotWritten), 1);
}

// The first sub-topic is walked before the page's own posts are read.
TEST(Losses, PostsBehindASubtopicWithPostsGetIntoAnotherThread) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", Head() + Top(13, Address("12/13.html"), "Valves") +
                                      Post(5, "Anna", "1043846797", "One") +
                                      Post(6, "Anna", "1043846798", "Two"));
    board.WritePage("12/13.html", PageHead("12/Radios", "13/Valves", "Valves", "Valves") +
                                      Post(7, "Anna", "1043846799", "Three"));
    board.Check();
    ASSERT_EQ(board.CountOf(kOtherThread), 2);
    EXPECT_EQ(board.Of(kOtherThread).front().detail, u"tid 1 in the posts, 2 in the row of their thread");
    EXPECT_TRUE(board.Of(kOtherThread).front().page.ends_with(u"\\12\\12.html"));
}

TEST(Losses, PostsOfAPageThatLostItsNameToASubtopicGetIntoThatForum) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html",
                    Head() + Top(13, Address("12/13.html"), "Radios") + Post(5, "Anna", "1043846797", "One"));
    board.WritePage("12/13.html", PageHead("12/Radios", "13/radios", "Radios", "Radios"));
    board.Check();
    EXPECT_EQ(board.CountOf(kForumNameTwice), 1);
    // Once for the posts, once for their thread.
    EXPECT_EQ(board.CountOf(kOtherForum), 2);
}

TEST(Losses, MembersWhoseNamesAreTakenAreRenamed) {
    const WithMembers board(Member("anna", "Anna", "Editors") + Member("ANNA", "Bert", "Editors") +
                            Member("carla", "anna", "Editors"));
    ASSERT_EQ(board.CountOf(kMemberRenamed), 2);
    EXPECT_EQ(board.Of(kMemberRenamed).front().detail, u"ANNA becomes ANNA_3");
    EXPECT_EQ(board.Of(kMemberRenamed).front().line, 2);
    EXPECT_EQ(board.Of(kMemberRenamed).back().detail, u"anna becomes anna 4");
}

TEST(Losses, GroupsOfTheMemberBeforeAndFurtherGroupsAreTold) {
    const WithMembers board(Member("anna", "Anna", "Editors/Moderators") + Member("bert", "Bert", ""));
    ASSERT_EQ(board.CountOf(kFurtherGroups), 1);
    EXPECT_EQ(board.Of(kFurtherGroups).front().detail, u"Moderators");
    EXPECT_EQ(board.Of(kFurtherGroups).front().words, u"anna");
    ASSERT_EQ(board.CountOf(kInheritedGroup), 1);
    EXPECT_EQ(board.Of(kInheritedGroup).front().words, u"bert");
    EXPECT_EQ(board.Of(kInheritedGroup).front().line, 2);
}

TEST(Losses, CharactersThatTheCharsetLacksAreToldAndThoseThatDoNotDecode) {
    CheckedBoard board;
    board.state.Charset = u"iso-8859-1";
    board.state.cboCharset.SetText(u"iso-8859-1");
    board.folder.Write("program/Docs/iso-8859-1.txt", "&Omega;\t\xCE\xA9\r\n");
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/12.html", Head() + Post(5, "Anna", "1043846797", "50 &Omega; and 60 &Omega;\xE4"));
    board.Check();
    ASSERT_EQ(board.CountOf(kLackedCharacter), 2);
    EXPECT_EQ(board.Of(kLackedCharacter).front().detail, u"\u03A9");
    EXPECT_EQ(board.Of(kLackedCharacter).front().post, u"5");
    EXPECT_EQ(board.CountOf(kUndecodedCharacter), 0);

    board.state.Charset = u"utf-8";
    board.state.cboCharset.SetText(u"utf-8");
    board.Check();
    EXPECT_EQ(board.CountOf(kLackedCharacter), 0);
    ASSERT_EQ(board.CountOf(kUndecodedCharacter), 1);
    EXPECT_TRUE(board.Of(kUndecodedCharacter).front().page.ends_with(u"\\12\\12.html"));
    EXPECT_EQ(board.Of(kUndecodedCharacter).front().post, u"5");
    EXPECT_EQ(board.Of(kUndecodedCharacter).front().line, 7);
}

TEST(Losses, NothingOfAMemberIsQuotedButHisName) {
    const WithMembers board(Member("anna", "Anna", "Editors") +
                            "b\xE4rt:secret:b\xE4rt@host.example:B:::0:::\n");
    ASSERT_EQ(board.CountOf(kUndecodedCharacter), 2);
    const Finding& finding = board.Of(kUndecodedCharacter).front();
    EXPECT_EQ(finding.line, 2);
    EXPECT_EQ(finding.words, u"b\uFFFDrt");
}

TEST(Losses, ACharacterThatTheCharsetLacksIsToldAtEachPostThatHoldsIt) {
    CheckedBoard board;
    board.state.Charset = u"iso-8859-1";
    board.state.cboCharset.SetText(u"iso-8859-1");
    board.folder.Write("program/Docs/iso-8859-1.txt", "&Omega;\t\xCE\xA9\r\n");
    board.WriteBoardFile(BoardFile("Main", {12}));
    // Newest first: the rows are written from the last to the first.
    board.WritePage("12/12.html", Head() + Post(7, "Anna", "1043846799", "50 &Omega;") +
                                      Post(6, "Anna", "1043846798", "fine") +
                                      Post(5, "Anna", "1043846797", "60 &Omega;"));
    board.Check();
    ASSERT_EQ(board.CountOf(kLackedCharacter), 2);
    EXPECT_EQ(board.Of(kLackedCharacter).front().post, u"5");
    EXPECT_EQ(board.Of(kLackedCharacter).back().post, u"7");
}

TEST(Losses, UnknownSequencesAreCountedWhereverTheyStand) {
    const OnePage board(Post(5, "Anna", "1043846797", "&auml; &bogus; x &Bogus; y &smile;") +
                        Post(6, "Anna", "1043846798", "&bogus;"));
    ASSERT_EQ(board.CountOf(kUnknownSequence), 4);
    ASSERT_EQ(board.Of(kUnknownSequence).size(), 2u);
    EXPECT_EQ(board.Of(kUnknownSequence).front().detail, u"&bogus;");
    EXPECT_EQ(board.Of(kUnknownSequence).front().count, 3);
    EXPECT_TRUE(board.Of(kUnknownSequence).front().page.ends_with(u"12.html"));
}

TEST(Losses, UploadsThatNoPageNamesAreTold) {
    CheckedBoard board;
    board.WriteBoardFile(BoardFile("Main", {12}));
    board.WritePage("12/a.pdf", "x");
    board.WritePage("12/B.PDF", "x");
    board.WritePage("12/unused.pdf", "x");
    board.WritePage("12/12.html", Head() + Post(5, "Anna", "1043846797",
                                                "<a href=\"" + Address("12/a.pdf") + "\">x</a> <img src=\"" +
                                                    Address("12/b.pdf") + "\" alt=x>"));
    board.Check();
    ASSERT_EQ(board.CountOf(kUnusedFile), 1);
    EXPECT_TRUE(board.Of(kUnusedFile).front().page.ends_with(u"unused.pdf"));
}

TEST(Losses, OfAKindThatIsMetVeryOftenTheFirstAreKeptAndAllCounted) {
    std::string posts;
    for (int post = 1; post <= 600; ++post) {
        posts += Post(post, "Anna", "1043846797", "<a href=\"http://elsewhere.example\">x</a>");
    }
    const OnePage board(posts);
    EXPECT_EQ(board.CountOf(kLinkElsewhere), 600);
    ASSERT_EQ(board.Of(kLinkElsewhere).size(), 500u);
    EXPECT_EQ(board.Of(kLinkElsewhere).back().post, u"500");
    EXPECT_EQ(board.LeftOutOf(kLinkElsewhere), 100);
}

}  // namespace
}  // namespace tessaly
