#pragma once

#include <windows.h>

#include <string>

namespace OvPlatform {

/// Why a text did not become a document. With code S_OK there is no failure.
struct XmlFailure {
    HRESULT code = S_OK;
    std::string reason;
    /// The line of the text, as far as it is not too long.
    std::string source;
    std::string url;
    /// From 1; 0 where there is no place to point at.
    LONG line = 0;
    LONG column = 0;
    /// In bytes of UTF-8.
    LONG position = 0;
};

// Result codes of the published parser, as far as they are told apart here.
constexpr HRESULT XmlCode(unsigned long code) noexcept { return static_cast<HRESULT>(0xC00C0000UL | code); }
constexpr HRESULT XML_E_PARSEERRORBASE = XmlCode(0xE000);
constexpr HRESULT XML_E_INVALIDATROOTLEVEL = XmlCode(0xE556);
constexpr HRESULT XML_E_MISSINGROOT = XmlCode(0xE558);
constexpr HRESULT XML_E_INVALIDENCODING = XmlCode(0xE56E);
constexpr HRESULT XML_E_INVALIDSWITCH = XmlCode(0xE56F);
constexpr HRESULT XML_E_INVALID_UNICODE = XmlCode(0xE51E);
constexpr HRESULT XML_E_DTD_PROHIBITED = XmlCode(0xE584);
constexpr HRESULT XML_E_MAX_ELEMENT_DEPTH = XmlCode(0xE586);
constexpr HRESULT XML_E_MAX_SIZE = XmlCode(0xE587);
constexpr HRESULT XML_E_UNDEFINED_REFERENCE = XmlCode(0xE002);
constexpr HRESULT XML_E_SYNTAX = XmlCode(0xE512);

/// What the parsing library's error number is among the codes of the published parser.
HRESULT CodeOfParserError(int parserError) noexcept;

} // namespace OvPlatform
