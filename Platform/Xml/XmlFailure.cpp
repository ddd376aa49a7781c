#include "Xml/XmlFailure.h"

#include <libxml/xmlerror.h>

#include <algorithm>
#include <array>

namespace OvPlatform {

namespace {

struct Row {
    int parserError;
    HRESULT code;
};

constexpr std::array<Row, 44> rows = {{
    {XML_ERR_DOCUMENT_EMPTY, XML_E_MISSINGROOT},
    {XML_ERR_DOCUMENT_END, XmlCode(0xE555)},
    {XML_ERR_INVALID_HEX_CHARREF, XmlCode(0xE51D)},
    {XML_ERR_INVALID_DEC_CHARREF, XmlCode(0xE51C)},
    {XML_ERR_INVALID_CHARREF, XML_E_INVALID_UNICODE},
    {XML_ERR_INVALID_CHAR, XmlCode(0xE508)},
    {XML_ERR_CHARREF_AT_EOF, XmlCode(0xE559)},
    {XML_ERR_ENTITYREF_NO_NAME, XmlCode(0xE504)},
    {XML_ERR_ENTITYREF_SEMICOL_MISSING, XmlCode(0xE50D)},
    {XML_ERR_UNDECLARED_ENTITY, XML_E_UNDEFINED_REFERENCE},
    {XML_WAR_UNDECLARED_ENTITY, XML_E_UNDEFINED_REFERENCE},
    {XML_ERR_UNKNOWN_ENCODING, XML_E_INVALIDENCODING},
    {XML_ERR_UNSUPPORTED_ENCODING, XML_E_INVALIDENCODING},
    {XML_ERR_INVALID_ENCODING, XmlCode(0xE508)},
    {XML_ERR_ATTRIBUTE_NOT_STARTED, XmlCode(0xE502)},
    {XML_ERR_ATTRIBUTE_NOT_FINISHED, XmlCode(0xE560)},
    {XML_ERR_ATTRIBUTE_WITHOUT_VALUE, XmlCode(0xE501)},
    {XML_ERR_ATTRIBUTE_REDEFINED, XmlCode(0xE554)},
    {XML_ERR_LT_IN_ATTRIBUTE, XmlCode(0xE506)},
    {XML_ERR_LITERAL_NOT_FINISHED, XmlCode(0xE560)},
    {XML_ERR_COMMENT_NOT_FINISHED, XmlCode(0xE561)},
    {XML_ERR_HYPHEN_IN_COMMENT, XmlCode(0xE503)},
    {XML_ERR_PI_NOT_STARTED, XmlCode(0xE519)},
    {XML_ERR_PI_NOT_FINISHED, XmlCode(0xE55D)},
    {XML_ERR_RESERVED_XML_NAME, XmlCode(0xE575)},
    {XML_ERR_XMLDECL_NOT_STARTED, XmlCode(0xE507)},
    {XML_ERR_XMLDECL_NOT_FINISHED, XmlCode(0xE507)},
    {XML_ERR_VERSION_MISSING, XmlCode(0xE569)},
    {XML_ERR_STANDALONE_VALUE, XmlCode(0xE577)},
    {XML_ERR_CDATA_NOT_FINISHED, XmlCode(0xE564)},
    {XML_ERR_MISPLACED_CDATA_END, XmlCode(0xE55C)},
    {XML_ERR_NAME_REQUIRED, XmlCode(0xE504)},
    {XML_ERR_SPACE_REQUIRED, XmlCode(0xE509)},
    {XML_ERR_EQUAL_REQUIRED, XmlCode(0xE501)},
    {XML_ERR_GT_REQUIRED, XmlCode(0xE50A)},
    {XML_ERR_LTSLASH_REQUIRED, XmlCode(0xE553)},
    {XML_ERR_TAG_NAME_MISMATCH, XmlCode(0xE56D)},
    {XML_ERR_TAG_NOT_FINISHED, XmlCode(0xE553)},
    {XML_ERR_EXTRA_CONTENT, XmlCode(0xE555)},
    {XML_ERR_NS_DECL_ERROR, XmlCode(0xE568)},
    {XML_NS_ERR_XML_NAMESPACE, XmlCode(0xE568)},
    {XML_NS_ERR_UNDEFINED_NAMESPACE, XmlCode(0xE01D)},
    {XML_NS_ERR_QNAME, XmlCode(0xE51B)},
    {XML_NS_ERR_ATTRIBUTE_REDEFINED, XmlCode(0xE554)},
}};

} // namespace

HRESULT CodeOfParserError(int parserError) noexcept {
    if (parserError == XML_ERR_NO_MEMORY) return E_OUTOFMEMORY;
    const auto* row =
        std::find_if(rows.begin(), rows.end(), [=](const Row& r) { return r.parserError == parserError; });
    return row != rows.end() ? row->code : XML_E_SYNTAX;
}

} // namespace OvPlatform
