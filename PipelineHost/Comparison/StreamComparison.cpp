#include "Comparison/StreamComparison.h"

#include "Common/SecretSettings.h"
#include "Common/Text.h"
#include "Comparison/Alignment.h"

#include <algorithm>
#include <set>
#include <utility>

namespace OvPipeline {

namespace {

using Texts = std::vector<std::string>;
using Values = DeviceStream::Values;
using Page = DeviceStream::Page;

std::string Joined(const Texts& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}

// Those that the others lack; one that stands twice in both is in both twice.
Texts Missing(const Texts& texts, const Texts& others) {
    std::multiset<std::string_view> left(others.begin(), others.end());
    Texts missing;
    for (const std::string& text : texts)
        if (const auto same = left.find(text); same != left.end())
            left.erase(same);
        else
            missing.push_back(text);
    return missing;
}

void CompareTimes(const std::string& name, const Texts& a, const Texts& b, DifferenceReport& report) {
    const auto value = [](const Texts& times) {
        return times.empty() ? std::optional<std::string>() : Joined(times);
    };
    if (a != b) report.Time(name, value(a), value(b));
}

void CompareTexts(const std::string& name, const Texts& a, const Texts& b, DifferenceReport& report) {
    Texts left = Missing(a, b);
    Texts right = Missing(b, a);
    if (IsSecretCommand(name)) {
        std::ranges::fill(left, hiddenValue);
        std::ranges::fill(right, hiddenValue);
    }
    if (left.empty() && right.empty()) {
        if (a != b && !IsSecretCommand(name)) report.Changed("order of " + name, Joined(a), Joined(b));
        return;
    }
    const std::size_t changed = (std::min)(left.size(), right.size());
    for (std::size_t i = 0; i < changed; ++i)
        report.Changed(name, left[i], right[i]);
    for (std::size_t i = changed; i < left.size(); ++i)
        report.OnlyInA(name, left[i]);
    for (std::size_t i = changed; i < right.size(); ++i)
        report.OnlyInB(name, right[i]);
}

void CompareValues(const Values& a, const Values& b, DifferenceReport& report) {
    Values all = a;
    all.insert(b.begin(), b.end()); // the names of both
    const auto of = [](const Values& values, const std::string& name) {
        const auto found = values.find(name);
        return found == values.end() ? Texts() : found->second;
    };
    for (const auto& each : all) {
        const std::string& name = each.first;
        DeviceStream::IsTime(name) ? CompareTimes(name, of(a, name), of(b, name), report)
                                   : CompareTexts(name, of(a, name), of(b, name), report);
    }
}

void CompareCommands(const Texts& a, const Texts& b, DifferenceReport& report) {
    for (const auto& [left, right] : Align(a, b)) {
        if (!right)
            report.OnlyInA("command", a[*left]);
        else if (!left)
            report.OnlyInB("command", b[*right]);
        else if (a[*left] != b[*right])
            report.Changed("command", a[*left], b[*right]);
    }
}

std::string SizeOf(const Page& page) { return std::to_string(page.size) + " bytes"; }

void ComparePage(const Page& a, const Page& b, DifferenceReport& report) {
    CompareValues(a.device, b.device, report);
    if (a.digest != b.digest)
        report.Changed("content", SizeOf(a), a.size == b.size ? SizeOf(b) + ", others" : SizeOf(b));
    CompareTimes("created", a.times, b.times, report);
}

// name: of one of them.
void ComparePages(const std::string& name, const std::vector<Page>& a, const std::vector<Page>& b,
                  DifferenceReport& report) {
    const auto digests = [](const std::vector<Page>& pages) {
        Texts all;
        for (const Page& page : pages)
            all.push_back(page.digest);
        return all;
    };
    report.Begin(name + "s");
    if (a.size() != b.size()) report.Changed("number", std::to_string(a.size()), std::to_string(b.size()));
    for (const auto& [left, right] : Align(digests(a), digests(b))) {
        report.Begin(name, (left ? *left : *right) + 1, left ? "" : " of B");
        if (!right)
            report.OnlyInA(name, SizeOf(a[*left]));
        else if (!left)
            report.OnlyInB(name, SizeOf(b[*right]));
        else
            ComparePage(a[*left], b[*right], report);
    }
}

} // namespace

void CompareStreams(const DeviceStream& a, const DeviceStream& b, DifferenceReport& report) {
    report.Begin("PJL");
    CompareValues(a.pjl, b.pjl, report);
    report.Begin("comments");
    CompareValues(a.comments, b.comments, report);
    report.Begin("page device");
    CompareValues(a.device, b.device, report);
    report.Begin("other set-up");
    CompareCommands(a.commands, b.commands, report);
    ComparePages("page", a.pages, b.pages, report);
    ComparePages("other job", a.data, b.data, report);
}

} // namespace OvPipeline
