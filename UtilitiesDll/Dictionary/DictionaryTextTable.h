#pragma once

#include "Dictionary/DictionaryNumberedText.h"
#include "Dictionary/DictionaryText.h"
#include "LowLevelFacilities/Strings/CPString.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

/// A hash table with open addressing from unique texts to entries that it does not own. Texts are compared
/// byte for byte. Const operations may run on several threads at once.
template <typename Entry>
class DictionaryTextTable {
public:
    /// By a std::string_view or a DictionaryNumberedText. Null if the key is absent. Never allocates.
    template <typename Asked>
    [[nodiscard]] Entry* Find(const Asked& key) const noexcept {
        const std::uint32_t hash = Hash(key);
        for (std::size_t at = hash & m_mask;; at = Next(at)) {
            const Slot& slot = m_slots[at];
            // An empty slot that seems to be equal gives the right answer too.
            if (slot.hash == hash && AreEqual(slot.key.view(), key)) return slot.entry;
            if (slot.entry == nullptr) return nullptr;
        }
    }
    [[nodiscard]] Entry* Find(const CPString& key) const noexcept { return Find(key.view()); }

    /// The key must be absent. Throws std::bad_alloc and then has changed nothing.
    void Insert(CPString&& key, Entry* entry) {
        if (slotsPerKey * (m_count + 1) > m_slots.size()) Grow();
        const std::uint32_t hash = Hash(key.view());
        Place(m_slots, Slot{hash, std::move(key), entry});
        ++m_count;
    }

    /// Nothing happens if the key is absent.
    void Remove(const CPString& key) noexcept {
        const Entry* const entry = Find(key);
        if (entry == nullptr) return;
        std::size_t hole = Hash(key.view()) & m_mask;
        while (m_slots[hole].entry != entry)
            hole = Next(hole);
        // What stands behind the hole moves up where its search would otherwise stop at the hole.
        for (std::size_t at = Next(hole); m_slots[at].entry != nullptr; at = Next(at)) {
            const std::size_t wayToHole = (hole - m_slots[at].hash) & m_mask;
            const std::size_t wayToPlace = (at - m_slots[at].hash) & m_mask;
            if (wayToHole < wayToPlace) {
                std::swap(m_slots[hole], m_slots[at]);
                hole = at;
            }
        }
        m_slots[hole] = Slot{};
        --m_count;
    }

    void Clear() {
        m_slots = std::vector<Slot>(initialSlots);
        m_mask = initialSlots - 1;
        m_count = 0;
    }

private:
    static constexpr std::size_t initialSlots = 16; // a power of two, as every size
    static constexpr std::size_t slotsPerKey = 4;   // at least: so most keys stand where they are looked for
    static constexpr std::size_t headSize = DictionaryNumberedText::headSize;

    struct Slot {
        std::uint32_t hash = 0;
        CPString key;
        Entry* entry = nullptr; // null in an empty slot
    };

    // The first bytes of a text are hashed apart from the others, so that a text in two pieces needs not be
    // put together.
    static std::uint32_t Hash(std::string_view text) noexcept {
        if (text.size() < headSize) return DictionaryText::Hash(0, text);
        return DictionaryText::Hash(DictionaryNumberedText::ReadHead(text.data()), text.substr(headSize));
    }
    static std::uint32_t Hash(const DictionaryNumberedText& text) noexcept {
        return DictionaryText::Hash(text.head, text.tail);
    }

    static bool AreEqual(std::string_view stored, std::string_view asked) noexcept {
        return DictionaryText::AreEqual(stored, asked);
    }
    static bool AreEqual(std::string_view stored, const DictionaryNumberedText& asked) noexcept {
        return stored.size() >= headSize && DictionaryNumberedText::ReadHead(stored.data()) == asked.head &&
               DictionaryText::AreEqual(stored.substr(headSize), asked.tail);
    }

    [[nodiscard]] std::size_t Next(std::size_t at) const noexcept { return (at + 1) & m_mask; }

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
        m_mask = m_slots.size() - 1;
    }

    std::vector<Slot> m_slots = std::vector<Slot>(initialSlots);
    std::size_t m_mask = initialSlots - 1;
    std::size_t m_count = 0;
};
