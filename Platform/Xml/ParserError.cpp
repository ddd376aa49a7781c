#include "Xml/ParserError.h"

#include <algorithm>

namespace OvPlatform {

/// Namespace names are compared as texts; whether they are proper URIs does not matter.
bool ParserError::Matters(const xmlError& error) noexcept {
    return error.level >= XML_ERR_ERROR && error.code != XML_WAR_NS_URI &&
           error.code != XML_WAR_NS_URI_RELATIVE;
}

std::string ParserError::Reason(const xmlError* error) {
    std::string reason =
        error != nullptr && error->message != nullptr ? error->message : "The text is not well-formed";
    reason.erase(reason.find_last_not_of(" \r\n") + 1);
    return reason;
}

std::string ParserError::FirstLine(const xmlError* error) {
    std::string reason = Reason(error);
    reason.erase(std::min(reason.find('\n'), reason.size()));
    reason.erase(reason.find_last_not_of(' ') + 1);
    return reason;
}

} // namespace OvPlatform
