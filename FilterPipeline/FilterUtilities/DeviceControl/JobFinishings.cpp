#include "DeviceControl/JobFinishings.h"

#include "DeviceControl/JobFeatures.h"
#include "Finishing/OcptImportAndExport.h"

using namespace DataModelIds;

namespace {

/// The first choice among features that say where the staples go.
tagValueEnum StaplePosition(const JobFeatures& job) {
    for (const tagFeatureEnum feature : {FEAT_FINISHING_1_STAPLE, FEAT_FINISHING_2_STAPLES,
                                         FEAT_FINISHING_4_STAPLES, FEAT_FINISHING_CENTER_STAPLE})
        if (const tagValueEnum value = job.Choice(feature); value != VAL_UNSPECIFIED) return value;
    return VAL_UNSPECIFIED;
}

struct Punch {
    tagValueEnum count = VAL_UNSPECIFIED;
    tagValueEnum position = VAL_UNSPECIFIED;
};

Punch PunchOf(const JobFeatures& job) {
    if (const tagValueEnum count = job.Choice(FEAT_FINISHING_HOLE_PUNCH); count != VAL_UNSPECIFIED)
        return {.count = count};
    struct Positioned {
        tagFeatureEnum feature;
        tagValueEnum count;
    };
    constexpr Positioned rows[] = {{FEAT_FINISHING_2_HOLE_PUNCH, VAL_FINISHING_2_HOLE_PUNCH},
                                   {FEAT_FINISHING_3_HOLE_PUNCH, VAL_FINISHING_3_HOLE_PUNCH},
                                   {FEAT_FINISHING_4_HOLE_PUNCH, VAL_FINISHING_4_HOLE_PUNCH}};
    for (const Positioned& row : rows)
        if (const tagValueEnum position = job.Choice(row.feature); position != VAL_UNSPECIFIED)
            return {row.count, position};
    return {};
}

} // namespace

std::vector<tagValueEnum> JobFinishings::Of(const JobFeatures& job) {
    if (job.Choice(FEAT_FINISHING_UNSPECIFIED) == VAL_FINISHING_UNSPECIFIED_ON) return {};
    tagValueEnum staple = job.Choice(FEAT_FINISHING_STAPLE);
    const bool isStaplePosition = staple == VAL_UNSPECIFIED;
    if (isStaplePosition) staple = StaplePosition(job);
    const Punch punch = PunchOf(job);
    Dimension width;
    Dimension height;
    job.Features().GetOutputSize(width, height);
    return OcptImportAndExport::CalculateCpssFinishingsValuesFromDriverFeaturesAndDocSettings(
        staple, isStaplePosition, punch.count, punch.position, job.Choice(FEAT_FINISHING_FOLD),
        job.Choice(FEAT_FINISHING_BIND), job.Choice(FEAT_FINISHING_BOOKLET),
        job.Choice(FEAT_FINISHING_COIL_PUNCH), width, height, job.Features().GetEffectiveOrientation(),
        job.Choice(FEAT_FINISHING_BINDING_EDGE), job.Choice(FEAT_SIDES_IMAGED), false, VAL_UNSPECIFIED,
        VAL_UNSPECIFIED, false);
}
