#include "Com/FaultInjection.h"

#include <cguid.h>
#include <objbase.h>
#include <sys/random.h>

#include <array>
#include <cerrno>

const IID GUID_NULL = {};

namespace {

// The text form: braces around groups of 4, 2, 2, 2 and 6 bytes in capital hexadecimal.
constexpr int textUnits = 38;
constexpr std::size_t guidBytes = sizeof(GUID);
constexpr std::array<int, guidBytes> textPlaces = {1,  3,  5,  7,  10, 12, 15, 17,
                                                   20, 22, 25, 27, 29, 31, 33, 35};

using Bytes = std::array<BYTE, guidBytes>;

/// In the order of the text, which is big-endian for the first three fields.
Bytes ToTextOrder(REFGUID guid) {
    Bytes bytes{};
    for (unsigned index = 0; index < 4; ++index)
        bytes[index] = static_cast<BYTE>(guid.Data1 >> (24 - 8 * index));
    bytes[4] = static_cast<BYTE>(guid.Data2 >> 8);
    bytes[5] = static_cast<BYTE>(guid.Data2);
    bytes[6] = static_cast<BYTE>(guid.Data3 >> 8);
    bytes[7] = static_cast<BYTE>(guid.Data3);
    for (unsigned index = 0; index < 8; ++index)
        bytes[8 + index] = guid.Data4[index];
    return bytes;
}

GUID FromTextOrder(const Bytes& bytes) {
    GUID guid{};
    for (unsigned index = 0; index < 4; ++index)
        guid.Data1 = (guid.Data1 << 8) | bytes[index];
    guid.Data2 = static_cast<WORD>((bytes[4] << 8) | bytes[5]);
    guid.Data3 = static_cast<WORD>((bytes[6] << 8) | bytes[7]);
    for (unsigned index = 0; index < 8; ++index)
        guid.Data4[index] = bytes[8 + index];
    return guid;
}

int HexDigit(OLECHAR unit) {
    if (unit >= L'0' && unit <= L'9') return static_cast<int>(unit - L'0');
    if (unit >= L'a' && unit <= L'f') return static_cast<int>(unit - L'a') + 10;
    if (unit >= L'A' && unit <= L'F') return static_cast<int>(unit - L'A') + 10;
    return -1;
}

bool ParseGuid(LPCOLESTR text, GUID& guid) {
    for (int place = 0; place < textUnits; ++place) {
        const OLECHAR unit = text[place];
        const bool isHyphen = place == 9 || place == 14 || place == 19 || place == 24;
        if (place == 0               ? unit != L'{'
            : place == textUnits - 1 ? unit != L'}'
            : isHyphen               ? unit != L'-'
                                     : HexDigit(unit) < 0)
            return false;
    }
    if (text[textUnits] != 0) return false;
    Bytes bytes{};
    for (std::size_t index = 0; index < guidBytes; ++index) {
        const LPCOLESTR digits = text + textPlaces[index];
        bytes[index] = static_cast<BYTE>(HexDigit(digits[0]) * 16 + HexDigit(digits[1]));
    }
    guid = FromTextOrder(bytes);
    return true;
}

HRESULT FromString(LPCOLESTR text, GUID* guid, HRESULT malformed) {
    if (guid == nullptr) return E_INVALIDARG;
    if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
    *guid = GUID_NULL;
    if (text == nullptr) return S_OK;
    return ParseGuid(text, *guid) ? S_OK : malformed;
}

} // namespace

int StringFromGUID2(REFGUID guid, LPOLESTR text, int capacity) {
    if (text == nullptr || capacity < textUnits + 1) return 0;
    constexpr const wchar_t* hexDigits = L"0123456789ABCDEF";
    for (int place = 0; place < textUnits; ++place)
        text[place] = L'-';
    const Bytes bytes = ToTextOrder(guid);
    for (std::size_t index = 0; index < guidBytes; ++index) {
        text[textPlaces[index]] = hexDigits[bytes[index] >> 4];
        text[textPlaces[index] + 1] = hexDigits[bytes[index] & 15];
    }
    text[0] = L'{';
    text[textUnits - 1] = L'}';
    text[textUnits] = 0;
    return textUnits + 1;
}

HRESULT StringFromCLSID(REFCLSID clsid, LPOLESTR* text) {
    if (text == nullptr) return E_INVALIDARG;
    *text = static_cast<LPOLESTR>(CoTaskMemAlloc((textUnits + 1) * sizeof(OLECHAR)));
    if (*text == nullptr) return E_OUTOFMEMORY;
    StringFromGUID2(clsid, *text, textUnits + 1);
    return S_OK;
}

HRESULT StringFromIID(REFIID iid, LPOLESTR* text) { return StringFromCLSID(iid, text); }

HRESULT CLSIDFromString(LPCOLESTR text, LPCLSID clsid) { return FromString(text, clsid, CO_E_CLASSSTRING); }

HRESULT IIDFromString(LPCOLESTR text, LPIID iid) { return FromString(text, iid, CO_E_IIDSTRING); }

HRESULT CoCreateGuid(GUID* guid) {
    if (guid == nullptr) return E_INVALIDARG;
    if (HRESULT fault = OvPlatform::FaultPoint(); FAILED(fault)) return fault;
    Bytes bytes{};
    for (std::size_t got = 0; got < bytes.size();) {
        const ssize_t more = getrandom(bytes.data() + got, bytes.size() - got, 0);
        if (more < 0 && errno != EINTR) return E_UNEXPECTED;
        if (more > 0) got += static_cast<std::size_t>(more);
    }
    // Version 4 (random) of the variant of RFC 4122.
    bytes[6] = static_cast<BYTE>((bytes[6] & 0x0f) | 0x40);
    bytes[8] = static_cast<BYTE>((bytes[8] & 0x3f) | 0x80);
    *guid = FromTextOrder(bytes);
    return S_OK;
}
