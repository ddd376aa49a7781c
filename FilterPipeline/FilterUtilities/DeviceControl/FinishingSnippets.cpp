#include "DeviceControl/FinishingSnippets.h"

#include "DeviceControl/CommandRow.h"
#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobQuestions.h"

using namespace DataModelIds;

namespace {

constexpr CommandRow noStaple = {VAL_UNSPECIFIED, L"None", L"<< /Staple 0 >> setpagedevice"};
constexpr CommandRow oneStapleOnPortrait = {
    VAL_FINISHING_1_STAPLE, L"Single-Portrait",
    L"<< /Staple 3 /StapleDetails << /Type 1 /StapleLocation (SinglePortrait) >> >> setpagedevice"};
constexpr std::wstring_view multipleStaples =
    L"<< /Staple 3 /StapleDetails << /Type 1 /StapleLocation (Multiple) >> >> setpagedevice";
constexpr CommandRow staples[] = {
    {VAL_FINISHING_1_STAPLE, L"Single-Landscape",
     L"<< /Staple 3 /StapleDetails << /Type 1 /StapleLocation (SingleLandscape) >> >> setpagedevice"},
    {VAL_FINISHING_2_STAPLES, L"Dual-Landscape",
     L"<< /Staple 3 /StapleDetails << /Type 1 /StapleLocation (DualLandscape) >> >> setpagedevice"},
    {VAL_FINISHING_4_STAPLES, L"Multiple", multipleStaples},
    {VAL_FINISHING_MULTIPLE_STAPLES, L"Multiple", multipleStaples},
};

constexpr CommandRow noPunch = {VAL_UNSPECIFIED, L"None", L"%% Punch Off"};
constexpr std::wstring_view threeHoles =
    L"(<<) cvx exec /Punch 4 /PunchDetails (<<) cvx exec /Type 6 /NumHoles 3 "
    L"(>>) cvx exec (>>) cvx exec setpagedevice";
constexpr CommandRow punches[] = {
    {VAL_FINISHING_2_HOLE_PUNCH, L"2-Hole",
     L"(<<) cvx exec /Punch 4 /PunchDetails (<<) cvx exec /Type 6 /NumHoles 2 (>>) cvx exec (>>) cvx exec "
     L"setpagedevice"},
    {VAL_FINISHING_3_HOLE_PUNCH, L"3-Hole", threeHoles},
    {VAL_FINISHING_HOLE_PUNCH_ON, L"3-Hole", threeHoles}, // Deliberate: a plain punch is one of three holes.
    {VAL_FINISHING_4_HOLE_PUNCH, L"4-Hole",
     L"(<<) cvx exec /Punch 4 /PunchDetails (<<) cvx exec /Type 6 /NumHoles 4 (>>) cvx exec (>>) cvx exec "
     L"setpagedevice"},
};

constexpr std::wstring_view foldWithoutStaple =
    L"(<<)cvx exec /Booklet true (>>) cvx exec setpagedevice (<<) cvx exec /BookletDetails (<<) cvx exec "
    L"/Type 2 "
    L"/Staples 0 (>>) cvx exec /LeadingEdge 2 (>>) cvx exec setpagedevice";
constexpr CommandRow booklets[] = {
    {VAL_FINISHING_BOOKLET_FOLD, L"Fold, No Staple", foldWithoutStaple},
    {VAL_FINISHING_BOOKLET_FOLD_STAPLE, L"Fold, Staple",
     L"(<<)cvx exec /Booklet true (>>) cvx exec setpagedevice (<<) cvx exec /BookletDetails (<<) cvx exec "
     L"/Type 2 "
     L"/Staples 2 (>>) cvx exec /LeadingEdge 2 (>>) cvx exec setpagedevice"},
};

constexpr std::wstring_view halfSheetZFold =
    L"<</Fold 3>> setpagedevice << /FoldDetails << /Type 5 /FoldMethod 3 >> >> setpagedevice";
constexpr CommandRow folds[] = {
    {VAL_FINISHING_C_FOLD_PI, L"C Fold",
     L"<</Fold 3>> setpagedevice << /FoldDetails << /Type 5 /FoldMethod 1 >> >> setpagedevice "
     L"<< /LeadingEdge 0 >> setpagedevice"},
    {VAL_FINISHING_Z_FOLD_PI, L"Z Fold",
     L"<</Fold 3>> setpagedevice << /FoldDetails << /Type 5 /FoldMethod 2 >> >> setpagedevice "
     L"<< /LeadingEdge 0 >> setpagedevice"},
    {VAL_FINISHING_Z_FOLD_HALFSHEET_LB, L"Z Fold (Halfsheet)", halfSheetZFold},
    {VAL_FINISHING_Z_FOLD_HALFSHEET_RB, L"Z Fold (Halfsheet)", halfSheetZFold},
    {VAL_FINISHING_BI_FOLD_MULTI_PO, L"Bi-Fold Multiple Sheets", foldWithoutStaple},
};

void Add(CXString& setup, const CommandRow* row, std::wstring_view feature) {
    if (row != nullptr) InstructionText::AppendSnippet(setup, feature, row->option, row->command);
}

const CommandRow* Staple(tagValueEnum value, bool isPortrait) {
    if (isPortrait && value == oneStapleOnPortrait.value) return &oneStapleOnPortrait;
    const CommandRow* const row = FindRow(staples, value);
    return row == nullptr ? &noStaple : row;
}

const CommandRow* Punch(tagValueEnum value) {
    const CommandRow* const row = FindRow(punches, value);
    return row == nullptr ? &noPunch : row;
}

} // namespace

void FinishingSnippets::Append(CXString& setup, const JobQuestions& job, bool isPortrait) {
    Add(setup, Staple(job.Choice(FEAT_FINISHING_STAPLE), isPortrait), L"Stapling");
    Add(setup, Punch(job.Choice(FEAT_FINISHING_HOLE_PUNCH)), L"Punching");
    Add(setup, FindRow(booklets, job.Choice(FEAT_FINISHING_BOOKLET)), L"Booklet");
    Add(setup, FindRow(folds, job.Choice(FEAT_FINISHING_FOLD)), L"Fold");
}
