#include "SystemServices/User.h"

#include <windows.h>

#define SECURITY_WIN32
#include <security.h>

namespace {

/// "DOMAIN\name", or empty with the last error set.
CXString samCompatibleName() {
    ULONG size = 0;
    GetUserNameExW(NameSamCompatible, nullptr, &size);
    if (size == 0) return {};
    CXString name;
    if (!GetUserNameExW(NameSamCompatible, name.GetBuffer(static_cast<int>(size)), &size)) return {};
    name.ReleaseBuffer();
    return name;
}

} // namespace

bool User::GetCurrentUserName(CXString& name) {
    const CXString full = samCompatibleName();
    name = full.Mid(full.Find(L'\\') + 1);
    return !name.IsEmpty();
}

bool User::GetCurrentUsersDomain(CXString& domain) {
    const CXString full = samCompatibleName();
    domain = full.Left(full.Find(L'\\'));
    return !domain.IsEmpty();
}
