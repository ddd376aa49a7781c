#include "DeviceControl/KestrelColor.h"

#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobQuestions.h"
#include "DeviceControl/KestrelColorTables.h"

using namespace DataModelIds;
using namespace KestrelColorTables;

namespace {

void AppendPut(CXString& text, std::wstring_view dictionary, std::wstring_view intent,
               std::wstring_view option, std::wstring_view feature) {
    InstructionText::AppendSnippet(text, feature, option, dictionary, L" /Intent /", intent, L" put");
}

void AppendPair(CXString& text, const Pair& pair, std::wstring_view intent, std::wstring_view option) {
    AppendPut(text, pair.graphics, intent, option, pair.graphicsFeature);
    AppendPut(text, pair.images, intent, option, pair.imagesFeature);
}

/// False where the value has no intent in the section.
bool AppendSection(CXString& text, const Pair& pair, std::wstring_view Intent::*section, tagValueEnum value) {
    const Intent* const row = FindRow(intents, value);
    if (row == nullptr || (row->*section).empty()) return false;
    AppendPair(text, pair, row->*section, row->option);
    return true;
}

void AppendGray(CXString& text, const JobQuestions& job) {
    const tagValueEnum value = job.Choice(FEAT_SOURCE_GRAY_COLOR);
    if (value == VAL_BLACK_CONFIG_USE_CMYK_COLOR_SETTINGS)
        return KestrelColor::AppendCmyk(text, job.Choice(FEAT_SOURCE_CMYK_COLOR));
    if (value == VAL_BLACK_CONFIG_USE_RGB_COLOR_SETTINGS)
        return KestrelColor::AppendRgb(text, job.Choice(FEAT_SOURCE_RGB_COLOR));
    if (AppendSection(text, grayPair, &Intent::gray, value)) return;
    AppendPut(text, grayPair.graphics, L"Mono-Graphic", L"Black-and-White", grayPair.graphicsFeature);
    // Deliberate: this one command has two blanks.
    InstructionText::AppendSnippet(text, grayPair.imagesFeature, L"Black-and-White",
                                   L"orvel$GrayImagesTransform  /Intent /Mono-Graphic put");
}

void AppendRendering(CXString& text, const JobQuestions& job) {
    const Intent* const row = FindRow(renderings, job.Choice(FEAT_OUTPUT_RENDERING_INTENT));
    if (row != nullptr) AppendPair(text, ciePair, row->gray, row->option);
}

void AppendEmbeddedProfiles(CXString& text, const JobQuestions& job) {
    const CommandRow* const row = FindRow(embeddedProfiles, job.Choice(FEAT_CIE_APPLY_EMBEDDED_PROFILES));
    if (row != nullptr)
        InstructionText::AppendSnippet(text, L"CIEApplyEmbeddedProfiles", row->option, row->command);
}

} // namespace

void KestrelColor::AppendRgb(CXString& text, tagValueEnum value) {
    const Pair& pair = value == VAL_SOURCE_RGB_NONE ? rgbPairWithoutIntent : rgbPair;
    static_cast<void>(AppendSection(text, pair, &Intent::rgb, value));
}

void KestrelColor::AppendCmyk(CXString& text, tagValueEnum value) {
    static_cast<void>(AppendSection(text, cmykPair, &Intent::cmyk, value));
}

void KestrelColor::AppendCustom(CXString& text, const JobQuestions& job) {
    AppendCmyk(text, job.Choice(FEAT_SOURCE_CMYK_COLOR));
    AppendGray(text, job);
    AppendRgb(text, job.Choice(FEAT_SOURCE_RGB_COLOR));
    static_cast<void>(AppendSection(text, spotPair, &Intent::spot, job.Choice(FEAT_SOURCE_SPOT_COLOR)));
    AppendRendering(text, job);
    AppendEmbeddedProfiles(text, job);
}
