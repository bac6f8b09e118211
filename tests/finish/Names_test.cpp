#include "finish/Names.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(CutTo, CountsCharactersAndNotHalves) {
    EXPECT_EQ(CutTo(u"abcdef", 3), u"abc");
    EXPECT_EQ(CutTo(u"abc", 3), u"abc");
    EXPECT_EQ(CutTo(u"\U0001F389\U0001F389\U0001F389", 2), u"\U0001F389\U0001F389");
    EXPECT_EQ(CutTo(u"\U0001F389\U0001F389", 2), u"\U0001F389\U0001F389");
}

TEST(CutTo, LeavesNoBlankAtACut) {
    EXPECT_EQ(CutTo(u"ab cd", 3), u"ab");
}

TEST(UniqueNames, PutTheNumberBehindANameThatIsTaken) {
    UniqueNames names;
    EXPECT_EQ(names.Take(u"Anna", 120, 2), u"Anna");
    EXPECT_EQ(names.Take(u"anna", 120, 3), u"anna_3");
    EXPECT_EQ(names.Take(u"Bert", 120, 4), u"Bert");
}

TEST(UniqueNames, TakeAccentsKanaAndBlanksAtTheEndForNothing) {
    UniqueNames names;
    EXPECT_EQ(names.Take(u"Jos\u00E9", 120, 2), u"Jos\u00E9");
    EXPECT_EQ(names.Take(u"Jose", 120, 3), u"Jose_3");
    EXPECT_EQ(names.Take(u"\u304B\u306A", 120, 4), u"\u304B\u306A");
    EXPECT_EQ(names.Take(u"\u30AB\u30CA", 120, 5), u"\u30AB\u30CA_5");
    EXPECT_EQ(names.Take(u"Bert", 120, 6), u"Bert");
    EXPECT_EQ(names.Take(u"bert  ", 120, 7), u"bert  _7");
}

TEST(UniqueNames, TakeASharpSForOneSAndForTwo) {
    UniqueNames names;
    EXPECT_EQ(names.Take(u"Gro\u00DF", 120, 2), u"Gro\u00DF");
    EXPECT_EQ(names.Take(u"Gross", 120, 3), u"Gross_3");
    EXPECT_EQ(names.Take(u"Gros", 120, 4), u"Gros_4");
}

TEST(UniqueNames, TakeAnIWithoutItsDotForAnI) {
    UniqueNames names;
    EXPECT_EQ(names.Take(u"Ayd\u0131n", 120, 2), u"Ayd\u0131n");
    EXPECT_EQ(names.Take(u"AYDIN", 120, 3), u"AYDIN_3");
}

TEST(UniqueNames, TellDoubledLettersApart) {
    UniqueNames names;
    EXPECT_EQ(names.Take(u"Jes", 120, 2), u"Jes");
    EXPECT_EQ(names.Take(u"Jess", 120, 3), u"Jess");
}

TEST(UniqueNames, TakeAllCharactersBeyondSixteenBitsForOne) {
    UniqueNames names;
    EXPECT_EQ(names.Take(u"a\U0001F44D", 120, 2), u"a\U0001F44D");
    EXPECT_EQ(names.Take(u"a\U0001F44E", 120, 3), u"a\U0001F44E_3");
}

TEST(UniqueNames, StayApartWhenTheyAreCut) {
    UniqueNames names;
    EXPECT_EQ(names.Take(u"abcdefgh1", 8, 2), u"abcdefgh");
    EXPECT_EQ(names.Take(u"abcdefgh2", 8, 13), u"abcde_13");
    EXPECT_EQ(names.Take(u"abcde_13", 8, 4), u"abcde__4");
}

TEST(UniqueNames, GoOnUntilOneIsFree) {
    UniqueNames names;
    names.Take(u"x_5", 120, 2);
    names.Take(u"x", 120, 3);
    EXPECT_EQ(names.Take(u"X", 120, 5), u"X_5_2");
}

}  // namespace
}  // namespace tessaly
