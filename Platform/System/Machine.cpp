#include "Com/FaultInjection.h"
#include "Locale/Utf16.h"

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <new>
#include <string>

namespace {

using namespace OvPlatform;

// The version of the interfaces that this platform offers.
constexpr DWORD majorVersion = 10;
constexpr DWORD minorVersion = 0;
constexpr DWORD buildNumber = 10240;

BOOL Fail(DWORD error) {
    SetLastError(error);
    return FALSE;
}

std::string HostName() {
    char name[HOST_NAME_MAX + 1] = {};
    return gethostname(name, sizeof(name) - 1) == 0 ? name : "localhost";
}

/// The name with its domain as the machine itself knows it; the host name alone if it has none. No name
/// service on the network is asked.
std::string QualifiedName() {
    const std::string host = HostName();
    if (host.find('.') != std::string::npos) return host;
    char domain[HOST_NAME_MAX + 1] = {};
    if (getdomainname(domain, sizeof(domain) - 1) != 0) return host;
    const std::string name = domain;
    return name.empty() || name == "(none)" ? host : host + '.' + name;
}

std::string ComputerName(COMPUTER_NAME_FORMAT format) {
    const std::string qualified = QualifiedName();
    const auto dot = qualified.find('.');
    switch (format) {
    case ComputerNameDnsFullyQualified:
    case ComputerNamePhysicalDnsFullyQualified:
        return qualified;
    case ComputerNameDnsDomain:
    case ComputerNamePhysicalDnsDomain:
        return dot == std::string::npos ? std::string() : qualified.substr(dot + 1);
    case ComputerNameNetBIOS:
    case ComputerNamePhysicalNetBIOS: {
        constexpr std::size_t netBiosLength = 15;
        std::string name = qualified.substr(0, (std::min)(dot, netBiosLength));
        for (char& letter : name)
            if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
        return name;
    }
    default:
        return qualified.substr(0, dot);
    }
}

/// The conditions lie in the mask three bits each, in the order of the bits of the type mask.
DWORD Condition(ULONGLONG mask, DWORD type) {
    int place = 0;
    while ((type >> place) > 1)
        ++place;
    return static_cast<DWORD>(mask >> (3 * place)) & 7;
}

bool Meets(int comparison, DWORD condition) {
    switch (condition) {
    case VER_EQUAL:
        return comparison == 0;
    case VER_GREATER:
        return comparison > 0;
    case VER_GREATER_EQUAL:
        return comparison >= 0;
    case VER_LESS:
        return comparison < 0;
    case VER_LESS_EQUAL:
        return comparison <= 0;
    default:
        return false;
    }
}

} // namespace

BOOL GetComputerNameExW(COMPUTER_NAME_FORMAT format, LPWSTR buffer, LPDWORD size) {
    if (size == nullptr || format < ComputerNameNetBIOS || format >= ComputerNameMax)
        return Fail(ERROR_INVALID_PARAMETER);
    if (FaultPointHit()) return FALSE;
    try {
        const std::wstring name = FromUtf8(ComputerName(format));
        const bool fits = CopyText(name, buffer, *size);
        *size = static_cast<DWORD>(name.size() + (fits ? 0 : 1));
        return fits ? TRUE : Fail(ERROR_MORE_DATA);
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_OUTOFMEMORY);
    }
}

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD capacity) {
    if (FaultPointHit()) return 0;
    try {
        const char* value = name != nullptr ? std::getenv(ToUtf8(name).c_str()) : nullptr;
        if (value == nullptr) {
            SetLastError(ERROR_ENVVAR_NOT_FOUND);
            return 0;
        }
        const std::wstring text = FromUtf8(value);
        const bool fits = CopyText(text, buffer, capacity);
        return static_cast<DWORD>(text.size() + (fits ? 0 : 1));
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_OUTOFMEMORY);
        return 0;
    }
}

ULONGLONG VerSetConditionMask(ULONGLONG mask, DWORD types, BYTE condition) {
    for (int place = 0; place < 8; ++place)
        if ((types >> place & 1) != 0) mask |= static_cast<ULONGLONG>(condition & 7) << (3 * place);
    return mask;
}

BOOL VerifyVersionInfoW(LPOSVERSIONINFOEXW version, DWORD types, ULONGLONG mask) {
    if (version == nullptr || types == 0) return Fail(ERROR_BAD_ARGUMENTS);
    if (FaultPointHit()) return FALSE;
    struct Field {
        DWORD type;
        DWORD own;
        DWORD asked;
    };
    // In order of weight: a lower field counts only while those above are equal, as in any comparison of
    // versions.
    const Field fields[] = {{VER_MAJORVERSION, majorVersion, version->dwMajorVersion},
                            {VER_MINORVERSION, minorVersion, version->dwMinorVersion},
                            {VER_SERVICEPACKMAJOR, 0, version->wServicePackMajor},
                            {VER_SERVICEPACKMINOR, 0, version->wServicePackMinor}};
    if ((types & VER_BUILDNUMBER) != 0) {
        const int comparison = buildNumber < version->dwBuildNumber   ? -1
                               : buildNumber > version->dwBuildNumber ? 1
                                                                      : 0;
        if (!Meets(comparison, Condition(mask, VER_BUILDNUMBER))) return Fail(ERROR_OLD_WIN_VERSION);
    }
    int comparison = 0;
    DWORD condition = 0;
    for (const Field& field : fields) {
        if ((types & field.type) == 0) continue;
        // The condition of the highest field holds for the whole.
        if (condition == 0) condition = Condition(mask, field.type);
        comparison = field.own < field.asked ? -1 : field.own > field.asked ? 1 : 0;
        if (comparison != 0) break;
    }
    return condition == 0 || Meets(comparison, condition) ? TRUE : Fail(ERROR_OLD_WIN_VERSION);
}
