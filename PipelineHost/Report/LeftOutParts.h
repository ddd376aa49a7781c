#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace OvPipeline {

/// The parts of a job that are not in its output, by kind.
class LeftOutParts {
public:
    /// kind: "image", "story fragments".
    void Add(const std::string& kind, const std::string& name);

    bool IsEmpty() const { return m_kinds.empty(); }
    /// "1 signature part (/a), 7 story fragments parts (/b, /c, /d, ...)", in the order of their first parts.
    std::string Text() const;

private:
    struct Kind {
        std::string kind;
        std::uint64_t count = 0;
        std::string names; // the first ones
    };

    std::vector<Kind> m_kinds;
};

} // namespace OvPipeline
