#include "reader/RemoveTags.h"

#include <gtest/gtest.h>

#include <random>

#include "text/search.h"

namespace tessaly {
namespace {

// The rule step by step: the first "<", the next ">", that tag goes everywhere, and again from the start.
std::u16string StepByStep(std::u16string text) {
    for (Position open = Find(text, u"<"); open != 0; open = Find(text, u"<")) {
        const Position close = Find(text, u">", open);
        if (close == 0) break;
        const std::u16string tag(Between(text, open, close + 1));
        RemoveAll(text, tag);
    }
    return text;
}

std::u16string AnyText(std::mt19937& random, std::u16string_view letters, std::size_t longest) {
    std::u16string text(random() % (longest + 1), u' ');
    for (char16_t& unit : text) unit = letters[random() % letters.size()];
    return text;
}

TEST(RemoveTags, TheFirstTagTakesItsOtherSpellingsWithIt) {
    EXPECT_EQ(RemoveTags(u"a<b>c<B>d"), u"acd");
}

TEST(RemoveTags, ALessThanWithNoGreaterThanBehindItStaysWithAllBehindIt) {
    EXPECT_EQ(RemoveTags(u"a < b"), u"a < b");
    EXPECT_EQ(RemoveTags(u"1<b>2 < 3"), u"12 < 3");
}

TEST(RemoveTags, AGreaterThanBeforeTheFirstLessThanStays) {
    EXPECT_EQ(RemoveTags(u"1 > 0 <br>and"), u"1 > 0 and");
}

TEST(RemoveTags, ALoneLessThanSwallowsAllUpToTheNextGreaterThan) {
    EXPECT_EQ(RemoveTags(u"if a < b then\r\n<b>c</b>"), u"if a c");
}

TEST(RemoveTags, ATextOfTagsAloneBecomesEmpty) {
    EXPECT_EQ(RemoveTags(u"<><b></b>"), u"");
    EXPECT_EQ(RemoveTags(u""), u"");
}

TEST(RemoveTags, ATagThatStandsInsideAnotherOneGoesThereTooAndSoChangesIt) {
    // "<b>" goes in both places: what is left of the second is "<aX".
    EXPECT_EQ(RemoveTags(u"1<b>2<a<b>X"), u"12<aX");
    EXPECT_EQ(RemoveTags(u"1<b>2<a<b>X>3"), u"123");
}

TEST(RemoveTags, ATagThatHoldsAnotherOneGoesEverywhereBeforeTheOtherOneDoes) {
    // Were the second "<a<b>" still there when "<b>" goes, "<a" would be left of it.
    EXPECT_EQ(RemoveTags(u"<a<b>1<b>2<a<b>3"), u"123");
}

TEST(RemoveTags, TheKelvinSignAndTheLongSAreTheLettersKAndS) {
    EXPECT_EQ(RemoveTags(u"1<k>2<\u212A>3"), u"123");
    EXPECT_EQ(RemoveTags(u"1<s>2<a<\u017F>3"), u"12<a3");
}

// A pass over the text for each of them would take minutes.
TEST(RemoveTags, ManyDifferentTagsGoInOnePass) {
    std::u16string text;
    std::u16string expected;
    for (int tag = 0; tag < 200000; ++tag) {
        const std::string number = std::to_string(tag);
        text += u"<a" + std::u16string(number.begin(), number.end()) + u">x";
        expected += u'x';
    }
    EXPECT_EQ(RemoveTags(std::move(text)), expected);
}

TEST(RemoveTags, AnyTextOfFewLettersComesOutAsStepByStep) {
    std::mt19937 random(20261);
    for (int round = 0; round < 60000; ++round) {
        const std::u16string text = AnyText(random, u"<<>>aAb", 24);
        ASSERT_EQ(RemoveTags(text), StepByStep(text)) << "round " << round;
    }
}

TEST(RemoveTags, AnyTextOfRepeatedAndNestedTagsComesOutAsStepByStep) {
    const std::u16string pieces[] = {u"<",    u">",     u"<a>",  u"<A>",    u"<b>",     u"<a<b>",
                                     u"<a<b", u"<b<a>", u"x",    u"<a<a>>", u"<<b>>",   u"\u212A",
                                     u"<k>",  u"<K>",   u"</b>", u"<x<a>>", u"<\u212A>"};
    std::mt19937 random(20262);
    for (int round = 0; round < 60000; ++round) {
        std::u16string text;
        const std::size_t count = random() % 14;
        for (std::size_t piece = 0; piece < count; ++piece) text += pieces[random() % std::size(pieces)];
        ASSERT_EQ(RemoveTags(text), StepByStep(text)) << "round " << round;
    }
}

}  // namespace
}  // namespace tessaly
