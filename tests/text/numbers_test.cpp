#include "text/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "text/RunTimeError.h"

namespace tessaly {
namespace {

template <typename Step>
int ErrorOf(Step&& step) {
    return IgnoringErrors(step);
}

TEST(IsNumeric, TakesEveryFormOfADecimalNumber) {
    for (const std::u16string_view text :
         {u"0",   u"7",   u"+7",  u"-7",   u"007",  u"1.5",  u"-1.5", u"1.",      u".5", u"+.5",
          u"-.5", u"1e3", u"1E3", u"1e+3", u"1e-3", u"1.e3", u".5e3", u"1.5E-10", u"-0", u"1e0003"}) {
        EXPECT_TRUE(IsNumeric(text)) << std::string(text.begin(), text.end());
    }
}

TEST(IsNumeric, TakesNothingElse) {
    for (const std::u16string_view text :
         {u"",         u" ",      u".",      u"+",      u"-",       u"+.",   u"e",   u"e3",    u".e3",
          u"1e",       u"1e+",    u"1e-",    u"1E",     u"1.2.3",   u"1..2", u"--1", u"+-1",   u"1-",
          u"1 2",      u"1_0",    u"1,0",    u"1'000",  u"0x10",    u"&H10", u"nan", u"NaN",   u"inf",
          u"infinity", u"-inf",   u"1e3.5",  u"1e3e3",  u"1d3",     u"$1",   u"1%",  u"(1)",   u"12a",
          u"a12",      u"\u0661", u"\uFF11", u"\u00B2", u"1\u00A0", u"1\t",  u"\t1", u"1\r\n", u"\u22121"}) {
        EXPECT_FALSE(IsNumeric(text)) << std::string(text.begin(), text.end());
    }
}

TEST(IsNumeric, BlanksAtBothEndsAreTrimmed) {
    EXPECT_TRUE(IsNumeric(u"  12  "));
    EXPECT_FALSE(IsNumeric(u"- 1"));
    EXPECT_FALSE(IsNumeric(u"1 e3"));
}

TEST(IsNumeric, ANulIsNoDigit) {
    EXPECT_FALSE(IsNumeric(std::u16string_view(u"1\0", 2)));
}

TEST(LeadingNumber, IsTheLongestBeginningThatIsANumber) {
    EXPECT_EQ(LeadingNumber(u"12abc"), 12);
    EXPECT_EQ(LeadingNumber(u"12.5.7"), 12.5);
    EXPECT_EQ(LeadingNumber(u"-3x"), -3);
    EXPECT_EQ(LeadingNumber(u"+.5"), 0.5);
    EXPECT_EQ(LeadingNumber(u"7."), 7);
    EXPECT_EQ(LeadingNumber(u"1_0"), 1);
    EXPECT_EQ(LeadingNumber(u"1,5"), 1);
    EXPECT_EQ(LeadingNumber(u"1 2"), 1);
    EXPECT_EQ(LeadingNumber(u"0x10"), 0);
}

TEST(LeadingNumber, AnExponentWithoutDigitsIsNoPartOfIt) {
    EXPECT_EQ(LeadingNumber(u"1e"), 1);
    EXPECT_EQ(LeadingNumber(u"1e+"), 1);
    EXPECT_EQ(LeadingNumber(u"2e-x"), 2);
    EXPECT_EQ(LeadingNumber(u"1e2"), 100);
    EXPECT_EQ(LeadingNumber(u"1E2x"), 100);
    EXPECT_EQ(LeadingNumber(u"5e-1"), 0.5);
    EXPECT_EQ(LeadingNumber(u"1.e2"), 100);
}

TEST(LeadingNumber, BlanksTabsAndLineEndsBeforeItArePassedOver) {
    EXPECT_EQ(LeadingNumber(u" \t\r\n 12"), 12);
    EXPECT_EQ(LeadingNumber(u"\u00A012"), 0);
    EXPECT_EQ(LeadingNumber(u"- 12"), 0);
    EXPECT_EQ(LeadingNumber(u"\v12"), 0);
}

TEST(LeadingNumber, IsZeroWhereThereIsNone) {
    for (const std::u16string_view text :
         {u"", u" ", u"abc", u".", u"-", u"+.", u"e5", u"nan", u"inf", u"\n"}) {
        EXPECT_EQ(LeadingNumber(text), 0) << std::string(text.begin(), text.end());
    }
}

TEST(LeadingNumber, HugeAndTinyExponents) {
    EXPECT_TRUE(std::isinf(LeadingNumber(u"1e999")));
    EXPECT_TRUE(std::isinf(LeadingNumber(u"1e99999999999999999999")));
    EXPECT_EQ(LeadingNumber(u"-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(LeadingNumber(u"1e-999"), 0);
    EXPECT_EQ(LeadingNumber(u"1e-99999999999999999999"), 0);
    EXPECT_EQ(LeadingNumber(u"0e999"), 0);
    EXPECT_EQ(LeadingNumber(u"0e99999999999999999999"), 0);
    EXPECT_EQ(LeadingNumber(u"0.0e-99999999999999999999"), 0);
}

TEST(LeadingNumber, ManyDigits) {
    const std::u16string zeros(400, u'0');
    EXPECT_EQ(LeadingNumber(zeros), 0);
    EXPECT_EQ(LeadingNumber(zeros + u"12"), 12);
    EXPECT_EQ(LeadingNumber(u"-" + zeros + u"12"), -12);
    EXPECT_EQ(LeadingNumber(u"0." + zeros + u"5e401"), 5);
    EXPECT_EQ(LeadingNumber(u"5" + zeros + u"e-400"), 5);
    EXPECT_EQ(LeadingNumber(u"0." + zeros + u"5"), 0);
    EXPECT_TRUE(std::isinf(LeadingNumber(u"5" + zeros)));
    EXPECT_EQ(LeadingNumber(u"1e" + zeros + u"2"), 100);
}

TEST(ToInteger, RoundsHalfToEven) {
    EXPECT_EQ(ToInteger(u"0.5"), 0);
    EXPECT_EQ(ToInteger(u"1.5"), 2);
    EXPECT_EQ(ToInteger(u"2.5"), 2);
    EXPECT_EQ(ToInteger(u"3.5"), 4);
    EXPECT_EQ(ToInteger(u"-0.5"), 0);
    EXPECT_EQ(ToInteger(u"-1.5"), -2);
    EXPECT_EQ(ToInteger(u"-2.5"), -2);
    EXPECT_EQ(ToInteger(u"2.4999"), 2);
    EXPECT_EQ(ToInteger(u"2.5001"), 3);
}

TEST(ToInteger, TakesBlanksAtBothEnds) {
    EXPECT_EQ(ToInteger(u"  1043846797 "), 1043846797);
    EXPECT_EQ(ToInteger(u"1e3"), 1000);
    EXPECT_EQ(ToInteger(u"+12"), 12);
}

TEST(ToInteger, OfATextThatIsNoNumberIsATypeMismatch) {
    EXPECT_EQ(ErrorOf([] { ToInteger(u""); }), 13);
    EXPECT_EQ(ErrorOf([] { ToInteger(u"   "); }), 13);
    EXPECT_EQ(ErrorOf([] { ToInteger(u"12a"); }), 13);
    EXPECT_EQ(ErrorOf([] { ToInteger(u"1e"); }), 13);
    EXPECT_EQ(ErrorOf([] { ToInteger(u"\t12"); }), 13);
    EXPECT_EQ(ErrorOf([] { ToInteger(u"nan"); }), 13);
}

TEST(ToInteger, OutsideOf32BitsSignedIsAnOverflow) {
    EXPECT_EQ(ToInteger(u"2147483647"), 2147483647);
    EXPECT_EQ(ToInteger(u"-2147483648"), -2147483647 - 1);
    EXPECT_EQ(ErrorOf([] { ToInteger(u"2147483648"); }), 6);
    EXPECT_EQ(ErrorOf([] { ToInteger(u"-2147483649"); }), 6);
    EXPECT_EQ(ErrorOf([] { ToInteger(u"1e10"); }), 6);
    EXPECT_EQ(ErrorOf([] { ToInteger(u"1e999"); }), 6);
    EXPECT_EQ(ErrorOf([] { ToInteger(u"-1e99999999999"); }), 6);
}

TEST(RoundToInteger, TheRangeIsTestedBehindTheRounding) {
    EXPECT_EQ(RoundToInteger(2147483647.25), 2147483647);
    EXPECT_EQ(ErrorOf([] { RoundToInteger(2147483647.5); }), 6);
    EXPECT_EQ(RoundToInteger(-2147483648.5), -2147483647 - 1);
    EXPECT_EQ(ErrorOf([] { RoundToInteger(-2147483648.75); }), 6);
}

TEST(RoundToInteger, WhatIsNoNumberIsAnOverflow) {
    EXPECT_EQ(ErrorOf([] { RoundToInteger(std::numeric_limits<double>::infinity()); }), 6);
    EXPECT_EQ(ErrorOf([] { RoundToInteger(-std::numeric_limits<double>::infinity()); }), 6);
    EXPECT_EQ(ErrorOf([] { RoundToInteger(std::numeric_limits<double>::quiet_NaN()); }), 6);
}

TEST(Arithmetic, OutsideOf32BitsSignedIsAnOverflow) {
    EXPECT_EQ(Add(2147483646, 1), 2147483647);
    EXPECT_EQ(ErrorOf([] { Add(2147483647, 1); }), 6);
    EXPECT_EQ(ErrorOf([] { Add(-2147483647 - 1, -1); }), 6);
    EXPECT_EQ(Subtract(-2147483647, 1), -2147483647 - 1);
    EXPECT_EQ(ErrorOf([] { Subtract(-2147483647 - 1, 1); }), 6);
    EXPECT_EQ(ErrorOf([] { Subtract(0, -2147483647 - 1); }), 6);
}

TEST(ToText, GivesPlainDigits) {
    EXPECT_EQ(ToText(0), u"0");
    EXPECT_EQ(ToText(-5), u"-5");
    EXPECT_EQ(ToText(1234567), u"1234567");
    EXPECT_EQ(ToText(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
}

}  // namespace
}  // namespace tessaly
