#include "DeviceControl/ProductPdlData.h"

#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

namespace {

using DataModelIds::tagValueEnum;

constexpr std::string_view missing{};

/// What stands between the first opening and the first closing tag of a name, the opening tag included.
std::optional<std::string_view> Stretch(std::string_view text, const std::string& name, std::size_t opening) {
    const std::size_t closing = text.find("</" + name + ">");
    if (closing == std::string_view::npos || closing < opening) return std::nullopt;
    return text.substr(opening, closing - opening);
}

std::optional<std::string_view> SectionOf(std::string_view text, const std::string& name) {
    const std::size_t opening = text.find("<" + name + ">");
    return opening == std::string_view::npos ? std::nullopt : Stretch(text, name, opening);
}

/// The stretch of a group; the whole text where the group does not occur.
std::optional<std::string_view> Narrowed(std::string_view text, const std::string& group) {
    const std::size_t opening = group.empty() ? std::string_view::npos : text.find("<" + group + ">");
    return opening == std::string_view::npos ? text : Stretch(text, group, opening);
}

std::string_view ElementOf(std::string_view text, const std::string& option) {
    const std::size_t begin = text.find("<" + option + " ");
    if (begin == std::string_view::npos) return missing;
    const std::size_t end = text.find("/>", begin);
    return end == std::string_view::npos ? missing : text.substr(begin, end - begin);
}

std::string_view AttributeName(tagValueEnum pdl) {
    switch (pdl) {
    case DataModelIds::VAL_PDL_PCL6:
        return "PCL6=\"";
    case DataModelIds::VAL_PDL_POSTSCRIPT:
        return "PS=\"";
    default:
        return "";
    }
}

std::string_view ValueOf(std::string_view element, std::string_view attribute) {
    const std::size_t name = element.find(attribute);
    if (name == std::string_view::npos) return missing;
    const std::string_view rest = element.substr(name + attribute.size());
    const std::size_t end = rest.find('"');
    return end == std::string_view::npos ? missing : rest.substr(0, end);
}

CXString Unescaped(std::string_view value) {
    struct Escape {
        const char* written;
        const char* meant;
    };
    // In this order. Deliberate: the first has a percent sign, and the entity without one stays as it is.
    constexpr Escape escapes[] = {
        {"%&quot;", "\""}, {"&lt;", "<"}, {"&gt;", ">"}, {"\\r", "\r"}, {"\\n", "\n"},
    };
    CPString text{std::string(value)};
    for (const Escape& escape : escapes)
        text.replaceAll(escape.written, escape.meant);
    return CXString(text);
}

} // namespace

std::optional<std::string_view> ProductPdlData::Section(const std::string& name) const {
    if (name.empty() || name != m_sectionName) {
        m_sectionName.clear(); // nothing is remembered of what fails
        m_section = SectionOf(m_text, name);
        m_sectionName = name;
    }
    return m_section;
}

CXString ProductPdlData::Find(std::wstring_view section, std::wstring_view option, std::wstring_view group,
                              std::wstring_view subgroup, tagValueEnum pdl) const noexcept {
    const auto narrow = [](std::wstring_view name) {
        return CPStringUtils::narrowToStdString(name.data(), name.size());
    };
    try {
        std::optional<std::string_view> stretch = Section(narrow(section));
        if (stretch) stretch = Narrowed(*stretch, narrow(group));
        if (stretch) stretch = Narrowed(*stretch, narrow(subgroup));
        if (!stretch) return {};
        return Unescaped(ValueOf(ElementOf(*stretch, narrow(option)), AttributeName(pdl)));
    } catch (...) { // a job goes on without what its product would add
        return {};
    }
}
