#pragma once

#include "PrintTicket/ValidatedTicket.h"

#include <libxml/tree.h>

namespace OvPlatform {

/// Sets the PageImageableSize property of a capabilities document to the paper of the settings. The
/// document's own figures stand for its paper, the one whose size they name; the margins that they imply hold
/// for every paper, but for borderless printing, which has none. Does nothing where the document or the
/// settings do not say enough.
void SetImageableSize(xmlNode* capabilitiesRoot, const CapabilitiesIndex& capabilities,
                      const ValidatedTicket& settings);

} // namespace OvPlatform
