#pragma once

#include "Imaging/PictureHeader.h"

#include <cstddef>
#include <string_view>

namespace OvPlatform {

/// Numbers at places in bytes. What reaches beyond the end is 0.
class ByteFields {
public:
    enum class Order { LittleEndian, BigEndian };

    ByteFields(PictureBytes bytes, Order order) noexcept : m_bytes(bytes), m_order(order) {}

    std::size_t Size() const noexcept { return m_bytes.size(); }
    bool Has(std::size_t at, std::size_t count) const noexcept {
        return at <= m_bytes.size() && count <= m_bytes.size() - at;
    }
    /// What begins there; empty beyond the end.
    PictureBytes From(std::size_t at) const noexcept {
        return at <= m_bytes.size() ? m_bytes.subspan(at) : PictureBytes();
    }
    bool HasText(std::size_t at, std::string_view text) const noexcept {
        if (!Has(at, text.size())) return false;
        for (std::size_t index = 0; index < text.size(); ++index)
            if (m_bytes[at + index] != static_cast<BYTE>(text[index])) return false;
        return true;
    }

    std::uint8_t Byte(std::size_t at) const noexcept { return Has(at, 1) ? m_bytes[at] : std::uint8_t{0}; }
    std::uint32_t Short(std::size_t at) const noexcept { return Number(at, 2); }
    std::uint32_t Long(std::size_t at) const noexcept { return Number(at, 4); }

private:
    std::uint32_t Number(std::size_t at, std::size_t count) const noexcept {
        if (!Has(at, count)) return 0;
        std::uint32_t number = 0;
        for (std::size_t index = 0; index < count; ++index)
            number = number << 8 | m_bytes[at + (m_order == Order::BigEndian ? index : count - 1 - index)];
        return number;
    }

    PictureBytes m_bytes;
    Order m_order;
};

} // namespace OvPlatform
