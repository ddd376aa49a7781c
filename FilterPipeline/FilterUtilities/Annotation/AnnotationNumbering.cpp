#include "Annotation/AnnotationNumbering.h"

#include <cstdint>
#include <string>

using namespace DataModelIds;

namespace {

constexpr std::size_t batesDigits = 6;
constexpr wchar_t digits[] = L"0123456789";

/// Decimal digits plus a number: of any length, since a client may write more than a number holds.
std::wstring Sum(std::wstring number, unsigned addend) {
    std::uint64_t carry = addend;
    for (auto digit = number.rbegin(); digit != number.rend() && carry != 0; ++digit) {
        carry += static_cast<std::uint64_t>(*digit - L'0');
        *digit = static_cast<wchar_t>(L'0' + carry % 10);
        carry /= 10;
    }
    return carry != 0 ? std::to_wstring(carry) + number : number;
}

} // namespace

bool IsNumberedAnnotation(const AnnotationElementSettings& element) {
    return element.type == VAL_ANNOTATION_TYPE_BATES_STAMP ||
           element.type == VAL_ANNOTATION_TYPE_PAGE_NUMBERS;
}

CXString AnnotationTextOfPage(const AnnotationElementSettings& element, unsigned page) {
    if (!IsNumberedAnnotation(element)) return element.text;
    const std::wstring text(element.text.View());
    const std::size_t last = text.find_last_of(digits);
    if (last == std::wstring::npos) {
        const bool isBates = element.type == VAL_ANNOTATION_TYPE_BATES_STAMP;
        const std::wstring first = std::wstring(isBates ? batesDigits - 1 : 0, L'0') + L'1';
        return CXString(text + Sum(first, page));
    }
    const std::size_t before = text.find_last_not_of(digits, last);
    const std::size_t first = before == std::wstring::npos ? 0 : before + 1;
    return CXString(text.substr(0, first) + Sum(text.substr(first, last + 1 - first), page) +
                    text.substr(last + 1));
}
