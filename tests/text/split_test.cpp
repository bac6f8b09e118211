#include "text/split.h"

#include <gtest/gtest.h>

#include "text/RunTimeError.h"

namespace tessaly {
namespace {

using Pieces = std::vector<std::u16string_view>;

TEST(Split, GivesThePiecesBetweenTheDelimiters) {
    EXPECT_EQ(Split(u"a,b,c", u","), (Pieces{u"a", u"b", u"c"}));
    EXPECT_EQ(Split(u"a\r\nb", u"\r\n"), (Pieces{u"a", u"b"}));
    EXPECT_EQ(Split(u"abc", u","), (Pieces{u"abc"}));
}

TEST(Split, AnEmptyTextGivesNoElementAtAll) {
    EXPECT_EQ(Split(u"", u","), Pieces{});
    EXPECT_EQ(IgnoringErrors([] { Element(Split(u"", u","), 0); }), 9);
}

TEST(Split, DelimitersAtTheEndsAndSideBySideGiveEmptyPieces) {
    EXPECT_EQ(Split(u",", u","), (Pieces{u"", u""}));
    EXPECT_EQ(Split(u",a,,b,", u","), (Pieces{u"", u"a", u"", u"b", u""}));
    EXPECT_EQ(Split(u"\r\n", u"\r\n"), (Pieces{u"", u""}));
}

TEST(Split, IgnoresTheCaseOfTheDelimiter) {
    EXPECT_EQ(Split(u"1x2X3", u"X"), (Pieces{u"1", u"2", u"3"}));
}

TEST(Split, OfOverlappingDelimitersTheLeftOneCounts) {
    EXPECT_EQ(Split(u"a---b", u"--"), (Pieces{u"a", u"-b"}));
}

TEST(Split, AnEmptyDelimiterLeavesTheTextWhole) {
    EXPECT_EQ(Split(u"abc", u""), (Pieces{u"abc"}));
}

TEST(Split, ThePiecesLieInTheText) {
    const std::u16string text = u"ab,cd";
    const Pieces pieces = Split(text, u",");
    EXPECT_EQ(pieces[1].data(), text.data() + 3);
}

TEST(Element, OfAnIndexThatIsNotThereIsOutOfRange) {
    const Pieces pieces = Split(u"a,b", u",");
    EXPECT_EQ(Element(pieces, 0), u"a");
    EXPECT_EQ(Element(pieces, 1), u"b");
    EXPECT_EQ(IgnoringErrors([&] { Element(pieces, 2); }), 9);
}

TEST(Trim, TakesBlanksAtBothEnds) {
    EXPECT_EQ(Trim(u"  a b  "), u"a b");
    EXPECT_EQ(Trim(u"a"), u"a");
    EXPECT_EQ(Trim(u"   "), u"");
    EXPECT_EQ(Trim(u""), u"");
}

TEST(Trim, LeavesEverythingButTheBlank) {
    EXPECT_EQ(Trim(u"\ta\t"), u"\ta\t");
    EXPECT_EQ(Trim(u"\r\na\r\n"), u"\r\na\r\n");
    EXPECT_EQ(Trim(u"\u00A0a\u00A0"), u"\u00A0a\u00A0");
    EXPECT_EQ(Trim(u"\u3000a\u2003"), u"\u3000a\u2003");
    EXPECT_EQ(Trim(u" \t a"), u"\t a");
}

}  // namespace
}  // namespace tessaly
