#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>
#include <unicode/locid.h>

#include <optional>

namespace OvPlatform {

/// A locale by its published name, "de-DE"; a null name and that of the system's are the user's, the empty
/// one is the invariant locale (the library's root). Nothing if the name is no name.
std::optional<icu::Locale> FindLocale(LPCWSTR name);

/// The published name, "de-DE", without variant and extensions; empty for the invariant locale.
std::wstring PublishedName(const icu::Locale& locale);

} // namespace OvPlatform
