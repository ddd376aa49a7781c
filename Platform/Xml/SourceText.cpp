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
    return AttributeBound::PassesWhole(m_text) ||
           Refuse(failure, XML_E_MAX_SIZE, "Elements have more attributes and declarations than are allowed");
}

bool SourceText::CheckSize(std::string_view text, XmlFailure& failure) {
    return text.size() <= mostDocumentBytes ||
           Refuse(failure, XML_E_MAX_SIZE, "The text is longer than the document allows");
}

bool SourceText::FromBytes(std::string_view bytes, XmlFailure& failure) {
    if (!CheckSize(bytes, failure)) return false;
    const bool littleEndian = bytes.starts_with("\xFF\xFE");
    const bool marked = bytes.starts_with(utf8Mark);
    const bool wide = littleEndian || bytes.starts_with("\xFE\xFF");
    if (wide) {
        if (!FromUtf16Bytes(bytes.substr(2), !littleEndian, m_converted))
            return Refuse(failure, XML_E_INVALID_UNICODE,
                          "The bytes after the UTF-16 byte order mark are no UTF-16");
        bytes = m_converted;
        if (!CheckSize(bytes, failure)) return false;
    } else if (marked) {
        bytes.remove_prefix(utf8Mark.size());
    } else if (bytes.size() >= 2 && (bytes[0] == '\0' || bytes[1] == '\0')) {
        return Refuse(failure, XML_E_INVALIDATROOTLEVEL, "UTF-16 text must begin with a byte order mark");
    }
    m_declaration = XmlDeclaration::FromDocument(bytes);
    const std::string encoding = m_declaration ? m_declaration->encoding : std::string();
    const TextEncoding declared = ClassifyEncoding(encoding);
    const bool fits = encoding.empty() || (wide     ? declared == TextEncoding::Utf16
                                           : marked ? declared == TextEncoding::Utf8
                                                    : declared != TextEncoding::Utf16);
    if (!fits)
        return Refuse(failure, XML_E_INVALIDSWITCH,
                      "The text says that its encoding is " + encoding + ", but its bytes are in another");
    m_text = bytes;
    m_isUtf8 = wide || marked || declared == TextEncoding::Utf8;
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
