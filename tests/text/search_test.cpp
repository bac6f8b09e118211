#include "text/search.h"

#include <gtest/gtest.h>

#include "text/RunTimeError.h"

namespace tessaly {
namespace {

template <typename Step>
int ErrorOf(Step&& step) {
    return IgnoringErrors(step);
}

std::u16string Replaced(std::u16string text, std::u16string_view what, std::u16string_view with) {
    ReplaceAll(text, what, with);
    return text;
}

std::u16string ReplacedExactly(std::u16string text, std::u16string_view what, std::u16string_view with) {
    ReplaceAllExactly(text, what, with);
    return text;
}

std::u16string Removed(std::u16string text, std::u16string_view what) {
    RemoveAll(text, what);
    return text;
}

TEST(Find, GivesTheFirstPlaceCountedFromOne) {
    EXPECT_EQ(Find(u"abcabc", u"a"), 1);
    EXPECT_EQ(Find(u"abcabc", u"bc"), 2);
    EXPECT_EQ(Find(u"abcabc", u"abcabc"), 1);
    EXPECT_EQ(Find(u"abcabc", u"x"), 0);
}

TEST(Find, IgnoresCase) {
    EXPECT_EQ(Find(u"a <TITLE> b", u"<title>"), 3);
    EXPECT_EQ(Find(u"a <title> b", u"<TiTlE>"), 3);
    EXPECT_EQ(Find(u"M\u00C4RZ", u"m\u00E4rz"), 1);
}

TEST(Find, BeginsAtTheStart) {
    EXPECT_EQ(Find(u"abcabc", u"a", 1), 1);
    EXPECT_EQ(Find(u"abcabc", u"a", 2), 4);
    EXPECT_EQ(Find(u"abcabc", u"abc", 4), 4);
    EXPECT_EQ(Find(u"abcabc", u"abc", 5), 0);
    EXPECT_EQ(Find(u"abcabc", u"c", 6), 6);
}

TEST(Find, ASearchThatStartsBehindTheEndFindsNothing) {
    EXPECT_EQ(Find(u"abc", u"c", 4), 0);
    EXPECT_EQ(Find(u"abc", u"c", 5), 0);
    EXPECT_EQ(Find(u"abc", u"c", 2147483647), 0);
    EXPECT_EQ(Find(u"", u"c", 1), 0);
    EXPECT_EQ(Find(u"", u"", 1), 0);
    EXPECT_EQ(Find(u"abc", u"", 4), 0);
}

TEST(Find, AStartBelowOneIsAnInvalidCall) {
    EXPECT_EQ(ErrorOf([] { Find(u"abc", u"a", 0); }), 5);
    EXPECT_EQ(ErrorOf([] { Find(u"abc", u"a", -1); }), 5);
    EXPECT_EQ(ErrorOf([] { Find(u"", u"", 0); }), 5);
}

TEST(Find, AnEmptyTextStandsWhereTheSearchStarts) {
    EXPECT_EQ(Find(u"abc", u""), 1);
    EXPECT_EQ(Find(u"abc", u"", 3), 3);
}

TEST(Find, APatternLongerThanTheTextStandsNowhere) {
    EXPECT_EQ(Find(u"abc", u"abcd"), 0);
    EXPECT_EQ(Find(u"abc", u"cd", 3), 0);
}

TEST(Find, OverlappingBeginningsAreNotMissed) {
    EXPECT_EQ(Find(u"aaab", u"aab"), 2);
    EXPECT_EQ(Find(u"--->", u"-->"), 2);
    EXPECT_EQ(Find(u"<<!--Top", u"<!--top"), 2);
}

TEST(Find, APatternOfKelvinAndLongSIsFoundInAllItsForms) {
    EXPECT_EQ(Find(u"..ks", u"\u212A\u017F"), 3);
    EXPECT_EQ(Find(u"..\u212AS", u"ks"), 3);
    EXPECT_EQ(Find(u"..k\u017F", u"KS"), 3);
    EXPECT_EQ(Find(u"tra\u017Fh <\u212Aey>", u"<key>"), 7);
}

TEST(Find, APatternBeyondASCIIIsFound) {
    EXPECT_EQ(Find(u"aaa\u00E4\u00F6\u00FC", u"\u00C4\u00D6\u00DC"), 4);
    EXPECT_EQ(Find(u"x\U0001F600y", u"\U0001F600"), 2);
    EXPECT_EQ(Find(u"x\U0001F600y", u"\U0001F601"), 0);
}

// Places in and around the blocks of 64 in which a long text is looked through.
TEST(Find, AHitIsFoundAtEachPlaceOfALongText) {
    for (const std::u16string_view what : {u"<b>", u"k", u"\u00E9", u"Font ", u"s\u017F"}) {
        for (std::size_t at = 0; at < 200; ++at) {
            std::u16string text(at, u'x');
            text += what;
            text.resize(260, u'x');
            ASSERT_EQ(Find(text, what), static_cast<Position>(at) + 1);
            ASSERT_EQ(FindExactly(text, what), static_cast<Position>(at) + 1);
            text.resize(at + what.size());
            ASSERT_EQ(Find(text, what), static_cast<Position>(at) + 1);
            text.pop_back();
            ASSERT_EQ(Find(text, what), 0);
        }
    }
}

TEST(Find, ItsTwoRarestUnitsAloneAreNoHit) {
    std::u16string text;
    for (int at = 0; at < 100; ++at) text += u"<a >";
    EXPECT_EQ(Find(text, u"<b >"), 0);
    text += u"<B >";
    EXPECT_EQ(Find(text, u"<b >"), 401);
}

TEST(FindExactly, TellsUpperFromLowerCase) {
    EXPECT_EQ(FindExactly(u"aAbB", u"A"), 2);
    EXPECT_EQ(FindExactly(u"aAbB", u"B"), 4);
    EXPECT_EQ(FindExactly(u"aAbB", u"ab"), 0);
    EXPECT_EQ(FindExactly(u"K", u"\u212A"), 0);
}

TEST(FindExactly, TreatsItsStartLikeFind) {
    EXPECT_EQ(FindExactly(u"abcabc", u"a", 2), 4);
    EXPECT_EQ(FindExactly(u"abc", u"c", 4), 0);
    EXPECT_EQ(FindExactly(u"abc", u"", 2), 2);
    EXPECT_EQ(ErrorOf([] { FindExactly(u"abc", u"a", 0); }), 5);
    EXPECT_EQ(ErrorOf([] { FindExactly(u"abc", u"a", -1); }), 5);
}

TEST(FindFirstOf, GivesTheFirstPlaceOfAnyOfTheUnits) {
    EXPECT_EQ(FindFirstOf(u"ab&c;d", u"&;"), 3);
    EXPECT_EQ(FindFirstOf(u"ab&c;d", u"&;", 4), 5);
    EXPECT_EQ(FindFirstOf(u"ab&c;d", u"&;", 6), 0);
    EXPECT_EQ(FindFirstOf(u"abc", u""), 0);
    EXPECT_EQ(FindFirstOf(u"aBc", u"b"), 0);
}

TEST(FindFirstOf, TreatsItsStartLikeFind) {
    EXPECT_EQ(FindFirstOf(u"abc", u"c", 4), 0);
    EXPECT_EQ(FindFirstOf(u"abc", u"c", 2147483647), 0);
    EXPECT_EQ(FindFirstOf(u"", u"c"), 0);
    EXPECT_EQ(ErrorOf([] { FindFirstOf(u"abc", u"a", 0); }), 5);
    EXPECT_EQ(ErrorOf([] { FindFirstOf(u"abc", u"a", -1); }), 5);
}

TEST(FindFirstOf, TakesADozenUnitsAndNoMore) {
    EXPECT_EQ(FindFirstOf(u"..l", u"abcdefghijkl"), 3);
    EXPECT_EQ(ErrorOf([] { FindFirstOf(u"..l", u"abcdefghijklm"); }), 5);
}

TEST(FindBackward, GivesTheLastPlace) {
    EXPECT_EQ(FindBackward(u"a/b/c", u"/"), 4);
    EXPECT_EQ(FindBackward(u"abcABC", u"bc"), 5);
    EXPECT_EQ(FindBackward(u"abc", u"x"), 0);
    EXPECT_EQ(FindBackward(u"abc", u"abc"), 1);
    EXPECT_EQ(FindBackward(u"", u"a"), 0);
}

TEST(FindBackward, TheHitEndsAtOrBeforeTheStart) {
    EXPECT_EQ(FindBackward(u"a/b/c", u"/", 5), 4);
    EXPECT_EQ(FindBackward(u"a/b/c", u"/", 4), 4);
    EXPECT_EQ(FindBackward(u"a/b/c", u"/", 3), 2);
    EXPECT_EQ(FindBackward(u"a/b/c", u"/", 1), 0);
    EXPECT_EQ(FindBackward(u"abab", u"ab", 4), 3);
    EXPECT_EQ(FindBackward(u"abab", u"ab", 3), 1);
    EXPECT_EQ(FindBackward(u"abab", u"ab", 1), 0);
}

TEST(FindBackward, FromMinusOneItStartsAtTheEnd) {
    EXPECT_EQ(FindBackward(u"a/b/c/", u"/", -1), 6);
}

TEST(FindBackward, FromZeroOrBelowMinusOneIsAnInvalidCall) {
    EXPECT_EQ(ErrorOf([] { FindBackward(u"a/b", u"/", 0); }), 5);
    EXPECT_EQ(ErrorOf([] { FindBackward(u"a/b", u"/", -2); }), 5);
    EXPECT_EQ(ErrorOf([] { FindBackward(u"", u"/", 0); }), 5);
}

TEST(FindBackward, ASearchThatStartsBehindTheEndFindsNothing) {
    EXPECT_EQ(FindBackward(u"a/b", u"/", 3), 2);
    EXPECT_EQ(FindBackward(u"a/b", u"/", 4), 0);
    EXPECT_EQ(FindBackward(u"", u"/", 1), 0);
}

TEST(FindBackward, APatternLongerThanTheTextStandsNowhere) {
    EXPECT_EQ(FindBackward(u"abc", u"abcd"), 0);
    EXPECT_EQ(FindBackward(u"abcdef", u"abcd", 3), 0);
}

TEST(Contains, IgnoresCase) {
    EXPECT_TRUE(Contains(u"a SHOWPAGE.HTML b", u"showpage.html"));
    EXPECT_FALSE(Contains(u"a show page", u"showpage"));
    EXPECT_FALSE(Contains(u"", u"a"));
}

TEST(StandsAt, LooksAtJustThatPlace) {
    EXPECT_TRUE(StandsAt(u"abCD", 3, u"cd"));
    EXPECT_FALSE(StandsAt(u"abCD", 2, u"cd"));
    EXPECT_FALSE(StandsAt(u"abCD", 4, u"cd"));
    EXPECT_FALSE(StandsAt(u"abCD", 5, u"c"));
    EXPECT_FALSE(StandsAt(u"abCD", 0, u"a"));
    EXPECT_FALSE(StandsAt(u"abCD", -1, u"a"));
}

TEST(EqualIgnoringCase, NeedsTheSameLength) {
    EXPECT_TRUE(EqualIgnoringCase(u"Anna", u"aNNA"));
    EXPECT_FALSE(EqualIgnoringCase(u"Anna", u"Anna "));
    EXPECT_TRUE(EqualIgnoringCase(u"", u""));
}

TEST(Between, GivesTheTextUpToTheSecondPlace) {
    EXPECT_EQ(Between(u"abcdef", 2, 4), u"bc");
    EXPECT_EQ(Between(u"abcdef", 1, 7), u"abcdef");
    EXPECT_EQ(Between(u"abcdef", 3, 3), u"");
}

TEST(Between, WhatLiesBehindTheEndIsLeftOut) {
    EXPECT_EQ(Between(u"abc", 2, 100), u"bc");
    EXPECT_EQ(Between(u"abc", 4, 9), u"");
    EXPECT_EQ(Between(u"abc", 50, 60), u"");
}

TEST(Between, ANegativeLengthOrAStartBelowOneIsAnInvalidCall) {
    EXPECT_EQ(ErrorOf([] { Between(u"abc", 3, 2); }), 5);
    EXPECT_EQ(ErrorOf([] { Between(u"abc", 2, 0); }), 5);
    EXPECT_EQ(ErrorOf([] { Between(u"abc", 0, 2); }), 5);
    EXPECT_EQ(ErrorOf([] { Between(u"abc", -1, 2); }), 5);
}

TEST(From, GivesTheRestOfTheText) {
    EXPECT_EQ(From(u"abc", 1), u"abc");
    EXPECT_EQ(From(u"abc", 3), u"c");
    EXPECT_EQ(From(u"abc", 4), u"");
    EXPECT_EQ(From(u"abc", 100), u"");
    EXPECT_EQ(ErrorOf([] { From(u"abc", 0); }), 5);
}

TEST(ReplaceAll, TakesAllOccurrencesInAnyCase) {
    EXPECT_EQ(Replaced(u"<b>x<B>y", u"<b>", u"[b]"), u"[b]x[b]y");
    EXPECT_EQ(Replaced(u"aAbB", u"A", u"."), u"..bB");
}

TEST(ReplaceAll, GrowingAndShrinkingReplacements) {
    EXPECT_EQ(Replaced(u"a,b,,c", u",", u"([)"), u"a([)b([)([)c");
    EXPECT_EQ(Replaced(u"a([)b([)([)c", u"([)", u","), u"a,b,,c");
    EXPECT_EQ(Replaced(u",", u",", u"([)"), u"([)");
    EXPECT_EQ(Replaced(u"abcabc", u"abc", u""), u"");
}

TEST(ReplaceAll, WhatIsPutInIsNotLookedThroughAgain) {
    EXPECT_EQ(Replaced(u"aa", u"a", u"aa"), u"aaaa");
    EXPECT_EQ(Replaced(u"aab", u"ab", u"b"), u"ab");
    EXPECT_EQ(Replaced(u"a--b", u"-", u"--"), u"a----b");
}

TEST(ReplaceAll, OfOverlappingOccurrencesTheLeftOneGoes) {
    EXPECT_EQ(Replaced(u"aaa", u"aa", u"b"), u"ba");
    EXPECT_EQ(Replaced(u"aaaa", u"aa", u"bcd"), u"bcdbcd");
    EXPECT_EQ(Replaced(u"ababa", u"aba", u"x"), u"xba");
}

TEST(ReplaceAll, AnEmptyPatternChangesNothing) {
    EXPECT_EQ(Replaced(u"abc", u"", u"x"), u"abc");
    EXPECT_EQ(Replaced(u"", u"", u"x"), u"");
    EXPECT_EQ(Replaced(u"", u"a", u"x"), u"");
}

TEST(ReplaceAll, TouchesNothingWhenThereIsNothingToReplace) {
    std::u16string text(1000, u'x');
    const char16_t* const before = text.data();
    ReplaceAll(text, u"y", u"long replacement");
    EXPECT_EQ(text.data(), before);
    EXPECT_EQ(text, std::u16string(1000, u'x'));
}

TEST(ReplaceAllExactly, LeavesTheOtherCase) {
    EXPECT_EQ(ReplacedExactly(u"C:\\xxx\\XXX.txt", u"XXX", u"1"), u"C:\\xxx\\1.txt");
    EXPECT_EQ(ReplacedExactly(u"aAa", u"a", u"bb"), u"bbAbb");
}

TEST(RemoveAll, DeletesEachOccurrenceOnce) {
    EXPECT_EQ(Removed(u"a--b--", u"-"), u"ab");
    EXPECT_EQ(Removed(u"<A HREF=x", u"<a href="), u"x");
    EXPECT_EQ(Removed(u"aabb", u"ab"), u"ab");
    EXPECT_EQ(Removed(u"abc", u""), u"abc");
}

TEST(RemoveAll, DeletesNulCharacters) {
    EXPECT_EQ(Removed(std::u16string(u"a\0b\0", 4), std::u16string_view(u"\0", 1)), u"ab");
}

TEST(ReplaceAll, ALongTextIsReplacedThroughout) {
    std::u16string text;
    std::u16string expected;
    for (int at = 0; at < 5000; ++at) {
        text += u"word<BR>";
        expected += u"word\n";
    }
    EXPECT_EQ(Replaced(text, u"<br>", u"\n"), expected);
    EXPECT_EQ(Replaced(expected, u"\n", u"<BR>"), text);
}

}  // namespace
}  // namespace tessaly
