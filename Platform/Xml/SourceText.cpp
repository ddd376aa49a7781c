#include "Xml/SourceText.h"

#include "Xml/AttributeBound.h"
#include "Xml/DocumentBound.h"
#include "Xml/TextConversion.h"

namespace OvPlatform {

namespace {

constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";

bool Refuse(XmlFailure& failure, HRESULT code, std::string reason) {
    failure.code = code;
    failure.reason = std::move(reason);
    return false;
}

} // namespace

bool SourceText::CheckAttributes(XmlFailure& failure) const {
    return AttributeBound::PassesWhole(m_text) || Refuse(failure, XML_E_MAX_SIZE, tooManyAttributes);
}

bool SourceText::CheckSize(std::string_view text, XmlFailure& failure) {
    return text.size() <= mostDocumentBytes ||
           Refuse(failure, XML_E_MAX_SIZE, "The text is longer than the document allows");
}

SourceText::Mark SourceText::MarkOf(std::string_view bytes) noexcept {
    Mark mark;
    mark.isBigEndian = bytes.starts_with("\xFE\xFF");
    mark.isUtf16 = mark.isBigEndian || bytes.starts_with("\xFF\xFE");
    mark.isUtf8 = bytes.starts_with(utf8Mark);
    mark.length = mark.isUtf16 ? 2 : mark.isUtf8 ? utf8Mark.size() : 0;
    mark.isUnmarkedUtf16 = mark.length == 0 && bytes.size() >= 2 && (bytes[0] == '\0' || bytes[1] == '\0');
    return mark;
}

bool SourceText::Fits(const Mark& mark, const std::optional<XmlDeclaration>& declaration,
                      XmlFailure& failure) {
    const std::string encoding = declaration ? declaration->encoding : std::string();
    const TextEncoding declared = ClassifyEncoding(encoding);
    const bool fits = encoding.empty() || (mark.isUtf16  ? declared == TextEncoding::Utf16
                                           : mark.isUtf8 ? declared == TextEncoding::Utf8
                                                         : declared != TextEncoding::Utf16);
    return fits ||
           Refuse(failure, XML_E_INVALIDSWITCH,
                  "The text says that its encoding is " + encoding + ", but its bytes are in another");
}

bool SourceText::IsUtf8(const Mark& mark, const std::optional<XmlDeclaration>& declaration) {
    return mark.length != 0 ||
           ClassifyEncoding(declaration ? declaration->encoding : std::string()) == TextEncoding::Utf8;
}

bool SourceText::FromBytes(std::string_view bytes, XmlFailure& failure) {
    if (!CheckSize(bytes, failure)) return false;
    const Mark mark = MarkOf(bytes);
    if (mark.isUnmarkedUtf16) return Refuse(failure, XML_E_INVALIDATROOTLEVEL, unmarkedUtf16);
    bytes.remove_prefix(mark.length);
    if (mark.isUtf16) {
        if (!FromUtf16Bytes(bytes, mark.isBigEndian, m_converted))
            return Refuse(failure, XML_E_INVALID_UNICODE,
                          "The bytes after the UTF-16 byte order mark are no UTF-16");
        bytes = m_converted;
        if (!CheckSize(bytes, failure)) return false;
    }
    m_declaration = XmlDeclaration::FromDocument(bytes);
    if (!Fits(mark, m_declaration, failure)) return false;
    m_text = bytes;
    m_isUtf8 = IsUtf8(mark, m_declaration);
    return CheckAttributes(failure);
}

bool SourceText::FromText(std::string_view utf8, XmlFailure& failure) {
    if (!CheckSize(utf8, failure)) return false;
    if (utf8.starts_with(utf8Mark)) utf8.remove_prefix(utf8Mark.size());
    m_declaration = XmlDeclaration::FromDocument(utf8);
    m_text = utf8;
    m_isUtf8 = true;
    return CheckAttributes(failure);
}

} // namespace OvPlatform
