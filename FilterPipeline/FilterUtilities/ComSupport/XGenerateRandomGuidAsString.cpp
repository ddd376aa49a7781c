#include "ComSupport/XGenerateRandomGuidAsString.h"

#include <windows.h>
#include <atlcomcli.h>

#include <array>
#include <new>

CXString XGenerateRandomGuidAsString() {
    GUID guid{};
    if (FAILED(CoCreateGuid(&guid))) return CXString();
    std::array<wchar_t, 64> text{};
    StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
    try {
        CXString result(text.data());
        result.Remove(L'{');
        result.Remove(L'}');
        return result;
    } catch (const std::bad_alloc&) {
        AtlThrow(E_OUTOFMEMORY);
    }
}
