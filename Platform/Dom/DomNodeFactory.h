#pragma once

#include "Dom/DomTree.h"

#include <msxml6.h>

#include <optional>
#include <string>
#include <string_view>

namespace OvPlatform {

/// Which class stands for which kind of node, and what such nodes may hold.
class DomNodeFactory {
public:
    /// A new object for a node that has none, counted once.
    static IXMLDOMNode* Make(DomTree& tree, xmlNode* node);

    /// What a text, comment, CDATA section or processing instruction holds when it is given `content`: the
    /// same, or what a reader would make of it. None where such a node cannot hold it. `name` is the
    /// instruction's target.
    static std::optional<std::string> Held(xmlElementType type, std::string_view name,
                                           std::string_view content);
};

} // namespace OvPlatform
