#pragma once

#include "LowLevelFacilities/Failures/DebugUtilities.h"
#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/UtilitiesExport.h"

/// A step of the program that reports made within it are to name.
class OV_UTILITIES_API ExecutionContextEntry final : public ReportContext {
public:
    /// `file` and `function` must outlive the entry (literals do). With reportOnEntry the step is reported
    /// when it begins, too.
    ExecutionContextEntry(unsigned int code, unsigned int number, const char* file, const char* function,
                          int line, bool reportOnEntry, CPString&& detail);

    /// Appends one line: "in <function> (<file>:<line>), code <code>: <detail>".
    void describe(std::string& report) const override;
    [[nodiscard]] unsigned int code() const noexcept { return m_code; }
    [[nodiscard]] unsigned int number() const noexcept { return m_number; }
    [[nodiscard]] bool reportOnEntry() const noexcept { return m_reportOnEntry; }

private:
    unsigned int m_code;
    unsigned int m_number;
    const char* m_file;
    const char* m_function;
    int m_line;
    bool m_reportOnEntry;
    CPString m_detail;
};
