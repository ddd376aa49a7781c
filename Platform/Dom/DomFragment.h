#pragma once

#include "Dom/DomNode.h"

namespace OvPlatform {

class DomFragment final : public DomNode<IXMLDOMDocumentFragment> {
public:
    DomFragment(DomTree& tree, xmlNode* fragment) noexcept : DomNode(tree, fragment) {}
};

} // namespace OvPlatform
