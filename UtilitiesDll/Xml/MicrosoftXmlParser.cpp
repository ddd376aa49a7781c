#include "Xml/MicrosoftXmlParser.h"

#include "LowLevelFacilities/Formatter/CPFormat.h"
#include "LowLevelFacilities/Strings/CPStringUtils.h"
#include "SystemServices/WindowsDesktopUtilities.h"
#include "Xml/XmlText.h"

#include <objbase.h>

#include <string_view>

namespace {

constexpr std::string_view utf8Declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

CComPtr<IXMLDOMDocument2> createDocument(bool preserveWhiteSpace) {
    const OperationScope operation("MicrosoftXmlParser::MicrosoftXmlParser");
    CComPtr<IXMLDOMDocument2> document;
    ThrowIfFailed(CoCreateInstance(__uuidof(DOMDocument60), nullptr, CLSCTX_INPROC_SERVER,
                                   __uuidof(IXMLDOMDocument2), reinterpret_cast<void**>(&document)));
    ThrowIfFailed(document->put_async(VARIANT_FALSE));
    ThrowIfFailed(document->put_validateOnParse(VARIANT_FALSE));
    ThrowIfFailed(document->put_resolveExternals(VARIANT_FALSE));
    ThrowIfFailed(document->put_preserveWhiteSpace(preserveWhiteSpace ? VARIANT_TRUE : VARIANT_FALSE));
    ThrowIfFailed(document->setProperty(XmlText::toBstr(L"ProhibitDTD"), CComVariant(true)));
    return document;
}

/// The text behind the XML declaration and the line break after it.
std::wstring_view withoutDeclaration(std::wstring_view xml) noexcept {
    constexpr std::wstring_view opening = L"<?xml";
    constexpr std::wstring_view closing = L"?>";
    if (!xml.starts_with(opening) || xml.size() == opening.size()) return xml;
    // Another instruction's name may begin like this, as in <?xml-stylesheet ...?>.
    if (std::wstring_view(L" \t\r\n?").find(xml[opening.size()]) == std::wstring_view::npos) return xml;
    const std::size_t end = xml.find(closing);
    if (end == std::wstring_view::npos) return xml;
    xml.remove_prefix(end + closing.size());
    xml.remove_prefix(std::min(xml.find_first_not_of(L"\r\n"), xml.size()));
    return xml;
}

bool hasOnlyElements(const XmlDomNode& element) {
    bool hasElement = false;
    for (auto child = element.GetFirstChild(); child; child = child->GetNextSibling()) {
        if (!child->IsElement()) return false;
        hasElement = true;
    }
    return hasElement;
}

/// Puts line breaks and indentation around the children of an element that has nothing but elements in it.
void indentChildren(const XmlDomDocument& document, XmlDomNode& element, int depth) {
    constexpr int blanksPerLevel = 2;
    if (!hasOnlyElements(element)) return;
    const auto lineBreak = [&](int level) {
        CXString text(L"\n");
        text += CXString(std::wstring(static_cast<std::size_t>(level * blanksPerLevel), L' '));
        return document.CreateTextNode(text);
    };
    for (auto child = element.GetFirstChild(); child;) {
        indentChildren(document, *child, depth + 1);
        ThrowIfFailed(element.GetInterface()->insertBefore(lineBreak(depth + 1)->GetInterface(),
                                                           CComVariant(child->GetInterface()), nullptr));
        child = child->GetNextSibling();
    }
    element.AppendChild(*lineBreak(depth));
}

/// A copy of the document, indented.
CComPtr<IXMLDOMNode> indentedCopy(const XmlDomDocument& document) {
    CComPtr<IXMLDOMNode> copy;
    ThrowIfFailed(document.GetInterface()->cloneNode(VARIANT_TRUE, &copy));
    CComPtr<IXMLDOMDocument2> interfaceOfCopy;
    ThrowIfFailed(
        copy->QueryInterface(__uuidof(IXMLDOMDocument2), reinterpret_cast<void**>(&interfaceOfCopy)));
    const XmlDomDocument documentCopy(interfaceOfCopy);
    if (const XmlDomNode::Pointer root = documentCopy.GetDocumentElement())
        indentChildren(documentCopy, *root, 0);
    return copy;
}

} // namespace

MicrosoftXmlParser::MicrosoftXmlParser(const CXString& name, bool preserveWhiteSpace)
    : m_name(name), m_document(createDocument(preserveWhiteSpace)) {}

MicrosoftXmlParser::~MicrosoftXmlParser() = default;

void MicrosoftXmlParser::parse(const CPString& xml) { parse(CXString(xml)); }

void MicrosoftXmlParser::parse(const CXString& xml) {
    const OperationScope operation("MicrosoftXmlParser::parse");
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    const HRESULT result = m_document.GetInterface()->loadXML(XmlText::toBstr(xml), &isLoaded);
    CheckLoaded(result, isLoaded);
}

void MicrosoftXmlParser::parse(const unsigned char* bytes, std::size_t length) {
    const OperationScope operation("MicrosoftXmlParser::parse");
    CComPtr<IStream> stream;
    ThrowIfFailed(WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(&stream, bytes, length));
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    const CComVariant source(static_cast<IUnknown*>(stream));
    const HRESULT result = m_document.GetInterface()->load(source, &isLoaded);
    CheckLoaded(result, isLoaded);
}

void MicrosoftXmlParser::parseThisFile(const CXString& path) {
    const OperationScope operation("MicrosoftXmlParser::parseThisFile");
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    const HRESULT result = m_document.GetInterface()->load(XmlText::toVariant(path), &isLoaded);
    CheckLoaded(result, isLoaded);
}

void MicrosoftXmlParser::convertToXmlStream(XmlOutputCallback& output, bool withDeclaration) const {
    const OperationScope operation("MicrosoftXmlParser::convertToXmlStream");
    CComPtr<IXMLDOMNode> node(m_document.GetInterface());
    if (output.getEnhanceXmlLegibility() == XmlOutputCallback::EnhanceXmlLegibility)
        node = indentedCopy(m_document);
    CComBSTR xml;
    ThrowIfFailed(node->get_xml(&xml));
    const std::wstring_view content = withoutDeclaration(XmlText::viewOf(xml));
    const std::string utf8 = CPStringUtils::narrowToStdString(content.data(), content.size());
    if (withDeclaration) output.write(utf8Declaration.data(), utf8Declaration.size());
    output.write(utf8.data(), utf8.size());
}

void MicrosoftXmlParser::SaveXmlToFile(const CXString& path) const {
    const OperationScope operation("MicrosoftXmlParser::SaveXmlToFile");
    ThrowIfFailed(m_document.GetInterface()->save(XmlText::toVariant(path)));
}

void MicrosoftXmlParser::CheckLoaded(HRESULT result, VARIANT_BOOL isLoaded) const {
    if (SUCCEEDED(result) && isLoaded == VARIANT_TRUE) return;
    CComPtr<IXMLDOMParseError> error;
    LONG code = 0;
    LONG line = 0;
    LONG position = 0;
    CComBSTR reason;
    if (SUCCEEDED(m_document.GetInterface()->get_parseError(&error)) && error != nullptr) {
        error->get_errorCode(&code);
        error->get_reason(&reason);
        error->get_line(&line);
        error->get_linepos(&position);
    }
    const HRESULT failure = FAILED(code) ? static_cast<HRESULT>(code) : FAILED(result) ? result : E_FAIL;
    ThrowComException(failure, FormatStdString("%s: %s (line %d, position %d)", m_name,
                                               XmlText::toCXString(reason).TrimRight(), line, position));
}
