#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"
#include "Xml/XmlDomNode.h"

#include <atlcomcli.h>
#include <msxml6.h>

/// A document of the platform's DOM. Failures are thrown as CPComException.
class OV_UTILITIES_API XmlDomDocument {
public:
    /// The document must not be null.
    explicit XmlDomDocument(IXMLDOMDocument2* document);

    [[nodiscard]] IXMLDOMDocument2* GetInterface() const noexcept { return m_document; }
    /// Empty if nothing has been parsed.
    [[nodiscard]] XmlDomNode::Pointer GetDocumentElement() const;
    /// New nodes, which stand nowhere until they are appended.
    [[nodiscard]] XmlDomNode::Pointer CreateElement(const CXString& name) const;
    [[nodiscard]] XmlDomNode::Pointer CreateTextNode(const CXString& text) const;
    [[nodiscard]] XmlDomNode::Pointer CreateCDataSection(const CXString& text) const;

private:
    CComPtr<IXMLDOMDocument2> m_document;
};
