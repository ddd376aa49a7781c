#pragma once

#include <regex>
#include <string>
#include <string_view>

/// The grammar of the PJL that devices are sent: lines, commands, attributes.
namespace PjlGrammar {

/// An attribute and its value. A named value bears the attribute's name, but for the start sheet's.
inline bool IsAttribute(const std::string& text) {
    static const std::regex attribute(
        "OID_ATT_([A-Z_]+) (?:OID_VAL_([A-Z0-9_]+)|\"[^\"]*\"|TRUE|FALSE|[0-9]);?");
    std::smatch found;
    if (!std::regex_match(text, found, attribute)) return false;
    if (!found[2].matched) return true;
    const std::string name = found[1] == "START_SHEET" ? "JOB_SHEET" : found[1].str();
    return found[2].str().starts_with(name + "_");
}

/// A line without its end.
inline bool IsLine(const std::string& line) {
    static const std::regex commands(
        "\x1B%-12345X@PJL JOB"
        "|@PJL JOB NAME = \"[^\"]*\""
        "|@PJL SET [A-Z]+ ?= ?(?:[A-Z0-9]+|-?[0-9]+|\"[^\"]*\")"
        "|@PJL X(?:SECURE|PROOF|SAVED|PERSONALSAVED)JOB"
        "|@PJL X(?:JOBPASSWORD = [0-9]*|JAUSERNAME = \"[^\"]*\")"
        "|@PJL COMMENT (?:OVLbegin|OVLend|NORMAL PRINT|\"NUP = [0-9]+\"|OrvelVersion: .+|OvlPrintingApp: .+)"
        "|@ PJL COMMENT OVLSTAPLE=(?:PORTRAIT|LANDSCAPE)");
    static const std::string comment = "@PJL COMMENT ";
    return std::regex_match(line, commands) ||
           (line.starts_with(comment) && IsAttribute(line.substr(comment.size())));
}

/// The first line that is none; empty where all are, and each has its end.
inline std::string FaultOf(std::string_view pjl) {
    while (!pjl.empty()) {
        const std::size_t end = pjl.find('\n');
        if (end == std::string_view::npos) return "no end of line: " + std::string(pjl);
        std::string line(pjl.substr(0, end));
        if (line.ends_with('\r')) line.pop_back();
        if (!IsLine(line)) return line;
        pjl.remove_prefix(end + 1);
    }
    return {};
}

} // namespace PjlGrammar
