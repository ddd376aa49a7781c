#include "DeviceControl/KestrelInstructions.h"

#include "DeviceControl/CommandRow.h"
#include "DeviceControl/FinishingSnippets.h"
#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobAttributeLines.h"
#include "DeviceControl/JobQuestions.h"
#include "DeviceControl/KestrelColor.h"
#include "DeviceControl/ProductPdlData.h"

using namespace DataModelIds;
using InstructionText::Append;
using InstructionText::AppendSnippet;

namespace {

constexpr ValueText qualities[] = {
    {VAL_QUALITY_ENHANCED, L"enhanced"},       {VAL_QUALITY_STANDARD, L"standard"},
    {VAL_QUALITY_PHOTO, L"photographic"},      {VAL_QUALITY_FAST_COLOR, L"fast-color"},
    {VAL_QUALITY_TONER_SAVER, L"toner-saver"},
};

// Deliberate: the option's line opens the dictionary that the command closes.
constexpr CommandRow trappings[] = {
    {VAL_UNSPECIFIED, L"ON\n<<",
     L"/PostRenderingEnhance true /PostRenderingEnhanceDetails currentpagedevice 1 index get 1 dict copy dup "
     L"/Type 33 put dup /ColorTrapping true put\n    /PostRenderingEnhance true /PostRenderingEnhanceDetails "
     L"currentpagedevice 1 index get 1 dict copy dup /Type 33 put dup /BlackTrapping true put\n"
     L">> setpagedevice"},
    {VAL_TRAPPING_OFF, L"OFF\n<<",
     L"/PostRenderingEnhance currentpagedevice 1 index get 1 dict copy dup /Type 33 put dup /ColorTrapping "
     L"false "
     L"put\n    /PostRenderingEnhance currentpagedevice 1 index get 1 dict copy dup /Type 33 put dup "
     L"/BlackTrapping false put\n>> setpagedevice"},
    {VAL_TRAPPING_BLACK_ONLY, L"BLACK_ONLY\n<<",
     L"/PostRenderingEnhance currentpagedevice 1 index get 1 dict copy dup /Type 33 put dup /ColorTrapping "
     L"false "
     L"put\n    /PostRenderingEnhance true /PostRenderingEnhanceDetails currentpagedevice 1 index get 1 dict "
     L"copy dup /Type 33 put dup /BlackTrapping true put\n>> setpagedevice"},
};

constexpr CommandRow jobOffsets[] = {
    {VAL_JOB_OFFSET_NONE, L"none\n<<", L"/Jog 0\n>> setpagedevice"},
    {VAL_JOB_OFFSET_SET, L"offset-set\n<<", L"/Jog 3\n>> setpagedevice"},
};

constexpr CommandRow corrections[] = {
    {VAL_SOURCE_RGB_NONE, L"None", L"orvel$VirtualColorDevice /ColorTransform /None put"},
    {VAL_SOURCE_RGB_BLACK_AND_WHITE, L"Black-and-White",
     L"orvel$VirtualColorDevice /ColorTransform /Gray put\n orvel$VirtualColorDevice /Type 1 put"},
    {VAL_ADJUST_COLOR_VIVID, L"Vivid-Color",
     L"orvel$VirtualColorDevice /ColorTransform /Automatic put\n userdict /orvel$BaseSaturation 0.4 put"},
    {VAL_ADJUST_COLOR_SIMULATE_LCD_DEPRECATED, L"Simulate-LCD-Display",
     L"orvel$VirtualColorDevice /ColorTransform /Display-LCD put"},
    {VAL_ADJUST_COLOR_SIMULATE_SRGB_DEPRECATED, L"Simulate-sRGB-Display",
     L"orvel$VirtualColorDevice /ColorTransform /Display-sRGB put"},
};
constexpr CommandRow automaticCorrection = {VAL_UNSPECIFIED, L"Automatic",
                                            L"orvel$VirtualColorDevice /ColorTransform /Automatic put"};

struct Adjustment {
    tagFeatureEnum feature;
    std::wstring_view name;
    std::wstring_view before; // the number
    std::wstring_view behind;
};
constexpr Adjustment adjustments[] = {
    {FEAT_LIGHTNESS, L"OVLLightness", L"orvel$Transform /Lightness ", L" 100 div put"},
    {FEAT_CONTRAST, L"OVLContrast", L"orvel$Transform /Contrast ", L" 100 div put"},
    {FEAT_SATURATION, L"OVLSaturation", L"orvel$Transform /Saturation ", L" 100 div put"},
    {FEAT_COLORBALANCE_CYAN_RED, L"OVLCyanRed", L"orvel$Transform /CastCyan ", L" -100 div put"},
    {FEAT_COLORBALANCE_MAGENTA_GREEN, L"OVLMagentaGreen", L"orvel$Transform /CastMagenta ", L" -100 div put"},
    {FEAT_COLORBALANCE_YELLOW_BLUE, L"OVLYellowBlue", L"orvel$Transform /CastYellow ", L" -100 div put"},
};

void AppendQuality(CXString& pjl, const JobQuestions& job, const ProductPdlData& product) {
    const ValueText* const row = FindRow(qualities, job.Choice(FEAT_PRINT_QUALITY_LEVEL));
    if (row != nullptr) pjl += product.Find(L"print-quality-level", row->text, {}, {}, VAL_PDL_POSTSCRIPT);
}

void AppendRow(CXString& setup, const CommandRow* row, std::wstring_view feature) {
    if (row != nullptr) AppendSnippet(setup, feature, row->option, row->command);
}

void AppendTrapping(CXString& setup, const JobQuestions& job) {
    const tagValueEnum value = job.Choice(FEAT_TRAPPING);
    AppendRow(setup, FindRow(trappings, value == VAL_TRAPPING_ON ? VAL_UNSPECIFIED : value), L"Trapping");
}

tagValueEnum ColorSelection(const JobQuestions& job) {
    return job.Choice(FEAT_COLOR_EFFECTS) == VAL_COLOR_EFFECTS_GRAYSCALE
               ? VAL_SOURCE_RGB_BLACK_AND_WHITE
               : job.Choice(FEAT_DISPLAY_COLOR_CORRECTION);
}

void AppendColorMode(CXString& pjl, tagValueEnum selection) {
    if (selection == VAL_UNSPECIFIED) return;
    Append(pjl, L"@PJL COMMENT OID_ATT_COLOR_MODE OID_VAL_COLOR_MODE_",
           selection == VAL_SOURCE_RGB_BLACK_AND_WHITE ? L"BLACK_WHITE;\n"
           : selection == VAL_SOURCE_RGB_NONE          ? L"NONE;\n"
                                                       : L"AUTOMATIC;\n");
}

void AppendCorrection(CXString& setup, const JobQuestions& job, tagValueEnum selection) {
    if (selection == VAL_CUSTOM_COLOR_CORRECTION) {
        KestrelColor::AppendCustom(setup, job);
        return;
    }
    const CommandRow* const row = FindRow(corrections, selection);
    AppendRow(setup, row == nullptr ? &automaticCorrection : row, L"Color-Correction");
}

void AppendAdjustments(CXString& setup, const JobQuestions& job) {
    for (const Adjustment& row : adjustments) {
        const std::optional<int> value = job.Integer(row.feature);
        if (!value) continue;
        const InstructionText::Decimal number(*value);
        InstructionText::BeginSnippet(setup, row.name, L' ', number);
        Append(setup, row.before, number, row.behind);
        InstructionText::EndSnippet(setup);
    }
}

} // namespace

void KestrelInstructions::Generate(CXString& pjl, CXString& setup, const JobQuestions& job,
                                   const ProductPdlData& product) {
    JobAttributeLines lines(pjl, job);
    const CXString jobName = job.JobName();
    const bool isPortrait = job.IsPortrait();
    const tagValueEnum selection = ColorSelection(job);

    Append(pjl, L"@PJL COMMENT OVLbegin\n");
    Append(pjl, L"@PJL COMMENT OID_ATT_JOB_OWNER \"", job.UserName(), L"\";\n");
    Append(pjl, L"@PJL COMMENT OID_ATT_JOB_NAME \"", jobName, L"\";\n");
    lines.AddJobType(jobName);
    lines.AddStartSheet();
    lines.AddContentOrientation(isPortrait, L"\n");
    lines.AddAccounting();
    AppendQuality(pjl, job, product);
    AppendColorMode(pjl, selection);
    Append(pjl, L"@PJL COMMENT OVLend\n");

    FinishingSnippets::Append(setup, job, isPortrait);
    AppendTrapping(setup, job);
    AppendRow(setup, FindRow(jobOffsets, job.Choice(FEAT_JOB_OFFSET_API)), L"job-offset");
    AppendCorrection(setup, job, selection);
    AppendAdjustments(setup, job);
}
