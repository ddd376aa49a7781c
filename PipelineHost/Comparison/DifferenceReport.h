#pragma once

#include "Report/JsonText.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// What is different between two files, group by group: for people and for programs.
class DifferenceReport {
public:
    /// Of more differences, the first ones are kept and all are counted.
    static constexpr std::size_t mostKept = 100'000;

    enum class Change { Changed, OnlyInA, OnlyInB, Renamed };
    struct Difference {
        Change change;
        std::string what;
        std::string a; // empty where it is only in B, and the other way round
        std::string b;
        bool isTime = false; // when something was made

        bool operator==(const Difference&) const = default;
    };
    struct Group {
        std::string name;
        std::size_t number = 0; // of a page; 0 for a group that is none of many
        std::string suffix;     // behind the number
        std::vector<Difference> differences;

        std::string Title() const;
    };

    /// kind: what is compared, for people; its last word for programs. ignoresTimes: a difference in times is
    /// none.
    explicit DifferenceReport(std::string kind, bool ignoresTimes = false)
        : m_kind(std::move(kind)), m_ignoresTimes(ignoresTimes) {}

    /// What is told from now on is about this.
    void Begin(std::string group, std::size_t number = 0, std::string suffix = {});

    void Changed(std::string what, std::string a, std::string b);
    void OnlyInA(std::string what, std::string value = {});
    void OnlyInB(std::string what, std::string value = {});
    void Renamed(std::string what, std::string a, std::string b);
    /// A time that differs, or is said by one alone; not both may be missing.
    void Time(std::string what, const std::optional<std::string>& a, const std::optional<std::string>& b);

    bool IsEmpty() const { return m_count == 0; }
    std::size_t Count() const { return m_count; }
    const std::vector<Group>& Groups() const { return m_groups; }

    /// a, b: how the files are called. Groups of successive pages that say the same stand as one.
    std::string AsText(const std::string& a, const std::string& b) const;
    JsonText AsJson(const std::string& a, const std::string& b) const;

private:
    void Add(Difference difference);

    std::string m_kind;
    bool m_ignoresTimes;
    Group m_next; // without differences yet
    std::vector<Group> m_groups;
    std::size_t m_count = 0;
};

} // namespace OvPipeline
