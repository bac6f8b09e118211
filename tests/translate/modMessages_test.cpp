#include "translate/modMessages.h"

#include "members/clsMember.h"
#include "tests/translate/TranslateTest.h"

namespace tessaly {
namespace {

using testing::Post;
using testing::Wide;

using Strings = std::vector<std::string>;

class PostsOnPageTest : public testing::TranslateTest {
  protected:
    PostsOnPageTest() {
        state.DataIndex[1].ThreadBase = 6;
        state.RedirectTemplate = u"AAAAA BBBBB XXXXX CCCCC ZZZZZ";
    }

    // The page 12\34.html as a forum of number 4 with the subject "Old radios".
    void Process(const std::string& page) { ProcessAt(page, state.DiscusMessageFolder + u"12\\34.html"); }

    void ProcessAt(const std::string& page, const std::u16string& path) {
        DiscusProcessPostsOnPage(state, path, u"The title", u"The topic", u"Radios", u"Old radios", 4, 0, 0,
                                 Wide(page));
    }

    std::int32_t AddMember(std::u16string_view userName, std::u16string_view realName) {
        return DiscusAddMember(state, {userName, u"", u"", realName, u"", u"", u"", u"", u"", u""});
    }

    Strings PostRows() { return Rows(state.PostsFile); }

    // A row of the page's posts in its forum and thread.
    static std::string Row(int pid, int uid, const std::string& name, const std::string& time,
                           const std::string& message, int number) {
        return std::to_string(pid) + ",7,0,4,\"Old radios\",0," + std::to_string(uid) + ",\"" + name + "\"," +
               time + ",\"" + message + "\",0,0,0,0,0,\"12^34^" + std::to_string(number) + "\",1";
    }

    DataIndexElement& Page() { return state.DataIndex[1]; }

    void ExpectFailure(std::u16string_view text) {
        EXPECT_EQ(board.messages, (std::vector<std::u16string>{std::u16string(text)}));
        EXPECT_EQ(state.ToolboxA.RecordedErrors, board.messages);
        EXPECT_TRUE(state.CancelRequested);
    }

    std::string Attachment(const std::string& name) const {
        return "<!--attachment: <a href=\"http://old.example/discus/messages/12/" + name +
               "\" target=x>f</a><!--/attachment-->";
    }

    std::string AttachmentRow(const std::string& aid, const std::string& member,
                              const std::string& name) const {
        const std::u16string path = state.DiscusMessageFolder + u"12\\" + Wide(name);
        return aid + "," + member + ",\"5D41402ABC4B2A76B9719D911017C592\"," + member + ",\"" +
               std::string(path.begin(), path.end()) + "\",\"txt\",5,\"\",0,0,1,\"\"";
    }
};

TEST_F(PostsOnPageTest, APostBecomesARow) {
    state.PostCounter = 40;
    Process(Post(5, "Admin", "1043846797", "Hello, <b>all</b> of \"you\"!"));
    EXPECT_EQ(PostRows(), (Strings{Row(41, 1, "Admin", "1043846797", "Hello([) [b]all[/b] of you!", 5)}));
    EXPECT_EQ(Page().FirstPostId, 41);
    EXPECT_EQ(Page().LastPostId, 41);
    EXPECT_EQ(Page().FirstPosterId, 1);
    EXPECT_EQ(Page().LastPosterId, 1);
    EXPECT_EQ(state.MemberPostCounts[1], 1);
    EXPECT_EQ(state.CurrentPosterId, 1);
}

TEST_F(PostsOnPageTest, TheLastTimeStays0ForASinglePost) {
    state.LastPostTime = 99;
    Process(Post(5, "Admin", "1043846797", "x"));
    EXPECT_EQ(state.FirstPostTime, 1043846797);
    EXPECT_EQ(state.LastPostTime, 0);
}

TEST_F(PostsOnPageTest, ItTellsOncePerPageWhatItDoes) {
    state.optDisplay = true;
    state.PostCounter = 40;
    Process(Post(5, "Admin", "1", "x") + Post(6, "Admin", "2", "y"));
    EXPECT_EQ(state.txtArea.Text, u"\t\tProcessing Post for - Radios - " + state.DiscusMessageFolder +
                                      u"12\\34.html - Record # 41\r\n"
                                      u"\t\tRe-ordering Posts - 2 - 41 to 42\r\n"
                                      u"\t\tDone\r\n\r\n");
}

TEST_F(PostsOnPageTest, ProgressIsNeitherShownNorLoggedWithTheOptionsOff) {
    Process(Post(5, "Nobody", "1", "x"));
    EXPECT_EQ(state.txtArea.Text, u"");
    EXPECT_EQ(ErrorLog(), "");
}

TEST_F(PostsOnPageTest, OnAReversedPageTheLineTellsPosition1) {
    state.optDisplay = true;
    Process(Post(5, "Admin", "2", "x") + Post(6, "Admin", "1", "y"));
    EXPECT_NE(state.txtArea.Text.find(u"\t\tRe-ordering Posts - 1 - 1 to 2\r\n"), std::u16string::npos);
}

TEST_F(PostsOnPageTest, APageWithoutPostsWritesNoRowsAndTellsPosition0) {
    state.optDisplay = true;
    state.PostCounter = 40;
    Page().FirstPosterId = 3;
    Page().LastPosterId = 4;
    state.FirstPostTime = 98;
    state.LastPostTime = 99;
    Process("no post at all");
    EXPECT_EQ(PostRows(), Strings{});
    EXPECT_EQ(Page().FirstPostId, 41);
    EXPECT_EQ(Page().LastPostId, 40);
    EXPECT_EQ(Page().FirstPosterId, 0);
    EXPECT_EQ(Page().LastPosterId, 0);
    EXPECT_EQ(state.FirstPostTime, 0);
    EXPECT_EQ(state.LastPostTime, 0);
    EXPECT_NE(state.txtArea.Text.find(u"\t\tRe-ordering Posts - 0 - 41 to 40\r\n"), std::u16string::npos);
}

TEST_F(PostsOnPageTest, AfterACancelNothingIsDoneAndNoCounterMoves) {
    state.CancelRequested = true;
    Process(Post(5, "Admin", "1", "x"));
    EXPECT_EQ(state.PageSerial, 0);
    EXPECT_EQ(state.PostCounter, 0);
    EXPECT_EQ(Page().FirstPostId, 0);
    EXPECT_EQ(PostRows(), Strings{});
    EXPECT_FALSE(board.HasOutput("redirect"));
}

TEST_F(PostsOnPageTest, ThePageSerialRisesOncePerPage) {
    Process(Post(5, "Admin", "1", "x") + Post(6, "Admin", "2", "y"));
    Process("");
    EXPECT_EQ(state.PageSerial, 2);
}

TEST_F(PostsOnPageTest, TheRedirectionPageGetsSubjectNameSerialAndTitle) {
    Process("");
    EXPECT_EQ(board.Output("redirect/discus/messages/12/34.html"),
              "Old radios Radios 1.0 The title http://new.example/");
}

TEST_F(PostsOnPageTest, AnAddressAsPathIsTurnedIntoThePathOfThePage) {
    state.optDisplay = true;
    ProcessAt("", u"HTTP://old.example/discus/messages/12/34.html");
    EXPECT_TRUE(state.txtArea.Text.starts_with(u"\t\tProcessing Post for - Radios - " +
                                               state.DiscusMessageFolder + u"12\\34.html - Record # 1\r\n"));
}

TEST_F(PostsOnPageTest, APageInDateOrderKeepsItsOrder) {
    const int anna = AddMember(u"anna", u"Anna");
    Process(Post(5, "Admin", "100", "x") + Post(6, "Anna", "200", "y") + Post(7, "Anna", "150", "z"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "100", "x", 5), Row(2, anna, "Anna", "200", "y", 6),
                                   Row(3, anna, "Anna", "150", "z", 7)}));
    EXPECT_EQ(state.FirstPostTime, 100);
    EXPECT_EQ(state.LastPostTime, 150);
}

TEST_F(PostsOnPageTest, AReversedPageWritesItsRowsWithFallingPids) {
    const int anna = AddMember(u"anna", u"Anna");
    Process(Post(7, "Anna", "300", "z") + Post(6, "Admin", "200", "y") + Post(5, "Admin", "100", "x"));
    EXPECT_EQ(PostRows(), (Strings{Row(3, 1, "Admin", "100", "x", 5), Row(2, 1, "Admin", "200", "y", 6),
                                   Row(1, anna, "Anna", "300", "z", 7)}));
    EXPECT_EQ(Page().FirstPostId, 1);
    EXPECT_EQ(Page().LastPostId, 3);
    EXPECT_EQ(state.FirstPostTime, 100);
    EXPECT_EQ(state.LastPostTime, 300);
}

TEST_F(PostsOnPageTest, InDateOrderTheFirstPosterFieldHoldsThePosterOfTheNewestPost) {
    const int anna = AddMember(u"anna", u"Anna");
    Process(Post(5, "Admin", "100", "x") + Post(6, "Anna", "200", "y"));
    EXPECT_EQ(Page().FirstPosterId, anna);
    EXPECT_EQ(Page().LastPosterId, 1);
}

TEST_F(PostsOnPageTest, NewestFirstTheFirstPosterFieldHoldsThePosterOfTheNewestPostToo) {
    const int anna = AddMember(u"anna", u"Anna");
    Process(Post(6, "Anna", "200", "y") + Post(5, "Admin", "100", "x"));
    EXPECT_EQ(Page().FirstPosterId, anna);
    EXPECT_EQ(Page().LastPosterId, 1);
}

TEST_F(PostsOnPageTest, TheThirdPostSettlesTheOrderWhenTheFirstTwoAreOfOneTime) {
    Process(Post(7, "Admin", "200", "z") + Post(6, "Admin", "200", "y") + Post(5, "Admin", "100", "x"));
    EXPECT_EQ(PostRows(), (Strings{Row(3, 1, "Admin", "100", "x", 5), Row(2, 1, "Admin", "200", "y", 6),
                                   Row(1, 1, "Admin", "200", "z", 7)}));
}

TEST_F(PostsOnPageTest, OnceSettledTheOrderStays) {
    Process(Post(5, "Admin", "100", "x") + Post(6, "Admin", "200", "y") + Post(7, "Admin", "50", "z"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "100", "x", 5), Row(2, 1, "Admin", "200", "y", 6),
                                   Row(3, 1, "Admin", "50", "z", 7)}));
}

TEST_F(PostsOnPageTest, PostsOfOneTimeStandInDateOrder) {
    Process(Post(5, "Admin", "100", "x") + Post(6, "Admin", "100", "y"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "100", "x", 5), Row(2, 1, "Admin", "100", "y", 6)}));
}

TEST_F(PostsOnPageTest, ARealNameIsMatchedFirstAndGivesItsOwnSpelling) {
    AddMember(u"rolf", u"Somebody");
    const int rolf = AddMember(u"rl", u"Rolf");
    Process(Post(5, "ROLF", "1", "x"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, rolf, "Rolf", "1", "x", 5)}));
}

TEST_F(PostsOnPageTest, AUserNameIsMatchedNextAndGivesItsOwnSpelling) {
    const int rolf = AddMember(u"rolf", u"Rolf Lindqvist");
    Process(Post(5, "Rolf", "1", "x"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, rolf, "rolf", "1", "x", 5)}));
}

TEST_F(PostsOnPageTest, AnUnknownPosterIsAddedOnceAndToldOnce) {
    state.optDisplay = true;
    Process(Post(5, "Nobody", "1", "x") + Post(6, "nobody", "2", "y"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 2, "Nobody", "1", "x", 5), Row(2, 2, "Nobody", "2", "y", 6)}));
    EXPECT_EQ(state.txtArea.Text,
              u"\t\tProcessing Post for - Radios - " + state.DiscusMessageFolder +
                  u"12\\34.html - Record # 1\r\n"
                  u"\r\n\r\n\t\t***** Posters User Name / Real Name Not Found - Adding ***** - Nobody\r\n"
                  u"\t\tRe-ordering Posts - 2 - 1 to 2\r\n"
                  u"\t\tDone\r\n\r\n");
    const clsMember& added = *state.MembersById.Get(u"2");
    EXPECT_EQ(added.username, u"Nobody");
    EXPECT_EQ(added.RealName, u"Nobody");
    EXPECT_EQ(added.email, u"");
    EXPECT_EQ(added.RegisteredDate, 0);
    EXPECT_EQ(state.MemberPostCounts[2], 2);
}

TEST_F(PostsOnPageTest, APosterWithoutANameIsAnonymousAddedOnce) {
    state.optDisplay = true;
    const std::string withoutName = "<!--Post: 7--><!--Time: 3--><!--Text-->z<!--/Text--><!--/Post: 7-->";
    Process(Post(5, "", "1", "x") + Post(6, " <b> </b> ", "2", "y") + withoutName);
    EXPECT_EQ(PostRows(), (Strings{Row(1, 2, "Anonymous", "1", "x", 5), Row(2, 2, "Anonymous", "2", "y", 6),
                                   Row(3, 2, "Anonymous", "3", "z", 7)}));
    const std::u16string line =
        u"***** Posters User Name / Real Name Not Found - Adding ***** - Anonymous\r\n";
    EXPECT_NE(state.txtArea.Text.find(line), std::u16string::npos);
    EXPECT_EQ(state.txtArea.Text.find(line), state.txtArea.Text.rfind(line));
}

TEST_F(PostsOnPageTest, ANameOfMarksAloneIsAnonymous) {
    Process(Post(5, ",'\"?^`\\...", "1", "x"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 2, "Anonymous", "1", "x", 5)}));
}

TEST_F(PostsOnPageTest, AMemberNamedAnonymousIsFound) {
    const int member = AddMember(u"anonymous", u"Anna");
    Process(Post(5, "", "1", "x"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, member, "anonymous", "1", "x", 5)}));
}

TEST_F(PostsOnPageTest, MarksGoOutOfANameAndALineEndStaysAsItsToken) {
    Process(Post(5, "<i>A., O'Neil?</i>\nx^y .z`", "1", "x"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 2, "A. ONeil(:)xyz", "1", "x", 5)}));
}

TEST_F(PostsOnPageTest, AMissingClosingTagEndsThePage) {
    Process(Post(5, "Admin", "1", "x") + "<!--Post: 6--><!--Time: 2--><!--Text-->y<!--/Text-->" +
            Post(7, "Admin", "3", "z"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "x", 5)}));
    EXPECT_TRUE(board.messages.empty());
}

TEST_F(PostsOnPageTest, TheClosingTagIsTheExactCounterpartOfTheOpeningOne) {
    Process("<!--Post: 5 old--><!--Time: 1--><!--Text-->x<!--/Text--><!--/Post: 5-->");
    EXPECT_EQ(PostRows(), Strings{});
    Process("<!--POST: 5 old--><!--Time: 1--><!--Text-->x<!--/Text--><!--/post: 5 OLD-->");
    EXPECT_EQ(PostRows(), (Strings{Row(1, 2, "Anonymous", "1", "x", 5)}));
}

TEST_F(PostsOnPageTest, AnOpeningTagWithoutItsEndIsAFailure) {
    Process(Post(5, "Admin", "1", "x") + "<!--Post: 6");
    EXPECT_EQ(PostRows(), Strings{});
    ExpectFailure(u"5 - DiscusProcessPostsOnPage()\r\n\r\nInvalid procedure call or argument");
}

// The inner post belongs to the outer section, whose first tags count.
TEST_F(PostsOnPageTest, APostInsideAnotherIsNoPostOfItsOwn) {
    Process("<!--Post: 5-->" + Post(6, "Admin", "2", "y") + "<!--/Post: 5-->");
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "2", "y", 5)}));
}

TEST_F(PostsOnPageTest, ThePostNumberIsTheDigitsAtItsHead) {
    Process(
        "<!--Post:  007x8--><!--Time: 1--><!--/Post:  007x8-->"
        "<!--Post: x--><!--Time: 1--><!--/Post: x-->");
    EXPECT_EQ(PostRows(), (Strings{R"(1,7,0,4,"Old radios",0,2,"Anonymous",1,"",0,0,0,0,0,"12^34^007",1)",
                                   R"(2,7,0,4,"Old radios",0,2,"Anonymous",1,"",0,0,0,0,0,"12^34^",1)"}));
}

TEST_F(PostsOnPageTest, APostNumberOfManyOpeningTagsIsTheDigitsWithoutThem) {
    Process("<!--Post: <!--Post: 12<!--Post: 34--><!--Time: 1--><!--/Post: <!--Post: 12<!--Post: 34-->");
    EXPECT_EQ(PostRows(), (Strings{Row(1, 2, "Anonymous", "1", "", 1234)}));
}

TEST_F(PostsOnPageTest, APostWithoutTextTagsIsWrittenWithAnEmptyMessage) {
    Process("<!--Post: 5--><!--Time: 1--><!--Text-->x<!--/Post: 5-->");
    EXPECT_EQ(PostRows(), (Strings{Row(1, 2, "Anonymous", "1", "", 5)}));
}

TEST_F(PostsOnPageTest, ATimeMayStandBetweenBlanksAndBeNegative) {
    Process(Post(5, "Admin", "  -7  ", "x"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "-7", "x", 5)}));
}

TEST_F(PostsOnPageTest, ATimeThatIsNoNumberEndsTheRunAndNoRowOfThePageIsWritten) {
    Process(Post(5, "Admin", "1", "x") + Post(6, "Admin", "soon", "y"));
    EXPECT_EQ(PostRows(), Strings{});
    EXPECT_EQ(state.PostCounter, 1);
    ExpectFailure(u"13 - DiscusProcessPostsOnPage()\r\n\r\nType mismatch");
}

TEST_F(PostsOnPageTest, AMissingTimeEndsTheRun) {
    Process("<!--Post: 5--><!--Text-->x<!--/Text--><!--/Post: 5-->");
    ExpectFailure(u"13 - DiscusProcessPostsOnPage()\r\n\r\nType mismatch");
}

TEST_F(PostsOnPageTest, ATimeBeyond32BitsEndsTheRun) {
    Process(Post(5, "Admin", "2147483648", "x"));
    ExpectFailure(u"6 - DiscusProcessPostsOnPage()\r\n\r\nOverflow");
}

TEST_F(PostsOnPageTest, AnImageWithoutQuotesEndsTheRunAndNoRowOfThePageIsWritten) {
    Process(Post(5, "Admin", "1", "x") + Post(6, "Admin", "2", "<img src=/discus/messages/3/p.jpg alt=P>"));
    EXPECT_EQ(PostRows(), Strings{});
    EXPECT_EQ(state.PostCounter, 2);
    ExpectFailure(u"5 - DiscusProcessPostsOnPage()\r\n\r\nInvalid procedure call or argument");
}

TEST_F(PostsOnPageTest, AnUnbalancedBodyEndsTheRunAndItsRowIsWrittenWithAnEmptyMessage) {
    Process(Post(5, "Admin", "1", "x") + Post(6, "Admin", "2", "<font size=2><font color=red>y</font>") +
            Post(7, "Admin", "3", "z"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "x", 5), Row(2, 1, "Admin", "2", "", 6)}));
    ExpectFailure(u"9 - DiscusProcessFormatting()\r\n\r\nSubscript out of range");
    EXPECT_EQ(Page().LastPostId, 2);
}

TEST_F(PostsOnPageTest, ALinkThatFailsLosesTheBodyAndEndsThePage) {
    Process(Post(5, "Admin", "1", "<a href=\"p.html\">/discus/messages/</a>") + Post(6, "Admin", "2", "y"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "", 5)}));
    ExpectFailure(u"9 - DiscusProcessLinks()\r\n\r\nSubscript out of range");
}

// The links are not gone through once the run is cancelled, and give no text back.
TEST_F(PostsOnPageTest, AFailedAttachmentLosesTheBodyAndEndsThePage) {
    Process(Post(5, "Admin", "1", "text <!--attachment: <a href=\"a.txt\" target=x>a</a><!--/attachment-->") +
            Post(6, "Admin", "2", "y"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "", 5)}));
    ExpectFailure(u"9 - ProcessAttachments()\r\n\r\nSubscript out of range");
}

TEST_F(PostsOnPageTest, APageCancelledWithinItsSecondPostWritesBothRowsInDateOrder) {
    state.ToolboxA.EventInterval = 0;
    state.ToolboxA.HandleEvents = [this] {
        if (state.PostCounter == 2) state.CancelRequested = true;
    };
    Process(Post(7, "Admin", "300", "z") + Post(6, "Admin", "200", "y") + Post(5, "Admin", "100", "x"));
    EXPECT_EQ(PostRows(), (Strings{Row(2, 1, "Admin", "200", "", 6), Row(1, 1, "Admin", "300", "z", 7)}));
    EXPECT_EQ(Page().LastPostId, 2);
    EXPECT_EQ(state.PageRows.Count(), 0);
    EXPECT_TRUE(board.messages.empty());
}

TEST_F(PostsOnPageTest, ACancelBetweenTwoPostsIsSeenBehindTheSecond) {
    state.ToolboxA.EventInterval = 0;
    state.ToolboxA.HandleEvents = [this] {
        if (state.PageRows.Count() == 1) state.CancelRequested = true;
    };
    Process(Post(5, "Admin", "100", "x") + Post(6, "Admin", "200", "y") + Post(7, "Admin", "300", "z"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "100", "x", 5), Row(2, 1, "Admin", "200", "", 6)}));
}

TEST_F(PostsOnPageTest, PostCountsGrowWithTheMemberNumber) {
    state.DefaultUserCount = 148;
    ASSERT_EQ(AddMember(u"anna", u"Anna"), 150);
    Process(Post(5, "Anna", "1", "x"));
    EXPECT_EQ(state.MemberPostCounts.size(), 251u);
    EXPECT_EQ(state.MemberPostCounts[150], 1);
}

TEST_F(PostsOnPageTest, TheThreadNumberComesFromTheMomentThePageWasEntered) {
    state.ThreadCounter = 30;
    Process(Post(5, "Admin", "1", "x"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "x", 5)}));
}

TEST_F(PostsOnPageTest, AnAttachmentGoesOutOfTheMessageAndGetsItsRowWithTheMembersNumber) {
    board.WritePage("12/a.txt", "hello");
    const int anna = AddMember(u"anna", u"Anna");
    Process(Post(5, "Anna", "1", "x " + Attachment("a.txt") + " y"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, anna, "Anna", "1", "x  y", 5)}));
    EXPECT_EQ(Rows(state.AttachmentsFile), (Strings{AttachmentRow("1", "2", "a.txt")}));
}

// The first section by the attachments' step, the second as a link of the page's poster.
TEST_F(PostsOnPageTest, TheSecondAttachmentOfAPostIsTakenAsALink) {
    board.WritePage("12/a.txt", "hello");
    board.WritePage("12/b.txt", "hello");
    AddMember(u"anna", u"Anna");
    Process(Post(4, "Admin", "1", "w") +
            Post(5, "Anna", "2", "x " + Attachment("a.txt") + Attachment("b.txt") + " y"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "w", 4), Row(2, 2, "Anna", "2", "x  y", 5)}));
    EXPECT_EQ(Rows(state.AttachmentsFile),
              (Strings{AttachmentRow("1", "2", "a.txt"), AttachmentRow("2", "2", "b.txt")}));
}

TEST_F(PostsOnPageTest, ASectionOfAnotherHostLosesItsTags) {
    Process(Post(
        5, "Admin", "1",
        "x <!--attachment: <a href=\"http://elsewhere.example/a.txt\" target=x>f</a><!--/attachment--> y"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "x f y", 5)}));
}

TEST_F(PostsOnPageTest, WithAttachmentsOffALinkInASectionGoesLikeAnyLinkToAFile) {
    board.WritePage("12/a.txt", "hello");
    state.optCreateAttachments = false;
    Process(Post(5, "Admin", "1", "x " + Attachment("a.txt") + " y"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "x  y", 5)}));
    EXPECT_EQ(Rows(state.AttachmentsFile), Strings{});
}

TEST_F(PostsOnPageTest, SurplusAttachmentRowsAreDroppedThoughTheirFilesAreCopied) {
    board.WritePage("12/a.txt", "hello");
    board.WritePage("12/b.txt", "hello");
    board.WritePage("12/c.txt", "hello");
    Process(Post(5, "Admin", "1", Attachment("a.txt") + Attachment("b.txt")) +
            Post(6, "Admin", "2", Attachment("c.txt")));
    EXPECT_EQ(Rows(state.AttachmentsFile),
              (Strings{AttachmentRow("1", "1", "a.txt"), AttachmentRow("2", "1", "b.txt")}));
    EXPECT_EQ(board.folder.Files("output/attachments").size(), 3u);
    EXPECT_EQ(state.AttachmentCounter, 3);
}

// The link to the second file goes, and the third one's link stands within that shortening.
TEST_F(PostsOnPageTest, AThirdAttachmentCloseBehindTheSecondIsPassedOver) {
    board.WritePage("12/a.txt", "hello");
    board.WritePage("12/b.txt", "hello");
    board.WritePage("12/c.txt", "hello");
    Process(Post(5, "Admin", "1", Attachment("a.txt") + Attachment("b.txt") + Attachment("c.txt")));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "f", 5)}));
    EXPECT_EQ(state.AttachmentCounter, 2);
}

TEST_F(PostsOnPageTest, AttachmentRowsFollowTheCountOfRowsWrittenInTheOrderOfTheirMaking) {
    board.WritePage("12/a.txt", "hello");
    board.WritePage("12/b.txt", "hello");
    Process(Post(7, "Admin", "300", Attachment("a.txt")) + Post(6, "Admin", "200", "y") +
            Post(5, "Admin", "100", Attachment("b.txt")));
    EXPECT_EQ(Rows(state.AttachmentsFile),
              (Strings{AttachmentRow("1", "1", "a.txt"), AttachmentRow("2", "1", "b.txt")}));
}

// The newest post has it; it goes out behind the first row written, that of the third post on the page.
TEST_F(PostsOnPageTest, TheMessageTokenInAnAttachmentRowBecomesThePlaceOfThePostWrittenBeforeIt) {
    board.WritePage("12/kvmsgno.txt", "hello");
    Process(Post(7, "Admin", "300", Attachment("kvmsgno.txt")) + Post(6, "Admin", "200", "y") +
            Post(5, "Admin", "100", "x"));
    EXPECT_EQ(Rows(state.AttachmentsFile), (Strings{AttachmentRow("1", "1", "3.txt")}));
}

TEST_F(PostsOnPageTest, NothingOfAPagePassesToTheNext) {
    board.WritePage("12/a.txt", "hello");
    board.WritePage("12/b.txt", "hello");
    Process(Post(5, "Admin", "1", Attachment("a.txt") + Attachment("b.txt")));
    Process(Post(6, "Admin", "2", "x") + Post(7, "Admin", "3", "y"));
    EXPECT_EQ(Rows(state.AttachmentsFile), (Strings{AttachmentRow("1", "1", "a.txt")}));
    EXPECT_EQ(Rows(state.PostsFile).size(), 3u);
}

TEST_F(PostsOnPageTest, ALinkIsNotedWithForumSerialPidAndFile) {
    board.WritePage("3/9.html", "x");
    state.PostCounter = 40;
    state.PageSerial = 5;
    Process(Post(5, "Admin", "1", "<a href=\"/discus/messages/3/9.html\">t</a>"));
    EXPECT_EQ(Rows(state.InternalLinksFile),
              (Strings{"[url=/discus/messages/3/9.html]t[/url]^^4^6^41^34^3^9"}));
}

TEST_F(PostsOnPageTest, LinksElsewhereKeepTheirTextAlone) {
    Process(Post(5, "Admin", "1", "see <A HREF=\"http://x.example\" TARGET=\"_top\">this</A>.<BR>\nbye"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "see this.(:)bye", 5)}));
}

TEST_F(PostsOnPageTest, AnImageInsideALocalLinkGoesWithTheLinksTags) {
    Process(
        Post(5, "Admin", "1",
             "<a href=\"/discus/messages/3/9.html\"><img src=\"/discus/messages/3/p.jpg\" alt=\"P\">t</a>"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "[url=/discus/messages/3/9.html]t[/url]", 5)}));
}

TEST_F(PostsOnPageTest, ASecondImageOfAPostIsLost) {
    Process(Post(5, "Admin", "1",
                 "<img src=\"/discus/messages/3/p.jpg\" alt=\"P\">and<img src=\"/discus/messages/3/q.jpg\" "
                 "alt=\"Q\">"));
    EXPECT_EQ(PostRows(), (Strings{Row(1, 1, "Admin", "1", "[img]/discus/messages/3/p.jpg[/img]and", 5)}));
}

}  // namespace
}  // namespace tessaly
