#include "Package/PackageError.h"

#include "System/FileError.h"

namespace OvPlatform {

PackageError::PackageError(HRESULT result, const std::string& subject, const std::string& problem)
    : std::runtime_error(subject + ": " + problem), m_result(result), m_subject(subject) {}

PackageError::PackageError(HRESULT result, const std::string& subject, int line, const std::string& problem)
    : std::runtime_error(subject + " line " + std::to_string(line) + ": " + problem), m_result(result),
      m_subject(subject) {}

PackageError::PackageError(const FileError& error)
    : PackageError(error.Result(), error.File(), error.Problem()) {}

} // namespace OvPlatform
