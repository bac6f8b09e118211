#include "translate/UpdateInternalLinks.h"

#include "tests/translate/TranslateTest.h"

namespace tessaly {
namespace {

class UpdateInternalLinksTest : public testing::TranslateTest {
  protected:
    void Update(std::string_view links) {
        board.folder.Write("output/InternalLinks1.txt", links);
        UpdateInternalLinks(state);
    }

    std::string Updated() const { return board.Output("InternalLinksUpdate1.txt"); }

    void ExpectFailure() {
        EXPECT_EQ(board.messages,
                  (std::vector<std::u16string>{u"9 - UpdateInternalLinks()\r\n\r\nSubscript out of range"}));
        EXPECT_EQ(state.ToolboxA.RecordedErrors, board.messages);
        EXPECT_TRUE(state.CancelRequested);
    }
};

TEST_F(UpdateInternalLinksTest, TheHeadingIsShownAndLoggedWhateverTheOptionsAndIsNoTrouble) {
    UpdateInternalLinks(state);
    EXPECT_EQ(state.txtArea.Text, u"Writing Updated Internal Links File - Please Wait...\r\n");
    EXPECT_EQ(ErrorLog(), "");
    mybbCloseOutputFiles(state);
    EXPECT_TRUE(board.Log().ends_with(u"Writing Updated Internal Links File - Please Wait...\r\n\r\n"));
}

TEST_F(UpdateInternalLinksTest, WithoutALinksFileThereIsNoUpdateFile) {
    UpdateInternalLinks(state);
    EXPECT_FALSE(board.HasOutput("InternalLinksUpdate1.txt"));
    state.InternalLinksFile.Name = u"";
    UpdateInternalLinks(state);
    EXPECT_FALSE(board.HasOutput("InternalLinksUpdate1.txt"));
    EXPECT_TRUE(board.messages.empty());
}

TEST_F(UpdateInternalLinksTest, AnEmptyLinksFileGivesNoUpdateFile) {
    Update("");
    EXPECT_FALSE(board.HasOutput("InternalLinksUpdate1.txt"));
}

TEST_F(UpdateInternalLinksTest, ALineWhoseTopicIsUnknownIsCopied) {
    Update("[url=/discus/messages/12/345.html]t[/url]^^4^3^77^34^12^345\r\n");
    EXPECT_EQ(Updated(), "[url=/discus/messages/12/345.html]t[/url]^^4^3^77^34^12^345\r\n");
    EXPECT_EQ(state.InternalLinksUpdateFile.Stream, nullptr);
    EXPECT_FALSE(board.HasOutput("Discus Conversion Import SQL.sql"));
}

TEST_F(UpdateInternalLinksTest, AKnownTopicGetsItsNewLinkInField1) {
    state.ThreadIdsByFile.Add(u"345", u"7,x,21");
    Update(
        "[url=/discus/messages/12/345.html]t[/url]^^4^3^77^34^12^345\r\n"
        "[url=/discus/messages/12/346.html]u[/url]^^4^3^77^34^12^346\r\n");
    EXPECT_EQ(Updated(),
              "[url=/discus/messages/12/345.html]t[/url]^"
              "[url=http://new.example/viewtopic.php?f=7&t=21]t[/url]^4^3^77^34^12^345\r\n"
              "[url=/discus/messages/12/346.html]u[/url]^^4^3^77^34^12^346\r\n");
}

TEST_F(UpdateInternalLinksTest, TheLinkTextIsTrimmedAndLosesQuotesAndBrackets) {
    state.ThreadIdsByFile.Add(u"345", u"7,x,21");
    state.mybbForumAddr = u"http://new.example/\"quoted\"/";
    Update("[url=a]  \"b\" ]c  [/url] rest^^4^3^77^34^12^ 345 \r\n");
    EXPECT_EQ(Updated(),
              "[url=a]  \"b\" ]c  [/url] rest^"
              "[url=http://new.example/quoted/viewtopic.php?f=7&t=21]b c[/url]^4^3^77^34^12^ 345 \r\n");
}

TEST_F(UpdateInternalLinksTest, AnItemWithFewerThanThreePartsEndsTheUpdate) {
    state.ThreadIdsByFile.Add(u"345", u"21");
    Update("[url=a]t[/url]^^4^3^77^34^12^345\r\n");
    ExpectFailure();
}

TEST_F(UpdateInternalLinksTest, ALineWithFewerThanTwoFieldsGoesOutAsItStands) {
    Update("no caret in it\r\n");
    EXPECT_EQ(Updated(), "no caret in it\r\n");
}

TEST_F(UpdateInternalLinksTest, ALineWhoseField1IsFilledGoesOutAsItStands) {
    state.ThreadIdsByFile.Add(u"345", u"7,x,21");
    Update("[url=a]t[/url]^filled^4^3^77^34^12^345\r\nx^y\r\nx^ \r\n");
    EXPECT_EQ(Updated(), "[url=a]t[/url]^filled^4^3^77^34^12^345\r\nx^y\r\nx^ \r\n");
}

TEST_F(UpdateInternalLinksTest, ALineOfTwoToSevenFieldsWithAnEmptyField1EndsTheUpdate) {
    for (const char* const line :
         {"a^\r\n", "a^^b\r\n", "a^^b^c\r\n", "a^^b^c^d\r\n", "a^^b^c^d^e\r\n", "a^^b^c^d^e^f\r\n"}) {
        board.messages.clear();
        state.ToolboxA.RecordedErrors.clear();
        state.CancelRequested = false;
        Update(line);
        ExpectFailure();
    }
}

TEST_F(UpdateInternalLinksTest, ALineOfEightFieldsIsLongEnough) {
    Update("a^^b^c^d^e^f^\r\n");
    EXPECT_EQ(Updated(), "a^^b^c^d^e^f^\r\n");
    EXPECT_TRUE(board.messages.empty());
}

TEST_F(UpdateInternalLinksTest, ACaretInALinkTextShiftsTheFieldsAndTheLineIsStillCopied) {
    state.ThreadIdsByFile.Add(u"345", u"7,x,21");
    Update("[url=a]x^2[/url]^^4^3^77^34^12^345\r\n");
    EXPECT_EQ(Updated(), "[url=a]x^2[/url]^^4^3^77^34^12^345\r\n");
}

// The text between the carets is an empty field 1, and field 7 is then the page that holds the link.
TEST_F(UpdateInternalLinksTest, TwoCaretsInALinkTextLeadToThePageThatHoldsTheLink) {
    state.ThreadIdsByFile.Add(u"77", u"7,x,21");
    Update("[url=a]x^^2[/url]^^4^3^5^77^12^345\r\n");
    EXPECT_EQ(Updated(),
              "[url=a]x^[url=http://new.example/viewtopic.php?f=7&t=21][/url]^2[/url]^^4^3^5^77^12^345\r\n");
}

TEST_F(UpdateInternalLinksTest, EmptyLinesAreNotCopied) {
    Update("\r\none\r\n\r\ntwo\r\n\r\n");
    EXPECT_EQ(Updated(), "one\r\ntwo\r\n");
}

TEST_F(UpdateInternalLinksTest, TheFileIsReadAndWrittenInTheCharsetOfTheRun) {
    state.Charset = u"iso-8859-1";
    Update(
        "[url=a]gr\xFC\xDF"
        "e[/url]^^4^3^77^34^12^345\r\n");
    EXPECT_EQ(Updated(),
              "[url=a]gr\xFC\xDF"
              "e[/url]^^4^3^77^34^12^345\r\n");
}

TEST_F(UpdateInternalLinksTest, SequencesAreNotLookedForInTheFile) {
    state.optFindDiscusSpecialCharacters = true;
    state.ReplaceableCharacters.Add(u"&auml;", u"x");
    Update("a&auml;b\r\n");
    EXPECT_EQ(Updated(), "a&auml;b\r\n");
}

TEST_F(UpdateInternalLinksTest, TheUpdateFileIsSplitBeyondTheLimitWithoutAStatement) {
    state.SplitMBSize = 10;
    Update("12345678\r\nabcdefgh\r\n");
    EXPECT_EQ(Updated(), "12345678\r\n");
    EXPECT_EQ(board.Output("InternalLinksUpdate2.txt"), "abcdefgh\r\n");
    EXPECT_FALSE(board.HasOutput("Discus Conversion Import SQL.sql"));
}

TEST_F(UpdateInternalLinksTest, ACancelledRunGetsItsUpdateFileAllTheSame) {
    state.CancelRequested = true;
    Update("one\r\n");
    EXPECT_EQ(Updated(), "one\r\n");
}

}  // namespace
}  // namespace tessaly
