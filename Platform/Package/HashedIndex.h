#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace OvPlatform {

/// Finds places in a list by the hash of what stands there; the list is its owner's. Some six to eleven bytes
/// an entry, for lists of which a package may have very many.
class HashedIndex {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    /// The place whose entry has that hash and is the one: isIt(place). none where there is no such entry.
    template <class IsIt>
    std::uint32_t Find(std::size_t hash, IsIt&& isIt) const {
        if (m_slots.empty()) return none;
        for (std::size_t slot = SlotOf(hash);; slot = Next(slot)) {
            const std::uint32_t place = m_slots[slot];
            if (place == none || isIt(place)) return place;
        }
    }

    /// hashOf(place): of an entry that is in the list.
    template <class HashOf>
    void Add(std::uint32_t place, HashOf&& hashOf) {
        if ((m_count + 1) * 3 > m_slots.size() * 2) Grow(hashOf);
        Put(place, hashOf(place));
        ++m_count;
    }

private:
    static constexpr std::size_t fewest = 16;

    // Hashes of names that are much alike differ in few places: their bits are spread first.
    std::size_t SlotOf(std::size_t hash) const {
        const std::uint64_t spread = std::uint64_t{hash} * 0x9E3779B97F4A7C15;
        return static_cast<std::size_t>(spread ^ spread >> 32) & (m_slots.size() - 1);
    }
    std::size_t Next(std::size_t slot) const { return (slot + 1) & (m_slots.size() - 1); }

    void Put(std::uint32_t place, std::size_t hash) {
        std::size_t slot = SlotOf(hash);
        while (m_slots[slot] != none)
            slot = Next(slot);
        m_slots[slot] = place;
    }

    template <class HashOf>
    void Grow(HashOf& hashOf) {
        std::vector<std::uint32_t> before(m_slots.empty() ? fewest : m_slots.size() * 2, none);
        before.swap(m_slots);
        for (const std::uint32_t place : before)
            if (place != none) Put(place, hashOf(place));
    }

    std::vector<std::uint32_t> m_slots; // as many as a power of two
    std::size_t m_count = 0;
};

} // namespace OvPlatform
