#include "Dom/DomImplementation.h"

#include "Xml/TextConversion.h"

#include <wctype.h>

#include <algorithm>
#include <array>

namespace OvPlatform {

namespace {

constexpr std::array<std::wstring_view, 3> features = {L"XML", L"DOM", L"MS-DOM"};
constexpr std::array<std::wstring_view, 3> versions = {L"", L"1.0", L"2.0"};

bool Has(const std::array<std::wstring_view, 3>& known, std::wstring_view wanted) {
    return std::any_of(known.begin(), known.end(), [&](std::wstring_view name) {
        return std::equal(name.begin(), name.end(), wanted.begin(), wanted.end(), [](wchar_t a, wchar_t b) {
            return towupper(static_cast<wint_t>(b)) == static_cast<wint_t>(a);
        });
    });
}

} // namespace

HRESULT STDMETHODCALLTYPE DomImplementation::hasFeature(BSTR feature, BSTR version, VARIANT_BOOL* has) {
    if (feature == nullptr || has == nullptr) return E_INVALIDARG;
    *has = Has(features, ViewOf(feature)) && Has(versions, ViewOf(version)) ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

} // namespace OvPlatform
