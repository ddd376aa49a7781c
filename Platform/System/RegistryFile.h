#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// A value of a key. Text types keep their text in `text` (a list with a zero unit after each entry), others
/// their bytes in `bytes`.
struct RegistryValue {
    std::wstring name;
    DWORD type = REG_NONE;
    std::wstring text;
    std::vector<BYTE> bytes;

    bool IsText() const { return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ; }
};

/// A name in the form in which names are compared: without regard to case.
OV_PLATFORM_API std::wstring FoldRegistryName(std::wstring_view name);

struct RegistryKey {
    /// Whole path, from the root's name.
    std::wstring path;
    /// By folded name.
    std::map<std::wstring, RegistryValue> values;
};

/// The contents of a registry file: all keys by folded path, parents included.
class OV_PLATFORM_API RegistryContents {
public:
    /// Null if there is no such key.
    RegistryKey* Find(std::wstring_view path);
    /// Makes the key and its parents where they are missing.
    RegistryKey& Create(std::wstring_view path);

    std::map<std::wstring, RegistryKey>& Keys() { return m_keys; }
    const std::map<std::wstring, RegistryKey>& Keys() const { return m_keys; }

private:
    std::map<std::wstring, RegistryKey> m_keys;
};

/// What is wrong with a registry file, with the line.
class RegistryFileError : public std::runtime_error {
public:
    RegistryFileError(std::size_t line, const std::string& what)
        : std::runtime_error("line " + std::to_string(line) + ": " + what) {}
};

/// The form is described in docs/formats/registry.md. Throws RegistryFileError for anything that is not of
/// that form.
OV_PLATFORM_API RegistryContents ParseRegistryFile(std::string_view bytes);
OV_PLATFORM_API std::string PrintRegistryFile(const RegistryContents& contents);

inline constexpr std::size_t maximumRegistryFileBytes = 4U << 20;
inline constexpr std::size_t maximumRegistryPathUnits = 2048;
inline constexpr std::size_t maximumRegistryNameUnits = 16383;

} // namespace OvPlatform
