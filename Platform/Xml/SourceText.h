#pragma once

#include "Xml/XmlDeclaration.h"
#include "Xml/XmlFailure.h"

#include <optional>
#include <string>
#include <string_view>

namespace OvPlatform {

/// The text to be parsed, with what its bytes and its declaration say of its encoding.
class SourceText {
public:
    SourceText() = default;
    SourceText(const SourceText&) = delete;
    SourceText& operator=(const SourceText&) = delete;

    /// From bytes, by their byte order mark and their declaration. False with `failure` if the two
    /// contradict, the bytes are not what their mark says, or a bound is passed. They must outlive the text.
    bool FromBytes(std::string_view bytes, XmlFailure& failure);

    /// From text that already is UTF-8, whatever its declaration says. It must outlive this. False with
    /// `failure` if a bound is passed.
    bool FromText(std::string_view utf8, XmlFailure& failure);

    std::string_view Text() const noexcept { return m_text; }
    /// Otherwise the parser reads it in the declared encoding.
    bool IsUtf8() const noexcept { return m_isUtf8; }
    const std::optional<XmlDeclaration>& Declaration() const noexcept { return m_declaration; }

private:
    static bool CheckSize(std::string_view text, XmlFailure& failure);
    bool CheckAttributes(XmlFailure& failure) const;

    std::string m_converted;
    std::string_view m_text;
    std::optional<XmlDeclaration> m_declaration;
    bool m_isUtf8 = true;
};

} // namespace OvPlatform
