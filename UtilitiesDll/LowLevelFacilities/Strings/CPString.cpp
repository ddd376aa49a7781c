#include "LowLevelFacilities/Strings/CPString.h"

#include "LowLevelFacilities/Strings/CPStringUtils.h"
#include "LowLevelFacilities/Strings/WhiteSpace.h"

#include <utf8coder.h>

#include <algorithm>
#include <ostream>

namespace {

std::string_view viewOf(const char* text) noexcept {
    return text == nullptr ? std::string_view{} : std::string_view{text};
}

/// The byte offset of a code point, or std::string_view::npos if the text has fewer code points.
std::size_t offsetOf(std::string_view text, unsigned int codePoint) noexcept {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (; codePoint != 0 && at != end; --codePoint)
        OvPlatform::Utf8::Decode(at, end);
    return codePoint == 0 ? static_cast<std::size_t>(at - text.data()) : std::string_view::npos;
}

unsigned int countCodePoints(std::string_view text) noexcept {
    unsigned int count = 0;
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at != end; ++count)
        OvPlatform::Utf8::Decode(at, end);
    return count;
}

SizeCodePoints32 findFrom(std::string_view text, std::string_view what, SizeCodePoints32 start) noexcept {
    const std::size_t from = offsetOf(text, start.value());
    const std::size_t found = from == std::string_view::npos ? from : text.find(what, from);
    if (found == std::string_view::npos) return CPString::npos;
    return SizeCodePoints32{countCodePoints(text.substr(0, found))};
}

} // namespace

CPString::CPString(const char* utf8) : m_bytes(viewOf(utf8)) {}

CPString::CPString(const wchar_t* utf16) : m_bytes(CPStringUtils::narrowToStdString(utf16)) {}

CPString::CPString(std::string&& utf8) noexcept : m_bytes(std::move(utf8)) {}

CPString::CPString(SizeRawBytes32 count, char fill) : m_bytes(count.value(), fill) {}

CPString::CPString(std::size_t count, char fill) : m_bytes(count, fill) {}

CPString& CPString::operator=(const char* utf8) {
    // The pointer may lie in this very string; assign() allows that.
    m_bytes.assign(viewOf(utf8));
    return *this;
}

CPString& CPString::operator=(const wchar_t* utf16) {
    m_bytes = CPStringUtils::narrowToStdString(utf16);
    return *this;
}

CPString& CPString::operator+=(const CPString& tail) {
    m_bytes += tail.m_bytes;
    return *this;
}

CPString& CPString::operator+=(const char* tail) {
    m_bytes += viewOf(tail);
    return *this;
}

bool CPString::isEmptyOrOnlyWhitespace() const noexcept {
    const char* const end = m_bytes.data() + m_bytes.size();
    for (const char* at = m_bytes.data(); at != end;) {
        if (!WhiteSpace::isWhiteSpace(OvPlatform::Utf8::Decode(at, end))) return false;
    }
    return true;
}

SizeCodePoints32 CPString::find(const CPString& text) const noexcept {
    return findFrom(m_bytes, text.m_bytes, SizeCodePoints32{0});
}

SizeCodePoints32 CPString::find(const char* text) const noexcept {
    return findFrom(m_bytes, viewOf(text), SizeCodePoints32{0});
}

SizeCodePoints32 CPString::find(const char* text, SizeCodePoints32 start) const noexcept {
    return findFrom(m_bytes, viewOf(text), start);
}

CPString CPString::substring(SizeCodePoints32 start, SizeCodePoints32 count) const {
    const std::size_t from = offsetOf(m_bytes, start.value());
    if (from == std::string::npos) return {};
    const std::string_view rest = view().substr(from);
    return CPString{std::string{rest.substr(0, offsetOf(rest, count.value()))}};
}

bool CPString::startsWith(char character) const noexcept { return m_bytes.starts_with(character); }

void CPString::replaceAll(const char* what, const char* with) {
    const std::string_view old = viewOf(what);
    const std::string_view replacement = viewOf(with);
    if (old.empty()) return;
    std::string result;
    std::size_t from = 0;
    for (std::size_t at = 0; (at = m_bytes.find(old, from)) != std::string::npos; from = at + old.size()) {
        result.append(m_bytes, from, at - from).append(replacement);
    }
    if (from == 0) return;
    m_bytes = std::move(result.append(m_bytes, from, std::string::npos));
}

int CPString::compare(const CPString& other) const noexcept { return m_bytes.compare(other.m_bytes); }

int CPString::compare(const char* other) const noexcept { return view().compare(viewOf(other)); }

std::uint64_t CPString::hash() const noexcept {
    // FNV-1a, 64 bits: the same in every process and on every machine.
    std::uint64_t value = 0xCBF29CE484222325u;
    for (const char byte : m_bytes)
        value = (value ^ static_cast<unsigned char>(byte)) * 0x100000001B3u;
    return value;
}

const unsigned char* CPString::utf8RawBytes() const noexcept {
    return reinterpret_cast<const unsigned char*>(m_bytes.data());
}

SizeRawBytes32 CPString::sizeOfUtf8Bytes() const noexcept {
    return SizeRawBytes32{static_cast<unsigned int>(m_bytes.size())};
}

SizeCodePoints32 CPString::sizeInCodePoints() const noexcept {
    return SizeCodePoints32{countCodePoints(m_bytes)};
}

unsigned char* CPString::utf8RawBytesPointerForOverwriting() noexcept {
    return reinterpret_cast<unsigned char*>(m_bytes.data());
}

void CPString::toLowerAscii() noexcept {
    for (char& byte : m_bytes) {
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte + ('a' - 'A'));
    }
}

std::ostream& operator<<(std::ostream& stream, const CPString& text) {
    return stream.write(text.utf8Bytes(), static_cast<std::streamsize>(text.view().size()));
}
