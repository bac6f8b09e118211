#include "reader/RemoveTags.h"

#include <cstdint>
#include <unordered_set>

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

// What could be a tag but stands inside another one: each "<" behind the first "<" of a stretch up to a ">".
// A tag that stands there too must be removed there at once, since that changes the tag around it. Any other
// tag can wait until it is the first one: nothing between it and the ">" before it is a tag's beginning.
class InnerTags {
  public:
    explicit InnerTags(std::u16string_view text) {
        Position open = Find(text, u"<");
        while (open != 0) {
            const Position close = Find(text, u">", open);
            if (close == 0) return;
            const Position inner = Find(text, u"<", open + 1);
            if (inner != 0 && inner < close) NoteAll(Between(text, inner, close + 1));
            open = Find(text, u"<", close);
        }
    }

    bool Hold(std::u16string_view tag) const { return !hashes_.empty() && hashes_.contains(HashOf(tag)); }

  private:
    void NoteAll(std::u16string_view stretch) {
        std::uint64_t hash = 0;
        for (std::size_t at = stretch.size(); at > 0; --at) {
            hash = Extend(hash, stretch[at - 1]);
            if (stretch[at - 1] == u'<') hashes_.insert(hash);
        }
    }

    std::unordered_set<std::uint64_t> hashes_;
};

// For a text in which no tag holds a "<" of another: each goes where it stands. False, and nothing changed,
// for any other text.
bool RemoveSimpleTags(std::u16string& text, Position open) {
    std::u16string done;
    done.reserve(text.size());
    Position from = 1;
    while (open != 0) {
        const Position close = Find(text, u">", open);
        if (close == 0) break;
        const Position next = Find(text, u"<", open + 1);
        if (next != 0 && next < close) return false;
        done += Between(text, from, open);
        from = close + 1;
        open = next;
    }
    done += From(text, from);
    text = std::move(done);
    return true;
}

}  // namespace

void RemoveTags(std::u16string& text) {
    Position open = Find(text, u"<");
    if (open == 0 || RemoveSimpleTags(text, open)) return;
    InnerTags innerTags(text);
    std::u16string done;
    std::u16string_view rest = text;
    std::u16string changed;
    while (open != 0) {
        const Position close = Find(rest, u">", open);
        if (close == 0) break;
        const std::u16string_view tag = Between(rest, open, close + 1);
        done += Between(rest, 1, open);
        if (innerTags.Hold(tag)) {
            const std::u16string removed(tag);
            std::u16string others(From(rest, close + 1));
            RemoveAll(others, removed);
            changed = std::move(others);
            rest = changed;
            innerTags = InnerTags(rest);
        } else {
            rest = From(rest, close + 1);
        }
        open = Find(rest, u"<");
    }
    done += rest;
    text = std::move(done);
}

}  // namespace tessaly
