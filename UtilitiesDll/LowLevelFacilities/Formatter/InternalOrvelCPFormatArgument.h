#pragma once

#include "LowLevelFacilities/Formatter/InternalOrvelCPTemporaryStream.h"
#include "LowLevelFacilities/Strings/CPString.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace InternalOrvelCP {

template <typename T>
concept WideText = std::is_convertible_v<const T&, const wchar_t*> && !std::is_same_v<T, std::nullptr_t>;

template <typename T>
concept NarrowText = std::is_convertible_v<const T&, const char*> && !std::is_same_v<T, std::nullptr_t>;

template <typename T>
concept Streamable = requires(std::ostream& stream, const T& value) {
    stream << value;
};

/// What the static type of one format argument came down to. Refers to the argument: valid as long as that.
struct FormatArgument {
    enum class Kind { Integral, Floating, Narrow, Wide, Pointer, Streamed };
    enum class Character { None, Narrow, Wide };

    Kind kind;
    Character character = Character::None;
    bool isSigned = false;
    unsigned char size = 0;     // of an integral, in bytes
    std::uint64_t integral = 0; // sign-extended
    double floating = 0;
    const void* pointer = nullptr; // the text, the pointer, or the object to be streamed
    std::size_t length = 0;        // of a narrow text
    void (*stream)(std::ostream&, const void*) = nullptr;
};

template <typename Integral>
FormatArgument integralArgument(Integral value) noexcept {
    FormatArgument result{FormatArgument::Kind::Integral};
    if constexpr (std::is_same_v<Integral, char>) result.character = FormatArgument::Character::Narrow;
    if constexpr (std::is_same_v<Integral, wchar_t> || std::is_same_v<Integral, char16_t>)
        result.character = FormatArgument::Character::Wide;
    result.isSigned = std::is_signed_v<Integral>;
    result.size = sizeof(Integral);
    if constexpr (std::is_signed_v<Integral>)
        result.integral = static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
    else
        result.integral = static_cast<std::uint64_t>(value);
    return result;
}

inline FormatArgument narrowArgument(const char* text, std::size_t length) noexcept {
    FormatArgument result{FormatArgument::Kind::Narrow};
    result.pointer = text;
    result.length = length;
    return result;
}

template <typename T>
FormatArgument makeFormatArgument(const T& value) noexcept {
    if constexpr (std::is_same_v<T, CPString>) {
        return narrowArgument(value.utf8Bytes(), value.view().size());
    } else if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, std::string_view>) {
        return narrowArgument(value.data() == nullptr ? "" : value.data(), value.size());
    } else if constexpr (std::is_same_v<T, std::wstring>) {
        FormatArgument result{FormatArgument::Kind::Wide};
        result.pointer = value.c_str();
        return result;
    } else if constexpr (WideText<T>) {
        FormatArgument result{FormatArgument::Kind::Wide};
        result.pointer = static_cast<const wchar_t*>(value);
        return result;
    } else if constexpr (NarrowText<T>) {
        const char* const text = value;
        return narrowArgument(text, text == nullptr ? 0 : std::string_view(text).size());
    } else if constexpr (std::is_integral_v<T>) {
        return integralArgument(value);
    } else if constexpr (std::is_floating_point_v<T>) {
        FormatArgument result{FormatArgument::Kind::Floating};
        result.floating = static_cast<double>(value);
        return result;
    } else if constexpr (std::is_enum_v<T>) {
        return integralArgument(static_cast<std::underlying_type_t<T>>(value));
    } else if constexpr (std::is_null_pointer_v<T> || std::is_convertible_v<const T&, const volatile void*>) {
        FormatArgument result{FormatArgument::Kind::Pointer};
        result.pointer = const_cast<const void*>(static_cast<const volatile void*>(value));
        return result;
    } else {
        static_assert(Streamable<T>, "a format argument is a number, a text, a pointer, or has operator<<");
        FormatArgument result{FormatArgument::Kind::Streamed};
        result.pointer = &value;
        result.stream = [](std::ostream& stream, const void* object) {
            stream << *static_cast<const T*>(object);
        };
        return result;
    }
}

} // namespace InternalOrvelCP
