#pragma once

#include "Com/PlatformExport.h"

#include <stdexcept>
#include <string>

namespace OvPlatform {

/// A document that is not a Print Ticket or Print Capabilities document. what() is one line in UTF-8 that
/// says what is wrong and where.
class OV_PLATFORM_API SchemaFormatError : public std::runtime_error {
public:
    explicit SchemaFormatError(const std::string& problem) : std::runtime_error(problem) {}
};

} // namespace OvPlatform
