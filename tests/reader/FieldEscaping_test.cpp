#include "reader/FieldEscaping.h"

#include <gtest/gtest.h>

#include <random>

#include "text/search.h"

namespace tessaly {
namespace {

std::u16string AnyText(std::mt19937& random, std::u16string_view letters, std::size_t longest) {
    std::u16string text(random() % (longest + 1), u' ');
    for (char16_t& unit : text) unit = letters[random() % letters.size()];
    return text;
}

TEST(EscapeField, EachDangerousCharacterBecomesItsToken) {
    EXPECT_EQ(EscapeField(u","), u"([)");
    EXPECT_EQ(EscapeField(u"\u201E"), u"(;)");
    EXPECT_EQ(EscapeField(u"\""), u"(})");
    EXPECT_EQ(EscapeField(u"\u201D"), u"(])");
    EXPECT_EQ(EscapeField(u"\u201C"), u"(|)");
    EXPECT_EQ(EscapeField(u"'"), u"({)");
    EXPECT_EQ(EscapeField(u"\r\n"), u"(:)");
    EXPECT_EQ(EscapeField(u"\n"), u"(:)");
    EXPECT_EQ(EscapeField(u"`"), u"(<)");
    EXPECT_EQ(EscapeField(u"\\"), u"(>)");
}

TEST(EscapeField, ALineEndOfTwoCharactersIsOneToken) {
    EXPECT_EQ(EscapeField(u"one\r\ntwo\nthree\r\r\nfour\n\r\n"), u"one(:)two(:)three\r(:)four(:)(:)");
}

TEST(EscapeField, ACarriageReturnAloneStays) {
    EXPECT_EQ(EscapeField(u"one\rtwo\r"), u"one\rtwo\r");
}

TEST(EscapeField, ATextThatHasBeenThroughItBeforeDoesNotChange) {
    const std::u16string once = EscapeField(u"a,b\u201Ec\"d\u201De\u201Cf'g\r\nh\ni`j\\k");
    EXPECT_EQ(once, u"a([)b(;)c(})d(])e(|)f({)g(:)h(:)i(<)j(>)k");
    EXPECT_EQ(EscapeField(once), once);
}

TEST(EscapeField, OtherCharactersStayAsTheyAre) {
    EXPECT_EQ(EscapeField(u""), u"");
    EXPECT_EQ(EscapeField(u"a; b: \u2018c\u2019 <d> (e) \u00E4 \U0001F600\t."),
              u"a; b: \u2018c\u2019 <d> (e) \u00E4 \U0001F600\t.");
}

TEST(EscapeField, AnyTextComesOutAsByTenReplacementsInARow) {
    const std::u16string replacements[][2] = {
        {u",", u"([)"}, {u"\u201E", u"(;)"}, {u"\"", u"(})"}, {u"\u201D", u"(])"}, {u"\u201C", u"(|)"},
        {u"'", u"({)"}, {u"\r\n", u"(:)"},   {u"\n", u"(:)"}, {u"`", u"(<)"},      {u"\\", u"(>)"}};
    std::mt19937 random(20263);
    for (int round = 0; round < 30000; ++round) {
        const std::u16string text = AnyText(random, u",\u201E\"\u201D\u201C'\r\r\n\n`\\()[<a", 20);
        std::u16string expected = text;
        for (const auto& [what, with] : replacements) ReplaceAll(expected, what, with);
        ASSERT_EQ(EscapeField(text), expected) << "round " << round;
    }
}

TEST(RemoveFieldTokens, EachOfItsMarksGoes) {
    EXPECT_EQ(RemoveFieldTokens(u"a([)b(;)c(})d(])e(|)f({)g\r\nh\ni(<)j?k^l .m...n(>)o"), u"abcdefghijklmno");
}

TEST(RemoveFieldTokens, TheTokenOfALineEndStays) {
    EXPECT_EQ(RemoveFieldTokens(EscapeField(u"Anna\r\nMaria")), u"Anna(:)Maria");
}

TEST(RemoveFieldTokens, BehindEscapeFieldANameComesBackWithoutItsComma) {
    EXPECT_EQ(RemoveFieldTokens(EscapeField(u"Smith, John")), u"Smith John");
    EXPECT_EQ(RemoveFieldTokens(EscapeField(u"O'Hara \"Red\" \u201Ex\u201D \u201Cy\u201D `z` \\")),
              u"OHara Red x y z ");
}

TEST(RemoveFieldTokens, APointAloneStaysAndABlankBeforeItTakesBothAway) {
    EXPECT_EQ(RemoveFieldTokens(u"J.R. Smith"), u"J.R. Smith");
    EXPECT_EQ(RemoveFieldTokens(u"J .R"), u"JR");
    // The blank and the first point go before three points are looked for.
    EXPECT_EQ(RemoveFieldTokens(u"wait ..."), u"wait..");
    EXPECT_EQ(RemoveFieldTokens(u"wait...."), u"wait.");
}

TEST(RemoveFieldTokens, ATokenThatOnlyArisesByARemovalGoesWhenItsTurnComesLater) {
    // "([)" goes first and leaves "(;)"; "(>)" goes last and leaves "([)", whose turn is over.
    EXPECT_EQ(RemoveFieldTokens(u"(([);)"), u"");
    EXPECT_EQ(RemoveFieldTokens(u"((>)[)"), u"([)");
}

TEST(RemoveFieldTokens, AnyTextComesOutAsByFourteenRemovalsInARow) {
    const std::u16string marks[] = {u"([)", u"(;)", u"(})", u"(])", u"(|)", u"({)", u"\r\n",
                                    u"\n",  u"(<)", u"?",   u"^",   u" .",  u"...", u"(>)"};
    std::mt19937 random(20264);
    for (int round = 0; round < 30000; ++round) {
        const std::u16string text = AnyText(random, u"(([;}]|{:<>)))\r\n?^ ..a", 24);
        std::u16string expected = text;
        for (const std::u16string& mark : marks) ReplaceAll(expected, mark, u"");
        ASSERT_EQ(RemoveFieldTokens(text), expected) << "round " << round;
    }
}

}  // namespace
}  // namespace tessaly
