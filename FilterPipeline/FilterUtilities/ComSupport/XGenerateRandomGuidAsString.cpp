#include "XGenerateRandomGuidAsString.h"

#include <windows.h>

#include <array>

CXString XGenerateRandomGuidAsString() {
    GUID guid{};
    if (FAILED(CoCreateGuid(&guid))) return CXString();
    std::array<wchar_t, 64> text{};
    StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
    CXString result(text.data());
    result.Remove(L'{');
    result.Remove(L'}');
    return result;
}
