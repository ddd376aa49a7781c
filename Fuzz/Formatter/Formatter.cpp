// A format out of the input, with arguments of every kind whose number and order the input chooses. The
// formatter must refuse or format it, keep its buffer terminated, and agree with itself.

#include <LowLevelFacilities/Failures/CPException.h>
#include <LowLevelFacilities/Failures/DebugUtilities.h>
#include <LowLevelFacilities/Formatter/InternalOrvelCP.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

using InternalOrvelCP::FormatArgument;
using InternalOrvelCP::FormatBuffer;

void Require(bool condition) {
    if (!condition) std::abort();
}

struct Formatted {
    std::string text;
    bool isRefused;
};

Formatted FormatBehind(std::size_t alreadyUsed, const std::string& format,
                       const std::vector<FormatArgument>& arguments) {
    FormatBuffer buffer;
    const std::string head(alreadyUsed, 'h');
    buffer.append(head.data(), head.size());
    bool isRefused = false;
    try {
        InternalOrvelCP::formatArguments(buffer, format.c_str(), arguments);
    } catch (const CPException&) {
        isRefused = true;
    }
    Require(buffer.text()[buffer.used()] == '\0');
    Require(buffer.hasMovedOut() || buffer.used() <= 1022);
    std::string text = buffer.takeText();
    Require(text.compare(0, alreadyUsed, head) == 0);
    return {text.substr(alreadyUsed), isRefused};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 9) return 0;
    std::uint64_t number = 0;
    std::memcpy(&number, data, sizeof number);
    double real = 0;
    std::memcpy(&real, data, sizeof real);
    const std::size_t count = data[8] % 6;
    const std::string input(reinterpret_cast<const char*>(data) + 9, size - 9);
    const std::string format = input.substr(0, input.find('\n'));
    const std::string rest = input.substr(std::min(input.size(), format.size() + 1));
    const CXString wide(rest.c_str());
    // Of exactly its size, so that reading behind its end is seen.
    const std::vector<char> unterminated(rest.begin(), rest.end());

    const FormatArgument kinds[] = {
        InternalOrvelCP::makeFormatArgument(static_cast<int>(number)),
        InternalOrvelCP::makeFormatArgument(number),
        InternalOrvelCP::makeFormatArgument(static_cast<signed char>(number)),
        InternalOrvelCP::makeFormatArgument(static_cast<char>(number)),
        InternalOrvelCP::makeFormatArgument(static_cast<wchar_t>(number & 0xFFFF)),
        InternalOrvelCP::makeFormatArgument(real),
        InternalOrvelCP::makeFormatArgument(rest),
        InternalOrvelCP::makeFormatArgument(wide),
        InternalOrvelCP::makeFormatArgument(std::string_view(unterminated.data(), unterminated.size())),
        InternalOrvelCP::makeFormatArgument(static_cast<const void*>(nullptr)),
        InternalOrvelCP::makeFormatArgument(static_cast<const char*>(nullptr)),
    };
    std::vector<FormatArgument> arguments;
    for (std::size_t i = 0; i < count; ++i)
        arguments.push_back(kinds[(number >> (4 * i)) % std::size(kinds)]);

    // The text does not depend on how full the buffer was.
    const Formatted first = FormatBehind(0, format, arguments);
    for (const std::size_t used : {700u, 1000u, 1022u, 1023u}) {
        const Formatted again = FormatBehind(used, format, arguments);
        Require(again.isRefused == first.isRefused && again.text == first.text);
    }

    DebugUtilities::setReportSink([](const char*, const char*) noexcept {});
    FormatBuffer safe;
    InternalOrvelCP::safeFormatWorker(safe, format.c_str(), static_cast<int>(number), rest, wide);
    CXString wideFormat;
    wideFormat.Format(CXString(format.c_str()), wide, number);
    return 0;
}
