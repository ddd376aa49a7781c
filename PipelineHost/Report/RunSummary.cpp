#include "Report/RunSummary.h"

#include "Common/Text.h"

#include <cstdio>

namespace OvPipeline {

namespace {

std::string Seconds(double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f s", seconds);
    return text;
}

std::string Rate(std::uint64_t pages, double seconds) {
    char text[32];
    std::snprintf(text, sizeof text, "%.0f", seconds > 0 ? static_cast<double>(pages) / seconds : 0);
    return std::string(text) + " pages/s";
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : " -> ") + name;
    return text.empty() ? "none: the job goes through as it is" : text;
}

} // namespace

std::vector<std::string> RunSummary::Lines() const {
    // A ticket that was taken and not merged came from the cache of merged ones.
    const std::uint64_t saved = ticketsAsked > merges ? ticketsAsked - merges : 0;
    std::vector<std::string> lines{job + " -> " + output};
    const auto row = [&](const char* name, const std::string& value) {
        char head[16];
        std::snprintf(head, sizeof head, "  %-10s", name);
        lines.push_back(head + value);
    };
    row("queue", queue);
    row("filters", Joined(filters));
    row("parts", std::to_string(partsRead) + " to the first filter" +
                     (isPackage ? ", " + std::to_string(partsWritten) + " written" : ""));
    row("pages", std::to_string(pagesRead) + " read" +
                     (isPackage ? ", " + std::to_string(pagesWritten) + " written" : ""));
    if (!leftOut.IsEmpty()) row("left out", leftOut.Text());
    row("tickets", Counted(merges, "merge") + " made, " + std::to_string(saved) + " saved by the cache; " +
                       Counted(conflictsResolved, "conflict") + " resolved");
    row("bytes", ByteCount(bytesIn) + " in, " + ByteCount(bytesOut) + " out");
    row("time", Seconds(seconds) + (pagesRead > 0 ? ", " + Rate(pagesRead, seconds) : ""));
    return lines;
}

} // namespace OvPipeline
