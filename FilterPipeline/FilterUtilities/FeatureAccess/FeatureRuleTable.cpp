#include "FeatureAccess/FeatureRuleTable.h"

#include "DataModel/PrintSchemaKeywordLiterals.h"
#include "FeatureAccess/FeaturePlaces.h"
#include "FeatureAccess/MediaKeywordTables.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>

namespace {

using namespace DataModelIds;
using namespace FeatureKeywordTables;
using Kind = FeatureQuestionKind;
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
constexpr Reading fromTicketOrSettingsOrBytesOrDefault{
    .places = {Ticket, DocumentSettings, AttributeBytes}, .onlyIfSupported = true, .orDefault = true};
constexpr Reading fromTicketAnyway{.places = {Ticket}};
constexpr Reading secretOfTicket{.places = {Ticket}, .isSecret = true};

constexpr Reading fromSettings{.places = {DocumentSettings}};
constexpr Reading fromSettingsOrBytes{.places = {DocumentSettings, AttributeBytes}};
constexpr Reading fromSettingsByNameOrBytes{.places = {DocumentSettings, AttributeBytes},
                                            .isNamedAlone = true};
constexpr Reading fromSettingsOrBytesOrDefault{.places = {DocumentSettings, AttributeBytes},
                                               .orDefault = true};

constexpr Reading ifSupportedFromSettingsOrBytesOrDefault{
    .places = {DocumentSettings, AttributeBytes}, .onlyIfSupported = true, .orDefault = true};

constexpr Reading fromBytes{.places = {AttributeBytes}};
constexpr Reading fromBytesOrDefault{.places = {AttributeBytes}, .orDefault = true};
constexpr Reading ifSupportedFromBytesOrDefault{
    .places = {AttributeBytes}, .onlyIfSupported = true, .orDefault = true};

// What an odd rule reads, its function knows.
constexpr Reading byFunction;
constexpr Reading secretByFunction{.isSecret = true};

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
    {Option, FEAT_SIDES_IMAGED,            byFunction, sides, Odd::Sides, Written::TicketOption},
    {Option, FEAT_PRINT_QUALITY_LEVEL,     fromSettingsOrBytesOrDefault},
    {Option, FEAT_COLOR_EFFECTS,           fromTicketOrBytesOrDefault},
    {Option, FEAT_OUTPUT_DESTINATION,      fromBytesOrDefault},
    {Option, FEAT_PAGE_LAYOUT,             byFunction, ofDictionary, Odd::PageLayout},
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

    {Integer, FEAT_COPIES,                     byFunction, {}, Odd::Copies},
    {Integer, FEAT_LIGHTNESS,                  ifSupportedFromBytesOrDefault},
    {Integer, FEAT_CONTRAST,                   ifSupportedFromBytesOrDefault},
    {Integer, FEAT_SATURATION,                 ifSupportedFromBytesOrDefault},
    {Integer, FEAT_COLORBALANCE_CYAN_RED,      ifSupportedFromBytesOrDefault},
    {Integer, FEAT_COLORBALANCE_MAGENTA_GREEN, ifSupportedFromBytesOrDefault},
    {Integer, FEAT_COLORBALANCE_YELLOW_BLUE,   ifSupportedFromBytesOrDefault},
    {Integer, {FEAT_MEDIA_COL, FEAT_MEDIA_WEIGHT}, fromSettingsByNameOrBytes},

    // Any feature can be asked for a length; these are.
    {Length, FeatureRule::anyFeature, ifSupportedFromBytesOrDefault},
    {Length, FEAT_X1_IMAGE_SHIFT,     ifSupportedFromBytesOrDefault},
    {Length, FEAT_Y1_IMAGE_SHIFT,     ifSupportedFromBytesOrDefault},
    {Length, FEAT_X2_IMAGE_SHIFT,     ifSupportedFromBytesOrDefault},
    {Length, FEAT_Y2_IMAGE_SHIFT,     ifSupportedFromBytesOrDefault},

    // Only a secure job has a name that its user chose; all others have that of the document.
    {Text, FEAT_JOB_NAME,                   fromSettingsOrBytes, {}, Odd::JobName},
    {Text, FEAT_CREATOR_VERSION_ATTRIBUTES, fromSettingsOrBytes, {}, Odd::None, Written::TextElement},
    {Text, FEAT_CREATOR_NAME_PDL,           fromSettingsOrBytes, unknownApplication, Odd::None, Written::NameElement},
    {Text, FEAT_CREATOR_VERSION_PDL,        fromSettingsOrBytes, {}, Odd::None, Written::TextElement},
    {Text, FEAT_CURRENT_USER_NAME,          fromSettingsOrBytes, {}, Odd::None, Written::TextElement},
    {Text, FEAT_CURRENT_USER_DOMAIN,        fromSettingsOrBytes, {}, Odd::None, Written::TextElement},
    {Text, FEAT_MS_PIN_PRINTING_STRING,     secretOfTicket},

    {Flag, FEAT_START_SHEET_FROM_APPLICATION, byFunction, {}, Odd::StartSheet},

    {Password, FEAT_JOB_PASSWORD, secretByFunction, {}, Odd::JobPassword},

    // Annotations in the document settings count even if they are marked as not specified.
    {Collection, FeatureRule::anyFeature, fromBytes},
    {Collection, FEAT_ANNOTATION_COL,     fromSettingsOrBytes},

    {Entries, FeatureRule::anyFeature, fromBytes},
    {Entries, {FEAT_ANNOTATION_COL, FEAT_ANNOTATION_ELEMENT_COL}, byFunction, {}, Odd::AnnotationElements},

    {MediaSize, FEAT_APPLICATION_MEDIA_SIZE_OPTION, fromTicketAnyway, mediaSizes, Odd::MediaSize},
};
// clang-format on

constexpr bool IsBefore(const FeatureRule& left, const FeatureRule& right) {
    return left.kind != right.kind ? left.kind < right.kind : left.path.StandsBefore(right.path);
}

// ---- What no rule may say

constexpr bool IsOdd(const FeatureRule& rule) { return rule.oddity != Odd::None; }

constexpr bool HasPlaces(const FeatureRule& rule) { return rule.reading.places.front() != Nowhere; }

constexpr bool HasPlacesInOrder(const FeatureRule& rule) {
    const auto& places = rule.reading.places;
    const bool hasGap = !std::ranges::is_partitioned(places, [](FeaturePlace at) { return at != Nowhere; });
    const bool isAskedTwice = std::ranges::any_of(places, [&](FeaturePlace place) {
        return place != Nowhere && std::ranges::count(places, place) > 1;
    });
    const auto bytes = std::ranges::find(places, AttributeBytes);
    const bool hasMore = bytes != places.end() && bytes + 1 != places.end() && bytes[1] != Nowhere;
    return !hasGap && !isAskedTwice && !hasMore;
}

constexpr bool FitsItsPlaces(const FeatureRule& rule) {
    return std::ranges::all_of(rule.reading.places, [&](FeaturePlace place) {
        return place == Nowhere || FeaturePlaces::CanAnswer(place, rule.kind);
    });
}

constexpr bool FitsItsDefault(const FeatureRule& rule) {
    return !rule.reading.orDefault || (FeaturePlaces::HasDefaults(rule.kind) && rule.words.AreOfDictionary());
}

// One set of words cannot be those of two places.
constexpr bool FitsItsWords(const FeatureRule& rule) {
    const auto hasTexts = [](FeaturePlace place) { return place == Ticket || place == DocumentSettings; };
    return rule.words.AreOfDictionary() || rule.kind == Text ||
           std::ranges::count_if(rule.reading.places, hasTexts) <= 1;
}

constexpr Kind KindOf(Odd oddity) {
    switch (oddity) {
    case Odd::AnnotationElements:
        return Entries;
    case Odd::Copies:
        return Integer;
    case Odd::JobName:
        return Text;
    case Odd::JobPassword:
        return Password;
    case Odd::MediaSize:
        return Kind::MediaSize;
    case Odd::StartSheet:
        return Flag;
    case Odd::None:
    case Odd::CoverOptions:
    case Odd::HolePunch:
    case Odd::JobType:
    case Odd::PageLayout:
    case Odd::Sides:
    case Odd::Staple:
        break;
    }
    return Option;
}

constexpr bool ReadsByRule(Odd oddity) {
    constexpr Odd all[] = {Odd::None,    Odd::CoverOptions, Odd::HolePunch, Odd::JobName,
                           Odd::JobType, Odd::MediaSize,    Odd::Staple};
    return std::ranges::find(all, oddity) != std::end(all);
}

constexpr bool FitsItsOddity(const FeatureRule& rule) {
    return !IsOdd(rule) || rule.kind == KindOf(rule.oddity);
}

constexpr bool HasWhatItReads(const FeatureRule& rule) {
    const Reading& reading = rule.reading;
    return ReadsByRule(rule.oddity)
               ? HasPlaces(rule)
               : !HasPlaces(rule) && !reading.onlyIfSupported && !reading.orDefault && !reading.isNamedAlone;
}

constexpr bool FitsWhatItWrites(const FeatureRule& rule) {
    switch (rule.writing) {
    case Written::None:
        return true;
    case Written::TicketOption:
    case Written::KeywordElement:
        return rule.kind == Option && !rule.words.AreOfDictionary();
    case Written::NameElement:
        return rule.kind == Text && !rule.words.AreOfDictionary();
    case Written::TextElement:
        return rule.kind == Text;
    }
    return false;
}

constexpr bool CanBeWritten(const FeatureRule& rule) {
    return rule.writing == Written::None || rule.path.Collections().empty();
}

static_assert(std::ranges::adjacent_find(rules, std::not_fn(IsBefore)) == std::end(rules),
              "rows stand by kind, as FeatureQuestionKind has them, then by the length of the path, then by "
              "number; each question has one");
static_assert(std::ranges::all_of(rules, HasPlacesInOrder),
              "the places of a reading stand without gaps, each once, and attribute bytes last: they hide "
              "nothing");
static_assert(std::ranges::all_of(rules, FitsItsOddity), "that oddity is a function of another kind");
static_assert(std::ranges::all_of(rules, HasWhatItReads),
              "a rule has places to read, unless it is an odd one whose function knows them: then it has no "
              "reading but for its secret");
static_assert(std::ranges::all_of(rules, FitsItsPlaces),
              "a place of the reading has no values of that kind: FeaturePlaces.h tells which have");
static_assert(std::ranges::all_of(rules, FitsItsDefault),
              "the device has default options, by the dictionaries' words, and numbers: no texts, and no own "
              "words");
static_assert(std::ranges::all_of(rules, FitsItsWords),
              "own words are those of the ticket or of the document settings: not of both");
static_assert(std::ranges::all_of(rules, FitsWhatItWrites),
              "options and elements with keywords are written by own words, and texts as elements");
static_assert(std::ranges::all_of(rules, CanBeWritten), "members of collections cannot be set");

// ---- Beside the rules

constexpr FeaturePath supportedAnywhere[] = {
    {FEAT_ANNOTATION_COL, FEAT_ANNOTATION_NAME},
    {FEAT_ANNOTATION_COL, FEAT_ANNOTATION_MEMBER_895},
    {FEAT_ANNOTATION_COL, FEAT_ANNOTATION_ELEMENT_COL},
};

struct TicketNames {
    tagFeatureEnum feature;
    CXString names[2];
};

std::span<const TicketNames> RowsOfTicketNames() {
    namespace Names = PrintSchema::Keywords;
    static const TicketNames rows[] = {
        {FEAT_PAGE_LAYOUT, {Names::NUp::JobNUpAllDocumentsContiguously, Names::NUp::DocumentNUp}},
        {FEAT_INPUT_TRAY, {Names::PageInputBin::FEATURE, Names::JobInputBin::FEATURE}},
    };
    return rows;
}

// Where the rules of each kind begin, and behind the last kind where they end.
constexpr auto firstOfKind = [] {
    std::array<std::size_t, static_cast<std::size_t>(FeatureQuestionKind::OutputSize) + 2> first{};
    for (std::size_t kind = 0; kind < first.size(); ++kind)
        first[kind] = static_cast<std::size_t>(std::ranges::count_if(
            rules, [kind](const FeatureRule& rule) { return static_cast<std::size_t>(rule.kind) < kind; }));
    return first;
}();

} // namespace

bool IsSupportedAnywhere(const FeaturePath& path) noexcept {
    return std::ranges::find(supportedAnywhere, path) != std::end(supportedAnywhere);
}

bool IsSecretFeature(FeatureQuestionKind kind, const FeaturePath& path) noexcept {
    const FeatureRule* const rule = FindFeatureRule(kind, path);
    return kind == Password || (rule != nullptr && rule->reading.isSecret);
}

bool IsFeatureOfTicket(const FeaturePath& path) noexcept {
    return std::ranges::any_of(
        rules, [&](const FeatureRule& rule) { return rule.path == path && rule.HasWordsOfTicket(); });
}

std::span<const CXString> FindTicketNames(tagFeatureEnum feature) {
    const auto rows = RowsOfTicketNames();
    const auto found = std::ranges::find(rows, feature, &TicketNames::feature);
    return found == rows.end() ? std::span<const CXString>() : found->names;
}

const FeatureRule* FindFeatureRule(FeatureQuestionKind kind, const FeaturePath& path) noexcept {
    const FeatureRule* const begin = rules + firstOfKind[static_cast<std::size_t>(kind)];
    const FeatureRule* const end = rules + firstOfKind[static_cast<std::size_t>(kind) + 1];
    const FeatureRule* const found =
        std::lower_bound(begin, end, path, [](const FeatureRule& rule, const FeaturePath& wanted) {
            return rule.path.StandsBefore(wanted);
        });
    if (found != end && !path.StandsBefore(found->path)) return found;
    return begin != end && begin->path == FeaturePath(FeatureRule::anyFeature) ? begin : nullptr;
}

std::span<const FeatureRule> GetFeatureRules() noexcept { return rules; }
