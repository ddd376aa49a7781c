#pragma once

#include "FeatureIds.h"
#include "ValueIds.h"

#include <LowLevelFacilities/CPString.h>
#include <LowLevelFacilities/CPStringUtils.h>
#include <LowLevelFacilities/Utf8.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// The key of an option: its feature's number in at least five digits, and the option's name or number right
/// behind it. Stands in place and allocates only for names beyond those of any table.
class FeatureOptionKey {
public:
    FeatureOptionKey(DataModelIds::tagFeatureEnum feature, std::string_view option) {
        Append(feature);
        Append(option);
    }
    /// Takes UTF-16 units.
    FeatureOptionKey(DataModelIds::tagFeatureEnum feature, std::wstring_view option) {
        Append(feature);
        if (option.size() > (sizeof m_area - m_size) / Utf8::maxBytes) {
            Append(CPStringUtils::narrowToStdString(option.data(), option.size()));
            return;
        }
        const wchar_t* const end = option.data() + option.size();
        for (const wchar_t* unit = option.data(); unit != end;)
            m_size += Utf8::encode(Utf8::decode(unit, end), m_area + m_size);
    }
    FeatureOptionKey(DataModelIds::tagFeatureEnum feature, DataModelIds::tagValueEnum value) {
        Append(feature);
        Append(value);
    }
    FeatureOptionKey(const FeatureOptionKey&) = delete;
    FeatureOptionKey& operator=(const FeatureOptionKey&) = delete;

    /// Valid as long as this object.
    [[nodiscard]] std::string_view GetView() const noexcept {
        return m_long.empty() ? std::string_view(m_area, m_size) : std::string_view(m_long);
    }
    [[nodiscard]] CPString MakeString() const { return CPString(std::string(GetView())); }

private:
    void Append(std::int32_t number) noexcept {
        constexpr std::ptrdiff_t leastDigits = 5;
        auto digits = static_cast<std::uint32_t>(number);
        if (number < 0) {
            m_area[m_size++] = '-';
            digits = 0u - digits;
        }
        char text[16];
        const char* const end = std::to_chars(text, text + sizeof text, digits).ptr;
        for (std::ptrdiff_t missing = leastDigits - (end - text); missing > 0; --missing)
            m_area[m_size++] = '0';
        Append(std::string_view(text, static_cast<std::size_t>(end - text)));
    }

    void Append(std::string_view text) {
        if (text.size() > sizeof m_area - m_size) {
            m_long.reserve(m_size + text.size());
            m_long.assign(m_area, m_size).append(text);
            return;
        }
        std::memcpy(m_area + m_size, text.data(), text.size());
        m_size += text.size();
    }

    char m_area[256];
    std::size_t m_size = 0;
    std::string m_long; // takes the place of the area where that is too small
};
