#include "Tracing/ExecutionContextEntry.h"

#include "LowLevelFacilities/Formatter/CPFormat.h"

ExecutionContextEntry::ExecutionContextEntry(unsigned int code, unsigned int number, const char* file,
                                             const char* function, int line, bool reportOnEntry,
                                             CPString&& detail)
    : m_code(code), m_number(number), m_file(file), m_function(function), m_line(line),
      m_reportOnEntry(reportOnEntry), m_detail(std::move(detail)) {}

void ExecutionContextEntry::describe(std::string& report) const {
    report += FormatStdString("in %s (%s:%d), code %u: %s", m_function, m_file, m_line, m_code, m_detail);
}
