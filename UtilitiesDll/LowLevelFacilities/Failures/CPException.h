#pragma once

#include "LowLevelFacilities/Failures/DebugContext.h"
#include "LowLevelFacilities/UtilitiesExport.h"

#include <exception>
#include <string>

/// The base of all failures of this library: a message, the thread's last error at the moment of throwing,
/// and the place in the source.
class OV_UTILITIES_API CPException : public std::exception {
public:
    CPException(std::string&& message, unsigned int lastError, DebugContextCopy context);
    CPException(const CPException&) = default;
    CPException(CPException&&) = default;
    CPException& operator=(const CPException&) = default;
    CPException& operator=(CPException&&) = default;
    ~CPException() override;

    [[nodiscard]] const char* what() const noexcept override { return m_message.c_str(); }
    [[nodiscard]] const char* getExceptionMessage() const noexcept { return m_message.c_str(); }
    /// The name of the class.
    [[nodiscard]] virtual std::string getExceptionType() const { return "CPException"; }
    /// One line with type, message, last error and place.
    [[nodiscard]] virtual std::string getLogString() const;

    [[nodiscard]] unsigned int getLastError() const noexcept { return m_lastError; }
    [[nodiscard]] const DebugContextCopy& getDebugContext() const noexcept { return m_context; }

    /// Asked before each throw: says whether to stop in a debugger there. False unless the process has set a
    /// question of its own with setDebugQuestion.
    static bool allowForExceptionDebug(const char* exceptionTypeName, const std::string& message,
                                       unsigned int lastError, const DebugContextReference& context) noexcept;
    using DebugQuestion = bool (*)(const char* exceptionTypeName, const char* message, unsigned int lastError,
                                   const DebugContextReference& context) noexcept;
    /// Gives back the question that stood there; null asks nobody.
    static DebugQuestion setDebugQuestion(DebugQuestion question) noexcept;
    /// Breaks into a debugger if one is attached; does nothing otherwise.
    static void SafeDebugBreak() noexcept;

    /// Reports an exception that ends here, with the message of the place that caught it. Never throws, and
    /// leaves the last error alone.
    static void reportAndProcessCaughtException(const std::exception& caught, DebugContextReference&& context,
                                                const char* message) noexcept;
    static void reportAndProcessUnknownCaughtException(DebugContextReference&& context,
                                                       const char* message) noexcept;

private:
    std::string m_message;
    unsigned int m_lastError;
    DebugContextCopy m_context;
};
