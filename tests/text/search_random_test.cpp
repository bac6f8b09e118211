#include <gtest/gtest.h>

#include <random>

#include "text/search.h"

// Each primitive against the plainest way of doing the same, over many small made-up texts.

namespace tessaly {
namespace {

// Folding of the characters that the alphabets below hold.
char16_t PlainFold(char16_t unit) {
    if (unit >= u'A' && unit <= u'Z') return static_cast<char16_t>(unit + 32);
    switch (unit) {
        case u'\u212A':
            return u'k';
        case u'\u017F':
            return u's';
        case u'\u00C9':
            return u'\u00E9';
        default:
            return unit;
    }
}

bool PlainlyStandsAt(std::u16string_view text, std::size_t at, std::u16string_view what, bool ignoreCase) {
    if (at + what.size() > text.size()) return false;
    for (std::size_t next = 0; next < what.size(); ++next) {
        const char16_t one = text[at + next];
        const char16_t other = what[next];
        if (ignoreCase ? PlainFold(one) != PlainFold(other) : one != other) return false;
    }
    return true;
}

Position PlainFind(std::u16string_view text, std::u16string_view what, Position start, bool ignoreCase) {
    for (auto at = static_cast<std::size_t>(start) - 1; at < text.size(); ++at) {
        if (PlainlyStandsAt(text, at, what, ignoreCase)) return static_cast<Position>(at) + 1;
    }
    return 0;
}

Position PlainFindFirstOf(std::u16string_view text, std::u16string_view units, Position start) {
    for (auto at = static_cast<std::size_t>(start) - 1; at < text.size(); ++at) {
        if (units.find(text[at]) != std::u16string_view::npos) return static_cast<Position>(at) + 1;
    }
    return 0;
}

Position PlainFindBackward(std::u16string_view text, std::u16string_view what, std::size_t start) {
    for (std::size_t end = start; end >= what.size(); --end) {
        if (PlainlyStandsAt(text, end - what.size(), what, true))
            return static_cast<Position>(end - what.size()) + 1;
    }
    return 0;
}

std::u16string PlainReplace(std::u16string_view text, std::u16string_view what, std::u16string_view with,
                            bool ignoreCase) {
    std::u16string replaced;
    std::size_t at = 0;
    while (at < text.size()) {
        if (PlainlyStandsAt(text, at, what, ignoreCase)) {
            replaced += with;
            at += what.size();
        } else {
            replaced += text[at++];
        }
    }
    return replaced;
}

constexpr std::u16string_view kAlphabets[] = {
    u"aA",          u"ab<>",         u"kK\u212A",
    u"sS\u017F",    u"\u00E9\u00C9", u"kKsS\u212A\u017F\u00E9\u00C9",
    u"aAkK\u212A<", u"xyzXYZ <>-0",  u"\xD83D\xDE00\xDE01",
};

class Chance {
  public:
    std::size_t UpTo(std::size_t most) { return random_() % (most + 1); }

    std::u16string Text(std::u16string_view alphabet, std::size_t length) {
        std::u16string text;
        while (text.size() < length) text += alphabet[UpTo(alphabet.size() - 1)];
        return text;
    }

  private:
    std::mt19937 random_{20261120};
};

struct Sample {
    std::u16string text;
    std::u16string what;
    std::u16string with;
};

// Short texts, and texts that end closely before and behind a block of 64 places; every second one is mostly
// filled with what no pattern holds, so that whole blocks are passed over.
Sample MakeSample(Chance& chance) {
    const std::u16string_view alphabet = kAlphabets[chance.UpTo(std::size(kAlphabets) - 1)];
    const bool hasLongPattern = chance.UpTo(9) == 0;
    Sample sample;
    sample.what = chance.Text(alphabet, 1 + chance.UpTo(hasLongPattern ? 70 : 3));
    sample.with = chance.Text(alphabet, chance.UpTo(5));
    const std::size_t blocks = chance.UpTo(4);
    std::size_t length =
        blocks == 0 ? chance.UpTo(12) : blocks * 64 + chance.UpTo(4) + sample.what.size() - 3;
    if (chance.UpTo(1) == 0) {
        sample.text = chance.Text(alphabet, length);
        return sample;
    }
    sample.text.assign(length, u'.');
    for (std::size_t hits = chance.UpTo(4); hits > 0 && length >= sample.what.size(); --hits) {
        sample.text.replace(chance.UpTo(length - sample.what.size()), sample.what.size(), sample.what);
    }
    return sample;
}

TEST(SearchAtRandom, EachPrimitiveDoesWhatThePlainWayDoes) {
    Chance chance;
    int hits = 0;
    for (int round = 0; round < 40000; ++round) {
        const Sample sample = MakeSample(chance);
        const std::u16string& text = sample.text;
        const std::u16string& what = sample.what;
        const auto start = static_cast<Position>(1 + chance.UpTo(text.size() + 1));
        const Position found = Find(text, what, start);
        ASSERT_EQ(found, PlainFind(text, what, start, true)) << round;
        ASSERT_EQ(FindExactly(text, what, start), PlainFind(text, what, start, false)) << round;
        const std::u16string_view units = std::u16string_view(what).substr(0, 12);
        ASSERT_EQ(FindFirstOf(text, units, start), PlainFindFirstOf(text, units, start)) << round;
        ASSERT_EQ(FindBackward(text, what), PlainFindBackward(text, what, text.size())) << round;
        if (start <= Length(text)) {
            ASSERT_EQ(FindBackward(text, what, start),
                      PlainFindBackward(text, what, static_cast<std::size_t>(start)))
                << round;
            ASSERT_EQ(StandsAt(text, start, what),
                      PlainlyStandsAt(text, static_cast<std::size_t>(start) - 1, what, true))
                << round;
        }
        ASSERT_EQ(Contains(text, what), PlainFind(text, what, 1, true) != 0) << round;
        std::u16string replaced = text;
        ReplaceAll(replaced, what, sample.with);
        ASSERT_EQ(replaced, PlainReplace(text, what, sample.with, true)) << round;
        replaced = text;
        ReplaceAllExactly(replaced, what, sample.with);
        ASSERT_EQ(replaced, PlainReplace(text, what, sample.with, false)) << round;
        replaced = text;
        RemoveAll(replaced, what);
        ASSERT_EQ(replaced, PlainReplace(text, what, u"", true)) << round;
        if (found != 0) ++hits;
    }
    // The samples are worth something only when many of them hold a hit and many do not.
    EXPECT_GT(hits, 10000);
    EXPECT_LT(hits, 35000);
}

}  // namespace
}  // namespace tessaly
