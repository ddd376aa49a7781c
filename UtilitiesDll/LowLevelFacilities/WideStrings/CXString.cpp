#include "LowLevelFacilities/WideStrings/CXString.h"

#include "LowLevelFacilities/Strings/Base64.h"
#include "LowLevelFacilities/Strings/WhiteSpace.h"

#include <windows.h>
#include <utf8coder.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <ostream>

namespace {

std::wstring_view viewOf(const wchar_t* text) noexcept {
    return text == nullptr ? std::wstring_view{} : std::wstring_view{text};
}

std::size_t atLeastZero(int count) noexcept { return count < 0 ? 0 : static_cast<std::size_t>(count); }

int positionOrMinusOne(std::size_t position) noexcept {
    return position == std::wstring::npos ? -1 : static_cast<int>(position);
}

bool isBlankUnit(wchar_t unit) noexcept { return WhiteSpace::isWhiteSpace(static_cast<char32_t>(unit)); }

int sign(int value) noexcept { return (value > 0) - (value < 0); }

} // namespace

CXString::CXString(const wchar_t* text) : m_text(viewOf(text)) {}

CXString::CXString(const char* utf8)
    : m_text(CPStringUtils::widenTo_wstring(utf8, utf8 == nullptr ? 0 : std::string_view{utf8}.size())) {}

CXString::CXString(const wchar_t* text, int length)
    : m_text(text == nullptr ? std::wstring_view{} : std::wstring_view{text, atLeastZero(length)}) {}

CXString::CXString(std::wstring&& text) noexcept : m_text(std::move(text)) {}

CXString::CXString(const CPString& text) : m_text(CPStringUtils::widenTo_wstring(text)) {}

CXString& CXString::operator=(const wchar_t* text) {
    // The pointer may lie in this very string; assign() allows that.
    m_text.assign(viewOf(text));
    return *this;
}

CXString& CXString::operator=(const char* utf8) { return *this = CXString(utf8); }

CXString& CXString::operator+=(const CXString& tail) {
    m_text += tail.m_text;
    return *this;
}

CXString& CXString::operator+=(const wchar_t* tail) {
    m_text += viewOf(tail);
    return *this;
}

CXString& CXString::operator+=(wchar_t tail) {
    m_text += tail;
    return *this;
}

CXString& CXString::operator+=(std::wstring_view tail) {
    m_text += tail;
    return *this;
}

bool CXString::IsBlank() const noexcept { return std::all_of(m_text.begin(), m_text.end(), isBlankUnit); }

int CXString::Find(wchar_t unit, int start) const noexcept {
    return start < 0 ? -1 : positionOrMinusOne(m_text.find(unit, atLeastZero(start)));
}

int CXString::Find(const wchar_t* text, int start) const noexcept {
    return start < 0 ? -1 : positionOrMinusOne(m_text.find(viewOf(text), atLeastZero(start)));
}

int CXString::ReverseFind(wchar_t unit) const noexcept { return positionOrMinusOne(m_text.rfind(unit)); }

int CXString::Compare(const wchar_t* other) const noexcept { return sign(m_text.compare(viewOf(other))); }

int CXString::CompareNoCase(const wchar_t* other) const {
    CXString left(*this);
    CXString right(other);
    return sign(left.MakeLower().m_text.compare(right.MakeLower().m_text));
}

CXString CXString::Left(int count) const { return Mid(0, count); }

CXString CXString::Right(int count) const {
    const std::size_t kept = std::min(atLeastZero(count), m_text.size());
    return CXString(m_text.substr(m_text.size() - kept));
}

CXString CXString::Mid(int start) const { return Mid(start, INT_MAX); }

CXString CXString::Mid(int start, int count) const {
    return CXString(m_text.substr(std::min(atLeastZero(start), m_text.size()), atLeastZero(count)));
}

CXString CXString::SpanExcluding(const wchar_t* units) const {
    return CXString(m_text.substr(0, m_text.find_first_of(viewOf(units))));
}

int CXString::Delete(int start, int count) {
    const std::size_t from = atLeastZero(start);
    if (from < m_text.size()) m_text.erase(from, atLeastZero(count));
    return GetLength();
}

int CXString::Remove(wchar_t unit) { return static_cast<int>(std::erase(m_text, unit)); }

int CXString::Replace(const wchar_t* what, const wchar_t* with) {
    const std::wstring_view old = viewOf(what);
    const std::wstring_view replacement = viewOf(with);
    if (old.empty()) return 0;
    std::wstring result;
    int count = 0;
    std::size_t from = 0;
    for (std::size_t at = 0; (at = m_text.find(old, from)) != std::wstring::npos; from = at + old.size()) {
        result.append(m_text, from, at - from).append(replacement);
        ++count;
    }
    if (count != 0) m_text = std::move(result.append(m_text, from, std::wstring::npos));
    return count;
}

CXString& CXString::MakeLower() {
    if (!m_text.empty()) CharLowerBuffW(m_text.data(), static_cast<DWORD>(m_text.size()));
    return *this;
}

CXString& CXString::Trim() { return TrimRight().TrimLeft(); }

CXString& CXString::TrimLeft() {
    m_text.erase(m_text.begin(), std::find_if_not(m_text.begin(), m_text.end(), isBlankUnit));
    return *this;
}

CXString& CXString::TrimRight() {
    m_text.erase(std::find_if_not(m_text.rbegin(), m_text.rend(), isBlankUnit).base(), m_text.end());
    return *this;
}

wchar_t* CXString::GetBuffer(int minLength) {
    if (atLeastZero(minLength) > m_text.size()) m_text.resize(atLeastZero(minLength));
    return m_text.data();
}

wchar_t* CXString::GetBufferSetLength(int length) {
    m_text.resize(atLeastZero(length));
    return m_text.data();
}

void CXString::ReleaseBuffer() noexcept { m_text.resize(viewOf(m_text.c_str()).size()); }

int CXString::GetAsInt() const noexcept {
    auto at = std::find_if_not(m_text.begin(), m_text.end(), isBlankUnit);
    const bool negative = at != m_text.end() && *at == L'-';
    if (at != m_text.end() && (*at == L'-' || *at == L'+')) ++at;
    std::int64_t value = 0;
    for (; at != m_text.end() && *at >= L'0' && *at <= L'9' && value <= INT_MAX; ++at) {
        value = value * 10 + (*at - L'0');
    }
    return static_cast<int>(std::clamp<std::int64_t>(negative ? -value : value, INT_MIN, INT_MAX));
}

std::vector<char> CXString::GetAsUtf8() const {
    const std::string narrow = CPStringUtils::narrowToStdString(m_text.data(), m_text.size());
    return {narrow.c_str(), narrow.c_str() + narrow.size() + 1};
}

CXString CXString::Base64EncodeUnicodeString() const {
    std::vector<unsigned char> bytes;
    bytes.reserve(2 * m_text.size());
    for (const wchar_t unit : m_text) {
        bytes.push_back(static_cast<unsigned char>(unit & 0xFF));
        bytes.push_back(static_cast<unsigned char>((unit >> 8) & 0xFF));
    }
    std::wstring text(Base64::encodedLength(bytes.size()), L'\0');
    Base64::encode(bytes.data(), bytes.size(), text.data());
    return CXString(std::move(text));
}

CXString CXString::Base64DecodeAsUnicodeString() const {
    std::vector<unsigned char> bytes;
    if (!Base64::decode(m_text.data(), m_text.size(), bytes) || bytes.size() % 2 != 0) return {};
    std::wstring text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        text += static_cast<wchar_t>(bytes[i] | (bytes[i + 1] << 8));
    }
    return CXString(std::move(text));
}

std::vector<CXString> CXString::Tokenize(wchar_t separator) const {
    std::vector<CXString> pieces;
    if (m_text.empty()) return pieces;
    std::size_t from = 0;
    for (std::size_t at = 0; (at = m_text.find(separator, from)) != std::wstring::npos; from = at + 1) {
        pieces.emplace_back(m_text.substr(from, at - from));
    }
    pieces.emplace_back(m_text.substr(from));
    return pieces;
}

void CXString::AssignFormatted(InternalOrvelCP::FormatBuffer& formatted) {
    const char* text = formatted.text();
    const char* const end = text + formatted.used();
    std::size_t units = 0;
    wchar_t pair[2];
    for (const char* at = text; at != end;)
        units += OvPlatform::Utf8::Encode(OvPlatform::Utf8::Decode(at, end), pair);
    // Made aside, so that the result costs one allocation of its own size.
    std::wstring result(units, L'\0');
    wchar_t* to = result.data();
    while (text != end)
        to += OvPlatform::Utf8::Encode(OvPlatform::Utf8::Decode(text, end), to);
    m_text = std::move(result);
}

std::ostream& operator<<(std::ostream& stream, const CXString& text) {
    const std::string narrow = CPStringUtils::narrowToStdString(text.View().data(), text.View().size());
    return stream.write(narrow.data(), static_cast<std::streamsize>(narrow.size()));
}
