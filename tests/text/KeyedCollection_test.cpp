#include "text/KeyedCollection.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <type_traits>
#include <vector>

namespace tessaly {
namespace {

using Numbers = KeyedCollection<int>;

std::vector<std::u16string> KeysOf(const Numbers& numbers) {
    std::vector<std::u16string> keys;
    for (const auto& [key, item] : numbers) keys.push_back(key);
    return keys;
}

using Keys = std::vector<std::u16string>;

TEST(KeyedCollection, AnItemIsFoundByItsKeyInAnyCase) {
    Numbers numbers;
    numbers.Add(u"Anna", 1);
    numbers.Add(u"M\u00E4rz", 2);
    EXPECT_EQ(numbers.Get(u"ANNA"), 1);
    EXPECT_EQ(numbers.Get(u"m\u00C4rz"), 2);
    ASSERT_NE(numbers.Find(u"anna"), nullptr);
    EXPECT_EQ(*numbers.Find(u"anna"), 1);
}

TEST(KeyedCollection, AMissingKeyIsAnInvalidCallAndChangesNothing) {
    Numbers numbers;
    numbers.Add(u"Anna", 1);
    EXPECT_EQ(IgnoringErrors([&] { numbers.Get(u"Bert"); }), 5);
    EXPECT_EQ(IgnoringErrors([&] { numbers.Remove(u"Bert"); }), 5);
    EXPECT_EQ(numbers.Find(u"Bert"), nullptr);
    EXPECT_EQ(numbers.Count(), 1);
}

TEST(KeyedCollection, AKeyThatDiffersInCaseOnlyIsThereAlready) {
    Numbers numbers;
    numbers.Add(u"Anna", 1);
    EXPECT_EQ(IgnoringErrors([&] { numbers.Add(u"aNNa", 2); }), 457);
    EXPECT_EQ(IgnoringErrors([&] { numbers.AddBefore(u"ANNA", 3, 1); }), 457);
    EXPECT_EQ(numbers.Count(), 1);
    EXPECT_EQ(numbers.Get(u"anna"), 1);
    EXPECT_EQ(KeysOf(numbers), (Keys{u"Anna"}));
}

TEST(KeyedCollection, TheSharpSIsAnotherKeyThanTwoLetters) {
    Numbers numbers;
    numbers.Add(u"Stra\u00DFe", 1);
    numbers.Add(u"Strasse", 2);
    EXPECT_EQ(numbers.Count(), 2);
}

TEST(KeyedCollection, AnEmptyKeyIsAKeyLikeAnyOther) {
    Numbers numbers;
    numbers.Add(u"", 7);
    EXPECT_EQ(numbers.Get(u""), 7);
    EXPECT_EQ(IgnoringErrors([&] { numbers.Add(u"", 8); }), 457);
}

TEST(KeyedCollection, ItemsStandInTheOrderOfTheirEntry) {
    Numbers numbers;
    for (const auto* key : {u"c", u"a", u"B", u"10", u"9"}) numbers.Add(key, 0);
    EXPECT_EQ(KeysOf(numbers), (Keys{u"c", u"a", u"B", u"10", u"9"}));
    numbers.Remove(u"b");
    numbers.Add(u"b", 0);
    EXPECT_EQ(KeysOf(numbers), (Keys{u"c", u"a", u"10", u"9", u"b"}));
}

TEST(KeyedCollection, AnItemIsEnteredInFrontOfAnother) {
    Numbers numbers;
    numbers.Add(u"a", 1);
    numbers.Add(u"b", 2);
    numbers.AddBefore(u"first", 3, 1);
    numbers.AddBefore(u"third", 4, 3);
    EXPECT_EQ(KeysOf(numbers), (Keys{u"first", u"a", u"third", u"b"}));
    EXPECT_EQ(numbers.Get(u"THIRD"), 4);
}

TEST(KeyedCollection, InFrontOfAnElementThatIsNotThereIsAnInvalidCall) {
    Numbers numbers;
    EXPECT_EQ(IgnoringErrors([&] { numbers.AddBefore(u"12", 1, 1); }), 5);
    EXPECT_EQ(numbers.Count(), 0);
    numbers.Add(u"a", 1);
    EXPECT_EQ(IgnoringErrors([&] { numbers.AddBefore(u"12", 1, 2); }), 5);
    EXPECT_EQ(IgnoringErrors([&] { numbers.AddBefore(u"12", 1, 0); }), 5);
    EXPECT_EQ(IgnoringErrors([&] { numbers.AddBefore(u"12", 1, -1); }), 5);
    EXPECT_EQ(KeysOf(numbers), (Keys{u"a"}));
    EXPECT_EQ(numbers.Find(u"12"), nullptr);
}

TEST(KeyedCollection, AnItemCanBeChangedInItsPlace) {
    Numbers numbers;
    numbers.Add(u"a", 1);
    numbers.Get(u"A") = 5;
    *numbers.Find(u"a") += 1;
    EXPECT_EQ(numbers.Get(u"a"), 6);
}

TEST(KeyedCollection, ItsItemsStayFoundWhenItIsMoved) {
    Numbers numbers;
    numbers.Add(u"a", 1);
    Numbers moved = std::move(numbers);
    moved.Add(u"b", 2);
    EXPECT_EQ(moved.Get(u"a"), 1);
    EXPECT_EQ(KeysOf(moved), (Keys{u"a", u"b"}));
    moved = Numbers();
    EXPECT_EQ(moved.Count(), 0);
    EXPECT_EQ(moved.Find(u"a"), nullptr);
}

// Many keys, many of them gone again, so that some stand in the way of others.
TEST(KeyedCollection, FindsWhatWasAddedAndNotRemovedAmongManyKeys) {
    std::mt19937 random(1);
    Numbers numbers;
    std::map<std::u16string, int> expected;
    for (int round = 0; round < 20000; ++round) {
        const auto name = static_cast<char16_t>(random() % 400 + 0x100);
        const std::u16string key = Folded(std::u16string(random() % 3, u'a') + name);
        if (random() % 5 < 3) {
            const int error = IgnoringErrors([&] { numbers.Add(key, round); });
            ASSERT_EQ(error == kNoError, expected.emplace(key, round).second) << round;
        } else {
            const int error = IgnoringErrors([&] { numbers.Remove(key); });
            ASSERT_EQ(error == kNoError, expected.erase(key) == 1) << round;
        }
        ASSERT_EQ(numbers.Count(), static_cast<std::int32_t>(expected.size())) << round;
        if (round % 1000 != 0) continue;
        for (char16_t unit = 0x100; unit < 0x100 + 400; ++unit) {
            for (const std::u16string_view head : {u"", u"a", u"AA"}) {
                const std::u16string sought = std::u16string(head) + unit;
                const auto known = expected.find(Folded(sought));
                const int* const found = numbers.Find(sought);
                ASSERT_EQ(found != nullptr, known != expected.end()) << round;
                if (found == nullptr) continue;
                ASSERT_EQ(*found, known->second) << round;
            }
        }
    }
    EXPECT_GT(expected.size(), 300U);
}

// A copy's keys would lead to the items of the other.
TEST(KeyedCollection, CannotBeCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<Numbers>);
    EXPECT_FALSE(std::is_copy_assignable_v<Numbers>);
}

// Memory runs out when it is moved for the last time that it bears.
struct Brittle {
    explicit Brittle(int moves) : moves_(moves) {}
    Brittle(Brittle&& other) : moves_(other.moves_ - 1) {
        if (moves_ == 0) throw std::bad_alloc();
    }
    int moves_;
};

TEST(KeyedCollection, AKeyWhoseItemCouldNotBeEnteredIsNotThere) {
    int moves = 0;
    int error = kOutOfMemory;
    while (error == kOutOfMemory) {
        KeyedCollection<Brittle> items;
        error = IgnoringErrors([&] { items.Add(u"a", Brittle(++moves)); });
        const bool isThere = error == kNoError;
        ASSERT_EQ(items.Find(u"A") != nullptr, isThere) << moves;
        ASSERT_EQ(items.Count(), isThere ? 1 : 0) << moves;
    }
    EXPECT_EQ(error, kNoError);
    EXPECT_GT(moves, 1);
}

}  // namespace
}  // namespace tessaly
