#pragma once

#include "DataModel/ValueIds.h"

#include <vector>

class JobFeatures;

/// What a job asks of the finisher, as the device's list of finishings.
namespace JobFinishings {

/// Empty where the job leaves it to the device; else never empty.
[[nodiscard]] std::vector<DataModelIds::tagValueEnum> Of(const JobFeatures& job);

} // namespace JobFinishings
