#pragma once

// The walk over what counts in a configuration: elements, and text that should not be there. Comments,
// processing instructions and blanks are passed over.

#include "ComSupport/ThrowHresult.h"

#include <Xml/XmlDomNode.h>

#include <utility>

namespace ConfigurationElements {

inline bool Counts(const XmlDomNode& node) {
    DOMNodeType type = NODE_INVALID;
    ThrowIfFailed(node.GetInterface()->get_nodeType(&type));
    if (type == NODE_COMMENT || type == NODE_PROCESSING_INSTRUCTION) return false;
    return type != NODE_TEXT || !node.GetTextValue().IsBlank();
}

inline XmlDomNode::Pointer ThisOrNext(XmlDomNode::Pointer node) {
    while (node && !Counts(*node))
        node = node->GetNextSibling();
    return node;
}

inline XmlDomNode::Pointer First(const XmlDomNode& parent) { return ThisOrNext(parent.GetFirstChild()); }
inline XmlDomNode::Pointer Next(const XmlDomNode& node) { return ThisOrNext(node.GetNextSibling()); }

/// Elements that a configuration may hold and that say nothing of features.
inline bool IsPassedOver(const CXString& name) { return name == L"ModelName" || name == L"UID"; }

} // namespace ConfigurationElements
