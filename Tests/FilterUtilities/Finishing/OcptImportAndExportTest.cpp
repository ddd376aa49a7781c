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
    const List shortOnly = {6259, 6267, 6271};
    const List either = {6259, 6266, 6271};
    const List longOnly = {6258, 6266, 6271};
    // millimeters, rounded to the tenth
    const Rows<double, double, List> cases{
        {297, 420, shortOnly},  {210, 297, either},      {148, 210, longOnly},
        {420, 297, shortOnly},  {297, 210, either},      {209.96, 297.04, either},
        {209.9, 297, longOnly}, {210, 297.1, shortOnly}, {0, 0, longOnly},
    };
    for (const auto& [width, height, list] : cases) {
        Job job;
        job.width = Dimension(width, Dimension::Millimeter);
        job.height = Dimension(height, Dimension::Millimeter);
        job.bindingEdge = VAL_BINDING_EDGE_SHORT;
        job.staple = VAL_FINISHING_2_STAPLES;
        job.holeCount = VAL_FINISHING_3_HOLE_PUNCH;
        EXPECT_EQ(job.List(), list) << width << " x " << height;
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

    // What has no place on the sheet: a staple still takes one in the list, all else is left out, as is a
    // position without a number of holes.
    Job unknown;
    unknown.staple = VAL_FINISHING_NO_STAPLE;
    unknown.fold = unknown.bind = unknown.booklet = unknown.coil = VAL_FINISHING_BOOKLET_NO_FINISHING;
    unknown.holePosition = VAL_FINISHING_HOLE_PUNCH_PLLT;
    EXPECT_EQ(unknown.List(), List{VAL_UNSPECIFIED});
    unknown.staple = none;
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
        {FeedEdgeEither, automatic, flipLong, {6258, 6258}, {6291, 6291}, {6295, 6295}},
        {FeedEdgeEither, automatic, flipShort, {6259, 6261}, {6291, 6291}, {6296, 6298}},
        {FeedEdgeEither, none, flipShort, {6259, 6261}, {6291, 6291}, {6296, 6298}},
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
        for (const tagValueEnum orientation : {portrait, landscape}) {
            std::set<int> found;
            for (const int position : positions)
                found.insert(LookupStaplePosition(static_cast<tagValueEnum>(position), orientation));
            EXPECT_EQ(found, values);
        }
    }
    EXPECT_EQ(LookupStaplePosition(VAL_FINISHING_1_STAPLE_BOTTOM_LEFT, landscape), 6257);
    EXPECT_EQ(LookupStaplePosition(VAL_FINISHING_2_STAPLES_LEFT, landscape), 6261);
    EXPECT_EQ(LookupStaplePosition(VAL_FINISHING_2_STAPLES_LEFT, none), none);
    EXPECT_EQ(LookupStaplePosition(VAL_FINISHING_1_STAPLE, portrait), none);
}

TEST(OcptImportAndExport, PutsHolesWithoutAPositionByEdgeAndBinding) {
    constexpr tagValueEnum two = VAL_FINISHING_2_HOLE_PUNCH;
    const Rows<tagValueEnum, FeedEdgeRestrictionEnum, tagValueEnum, tagValueEnum, bool> cases{
        {two, FeedEdgeShortOnly, VAL_BINDING_EDGE_LONG, flipLong, true},
        {two, FeedEdgeEither, VAL_BINDING_EDGE_SHORT, oneSided, true},
        {two, FeedEdgeEither, none, flipShort, true},
        {two, FeedEdgeEither, VAL_BINDING_EDGE_LONG, flipShort, false},
        {two, FeedEdgeLongOnly, VAL_BINDING_EDGE_SHORT, flipShort, false},
        {VAL_FINISHING_3_HOLE_PUNCH, FeedEdgeEither, VAL_BINDING_EDGE_SHORT, flipShort, false},
        {VAL_FINISHING_4_HOLE_PUNCH, FeedEdgeShortOnly, none, none, true},
    };
    for (const auto& row : cases) {
        const auto& [count, feedEdge, bindingEdge, sides, isAtTop] = row;
        SCOPED_TRACE(&row - cases.data());
        EXPECT_EQ(DetermineHolePunchLocation(count, feedEdge, none, bindingEdge, sides),
                  isAtTop ? 6267 : 6266);
        EXPECT_EQ(DetermineHolePunchLocation(count, feedEdge, landscape, bindingEdge, sides),
                  isAtTop ? 6268 : 6266);
    }
}

TEST(OcptImportAndExport, FoldsHalfSheetsByTheDocument) {
    // Plain; under the document's portrait and its landscape, straight and reversed.
    const Rows<tagValueEnum, std::vector<int>> cases{
        {VAL_FINISHING_Z_FOLD_HALFSHEET_LB, {6273, 6273, 6274, 6273, 6273}},
        {VAL_FINISHING_Z_FOLD_HALFSHEET_RB, {6274, 6274, 6274, 6274, 6274}},
        {VAL_FINISHING_Z_FOLD_HALFSHEET_TB, {6274, 6274, 6274, 6273, 6274}},
        {VAL_FINISHING_Z_FOLD_HALFSHEET_BB, {6274, 6273, 6273, 6274, 6273}},
        {VAL_FINISHING_Z_FOLD_PI, {6280, 6280, 6280, 6280, 6280}},
    };
    for (const auto& [fold, expected] : cases) {
        Job job;
        job.fold = fold;
        const auto folded = [&](bool useDocument, tagValueEnum orientation, tagValueEnum direction) {
            job.useDocOrientation = useDocument;
            job.docOrientation = orientation;
            job.docFoldDirection = direction;
            return job.List().at(0);
        };
        EXPECT_EQ((List{folded(false, landscape, VAL_DOC_FOLD_REVERSED), folded(true, portrait, none),
                        folded(true, portrait, VAL_DOC_FOLD_REVERSED), folded(true, landscape, none),
                        folded(true, none, VAL_DOC_FOLD_REVERSED)}),
                  expected);
    }
}

TEST(OcptImportAndExport, PunchesForACoil) {
    // height: millimetres; upright, turned, and with no orientation
    const Rows<tagValueEnum, int, List> cases{
        {VAL_FINISHING_COIL_PUNCH_PTLR, 297, {6287, 6289, 6289}},
        {VAL_FINISHING_COIL_PUNCH_PBLL, 297, {6288, 6290, 6290}},
        {VAL_FINISHING_COIL_PUNCH_PLLT, 420, {6289, 6288, 6288}},
        {VAL_FINISHING_COIL_PUNCH_PRLB, 297, {6290, 6287, 6287}},
        {VAL_FINISHING_COIL_PUNCH_ON, 297, {6289, 6289, 6289}},
        {VAL_FINISHING_COIL_PUNCH_ON, 420, {6287, 6288, 6287}},
    };
    for (const auto& [coil, height, expected] : cases) {
        Job job;
        job.coil = coil;
        job.height = Dimension(height, Dimension::Millimeter);
        List punched;
        for (const tagValueEnum orientation : {portrait, landscape, none}) {
            job.orientation = orientation;
            punched.push_back(job.List().at(0));
        }
        EXPECT_EQ(punched, expected) << coil << " on " << height;
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
