#include "DataModel/ValueNameTable.h"

#include <string>

namespace {

using namespace DataModelIds;
using ValueName = EnumeratorName<tagValueEnum>;

constexpr auto names = SortedByNumber(std::to_array<ValueName>({
#define OV_VALUE(name, number) {name, #name},
#include "DataModel/ValueIdList.inc"
#undef OV_VALUE
}));

static_assert(std::ranges::adjacent_find(names, {}, &ValueName::id) == names.end(), "one name a number");

} // namespace

std::span<const ValueName> GetValueNames() noexcept { return names; }

const char* FindValueName(tagValueEnum value) noexcept { return FindName(names, value); }

CPString MakeValueEnumString(tagValueEnum value) {
    return CPString(std::string("DataModelIds::") + FindValueName(value));
}
