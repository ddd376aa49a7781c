#pragma once

// The typed formatter. A format is written as for printf, but the static type of each argument decides how it
// is read: %s takes narrow text, wide text (which comes out as UTF-8), numbers and whatever has operator<<;
// %d takes any integral type, without a length modifier. %S is %s. Nothing is read that was not passed.

#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/CPExceptionOSApiError.h"
#include "LowLevelFacilities/Failures/CPExceptionTooManyArguments.h"
#include "LowLevelFacilities/Failures/DebugUtilities.h"
#include "LowLevelFacilities/Failures/LastErrorKeeper.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"
#include "LowLevelFacilities/Formatter/InternalOrvelCPFormatArgument.h"
#include "LowLevelFacilities/Formatter/InternalOrvelCPFormatSpecification.h"
#include "LowLevelFacilities/Strings/CPStringUtils.h"
#include "LowLevelFacilities/Strings/InternalOrvelCPFormatStringBuffer.h"

#include <utf8coder.h>

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <new>
#include <span>

namespace InternalOrvelCP {

using FormatBuffer = FormatStringBuffer<1024>;

[[noreturn]] inline void refuseAsterisk() {
    const OperationScope operation("InternalOrvelCP::useCrtToProcessFormatSpecification");
    ThrowFailure<CPExceptionInvalidArgument>([] {
        return "The InternalOrvelCP::formatWorkerMayThrow() family of methods does not support the '*' "
               "character for the precision or width in a printf-style format specification.";
    });
}

/// Lets the runtime's formatter write one value under a specification that it understands.
template <typename Value>
void useCrtToProcessFormatSpecification(FormatBuffer& destination, const FormatSpecification& specification,
                                        const FormatSpecification::CrtSpecification& crt, Value value) {
    if (specification.containsAsterisk()) refuseAsterisk();
    destination.reserve(std::max<std::size_t>(2 * specification.getFormatSpecificationLength(), 256));
    int length = std::snprintf(destination.writePosition(), destination.room(), crt.text, value);
    if (length < 0 || static_cast<std::size_t>(length) >= destination.room()) {
        length = std::snprintf(nullptr, 0, crt.text, value);
        if (length >= 0) {
            destination.reserve(static_cast<std::size_t>(length) + 1);
            length = std::snprintf(destination.writePosition(), destination.room(), crt.text, value);
        }
    }
    if (length < 0 || static_cast<std::size_t>(length) >= destination.room()) {
        destination.commit(0);
        const OperationScope operation("InternalOrvelCP::useCrtToProcessFormatSpecification");
        ThrowFailure<CPExceptionOSApiError>([] { return "snprintf() failed even after reallocation!"; });
    }
    destination.commit(static_cast<std::size_t>(length));
}

/// A number, padded as printf does it.
inline void appendPadded(FormatBuffer& destination, const FormatSpecification::Padding& padding,
                         std::string_view number) {
    const auto width = static_cast<std::size_t>(padding.width);
    const std::size_t missing = width > number.size() ? width - number.size() : 0;
    destination.reserve(number.size() + missing);
    char* at = destination.writePosition();
    const auto pad = [&](char with) {
        std::memset(at, with, missing);
        at += missing;
    };
    if (!padding.isLeft && !padding.hasZeros) pad(' ');
    if (!padding.isLeft && padding.hasZeros) {
        if (number.front() == '-') {
            *at++ = '-';
            number.remove_prefix(1);
        }
        pad('0');
    }
    at = std::copy(number.begin(), number.end(), at);
    if (padding.isLeft) pad(' ');
    destination.commit(static_cast<std::size_t>(at - destination.writePosition()));
}

/// The digits of a value that the letter asks for, in `digits`.
template <std::size_t size>
std::string_view digitsOf(std::uint64_t value, char letter, char (&digits)[size]) {
    if (letter == 'd' || letter == 'i') {
        const auto end = std::to_chars(digits, digits + size, static_cast<std::int64_t>(value)).ptr;
        return {digits, static_cast<std::size_t>(end - digits)};
    }
    const int base = letter == 'o' ? 8 : letter == 'u' ? 10 : 16;
    char* const end = std::to_chars(digits, digits + size, value, base).ptr;
    if (letter == 'X')
        for (char* at = digits; at != end; ++at)
            if (*at >= 'a') *at = static_cast<char>(*at - 'a' + 'A');
    return {digits, static_cast<std::size_t>(end - digits)};
}

inline void appendDecimal(FormatBuffer& destination, std::uint64_t value, bool isSigned) {
    char digits[24];
    const auto end = isSigned
                         ? std::to_chars(digits, digits + sizeof digits, static_cast<std::int64_t>(value))
                         : std::to_chars(digits, digits + sizeof digits, value);
    destination.append(digits, static_cast<std::size_t>(end.ptr - digits));
}

/// Formats an integral argument for d, i, u, o, x or X. As with printf, the letter decides whether the bits
/// are read as signed; their number is that of the argument's type, promoted.
inline void outputRequestedIntegralFormatArgument(FormatBuffer& destination,
                                                  const FormatSpecification& specification,
                                                  const FormatArgument& argument) {
    const char letter = specification.conversion();
    const bool isSigned = letter == 'd' || letter == 'i';
    // Narrow types count as int, as they do for printf; h and hh cut them.
    const unsigned int promoted = std::max<unsigned int>(argument.size, sizeof(int));
    const unsigned int bytes =
        specification.shortness() == 0 ? promoted : 4u >> std::min(specification.shortness(), 2);
    const unsigned int bits = 8 * bytes;
    const unsigned int unused = 64 - bits;
    const std::uint64_t shifted = argument.integral << unused;
    const std::uint64_t value = isSigned
                                    ? static_cast<std::uint64_t>(static_cast<std::int64_t>(shifted) >> unused)
                                    : shifted >> unused;
    char digits[24];
    if (specification.isPlain()) {
        const std::string_view number = digitsOf(value, letter, digits);
        return destination.append(number.data(), number.size());
    }
    if (const auto padding = specification.onlyPadding(); padding && !specification.hasPrecision())
        return appendPadded(destination, *padding, digitsOf(value, letter, digits));
    const char lengthAndLetter[] = {'l', 'l', letter, '\0'};
    if (isSigned) {
        useCrtToProcessFormatSpecification(destination, specification, specification.forCrt(lengthAndLetter),
                                           static_cast<long long>(value));
    } else {
        useCrtToProcessFormatSpecification(destination, specification, specification.forCrt(lengthAndLetter),
                                           static_cast<unsigned long long>(value));
    }
}

/// Formats a number for f, e, g, a and their capitals.
inline void outputFloating(FormatBuffer& destination, const FormatSpecification& specification,
                           double value) {
    const char letter = specification.conversion();
    const auto padding = specification.onlyPadding();
    const int precision = specification.hasPrecision() ? specification.precision() : 6;
    // What the runtime would write, at half the time, where its locale does not tell another point.
    constexpr int most = 17;
    constexpr double largest = 1e15;
    if (padding && letter == 'f' && precision <= most && std::fabs(value) < largest &&
        *std::localeconv()->decimal_point == '.') {
        char digits[48];
        const char* const end =
            std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, precision).ptr;
        return appendPadded(destination, *padding, {digits, static_cast<std::size_t>(end - digits)});
    }
    const char onlyLetter[] = {letter, '\0'};
    useCrtToProcessFormatSpecification(destination, specification, specification.forCrt(onlyLetter), value);
}

/// The text of an argument, under a specification that may have a width or a precision; it need not be
/// terminated. A cut by the precision never leaves half a code point. Under a width or a precision the text
/// ends at its first zero, as the runtime has it; without them zeros are kept.
inline void outputText(FormatBuffer& destination, const FormatSpecification& specification, const char* text,
                       std::size_t length) {
    if (specification.isPlain()) {
        destination.append(text, length);
        return;
    }
    const auto precision = static_cast<std::size_t>(specification.precision());
    if (specification.precision() >= 0 && precision < length) {
        length = precision;
        while (length != 0 && OvPlatform::Utf8::IsTrail(text[length]))
            --length;
    }
    // Of a text of which nothing is kept nothing is read.
    useCrtToProcessFormatSpecification(destination, specification, specification.forCrtText(length),
                                       length == 0 ? "" : text);
}

inline void outputCharacter(FormatBuffer& destination, const FormatSpecification& specification,
                            const FormatArgument& argument) {
    char bytes[OvPlatform::Utf8::MostBytes + 1] = {};
    std::size_t length = 1;
    const bool asksForWide = specification.conversion() == 'C' || specification.isLong();
    if (argument.character == FormatArgument::Character::Wide ||
        (asksForWide && argument.character != FormatArgument::Character::Narrow)) {
        const auto unit = static_cast<wchar_t>(argument.integral & 0xFFFF);
        const wchar_t* at = &unit;
        length = OvPlatform::Utf8::Encode(OvPlatform::Utf8::Decode(at, &unit + 1), bytes);
    } else {
        bytes[0] = static_cast<char>(argument.integral);
    }
    if (specification.isPlain() || bytes[0] == '\0') {
        destination.append(bytes, length);
    } else {
        outputText(destination, specification, bytes, length);
    }
}

/// Everything that the specification's letter does not ask for in a way of its own comes out as operator<<
/// writes it.
inline void outputAsText(FormatBuffer& destination, FormatSpecification& specification,
                         const FormatArgument& argument) {
    switch (argument.kind) {
    case FormatArgument::Kind::Narrow:
        if (argument.pointer == nullptr) return outputText(destination, specification, "(null)", 6);
        return outputText(destination, specification, static_cast<const char*>(argument.pointer),
                          argument.length);
    case FormatArgument::Kind::Wide: {
        specification.convertWideCharFormatSpecifierCharacterToMultibyteSpecifier();
        if (argument.pointer == nullptr) return outputText(destination, specification, "(null)", 6);
        const auto* const text = static_cast<const wchar_t*>(argument.pointer);
        if (specification.isPlain()) return CPStringUtils::narrowAndAppend(destination, text);
        FormatBuffer narrowed;
        // A unit gives at least one byte, so that no more units than bytes are wanted.
        const auto wanted = static_cast<std::size_t>(specification.precision());
        CPStringUtils::narrowAndAppend(
            narrowed, text, specification.precision() < 0 ? std::wcslen(text) : wcsnlen(text, wanted));
        return outputText(destination, specification, narrowed.text(), narrowed.used());
    }
    case FormatArgument::Kind::Integral:
    case FormatArgument::Kind::Floating:
    case FormatArgument::Kind::Pointer:
    case FormatArgument::Kind::Streamed:
        break;
    }
    if (argument.character != FormatArgument::Character::None)
        return outputCharacter(destination, specification, argument);

    FormatBuffer aside;
    FormatBuffer& target = specification.isPlain() ? destination : aside;
    if (argument.kind == FormatArgument::Kind::Integral) {
        appendDecimal(target, argument.integral, argument.isSigned);
    } else {
        TemporaryFormatStringBufferStream stream(target);
        if (argument.kind == FormatArgument::Kind::Floating)
            stream << argument.floating;
        else if (argument.kind == FormatArgument::Kind::Pointer)
            stream << argument.pointer;
        else
            argument.stream(stream, argument.pointer);
    }
    if (&target == &aside) outputText(destination, specification, aside.text(), aside.used());
}

inline void formatArgument(FormatBuffer& destination, FormatSpecification& specification,
                           const FormatArgument& argument) {
    const bool isIntegral = argument.kind == FormatArgument::Kind::Integral;
    const char letter = specification.conversion();
    if (specification.isIntegral()) {
        if (!isIntegral) {
            const OperationScope operation("InternalOrvelCP::formatArgument");
            ThrowFailure<CPExceptionInvalidArgument>([letter] {
                return std::string(
                           "Non-integral value supplied as integral argument to format string character: ") +
                       letter;
            });
        }
        outputRequestedIntegralFormatArgument(destination, specification, argument);
    } else if (specification.isCharacter() && isIntegral) {
        outputCharacter(destination, specification, argument);
    } else if (specification.isFloating() &&
               (isIntegral || argument.kind == FormatArgument::Kind::Floating)) {
        const double fromIntegral = argument.isSigned
                                        ? static_cast<double>(static_cast<std::int64_t>(argument.integral))
                                        : static_cast<double>(argument.integral);
        outputFloating(destination, specification, isIntegral ? fromIntegral : argument.floating);
    } else if (letter == 'p' && argument.kind != FormatArgument::Kind::Streamed) {
        const void* const address =
            isIntegral ? reinterpret_cast<const void*>(static_cast<std::uintptr_t>(argument.integral))
                       : argument.pointer;
        useCrtToProcessFormatSpecification(destination, specification, specification.forCrt("p"), address);
    } else {
        outputAsText(destination, specification, argument);
    }
}

inline void formatArguments(FormatBuffer& destination, const char* const format,
                            std::span<const FormatArgument> arguments) {
    if (format == nullptr) {
        const OperationScope operation("InternalOrvelCP::formatWorkerMayThrow");
        ThrowFailure<CPExceptionInvalidArgument>(
            [] { return "Invalid format string: a null format string was supplied."; });
    }
    const char* literal = format;
    std::size_t next = 0;
    for (const char* at = std::strchr(format, '%'); at != nullptr; at = std::strchr(literal, '%')) {
        if (at[1] == '%') {
            destination.append(literal, static_cast<std::size_t>(at + 1 - literal));
            literal = at + 2;
            continue;
        }
        destination.append(literal, static_cast<std::size_t>(at - literal));
        FormatSpecification specification;
        literal = specification.parseAfterFirstPercentCharacter(at + 1);
        if (next == arguments.size()) {
            const OperationScope operation("InternalOrvelCP::formatWorkerMayThrow");
            ThrowFailure<CPExceptionInvalidArgument>([at] {
                return std::string("Invalid format string: missing arguments. There's no argument "
                                   "corresponding to the current format specifier, ") +
                       at;
            });
        }
        if (specification.containsAsterisk()) refuseAsterisk();
        formatArgument(destination, specification, arguments[next++]);
    }
    destination.append(literal, std::strlen(literal));
    if (next != arguments.size()) {
        const OperationScope operation("InternalOrvelCP::formatWorkerMayThrow");
        ThrowFailure<CPExceptionTooManyArguments>([format] {
            return std::string("Extra arguments provided to formatWorkerMayThrow(). There's no format "
                               "specifier corresponding to this argument in the original format string: ") +
                   format;
        });
    }
}

/// Formats into the destination, behind what stands there. Throws CPExceptionInvalidArgument for a mistake in
/// the format, a missing argument or one of the wrong kind, CPExceptionTooManyArguments for one too many, and
/// std::bad_alloc. What was formatted before the failure stays in the destination.
template <typename... Arguments>
void formatWorkerMayThrow(FormatBuffer& destination, const char* format, const Arguments&... arguments) {
    if constexpr (sizeof...(Arguments) == 0) {
        formatArguments(destination, format, {});
    } else {
        const FormatArgument list[] = {makeFormatArgument(arguments)...};
        formatArguments(destination, format, list);
    }
}

/// Tells the reporter of last resort about the exception that is being handled.
OV_UTILITIES_API void reportFailureOfSafeFormatWorker(const char* format) noexcept;

/// As formatWorkerMayThrow, but a failure ends in one report, never in an exception, so that a bad message
/// format cannot stop a job. The thread's last error is afterwards what it was before.
template <typename... Arguments>
void safeFormatWorker(FormatBuffer& destination, const char* format, const Arguments&... arguments) noexcept {
    const LastErrorKeeper keeper;
    try {
        formatWorkerMayThrow(destination, format, arguments...);
    } catch (...) {
        reportFailureOfSafeFormatWorker(format);
    }
}

} // namespace InternalOrvelCP
