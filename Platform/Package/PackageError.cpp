#include "Package/PackageError.h"

namespace OvPlatform {

PackageError::PackageError(std::int32_t result, const std::string& subject, const std::string& problem)
    : std::runtime_error(subject + ": " + problem), m_result(result), m_subject(subject) {}

} // namespace OvPlatform
