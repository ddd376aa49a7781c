#pragma once

#include "Com/PlatformExport.h"

#include <libxml/xmlerror.h>

#include <string>

namespace OvPlatform {

/// What libxml2 reports.
class OV_PLATFORM_API ParserError {
public:
    /// Whether it ends the parse.
    static bool Matters(const xmlError& error) noexcept;

    /// Its words, without the line break at their end. Null, or one without words, is a text that is not
    /// well-formed.
    static std::string Reason(const xmlError* error);

    /// The same as far as they fit one line: the bytes that are at fault may stand on a second.
    static std::string FirstLine(const xmlError* error);
};

} // namespace OvPlatform
