#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

#include <stdexcept>
#include <string>

namespace OvPlatform {

class FileError;

/// A package that cannot be read or written. what() is one line that names the part (or the file) and what is
/// wrong; Result() is the published code for it, OPC_E_... where there is one (msopc.h), as an HRESULT.
class OV_PLATFORM_API PackageError : public std::runtime_error {
public:
    PackageError(HRESULT result, const std::string& subject, const std::string& problem);
    /// In a line of the part.
    PackageError(HRESULT result, const std::string& subject, int line, const std::string& problem);
    explicit PackageError(const FileError& error);

    HRESULT Result() const { return m_result; }
    /// The part's name, or the path of the package where the trouble is not with one part. UTF-8.
    const std::string& Subject() const { return m_subject; }

private:
    HRESULT m_result;
    std::string m_subject;
};

} // namespace OvPlatform
