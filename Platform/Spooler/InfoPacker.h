#pragma once

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace OvPlatform {

/// Lays out the spooler's records in a caller's buffer: the records at its start, texts and device modes
/// behind them, reached by pointers into the buffer. Without a buffer it only counts, with the same calls.
class InfoPacker {
public:
    /// recordBytes: all records together.
    InfoPacker(BYTE* buffer, std::size_t recordBytes) : m_buffer(buffer), m_used(recordBytes) {}

    LPWSTR Text(const std::wstring& text) {
        const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
        return reinterpret_cast<LPWSTR>(Append(text.c_str(), size, alignof(wchar_t)));
    }

    /// For fields that are published as null where there is nothing to say.
    LPWSTR TextOrNull(const std::wstring& text) { return text.empty() ? nullptr : Text(text); }

    void* Block(const std::vector<std::uint8_t>& bytes) {
        return bytes.empty() ? nullptr : Append(bytes.data(), bytes.size(), alignof(std::max_align_t));
    }

    template <class Info>
    void Record(std::size_t index, const Info& info) {
        if (m_buffer) std::memcpy(m_buffer + index * sizeof(Info), &info, sizeof(Info));
    }

    /// Bytes of buffer needed for what was laid out so far.
    std::size_t Used() const { return m_used; }

private:
    BYTE* Append(const void* bytes, std::size_t size, std::size_t alignment) {
        m_used = (m_used + alignment - 1) / alignment * alignment;
        BYTE* place = m_buffer ? m_buffer + m_used : nullptr;
        if (place) std::memcpy(place, bytes, size);
        m_used += size;
        return place;
    }

    BYTE* m_buffer;
    std::size_t m_used;
};

} // namespace OvPlatform
