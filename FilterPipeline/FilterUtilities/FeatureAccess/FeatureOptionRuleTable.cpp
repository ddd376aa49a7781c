#include "FeatureOptionRuleTable.h"

#include <algorithm>
#include <iterator>

namespace {

using namespace DataModelIds;
using namespace FeatureKeywordTables;
using enum FeatureOptionRule::Kind;

// By ascending number.
constexpr FeatureOptionRule rules[] = {
    {FEAT_MS_ORIENTATION, Ticket, orientation},
    {FEAT_JOB_TYPE, JobType},
    {FEAT_COLLATION, Ticket, collation},
    {FEAT_SIDES_IMAGED, FeatureOptionRule::Kind::Sides, sides},
    {FEAT_PRINT_QUALITY_LEVEL, DocumentThenAttributeBytes},
    {FEAT_COLOR_EFFECTS, TicketThenAttributeBytes},
    {FEAT_OUTPUT_DESTINATION, AttributeBytes},
    {FEAT_PAGE_LAYOUT, PageLayout},
    {FEAT_BOOKLET, DocumentThenAttributeBytes},
    {FEAT_OUTLINES, Document},
    {FEAT_COVER_OPTIONS, CoverOptions},
    {FEAT_MARGINS, Ticket, margins},
    {FEAT_FINISHING_STAPLE, Staple, staple},
    {FEAT_FINISHING_HOLE_PUNCH, HolePunch},
    {FEAT_FINISHING_1_STAPLE, Ticket, oneStaple},
    {FEAT_FINISHING_CENTER_STAPLE, Document, centerStaple},
    {FEAT_FINISHING_2_STAPLES, Ticket, twoStaples},
    {FEAT_FINISHING_2_HOLE_PUNCH, HolePunch},
    {FEAT_FINISHING_3_HOLE_PUNCH, HolePunch},
    {FEAT_FINISHING_4_HOLE_PUNCH, HolePunch},
    {FEAT_FINISHING_FOLD, Fold},
    {FEAT_FINISHING_BOOKLET, Document, bookletFinishing},
    {FEAT_JOB_OFFSET_API, DocumentThenAttributeBytes},
    {FEAT_CREATOR_NAME_ATTRIBUTES, Document, creatorName},
    {FEAT_CREATOR_NAME_PDL, Document, creatorNamePdl},
    {FEAT_DISPLAY_COLOR_CORRECTION, AttributeBytes},
    {FEAT_FINISHING_COIL_PUNCH, Document, coilPunch},
    {FEAT_JOB_IDENTIFICATION, TicketThenAttributeBytes},
    {FEAT_HOLD_FOR_AUTHENTICATION, Document},
    {FEAT_FINISHING_4_STAPLES, Document, fourStaples},
    {FEAT_FINISHING_UNSPECIFIED, Document, unspecifiedFinishing},
    {FEAT_MS_PIN_PRINTING, Ticket},
};

static_assert(std::is_sorted(std::begin(rules), std::end(rules),
                             [](const FeatureOptionRule& left, const FeatureOptionRule& right) {
                                 return left.feature < right.feature;
                             }));

} // namespace

const FeatureOptionRule* FindFeatureOptionRule(tagFeatureEnum feature) noexcept {
    const FeatureOptionRule* const found = std::lower_bound(
        std::begin(rules), std::end(rules), feature,
        [](const FeatureOptionRule& rule, tagFeatureEnum wanted) { return rule.feature < wanted; });
    return found == std::end(rules) || found->feature != feature ? nullptr : found;
}
