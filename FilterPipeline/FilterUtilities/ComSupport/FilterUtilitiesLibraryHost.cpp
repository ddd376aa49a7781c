#include "ComSupport/FilterUtilitiesLibraryHost.h"

#include <LowLevelFacilities/WideStrings/CXString.h>
#include <SystemServices/RegistryKey.h>
#include <SystemServices/WindowsDesktopUtilities.h>

#include <windows.h>

bool FilterUtilitiesLibraryHost::ShouldNativeXmlConfigurationFeatureSetPopMessageBoxOnException() {
    constexpr auto keyPath = L"SOFTWARE\\Orvel\\PrinterDriver\\V5.0\\Configuration";
    constexpr auto valueName = L"ShowParseErrors";
    CXString error;
    const auto key = RegistryKey::CreateRegistryKey(HKEY_LOCAL_MACHINE, keyPath, KEY_READ, error, false);
    if (key) return key->GetBooleanValue(valueName, false);

    CXString text;
    text.Format(L"Failed to retrieve value of %s in HKLM subkey %s: %s", valueName, keyPath, error);
    WindowsDesktopUtilities::noHangDebugMessageBox(nullptr, text, L"XML Configuration Error",
                                                   MB_TASKMODAL | MB_ICONERROR);
    return false;
}
