#pragma once

#include "DataModel/FeatureIds.h"
#include "DataModel/ValueIds.h"

#include <Dictionary/DictionaryIndexWithUnique.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <utf8coder.h>

#include <cstdint>
#include <string_view>

/// An index of options. Its key is the number of the option's feature in at least five digits and, right
/// behind it, what the derived class takes: the option's name or number. Whoever asks gives the two apart;
/// only a feature's number of six digits or a wide name beyond 64 units then costs an allocation.
template <typename Entry>
class FeatureOptionIndex : public DictionaryIndexWithUnique<CPString, Entry> {
public:
    /// Throws CPExceptionUnknownKeyRequest. A name may be wide (UTF-16 units).
    template <typename Option>
    [[nodiscard]] const Entry& GetOptionRef(DataModelIds::tagFeatureEnum feature,
                                            const Option& option) const {
        return WithKey(feature, option,
                       [this](const auto& key) -> const Entry& { return this->GetEntryRef(key); });
    }
    /// Null if there is no such option.
    template <typename Option>
    [[nodiscard]] const Entry* FindOption(DataModelIds::tagFeatureEnum feature, const Option& option) const {
        return WithKey(feature, option, [this](const auto& key) { return this->FindEntry(key); });
    }

protected:
    static CPString MakeKey(DataModelIds::tagFeatureEnum feature, std::string_view option) {
        return FormatCPString("%.5d%s", static_cast<std::int32_t>(feature), option);
    }
    static CPString MakeKey(DataModelIds::tagFeatureEnum feature, DataModelIds::tagValueEnum value) {
        return FormatCPString("%.5d%.5d", static_cast<std::int32_t>(feature),
                              static_cast<std::int32_t>(value));
    }

private:
    static bool HasFiveDigits(std::int32_t number) noexcept {
        return static_cast<std::uint32_t>(number) < DictionaryNumberedText::numberLimit;
    }

    template <typename Use>
    static decltype(auto) WithKey(DataModelIds::tagFeatureEnum feature, std::string_view option, Use use) {
        if (!HasFiveDigits(feature)) return use(MakeKey(feature, option).view());
        return use(DictionaryNumberedText(static_cast<std::uint32_t>(feature), option));
    }

    template <typename Use>
    static decltype(auto) WithKey(DataModelIds::tagFeatureEnum feature, std::wstring_view option, Use use) {
        char area[256];
        if (option.size() > sizeof area / OvPlatform::Utf8::MostBytes)
            return WithKey(feature, CPStringUtils::narrowToStdString(option.data(), option.size()), use);
        std::size_t size = 0;
        std::uint32_t allUnits = 0;
        for (const wchar_t unit : option) {
            allUnits |= static_cast<std::uint32_t>(unit);
            area[size++] = static_cast<char>(unit);
        }
        if (allUnits >= 0x80) {
            size = 0;
            const wchar_t* const end = option.data() + option.size();
            for (const wchar_t* unit = option.data(); unit != end;)
                size += OvPlatform::Utf8::Encode(OvPlatform::Utf8::Decode(unit, end), area + size);
        }
        return WithKey(feature, std::string_view(area, size), use);
    }

    template <typename Use>
    static decltype(auto) WithKey(DataModelIds::tagFeatureEnum feature, DataModelIds::tagValueEnum value,
                                  Use use) {
        if (!HasFiveDigits(feature) || !HasFiveDigits(value)) return use(MakeKey(feature, value).view());
        const std::uint64_t digits = DictionaryNumberedText::MakeHead(static_cast<std::uint32_t>(value));
        char text[DictionaryNumberedText::headSize];
        for (std::size_t digit = 0; digit < sizeof text; ++digit)
            text[digit] = static_cast<char>(digits >> (8 * digit) & 0xFF);
        return use(DictionaryNumberedText(static_cast<std::uint32_t>(feature), {text, sizeof text}));
    }
};
