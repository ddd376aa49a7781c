#include "LowLevelFacilities/Failures/CPException.h"

#include "LowLevelFacilities/Failures/DebugUtilities.h"
#include "LowLevelFacilities/Failures/LastErrorKeeper.h"

#include <windows.h>

#include <atomic>
#include <new>

namespace {

constexpr const char* reportCaption = "Caught exception";

std::atomic<CPException::DebugQuestion> debugQuestion{nullptr};

std::string place(const DebugContextReference& context) {
    const DebugContextCopy copy(context);
    return copy.file() + ":" + std::to_string(copy.line()) + " (" + copy.function() + ")";
}

std::string describe(const std::exception& caught) {
    if (const auto* known = dynamic_cast<const CPException*>(&caught)) return known->getLogString();
    if (dynamic_cast<const std::bad_alloc*>(&caught) != nullptr) return "std::bad_alloc: bad allocation";
    const char* const text = caught.what();
    return std::string("std::exception: ") + (text == nullptr ? "Unknown exception" : text);
}

/// `build` gives the text; if even that fails, the bare message goes out.
template <typename Build>
void report(const char* message, Build build) noexcept {
    const LastErrorKeeper keeper;
    try {
        DebugUtilities::reportErrorForLowLevelUtilities(build(), std::string(reportCaption));
    } catch (...) {
        DebugUtilities::reportErrorForLowLevelUtilities(message, reportCaption);
    }
}

} // namespace

CPException::CPException(std::string&& message, unsigned int lastError, DebugContextCopy context)
    : m_message(std::move(message)), m_lastError(lastError), m_context(std::move(context)) {}

CPException::~CPException() = default;

std::string CPException::getLogString() const {
    return getExceptionType() + ": " + m_message + " [last error " + std::to_string(m_lastError) + "] at " +
           m_context.file() + ":" + std::to_string(m_context.line()) + " (" + m_context.function() + ")";
}

bool CPException::allowForExceptionDebug(const char* exceptionTypeName, const std::string& message,
                                         unsigned int lastError,
                                         const DebugContextReference& context) noexcept {
    const DebugQuestion question = debugQuestion.load();
    if (question == nullptr) return false;
    const LastErrorKeeper keeper;
    return question(exceptionTypeName, message.c_str(), lastError, context);
}

CPException::DebugQuestion CPException::setDebugQuestion(DebugQuestion question) noexcept {
    return debugQuestion.exchange(question);
}

void CPException::SafeDebugBreak() noexcept {
    if (IsDebuggerPresent()) DebugBreak();
}

void CPException::reportAndProcessCaughtException(const std::exception& caught,
                                                  DebugContextReference&& context,
                                                  const char* message) noexcept {
    report(message, [&] {
        return std::string(message == nullptr ? "" : message) + "\n" + describe(caught) + "\ncaught at " +
               place(context);
    });
}

void CPException::reportAndProcessUnknownCaughtException(DebugContextReference&& context,
                                                         const char* message) noexcept {
    report(message,
           [&] { return std::string(message == nullptr ? "" : message) + "\ncaught at " + place(context); });
}
