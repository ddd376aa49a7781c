#include "Comparison/DifferenceReport.h"

#include "Common/Text.h"

#include <Locale/ShownText.h>

#include <utility>

namespace OvPipeline {

namespace {

constexpr std::size_t longestValue = 160; // characters of a value that a person is shown
constexpr std::size_t mostShown = 60;     // differences of a group

const char* NameOf(DifferenceReport::Change change) {
    switch (change) {
    case DifferenceReport::Change::Changed:
        return "changed";
    case DifferenceReport::Change::OnlyInA:
        return "onlyInA";
    case DifferenceReport::Change::OnlyInB:
        return "onlyInB";
    default:
        return "renamed";
    }
}

std::string Value(const std::string& text) {
    return text.empty() ? "(nothing)" : OvPlatform::Shown(text, longestValue);
}

std::string LineOf(const DifferenceReport::Difference& difference) {
    const std::string what = OvPlatform::Shown(difference.what, longestValue);
    const std::string end = difference.isTime ? " (a time)\n" : "\n";
    const auto alone = [&](const char* where, const std::string& value) {
        return what + ": only in " + where +
               (value.empty() ? "" : ": " + OvPlatform::Shown(value, longestValue)) + end;
    };
    switch (difference.change) {
    case DifferenceReport::Change::OnlyInA:
        return alone("A", difference.a);
    case DifferenceReport::Change::OnlyInB:
        return alone("B", difference.b);
    case DifferenceReport::Change::Renamed:
        return what + " renamed: " + Value(difference.a) + " -> " + Value(difference.b) + end;
    default:
        return what + ": " + Value(difference.a) + " -> " + Value(difference.b) + end;
    }
}

} // namespace

std::string DifferenceReport::Group::Title() const {
    return number == 0 ? name : name + " " + std::to_string(number) + suffix;
}

void DifferenceReport::Begin(std::string group, std::size_t number, std::string suffix) {
    m_next = {std::move(group), number, std::move(suffix), {}};
}

void DifferenceReport::Changed(std::string what, std::string a, std::string b) {
    Add({Change::Changed, std::move(what), std::move(a), std::move(b)});
}

void DifferenceReport::OnlyInA(std::string what, std::string value) {
    Add({Change::OnlyInA, std::move(what), std::move(value), {}});
}

void DifferenceReport::OnlyInB(std::string what, std::string value) {
    Add({Change::OnlyInB, std::move(what), {}, std::move(value)});
}

void DifferenceReport::Renamed(std::string what, std::string a, std::string b) {
    Add({Change::Renamed, std::move(what), std::move(a), std::move(b)});
}

void DifferenceReport::Time(std::string what, const std::optional<std::string>& a,
                            const std::optional<std::string>& b) {
    if (m_ignoresTimes) return;
    const Change change = !a ? Change::OnlyInB : !b ? Change::OnlyInA : Change::Changed;
    Add({change, std::move(what), a.value_or(""), b.value_or(""), true});
}

void DifferenceReport::Add(Difference difference) {
    if (++m_count > mostKept) return;
    const bool isSame = !m_groups.empty() && m_groups.back().name == m_next.name &&
                        m_groups.back().number == m_next.number && m_groups.back().suffix == m_next.suffix;
    if (!isSame) m_groups.push_back(m_next);
    m_groups.back().differences.push_back(std::move(difference));
}

std::string DifferenceReport::AsText(const std::string& a, const std::string& b) const {
    std::string text = "A: " + OvPlatform::Shown(a) + "\nB: " + OvPlatform::Shown(b) + "\n";
    if (IsEmpty()) return text + "no difference between the two " + m_kind + "s\n";
    for (std::size_t at = 0; at < m_groups.size();) {
        const Group& first = m_groups[at];
        std::size_t next = at + 1;
        while (next < m_groups.size() && first.number != 0 && m_groups[next].name == first.name &&
               m_groups[next].suffix == first.suffix &&
               m_groups[next].number == m_groups[next - 1].number + 1 &&
               m_groups[next].differences == first.differences)
            ++next;
        const std::size_t last = m_groups[next - 1].number;
        const std::string range = next - at > 1 ? " to " + std::to_string(last) : "";
        text += "\n" + OvPlatform::Shown(first.name) + (next - at > 1 ? "s" : "") +
                (first.number == 0 ? "" : " " + std::to_string(first.number) + range + first.suffix) + "\n";
        for (std::size_t i = 0; i < first.differences.size() && i < mostShown; ++i)
            text += "  " + LineOf(first.differences[i]);
        if (first.differences.size() > mostShown)
            text += "  and " + std::to_string(first.differences.size() - mostShown) +
                    " more, which --json shows\n";
        at = next;
    }
    if (m_count > mostKept) text += "\nand more, which are not shown\n";
    return text + "\n" + Counted(m_count, "difference") + "\n";
}

JsonText DifferenceReport::AsJson(const std::string& a, const std::string& b) const {
    JsonText json;
    json.BeginObject()
        .Key("kind")
        .Text(m_kind.substr(m_kind.rfind(' ') + 1))
        .Key("a")
        .Text(a)
        .Key("b")
        .Text(b);
    json.Key("equal").Bool(IsEmpty()).Key("count").Number(static_cast<long long>(m_count));
    json.Key("groups").BeginArray();
    const auto side = [&](const char* key, const Difference& difference, const std::string& value,
                          Change missing) {
        json.Key(key);
        difference.change == missing ? json.Null() : json.Text(value);
    };
    for (const Group& group : m_groups) {
        json.BeginObject().Key("name").Text(group.Title()).Key("differences").BeginArray();
        for (const Difference& difference : group.differences) {
            json.BeginObject()
                .Key("change")
                .Text(NameOf(difference.change))
                .Key("what")
                .Text(difference.what);
            side("a", difference, difference.a, Change::OnlyInB);
            side("b", difference, difference.b, Change::OnlyInA);
            json.Key("isTime").Bool(difference.isTime).EndObject();
        }
        json.EndArray().EndObject();
    }
    json.EndArray().EndObject();
    return json;
}

} // namespace OvPipeline
