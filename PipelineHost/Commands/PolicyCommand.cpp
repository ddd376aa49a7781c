#include "Commands/Commands.h"
#include "Commands/PolicyReport.h"
#include "Commands/QueueConfiguration.h"
#include "Common/HostError.h"
#include "Common/Text.h"

#include <ComSupport/MsSafeCoinit.h>

#include <filesystem>
#include <fstream>

namespace OvPipeline {

namespace {

constexpr std::uintmax_t largestFile = 64u << 20; // as in a queue folder

std::string ReadBytes(const std::string& file) {
    std::error_code failure;
    const auto status = std::filesystem::status(file, failure);
    if (!std::filesystem::exists(status))
        throw InputError(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), file, "there is no such file");
    const auto size = std::filesystem::file_size(file, failure);
    if (failure || !std::filesystem::is_regular_file(status) || size > largestFile)
        throw InputError(E_INVALIDARG, file, "this is no file of up to 64 MiB");
    std::ifstream stream(file, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    if (!stream.read(bytes.data(), static_cast<std::streamsize>(size)) && size != 0)
        throw InputError(HRESULT_FROM_WIN32(ERROR_READ_FAULT), file, "the file cannot be read");
    return bytes;
}

// UTF-8 with or without a mark, or UTF-16 with one.
CPString DecodeText(std::string bytes) {
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    const bool isLittle = bytes.starts_with("\xFF\xFE");
    if (!isLittle && !bytes.starts_with("\xFE\xFF"))
        return CPString(bytes.starts_with(utf8Mark) ? bytes.substr(utf8Mark.size()) : std::move(bytes));
    std::wstring units;
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        units += static_cast<wchar_t>(isLittle ? first | second << 8 : first << 8 | second);
    }
    return CPString(Utf8(units));
}

} // namespace

int PolicyCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const MsSafeCoInit apartment;
    const CPString xml =
        options.job.empty() ? ReadConfigurationText(*LoadQueue(options)) : DecodeText(ReadBytes(options.job));
    const PolicyReport report{XmlConfigurationReading(xml)};
    if (options.json)
        out.Json(report.AsJson());
    else
        out.Text(report.AsTable());
    const std::string fault = report.FaultLine();
    if (fault.empty()) return ExitOk;
    errors.Line(
        "ov-pipeline: " + (options.job.empty() ? std::string("the queue's configuration") : options.job) +
        ": " + fault);
    return ExitJobFailed;
}

} // namespace OvPipeline
