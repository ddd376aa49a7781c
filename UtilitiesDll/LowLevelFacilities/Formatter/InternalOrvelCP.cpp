#include "LowLevelFacilities/Formatter/InternalOrvelCP.h"

namespace InternalOrvelCP {

namespace {

void describeCurrentException(std::string& type, std::string& message) {
    try {
        throw;
    } catch (const CPException& failure) {
        type = failure.getExceptionType();
        message = failure.getExceptionMessage();
    } catch (const std::bad_alloc&) {
        message = "bad allocation";
    } catch (const std::exception& failure) {
        message = failure.what() == nullptr ? "Unknown exception" : failure.what();
    } catch (...) {
        // The defaults say all that is known.
    }
}

} // namespace

void reportFailureOfSafeFormatWorker(const char* format) noexcept {
    constexpr const char* caption = "SafeFormatWorker() Error";
    try {
        std::string type = "<unknown>";
        std::string message = "<none>";
        describeCurrentException(type, message);
        const std::string issue =
            format == nullptr
                ? std::string(": A null format string was supplied!\n\n")
                : std::string(": Issue with arguments or this format string: '") + format + "'.\n\n";
        DebugUtilities::reportErrorForLowLevelUtilities("Caught " + type + issue + message,
                                                        std::string(caption));
    } catch (...) {
        DebugUtilities::reportErrorForLowLevelUtilities("Out of memory while reporting a formatting failure.",
                                                        caption);
    }
}

} // namespace InternalOrvelCP
