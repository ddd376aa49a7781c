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

std::string RunSummary::State() const {
    switch (exitCode) {
    case 0:
        return "done";
    case 3:
        return "refused";
    case 130:
        return "cancelled";
    default:
        return "failed";
    }
}

std::vector<std::string> RunSummary::Lines() const {
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
    row("tickets", Counted(merges, "merge") + " made, " + std::to_string(SavedMerges()) +
                       " saved by the cache; " + Counted(conflictsResolved, "conflict") + " resolved");
    row("bytes", ByteCount(bytesIn) + " in, " + ByteCount(bytesOut) + " out");
    row("time", Seconds(seconds) + (pagesRead > 0 ? ", " + Rate(pagesRead, seconds) : ""));
    return lines;
}

std::uint64_t RunSummary::SavedMerges() const { return ticketsAsked > merges ? ticketsAsked - merges : 0; }

JsonText RunSummary::AsJson() const {
    JsonText json;
    json.BeginObject().Key("job").Text(job).Key("state").Text(State()).Key("exitCode").Number(exitCode);
    const auto number = [&](const char* key, std::uint64_t value) {
        json.Key(key).Number(static_cast<long long>(value));
    };
    if (exitCode != 0) {
        json.Key("trouble").Text(trouble).EndObject();
        return json;
    }
    json.Key("output").Text(output).Key("queue").Text(queue).Key("filters").BeginArray();
    for (const std::string& filter : filters)
        json.Text(filter);
    json.EndArray().Key("package").Bool(isPackage);
    number("partsRead", partsRead);
    number("partsWritten", partsWritten);
    number("pagesRead", pagesRead);
    number("pagesWritten", pagesWritten);
    json.Key("leftOut").Text(leftOut.Text());
    number("merges", merges);
    number("mergesSaved", SavedMerges());
    number("conflictsResolved", conflictsResolved);
    number("bytesIn", bytesIn);
    number("bytesOut", bytesOut);
    json.Key("warnings").BeginArray();
    for (const std::string& warning : warnings)
        json.Text(warning);
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", seconds);
    json.EndArray().Key("seconds").Decimal(text).EndObject();
    return json;
}

} // namespace OvPipeline
