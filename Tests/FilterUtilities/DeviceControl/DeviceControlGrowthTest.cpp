#include "FilterUtilities/DeviceControl/UniformJob.h"
#include "Support/DeviceBag.h"
#include "Support/Growth.h"
#include "Support/InApartment.h"

#include <DeviceControl/DeviceFamily.h>
#include <DeviceControl/PostScriptPageLevelPDLHelper.h>
#include <DeviceControl/PrintInstructionGenerator.h>
#include <DeviceControl/ProductPdlData.h>

namespace {

using namespace DataModelIds;

constexpr const char* oneOption = "<s><a PS=\"x\"/></s>";

/// An option of section s asked for in a text of n items, so many times.
GrowthMaker Lookup(const std::string& before, const Item& item, const std::string& behind,
                   bool isAskedTimes = false) {
    return [=](std::size_t n) {
        return [text = before + Times(n, item) + behind, times = isAskedTimes ? n : 1] {
            const ProductPdlData data(text);
            for (std::size_t i = 0; i < times; ++i)
                static_cast<void>(data.Find(L"s", L"a", L"g", {}, VAL_PDL_POSTSCRIPT));
        };
    };
}

Item Same(const char* text) {
    return [text](std::size_t) { return std::string(text); };
}

void GenerateAll(const UniformJob& job) {
    DeviceBag bag;
    UniformJob asked = job;
    for (const DeviceFamily& family : DeviceFamilies()) {
        OrvelDriverPropertyBag device(bag);
        PrintInstructionGenerator generator(asked, device);
        DeviceInstructions texts;
        family.generate(generator, texts);
    }
}

GrowthMaker Settings(CXString (PostScriptPageLevelPDLHelper::*generator)(std::vector<CXString>&)) {
    return [generator](std::size_t n) {
        std::vector<CXString> settings;
        for (std::size_t i = 0; i < n; ++i)
            settings.emplace_back(i % 2 == 0 ? L"media-color=Red" : L"media-size=215900,279400");
        return [generator, settings]() mutable {
            const CPString product = "<p><media-color><red PS='/Color 5'/></media-color></p>";
            PostScriptPageLevelPDLHelper helper(product);
            static_cast<void>((helper.*generator)(settings));
        };
    };
}

constexpr std::size_t enough = 1 << 17; // to tell a square from what costs next to nothing

const GrowthCase cases[] = {
    {"ASectionBehindMuchElse", Lookup("", Same("<t/>"), oneOption), enough},
    {"ManySectionsThatNobodyCloses", Lookup("", Same("<s><g>"), ""), enough},
    {"ManyGroups", Lookup("<s>", Same("<g></g>"), "</s>"), enough},
    {"ManyOptionsThatNobodyCloses", Lookup("<s><g>", Same("<a PS=\""), "</g></s>"), enough},
    {"AValueOfManyEscapes", Lookup("<s><a PS=\"", Same("%&quot;&lt;\\n"), "\"/></s>"), enough},
    // Asked for as often as the text is long: the section is looked for once.
    {"ManyQuestionsOnOneSection", Lookup("", Same("<t/>"), oneOption, true), enough},
    {"LongNames",
     [](std::size_t n) {
         return [n] {
             UniformJob job;
             job.text.assign(n, L'\u65E5');
             GenerateAll(job);
         };
     },
     1 << 13},
    {"ManyRecipients",
     [](std::size_t n) {
         return [n] {
             UniformJob job;
             job.entries = static_cast<unsigned int>(n);
             GenerateAll(job);
         };
     },
     2500},
    {"ManySettings", Settings(&PostScriptPageLevelPDLHelper::GenerateOcptBasedPageLevelPostScript)},
    {"ManySettingsOfAProduct",
     Settings(&PostScriptPageLevelPDLHelper::GenerateOcptAndProductSpecificPDLPageLevelPostScript)},
    {"ManyEntries", Settings(&PostScriptPageLevelPDLHelper::GeneratePDLFromProductData)},
};

class DeviceControlGrowth : public InApartment<testing::TestWithParam<GrowthCase>> {};

TEST_P(DeviceControlGrowth, IsInProportion) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Of, DeviceControlGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
