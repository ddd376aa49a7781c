#pragma once

#include "Report/JsonText.h"

#include <JobContext/XpsFilterPrintTicket.h>

#include <string>
#include <vector>

namespace OvPipeline {

/// What a filter hears of the settings of a part, for people and for programs.
class SettingsReport {
public:
    struct Setting {
        const char* name;
        std::string value;
        const char* unit = ""; // of a number; empty for words
        bool isNumber = false;
        /// Who gave the value; "default" where nobody did, with the failure if there was one.
        std::string origin;
    };

    /// Asks the nine questions. Throws what damaged attribute bytes throw.
    explicit SettingsReport(XpsFilterPrintTicket& ticket);

    const std::vector<Setting>& Settings() const { return m_settings; }
    std::string AsTable(std::size_t width = 0) const;
    /// An object with "settings". A number stands with its unit.
    JsonText AsJson() const;

private:
    void AddOptions(XpsFilterPrintTicket& ticket);
    void AddScaling(const XpsFilterPrintTicket& ticket);
    void AddBooklet(const XpsFilterPrintTicket& ticket);
    void AddPagesPerSheet(const XpsFilterPrintTicket& ticket);
    void AddSizes(const XpsFilterPrintTicket& ticket);
    void AddWord(const char* name, std::string value, std::string origin);
    void AddNumber(const char* name, std::string value, const char* unit, std::string origin);

    std::vector<Setting> m_settings;
};

} // namespace OvPipeline
