#include "Com/FaultInjection.h"

#include <security.h>

#include <algorithm>
#include <string>

namespace {

using ReadName = BOOL (*)(wchar_t*, DWORD*);

/// Empty if the name cannot be told; the last error is then set. Names here are short.
std::wstring NameFrom(ReadName read) {
    wchar_t buffer[512];
    DWORD size = sizeof(buffer) / sizeof(buffer[0]);
    return read(buffer, &size) ? std::wstring(buffer) : std::wstring();
}

} // namespace

BOOLEAN WINAPI GetUserNameExW(EXTENDED_NAME_FORMAT NameFormat, LPWSTR lpNameBuffer, DWORD* nSize) {
    if (OvPlatform::FaultPointHit()) return FALSE;
    if (nSize == nullptr || NameFormat != NameSamCompatible) {
        SetLastError(nSize == nullptr ? ERROR_INVALID_PARAMETER : ERROR_NONE_MAPPED);
        return FALSE;
    }
    const std::wstring machine = NameFrom([](wchar_t* buffer, DWORD* size) {
        return GetComputerNameExW(ComputerNamePhysicalNetBIOS, buffer, size);
    });
    const std::wstring user =
        NameFrom([](wchar_t* buffer, DWORD* size) { return GetUserNameW(buffer, size); });
    if (machine.empty() || user.empty()) return FALSE;
    const std::wstring name = machine + L'\\' + user;
    const DWORD room = *nSize;
    if (lpNameBuffer == nullptr || name.size() >= room) {
        *nSize = static_cast<DWORD>(name.size() + 1);
        SetLastError(ERROR_MORE_DATA);
        return FALSE;
    }
    std::copy_n(name.c_str(), name.size() + 1, lpNameBuffer);
    *nSize = static_cast<DWORD>(name.size());
    return TRUE;
}
