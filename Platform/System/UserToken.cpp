#include "System/UserToken.h"

#include "Com/FaultInjection.h"
#include "Locale/Utf16.h"
#include "System/HandleTable.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <new>
#include <vector>

namespace {

using namespace OvPlatform;

class UserToken final : public HandleObject {
public:
    explicit UserToken(std::wstring userName) : m_userName(std::move(userName)) {}

    const std::wstring& UserName() const { return m_userName; }

private:
    std::wstring m_userName;
};

// The handle as it was given, and the token behind it, which the thread keeps when the handle is closed.
// Tokens of an embedding program are opaque values to this platform: they are kept as they are.
struct Impersonation {
    HANDLE handle = nullptr;
    std::shared_ptr<UserToken> token;
};
thread_local Impersonation impersonation;

BOOL Fail(DWORD error) {
    SetLastError(error);
    return FALSE;
}

std::wstring ProcessUserName() {
    std::vector<char> buffer(4096);
    passwd entry{};
    passwd* found = nullptr;
    while (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE)
        buffer.resize(buffer.size() * 2);
    return found != nullptr ? FromUtf8(found->pw_name) : std::to_wstring(geteuid());
}

} // namespace

namespace OvPlatform {

HANDLE CreateUserToken(const std::wstring& userName) {
    return HandleTable::Open(std::make_shared<UserToken>(userName));
}

HANDLE ThreadToken() noexcept { return impersonation.handle; }

} // namespace OvPlatform

BOOL SetThreadToken(PHANDLE thread, HANDLE token) {
    if (thread != nullptr && *thread != GetCurrentThread()) return Fail(ERROR_NOT_SUPPORTED);
    if (token == nullptr) {
        impersonation = {};
        return TRUE;
    }
    if (FaultPointHit()) return FALSE;
    if (token == INVALID_HANDLE_VALUE) return Fail(ERROR_INVALID_HANDLE);
    impersonation = {token, HandleTable::FindAs<UserToken>(token)};
    return TRUE;
}

BOOL ImpersonateLoggedOnUser(HANDLE token) {
    return token != nullptr ? SetThreadToken(nullptr, token) : Fail(ERROR_INVALID_HANDLE);
}

BOOL RevertToSelf() { return SetThreadToken(nullptr, nullptr); }

BOOL OpenThreadToken(HANDLE thread, DWORD, BOOL, PHANDLE token) {
    if (token == nullptr) return Fail(ERROR_INVALID_PARAMETER);
    *token = nullptr;
    if (FaultPointHit()) return FALSE;
    if (thread != GetCurrentThread()) return Fail(ERROR_NOT_SUPPORTED);
    if (impersonation.handle == nullptr) return Fail(ERROR_NO_TOKEN);
    try {
        *token = impersonation.token ? HandleTable::Open(impersonation.token) : impersonation.handle;
        return TRUE;
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_OUTOFMEMORY);
    }
}

BOOL GetUserNameW(LPWSTR buffer, LPDWORD size) {
    if (size == nullptr) return Fail(ERROR_INVALID_PARAMETER);
    if (FaultPointHit()) return FALSE;
    try {
        const std::wstring name = impersonation.token ? impersonation.token->UserName() : ProcessUserName();
        const bool fits = CopyText(name, buffer, *size);
        *size = static_cast<DWORD>(name.size() + 1);
        return fits ? TRUE : Fail(ERROR_INSUFFICIENT_BUFFER);
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_OUTOFMEMORY);
    }
}
