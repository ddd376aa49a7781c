#pragma once

// Identifiers of interfaces and classes, and the operator that gives a type's own (`__uuidof`).

#include <cstdint>
#include <cstring>

#ifndef EXTERN_C
#define EXTERN_C extern "C"
#endif
#ifndef DECLSPEC_SELECTANY
#define DECLSPEC_SELECTANY __attribute__((weak))
#endif

/// 16 bytes, as published; text form in StringFromGUID2 and CLSIDFromString.
struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
static_assert(sizeof(GUID) == 16);

using IID = GUID;
using CLSID = GUID;
using FMTID = GUID;
using LPGUID = GUID*;
using LPCGUID = const GUID*;
using LPIID = IID*;
using LPCLSID = CLSID*;
using REFGUID = const GUID&;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

inline bool operator==(REFGUID left, REFGUID right) { return std::memcmp(&left, &right, sizeof(GUID)) == 0; }

inline int IsEqualGUID(REFGUID left, REFGUID right) { return left == right; }
inline int InlineIsEqualGUID(REFGUID left, REFGUID right) { return left == right; }
inline int IsEqualIID(REFIID left, REFIID right) { return left == right; }
inline int IsEqualCLSID(REFCLSID left, REFCLSID right) { return left == right; }

#ifdef INITGUID
#define DEFINE_GUID(name, l, w1, w2, b1, b2, b3, b4, b5, b6, b7, b8)                                         \
    EXTERN_C const GUID DECLSPEC_SELECTANY name = {l, w1, w2, {b1, b2, b3, b4, b5, b6, b7, b8}}
#else
#define DEFINE_GUID(name, l, w1, w2, b1, b2, b3, b4, b5, b6, b7, b8) EXTERN_C const GUID name
#endif

namespace OvPlatform {
/// Left undefined, so that asking a type without an identifier fails at compile time.
template <typename T>
struct UuidOf;
template <typename T>
struct UuidOf<T*> : UuidOf<T> {};
template <typename T>
struct UuidOf<T&> : UuidOf<T> {};
template <typename T>
struct UuidOf<const T> : UuidOf<T> {};
} // namespace OvPlatform

/// Gives `type` its identifier; stands at global scope after the declaration of `type`.
#define __CRT_UUID_DECL(type, l, w1, w2, b1, b2, b3, b4, b5, b6, b7, b8)                                     \
    extern "C++" {                                                                                           \
    template <>                                                                                              \
    struct OvPlatform::UuidOf<type> {                                                                        \
        static constexpr GUID value = {l, w1, w2, {b1, b2, b3, b4, b5, b6, b7, b8}};                         \
    };                                                                                                       \
    }

/// The identifier of a type, or of what an expression or pointer refers to.
#define __uuidof(type) (OvPlatform::UuidOf<__typeof__(type)>::value)
