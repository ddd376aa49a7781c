#include "Commands/DisplayNames.h"

#include <DataModel/FeatureNameTable.h>
#include <DataModel/ValueNameTable.h>

using namespace DataModelIds;

namespace OvPipeline {

namespace {

CPString NameOrNothing(const char* name) { return name != nullptr ? CPString(name) : CPString(); }

} // namespace

std::unique_ptr<IAttributeBytesDebugDisplayHelper> DisplayNames::Clone() const {
    return std::make_unique<DisplayNames>();
}

CPString DisplayNames::GetFeatureName(AttributeBytesFeatureId feature) const {
    return NameOrNothing(FindFeatureName(static_cast<tagFeatureEnum>(feature.GetFeatureId())));
}

CPString DisplayNames::GetOptionName(AttributeBytesFeatureId, LONG option) const {
    return NameOrNothing(FindValueName(static_cast<tagValueEnum>(option)));
}

} // namespace OvPipeline
