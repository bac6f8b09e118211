#pragma once

#include <cstdint>
#include <iterator>
#include <list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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
        const std::size_t slot = SlotOf(key, HashOf(key));
        return slot == kNowhere ? nullptr : &slots_[slot].place->second;
    }

    // The item of a key. Raises 5 when there is no such key.
    Item& Get(std::u16string_view key) {
        const std::size_t slot = SlotOf(key, HashOf(key));
        if (slot == kNowhere) Raise(kInvalidCall);
        return slots_[slot].place->second;
    }

    // Raises 5 when there is no such key.
    void Remove(std::u16string_view key) {
        const std::size_t slot = SlotOf(key, HashOf(key));
        if (slot == kNowhere) Raise(kInvalidCall);
        items_.erase(slots_[slot].place);
        Free(slot);
    }

    std::int32_t Count() const { return static_cast<std::int32_t>(items_.size()); }

    // Pairs of key, as it was added, and item, in the order of entry.
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

  private:
    using Items = std::list<std::pair<std::u16string, Item>>;
    using Place = typename Items::iterator;

    // Where an item stands. An item's slot is the first free one at or behind the place of its hash, so that
    // a look-up touches one slot as a rule.
    struct Slot {
        std::uint64_t hash = kFree;
        Place place;
    };

    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);
    static constexpr std::uint64_t kFree = 0;

    // Hashed folded, so that looking up needs no copy of the key. Never the mark of a free slot.
    static std::uint64_t HashOf(std::u16string_view key) {
        std::uint64_t hash = 0xCBF29CE484222325;
        for (const char16_t unit : key) hash = (hash ^ Fold(unit)) * 0x100000001B3;
        return (hash ^ (hash >> 32)) | 1U << 31;
    }

    std::size_t HomeOf(std::uint64_t hash) const { return hash & (slots_.size() - 1); }
    std::size_t Behind(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }

    std::size_t SlotOf(std::u16string_view key, std::uint64_t hash) const {
        if (slots_.empty()) return kNowhere;
        for (std::size_t slot = HomeOf(hash); slots_[slot].hash != kFree; slot = Behind(slot)) {
            if (slots_[slot].hash == hash && EqualIgnoringCase(slots_[slot].place->first, key)) return slot;
        }
        return kNowhere;
    }

    void Enter(const Slot& item) {
        std::size_t slot = HomeOf(item.hash);
        while (slots_[slot].hash != kFree) slot = Behind(slot);
        slots_[slot] = item;
    }

    // A quarter of the slots stays free, a power of two in all.
    void MakeRoom() {
        if (4 * (items_.size() + 1) <= 3 * slots_.size()) return;
        std::vector<Slot> old(slots_.empty() ? 8 : 2 * slots_.size());
        old.swap(slots_);
        for (const Slot& item : old) {
            if (item.hash != kFree) Enter(item);
        }
    }

    // What stands behind moves up, as if the freed slot had always been free.
    void Free(std::size_t slot) {
        slots_[slot] = {};
        for (std::size_t next = Behind(slot); slots_[next].hash != kFree; next = Behind(next)) {
            const Slot item = slots_[next];
            slots_[next] = {};
            Enter(item);
        }
    }

    // The item is made before its key is entered: when memory runs out, neither is there.
    void Insert(Place before, std::u16string_view key, Item item) {
        const std::uint64_t hash = HashOf(key);
        if (SlotOf(key, hash) != kNowhere) Raise(kKeyExists);
        Items made;
        made.emplace_back(key, std::move(item));
        MakeRoom();
        Enter({hash, made.begin()});
        items_.splice(before, made);
    }

    Items items_;
    // Large collections hold tens of thousands of members: each key is kept once, in its item.
    std::vector<Slot> slots_;
};

}  // namespace tessaly
