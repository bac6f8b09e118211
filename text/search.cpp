#include "text/search.h"

#include <algorithm>
#include <array>
#include <experimental/simd>
#include <limits>

#include "text/RunTimeError.h"
#include "text/folding.h"

namespace tessaly {

namespace {

namespace simd = std::experimental;

constexpr std::size_t kNowhere = std::u16string_view::npos;

// A unit of the text sought that is cheap to look for: (unit | mask) == value holds for it in all its cases.
struct Anchor {
    std::size_t offset = kNowhere;
    char16_t mask = 0;
    char16_t value = 0;
    int rarity = 0;
};

constexpr bool IsLetter(char16_t unit) {
    const auto lower = static_cast<char16_t>(unit | 0x20);
    return lower >= u'a' && lower <= u'z';
}

constexpr char kRare = 4;
constexpr std::u16string_view kCommonMarks = u" -./\"<>";

// How seldom a character of ASCII stands in a page, 0 for one that cannot be an anchor: ignoring case, "k"
// and "s" have a third case, the Kelvin sign and the long s.
constexpr std::array<char, 128> MakeRarities(bool ignoreCase) {
    std::array<char, 128> rarities{};
    for (std::size_t code = 0; code < rarities.size(); ++code) {
        const auto unit = static_cast<char16_t>(code);
        const auto lower = static_cast<char16_t>(unit | 0x20);
        const bool hasThirdCase = ignoreCase && (lower == u'k' || lower == u's');
        char rarity = kRare;
        if (kCommonMarks.find(unit) != std::u16string_view::npos) rarity = 3;
        if (unit >= u'0' && unit <= u'9') rarity = 2;
        if (IsLetter(unit)) rarity = hasThirdCase ? 0 : 1;
        rarities[unit] = rarity;
    }
    return rarities;
}

constexpr std::array<char, 128> kRarities = MakeRarities(false);
constexpr std::array<char, 128> kRaritiesIgnoringCase = MakeRarities(true);

int RarityOf(char16_t unit, bool ignoreCase) {
    if (unit >= 0x80) return ignoreCase ? 0 : kRare;
    return ignoreCase ? kRaritiesIgnoringCase[unit] : kRarities[unit];
}

struct Rarest {
    std::size_t offset = 0;
    int rarity = 0;
};

Anchor MakeAnchor(std::u16string_view what, const Rarest& rarest, bool ignoreCase) {
    const char16_t unit = what[rarest.offset];
    const char16_t mask = ignoreCase && IsLetter(unit) ? 0x20 : 0;
    return {rarest.offset, mask, static_cast<char16_t>(unit | mask), rarest.rarity};
}

struct SameUnit {
    static constexpr bool kIgnoresCase = false;
    static bool Equal(char16_t one, char16_t other) { return one == other; }
};

struct SameFolded {
    static constexpr bool kIgnoresCase = true;
    static bool Equal(char16_t one, char16_t other) { return one == other || Fold(one) == Fold(other); }
};

// As many units at once as the machine compares in one step.
using Units = simd::native_simd<char16_t>;

// Looks for one text again and again: for its two rarest units, at many places at once, and compares the text
// only where both stand.
template <typename Rule>
class Search {
  public:
    explicit Search(std::u16string_view what) : what_(what) {
        Rarest first;
        Rarest second;
        for (std::size_t at = 0; at < what.size() && second.rarity < kRare; ++at) {
            const Rarest here{at, RarityOf(what[at], Rule::kIgnoresCase)};
            if (here.rarity > first.rarity) {
                second = first;
                first = here;
            } else if (here.rarity > second.rarity) {
                second = here;
            }
        }
        if (first.rarity == 0) return;
        if (second.rarity == 0) second = first;
        first_ = MakeAnchor(what, first, Rule::kIgnoresCase);
        second_ = MakeAnchor(what, second, Rule::kIgnoresCase);
    }

    // The first offset at or behind `from`, kNowhere when there is none.
    std::size_t Next(std::u16string_view text, std::size_t from) const {
        if (what_.size() > text.size() || from > text.size() - what_.size()) return kNowhere;
        const std::size_t last = text.size() - what_.size();
        std::size_t at = from;
        if (first_.rarity == 0) return Plainly(text, at, last);
        while (last - at >= kBlock) {
            if (!BlockHolds(text.data() + at)) {
                at += kBlock;
                continue;
            }
            const std::size_t end = at + kBlock;
            for (; at < end; at += Units::size()) {
                const std::size_t found = AmongUnits(text, at);
                if (found != kNowhere) return found;
            }
        }
        for (; last - at >= Units::size(); at += Units::size()) {
            const std::size_t found = AmongUnits(text, at);
            if (found != kNowhere) return found;
        }
        return Plainly(text, at, last);
    }

  private:
    static constexpr std::size_t kBlock = 4 * Units::size();

    static auto Holds(const char16_t* place, const Anchor& anchor) {
        return (Units(place + anchor.offset, simd::element_aligned) | anchor.mask) == anchor.value;
    }

    auto AnchorsAt(const char16_t* place) const { return Holds(place, first_) && Holds(place, second_); }

    // A rare unit alone tells nearly all blocks.
    bool BlockHolds(const char16_t* block) const {
        if (first_.rarity == kRare) {
            return AnyOfFour(block, [this](const char16_t* place) { return Holds(place, first_); });
        }
        return AnyOfFour(block, [this](const char16_t* place) { return AnchorsAt(place); });
    }

    template <typename Test>
    static bool AnyOfFour(const char16_t* block, Test test) {
        const auto lower = test(block) || test(block + Units::size());
        const auto upper = test(block + 2 * Units::size()) || test(block + 3 * Units::size());
        return simd::any_of(lower || upper);
    }

    std::size_t AmongUnits(std::u16string_view text, std::size_t at) const {
        auto found = AnchorsAt(text.data() + at);
        while (simd::any_of(found)) {
            const auto place = static_cast<std::size_t>(simd::find_first_set(found));
            if (StandsAtOffset(text, at + place)) return at + place;
            found[place] = false;
        }
        return kNowhere;
    }

    std::size_t Plainly(std::u16string_view text, std::size_t from, std::size_t last) const {
        const std::size_t anchor = first_.rarity == 0 ? 0 : first_.offset;
        for (std::size_t at = from; at <= last; ++at) {
            if (!Rule::Equal(text[at + anchor], what_[anchor])) continue;
            if (StandsAtOffset(text, at)) return at;
        }
        return kNowhere;
    }

    bool StandsAtOffset(std::u16string_view text, std::size_t at) const {
        return std::equal(what_.begin(), what_.end(), text.begin() + static_cast<std::ptrdiff_t>(at),
                          Rule::Equal);
    }

    std::u16string_view what_;
    Anchor first_;
    Anchor second_;
};

Position ToPosition(std::size_t offset) {
    return offset == kNowhere ? 0 : static_cast<Position>(offset) + 1;
}

// The first offset of one unit, told by case.
std::size_t FindUnit(std::u16string_view text, char16_t unit, std::size_t at) {
    const Units wanted(unit);
    for (; at + Units::size() <= text.size(); at += Units::size()) {
        const auto found = Units(text.data() + at, simd::element_aligned) == wanted;
        if (simd::any_of(found)) return at + static_cast<std::size_t>(simd::find_first_set(found));
    }
    return text.find(unit, at);
}

bool HasOneCase(char16_t unit) {
    return unit < 0x80 && !IsLetter(unit);
}

template <typename Rule>
Position FindBy(std::u16string_view text, std::u16string_view what, Position start) {
    if (start < 1) Raise(kInvalidCall);
    if (start > Length(text)) return 0;
    if (what.empty()) return start;
    const std::size_t from = static_cast<std::size_t>(start) - 1;
    if (what.size() == 1 && HasOneCase(what.front())) return ToPosition(FindUnit(text, what.front(), from));
    return ToPosition(Search<Rule>(what).Next(text, from));
}

// What does not grow is moved together within the text; what grows is built beside it.
template <typename Rule>
void ReplaceAllBy(std::u16string& text, std::u16string_view what, std::u16string_view with) {
    if (what.empty()) return;
    const Search<Rule> search(what);
    std::size_t found = search.Next(text, 0);
    if (found == kNowhere) return;
    if (with.size() > what.size()) {
        std::u16string replaced;
        replaced.reserve(text.size() + text.size() / 8 + with.size());
        std::size_t read = 0;
        for (; found != kNowhere; found = search.Next(text, read)) {
            replaced.append(text, read, found - read).append(with);
            read = found + what.size();
        }
        replaced.append(text, read);
        text = std::move(replaced);
        return;
    }
    char16_t* write = text.data() + found;
    std::size_t read = found;
    while (found != kNowhere) {
        write = std::copy(text.data() + read, text.data() + found, write);
        write = std::copy(with.begin(), with.end(), write);
        read = found + what.size();
        found = search.Next(text, read);
    }
    write = std::copy(text.data() + read, text.data() + text.size(), write);
    text.resize(static_cast<std::size_t>(write - text.data()));
}

}  // namespace

Position Length(std::u16string_view text) {
    if (text.size() > static_cast<std::size_t>(std::numeric_limits<Position>::max()) - 1) Raise(kOverflow);
    return static_cast<Position>(text.size());
}

Position Find(std::u16string_view text, std::u16string_view what, Position start) {
    return FindBy<SameFolded>(text, what, start);
}

Position FindExactly(std::u16string_view text, std::u16string_view what, Position start) {
    return FindBy<SameUnit>(text, what, start);
}

Position FindFirstOf(std::u16string_view text, std::u16string_view units, Position start) {
    constexpr std::size_t kMostUnits = 12;
    if (start < 1 || units.size() > kMostUnits) Raise(kInvalidCall);
    if (start > Length(text)) return 0;
    std::array<Units, kMostUnits> wanted;
    std::ranges::copy(units, wanted.begin());
    std::size_t at = static_cast<std::size_t>(start) - 1;
    for (; at + Units::size() <= text.size(); at += Units::size()) {
        const Units block(text.data() + at, simd::element_aligned);
        Units::mask_type found(false);
        for (std::size_t unit = 0; unit < units.size(); ++unit) found = found || block == wanted[unit];
        if (simd::any_of(found))
            return ToPosition(at + static_cast<std::size_t>(simd::find_first_set(found)));
    }
    return ToPosition(text.find_first_of(units, at));
}

Position FindBackward(std::u16string_view text, std::u16string_view what, Position start) {
    if (start == 0 || start < -1) Raise(kInvalidCall);
    if (start > Length(text)) return 0;
    const Position end = start == -1 ? Length(text) : start;
    for (Position at = end - Length(what) + 1; at >= 1; --at) {
        if (StandsAt(text, at, what)) return at;
    }
    return 0;
}

bool Contains(std::u16string_view text, std::u16string_view what) {
    return Find(text, what) != 0;
}

bool StandsAt(std::u16string_view text, Position at, std::u16string_view what) {
    if (at < 1 || at > Length(text)) return false;
    return EqualIgnoringCase(text.substr(static_cast<std::size_t>(at) - 1, what.size()), what);
}

bool EqualIgnoringCase(std::u16string_view one, std::u16string_view other) {
    return one.size() == other.size() && std::equal(one.begin(), one.end(), other.begin(), SameFolded::Equal);
}

std::u16string_view Between(std::u16string_view text, Position from, Position to) {
    if (from < 1 || to < from) Raise(kInvalidCall);
    return From(text, from).substr(0, static_cast<std::size_t>(to - from));
}

std::u16string_view From(std::u16string_view text, Position from) {
    if (from < 1) Raise(kInvalidCall);
    if (from > Length(text)) return {};
    return text.substr(static_cast<std::size_t>(from) - 1);
}

void ReplaceAll(std::u16string& text, std::u16string_view what, std::u16string_view with) {
    ReplaceAllBy<SameFolded>(text, what, with);
}

void ReplaceAllExactly(std::u16string& text, std::u16string_view what, std::u16string_view with) {
    ReplaceAllBy<SameUnit>(text, what, with);
}

void RemoveAll(std::u16string& text, std::u16string_view what) {
    ReplaceAllBy<SameFolded>(text, what, {});
}

}  // namespace tessaly
