#pragma once

#include <windows.h>
#include <msxml6.h>

#include <string>

namespace OvPipeline {

/// A ticket in UTF-8 for eyes as well as for programs: one element a line. Throws HostError if it cannot be
/// read.
std::string IndentedTicket(IXMLDOMDocument2* document);

} // namespace OvPipeline
