#include "DataModel/FeatureNameTable.h"

#include <string>

namespace {

using namespace DataModelIds;
using FeatureName = EnumeratorName<tagFeatureEnum>;

constexpr auto names = SortedByNumber(std::to_array<FeatureName>({
#define OV_FEATURE(name, number) {name, #name},
#include "DataModel/FeatureIdList.inc"
#undef OV_FEATURE
}));

static_assert(std::ranges::adjacent_find(names, {}, &FeatureName::id) == names.end(), "one name a number");

} // namespace

std::span<const FeatureName> GetFeatureNames() noexcept { return names; }

const char* FindFeatureName(tagFeatureEnum feature) noexcept { return FindName(names, feature); }

CPString MakeFeatureEnumString(tagFeatureEnum feature) {
    return CPString(std::string("DataModelIds::") + FindFeatureName(feature));
}
