#pragma once

#include <libxml/xmlerror.h>

#include <string>

namespace OvPlatform {

/// What the parsing library reports.
class ParserError {
public:
    /// Whether it ends the parse.
    static bool Matters(const xmlError& error) noexcept;
    static std::string Reason(const xmlError& error);
};

} // namespace OvPlatform
