#include "Com/FaultInjection.h"
#include "System/HandleTable.h"
#include "System/RegistryStore.h"

#include <cstring>
#include <new>

namespace {

using namespace OvPlatform;

class OpenKey final : public HandleObject {
public:
    OpenKey(std::wstring path, REGSAM access) : m_path(std::move(path)), m_access(access) {}

    const std::wstring& Path() const { return m_path; }
    bool Allows(REGSAM access) const { return (m_access & access) == access; }

private:
    std::wstring m_path;
    REGSAM m_access;
};

struct Root {
    HKEY handle;
    const wchar_t* name;
};
const Root roots[] = {{HKEY_CLASSES_ROOT, L"HKEY_CLASSES_ROOT"},
                      {HKEY_CURRENT_USER, L"HKEY_CURRENT_USER"},
                      {HKEY_LOCAL_MACHINE, L"HKEY_LOCAL_MACHINE"},
                      {HKEY_USERS, L"HKEY_USERS"}};

bool IsRoot(HKEY key) {
    for (const Root& root : roots)
        if (root.handle == key) return true;
    return false;
}

/// Null if it is no open key.
std::shared_ptr<OpenKey> FindKey(HKEY key) {
    for (const Root& root : roots)
        if (root.handle == key) return std::make_shared<OpenKey>(root.name, KEY_ALL_ACCESS);
    return HandleTable::FindAs<OpenKey>(key);
}

/// The whole path of a key below another; without separators at the ends.
std::wstring Join(const std::wstring& parent, LPCWSTR child) {
    std::wstring_view part = child != nullptr ? child : L"";
    while (!part.empty() && part.front() == L'\\')
        part.remove_prefix(1);
    while (!part.empty() && part.back() == L'\\')
        part.remove_suffix(1);
    return part.empty() ? parent : parent + L'\\' + std::wstring(part);
}

bool IsValidPath(const std::wstring& path) {
    return path.size() <= maximumRegistryPathUnits && path.find(L"\\\\") == std::wstring::npos &&
           path.find_first_of(L"[]\r\n") == std::wstring::npos;
}

/// What a published function does, with the store held and up to date; memory that is out becomes its result.
template <typename Work>
LSTATUS WithStore(Work work) {
    if (HRESULT fault = FaultPoint(); FAILED(fault)) return static_cast<LSTATUS>(GetLastError());
    try {
        RegistryStore& store = RegistryStore::Instance();
        std::lock_guard guard(store.Lock());
        if (LSTATUS status = store.Refresh(); status != ERROR_SUCCESS) return status;
        return work(store);
    } catch (const std::bad_alloc&) {
        return ERROR_OUTOFMEMORY;
    }
}

HKEY Open(std::wstring path, REGSAM access) {
    return static_cast<HKEY>(HandleTable::Open(std::make_shared<OpenKey>(std::move(path), access)));
}

/// The bytes of memory that a caller sees: text in WCHARs with its terminator.
std::vector<BYTE> MemoryOf(const RegistryValue& value) {
    if (!value.IsText()) return value.bytes;
    const auto* start = reinterpret_cast<const BYTE*>(value.text.c_str());
    return {start, start + (value.text.size() + 1) * sizeof(WCHAR)};
}

std::wstring TextOf(const BYTE* data, DWORD size) {
    std::wstring text(size / sizeof(WCHAR), L'\0');
    if (!text.empty()) std::memcpy(text.data(), data, text.size() * sizeof(WCHAR));
    if (!text.empty() && text.back() == 0) text.pop_back();
    return text;
}

/// The values of a key that was opened; ERROR_KEY_DELETED if it is gone from the file since.
LSTATUS FindValues(RegistryStore& store, HKEY handle, REGSAM access, RegistryKey*& found) {
    const auto key = FindKey(handle);
    if (!key) return ERROR_INVALID_HANDLE;
    if (!key->Allows(access)) return ERROR_ACCESS_DENIED;
    found = IsRoot(handle) ? &store.Contents().Create(key->Path()) : store.Contents().Find(key->Path());
    return found != nullptr ? ERROR_SUCCESS : ERROR_KEY_DELETED;
}

} // namespace

LSTATUS RegOpenKeyExW(HKEY parent, LPCWSTR subKey, DWORD, REGSAM access, PHKEY result) {
    if (result == nullptr) return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    return WithStore([&](RegistryStore& store) -> LSTATUS {
        const auto key = FindKey(parent);
        if (!key) return ERROR_INVALID_HANDLE;
        const std::wstring path = Join(key->Path(), subKey);
        if (!IsValidPath(path)) return ERROR_BAD_PATHNAME;
        const bool namesRoot = path == key->Path() && IsRoot(parent);
        if (!namesRoot && store.Contents().Find(path) == nullptr) return ERROR_FILE_NOT_FOUND;
        *result = Open(path, access);
        return ERROR_SUCCESS;
    });
}

LSTATUS RegCreateKeyExW(HKEY parent, LPCWSTR subKey, DWORD, LPWSTR, DWORD, REGSAM access,
                        LPSECURITY_ATTRIBUTES, PHKEY result, LPDWORD disposition) {
    if (result == nullptr || subKey == nullptr) return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    return WithStore([&](RegistryStore& store) -> LSTATUS {
        const auto key = FindKey(parent);
        if (!key) return ERROR_INVALID_HANDLE;
        const std::wstring path = Join(key->Path(), subKey);
        if (!IsValidPath(path)) return ERROR_BAD_PATHNAME;
        const bool exists = store.Contents().Find(path) != nullptr;
        if (!exists) store.CreateKey(path);
        *result = Open(path, access);
        if (disposition != nullptr) *disposition = exists ? REG_OPENED_EXISTING_KEY : REG_CREATED_NEW_KEY;
        return ERROR_SUCCESS;
    });
}

LSTATUS RegQueryValueExW(HKEY handle, LPCWSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data,
                         LPDWORD size) {
    if (reserved != nullptr || (data != nullptr && size == nullptr)) return ERROR_INVALID_PARAMETER;
    return WithStore([&](RegistryStore& store) -> LSTATUS {
        RegistryKey* key = nullptr;
        if (LSTATUS status = FindValues(store, handle, KEY_QUERY_VALUE, key); status != ERROR_SUCCESS)
            return status;
        const auto found = key->values.find(FoldRegistryName(name != nullptr ? name : L""));
        if (found == key->values.end()) return ERROR_FILE_NOT_FOUND;
        const std::vector<BYTE> memory = MemoryOf(found->second);
        if (type != nullptr) *type = found->second.type;
        if (size == nullptr) return ERROR_SUCCESS;
        const DWORD capacity = *size;
        *size = static_cast<DWORD>(memory.size());
        if (data == nullptr) return ERROR_SUCCESS;
        if (capacity < memory.size()) return ERROR_MORE_DATA;
        if (!memory.empty()) std::memcpy(data, memory.data(), memory.size());
        return ERROR_SUCCESS;
    });
}

LSTATUS RegSetValueExW(HKEY handle, LPCWSTR name, DWORD, DWORD type, const BYTE* data, DWORD size) {
    if (data == nullptr && size > 0) return ERROR_INVALID_PARAMETER;
    return WithStore([&](RegistryStore& store) -> LSTATUS {
        RegistryKey* key = nullptr;
        if (LSTATUS status = FindValues(store, handle, KEY_SET_VALUE, key); status != ERROR_SUCCESS)
            return status;
        RegistryValue value;
        value.name = name != nullptr ? name : L"";
        value.type = type;
        if (value.name.size() > maximumRegistryNameUnits) return ERROR_INVALID_PARAMETER;
        if (value.IsText())
            value.text = TextOf(data, size);
        else if (size > 0)
            value.bytes.assign(data, data + size);
        key->values[FoldRegistryName(value.name)] = std::move(value);
        return store.Save();
    });
}

LSTATUS RegDeleteValueW(HKEY handle, LPCWSTR name) {
    return WithStore([&](RegistryStore& store) -> LSTATUS {
        RegistryKey* key = nullptr;
        if (LSTATUS status = FindValues(store, handle, KEY_SET_VALUE, key); status != ERROR_SUCCESS)
            return status;
        if (key->values.erase(FoldRegistryName(name != nullptr ? name : L"")) == 0)
            return ERROR_FILE_NOT_FOUND;
        return store.Save();
    });
}

LSTATUS RegCloseKey(HKEY key) {
    if (IsRoot(key)) return ERROR_SUCCESS;
    return HandleTable::FindAs<OpenKey>(key) && HandleTable::Close(key) ? ERROR_SUCCESS
                                                                        : ERROR_INVALID_HANDLE;
}
