#pragma once

#include <cstdint>
#include <iterator>
#include <list>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "text/RunTimeError.h"
#include "text/folding.h"
#include "text/search.h"

namespace tessaly {

// Items in the order of their entry, found by a text key that is compared without regard to case. Finding,
// adding and removing take the same time whatever the number of items.
template <typename Item>
class KeyedCollection {
  public:
    KeyedCollection() = default;
    KeyedCollection(KeyedCollection&&) noexcept = default;
    KeyedCollection& operator=(KeyedCollection&&) noexcept = default;
    // The keys of a copy would lead to the items of the other.
    KeyedCollection(const KeyedCollection&) = delete;
    KeyedCollection& operator=(const KeyedCollection&) = delete;

    // Raises 457 when the key is there already, in whatever case.
    void Add(std::u16string_view key, Item item) { Insert(items_.end(), key, std::move(item)); }

    // The same, in front of the item that stands at `position`, counted from 1. Raises 5 when there is none.
    void AddBefore(std::u16string_view key, Item item, std::int32_t position) {
        if (position < 1 || static_cast<std::size_t>(position) > items_.size()) Raise(kInvalidCall);
        Insert(std::next(items_.begin(), position - 1), key, std::move(item));
    }

    // The item of a key, none when there is no such key.
    Item* Find(std::u16string_view key) {
        const auto place = places_.find(key);
        return place == places_.end() ? nullptr : &(*place)->second;
    }

    // The item of a key. Raises 5 when there is no such key.
    Item& Get(std::u16string_view key) {
        const auto place = places_.find(key);
        if (place == places_.end()) Raise(kInvalidCall);
        return (*place)->second;
    }

    // Raises 5 when there is no such key.
    void Remove(std::u16string_view key) {
        const auto place = places_.find(key);
        if (place == places_.end()) Raise(kInvalidCall);
        const Place item = *place;
        places_.erase(place);
        items_.erase(item);
    }

    std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }

    // Pairs of key, as it was added, and item, in the order of entry.
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

  private:
    using Items = std::list<std::pair<std::u16string, Item>>;
    using Place = typename Items::iterator;

    static std::u16string_view KeyOf(std::u16string_view key) { return key; }
    static std::u16string_view KeyOf(Place place) { return place->first; }

    // Hashed and compared folded, so that looking up needs no copy of the key.
    struct FoldedHash {
        using is_transparent = void;
        std::size_t operator()(const auto& key) const {
            std::uint64_t hash = 0xCBF29CE484222325;
            for (const char16_t unit : KeyOf(key)) hash = (hash ^ Fold(unit)) * 0x100000001B3;
            return static_cast<std::size_t>(hash ^ (hash >> 32));
        }
    };
    struct FoldedEqual {
        using is_transparent = void;
        bool operator()(const auto& one, const auto& other) const {
            return EqualIgnoringCase(KeyOf(one), KeyOf(other));
        }
    };

    // The item is made before its key is entered: when memory runs out, neither is there.
    void Insert(Place before, std::u16string_view key, Item item) {
        Items made;
        made.emplace_back(key, std::move(item));
        if (!places_.insert(made.begin()).second) Raise(kKeyExists);
        items_.splice(before, made);
    }

    Items items_;
    // Large collections hold tens of thousands of members: each key is kept once, in its item.
    std::unordered_set<Place, FoldedHash, FoldedEqual> places_;
};

}  // namespace tessaly
