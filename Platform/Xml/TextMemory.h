#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace OvPlatform {

/// What was made of texts, by the text. Of more than it may hold, what nobody asked for longest is forgotten.
/// Threads may share it.
template <typename Value>
class TextMemory {
public:
    using Pointer = std::shared_ptr<const Value>;

    /// mostBytes: of the texts, and of what the values count for.
    explicit TextMemory(std::size_t mostBytes) : m_mostBytes(mostBytes) {}

    /// Null for a text that is not known.
    Pointer Find(std::string_view text) {
        const std::scoped_lock lock(m_mutex);
        const auto found = m_byText.find(text);
        if (found == m_byText.end()) return nullptr;
        m_entries.splice(m_entries.begin(), m_entries, found->second);
        return found->second->value;
    }

    /// bytes: what the value counts for. One that is known already stays, and so does all if this one alone
    /// is too much. Throws std::bad_alloc, with nothing changed.
    void Keep(std::string text, Pointer value, std::size_t bytes) {
        bytes += text.size();
        const std::scoped_lock lock(m_mutex);
        if (bytes > m_mostBytes || m_byText.contains(text)) return;
        std::list<Entry> made;
        made.push_back({std::move(text), std::move(value), bytes});
        m_byText.emplace(made.front().text, made.begin());
        m_entries.splice(m_entries.begin(), made);
        m_bytes += bytes;
        while (m_bytes > m_mostBytes) {
            m_bytes -= m_entries.back().bytes;
            m_byText.erase(m_entries.back().text);
            m_entries.pop_back();
        }
    }

private:
    struct Entry {
        std::string text;
        Pointer value;
        std::size_t bytes;
    };

    const std::size_t m_mostBytes;
    std::mutex m_mutex;
    std::list<Entry> m_entries; // the one that was asked for last at the front
    std::unordered_map<std::string_view, typename std::list<Entry>::iterator> m_byText; // of their texts
    std::size_t m_bytes = 0;
};

} // namespace OvPlatform
