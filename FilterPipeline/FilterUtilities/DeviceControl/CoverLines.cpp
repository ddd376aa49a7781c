#include "DeviceControl/CoverLines.h"

#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobQuestions.h"
#include "DeviceControl/MerlinMediaTables.h"

using namespace DataModelIds;
using InstructionText::Append;

namespace {

struct Covers {
    bool front;
    bool back;
};

/// A back cover that the finisher would fold away counts as none.
Covers CoversOf(const JobQuestions& job) {
    switch (job.Choice(FEAT_COVER_OPTIONS)) {
    case VAL_COVER_FRONT_ONLY:
        return {true, false};
    case VAL_COVER_BACK_ONLY:
        return {false, true};
    case VAL_COVER_BOTH_SAME:
    case VAL_COVER_BOTH_DIFFERENT:
        return {true, !job.IsBackCoverSuppressed()};
    default:
        return {false, false};
    }
}

std::wstring_view PrefixOf(const Covers& covers) {
    if (!covers.back) return L"@PJL COMMENT OID_ATT_FIRST_PAGE_";
    return covers.front ? L"@PJL COMMENT OID_ATT_FIRSTLAST_PAGE_" : L"@PJL COMMENT OID_ATT_LAST_PAGE_";
}

/// Of the cover's material, else of the job's.
tagValueEnum MediaChoice(const JobQuestions& job, tagFeatureEnum cover, tagFeatureEnum feature) {
    const tagValueEnum own = job.Choice({cover, FEAT_MEDIA_COL, feature});
    return own != VAL_UNSPECIFIED ? own : job.Choice({FEAT_MEDIA_COL, feature});
}

void AppendSize(CXString& pjl, std::wstring_view prefix, const JobQuestions& job, tagFeatureEnum cover) {
    Dimension width;
    Dimension height;
    if (!job.Features().GetOutputSize(cover, width, height) && !job.Features().GetOutputSize(width, height))
        return;
    const auto millimeters = [](const Dimension& length) {
        return CXString(length.GetStringValue(Dimension::Millimeter, 0, Number::toNearest, false, false));
    };
    Append(pjl, prefix, L"MEDIA_SIZE \"", millimeters(width), L' ', millimeters(height), L"\";\r\n");
}

} // namespace

void CoverLines::Append(CXString& pjl, const JobQuestions& job) {
    if (job.AreCoversInTicket()) return;
    const Covers covers = CoversOf(job);
    if (!covers.front && !covers.back) return;
    const tagFeatureEnum cover = covers.front ? FEAT_FRONT_COVER : FEAT_BACK_COVER;
    const std::wstring_view prefix = PrefixOf(covers);
    const bool isBlank = job.Choice({cover, FEAT_COVER_TYPE}) == VAL_COVER_TYPE_BLANK;
    InstructionText::Append(pjl, prefix, L"IMAGED ", isBlank ? L"FALSE;\r\n" : L"TRUE;\r\n");
    InstructionText::Append(pjl, prefix, L"MEDIA_TYPE \"",
                            TextOf(MerlinMediaTables::mediaTypes,
                                   MediaChoice(job, cover, FEAT_EFFECTIVE_MEDIA_TYPE), L"System-Default"),
                            L"\";\r\n");
    InstructionText::Append(
        pjl, prefix, L"MEDIA_COLOR \"",
        TextOf(MerlinMediaTables::mediaColors, MediaChoice(job, cover, FEAT_MEDIA_COLOR), L"Unspecified"),
        L"\";\r\n");
    AppendSize(pjl, prefix, job, cover);
}
