#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/ValueIds.h"

#include <vector>

class Dimension;

/// Between the driver's finishing features, whose choices are relative to the page as the user sees it, and
/// the device's list of finishings, whose values are relative to the sheet as it travels through the machine.
///
/// Values in, values out; nothing fails. What is not known comes out as VAL_UNSPECIFIED, or not at all.
namespace OcptImportAndExport {

/// The edge with which a sheet can enter the machine.
enum FeedEdgeRestrictionEnum : int {
    FeedEdgeLongOnly = 1,  // small sheets
    FeedEdgeShortOnly = 2, // large sheets
    FeedEdgeEither = 3,    // up to the class of A4 and Letter
};

/// The device's list for a job, never empty: VAL_CPSS_FINISHING_6250 stands for no finishing. A staple choice
/// always has its place, also as VAL_UNSPECIFIED. staplePositionGiven says that staple is a position and not
/// only a number of staples; the orientation of folds is that of the document where useDocOrientation is set.
OV_FILTER_UTILITIES_API std::vector<DataModelIds::tagValueEnum>
CalculateCpssFinishingsValuesFromDriverFeaturesAndDocSettings(
    DataModelIds::tagValueEnum staple, bool staplePositionGiven, DataModelIds::tagValueEnum holeCount,
    DataModelIds::tagValueEnum holePosition, DataModelIds::tagValueEnum fold, DataModelIds::tagValueEnum bind,
    DataModelIds::tagValueEnum booklet, DataModelIds::tagValueEnum coil, const Dimension& width,
    const Dimension& height, DataModelIds::tagValueEnum orientation, DataModelIds::tagValueEnum bindingEdge,
    DataModelIds::tagValueEnum sides, bool useDocOrientation, DataModelIds::tagValueEnum docOrientation,
    DataModelIds::tagValueEnum docFoldDirection, bool finishingExtraFlag);

/// Where a number of staples goes on the sheet.
OV_FILTER_UTILITIES_API DataModelIds::tagValueEnum
DetermineStaplePosition(DataModelIds::tagValueEnum staple, FeedEdgeRestrictionEnum feedEdge,
                        DataModelIds::tagValueEnum orientation, DataModelIds::tagValueEnum bindingEdge,
                        DataModelIds::tagValueEnum sides);

/// A staple position of the page as one of the sheet.
OV_FILTER_UTILITIES_API DataModelIds::tagValueEnum
LookupStaplePosition(DataModelIds::tagValueEnum staplePosition, DataModelIds::tagValueEnum orientation);

/// Where a number of holes goes on the sheet.
OV_FILTER_UTILITIES_API DataModelIds::tagValueEnum
DetermineHolePunchLocation(DataModelIds::tagValueEnum holeCount, FeedEdgeRestrictionEnum feedEdge,
                           DataModelIds::tagValueEnum orientation, DataModelIds::tagValueEnum bindingEdge,
                           DataModelIds::tagValueEnum sides);

/// The ticket's punching as the driver's features, as far as the device offers them: a position, or a plain
/// number of holes where the ticket asks for the left edge, which is where those go by default. What is not
/// set becomes VAL_UNSPECIFIED.
OV_FILTER_UTILITIES_API void DetermineDataModelHolePunchValuesFromPrintTicketValue(
    DataModelIds::tagValueEnum printTicketValue, bool punchOnSupported, bool holeCountSupported,
    bool holePositionsSupported, bool twoHoleCountSupported, bool threeHoleCountSupported,
    bool fourHoleCountSupported, bool twoHolePositionsSupported, bool threeHolePositionsSupported,
    bool fourHolePositionsSupported, DataModelIds::tagValueEnum& holePunch,
    DataModelIds::tagValueEnum& twoHolePunch, DataModelIds::tagValueEnum& threeHolePunch,
    DataModelIds::tagValueEnum& fourHolePunch);

/// Whether sheets are folded or bound into a booklet, which has no back cover of its own.
OV_FILTER_UTILITIES_API bool BackCoverShouldBeSuppressedDueToFinishingAndLayout(
    DataModelIds::tagValueEnum fold, DataModelIds::tagValueEnum finishingBooklet,
    DataModelIds::tagValueEnum booklet, DataModelIds::tagValueEnum bookletMaking);

// The rules of MediaUtilities.
OV_FILTER_UTILITIES_API DataModelIds::tagValueEnum
GetEffectiveOrientation(DataModelIds::tagValueEnum orientation, DataModelIds::tagValueEnum pageLayout,
                        DataModelIds::tagValueEnum booklet, int width, int height);
OV_FILTER_UTILITIES_API bool DoesNupNeedInternalRotate90(DataModelIds::tagValueEnum pageLayout, int width,
                                                         int height);

} // namespace OcptImportAndExport
