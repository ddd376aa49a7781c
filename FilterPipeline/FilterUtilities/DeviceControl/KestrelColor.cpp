#include "DeviceControl/KestrelColor.h"

#include "DeviceControl/InstructionText.h"
#include "DeviceControl/JobQuestions.h"
#include "DeviceControl/KestrelColorTables.h"

using namespace DataModelIds;
using namespace KestrelColorTables;

namespace {

void AppendPut(CXString& text, const wchar_t* dictionary, const wchar_t* intent, const wchar_t* option,
               const wchar_t* feature) {
    CXString command = dictionary;
    InstructionText::Append(command, L" /Intent /", intent, L" put");
    InstructionText::AppendSnippet(text, command, option, feature);
}

void AppendPair(CXString& text, const Pair& pair, const wchar_t* intent, const wchar_t* option) {
    AppendPut(text, pair.graphics, intent, option, pair.graphicsFeature);
    AppendPut(text, pair.images, intent, option, pair.imagesFeature);
}

CXString Section(const Pair& pair, const wchar_t* const Intent::*section, tagValueEnum value) {
    CXString text;
    const Intent* const row = FindRow(intents, value);
    if (row != nullptr && row->*section != nullptr) AppendPair(text, pair, row->*section, row->option);
    return text;
}

CXString Gray(const JobQuestions& job) {
    const tagValueEnum value = job.Choice(FEAT_SOURCE_GRAY_COLOR);
    if (value == VAL_BLACK_CONFIG_USE_CMYK_COLOR_SETTINGS)
        return KestrelColor::Cmyk(job.Choice(FEAT_SOURCE_CMYK_COLOR));
    if (value == VAL_BLACK_CONFIG_USE_RGB_COLOR_SETTINGS)
        return KestrelColor::Rgb(job.Choice(FEAT_SOURCE_RGB_COLOR));
    CXString text = Section(grayPair, &Intent::gray, value);
    if (!text.IsEmpty()) return text;
    AppendPut(text, grayPair.graphics, L"Mono-Graphic", L"Black-and-White", grayPair.graphicsFeature);
    // Deliberate: this one command has two blanks.
    InstructionText::AppendSnippet(text, L"orvel$GrayImagesTransform  /Intent /Mono-Graphic put",
                                   L"Black-and-White", grayPair.imagesFeature);
    return text;
}

void AppendRendering(CXString& text, const JobQuestions& job) {
    const Intent* const row = FindRow(renderings, job.Choice(FEAT_OUTPUT_RENDERING_INTENT));
    if (row != nullptr) AppendPair(text, ciePair, row->gray, row->option);
}

void AppendEmbeddedProfiles(CXString& text, const JobQuestions& job) {
    const CommandRow* const row = FindRow(embeddedProfiles, job.Choice(FEAT_CIE_APPLY_EMBEDDED_PROFILES));
    if (row != nullptr)
        InstructionText::AppendSnippet(text, row->command, row->option, L"CIEApplyEmbeddedProfiles");
}

} // namespace

CXString KestrelColor::Rgb(tagValueEnum value) {
    return Section(value == VAL_SOURCE_RGB_NONE ? rgbPairWithoutIntent : rgbPair, &Intent::rgb, value);
}

CXString KestrelColor::Cmyk(tagValueEnum value) { return Section(cmykPair, &Intent::cmyk, value); }

CXString KestrelColor::Custom(const JobQuestions& job) {
    CXString text = Cmyk(job.Choice(FEAT_SOURCE_CMYK_COLOR));
    text += Gray(job);
    text += Rgb(job.Choice(FEAT_SOURCE_RGB_COLOR));
    text += Section(spotPair, &Intent::spot, job.Choice(FEAT_SOURCE_SPOT_COLOR));
    AppendRendering(text, job);
    AppendEmbeddedProfiles(text, job);
    return text;
}
