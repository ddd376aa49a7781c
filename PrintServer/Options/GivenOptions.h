#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace OvPrintServer {

/// The options of a job, as the print server writes them: names and values in one text. Of an option that
/// stands there twice, the last counts.
class GivenOptions {
public:
    struct Option {
        std::string name;
        std::string value; // an option without one is "true"; one that is named "noX", X with "false"
    };

    GivenOptions() = default;
    explicit GivenOptions(const char* text);

    /// In the order of names, without regard to case.
    const std::vector<Option>& All() const { return m_options; }
    /// Null where it was not given. Names are compared without regard to case.
    const std::string* Find(std::string_view name) const;

private:
    std::vector<Option> m_options;
};

} // namespace OvPrintServer
