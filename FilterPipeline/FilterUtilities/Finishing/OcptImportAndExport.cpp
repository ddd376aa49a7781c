#include "Finishing/OcptImportAndExport.h"

#include "Finishing/FinishingTables.h"
#include "Media/MediaUtilities.h"

#include <LowLevelFacilities/Numbers/Dimension.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

using namespace DataModelIds;
using namespace FinishingTables;

namespace {

using OcptImportAndExport::FeedEdgeEither;
using OcptImportAndExport::FeedEdgeLongOnly;
using OcptImportAndExport::FeedEdgeRestrictionEnum;
using OcptImportAndExport::FeedEdgeShortOnly;

/// Null for a choice without a row.
template <class AnyRow, std::size_t count>
const AnyRow* FindRow(const AnyRow (&rows)[count], tagValueEnum choice) {
    const AnyRow* const row = std::find_if(std::begin(rows), std::end(rows),
                                           [choice](const AnyRow& each) { return each.choice == choice; });
    return row == std::end(rows) ? nullptr : row;
}

bool IsLandscape(tagValueEnum orientation) { return orientation == VAL_MS_ORIENTATION_LANDSCAPE; }
bool IsPortrait(tagValueEnum orientation) { return orientation == VAL_MS_ORIENTATION_PORTRAIT; }

int TenthsOfMillimeter(const Dimension& length) {
    return length.GetValue(Dimension::TenthOfMillimeter).GetNearestIntValue();
}

FeedEdgeRestrictionEnum FeedEdgeOf(const Dimension& width, const Dimension& height) {
    constexpr int longestForEitherEdge = 2970; // A4
    constexpr int shortestForEitherEdge = 2100;
    const auto [shortEdge, longEdge] = std::minmax({TenthsOfMillimeter(width), TenthsOfMillimeter(height)});
    if (longEdge > longestForEitherEdge) return FeedEdgeShortOnly;
    return shortEdge >= shortestForEitherEdge ? FeedEdgeEither : FeedEdgeLongOnly;
}

bool FollowsSides(tagValueEnum bindingEdge) {
    return bindingEdge == VAL_BINDING_EDGE_AUTOMATIC || bindingEdge == VAL_UNSPECIFIED;
}

bool IsShortBinding(tagValueEnum bindingEdge, tagValueEnum sides) {
    return bindingEdge == VAL_BINDING_EDGE_SHORT ||
           (FollowsSides(bindingEdge) && sides == VAL_SIDES_TWO_SIDED_FLIP_SHORT_EDGE);
}

bool IsLongBinding(tagValueEnum bindingEdge, tagValueEnum sides) {
    return bindingEdge == VAL_BINDING_EDGE_LONG ||
           (FollowsSides(bindingEdge) && !IsShortBinding(bindingEdge, sides));
}

tagValueEnum HalfSheetFold(const HalfSheetFoldRow& row, bool useDocOrientation, tagValueEnum docOrientation,
                           tagValueEnum docFoldDirection) {
    if (!useDocOrientation) return row.plain;
    const bool isReversed = docFoldDirection == VAL_DOC_FOLD_REVERSED;
    if (IsPortrait(docOrientation)) return isReversed ? row.portraitReversed : row.portrait;
    return isReversed ? row.landscapeReversed : row.landscape;
}

tagValueEnum CoilPunchOn(FeedEdgeRestrictionEnum feedEdge, tagValueEnum orientation) {
    if (feedEdge != FeedEdgeShortOnly) return VAL_CPSS_FINISHING_6289;
    return IsLandscape(orientation) ? VAL_CPSS_FINISHING_6288 : VAL_CPSS_FINISHING_6287;
}

/// The list as it grows. Choices without a row add nothing.
class FinishingsList {
public:
    explicit FinishingsList(tagValueEnum orientation) : m_isPortrait(IsPortrait(orientation)) {}

    void Append(tagValueEnum value) { m_values.push_back(value); }
    void AppendFrom(std::span<const Row> rows, tagValueEnum choice) {
        for (const Row& row : rows)
            if (row.choice == choice) Append(row.value);
    }
    void AppendFrom(std::span<const TurningRow> rows, tagValueEnum choice) {
        for (const TurningRow& row : rows)
            if (row.choice == choice) Append(m_isPortrait ? row.portrait : row.landscape);
    }
    std::vector<tagValueEnum> Take() && {
        if (m_values.empty()) Append(VAL_CPSS_FINISHING_6250);
        return std::move(m_values);
    }

private:
    bool m_isPortrait;
    std::vector<tagValueEnum> m_values;
};

} // namespace

std::vector<tagValueEnum> OcptImportAndExport::CalculateCpssFinishingsValuesFromDriverFeaturesAndDocSettings(
    tagValueEnum staple, bool staplePositionGiven, tagValueEnum holeCount, tagValueEnum holePosition,
    tagValueEnum fold, tagValueEnum bind, tagValueEnum booklet, tagValueEnum coil, const Dimension& width,
    const Dimension& height, tagValueEnum orientation, tagValueEnum bindingEdge, tagValueEnum sides,
    bool useDocOrientation, tagValueEnum docOrientation, tagValueEnum docFoldDirection,
    bool finishingExtraFlag) {
    const FeedEdgeRestrictionEnum feedEdge = FeedEdgeOf(width, height);
    FinishingsList list(orientation);

    if (staple != VAL_UNSPECIFIED) {
        // Deliberate: a staple choice without a place on the sheet is in the list as VAL_UNSPECIFIED.
        list.Append(staplePositionGiven
                        ? LookupStaplePosition(staple, orientation)
                        : DetermineStaplePosition(staple, feedEdge, orientation, bindingEdge, sides));
    }

    if (holeCount != VAL_UNSPECIFIED) {
        if (holePosition == VAL_UNSPECIFIED)
            list.Append(DetermineHolePunchLocation(holeCount, feedEdge, orientation, bindingEdge, sides));
        else
            list.AppendFrom(holePositions, holePosition);
        list.AppendFrom(holeCounts, holeCount);
    }

    list.AppendFrom(folds, fold);
    if (const HalfSheetFoldRow* const row = FindRow(halfSheetFolds, fold))
        list.Append(HalfSheetFold(*row, useDocOrientation, docOrientation, docFoldDirection));
    list.AppendFrom(binds, bind);
    list.AppendFrom(booklets, booklet);
    if (finishingExtraFlag) list.Append(VAL_CPSS_FINISHING_6252);

    list.AppendFrom(coilPositions, coil);
    if (coil == VAL_FINISHING_COIL_PUNCH_ON) list.Append(CoilPunchOn(feedEdge, orientation));
    return std::move(list).Take();
}

tagValueEnum OcptImportAndExport::DetermineStaplePosition(tagValueEnum staple,
                                                          FeedEdgeRestrictionEnum feedEdge,
                                                          tagValueEnum orientation, tagValueEnum bindingEdge,
                                                          tagValueEnum sides) {
    if (staple == VAL_FINISHING_1_STAPLE)
        return IsLandscape(orientation) ? VAL_CPSS_FINISHING_6255 : VAL_CPSS_FINISHING_6254;
    const StapleCountRow* const row = FindRow(stapleCounts, staple);
    if (row == nullptr) return VAL_UNSPECIFIED;

    const tagValueEnum atShortEdge =
        IsLandscape(orientation) ? row->landscapeAtShortEdge : row->portraitAtShortEdge;
    if (feedEdge == FeedEdgeShortOnly) return atShortEdge;
    if (feedEdge == FeedEdgeLongOnly || !row->followsBindingEdge) return row->atLongEdge;
    if (feedEdge != FeedEdgeEither) return VAL_UNSPECIFIED;
    if (IsShortBinding(bindingEdge, sides)) return atShortEdge;
    return IsLongBinding(bindingEdge, sides) ? row->atLongEdge : VAL_UNSPECIFIED;
}

tagValueEnum OcptImportAndExport::LookupStaplePosition(tagValueEnum staplePosition,
                                                       tagValueEnum orientation) {
    const TurningRow* const row = FindRow(staplePositions, staplePosition);
    if (row == nullptr) return VAL_UNSPECIFIED;
    if (IsPortrait(orientation)) return row->portrait;
    return IsLandscape(orientation) ? row->landscape : VAL_UNSPECIFIED;
}

tagValueEnum OcptImportAndExport::DetermineHolePunchLocation(tagValueEnum holeCount,
                                                             FeedEdgeRestrictionEnum feedEdge,
                                                             tagValueEnum orientation,
                                                             tagValueEnum bindingEdge, tagValueEnum sides) {
    const bool isAtTop = feedEdge == FeedEdgeShortOnly ||
                         (feedEdge == FeedEdgeEither && holeCount == VAL_FINISHING_2_HOLE_PUNCH &&
                          IsShortBinding(bindingEdge, sides));
    if (!isAtTop) return VAL_CPSS_FINISHING_6266;
    return IsLandscape(orientation) ? VAL_CPSS_FINISHING_6268 : VAL_CPSS_FINISHING_6267;
}

void OcptImportAndExport::DetermineDataModelHolePunchValuesFromPrintTicketValue(
    tagValueEnum printTicketValue, bool punchOnSupported, bool holeCountSupported,
    bool holePositionsSupported, bool twoHoleCountSupported, bool threeHoleCountSupported,
    bool fourHoleCountSupported, bool twoHolePositionsSupported, bool threeHolePositionsSupported,
    bool fourHolePositionsSupported, tagValueEnum& holePunch, tagValueEnum& twoHolePunch,
    tagValueEnum& threeHolePunch, tagValueEnum& fourHolePunch) {
    holePunch = twoHolePunch = threeHolePunch = fourHolePunch = VAL_UNSPECIFIED;
    if (printTicketValue == VAL_MS_PUNCH_ON && punchOnSupported) holePunch = VAL_FINISHING_HOLE_PUNCH_ON;

    const TicketPunchRow* const row = FindRow(ticketPunches, printTicketValue);
    if (row == nullptr) return;
    const struct {
        int holes;
        bool countSupported;
        bool positionsSupported;
        tagValueEnum& feature;
    } counts[] = {
        {2, twoHoleCountSupported, twoHolePositionsSupported, twoHolePunch},
        {3, threeHoleCountSupported, threeHolePositionsSupported, threeHolePunch},
        {4, fourHoleCountSupported, fourHolePositionsSupported, fourHolePunch},
    };
    for (const auto& count : counts) {
        if (count.holes != row->holes) continue;
        if (holePositionsSupported && count.positionsSupported)
            count.feature = row->position;
        else if (holeCountSupported && count.countSupported)
            holePunch = row->plainCount;
    }
}

bool OcptImportAndExport::BackCoverShouldBeSuppressedDueToFinishingAndLayout(tagValueEnum fold,
                                                                             tagValueEnum finishingBooklet,
                                                                             tagValueEnum booklet,
                                                                             tagValueEnum bookletMaking) {
    return booklet == VAL_BOOKLET_ON || fold == VAL_FINISHING_BI_FOLD_MULTI_PO ||
           finishingBooklet == VAL_FINISHING_BOOKLET_FOLD ||
           finishingBooklet == VAL_FINISHING_BOOKLET_FOLD_STAPLE || bookletMaking == VAL_BOOKLET_MAKING_ON;
}

tagValueEnum OcptImportAndExport::GetEffectiveOrientation(tagValueEnum orientation, tagValueEnum pageLayout,
                                                          tagValueEnum booklet, int width, int height) {
    return MediaUtilities::GetEffectiveOrientation(orientation, pageLayout, booklet, width, height);
}

bool OcptImportAndExport::DoesNupNeedInternalRotate90(tagValueEnum pageLayout, int width, int height) {
    return MediaUtilities::DoesNupNeedInternalRotate90(pageLayout, width, height);
}
