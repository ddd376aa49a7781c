#pragma once

// What a configuration may say of job types, as data.

#include "DataModel/FeatureIds.h"
#include "DataModel/ValueIds.h"

namespace JobTypeConfiguration {

/// The feature that says whether jobs of that type may be printed: not, if it says no.
struct Guard {
    DataModelIds::tagValueEnum jobType;
    DataModelIds::tagFeatureEnum feature;
};

inline constexpr Guard guards[] = {
    {DataModelIds::VAL_JOB_TYPE_NORMAL_PRINT, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_NORMAL_PRINT},
    {DataModelIds::VAL_JOB_TYPE_SECURE_PRINT, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_SECURE_PRINT},
    {DataModelIds::VAL_JOB_TYPE_DELAYED_PRINT, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_DELAYED_PRINT},
    {DataModelIds::VAL_JOB_TYPE_FAX_DEPRECATED, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_FAX},
    {DataModelIds::VAL_JOB_TYPE_SAVE, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_SAVE},
    {DataModelIds::VAL_JOB_TYPE_PRINT_AND_SAVE, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_PRINT_AND_SAVE},
    {DataModelIds::VAL_JOB_TYPE_PERSONAL_PRINT, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_PERSONAL_PRINT},
    {DataModelIds::VAL_JOB_TYPE_PERSONAL_SAVED_PRINT,
     DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_PERSONAL_SAVED_PRINT},
    {DataModelIds::VAL_JOB_TYPE_SAVED_PRINT, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_PERSONAL_SAVED_PRINT},
    {DataModelIds::VAL_JOB_TYPE_PROOF_PRINT, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_PROOF_PRINT},
    {DataModelIds::VAL_JOB_TYPE_PROOF_PRINT_WITH_JOB_NAME,
     DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_PROOF_PRINT},
    {DataModelIds::VAL_JOB_TYPE_PRINT_WITH, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_PRINT_WITH},
    {DataModelIds::VAL_JOB_TYPE_HOLD, DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_HOLD},
    {DataModelIds::VAL_JOB_TYPE_CREATE_BACKGROUND_FORM,
     DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_CREATE_BACKGROUND_FORM},
};

/// What a job becomes whose own type is not to be had: the first of these that is.
inline constexpr DataModelIds::tagValueEnum fallbacks[] = {
    DataModelIds::VAL_JOB_TYPE_NORMAL_PRINT,
    DataModelIds::VAL_JOB_TYPE_PERSONAL_PRINT,
    DataModelIds::VAL_JOB_TYPE_PROOF_PRINT,
    DataModelIds::VAL_JOB_TYPE_HOLD,
    DataModelIds::VAL_JOB_TYPE_PERSONAL_SAVED_PRINT,
    DataModelIds::VAL_JOB_TYPE_DELAYED_PRINT,
    DataModelIds::VAL_JOB_TYPE_SAVED_PRINT,
    DataModelIds::VAL_JOB_TYPE_SAVE,
    DataModelIds::VAL_JOB_TYPE_PRINT_AND_SAVE,
    DataModelIds::VAL_JOB_TYPE_SECURE_PRINT,
    DataModelIds::VAL_JOB_TYPE_CREATE_BACKGROUND_FORM,
    DataModelIds::VAL_JOB_TYPE_PROOF_PRINT_WITH_JOB_NAME,
};

/// Of two types that hardly differ, what a wanted one becomes on a device that has only the other.
struct Twin {
    DataModelIds::tagValueEnum wanted;
    DataModelIds::tagValueEnum instead;
};

inline constexpr Twin twins[] = {
    {DataModelIds::VAL_JOB_TYPE_PROOF_PRINT, DataModelIds::VAL_JOB_TYPE_PROOF_PRINT_WITH_JOB_NAME},
    {DataModelIds::VAL_JOB_TYPE_SAVED_PRINT, DataModelIds::VAL_JOB_TYPE_PERSONAL_SAVED_PRINT},
};

} // namespace JobTypeConfiguration
