#include "Commands/InputBytes.h"

#include "Common/HostError.h"

#include <filesystem>
#include <fstream>

namespace OvPipeline {

namespace {

constexpr std::uintmax_t largestFile = 64u << 20; // as in a queue folder

} // namespace

std::string ReadInputBytes(const JobFile& file) {
    std::error_code failure;
    const auto status = std::filesystem::status(file.path, failure);
    if (!std::filesystem::exists(status))
        throw InputError(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), file.name, "there is no such file");
    const auto size = std::filesystem::file_size(file.path, failure);
    if (failure || !std::filesystem::is_regular_file(status) || size > largestFile)
        throw InputError(E_INVALIDARG, file.name, "this is no file of up to 64 MiB");
    std::ifstream stream(file.path, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(size)) && size != 0)
        throw InputError(HRESULT_FROM_WIN32(ERROR_READ_FAULT), file.name, "the file cannot be read");
    return bytes;
}

} // namespace OvPipeline
