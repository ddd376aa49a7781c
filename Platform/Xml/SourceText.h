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

    /// What bytes begin with.
    struct Mark {
        std::size_t length = 0;
        bool isUtf8 = false;
        bool isUtf16 = false;
        bool isBigEndian = false;
        bool isUnmarkedUtf16 = false;
    };
    static Mark MarkOf(std::string_view bytes) noexcept;
    /// Whether the declaration agrees with the mark; false with `failure`.
    static bool Fits(const Mark& mark, const std::optional<XmlDeclaration>& declaration, XmlFailure& failure);
    static bool IsUtf8(const Mark& mark, const std::optional<XmlDeclaration>& declaration);

    // Why texts are refused.
    static constexpr const char* tooManyAttributes =
        "Elements have more attributes and declarations than are allowed";
    static constexpr const char* unmarkedUtf16 = "UTF-16 text must begin with a byte order mark";

private:
    static bool CheckSize(std::string_view text, XmlFailure& failure);
    bool CheckAttributes(XmlFailure& failure) const;

    std::string m_converted;
    std::string_view m_text;
    std::optional<XmlDeclaration> m_declaration;
    bool m_isUtf8 = true;
};

} // namespace OvPlatform
