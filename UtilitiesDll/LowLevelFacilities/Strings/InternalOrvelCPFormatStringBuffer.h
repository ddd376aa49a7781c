#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

namespace InternalOrvelCP {

/// Where formatted text goes. Operations throw std::bad_alloc and nothing else.
class IFormatStringStreamDestination {
public:
    virtual ~IFormatStringStreamDestination() = default;
    virtual void append(const char* text, std::size_t length) = 0;
};

/// Text that stands in place up to areaSize - 2 bytes and moves into a string when it grows beyond that. The
/// text is always terminated.
template <std::size_t areaSize>
class FormatStringBuffer final : public IFormatStringStreamDestination {
public:
    FormatStringBuffer() noexcept { m_area[0] = '\0'; }
    FormatStringBuffer(const FormatStringBuffer&) = delete;
    FormatStringBuffer& operator=(const FormatStringBuffer&) = delete;
    ~FormatStringBuffer() override = default;

    void append(const char* text, std::size_t length) override {
        reserve(length);
        std::memcpy(writePosition(), text, length);
        commit(length);
    }

    /// Afterwards there is room for length bytes and a terminator at writePosition. Moves the text out of the
    /// area if the area is too small for that.
    void reserve(std::size_t length) {
        if (!m_movedOut && areaSize - m_used > length + 1) return;
        if (!m_movedOut) {
            // Large enough from the start that a message which just left the area costs this allocation only.
            m_string.reserve(std::max(2 * areaSize, m_used + length));
            m_string.assign(m_area, m_used);
            m_movedOut = true;
        }
        if (m_string.size() - m_used < length) {
            const std::size_t needed = m_used + length;
            if (needed > m_string.capacity()) m_string.reserve(std::max(needed, 2 * m_string.capacity()));
            m_string.resize(needed);
        }
    }
    [[nodiscard]] char* writePosition() noexcept { return (m_movedOut ? m_string.data() : m_area) + m_used; }
    /// The bytes that may be written at writePosition, the terminator's included.
    [[nodiscard]] std::size_t room() const noexcept {
        return (m_movedOut ? m_string.size() + 1 : areaSize) - m_used;
    }
    /// Takes over length bytes that were written at writePosition.
    void commit(std::size_t length) noexcept {
        m_used += length;
        *writePosition() = '\0';
    }

    [[nodiscard]] const char* text() const noexcept { return m_movedOut ? m_string.data() : m_area; }
    [[nodiscard]] std::size_t used() const noexcept { return m_used; }
    [[nodiscard]] bool hasMovedOut() const noexcept { return m_movedOut; }

    /// Gives the text up; the buffer is to be used no more. Costs at most one allocation.
    [[nodiscard]] std::string takeText() {
        if (!m_movedOut) return std::string(m_area, m_used);
        m_string.resize(m_used);
        return std::move(m_string);
    }

private:
    char m_area[areaSize];
    std::size_t m_used = 0;
    bool m_movedOut = false;
    std::string m_string; // its size is what has been reserved, at least m_used
};

} // namespace InternalOrvelCP
