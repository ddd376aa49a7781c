#include "Com/FaultInjection.h"

#include <oleauto.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <limits>

namespace {

using OvPlatform::FaultPointHit;

// The text starts 8 bytes into the block, so that the length stands in the four bytes before it.
constexpr std::size_t textOffset = 8;
constexpr std::size_t lengthOffset = textOffset - sizeof(UINT);
// An odd number of bytes is allowed; a whole zero unit must follow it and also the last whole unit.
constexpr std::size_t tailBytes = 2 * sizeof(OLECHAR);
constexpr UINT maximumBytes = (std::numeric_limits<UINT>::max)() - static_cast<UINT>(textOffset + tailBytes);

BSTR Allocate(const void* contents, std::size_t bytes) noexcept {
    if (bytes > maximumBytes) {
        SetLastError(ERROR_OUTOFMEMORY);
        return nullptr;
    }
    auto* block = static_cast<BYTE*>(std::malloc(textOffset + bytes + tailBytes));
    if (block == nullptr) {
        SetLastError(ERROR_OUTOFMEMORY);
        return nullptr;
    }
    const UINT length = static_cast<UINT>(bytes);
    std::memset(block, 0, lengthOffset);
    std::memcpy(block + lengthOffset, &length, sizeof(length));
    BYTE* text = block + textOffset;
    if (contents != nullptr && bytes > 0) std::memcpy(text, contents, bytes);
    std::memset(text + bytes, 0, tailBytes);
    return reinterpret_cast<BSTR>(text);
}

BSTR AllocateUnits(const OLECHAR* units, std::size_t count) noexcept {
    if (count > maximumBytes / sizeof(OLECHAR)) {
        SetLastError(ERROR_OUTOFMEMORY);
        return nullptr;
    }
    return Allocate(units, count * sizeof(OLECHAR));
}

INT Replace(BSTR* target, BSTR replacement) noexcept {
    if (replacement == nullptr) return FALSE;
    SysFreeString(*target);
    *target = replacement;
    return TRUE;
}

} // namespace

BSTR SysAllocString(const OLECHAR* text) {
    if (text == nullptr || FaultPointHit()) return nullptr;
    return AllocateUnits(text, std::wcslen(text));
}

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
    if (FaultPointHit()) return nullptr;
    return AllocateUnits(text, length);
}

BSTR SysAllocStringByteLen(LPCSTR bytes, UINT length) {
    if (FaultPointHit()) return nullptr;
    return Allocate(bytes, length);
}

INT SysReAllocString(BSTR* target, const OLECHAR* text) {
    if (target == nullptr || FaultPointHit()) return FALSE;
    if (text == nullptr) {
        SysFreeString(*target);
        *target = nullptr;
        return TRUE;
    }
    return Replace(target, AllocateUnits(text, std::wcslen(text)));
}

INT SysReAllocStringLen(BSTR* target, const OLECHAR* text, UINT length) {
    if (target == nullptr || FaultPointHit()) return FALSE;
    BSTR replacement = AllocateUnits(text, length);
    if (replacement != nullptr && text == nullptr && *target != nullptr) {
        // Without a text the string is only resized and keeps what fits.
        const UINT kept = (std::min)(SysStringLen(*target), length);
        std::memcpy(replacement, *target, kept * sizeof(OLECHAR));
    }
    return Replace(target, replacement);
}

void SysFreeString(BSTR string) {
    if (string != nullptr) std::free(reinterpret_cast<BYTE*>(string) - textOffset);
}

UINT SysStringByteLen(BSTR string) {
    if (string == nullptr) return 0;
    UINT length = 0;
    std::memcpy(&length, reinterpret_cast<const BYTE*>(string) - sizeof(length), sizeof(length));
    return length;
}

UINT SysStringLen(BSTR string) { return SysStringByteLen(string) / static_cast<UINT>(sizeof(OLECHAR)); }

HRESULT VarBstrCat(BSTR left, BSTR right, LPBSTR result) {
    if (result == nullptr) return E_INVALIDARG;
    if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
    const std::size_t leftBytes = SysStringByteLen(left);
    const std::size_t rightBytes = SysStringByteLen(right);
    BSTR joined = Allocate(nullptr, leftBytes + rightBytes);
    if (joined == nullptr) return E_OUTOFMEMORY;
    if (leftBytes > 0) std::memcpy(joined, left, leftBytes);
    if (rightBytes > 0) std::memcpy(reinterpret_cast<BYTE*>(joined) + leftBytes, right, rightBytes);
    *result = joined;
    return S_OK;
}
