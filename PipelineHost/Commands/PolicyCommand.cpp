#include "Commands/Commands.h"
#include "Commands/InputBytes.h"
#include "Commands/PolicyReport.h"
#include "Commands/QueueConfiguration.h"
#include "Common/HostError.h"
#include "Common/Text.h"

#include <ComSupport/MsSafeCoinit.h>

#include <string_view>
#include <utility>

namespace OvPipeline {

namespace {

std::wstring Units(std::string_view bytes, bool isLittle) {
    std::wstring units;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        units += static_cast<wchar_t>(isLittle ? first | second << 8 : first << 8 | second);
    }
    return units;
}

// UTF-8 with or without a mark, or UTF-16 with one. Anything else would be read as other names.
CPString DecodeText(std::string_view bytes, const std::string& file) {
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    const bool isLittle = bytes.starts_with("\xFF\xFE");
    const bool isUtf16 = isLittle || bytes.starts_with("\xFE\xFF");
    if (isUtf16)
        bytes.remove_prefix(2);
    else if (bytes.starts_with(utf8Mark))
        bytes.remove_prefix(utf8Mark.size());
    const std::wstring units = isUtf16 ? Units(bytes, isLittle) : Wide(bytes);
    std::string text = Utf8(units);
    const bool isWhole = isUtf16 ? bytes.size() % 2 == 0 && Wide(text) == units : text == bytes;
    if (!isWhole)
        throw InputError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), file,
                         "this is no text in UTF-8, nor in UTF-16 with a byte order mark");
    return CPString(std::move(text));
}

} // namespace

int PolicyCommand(const CommandOptions& options, ShownOutput& out, ShownOutput& errors) {
    const MsSafeCoInit apartment;
    const CPString xml = options.job.name.empty() ? ReadConfigurationText(*LoadQueue(options))
                                                  : DecodeText(ReadInputBytes(options.job), options.job.name);
    const PolicyReport report{XmlConfigurationReading(xml)};
    if (options.json)
        out.Json(report.AsJson());
    else
        out.Text(report.AsTable(out.Width()));
    const std::string fault = report.FaultLine();
    if (fault.empty()) return ExitOk;
    errors.Line("ov-pipeline: " +
                (options.job.name.empty() ? std::string("the queue's configuration") : options.job.name) +
                ": " + fault);
    return ExitJobFailed;
}

} // namespace OvPipeline
