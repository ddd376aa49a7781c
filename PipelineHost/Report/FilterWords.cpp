#include "Report/FilterWords.h"

#include <LowLevelFacilities/Failures/DebugUtilities.h>

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>
#include <string_view>

namespace OvPipeline {

namespace {

// Of the reports that are kept; those of other things have other captions.
constexpr std::string_view exceptionCaption = "Caught exception";
constexpr std::string_view warningCaption = "Warning";
constexpr std::string_view configurationCaption = "Error Parsing XML Configuration Data";

constexpr std::size_t mostHeard = 10;

std::mutex hearing; // for what follows
int listeners = 0;
std::vector<std::string> heard;
std::atomic<DebugUtilities::ReportSink> before{nullptr};

std::string& FirstReport() {
    static thread_local std::string report;
    return report;
}

void PassOn(const char* text, const char* caption) noexcept {
    if (const DebugUtilities::ReportSink sink = before) return sink(text, caption);
    OutputDebugStringA(caption);
    OutputDebugStringA(": ");
    OutputDebugStringA(text);
    OutputDebugStringA("\n");
}

void DropPrefix(std::string_view& text, std::string_view prefix) {
    while (text.starts_with(prefix))
        text.remove_prefix(prefix.size());
}

// A report reads: who caught it, what was thrown, where it was caught, and what the thread was doing, each on
// lines of its own. What was thrown is "type: words [last error 0] at file:1 (operation)" where it is of the
// library, else "std::exception: words".
std::string_view Thrown(std::string_view report) {
    const std::size_t caught = report.find("\ncaught at ");
    if (caught == std::string_view::npos) return report.substr(0, report.find('\n'));
    const std::size_t first = report.find('\n');
    return first == caught ? report.substr(0, first) : report.substr(first + 1, caught - first - 1);
}

std::string WordsOf(std::string_view report) {
    std::string_view words = Thrown(report);
    const std::size_t end = words.rfind(" [last error ");
    const std::string_view place = end == std::string_view::npos ? std::string_view() : words.substr(end);
    words.remove_suffix(place.size());
    for (const char* type : {"std::exception: ", "CPException: ", "CPComException: "})
        DropPrefix(words, type);
    // Where nothing else was said, the words are the operation that failed.
    const std::string text(words);
    return place.find("(" + text + ")") == std::string_view::npos ? text : "in " + text;
}

// What the thread was doing stands behind it.
std::string FirstLine(const char* text) { return std::string(text, std::strcspn(text, "\n")); }

void Keep(std::string words) {
    const std::lock_guard lock(hearing);
    if (heard.size() < mostHeard && std::ranges::find(heard, words) == heard.end())
        heard.push_back(std::move(words));
}

void Hear(const char* text, const char* caption) noexcept {
    try {
        if (exceptionCaption == caption) {
            if (FirstReport().empty()) FirstReport() = text;
            Keep("a filter went on without something: " + WordsOf(text));
        } else if (warningCaption == caption) {
            Keep(FirstLine(text));
        } else if (configurationCaption == caption) {
            Keep(
                "the administrator's configuration is not read to its end (ov-pipeline policy says where): " +
                FirstLine(text));
        }
    } catch (...) {
        // No room for it: the result has to do.
    }
    PassOn(text, caption);
}

} // namespace

FilterWords::FilterWords() {
    const std::lock_guard lock(hearing);
    if (listeners++ != 0) return;
    heard.clear();
    before = DebugUtilities::setReportSink(&Hear);
}

FilterWords::~FilterWords() {
    const std::lock_guard lock(hearing);
    if (--listeners == 0) DebugUtilities::setReportSink(before);
}

std::string FilterWords::First() { return WordsOf(FirstReport()); }

void FilterWords::Forget() noexcept { FirstReport().clear(); }

void FilterWords::ForgetAll() noexcept {
    const std::lock_guard lock(hearing);
    heard.clear();
}

std::vector<std::string> FilterWords::Heard() const {
    const std::lock_guard lock(hearing);
    return heard;
}

} // namespace OvPipeline
