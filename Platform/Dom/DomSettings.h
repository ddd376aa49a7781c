#pragma once

#include "Dom/SelectionNamespaces.h"

namespace OvPlatform {

/// What a caller set on a document. It outlives the tree: loading replaces the tree only.
struct DomSettings {
    bool async = true;
    bool validateOnParse = true;
    bool resolveExternals = false;
    bool preserveWhiteSpace = false;
    /// Elements inside one another.
    LONG maxElementDepth = 256;
    /// In KB; 0 is without limit.
    LONG maxXmlSize = 0;
    SelectionNamespaces::Pointer namespaces = SelectionNamespaces::None();
};

} // namespace OvPlatform
