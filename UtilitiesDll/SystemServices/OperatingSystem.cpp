#include "SystemServices/OperatingSystem.h"

#include <windows.h>
#include <versionhelpers.h>

namespace {

// What the locale's paper size may be, by the numbers of the device mode.
constexpr DWORD letterPaper = 1;
constexpr DWORD legalPaper = 5;

} // namespace

CXString OperatingSystem::GetFullComputerName() {
    DWORD size = 0;
    GetComputerNameExW(ComputerNameDnsFullyQualified, nullptr, &size);
    if (size == 0) return {};
    CXString name;
    if (!GetComputerNameExW(ComputerNameDnsFullyQualified, name.GetBuffer(static_cast<int>(size)), &size))
        return {};
    name.ReleaseBuffer();
    return name;
}

bool OperatingSystem::IsOsVersionWin7OrLater() { return IsWindows7OrGreater(); }

bool OperatingSystem::UseEnglishPaperSizes() {
    DWORD paper = 0;
    const int units = GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_IPAPERSIZE | LOCALE_RETURN_NUMBER,
                                      reinterpret_cast<wchar_t*>(&paper), sizeof paper / sizeof(wchar_t));
    return units != 0 && (paper == letterPaper || paper == legalPaper);
}
