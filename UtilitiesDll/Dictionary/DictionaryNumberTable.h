#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

/// A table from unique enumerators to entries that it does not own. Identifiers lie close together, so a
/// number is the place of its entry; numbers far from the others are hashed. Const operations may run on
/// several threads at once.
template <typename Key, typename Entry>
class DictionaryNumberTable {
    static_assert(std::is_enum_v<Key> && sizeof(Key) == sizeof(std::int32_t));

public:
    /// Null if the key is absent. Never allocates.
    [[nodiscard]] Entry* Find(Key key) const noexcept {
        const std::size_t place = PlaceOf(key);
        return place < m_near.size() ? m_near[place] : FindFar(key);
    }

    /// The key must be absent. Throws std::bad_alloc and then has changed nothing.
    void Insert(Key key, Entry* entry) {
        if (MakeRoomNear(key))
            m_near[PlaceOf(key)] = entry;
        else
            m_far.emplace(key, entry);
    }

    /// Nothing happens if the key is absent.
    void Remove(Key key) noexcept {
        const std::size_t place = PlaceOf(key);
        if (place < m_near.size()) m_near[place] = nullptr;
        m_far.erase(key);
    }

    void Clear() noexcept {
        m_near.clear();
        m_far.clear();
    }

private:
    static constexpr std::int64_t maxNear = 16'384;

    [[nodiscard]] std::size_t PlaceOf(Key key) const noexcept {
        return static_cast<std::uint32_t>(key) - static_cast<std::uint32_t>(m_first);
    }

    [[nodiscard]] Entry* FindFar(Key key) const noexcept {
        const auto found = m_far.find(key);
        return found == m_far.end() ? nullptr : found->second;
    }

    /// False if the range would become too long; since it never shrinks, that is so for good.
    bool MakeRoomNear(Key key) {
        const auto number = static_cast<std::int32_t>(key);
        if (m_near.empty()) m_first = number;
        const std::int64_t first = (std::min)(m_first, number);
        const std::int64_t end =
            (std::max<std::int64_t>)(m_first + std::ssize(m_near), std::int64_t{number} + 1);
        if (end - first > maxNear) return false;
        if (end - first == std::ssize(m_near)) return true;
        std::vector<Entry*> wider(static_cast<std::size_t>(end - first));
        std::ranges::copy(m_near, wider.begin() + (m_first - first));
        m_near = std::move(wider);
        m_first = static_cast<std::int32_t>(first);
        return true;
    }

    std::vector<Entry*> m_near; // by the distance from m_first
    std::int32_t m_first = 0;
    std::unordered_map<Key, Entry*> m_far;
};
