#include "finish/FieldTokens.h"

#include <gtest/gtest.h>

#include "reader/FieldEscaping.h"

namespace tessaly {
namespace {

TEST(TurnBackTokens, GivesEachOfTheNineItsCharacter) {
    EXPECT_EQ(TurnBackTokens(u"a([)b"), u"a,b");
    EXPECT_EQ(TurnBackTokens(u"a(;)b"), u"a\u201Eb");
    EXPECT_EQ(TurnBackTokens(u"a(})b"), u"a\"b");
    EXPECT_EQ(TurnBackTokens(u"a(])b"), u"a\u201Db");
    EXPECT_EQ(TurnBackTokens(u"a(|)b"), u"a\u201Cb");
    EXPECT_EQ(TurnBackTokens(u"a({)b"), u"a'b");
    EXPECT_EQ(TurnBackTokens(u"a(:)b"), u"a\nb");
    EXPECT_EQ(TurnBackTokens(u"a(<)b"), u"a`b");
    EXPECT_EQ(TurnBackTokens(u"a(>)b"), u"a\\b");
}

TEST(TurnBackTokens, LeavesOtherParentheses) {
    EXPECT_EQ(TurnBackTokens(u"(a) () (.) (( )) ([ ] (["), u"(a) () (.) (( )) ([ ] ([");
    EXPECT_EQ(TurnBackTokens(u""), u"");
}

TEST(TurnBackTokens, TakesTokensThatTouch) {
    EXPECT_EQ(TurnBackTokens(u"([)([)(:)"), u",,\n");
    EXPECT_EQ(TurnBackTokens(u"(([))"), u"(,)");
    EXPECT_EQ(TurnBackTokens(u"([([)"), u"([,");
}

TEST(TurnBackTokens, DoesNotReadATokenOutOfWhatItHasMade) {
    // The comma of the first token completes no second one.
    EXPECT_EQ(TurnBackTokens(u"(([)[)"), u"(,[)");
}

TEST(TurnBackTokens, IsTheWayBackOfTheEscapes) {
    const std::u16string text = u"\"a\", 'b' `c` \\d\\ \u201Ee\u201D \u201Cf\u201D\ng (h) \u65E5";
    EXPECT_EQ(TurnBackTokens(EscapeField(text)), text);
}

TEST(TurnBackName, StaysOnOneLine) {
    EXPECT_EQ(TurnBackName(u" Anna(:)Virtanen "), u"Anna Virtanen");
    EXPECT_EQ(TurnBackName(u"O({)Hara"), u"O'Hara");
}

}  // namespace
}  // namespace tessaly
