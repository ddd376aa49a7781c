#pragma once

#include "LowLevelFacilities/Ownership/OvlUniquePtr.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <atlcomcli.h>
#include <msxml6.h>

/// A node of a parsed document, as a rule an element. Holds a reference to the platform's node, so the
/// document lives as long. Where an operation finds nothing, its result is empty; any failure of the
/// platform's DOM is thrown as CPComException.
class OV_UTILITIES_API XmlDomNode {
public:
    using Pointer = OvlUniquePtr<XmlDomNode>;

    /// The node must not be null.
    explicit XmlDomNode(IXMLDOMNode* node);

    [[nodiscard]] IXMLDOMNode* GetInterface() const noexcept { return m_node; }
    /// With its prefix, if it has one.
    [[nodiscard]] CXString GetNodeName() const;
    [[nodiscard]] bool IsElement() const;
    /// Of the node and all below it.
    [[nodiscard]] CXString GetTextValue() const;
    /// Replaces all children by the text.
    void SetTextValue(const CXString& text);

    /// False, with an empty value, if there is no such attribute.
    bool GetAttribute(const CXString& name, CXString& value) const;
    void SetAttribute(const CXString& name, const CXString& value);
    /// A missing attribute is no failure.
    void RemoveAttribute(const CXString& name);

    /// Children and siblings of every kind, text included.
    [[nodiscard]] unsigned int GetChildCount() const;
    [[nodiscard]] Pointer GetFirstChild() const;
    [[nodiscard]] Pointer GetNextSibling() const;
    /// The first element of that name, with its prefix, among the children.
    [[nodiscard]] Pointer FindNamedChildElementNode(const CXString& name) const;
    /// The first in document order among all descendants, or only those down to maxDepth levels below this
    /// node (1 are the children) if that is not 0.
    [[nodiscard]] Pointer FindNamedChildElementNodeRecursive(const CXString& name, int maxDepth) const;

    void AppendChild(const XmlDomNode& child);
    void RemoveChild(const XmlDomNode& child);

private:
    CComPtr<IXMLDOMNode> m_node;
};
