#include "Xml/XmlDomDocument.h"

#include "Xml/XmlText.h"

namespace {

template <typename Node>
XmlDomNode::Pointer wrap(const CComPtr<Node>& node) {
    return node == nullptr ? XmlDomNode::Pointer() : XmlDomNode::Pointer(new XmlDomNode(node));
}

} // namespace

XmlDomDocument::XmlDomDocument(IXMLDOMDocument2* document) : m_document(document) {}

XmlDomNode::Pointer XmlDomDocument::GetDocumentElement() const {
    const OperationScope operation("XmlDomDocument::GetDocumentElement");
    CComPtr<IXMLDOMElement> element;
    ThrowIfFailed(m_document->get_documentElement(&element));
    return wrap(element);
}

XmlDomNode::Pointer XmlDomDocument::CreateElement(const CXString& name) const {
    const OperationScope operation("XmlDomDocument::CreateElement");
    CComPtr<IXMLDOMElement> element;
    ThrowIfFailed(m_document->createElement(XmlText::toBstr(name), &element));
    return wrap(element);
}

XmlDomNode::Pointer XmlDomDocument::CreateTextNode(const CXString& text) const {
    const OperationScope operation("XmlDomDocument::CreateTextNode");
    CComPtr<IXMLDOMText> node;
    ThrowIfFailed(m_document->createTextNode(XmlText::toBstr(text), &node));
    return wrap(node);
}

XmlDomNode::Pointer XmlDomDocument::CreateCDataSection(const CXString& text) const {
    const OperationScope operation("XmlDomDocument::CreateCDataSection");
    CComPtr<IXMLDOMCDATASection> section;
    ThrowIfFailed(m_document->createCDATASection(XmlText::toBstr(text), &section));
    return wrap(section);
}
