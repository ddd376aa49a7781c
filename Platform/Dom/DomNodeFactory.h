#pragma once

#include "Dom/DomTree.h"

#include <msxml6.h>

#include <string_view>

namespace OvPlatform {

/// Which class stands for which kind of node, and what such nodes may hold.
class DomNodeFactory {
public:
    /// A new object for a node that has none, counted once.
    static IXMLDOMNode* Make(DomTree& tree, xmlNode* node);

    /// Whether a text, comment, CDATA section or processing instruction may hold `content`; `name` is the
    /// instruction's target.
    static bool MayHold(xmlElementType type, std::string_view name, std::string_view content);
};

} // namespace OvPlatform
