#pragma once

#include "Dictionary/DictionaryKeyTraits.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

/// A hash table with open addressing from unique keys to entries that it does not own. Const operations may
/// run on several threads at once.
template <typename Key, typename Entry>
class DictionaryKeyTable {
public:
    using Traits = DictionaryKeyTraits<Key>;

    DictionaryKeyTable() : m_slots(initialSlots) {}

    /// Null if the key is absent. Never allocates.
    template <typename Asked>
    [[nodiscard]] Entry* Find(const Asked& key) const noexcept {
        return m_slots[FindSlot(key, Traits::Hash(key))].entry;
    }

    /// The key must be absent. Throws std::bad_alloc and then has changed nothing.
    void Insert(Key&& key, Entry* entry) {
        if ((m_count + 1) * Traits::slotsPerKey > m_slots.size()) Grow();
        Place(m_slots, Slot{Traits::Hash(key), std::move(key), entry});
        ++m_count;
    }

    /// The key must be present.
    void Remove(const Key& key) noexcept {
        std::size_t hole = FindSlot(key, Traits::Hash(key));
        // What stands behind the hole moves up where its search would otherwise stop at the hole.
        for (std::size_t at = Next(hole); m_slots[at].entry != nullptr; at = Next(at)) {
            const std::size_t wayToHole = (hole - m_slots[at].hash) & Mask();
            const std::size_t wayToPlace = (at - m_slots[at].hash) & Mask();
            if (wayToHole < wayToPlace) {
                std::swap(m_slots[hole], m_slots[at]);
                hole = at;
            }
        }
        m_slots[hole] = Slot{};
        --m_count;
    }

    void Clear() {
        m_slots.assign(initialSlots, Slot{});
        m_count = 0;
    }

private:
    static constexpr std::size_t initialSlots = 16; // a power of two, as every size

    struct Slot {
        std::uint32_t hash = 0;
        Key key{};
        Entry* entry = nullptr; // null in an empty slot
    };

    [[nodiscard]] std::size_t Mask() const noexcept { return m_slots.size() - 1; }
    [[nodiscard]] std::size_t Next(std::size_t at) const noexcept { return (at + 1) & Mask(); }

    /// The key's slot, or the empty one where the search for it ends.
    template <typename Asked>
    [[nodiscard]] std::size_t FindSlot(const Asked& key, std::uint32_t hash) const noexcept {
        for (std::size_t at = hash & Mask();; at = Next(at)) {
            const Slot& slot = m_slots[at];
            if (slot.hash == hash && Traits::AreEqual(slot.key, key)) return at;
            if (slot.entry == nullptr) return at;
        }
    }

    static void Place(std::vector<Slot>& slots, Slot&& slot) noexcept {
        const std::size_t mask = slots.size() - 1;
        std::size_t at = slot.hash & mask;
        while (slots[at].entry != nullptr)
            at = (at + 1) & mask;
        slots[at] = std::move(slot);
    }

    void Grow() {
        std::vector<Slot> larger(2 * m_slots.size());
        for (Slot& slot : m_slots) {
            if (slot.entry != nullptr) Place(larger, std::move(slot));
        }
        m_slots = std::move(larger);
    }

    std::vector<Slot> m_slots;
    std::size_t m_count = 0;
};
