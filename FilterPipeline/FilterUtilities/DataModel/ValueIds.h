#pragma once

// Identifiers of the choices that printing features can take. The numbers are shared with the other modules
// of the driver and with stored jobs (they stand in attribute bytes): never renumber one. They are not dense,
// a value may belong to several features, and code may meet numbers that have no name here.

#include <cstdint>

namespace DataModelIds {

enum tagValueEnum : std::int32_t {
#define OV_VALUE(name, number) name = (number),
#include "DataModel/ValueIdList.inc"
#undef OV_VALUE
};

} // namespace DataModelIds
