#include "SystemServices/RegistryKey.h"

#include "LowLevelFacilities/WideStrings/ByteBuffer.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

CXString textOfRegistryString(const ByteBuffer& data) {
    // The terminator may be missing, or the data end in the middle of a unit.
    const std::size_t units = data.size() / sizeof(wchar_t);
    CXString text;
    if (units != 0)
        std::memcpy(text.GetBufferSetLength(static_cast<int>(units)), data.data(), units * sizeof(wchar_t));
    text.ReleaseBuffer();
    return text;
}

// The system's own words and the code; the code alone where it has none.
CXString describe(LONG result) {
    wchar_t words[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(result), 0, words, std::size(words), nullptr);
    while (length != 0 && (words[length - 1] == L'\r' || words[length - 1] == L'\n'))
        --length;
    CXString text(words, static_cast<int>(length));
    CXString code;
    code.Format(length == 0 ? L"error %d" : L" (error %d)", result);
    return text += code;
}

bool meansTrue(CXString text) {
    text.Trim();
    return text.GetAsInt() != 0 || text.CompareNoCase(L"true") == 0;
}

} // namespace

RegistryKey::~RegistryKey() {
    if (m_isOwned && m_key != nullptr) RegCloseKey(m_key);
}

OvlUniquePtr<RegistryKey> RegistryKey::CreateRegistryKey(HKEY parent, const CXString& path, REGSAM access,
                                                         CXString& error, bool createIfMissing) {
    error.Empty();
    // Made first, so that no open key is lost when memory is out.
    OvlUniquePtr<RegistryKey> opened(new RegistryKey(nullptr, true));
    HKEY* const key = &opened->m_key;
    const LONG result = createIfMissing ? RegCreateKeyExW(parent, path, 0, nullptr, REG_OPTION_NON_VOLATILE,
                                                          access, nullptr, key, nullptr)
                                        : RegOpenKeyExW(parent, path, 0, access, key);
    if (result != ERROR_SUCCESS) {
        error = describe(result);
        return nullptr;
    }
    return opened;
}

bool RegistryKey::GetBooleanValue(const CXString& name, bool defaultValue) const {
    DWORD type = REG_NONE;
    DWORD size = 0;
    if (RegQueryValueExW(m_key, name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS) return defaultValue;
    ByteBuffer data(size);
    if (RegQueryValueExW(m_key, name, nullptr, &type, data.getLpbyte(), &size) != ERROR_SUCCESS)
        return defaultValue;
    data.resize(std::min<std::size_t>(size, data.size()));
    switch (type) {
    case REG_DWORD:
    case REG_QWORD:
        return std::any_of(data.begin(), data.end(), [](unsigned char byte) { return byte != 0; });
    case REG_SZ:
    case REG_EXPAND_SZ:
        return meansTrue(textOfRegistryString(data));
    default:
        return defaultValue;
    }
}
