#include "Options/GivenOptions.h"

#include <cups/cups.h>

#include <strings.h>

#include <algorithm>

namespace OvPrintServer {

namespace {

bool IsBefore(const GivenOptions::Option& option, const std::string& name) {
    return strcasecmp(option.name.c_str(), name.c_str()) < 0;
}

} // namespace

GivenOptions::GivenOptions(const char* text) {
    cups_option_t* options = nullptr;
    const int count = cupsParseOptions(text, 0, &options);
    m_options.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        m_options.push_back({options[i].name, options[i].value});
    cupsFreeOptions(count, options);
    std::ranges::stable_sort(
        m_options, [](const Option& left, const Option& right) { return IsBefore(left, right.name); });
}

const std::string* GivenOptions::Find(std::string_view name) const {
    const std::string wanted(name);
    const auto found = std::lower_bound(m_options.begin(), m_options.end(), wanted, IsBefore);
    return found == m_options.end() || strcasecmp(found->name.c_str(), wanted.c_str()) != 0 ? nullptr
                                                                                            : &found->value;
}

} // namespace OvPrintServer
