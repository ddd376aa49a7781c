#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"

#include <string>

/// Something that a report should carry while it is in force, such as the step that the thread is in.
class ReportContext {
public:
    virtual void describe(std::string& report) const = 0;

protected:
    ~ReportContext() = default;

private:
    friend class DebugUtilities;
    ReportContext* m_outer = nullptr;
};

class OV_UTILITIES_API DebugUtilities {
public:
    DebugUtilities() = delete;

    /// The reporter of last resort: writes the text, its caption and the contexts of the calling thread to
    /// the platform's debug output, or to the sink if one is set. Never throws; leaves the last error alone.
    static void reportErrorForLowLevelUtilities(const char* text, const char* caption) noexcept;
    static void reportErrorForLowLevelUtilities(const std::string& text, const std::string& caption) noexcept;

    using ReportSink = void (*)(const char* text, const char* caption) noexcept;
    /// Gives back the sink that stood there; null means the debug output. Process-wide.
    static ReportSink setReportSink(ReportSink sink) noexcept;

    /// Puts a context on the calling thread, and takes it off there. It must not move meanwhile.
    static void pushReportContext(ReportContext& context) noexcept;
    static void popReportContext(const ReportContext& context) noexcept;
};
