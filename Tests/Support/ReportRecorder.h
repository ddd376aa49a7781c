#pragma once

#include <LowLevelFacilities/Failures/DebugUtilities.h>

#include <string>
#include <vector>

/// Takes the reports of its lifetime, in place of the debug output.
class ReportRecorder {
public:
    struct Report {
        std::string text;
        std::string caption;
    };

    ReportRecorder() {
        reports().clear();
        m_previous = DebugUtilities::setReportSink([](const char* text, const char* caption) noexcept {
            reports().push_back({text, caption});
        });
    }
    ~ReportRecorder() { DebugUtilities::setReportSink(m_previous); }
    ReportRecorder(const ReportRecorder&) = delete;
    ReportRecorder& operator=(const ReportRecorder&) = delete;

    static std::vector<Report>& reports() {
        static std::vector<Report> all;
        return all;
    }

private:
    DebugUtilities::ReportSink m_previous;
};
