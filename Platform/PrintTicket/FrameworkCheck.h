#pragma once

#include "Com/PlatformExport.h"
#include "PrintTicket/NamespaceScope.h"

#include <libxml/tree.h>

#include <cstddef>
#include <string>

namespace OvPlatform {

/// The rules of the Print Schema framework that hold for every ticket and every capabilities document,
/// whatever the printer: which element may stand where, which must be named, how deep they may nest. Elements
/// and attributes of other namespaces are nobody's business here.
class OV_PLATFORM_API FrameworkCheck {
public:
    enum class Kind { Ticket, Capabilities };

    /// Levels of framework elements, the root counted.
    static constexpr int maxDepth = 10;

    /// Throws SchemaFormatError, which names the element by its path and line.
    static void Check(const xmlDoc* document, Kind kind);

private:
    explicit FrameworkCheck(const xmlNode* root) : m_scope(root) {}

    void CheckRoot(const xmlNode* root, Kind kind) const;
    void CheckElement(const xmlNode* element, std::size_t row, int depth) const;
    void CheckName(const xmlNode* element, bool required) const;
    void CheckValue(const xmlNode* element) const;

    NamespaceScope m_scope;
};

} // namespace OvPlatform
