#include "text/search.h"

#include <algorithm>
#include <limits>

#include "text/RunTimeError.h"
#include "text/folding.h"

namespace tessaly {

namespace {

constexpr std::size_t kNowhere = std::u16string_view::npos;

// A unit of the text sought that is cheap to look for: (unit | mask) == value holds for it in all its cases.
struct Anchor {
    std::size_t offset = kNowhere;
    char16_t mask = 0;
    char16_t value = 0;
    int rarity = 0;
};

bool IsLetter(char16_t unit) {
    const auto lower = static_cast<char16_t>(unit | 0x20);
    return lower >= u'a' && lower <= u'z';
}

// How seldom a unit stands in a page, 0 for one that cannot be an anchor: "k" and "s" have a third case, the
// Kelvin sign and the long s.
int RarityOf(char16_t unit, bool ignoreCase) {
    if (unit >= 0x80) return ignoreCase ? 0 : 4;
    if (IsLetter(unit)) {
        const auto lower = static_cast<char16_t>(unit | 0x20);
        return ignoreCase && (lower == u'k' || lower == u's') ? 0 : 1;
    }
    switch (unit) {
        case u' ':
        case u'-':
        case u'.':
        case u'/':
        case u'"':
        case u'<':
        case u'>':
            return 3;
        default:
            return unit >= u'0' && unit <= u'9' ? 2 : 4;
    }
}

Anchor MakeAnchor(std::u16string_view what, std::size_t offset, bool ignoreCase) {
    const char16_t mask = ignoreCase && IsLetter(what[offset]) ? 0x20 : 0;
    return {offset, mask, static_cast<char16_t>(what[offset] | mask), RarityOf(what[offset], ignoreCase)};
}

struct SameUnit {
    static constexpr bool kIgnoresCase = false;
    static bool Equal(char16_t one, char16_t other) { return one == other; }
};

struct SameFolded {
    static constexpr bool kIgnoresCase = true;
    static bool Equal(char16_t one, char16_t other) { return one == other || Fold(one) == Fold(other); }
};

// Looks for one text again and again. It tests its two rarest units over a block of places at once, in a loop
// that compilers turn into vector code, and compares units only in a block where both stand.
template <typename Rule>
class Search {
  public:
    explicit Search(std::u16string_view what) : what_(what) {
        for (std::size_t at = 0; at < what.size(); ++at) {
            const Anchor anchor = MakeAnchor(what, at, Rule::kIgnoresCase);
            if (anchor.rarity > first_.rarity) {
                second_ = first_;
                first_ = anchor;
            } else if (anchor.rarity > second_.rarity) {
                second_ = anchor;
            }
        }
        if (second_.rarity == 0) second_ = first_;
    }

    // The first offset at or behind `from`, kNowhere when there is none.
    std::size_t Next(std::u16string_view text, std::size_t from) const {
        if (what_.size() > text.size() || from > text.size() - what_.size()) return kNowhere;
        const std::size_t last = text.size() - what_.size();
        if (first_.rarity == 0) return Plainly(text, from, last);
        std::size_t at = from;
        while (last - at >= kBlock) {
            if (!BlockHolds(text.data() + at)) {
                at += kBlock;
                continue;
            }
            const std::size_t found = Plainly(text, at, at + kBlock - 1);
            if (found != kNowhere) return found;
            at += kBlock;
        }
        return Plainly(text, at, last);
    }

  private:
    static constexpr std::size_t kBlock = 64;

    bool BlockHolds(const char16_t* block) const {
        const char16_t* first = block + first_.offset;
        const char16_t* second = block + second_.offset;
        const char16_t firstMask = first_.mask;
        const char16_t secondMask = second_.mask;
        const char16_t firstValue = first_.value;
        const char16_t secondValue = second_.value;
        std::uint16_t found = 0;
        for (std::size_t at = 0; at < kBlock; ++at) {
            const auto firstUnit = static_cast<char16_t>(first[at] | firstMask);
            const auto secondUnit = static_cast<char16_t>(second[at] | secondMask);
            const auto hit = static_cast<std::uint16_t>(firstUnit == firstValue) &
                             static_cast<std::uint16_t>(secondUnit == secondValue);
            found = static_cast<std::uint16_t>(found | hit);
        }
        return found != 0;
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

template <typename Rule>
Position FindBy(std::u16string_view text, std::u16string_view what, Position start) {
    if (start < 1) Raise(kInvalidCall);
    if (start > Length(text)) return 0;
    if (what.empty()) return start;
    return ToPosition(Search<Rule>(what).Next(text, static_cast<std::size_t>(start) - 1));
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

Position FindBackward(std::u16string_view text, std::u16string_view what, Position start) {
    if (start == 0 || start < -1) Raise(kInvalidCall);
    const Position end = start == -1 ? Length(text) : std::min(start, Length(text));
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
