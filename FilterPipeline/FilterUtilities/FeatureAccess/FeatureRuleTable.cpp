#include "FeatureAccess/FeatureRuleTable.h"

#include "FeatureAccess/MediaKeywordTables.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace {

using namespace DataModelIds;
using namespace FeatureKeywordTables;
using enum FeatureQuestionKind;
using enum FeaturePlace;
using Odd = FeatureRule::Oddity;
using Reading = FeatureRule::Reading;
using Written = FeatureRule::Writing;

// ---- How values are read. A ticket is asked for features that are supported, unless the name says
// otherwise.

constexpr Reading fromTicket{.places = {Ticket}, .onlyIfSupported = true};
constexpr Reading fromTicketOrBytesOrDefault{
    .places = {Ticket, AttributeBytes}, .onlyIfSupported = true, .orDefault = true};
constexpr Reading secretOfTicketOrSettings{.places = {Ticket, DocumentSettings}, .isSecret = true};
constexpr Reading fromTicketOrSettingsOrBytesOrDefault{
    .places = {Ticket, DocumentSettings, AttributeBytes}, .onlyIfSupported = true, .orDefault = true};
constexpr Reading fromTicketAnyway{.places = {Ticket}};
constexpr Reading secretOfTicket{.places = {Ticket}, .isSecret = true};

constexpr Reading fromSettings{.places = {DocumentSettings}};
constexpr Reading fromSettingsOrTicket{.places = {DocumentSettings, Ticket}, .onlyIfSupported = true};
constexpr Reading fromSettingsOrBytes{.places = {DocumentSettings, AttributeBytes}};
constexpr Reading fromSettingsOrBytesOrDefault{.places = {DocumentSettings, AttributeBytes},
                                               .orDefault = true};

constexpr Reading ifSupportedFromSettingsOrBytesOrDefault{
    .places = {DocumentSettings, AttributeBytes}, .onlyIfSupported = true, .orDefault = true};

constexpr Reading fromBytes{.places = {AttributeBytes}};
constexpr Reading fromBytesOrDefault{.places = {AttributeBytes}, .orDefault = true};
constexpr Reading ifSupportedFromBytesOrDefault{
    .places = {AttributeBytes}, .onlyIfSupported = true, .orDefault = true};

// ---- The rules, by kind, by length of the path and by number. A new feature is a row here; its words stand
// ---- in FeatureKeywordTables.h where the dictionaries have none.

constexpr FeatureWords ofDictionary;

// The one name of an application that is a word of the device's.
constexpr Row unknownApplication[] = {
    *std::ranges::find(creatorNamePdl, VAL_CREATOR_NAME_PDL_UNKNOWN_APPLICATION, &Row::value)};

constexpr FeatureWords mediaSizes(MediaKeywordTables::otherSizes, MediaKeywordTables::FindSize);

// clang-format off
constexpr FeatureRule rules[] = {
    {Option, FEAT_MS_ORIENTATION,          fromTicket, orientation},
    {Option, FEAT_JOB_TYPE,                fromSettingsOrBytesOrDefault, ofDictionary, Odd::JobType},
    {Option, FEAT_COLLATION,               fromTicket, collation, Odd::None, Written::TicketOption},
    {Option, FEAT_SIDES_IMAGED,            fromSettingsOrTicket, sides, Odd::Sides, Written::TicketOption},
    {Option, FEAT_PRINT_QUALITY_LEVEL,     fromSettingsOrBytesOrDefault},
    {Option, FEAT_COLOR_EFFECTS,           fromTicketOrBytesOrDefault},
    {Option, FEAT_OUTPUT_DESTINATION,      fromBytesOrDefault},
    {Option, FEAT_PAGE_LAYOUT,             fromTicket, ofDictionary, Odd::PageLayout},
    {Option, FEAT_BOOKLET,                 fromSettingsOrBytesOrDefault},
    {Option, FEAT_OUTLINES,                fromSettings},
    {Option, FEAT_COVER_OPTIONS,           fromSettingsOrBytesOrDefault, ofDictionary, Odd::CoverOptions},
    {Option, FEAT_MARGINS,                 fromTicket, margins},
    {Option, FEAT_FINISHING_STAPLE,        fromTicket, staple, Odd::Staple},
    {Option, FEAT_FINISHING_HOLE_PUNCH,    ifSupportedFromSettingsOrBytesOrDefault, ofDictionary, Odd::HolePunch},
    {Option, FEAT_FINISHING_1_STAPLE,      fromTicket, oneStaple},
    {Option, FEAT_FINISHING_CENTER_STAPLE, fromSettings, centerStaple},
    {Option, FEAT_FINISHING_2_STAPLES,     fromTicket, twoStaples},
    {Option, FEAT_FINISHING_2_HOLE_PUNCH,  ifSupportedFromSettingsOrBytesOrDefault, ofDictionary, Odd::HolePunch},
    {Option, FEAT_FINISHING_3_HOLE_PUNCH,  ifSupportedFromSettingsOrBytesOrDefault, ofDictionary, Odd::HolePunch},
    {Option, FEAT_FINISHING_4_HOLE_PUNCH,  ifSupportedFromSettingsOrBytesOrDefault, ofDictionary, Odd::HolePunch},
    {Option, FEAT_FINISHING_FOLD,          fromTicketOrSettingsOrBytesOrDefault},
    {Option, FEAT_FINISHING_BOOKLET,       fromSettings, bookletFinishing},
    {Option, FEAT_JOB_OFFSET_API,          fromSettingsOrBytesOrDefault},
    {Option, FEAT_CREATOR_NAME_ATTRIBUTES, fromSettings, creatorName, Odd::None, Written::KeywordElement},
    {Option, FEAT_CREATOR_NAME_PDL,        fromSettings, creatorNamePdl, Odd::None, Written::KeywordElement},
    {Option, FEAT_DISPLAY_COLOR_CORRECTION, fromBytesOrDefault},
    {Option, FEAT_FINISHING_COIL_PUNCH,    fromSettings, coilPunch},
    {Option, FEAT_JOB_IDENTIFICATION,      fromTicketOrBytesOrDefault},
    {Option, FEAT_HOLD_FOR_AUTHENTICATION, fromSettings},
    {Option, FEAT_FINISHING_4_STAPLES,     fromSettings, fourStaples},
    {Option, FEAT_FINISHING_UNSPECIFIED,   fromSettings, unspecifiedFinishing},
    {Option, FEAT_MS_PIN_PRINTING,         fromTicket},
    {Option, {FEAT_MEDIA_COL, FEAT_MEDIA_COLOR},          fromTicket, MediaKeywordTables::colors},
    {Option, {FEAT_MEDIA_COL, FEAT_EFFECTIVE_MEDIA_TYPE}, fromTicket, MediaKeywordTables::types},
    {Option, {FEAT_MEDIA_COL, FEAT_INPUT_TRAY},           fromTicket, MediaKeywordTables::trays},

    {Integer, FEAT_COPIES,                     fromTicket},
    {Integer, FEAT_LIGHTNESS,                  ifSupportedFromBytesOrDefault},
    {Integer, FEAT_CONTRAST,                   ifSupportedFromBytesOrDefault},
    {Integer, FEAT_SATURATION,                 ifSupportedFromBytesOrDefault},
    {Integer, FEAT_COLORBALANCE_CYAN_RED,      ifSupportedFromBytesOrDefault},
    {Integer, FEAT_COLORBALANCE_MAGENTA_GREEN, ifSupportedFromBytesOrDefault},
    {Integer, FEAT_COLORBALANCE_YELLOW_BLUE,   ifSupportedFromBytesOrDefault},
    {Integer, {FEAT_MEDIA_COL, FEAT_MEDIA_WEIGHT}, fromSettingsOrBytes},

    {Length, FeatureRule::anyFeature, ifSupportedFromBytesOrDefault},

    // Only a secure job has a name that its user chose; all others have that of the document.
    {Text, FEAT_JOB_NAME,                   fromSettingsOrBytes, {}, Odd::JobName},
    {Text, FEAT_CREATOR_VERSION_ATTRIBUTES, fromSettingsOrBytes, {}, Odd::None, Written::TextElement},
    {Text, FEAT_CREATOR_NAME_PDL,           fromSettingsOrBytes, unknownApplication, Odd::None, Written::NameElement},
    {Text, FEAT_CREATOR_VERSION_PDL,        fromSettingsOrBytes, {}, Odd::None, Written::TextElement},
    {Text, FEAT_CURRENT_USER_NAME,          fromSettingsOrBytes, {}, Odd::None, Written::TextElement},
    {Text, FEAT_CURRENT_USER_DOMAIN,        fromSettingsOrBytes, {}, Odd::None, Written::TextElement},
    {Text, FEAT_MS_PIN_PRINTING_STRING,     secretOfTicket},

    {Flag, FEAT_START_SHEET_FROM_APPLICATION, {}, {}, Odd::StartSheet},

    {Password, FEAT_JOB_PASSWORD, secretOfTicketOrSettings, {}, Odd::JobPassword},

    // Annotations in the document settings count even if they are marked as not specified.
    {Collection, FeatureRule::anyFeature, fromBytes},
    {Collection, FEAT_ANNOTATION_COL,     fromSettingsOrBytes},

    {Entries, FeatureRule::anyFeature, fromBytes},
    {Entries, {FEAT_ANNOTATION_COL, FEAT_ANNOTATION_ELEMENT_COL}, fromSettingsOrBytes, {}, Odd::AnnotationElements},

    {MediaSize, FEAT_APPLICATION_MEDIA_SIZE_OPTION, fromTicketAnyway, mediaSizes, Odd::MediaSize},
};
// clang-format on

constexpr bool StandsBefore(const FeaturePath& left, const FeaturePath& right) {
    const auto features = left.Features();
    const auto others = right.Features();
    if (features.size() != others.size()) return features.size() < others.size();
    return std::ranges::lexicographical_compare(features, others);
}

constexpr bool IsBefore(const FeatureRule& left, const FeatureRule& right) {
    return left.kind != right.kind ? left.kind < right.kind : StandsBefore(left.path, right.path);
}

// Each question has one place in the table.
static_assert(std::ranges::adjacent_find(rules, std::not_fn(IsBefore)) == std::end(rules));

} // namespace

const FeatureRule* FindFeatureRule(FeatureQuestionKind kind, const FeaturePath& path) noexcept {
    const FeatureRule* const begin = std::ranges::lower_bound(rules, kind, {}, &FeatureRule::kind);
    const FeatureRule* const end = std::ranges::upper_bound(rules, kind, {}, &FeatureRule::kind);
    const FeatureRule* const found =
        std::ranges::lower_bound(begin, end, path, StandsBefore, &FeatureRule::path);
    if (found != end && std::ranges::equal(found->path.Features(), path.Features())) return found;
    return begin != end && begin->path == FeaturePath(FeatureRule::anyFeature) ? begin : nullptr;
}

std::span<const FeatureRule> GetFeatureRules() noexcept { return rules; }
