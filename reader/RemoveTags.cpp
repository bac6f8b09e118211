#include "reader/RemoveTags.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "text/folding.h"
#include "text/search.h"

namespace tessaly {

namespace {

std::uint64_t Extend(std::uint64_t hash, char16_t unit) {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;
    return (hash + Fold(unit) + 1) * kMultiplier;
}

// Tags are read from their end, so that one pass hashes all that share an end.
std::uint64_t HashOf(std::u16string_view tag) {
    std::uint64_t hash = 0;
    for (std::size_t at = tag.size(); at > 0; --at) hash = Extend(hash, tag[at - 1]);
    return hash;
}

// A tag with further "<" in it, each of which begins a tag of its own with the same end.
bool IsNest(std::u16string_view tag) {
    return tag.find(u'<', 1) != std::u16string_view::npos;
}

template <typename Take>
void ForEachTag(std::u16string_view text, Take take) {
    Position from = 1;
    for (Position open = Find(text, u"<"); open != 0; open = Find(text, u"<", from)) {
        const Position close = Find(text, u">", open);
        if (close == 0) return;
        from = close + 1;
        take(Between(text, open, from));
    }
}

// The length of a text's second longest tag. Only what is no longer can stand in another tag.
std::size_t SecondLongestTag(std::u16string_view text) {
    std::size_t longest = 0;
    std::size_t second = 0;
    ForEachTag(text, [&](std::u16string_view tag) {
        second = std::max(second, std::min(longest, tag.size()));
        longest = std::max(longest, tag.size());
    });
    return second;
}

// How often each tag of a text stands in the nests of it. Where a tag stands there, removing it changes the
// tag around it.
class NestedTags {
  public:
    explicit NestedTags(std::u16string_view text) : longest_(SecondLongestTag(text)) {
        ForEachTag(text, [this](std::u16string_view tag) {
            if (IsNest(tag)) Count(tag, 1);
        });
    }

    bool Hold(std::u16string_view tag) const {
        const auto count = counts_.find(HashOf(tag));
        return count != counts_.end() && count->second > 0;
    }

    // The tag is gone from the text.
    void Forget(std::u16string_view tag) {
        if (IsNest(tag)) Count(tag, -1);
    }

  private:
    void Count(std::u16string_view nest, int times) {
        std::uint64_t hash = 0;
        const std::size_t end = nest.size() - std::min(nest.size(), longest_);
        for (std::size_t at = nest.size(); at > end; --at) {
            hash = Extend(hash, nest[at - 1]);
            if (nest[at - 1] == u'<') counts_[hash] += times;
        }
    }

    std::size_t longest_;
    std::unordered_map<std::uint64_t, int> counts_;
};

// For a text in which no tag holds a "<" of another: each goes where it stands. Nothing for any other text.
std::optional<std::u16string> RemoveSimpleTags(std::u16string_view text) {
    std::u16string done;
    done.reserve(text.size());
    Position from = 1;
    for (Position open = Find(text, u"<"); open != 0;) {
        const Position close = Find(text, u">", open);
        if (close == 0) break;
        const Position next = Find(text, u"<", open + 1);
        if (next != 0 && next < close) return {};
        done += Between(text, from, open);
        from = close + 1;
        open = next;
    }
    done += From(text, from);
    return done;
}

// The text without those of its tags that are among some others.
std::u16string WithoutTagsAmong(std::u16string_view text, const std::vector<std::u16string_view>& others) {
    std::unordered_set<std::u16string> removed;
    for (const std::u16string_view tag : others) removed.insert(Folded(tag));
    std::u16string kept;
    Position from = 1;
    for (Position open = Find(text, u"<"); open != 0; open = Find(text, u"<", from)) {
        const Position close = Find(text, u">", open);
        if (close == 0) break;
        const bool isRemoved = removed.contains(Folded(Between(text, open, close + 1)));
        kept += Between(text, from, isRemoved ? open : close + 1);
        from = close + 1;
    }
    kept += From(text, from);
    return kept;
}

}  // namespace

// A tag that stands in no nest can wait in its other places until each is the first one there: removing it
// joins nothing that could become a tag. It waits only until a nest changes, which may swallow what follows.
std::u16string RemoveTags(std::u16string_view text) {
    if (auto bare = RemoveSimpleTags(text)) return *std::move(bare);
    NestedTags nested(text);
    std::vector<std::u16string_view> waiting;
    std::u16string done;
    std::u16string changed;
    std::u16string_view rest = text;
    for (Position open = Find(rest, u"<"); open != 0; open = Find(rest, u"<")) {
        const Position close = Find(rest, u">", open);
        if (close == 0) break;
        const std::u16string_view tag = Between(rest, open, close + 1);
        done += Between(rest, 1, open);
        rest = From(rest, close + 1);
        nested.Forget(tag);
        if (nested.Hold(tag)) {
            std::u16string others = WithoutTagsAmong(rest, waiting);
            RemoveAll(others, tag);
            changed = std::move(others);
            rest = changed;
            nested = NestedTags(rest);
            waiting.clear();
        } else {
            waiting.push_back(tag);
        }
    }
    done += rest;
    return done;
}

}  // namespace tessaly
