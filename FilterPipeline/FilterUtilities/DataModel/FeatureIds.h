#pragma once

// Identifiers of the printing features that the driver knows. The numbers are shared with the other modules
// of the driver and with stored jobs (they stand in attribute bytes): never renumber one. They are not dense,
// and code may meet numbers that have no name here.

#include <cstdint>

namespace DataModelIds {

enum tagFeatureEnum : std::int32_t {
#define OV_FEATURE(name, number) name = (number),
#include "DataModel/FeatureIdList.inc"
#undef OV_FEATURE
};

} // namespace DataModelIds
