#include "Xml/XmlDomNode.h"

#include "Xml/XmlText.h"

#include <algorithm>

namespace {

using NodePtr = CComPtr<IXMLDOMNode>;

XmlDomNode::Pointer wrap(const NodePtr& node) {
    return node == nullptr ? XmlDomNode::Pointer() : XmlDomNode::Pointer(new XmlDomNode(node));
}

NodePtr firstChildOf(IXMLDOMNode* node) {
    NodePtr child;
    ThrowIfFailed(node->get_firstChild(&child));
    return child;
}

NodePtr nextSiblingOf(IXMLDOMNode* node) {
    NodePtr sibling;
    ThrowIfFailed(node->get_nextSibling(&sibling));
    return sibling;
}

bool isElement(IXMLDOMNode* node) {
    DOMNodeType type = NODE_INVALID;
    ThrowIfFailed(node->get_nodeType(&type));
    return type == NODE_ELEMENT;
}

bool hasName(IXMLDOMNode* node, const CXString& name) {
    CComBSTR nodeName;
    ThrowIfFailed(node->get_nodeName(&nodeName));
    return XmlText::viewOf(nodeName) == name.View();
}

/// Null if the node is no element, and so has no attributes.
CComPtr<IXMLDOMElement> asElement(IXMLDOMNode* node) {
    CComPtr<IXMLDOMElement> element;
    if (isElement(node))
        ThrowIfFailed(node->QueryInterface(__uuidof(IXMLDOMElement), reinterpret_cast<void**>(&element)));
    return element;
}

/// Other names may be refused, or mean several.
bool isPlainName(const CXString& name) {
    const auto isLetter = [](wchar_t unit) {
        return (unit >= L'a' && unit <= L'z') || (unit >= L'A' && unit <= L'Z');
    };
    return !name.IsEmpty() && isLetter(name.View().front()) &&
           std::ranges::all_of(name.View(), [&](wchar_t unit) {
               return isLetter(unit) || (unit >= L'0' && unit <= L'9') || unit == L'-';
           });
}

NodePtr firstByName(IXMLDOMElement* element, const CXString& name) {
    CComPtr<IXMLDOMNodeList> found;
    ThrowIfFailed(element->getElementsByTagName(XmlText::toBstr(name), &found));
    NodePtr first;
    ThrowIfFailed(found->nextNode(&first));
    return first;
}

CComPtr<IXMLDOMElement> requireElement(IXMLDOMNode* node) {
    CComPtr<IXMLDOMElement> element = asElement(node);
    if (element == nullptr) ThrowComException(E_INVALIDARG, "the node is not an element.");
    return element;
}

} // namespace

XmlDomNode::XmlDomNode(IXMLDOMNode* node) : m_node(node) {}

CXString XmlDomNode::GetNodeName() const {
    const OperationScope operation("XmlDomNode::GetNodeName");
    CComBSTR name;
    ThrowIfFailed(m_node->get_nodeName(&name));
    return XmlText::toCXString(name);
}

bool XmlDomNode::IsElement() const {
    const OperationScope operation("XmlDomNode::IsElement");
    return isElement(m_node);
}

CXString XmlDomNode::GetTextValue() const {
    const OperationScope operation("XmlDomNode::GetTextValue");
    CComBSTR text;
    ThrowIfFailed(m_node->get_text(&text));
    return XmlText::toCXString(text);
}

void XmlDomNode::SetTextValue(const CXString& text) {
    const OperationScope operation("XmlDomNode::SetTextValue");
    ThrowIfFailed(m_node->put_text(XmlText::toBstr(text)));
}

bool XmlDomNode::GetAttribute(const CXString& name, CXString& value) const {
    const OperationScope operation("XmlDomNode::GetAttribute");
    value.Empty();
    const CComPtr<IXMLDOMElement> element = asElement(m_node);
    if (element == nullptr) return false;
    CComVariant found;
    const HRESULT result = element->getAttribute(XmlText::toBstr(name), &found);
    ThrowIfFailed(result);
    if (result != S_OK || found.vt != VT_BSTR) return false;
    value = XmlText::toCXString(found.bstrVal);
    return true;
}

void XmlDomNode::SetAttribute(const CXString& name, const CXString& value) {
    const OperationScope operation("XmlDomNode::SetAttribute");
    ThrowIfFailed(requireElement(m_node)->setAttribute(XmlText::toBstr(name), XmlText::toVariant(value)));
}

void XmlDomNode::RemoveAttribute(const CXString& name) {
    const OperationScope operation("XmlDomNode::RemoveAttribute");
    ThrowIfFailed(requireElement(m_node)->removeAttribute(XmlText::toBstr(name)));
}

unsigned int XmlDomNode::GetChildCount() const {
    const OperationScope operation("XmlDomNode::GetChildCount");
    unsigned int count = 0;
    for (NodePtr child = firstChildOf(m_node); child != nullptr; child = nextSiblingOf(child))
        ++count;
    return count;
}

XmlDomNode::Pointer XmlDomNode::GetFirstChild() const {
    const OperationScope operation("XmlDomNode::GetFirstChild");
    return wrap(firstChildOf(m_node));
}

XmlDomNode::Pointer XmlDomNode::GetNextSibling() const {
    const OperationScope operation("XmlDomNode::GetNextSibling");
    return wrap(nextSiblingOf(m_node));
}

XmlDomNode::Pointer XmlDomNode::FindNamedChildElementNode(const CXString& name) const {
    return FindNamedChildElementNodeRecursive(name, 1);
}

XmlDomNode::Pointer XmlDomNode::FindNamedChildElementNodeRecursive(const CXString& name, int maxDepth) const {
    const OperationScope operation("XmlDomNode::FindNamedChildElementNodeRecursive");
    if (maxDepth <= 0 && isPlainName(name))
        if (const CComPtr<IXMLDOMElement> element = asElement(m_node))
            return wrap(firstByName(element, name));
    std::vector<NodePtr> path; // from a child of this node down to where the walk stands
    NodePtr node = firstChildOf(m_node);
    while (node != nullptr || !path.empty()) {
        if (node == nullptr) {
            node = nextSiblingOf(path.back());
            path.pop_back();
            continue;
        }
        const bool isInner = isElement(node);
        if (isInner && hasName(node, name)) return wrap(node);
        const bool mayGoDown = maxDepth <= 0 || path.size() + 1 < static_cast<std::size_t>(maxDepth);
        if (isInner && mayGoDown) {
            NodePtr child = firstChildOf(node);
            path.push_back(std::move(node));
            node = std::move(child);
        } else {
            node = nextSiblingOf(node);
        }
    }
    return nullptr;
}

void XmlDomNode::AppendChild(const XmlDomNode& child) {
    const OperationScope operation("XmlDomNode::AppendChild");
    ThrowIfFailed(m_node->appendChild(child.m_node, nullptr));
}

void XmlDomNode::RemoveChild(const XmlDomNode& child) {
    const OperationScope operation("XmlDomNode::RemoveChild");
    ThrowIfFailed(m_node->removeChild(child.m_node, nullptr));
}
