#include "HtmlReport/JobOutline.h"

namespace OvPipeline {

namespace {

void AddName(std::string& names, const char* one, const char* several,
             const std::vector<std::uint64_t>& numbers) {
    if (numbers.empty()) return;
    names += (names.empty() ? "" : ", ") + std::string(numbers.size() == 1 ? one : several) + " " +
             RangesOf(numbers);
}

} // namespace

std::string OutlineLevel::Title() const {
    switch (kind) {
    case Kind::Job:
        return "Job";
    case Kind::Document:
        return "Document " + std::to_string(number);
    case Kind::Page:
        return "Page " + std::to_string(number);
    }
    return {};
}

std::string JobOutline::Names(const std::vector<std::size_t>& places) const {
    std::string names;
    std::vector<std::uint64_t> ofDocuments;
    std::vector<std::uint64_t> ofPages;
    for (const std::size_t place : places) {
        const OutlineLevel& level = levels[place];
        if (level.kind == OutlineLevel::Kind::Job)
            names = "the job";
        else if (level.kind == OutlineLevel::Kind::Document)
            ofDocuments.push_back(level.number);
        else
            ofPages.push_back(level.number);
    }
    AddName(names, "document", "documents", ofDocuments);
    AddName(names, "page", "pages", ofPages);
    return names;
}

std::string RangesOf(const std::vector<std::uint64_t>& numbers) {
    std::string ranges;
    for (std::size_t first = 0; first < numbers.size();) {
        std::size_t last = first;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1)
            ++last;
        ranges += (ranges.empty() ? "" : ",") + std::to_string(numbers[first]);
        if (last > first) ranges += "-" + std::to_string(numbers[last]);
        first = last + 1;
    }
    return ranges;
}

} // namespace OvPipeline
