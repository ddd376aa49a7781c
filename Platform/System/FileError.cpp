#include "System/FileError.h"

#include <windows.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace OvPlatform {

namespace {

HRESULT ResultOf(int number) {
    switch (number) {
    case ENOENT:
    case ENOTDIR:
        return HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
    case EACCES:
    case EISDIR:
    case EPERM:
    case EROFS:
        return HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
    case ENOSPC:
    case EDQUOT:
        return HRESULT_FROM_WIN32(ERROR_DISK_FULL);
    default:
        return HRESULT_FROM_WIN32(ERROR_WRITE_FAULT);
    }
}

} // namespace

FileError::FileError(int number, const std::filesystem::path& file, const std::string& problem)
    : FileError(ResultOf(number), file.string(),
                problem.empty() ? "cannot be written: " + std::generic_category().message(number) : problem) {
}

FileError::FileError(HRESULT result, std::string file, std::string problem)
    : std::runtime_error(file + ": " + problem), m_result(result), m_file(std::move(file)),
      m_problem(std::move(problem)) {}

} // namespace OvPlatform
