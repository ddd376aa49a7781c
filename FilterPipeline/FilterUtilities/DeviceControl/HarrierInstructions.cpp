#include "DeviceControl/HarrierInstructions.h"

#include "DeviceControl/CommandRow.h"
#include "DeviceControl/HarrierColorTables.h"
#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobAttributeLines.h"
#include "DeviceControl/JobHandlingLines.h"
#include "DeviceControl/JobQuestions.h"
#include "DeviceControl/ProductPdlData.h"

using namespace DataModelIds;
using InstructionText::AppendSnippet;

namespace {

/// A value with the product's option that holds its command, and what the snippet calls it.
struct ProductRow {
    tagValueEnum value;
    std::wstring_view productOption;
    std::wstring_view option;
};

constexpr ProductRow qualities[] = {
    {VAL_QUALITY_ENHANCED, L"enhanced", L"Enhanced"},
    {VAL_QUALITY_STANDARD, L"standard", L"Standard"},
    {VAL_QUALITY_PHOTO, L"photographic", L"Photo"},
    {VAL_QUALITY_FAST_COLOR, L"fast-color", L"Fast Color"},
};

constexpr ProductRow corrections[] = {
    {VAL_COLOR_EFFECTS_GRAYSCALE, L"monochrome-grayscale", L"Grayscale"},
    {VAL_SOURCE_RGB_SRGB, L"srgb", L"SRGB"},
    {VAL_SOURCE_RGB_SRGB_VIVID, L"vivid-rgb", L"Vivid"},
    {VAL_SOURCE_RGB_NONE, L"none", L"None"},
    {VAL_SOURCE_RGB_LCD, L"lcd-rgb", L"RGB_LCD"},
};
constexpr ProductRow automaticCorrection = {VAL_SOURCE_RGB_AUTOMATIC, L"automatic", L"Automatic"};

struct Adjustment {
    tagFeatureEnum feature;
    std::wstring_view name;
    std::wstring_view before; // the number
};
constexpr Adjustment adjustments[] = {
    {FEAT_LIGHTNESS, L"Job Level - Lightness", L"orvel$Lightness 0 "},
    {FEAT_CONTRAST, L"Job Level - Contrast", L"orvel$Contrast 0 "},
    {FEAT_SATURATION, L"Job Level - Saturation", L"orvel$Saturation 0 "},
    {FEAT_COLORBALANCE_CYAN_RED, L"Job Level - CyanRed", L"orvel$CyanRed 0 "},
    {FEAT_COLORBALANCE_MAGENTA_GREEN, L"Job Level - MagentaGreen", L"orvel$MagentaGreen 0 "},
    {FEAT_COLORBALANCE_YELLOW_BLUE, L"Job Level - YellowBlue", L"orvel$YellowBlue 0 "},
};

constexpr CommandRow grayLines[] = {
    {VAL_GRAY_LINE_AUTOMATIC, L"Automatic Black",
     L" userdict /orvel$grayline /Automatic put\n userdict /orvel$VCDOptions << /Grayline /Automatic >> put"},
    {VAL_GRAY_LINE_PURE_BLACK, L"Pure Black",
     L" userdict /orvel$grayline /PureBlack put\n userdict /orvel$VCDOptions << /Grayline /PureBlack >> put"},
    {VAL_GRAY_LINE_COMPOSITE, L"Composite Black",
     L" userdict /orvel$grayline /Composite put\n userdict /orvel$VCDOptions << /Grayline /Composite >> put"},
};

constexpr CommandRow noCover = {VAL_COVER_OPTION_NONE, L"None", L""};
constexpr CommandRow frontCover = {
    VAL_COVER_FRONT_ONLY, L"First",
    L"1\norvel$CoverPageSource\n/RRCustomProcs /ProcSet findresource /setcoverpages get exec "};
constexpr CommandRow bothCovers = {VAL_COVER_BOTH_SAME, L"FirstLast",
                                   L"orvel$booklet_job {2}{3} ifelse\norvel$CoverPageSource\n/RRCustomProcs "
                                   L"/ProcSet findresource /setcoverpages get exec "};

constexpr CommandRow coverSources[] = {
    {VAL_INPUT_TRAY_1, L"Tray1", L"userdict /orvel$CoverPageSource 0 put"}, // that of no tray too
    {VAL_INPUT_TRAY_2, L"Tray2", L"userdict /orvel$CoverPageSource 1 put"},
    {VAL_INPUT_TRAY_3, L"Tray3", L"userdict /orvel$CoverPageSource 2 put"},
    {VAL_INPUT_TRAY_4, L"Tray4", L"userdict /orvel$CoverPageSource 3 put"},
    {VAL_INPUT_TRAY_5, L"Tray5", L"userdict /orvel$CoverPageSource 4 put"},
};

void AppendProductCommand(CXString& setup, const ProductPdlData& product, std::wstring_view section,
                          const ProductRow& row, std::wstring_view feature) {
    AppendSnippet(setup, feature, row.option,
                  product.Find(section, row.productOption, {}, {}, VAL_PDL_POSTSCRIPT));
}

void AppendQuality(CXString& setup, const JobQuestions& job, const ProductPdlData& product) {
    const ProductRow* const row = FindRow(qualities, job.Choice(FEAT_PRINT_QUALITY_LEVEL));
    if (row != nullptr) AppendProductCommand(setup, product, L"print-quality-level", *row, L"Print Quality");
}

tagValueEnum ColorSelection(const JobQuestions& job, bool filterDoesColorCorrection) {
    const tagValueEnum selection = job.Choice(FEAT_COLOR_EFFECTS) == VAL_COLOR_EFFECTS_GRAYSCALE
                                       ? VAL_COLOR_EFFECTS_GRAYSCALE
                                       : job.Choice(FEAT_DISPLAY_COLOR_CORRECTION);
    const bool isLeftToFilter = filterDoesColorCorrection && selection != VAL_COLOR_EFFECTS_GRAYSCALE;
    return isLeftToFilter ? VAL_SOURCE_RGB_AUTOMATIC : selection;
}

/// Deliberate: a job that says nothing of colour has the custom section, each intent automatic.
void AppendColorCorrection(CXString& setup, const JobQuestions& job, const ProductPdlData& product,
                           tagValueEnum selection) {
    if (selection == VAL_CUSTOM_COLOR_CORRECTION || selection == VAL_UNSPECIFIED) {
        HarrierInstructions::AppendCustomColor(setup, job);
        return;
    }
    const ProductRow* const row = FindRow(corrections, selection);
    AppendProductCommand(setup, product, L"odrv-color-output-correction",
                         row == nullptr ? automaticCorrection : *row, L"Color Correction");
}

void AppendAdjustments(CXString& setup, const JobQuestions& job) {
    for (const Adjustment& row : adjustments)
        if (const std::optional<int> value = job.Integer(row.feature))
            AppendSnippet(setup, row.name, L"", row.before, InstructionText::Decimal(*value), L" put");
}

void AppendGrayLine(CXString& setup, const JobQuestions& job) {
    const CommandRow* const row = FindRow(grayLines, job.Choice(FEAT_GRAY_LINE));
    if (row != nullptr) AppendSnippet(setup, L"SRGBNeutralGray", row->option, row->command);
}

const CommandRow& CoverPages(const JobQuestions& job, tagValueEnum cover) {
    switch (cover) {
    case VAL_COVER_FRONT_ONLY:
        return frontCover;
    case VAL_COVER_BOTH_SAME:
    case VAL_COVER_BOTH_DIFFERENT:
        return job.IsBackCoverSuppressed() ? frontCover : bothCovers;
    default:
        return bothCovers;
    }
}

const CommandRow& CoverSource(const JobQuestions& job) {
    const CommandRow* const row =
        FindRow(coverSources, job.Choice({FEAT_FRONT_COVER, FEAT_MEDIA_COL, FEAT_INPUT_TRAY}));
    return row == nullptr ? coverSources[0] : *row;
}

void AppendCovers(CXString& setup, const JobQuestions& job) {
    if (job.AreCoversInTicket()) return;
    const tagValueEnum cover = job.Choice(FEAT_COVER_OPTIONS);
    if (cover == VAL_UNSPECIFIED) return;
    const bool isNone = cover == VAL_COVER_OPTION_NONE;
    const CommandRow& source = isNone ? coverSources[0] : CoverSource(job);
    const CommandRow& pages = isNone ? noCover : CoverPages(job, cover);
    // The source first: the procedure for the pages reads it.
    AppendSnippet(setup, L"OVLCoverPageSource", source.option, source.command);
    AppendSnippet(setup, L"OVLCoverPage", pages.option, pages.command);
}

} // namespace

void HarrierInstructions::AppendCustomColor(CXString& text, const JobQuestions& job) {
    using namespace HarrierColorTables;
    for (const Section& section : sections) {
        const Intent* row = FindRow(intents, job.Choice(section.feature));
        if (row == nullptr || (row->sections & section.bit) == 0) row = &automatic;
        const auto put = [&](std::wstring_view slot, std::wstring_view feature) {
            AppendSnippet(text, feature, L"", L"orvel$Intent ", slot, L" (", row->name, L") put");
        };
        put(section.graphicsSlot, section.graphicsFeature);
        put(section.imagesSlot, row->isShort ? section.imagesShortFeature : section.imagesFeature);
    }
}

void HarrierInstructions::Generate(CXString& pjl, CXString& setup, const JobQuestions& job,
                                   const ProductPdlData& product, bool filterDoesColorCorrection) {
    JobHandlingLines::Append(pjl, job, L"");
    JobAttributeLines(pjl, job).AddTonerSaver();

    AppendQuality(setup, job, product);
    AppendColorCorrection(setup, job, product, ColorSelection(job, filterDoesColorCorrection));
    AppendAdjustments(setup, job);
    AppendGrayLine(setup, job);
    AppendCovers(setup, job);
}
