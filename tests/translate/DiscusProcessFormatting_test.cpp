#include "translate/DiscusProcessFormatting.h"

#include <random>

#include "reader/TagScanning.h"
#include "tests/translate/PlainText.h"
#include "tests/translate/TranslateTest.h"

namespace tessaly {
namespace {

using testing::PlainFind;
using testing::PlainReplace;

class DiscusProcessFormattingTest : public testing::TranslateTest {
  protected:
    std::u16string Format(std::u16string_view body) {
        return DiscusProcessFormatting(state, std::u16string(body));
    }

    void ExpectEndOfRun(std::u16string_view body) {
        EXPECT_EQ(Format(body), u"");
        EXPECT_EQ(
            board.messages,
            (std::vector<std::u16string>{u"9 - DiscusProcessFormatting()\r\n\r\nSubscript out of range"}));
        EXPECT_EQ(state.ToolboxA.RecordedErrors, board.messages);
        EXPECT_TRUE(state.CancelRequested);
    }
};

struct Example {
    std::u16string_view body;
    std::u16string_view result;
};

TEST_F(DiscusProcessFormattingTest, FontTagsBecomeTheirKindOfBBCode) {
    const Example examples[] = {
        {u"<font size=+1>x</font>", u"[size=1]x[/size]"},
        {u"<font size=-1>x</font>", u"[size=1]x[/size]"},
        {u"<font color=FF0000>x</font>", u"[color=red]x[/color]"},
        {u"<font color=#FF0000>x</font>", u"[color=#FF0000]x[/color]"},
        {u"<font face=Arial size=2>x</font>", u"[font=Arial size=2]x[/font]"},
        {u"<font size=2 color=red>x</font>", u"[size=2 color=red]x[/size]"},
        {u"<font size=2><font color=red>x</font>y</font>", u"[size=2][color=red]x[/color]y[/size]"},
        {u"<font size=2>x</font></font>", u"[size=2]x[/size][/font]"},
        {u"</font><font size=2>x</font>", u"[/font][size=2]x[/font]"},
    };
    for (const Example& example : examples) {
        EXPECT_EQ(Format(example.body), example.result);
    }
    EXPECT_EQ(board.messages.size(), 0u);
    EXPECT_FALSE(state.CancelRequested);
}

TEST_F(DiscusProcessFormattingTest, MoreOpeningsThanClosingsEndTheRun) {
    ExpectEndOfRun(u"<font size=2><font color=red>x</font>");
}

TEST_F(DiscusProcessFormattingTest, AStrayClosingAheadEndsTheRunWhenALaterOneFindsItsPartnerInsideTheList) {
    ExpectEndOfRun(u"</font><font size=2><font size=3>x</font>");
}

TEST_F(DiscusProcessFormattingTest, ABodyWithoutFontTagsGetsTheReplacementsAlone) {
    std::vector<TagPair> pairs;
    EXPECT_FALSE(PairFontTags(state, u"<b>x</b>", u"<font ", u"</font>", pairs));
    EXPECT_EQ(Format(u"<b>x</b> <center>y</center>"), u"[b]x[/b] [center]y[/center]");
}

TEST_F(DiscusProcessFormattingTest, AClosingWithoutAnyOpeningBecomesAFontClosing) {
    EXPECT_EQ(Format(u"x</font>y"), u"x[/font]y");
    EXPECT_FALSE(state.CancelRequested);
}

TEST_F(DiscusProcessFormattingTest, OpeningsWithoutAnyClosingEndNothing) {
    EXPECT_EQ(Format(u"<font size=2>x<font color=red>y"), u"[size=2]x[color=red]y");
    EXPECT_FALSE(state.CancelRequested);
}

TEST_F(DiscusProcessFormattingTest, AnOpeningWithoutItsEndGetsNoBracketAndNothingIsLeftToDelete) {
    const std::u16string text = Format(u"a</b><font size=2 b");
    EXPECT_EQ(text, u"a[/b][size=2 b");
    EXPECT_EQ(RemoveTagInformation(state, text), u"a[/b][size=2 b");
}

TEST_F(DiscusProcessFormattingTest, TheSevenCharacterPlaceholderKeepsTheFollowingPositionsValid) {
    EXPECT_EQ(Format(u"<font color=red>a</font><font size=2>b</font><font color=blue>c</font>"),
              u"[color=red]a[/color][size=2]b[/size][color=blue]c[/color]");
}

TEST_F(DiscusProcessFormattingTest, APlaceholderInTheTextItselfGetsItsLastLetter) {
    EXPECT_EQ(Format(u"x[/COLO]y"), u"x[/color]y");
}

TEST_F(DiscusProcessFormattingTest, DoubleQuotesVanishFromTextAndTags) {
    EXPECT_EQ(Format(u"say \"yes\" <font face=\"Courier New\">x</font><a title=\"y\">"),
              u"say yes [font=Courier New]x[/font]<a title=y>");
}

TEST_F(DiscusProcessFormattingTest, AQuotedSizeLosesItsQuotesBeforeItsSign) {
    EXPECT_EQ(Format(u"<font size=\"+1\">x</font>"), u"[size=1]x[/size]");
}

TEST_F(DiscusProcessFormattingTest, SignsBehindAnEqualsSignVanishInPlainTextToo) {
    EXPECT_EQ(Format(u"a=-1, b=+2, c=--3, d=-+4"), u"a=1, b=2, c=-3, d=4");
}

TEST_F(DiscusProcessFormattingTest, ABlankBehindSizeGoes) {
    EXPECT_EQ(Format(u"<font size= 2>x</font>, Size= 5"), u"[size=2]x[/size], size=5");
}

TEST_F(DiscusProcessFormattingTest, OnlyTwoColoursGetANameAndOnlyInTheirExactForm) {
    EXPECT_EQ(Format(u"<font color=\"ff0000\">a</font><font color=\"000000\">b</font>"),
              u"[color=red]a[/color][color=black]b[/color]");
    EXPECT_EQ(Format(u"<font color=ff0000 size=2>a</font><font color=#000000>b</font>"),
              u"[color=ff0000 size=2]a[/color][color=#000000]b[/color]");
    EXPECT_EQ(Format(u"<font color=00ff00>a</font><font color= 000000>b</font>"),
              u"[color=00ff00]a[/color][color= 000000]b[/color]");
}

TEST_F(DiscusProcessFormattingTest, ABoldTagWithAnAttributeStaysWhileItsClosingIsTranslated) {
    EXPECT_EQ(Format(u"<b class=x>y</b>"), u"<b class=x>y[/b]");
}

TEST_F(DiscusProcessFormattingTest, ColourAndSizeClosingsThatAreNoHtmlAreTranslated) {
    EXPECT_EQ(Format(u"x</color>y</size>"), u"x[/color]y[/size]");
}

TEST_F(DiscusProcessFormattingTest, AnOpeningOfAnotherFormLeavesItsClosingAFontClosing) {
    EXPECT_EQ(Format(u"<font  size=2>x</font>"), u"<font  size=2>x[/font]");
    EXPECT_EQ(Format(u"<font class=y size=2>x</font>"), u"<font class=y size=2>x[/font]");
}

TEST_F(DiscusProcessFormattingTest, AQuoteInFrontOfTheAttributeHidesItFromThePairingAlone) {
    EXPECT_EQ(Format(u"<font \"size=2\">x</font>"), u"[size=2]x[/font]");
}

TEST_F(DiscusProcessFormattingTest, UpperCaseIsTheSame) {
    EXPECT_EQ(Format(u"<FONT SIZE=2><B>X</B></FONT><CENTER>Y</CENTER>"),
              u"[size=2][b]X[/b][/size][center]Y[/center]");
}

TEST_F(DiscusProcessFormattingTest, AllOtherTagsStay) {
    EXPECT_EQ(Format(u"<i>x</i><BR><u>y</u>"), u"<i>x</i><BR><u>y</u>");
}

TEST_F(DiscusProcessFormattingTest, FurtherOpeningsInsideAnUnendedOneAreTranslatedToo) {
    EXPECT_EQ(Format(u"<font size=2 <b>x"), u"[size=2 <b]x");
}

class PairFontTagsTest : public testing::TranslateTest {
  protected:
    bool Pair(std::u16string_view text) { return PairFontTags(state, text, u"<font ", u"</font>", pairs); }

    void ExpectPair(std::size_t index, Position opening, Position closing) {
        EXPECT_EQ(pairs[index].opening, opening);
        EXPECT_EQ(pairs[index].closing, closing);
    }

    std::vector<TagPair> pairs;
};

// <font a> at 2, <font b> at 11, closings at 20 and 28.
TEST_F(PairFontTagsTest, AClosingBindsToTheNearestOpeningStillOpen) {
    ASSERT_TRUE(Pair(u".<font a>.<font b>.</font>.</font>"));
    ASSERT_EQ(pairs.size(), 2u);
    ExpectPair(0, 11, 20);
    ExpectPair(1, 2, 28);
}

TEST_F(PairFontTagsTest, SurplusClosingsBehindAllOpeningsDoNoHarm) {
    ASSERT_TRUE(Pair(u"<font a></font></font></font>"));
    ASSERT_EQ(pairs.size(), 1u);
    ExpectPair(0, 1, 9);
}

// The first closing stands ahead and leaves its element empty; the second is a partner of the second opening.
TEST_F(PairFontTagsTest, AClosingWithoutPartnerLeavesItsElementEmpty) {
    ASSERT_TRUE(Pair(u"</font><font a><font b></font>"));
    ASSERT_EQ(pairs.size(), 2u);
    ExpectPair(0, 0, 0);
    ExpectPair(1, 16, 24);
}

TEST_F(PairFontTagsTest, NoPairsAreHandedOutWhenAPartnerLiesPastTheEnd) {
    EXPECT_FALSE(Pair(u"</font><font a></font>"));
    EXPECT_TRUE(pairs.empty());
}

TEST_F(PairFontTagsTest, NoPairsAreHandedOutWithoutAnOpeningOrWithoutAClosing) {
    EXPECT_FALSE(Pair(u"<font a>"));
    EXPECT_FALSE(Pair(u"</font>"));
    EXPECT_FALSE(Pair(u""));
    EXPECT_TRUE(pairs.empty());
}

TEST_F(PairFontTagsTest, AFontTagWithoutAttributesIsNoOpening) {
    EXPECT_FALSE(Pair(u"<font>x</font>"));
}

TEST(CloseFontTagOpeningsTest, TheFirstEndBehindEachOpeningBecomesABracket) {
    ConversionState state;
    std::u16string text = u"><font size=1>a<FONT SIZE=2 b>c><font face=d>";
    CloseFontTagOpenings(state, text, u"<font size=");
    EXPECT_EQ(text, u"><font size=1]a<FONT SIZE=2 b]c><font face=d>");
}

TEST(CloseFontTagOpeningsTest, AnOpeningInsideAnotherOneSharesItsBracket) {
    ConversionState state;
    std::u16string text = u"<font size=1 <font size=2>a<font size=3";
    CloseFontTagOpenings(state, text, u"<font size=");
    EXPECT_EQ(text, u"<font size=1 <font size=2]a<font size=3");
}

// The pairing as two loops over two lists, an opening at 0 being used up; the pairs as their texts' numbers.
// False stands for every failure behind the lists.
bool PairPlainly(std::u16string_view text, std::vector<TagPair>& pairs) {
    std::vector<Position> openings;
    for (Position at = PlainFind(text, u"<font "); at != 0; at = PlainFind(text, u"<font ", at + 1))
        openings.push_back(at);
    std::vector<Position> closings;
    for (Position at = PlainFind(text, u"</font>"); at != 0; at = PlainFind(text, u"</font>", at + 1))
        closings.push_back(at);
    if (openings.empty() || closings.empty()) return false;
    std::vector<TagPair> made(openings.size());
    for (std::size_t closing = 0; closing < closings.size(); ++closing) {
        for (std::size_t opening = openings.size(); opening-- > 0;) {
            if (openings[opening] == 0 || openings[opening] > closings[closing]) continue;
            if (closing >= made.size()) return false;
            made[closing] = {openings[opening], closings[closing]};
            openings[opening] = 0;
            break;
        }
    }
    pairs = made;
    return true;
}

void ClosePlainly(std::u16string& text, std::u16string_view opening) {
    Position position = 1;
    while (true) {
        position = PlainFind(text, opening, position);
        if (position == 0) return;
        position = PlainFind(text, u">", position);
        if (position == 0) return;
        text[static_cast<std::size_t>(position) - 1] = u']';
    }
}

// The twenty-one steps one after the other; "failed" where an empty pair ends the run.
std::u16string FormatPlainly(std::u16string text, bool& failed) {
    std::vector<TagPair> pairs;
    if (PairPlainly(text, pairs)) {
        for (const TagPair& pair : pairs) {
            failed = pair.opening == 0;
            if (failed) return {};
            const auto opening = static_cast<std::size_t>(pair.opening) - 1;
            const auto closing = static_cast<std::size_t>(pair.closing) - 1;
            if (testing::PlainlyStandsAt(text, opening, u"<font size=")) text.replace(closing, 7, u"[/size]");
            if (testing::PlainlyStandsAt(text, opening, u"<font face=")) text.replace(closing, 7, u"[/font]");
            if (testing::PlainlyStandsAt(text, opening, u"<font color="))
                text.replace(closing, 7, u"[/colo]");
        }
    }
    text = PlainReplace(text, u"\"", u"");
    text = PlainReplace(text, u"=-", u"=");
    text = PlainReplace(text, u"=+", u"=");
    ClosePlainly(text, u"<font size=");
    ClosePlainly(text, u"<font face=");
    ClosePlainly(text, u"<font color=");
    text = PlainReplace(text, u"<b>", u"[b]");
    text = PlainReplace(text, u"size= ", u"size=");
    text = PlainReplace(text, u"<center>", u"[center]");
    text = PlainReplace(text, u"<font face=", u"[font=");
    text = PlainReplace(text, u"<font size=", u"[size=");
    text = PlainReplace(text, u"<font color=", u"[color=");
    text = PlainReplace(text, u"color=ff0000]", u"color=red]");
    text = PlainReplace(text, u"color=000000]", u"color=black]");
    text = PlainReplace(text, u"</b>", u"[/b]");
    text = PlainReplace(text, u"</font>", u"[/font]");
    text = PlainReplace(text, u"</color>", u"[/color]");
    text = PlainReplace(text, u"</size>", u"[/size]");
    text = PlainReplace(text, u"</center>", u"[/center]");
    return PlainReplace(text, u"[/colo]", u"[/color]");
}

// Bodies of whole and torn tags. \u017F is a long s, which counts as an "s".
std::u16string RandomBody(std::mt19937& random) {
    static constexpr std::u16string_view kPieces[] = {u"<font size=",
                                                      u"<font color=",
                                                      u"<font face=",
                                                      u"<FONT SIZE=2>",
                                                      u"<font size=+1>",
                                                      u"<font ",
                                                      u"</font>",
                                                      u"</FONT>",
                                                      u"</font>",
                                                      u"</font",
                                                      u"<font color=ff0000>",
                                                      u"<Font Color=000000>",
                                                      u"<b>",
                                                      u"</B>",
                                                      u"<center>",
                                                      u"</center>",
                                                      u"</size>",
                                                      u"</color>",
                                                      u"[/colo]",
                                                      u"size= ",
                                                      u"\"",
                                                      u"=",
                                                      u"-",
                                                      u"+",
                                                      u">",
                                                      u"<",
                                                      u"<font \u017Fize=2>",
                                                      u"color=000000",
                                                      u"]",
                                                      u"x",
                                                      u" ",
                                                      u"<<font size=1>",
                                                      u"<i>",
                                                      u"\u212A",
                                                      u"</"};
    std::uniform_int_distribution<std::size_t> length(0, 24);
    std::uniform_int_distribution<std::size_t> piece(0, std::size(kPieces) - 1);
    std::u16string body;
    for (std::size_t count = length(random); count > 0; --count) body += kPieces[piece(random)];
    return body;
}

TEST(DiscusProcessFormattingRandomTest, PairingIsThatOfTheTwoLoops) {
    std::mt19937 random(20261);
    ConversionState state;
    int paired = 0;
    for (int round = 0; round < 30000; ++round) {
        const std::u16string body = RandomBody(random);
        std::vector<TagPair> expected;
        std::vector<TagPair> made;
        const bool arePairsExpected = PairPlainly(body, expected);
        ASSERT_EQ(PairFontTags(state, body, u"<font ", u"</font>", made), arePairsExpected) << round;
        ASSERT_EQ(made.size(), expected.size()) << round;
        for (std::size_t index = 0; index < made.size(); ++index) {
            ASSERT_EQ(made[index].opening, expected[index].opening) << round;
            ASSERT_EQ(made[index].closing, expected[index].closing) << round;
        }
        paired += arePairsExpected ? 1 : 0;
    }
    EXPECT_GT(paired, 3000);
}

TEST(DiscusProcessFormattingRandomTest, TheResultIsThatOfTheTwentyOneStepsInARow) {
    std::mt19937 random(20262);
    ConversionState state;
    int failures = 0;
    for (int round = 0; round < 30000; ++round) {
        const std::u16string body = RandomBody(random);
        bool failed = false;
        const std::u16string expected = FormatPlainly(body, failed);
        state.CancelRequested = false;
        ASSERT_EQ(DiscusProcessFormatting(state, body), expected) << round;
        ASSERT_EQ(state.CancelRequested, failed) << round;
        failures += failed ? 1 : 0;
    }
    EXPECT_GT(failures, 1000);
}

}  // namespace
}  // namespace tessaly
