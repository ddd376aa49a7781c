#include "Support/Rows.h"

#include <Finishing/OcptImportAndExport.h>
#include <LowLevelFacilities/Numbers/Dimension.h>

#include <gtest/gtest.h>

#include <set>
#include <vector>

using namespace DataModelIds;
using namespace OcptImportAndExport;

namespace {

constexpr tagValueEnum none = VAL_UNSPECIFIED;
constexpr tagValueEnum portrait = VAL_MS_ORIENTATION_PORTRAIT;
constexpr tagValueEnum landscape = VAL_MS_ORIENTATION_LANDSCAPE;
constexpr tagValueEnum flipLong = VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE;
constexpr tagValueEnum flipShort = VAL_SIDES_TWO_SIDED_FLIP_SHORT_EDGE;
constexpr tagValueEnum oneSided = VAL_SIDES_ONE_SIDED;

// What a job asks for; an A4 job that asks for nothing unless told.
struct Job {
    tagValueEnum staple = none;
    bool staplePositionGiven = false;
    tagValueEnum holeCount = none;
    tagValueEnum holePosition = none;
    tagValueEnum fold = none;
    tagValueEnum bind = none;
    tagValueEnum booklet = none;
    tagValueEnum coil = none;
    Dimension width = {210, Dimension::Millimeter};
    Dimension height = {297, Dimension::Millimeter};
    tagValueEnum orientation = portrait;
    tagValueEnum bindingEdge = none;
    tagValueEnum sides = none;
    bool useDocOrientation = false;
    tagValueEnum docOrientation = none;
    tagValueEnum docFoldDirection = none;
    bool extra = false;

    std::vector<int> List() const {
        const auto values = CalculateCpssFinishingsValuesFromDriverFeaturesAndDocSettings(
            staple, staplePositionGiven, holeCount, holePosition, fold, bind, booklet, coil, width, height,
            orientation, bindingEdge, sides, useDocOrientation, docOrientation, docFoldDirection, extra);
        return {values.begin(), values.end()};
    }
};

using List = std::vector<int>;

// A sheet feeds by the short edge only, by the long edge only, or by either: three punched holes and two
// staples bound at the short edge tell the three apart.
TEST(OcptImportAndExport, TellsTheFeedEdgeFromTheSheet) {
    constexpr auto mm = Dimension::Millimeter;
    constexpr auto inch = Dimension::Inch;
    constexpr auto micron = Dimension::Micron;
    const List shortOnly = {6259, 6267, 6271};
    const List either = {6259, 6266, 6271};
    const List longOnly = {6258, 6266, 6271};
    const Rows<Dimension, Dimension, List> cases{
        {{297, mm}, {420, mm}, shortOnly},
        {{210, mm}, {297, mm}, either},
        {{148, mm}, {210, mm}, longOnly},
        {{8.5, inch}, {11, inch}, either},
        {{8.5, inch}, {14, inch}, shortOnly},
        {{5.5, inch}, {8.5, inch}, longOnly},
        {{297, mm}, {210, mm}, either},
        {{420, mm}, {297, mm}, shortOnly},
        {{209995, micron}, {296990, micron}, either}, // rounded to the tenth
        {{209900, micron}, {297000, micron}, longOnly},
        {{210, mm}, {297.1, mm}, shortOnly},
        {{209.96, mm}, {297.04, mm}, either},
        {{7.25, inch}, {10.5, inch}, longOnly},
        {{}, {}, longOnly},
    };
    for (const auto& row : cases) {
        const auto& [width, height, list] = row;
        Job job;
        job.width = width;
        job.height = height;
        job.bindingEdge = VAL_BINDING_EDGE_SHORT;
        job.staple = VAL_FINISHING_2_STAPLES;
        job.holeCount = VAL_FINISHING_3_HOLE_PUNCH;
        EXPECT_EQ(job.List(), list) << &row - cases.data();
    }
}

TEST(OcptImportAndExport, ListsFinishingsInTheDevicesOrder) {
    EXPECT_EQ(Job().List(), List{6250});

    Job all;
    all.staple = VAL_FINISHING_1_STAPLE_TOP_RIGHT;
    all.staplePositionGiven = true;
    all.holeCount = VAL_FINISHING_4_HOLE_PUNCH;
    all.holePosition = VAL_FINISHING_HOLE_PUNCH_PRLB;
    all.fold = VAL_FINISHING_C_FOLD_PO;
    all.bind = VAL_FINISHING_BIND_2;
    all.booklet = VAL_FINISHING_BOOKLET_FOLD_STAPLE;
    all.coil = VAL_FINISHING_COIL_PUNCH_PTLR;
    all.extra = true;
    EXPECT_EQ(all.List(), (List{6256, 6269, 6272, 6283, 6276, 6277, 6252, 6287}));
    all.orientation = landscape;
    EXPECT_EQ(all.List(), (List{6254, 6267, 6272, 6283, 6276, 6277, 6252, 6289}));

    // What has no place on the sheet: a staple still takes one in the list, all else is left out.
    Job unknown;
    unknown.staple = VAL_FINISHING_NO_STAPLE;
    unknown.holeCount = VAL_FINISHING_NO_STAPLE;
    unknown.holePosition = unknown.fold = unknown.bind = unknown.booklet = unknown.coil =
        VAL_FINISHING_BOOKLET_NO_FINISHING;
    EXPECT_EQ(unknown.List(), List{VAL_UNSPECIFIED});
    unknown.staple = none;
    EXPECT_EQ(unknown.List(), List{6250});
    // A position without a number of holes is nothing to punch.
    unknown.holeCount = none;
    unknown.holePosition = VAL_FINISHING_HOLE_PUNCH_PLLT;
    EXPECT_EQ(unknown.List(), List{6250});
    unknown.extra = true;
    EXPECT_EQ(unknown.List(), List{6252});
    // An orientation that is neither turns holes as landscape does, but loses staple positions.
    unknown.orientation = none;
    unknown.holeCount = VAL_FINISHING_HOLE_PUNCH_ON;
    unknown.staple = VAL_FINISHING_2_STAPLES_LEFT;
    unknown.staplePositionGiven = true;
    EXPECT_EQ(unknown.List(), (List{VAL_UNSPECIFIED, 6268, 6299, 6252}));
}

TEST(OcptImportAndExport, PutsStaplesWithoutAPositionByEdgeAndBinding) {
    constexpr tagValueEnum automatic = VAL_BINDING_EDGE_AUTOMATIC;
    constexpr tagValueEnum longEdge = VAL_BINDING_EDGE_LONG;
    constexpr tagValueEnum shortEdge = VAL_BINDING_EDGE_SHORT;
    constexpr auto odd = static_cast<tagValueEnum>(1);
    constexpr auto noEdge = static_cast<FeedEdgeRestrictionEnum>(4);
    const struct {
        FeedEdgeRestrictionEnum feedEdge;
        tagValueEnum bindingEdge, sides;
        // Portrait and landscape, for two, four and multiple staples; 5001 is nowhere.
        int two[2], four[2], multiple[2];
    } cases[] = {
        {FeedEdgeLongOnly, shortEdge, flipShort, {6258, 6258}, {6291, 6291}, {6295, 6295}},
        {FeedEdgeShortOnly, longEdge, flipLong, {6259, 6261}, {6292, 6294}, {6296, 6298}},
        {FeedEdgeEither, shortEdge, oneSided, {6259, 6261}, {6291, 6291}, {6296, 6298}},
        {FeedEdgeEither, longEdge, flipShort, {6258, 6258}, {6291, 6291}, {6295, 6295}},
        {FeedEdgeEither, automatic, oneSided, {6258, 6258}, {6291, 6291}, {6295, 6295}},
        {FeedEdgeEither, automatic, flipLong, {6258, 6258}, {6291, 6291}, {6295, 6295}},
        {FeedEdgeEither, automatic, flipShort, {6259, 6261}, {6291, 6291}, {6296, 6298}},
        {FeedEdgeEither, none, flipShort, {6259, 6261}, {6291, 6291}, {6296, 6298}},
        {FeedEdgeEither, none, none, {6258, 6258}, {6291, 6291}, {6295, 6295}},
        {FeedEdgeEither, odd, flipShort, {5001, 5001}, {6291, 6291}, {5001, 5001}},
        {noEdge, longEdge, flipLong, {5001, 5001}, {6291, 6291}, {5001, 5001}},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(&expected - cases);
        for (const bool isLandscape : {false, true}) {
            const auto position = [&](tagValueEnum staple) -> int {
                return DetermineStaplePosition(staple, expected.feedEdge, isLandscape ? landscape : portrait,
                                               expected.bindingEdge, expected.sides);
            };
            EXPECT_EQ(position(VAL_FINISHING_2_STAPLES), expected.two[isLandscape]);
            EXPECT_EQ(position(VAL_FINISHING_4_STAPLES), expected.four[isLandscape]);
            EXPECT_EQ(position(VAL_FINISHING_MULTIPLE_STAPLES), expected.multiple[isLandscape]);
            EXPECT_EQ(position(VAL_FINISHING_1_STAPLE), isLandscape ? 6255 : 6254);
            EXPECT_EQ(position(VAL_FINISHING_NO_STAPLE), 5001);
        }
    }
}

// A position on the page, of a kind that has four, takes the four of the sheet, each once, and another one
// when the page is turned.
TEST(OcptImportAndExport, TurnsStaplePositionsWithThePage) {
    const Rows<std::vector<int>, std::set<int>> kinds{
        {{8023, 8024, 8025, 8026}, {6254, 6255, 6256, 6257}},
        {{8031, 8032, 8033, 8034}, {6258, 6259, 6260, 6261}},
        {{8027, 8028, 8029, 8030}, {6262, 6263, 6264, 6265}},
        {{10242, 10243, 10244, 10245}, {6291, 6292, 6293, 6294}},
    };
    for (const auto& [positions, values] : kinds) {
        std::set<int> upright;
        std::set<int> turned;
        for (const int position : positions) {
            const auto value = static_cast<tagValueEnum>(position);
            upright.insert(LookupStaplePosition(value, portrait));
            turned.insert(LookupStaplePosition(value, landscape));
            EXPECT_NE(LookupStaplePosition(value, portrait), LookupStaplePosition(value, landscape));
            EXPECT_EQ(LookupStaplePosition(value, none), none);
        }
        EXPECT_EQ(upright, values);
        EXPECT_EQ(turned, values);
    }
    EXPECT_EQ(LookupStaplePosition(VAL_FINISHING_1_STAPLE_BOTTOM_LEFT, landscape), 6257);
    EXPECT_EQ(LookupStaplePosition(VAL_FINISHING_2_STAPLES_LEFT, landscape), 6261);
    EXPECT_EQ(LookupStaplePosition(VAL_FINISHING_1_STAPLE, portrait), none);
}

TEST(OcptImportAndExport, PutsHolesWithoutAPositionByEdgeAndBinding) {
    const Rows<tagValueEnum, FeedEdgeRestrictionEnum, tagValueEnum, tagValueEnum, int, int> cases{
        {VAL_FINISHING_2_HOLE_PUNCH, FeedEdgeShortOnly, VAL_BINDING_EDGE_LONG, flipLong, 6267, 6268},
        {VAL_FINISHING_2_HOLE_PUNCH, FeedEdgeEither, VAL_BINDING_EDGE_SHORT, oneSided, 6267, 6268},
        {VAL_FINISHING_2_HOLE_PUNCH, FeedEdgeEither, none, flipShort, 6267, 6268},
        {VAL_FINISHING_2_HOLE_PUNCH, FeedEdgeEither, none, flipLong, 6266, 6266},
        {VAL_FINISHING_2_HOLE_PUNCH, FeedEdgeEither, VAL_BINDING_EDGE_LONG, flipShort, 6266, 6266},
        {VAL_FINISHING_2_HOLE_PUNCH, FeedEdgeLongOnly, VAL_BINDING_EDGE_SHORT, flipShort, 6266, 6266},
        {VAL_FINISHING_3_HOLE_PUNCH, FeedEdgeEither, VAL_BINDING_EDGE_SHORT, flipShort, 6266, 6266},
        {VAL_FINISHING_4_HOLE_PUNCH, FeedEdgeShortOnly, none, none, 6267, 6268},
        {VAL_FINISHING_HOLE_PUNCH_ON, FeedEdgeShortOnly, none, none, 6267, 6268},
    };
    for (const auto& row : cases) {
        const auto& [count, feedEdge, bindingEdge, sides, upright, turned] = row;
        const auto place = [&, &count = count, &feedEdge = feedEdge, &bindingEdge = bindingEdge,
                            &sides = sides](tagValueEnum orientation) {
            return DetermineHolePunchLocation(count, feedEdge, orientation, bindingEdge, sides);
        };
        EXPECT_EQ(place(portrait), upright) << &row - cases.data();
        EXPECT_EQ(place(landscape), turned) << &row - cases.data();
        EXPECT_EQ(place(none), upright) << &row - cases.data();
    }
}

TEST(OcptImportAndExport, FoldsHalfSheetsByTheDocument) {
    // Plain; under the document's portrait and its landscape, straight and reversed.
    const Rows<tagValueEnum, int, int, int, int, int> cases{
        {VAL_FINISHING_Z_FOLD_HALFSHEET_LB, 6273, 6273, 6274, 6273, 6273},
        {VAL_FINISHING_Z_FOLD_HALFSHEET_RB, 6274, 6274, 6274, 6274, 6274},
        {VAL_FINISHING_Z_FOLD_HALFSHEET_TB, 6274, 6274, 6274, 6273, 6274},
        {VAL_FINISHING_Z_FOLD_HALFSHEET_BB, 6274, 6273, 6273, 6274, 6273},
        {VAL_FINISHING_Z_FOLD_PI, 6280, 6280, 6280, 6280, 6280},
    };
    for (const auto& [fold, plain, portraitPlain, portraitReversed, landscapePlain, landscapeReversed] :
         cases) {
        Job job;
        job.fold = fold;
        const auto list = [&](bool useDocument, tagValueEnum orientation, tagValueEnum direction) {
            job.useDocOrientation = useDocument;
            job.docOrientation = orientation;
            job.docFoldDirection = direction;
            // The orientation of the pages has no say.
            job.orientation = portrait;
            List upright = job.List();
            job.orientation = landscape;
            EXPECT_EQ(job.List(), upright);
            return upright;
        };
        EXPECT_EQ(list(false, landscape, VAL_DOC_FOLD_REVERSED), List{plain});
        EXPECT_EQ(list(true, portrait, none), List{portraitPlain});
        EXPECT_EQ(list(true, portrait, VAL_DOC_FOLD_REVERSED), List{portraitReversed});
        EXPECT_EQ(list(true, landscape, none), List{landscapePlain});
        EXPECT_EQ(list(true, none, VAL_DOC_FOLD_REVERSED), List{landscapeReversed});
    }
}

TEST(OcptImportAndExport, PunchesForACoil) {
    // height: millimetres
    const Rows<tagValueEnum, int, int, int, int> cases{
        {VAL_FINISHING_COIL_PUNCH_PTLR, 297, 6287, 6289, 6289},
        {VAL_FINISHING_COIL_PUNCH_PBLL, 297, 6288, 6290, 6290},
        {VAL_FINISHING_COIL_PUNCH_PLLT, 420, 6289, 6288, 6288},
        {VAL_FINISHING_COIL_PUNCH_PRLB, 297, 6290, 6287, 6287},
        {VAL_FINISHING_COIL_PUNCH_ON, 297, 6289, 6289, 6289},
        {VAL_FINISHING_COIL_PUNCH_ON, 420, 6287, 6288, 6287},
    };
    for (const auto& row : cases) {
        const auto& [coil, height, upright, turned, neither] = row;
        Job job;
        job.coil = coil;
        job.height = Dimension(height, Dimension::Millimeter);
        EXPECT_EQ(job.List(), List{upright}) << &row - cases.data();
        job.orientation = landscape;
        EXPECT_EQ(job.List(), List{turned}) << &row - cases.data();
        job.orientation = none;
        EXPECT_EQ(job.List(), List{neither}) << &row - cases.data();
    }
}

// All that a device can offer, for each number of holes: what decides is told in words and not in a copy of
// the table.
TEST(OcptImportAndExport, ImportsPunchingAsFarAsTheDeviceOffersIt) {
    const int positionOfEdge[] = {8036, 8035, 8037, 8038}; // top, left, bottom, right
    for (int offered = 0; offered < 1 << 9; ++offered) {
        const auto has = [&](int flag) { return (offered >> flag & 1) != 0; };
        const auto import = [&](int ticketValue) {
            std::vector<tagValueEnum> features(4, static_cast<tagValueEnum>(1));
            DetermineDataModelHolePunchValuesFromPrintTicketValue(
                static_cast<tagValueEnum>(ticketValue), has(0), has(1), has(2), has(3), has(4), has(5),
                has(6), has(7), has(8), features[0], features[1], features[2], features[3]);
            return List(features.begin(), features.end());
        };
        EXPECT_EQ(import(VAL_MS_PUNCH_NONE), (List{none, none, none, none}));
        EXPECT_EQ(import(VAL_FINISHING_2_HOLE_PUNCH), (List{none, none, none, none}));
        EXPECT_EQ(import(VAL_MS_PUNCH_ON), (List{has(0) ? 10669 : none, none, none, none}));
        for (int kind = 0; kind < 3; ++kind) { // two, three and four holes
            const bool hasPositions = has(2) && has(6 + kind);
            const bool hasPlainCount = has(1) && has(3 + kind);
            for (int edge = 0; edge < 4; ++edge) {
                List expected = {none, none, none, none};
                if (hasPositions)
                    expected[1 + kind] = positionOfEdge[edge];
                else if (edge == 1 && hasPlainCount)
                    expected[0] = VAL_FINISHING_2_HOLE_PUNCH + kind;
                EXPECT_EQ(import(VAL_MS_PUNCH_DUAL_TOP + 4 * kind + edge), expected)
                    << "offered " << offered << ", kind " << kind << ", edge " << edge;
            }
        }
    }
}

TEST(OcptImportAndExport, KeepsTheBackCoverUnlessThereIsABooklet) {
    const auto isSuppressed = BackCoverShouldBeSuppressedDueToFinishingAndLayout;
    EXPECT_FALSE(isSuppressed(none, none, none, none));
    EXPECT_FALSE(isSuppressed(VAL_FINISHING_BI_FOLD_MULTI_PI, VAL_FINISHING_BOOKLET_NO_FINISHING,
                              VAL_BOOKLET_OFF, VAL_BOOKLET_ON));
    EXPECT_TRUE(isSuppressed(VAL_FINISHING_BI_FOLD_MULTI_PO, none, none, none));
    EXPECT_TRUE(isSuppressed(none, VAL_FINISHING_BOOKLET_FOLD, none, none));
    EXPECT_TRUE(isSuppressed(none, VAL_FINISHING_BOOKLET_FOLD_STAPLE, none, none));
    EXPECT_TRUE(isSuppressed(none, none, VAL_BOOKLET_ON, none));
    EXPECT_TRUE(isSuppressed(none, none, none, VAL_BOOKLET_MAKING_ON));
}

} // namespace
