#include "Com/FaultInjection.h"
#include "Locale/CharacterCase.h"
#include "Locale/Utf16.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <new>
#include <string>
#include <string_view>

namespace {

using namespace OvPlatform;

/// Modules of the system whose functions the platform has itself.
constexpr std::wstring_view ownModules[] = {L"t2embed.dll"};

/// In any case, with or without the extension, as modules are asked for.
bool IsOwnModule(std::wstring name) {
    std::transform(name.begin(), name.end(), name.begin(), SimpleLower);
    if (name.find(L'.') == std::wstring::npos) name += L".dll";
    return std::find(std::begin(ownModules), std::end(ownModules), name) != std::end(ownModules);
}

/// The file that a module of that name is loaded from.
std::string LoadPath(LPCWSTR name) {
    Dl_info own = {};
    if (IsOwnModule(name) && dladdr(reinterpret_cast<const void*>(&LoadLibraryW), &own) != 0)
        return own.dli_fname;
    return ToUtf8(name);
}

/// Why a module did not load, as far as its file tells.
DWORD LoadError(const std::string& path) {
    if (path.find('/') == std::string::npos || access(path.c_str(), F_OK) != 0) return ERROR_MOD_NOT_FOUND;
    std::ifstream file(path, std::ios::binary);
    char mark[SELFMAG] = {};
    if (!file) return ERROR_ACCESS_DENIED;
    if (!file.read(mark, sizeof(mark)) || std::memcmp(mark, ELFMAG, SELFMAG) != 0)
        return ERROR_BAD_EXE_FORMAT;
    // A module of its own kind whose own needs are not met.
    return ERROR_MOD_NOT_FOUND;
}

std::string ModulePath(HMODULE module) {
    if (module != nullptr) {
        link_map* map = nullptr;
        if (dlinfo(module, RTLD_DI_LINKMAP, &map) != 0 || map == nullptr) return {};
        if (map->l_name != nullptr && *map->l_name != '\0') return map->l_name;
    }
    // The program itself.
    std::string path(4096, '\0');
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    path.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return path;
}

} // namespace

HMODULE LoadLibraryW(LPCWSTR name) {
    if (FaultPointHit()) return nullptr;
    try {
        if (name == nullptr || *name == 0) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return nullptr;
        }
        const std::string path = LoadPath(name);
        // All references are bound now: a module that lacks one fails here and not in the middle of a job.
        void* module = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (module == nullptr) {
            OutputDebugStringA(dlerror());
            SetLastError(LoadError(path));
        }
        return static_cast<HMODULE>(module);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_OUTOFMEMORY);
        return nullptr;
    }
}

BOOL FreeLibrary(HMODULE module) {
    if (module != nullptr && dlclose(module) == 0) return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}

FARPROC GetProcAddress(HMODULE module, LPCSTR name) {
    if (FaultPointHit()) return nullptr;
    void* address = name != nullptr ? dlsym(module != nullptr ? module : RTLD_DEFAULT, name) : nullptr;
    if (address == nullptr) SetLastError(ERROR_PROC_NOT_FOUND);
    return reinterpret_cast<FARPROC>(address);
}

HMODULE GetModuleHandleW(LPCWSTR name) {
    if (FaultPointHit()) return nullptr;
    try {
        void* module = dlopen(name != nullptr ? LoadPath(name).c_str() : nullptr, RTLD_NOW | RTLD_NOLOAD);
        if (module == nullptr) {
            SetLastError(ERROR_MOD_NOT_FOUND);
            return nullptr;
        }
        // It stays loaded by whoever loaded it.
        dlclose(module);
        return static_cast<HMODULE>(module);
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_OUTOFMEMORY);
        return nullptr;
    }
}

DWORD GetModuleFileNameW(HMODULE module, LPWSTR buffer, DWORD capacity) {
    if (FaultPointHit()) return 0;
    try {
        const std::wstring path = FromUtf8(ModulePath(module));
        if (path.empty()) {
            SetLastError(ERROR_INVALID_HANDLE);
            return 0;
        }
        if (CopyText(path, buffer, capacity)) return static_cast<DWORD>(path.size());
        if (buffer != nullptr && capacity > 0)
            CopyText(std::wstring_view(path).substr(0, capacity - 1), buffer, capacity);
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return capacity;
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_OUTOFMEMORY);
        return 0;
    }
}

// There are no calls at thread start and end here that could be switched off.
BOOL DisableThreadLibraryCalls(HMODULE) { return TRUE; }
