#include "text/folding.h"

#include <gtest/gtest.h>

#include "text/search.h"

namespace tessaly {
namespace {

TEST(Folding, LettersFoldToTheirSmallForm) {
    EXPECT_EQ(Fold(u'A'), u'a');
    EXPECT_EQ(Fold(u'Z'), u'z');
    EXPECT_EQ(Fold(u'a'), u'a');
    EXPECT_EQ(Fold(u'\u00C4'), u'\u00E4');
    EXPECT_EQ(Fold(u'\u00D8'), u'\u00F8');
    EXPECT_EQ(Fold(u'\u0416'), u'\u0436');
    EXPECT_EQ(Fold(u'\u03A3'), u'\u03C3');
}

TEST(Folding, WhatStandsBesideTheLettersStaysAsItIs) {
    EXPECT_EQ(Fold(u'@'), u'@');
    EXPECT_EQ(Fold(u'['), u'[');
    EXPECT_EQ(Fold(u'`'), u'`');
    EXPECT_EQ(Fold(u'{'), u'{');
    EXPECT_EQ(Fold(u'\u00D7'), u'\u00D7');
    EXPECT_EQ(Fold(u'\u00F7'), u'\u00F7');
    EXPECT_EQ(Fold(u'\0'), u'\0');
    EXPECT_EQ(Fold(u'\uFFFF'), u'\uFFFF');
}

TEST(Folding, TheKelvinSignIsAK) {
    EXPECT_EQ(Fold(u'\u212A'), u'k');
    EXPECT_TRUE(EqualIgnoringCase(u"\u212A", u"K"));
    EXPECT_TRUE(EqualIgnoringCase(u"k", u"\u212A"));
}

TEST(Folding, TheLongSIsAnS) {
    EXPECT_EQ(Fold(u'\u017F'), u's');
    EXPECT_TRUE(EqualIgnoringCase(u"S", u"\u017F"));
}

TEST(Folding, TheAngstromSignIsALetterWithARing) {
    EXPECT_TRUE(EqualIgnoringCase(u"\u212B", u"\u00E5"));
    EXPECT_TRUE(EqualIgnoringCase(u"\u212B", u"\u00C5"));
}

TEST(Folding, TheSharpSIsOnlyItselfAndItsCapital) {
    EXPECT_EQ(Fold(u'\u00DF'), u'\u00DF');
    EXPECT_EQ(Fold(u'\u1E9E'), u'\u00DF');
    EXPECT_FALSE(EqualIgnoringCase(u"\u00DF", u"ss"));
    EXPECT_FALSE(EqualIgnoringCase(u"\u00DF", u"SS"));
}

TEST(Folding, TheLigatureIsNotItsTwoLetters) {
    EXPECT_EQ(Fold(u'\uFB01'), u'\uFB01');
    EXPECT_FALSE(EqualIgnoringCase(u"\uFB01", u"fi"));
}

TEST(Folding, TheTurkishLettersAreNotAnI) {
    EXPECT_FALSE(EqualIgnoringCase(u"\u0130", u"i"));
    EXPECT_FALSE(EqualIgnoringCase(u"\u0131", u"I"));
}

TEST(Folding, TheThreeSigmasAreOne) {
    EXPECT_TRUE(EqualIgnoringCase(u"\u03A3\u03C3\u03C2", u"\u03C2\u03A3\u03C3"));
}

TEST(Folding, SurrogatesAreComparedAsTheyAre) {
    for (unsigned unit = 0xD800; unit <= 0xDFFF; ++unit) {
        ASSERT_EQ(Fold(static_cast<char16_t>(unit)), unit);
    }
    // Deseret long I, capital and small: a pair of cases beyond 16 bits.
    EXPECT_FALSE(EqualIgnoringCase(u"\U00010400", u"\U00010428"));
    EXPECT_TRUE(EqualIgnoringCase(u"\U00010400", u"\U00010400"));
}

TEST(Folding, AFoldedTextHasTheLengthOfTheText) {
    EXPECT_EQ(Folded(u"Stra\u00DFe \u212A\u0130 \U00010400"), u"stra\u00DFe k\u0130 \U00010400");
    EXPECT_EQ(Folded(u""), u"");
}

TEST(Folding, FoldingTwiceIsFoldingOnce) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const char16_t folded = Fold(static_cast<char16_t>(unit));
        ASSERT_EQ(Fold(folded), folded) << unit;
    }
}

TEST(Folding, InASCIINothingBeyondItFoldsButToKAndS) {
    for (unsigned unit = 0x80; unit <= 0xFFFF; ++unit) {
        if (unit == 0x212A || unit == 0x017F) continue;
        ASSERT_GE(Fold(static_cast<char16_t>(unit)), 0x80) << unit;
    }
}

TEST(LowerCase, EachLetterIsLoweredForItself) {
    EXPECT_EQ(InLowerCase(u"ISO-8859-1"), u"iso-8859-1");
    EXPECT_EQ(InLowerCase(u"\u00C4\u0416\u212A"), u"\u00E4\u0436k");
    EXPECT_EQ(InLowerCase(u""), u"");
}

TEST(LowerCase, SmallLettersStayWhereFoldingWouldChangeThem) {
    EXPECT_EQ(InLowerCase(u"\u017F\u03C2\u00DF"), u"\u017F\u03C2\u00DF");
}

}  // namespace
}  // namespace tessaly
