#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace OvPlatform {

/// A file that cannot be written. what() is one line that names the file.
class OV_PLATFORM_API FileError : public std::runtime_error {
public:
    /// number: of errno. problem: in words, where the system's own say too little.
    FileError(int number, const std::filesystem::path& file, const std::string& problem = {});

    HRESULT Result() const { return m_result; }
    const std::string& File() const { return m_file; }
    /// what() without the file.
    const std::string& Problem() const { return m_problem; }

private:
    FileError(HRESULT result, std::string file, std::string problem);

    HRESULT m_result;
    std::string m_file;
    std::string m_problem;
};

} // namespace OvPlatform
