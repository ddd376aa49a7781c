#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/ValueIds.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <optional>
#include <string>
#include <string_view>

/// The commands that a product brings with it, in a small text of elements (docs/formats/product-data.md).
/// Read by plain search and not as XML, so that odd content cannot stop a job. Looks for a section once for
/// all options of it that are asked for one after the other. One thread at a time.
class OV_FILTER_UTILITIES_API ProductPdlData {
public:
    /// The text must outlive this object. UTF-8.
    explicit ProductPdlData(std::string_view text) noexcept : m_text(text) {}

    /// The command of an option in a section, of the group and subgroup where the section has them; an empty
    /// group means none, and one that does not occur leaves the search where it was. VAL_PDL_PCL6 and
    /// VAL_PDL_POSTSCRIPT choose the language. Empty where there is no command, and for any failure.
    [[nodiscard]] CXString Find(std::wstring_view section, std::wstring_view option, std::wstring_view group,
                                std::wstring_view subgroup, DataModelIds::tagValueEnum pdl) const noexcept;

private:
    [[nodiscard]] std::optional<std::string_view> Section(const std::string& name) const;

    std::string_view m_text;
    // What was looked for last, and its stretch.
    mutable std::string m_sectionName;
    mutable std::optional<std::string_view> m_section;
};
