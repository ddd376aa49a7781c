#include "Com/FaultInjection.h"
#include "Locale/CharacterCase.h"
#include "Locale/Utf16.h"

#include <oleauto.h>
#include <unicode/coll.h>
#include <unicode/locid.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <cwchar>
#include <memory>
#include <new>
#include <string_view>

namespace {

int Sign(int value) { return (value > 0) - (value < 0); }

int Ordinal(std::wstring_view left, std::wstring_view right) { return Sign(left.compare(right)); }

int OrdinalIgnoringCase(std::wstring_view left, std::wstring_view right) {
    const std::size_t common = (std::min)(left.size(), right.size());
    for (std::size_t index = 0; index < common; ++index) {
        const wchar_t leftUnit = OvPlatform::SimpleUpper(left[index]);
        const wchar_t rightUnit = OvPlatform::SimpleUpper(right[index]);
        if (leftUnit != rightUnit) return leftUnit < rightUnit ? -1 : 1;
    }
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

std::unique_ptr<icu::Collator> MakeCollator(icu::Collator::ECollationStrength strength) {
    UErrorCode status = U_ZERO_ERROR;
    // The locale of a process without one orders by code point, which is no order of words.
    const icu::Locale& user = icu::Locale::getDefault();
    const bool hasNone = std::strcmp(user.getVariant(), "POSIX") == 0;
    std::unique_ptr<icu::Collator> collator(
        icu::Collator::createInstance(hasNone ? icu::Locale::getRoot() : user, status));
    if (U_FAILURE(status) || collator == nullptr) return nullptr;
    collator->setStrength(strength);
    // Composed and decomposed letters are one.
    collator->setAttribute(UCOL_NORMALIZATION_MODE, UCOL_ON, status);
    return collator;
}

/// Comparing is safe from all threads at once. Null if the Unicode data are missing.
const icu::Collator* UserCollator(bool ignoreCase) {
    static const std::unique_ptr<icu::Collator> exact = MakeCollator(icu::Collator::TERTIARY);
    static const std::unique_ptr<icu::Collator> caseless = MakeCollator(icu::Collator::SECONDARY);
    return (ignoreCase ? caseless : exact).get();
}

/// Text as the collator takes it; names and other short texts without an allocation.
class Utf16Text {
public:
    explicit Utf16Text(std::wstring_view text) : m_size(text.size()) {
        if (text.size() > m_short.size())
            m_long = OvPlatform::ToUtf16(text);
        else
            std::transform(text.begin(), text.end(), m_short.begin(),
                           [](wchar_t unit) { return static_cast<char16_t>(unit); });
    }
    const char16_t* Data() const { return m_size > m_short.size() ? m_long.data() : m_short.data(); }
    int32_t Size() const { return static_cast<int32_t>(m_size); }

private:
    std::size_t m_size;
    std::array<char16_t, 128> m_short;
    std::u16string m_long;
};

/// By the user's locale, as words.
int Collate(std::wstring_view left, std::wstring_view right, bool ignoreCase) {
    if (left == right) return 0;
    const int byUnits = ignoreCase ? OrdinalIgnoringCase(left, right) : Ordinal(left, right);
    const icu::Collator* collator = UserCollator(ignoreCase);
    if (byUnits == 0 || collator == nullptr) return byUnits;
    UErrorCode status = U_ZERO_ERROR;
    const Utf16Text leftUnits(left);
    const Utf16Text rightUnits(right);
    const UCollationResult order =
        collator->compare(leftUnits.Data(), leftUnits.Size(), rightUnits.Data(), rightUnits.Size(), status);
    if (U_FAILURE(status)) return byUnits;
    if (order != UCOL_EQUAL) return order == UCOL_LESS ? -1 : 1;
    // The collator skips zero units, which are part of a BSTR.
    const auto zeros = [](std::wstring_view text) { return std::count(text.begin(), text.end(), L'\0'); };
    return zeros(left) == zeros(right) ? 0 : byUnits;
}

} // namespace

HRESULT VarBstrCmp(BSTR left, BSTR right, LCID locale, ULONG flags) {
    if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
    const std::wstring_view leftText(left, SysStringLen(left));
    const std::wstring_view rightText(right, SysStringLen(right));
    const bool ignoreCase = (flags & (NORM_IGNORECASE | LINGUISTIC_IGNORECASE)) != 0;
    try {
        // No locale at all: unit by unit.
        int order = 0;
        if (locale != LOCALE_NEUTRAL)
            order = Collate(leftText, rightText, ignoreCase);
        else
            order = ignoreCase ? OrdinalIgnoringCase(leftText, rightText) : Ordinal(leftText, rightText);
        return order < 0 ? VARCMP_LT : order == 0 ? VARCMP_EQ : VARCMP_GT;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

int CompareStringOrdinal(LPCWCH left, int leftLength, LPCWCH right, int rightLength, BOOL ignoreCase) {
    if (OvPlatform::FaultPointHit()) return 0;
    if (left == nullptr || right == nullptr || leftLength < -1 || rightLength < -1) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const auto view = [](LPCWCH text, int length) {
        return std::wstring_view(text, length < 0 ? std::wcslen(text) : static_cast<std::size_t>(length));
    };
    const std::wstring_view leftText = view(left, leftLength);
    const std::wstring_view rightText = view(right, rightLength);
    const int order = ignoreCase ? OrdinalIgnoringCase(leftText, rightText) : Ordinal(leftText, rightText);
    return CSTR_EQUAL + order;
}
