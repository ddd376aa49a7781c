#include "Samples/DeviceStream/EveryChoice.h"
#include "Samples/DeviceStream/Fingerprint.h"
#include "Samples/DeviceStream/InterpreterRun.h"
#include "Samples/DeviceStream/PjlGrammar.h"
#include "Samples/DeviceStream/SnippetText.h"
#include "Support/InApartment.h"
#include "Support/Rows.h"
#include "Support/TalkativeJob.h"

#include <DeviceControl/HarrierColorTables.h>
#include <DeviceControl/KestrelColorTables.h>
#include <DeviceControl/MerlinMediaTables.h>
#include <DeviceControl/PageLevelTables.h>
#include <DeviceControl/PostScriptPageLevelPDLHelper.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

using namespace DataModelIds;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

std::string Utf8(const CXString& text) { return CPStringUtils::narrowToStdString(text); }

/// With a PJL line or PostScript for some of what families look up.
DeviceBag Product(const char* command) {
    DeviceBag bag;
    bag.productData = "<p><print-quality-level><standard PS=\"" + std::string(command) +
                      "\"/></print-quality-level><odrv-color-output-correction><srgb PS=\"" + command +
                      "\"/>"
                      "</odrv-color-output-correction></p>";
    return bag;
}

EveryChoice Walked(const char* name, const char* productCommand = "@PJL SET QUALITY = 1\\n") {
    EveryChoice every(*FindDeviceFamily(name), Product(productCommand));
    every.Walk({}, [](const EveryChoice::Features& features) {
        return features.back() == FEAT_JOB_TYPE || features.back() == FEAT_FINISHING_STAPLE;
    });
    TableFeatureAccess job = TalkativeJob();
    job.orientation = VAL_MS_ORIENTATION_LANDSCAPE;
    every.Walk(job);
    job.Choose({FEAT_JOB_ACCT_COL, FEAT_DEV_INSTALLABLE_JOB_ACCT_SYSTEM_ACTUAL},
               VAL_JOB_ACCT_SYSTEM_STANDARD);
    every.Walk(job, [](const EveryChoice::Features& features) {
        return features.back() == FEAT_JOB_ACCT_ACCOUNT_TYPE;
    });
    job.Specify(FEAT_FAX_OUT_COL);
    every.Walk(job,
               [](const EveryChoice::Features& features) { return features.front() == FEAT_FAX_OUT_COL; });
    return every;
}

class EveryRow : public InApartment<> {};

std::string Joined(const std::set<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts)
        all += text;
    return all;
}

TEST_F(EveryRow, IsWrittenAsPjlThatParses) {
    // With the number of lines that differ, so that the walk is known to meet every row.
    std::string covers;
    for (const auto& [name, count, fingerprint] :
         Rows<const char*, std::size_t, std::uint64_t>{{"Kestrel", 27, 0xDD69D14B7DCC58A1},
                                                       {"Harrier", 15, 0xACF82717F3ACD988},
                                                       {"Osprey", 46, 0x2A89DAD3433A9B9F},
                                                       {"Merlin", 21, 0x46B3C7651C75D412},
                                                       {"MerlinPCL6", 159, 0x9EFE7FCE4BDB5105},
                                                       {"LowEndPS", 17, 0x688B32AEB83948F9},
                                                       {"LowEndPCL6", 14, 0x361C711BC1E7A226},
                                                       {"LowEndPCLm", 14, 0x880DB36B58AB2E93}}) {
        const EveryChoice every = Walked(name);
        for (const std::string& pjl : every.pjl)
            ASSERT_EQ(PjlGrammar::FaultOf(pjl), "") << name;
        for (const std::string& trailer : every.trailers)
            ASSERT_TRUE(trailer.empty() || trailer.starts_with("%%OrvelVersion: ")) << name << trailer;
        std::set<std::string> lines;
        std::istringstream all(Joined(every.pjl));
        for (std::string line; std::getline(all, line);)
            lines.insert(line);
        EXPECT_EQ(FingerprintOf(every.effects), fingerprint) << name;
        EXPECT_EQ(lines.size(), count) << name << testing::PrintToString(lines);
        if (name == std::string_view("MerlinPCL6")) covers = Joined(every.pjl);
        if (name == std::string_view("LowEndPCLm")) {
            EXPECT_EQ(every.setup.size(), 31) << "page tickets";
        }
    }
    for (const auto& rows : {std::span<const ValueText>(MerlinMediaTables::mediaTypes),
                             std::span<const ValueText>(MerlinMediaTables::mediaColors)})
        for (const ValueText& row : rows)
            EXPECT_THAT(covers, HasSubstr("\"" + Utf8(CXString(std::wstring(row.text))) + "\";\r\n"));
}

TEST_F(EveryRow, ReachesTheDeviceAsASnippet) {
    std::map<std::string, SnippetText> snippets;
    for (const char* const name : {"Kestrel", "Harrier", "Osprey"})
        for (const std::string& setup : Walked(name, "orvel$Transform /Lightness 1 put").setup) {
            const auto parts = SnippetText::Of(setup);
            ASSERT_EQ(parts.empty(), setup.empty()) << setup;
            for (const SnippetText& part : parts)
                snippets.emplace(part.whole, part);
        }

    EXPECT_EQ(snippets.size(), 217) << "with each row, and with each value that has none";

    // What the names of some say, also of those that compute what they set.
    std::multimap<std::string, std::string> meanings = {
        {"Stapling None", "/Staple device 0 eq"},
        {"Stapling Single-Portrait", "/StapleDetails device /StapleLocation get (SinglePortrait) eq"},
        {"Punching 3-Hole", "/PunchDetails device /NumHoles get 3 eq"},
        {"Booklet Fold, Staple", "/Booklet device /BookletDetails device /Staples get 2 eq and"},
        {"Fold Z Fold", "/FoldDetails device /FoldMethod get 2 eq"},
        {"Trapping ON",
         "/PostRenderingEnhance device true eq /PostRenderingEnhanceDetails device /Type get 33 eq and"},
        {"Trapping OFF", "/PostRenderingEnhance device /Type get 33 eq "
                         "/PostRenderingEnhanceDetails device length 0 eq and"},
        {"Trapping BLACK_ONLY", "/PostRenderingEnhanceDetails device /BlackTrapping get"},
        {"job-offset none", "/Jog device 0 eq"},
        {"job-offset offset-set", "/Jog device 3 eq"},
        {"Resolution DPI_1200_X_1200", "/HWResolution device [1200 1200] same"},
        {"Color-Correction Black-and-White", "orvel$VirtualColorDevice /Type get 1 eq"},
        {"OVLCyanRed  -3", "orvel$Transform /CastCyan get 0.03 sub abs 0.001 lt"},
        {"Job Level - CyanRed ", "orvel$CyanRed 0 get -3 eq"},
        {"OVLCoverPage First", "/CoverPages device 1 eq"},
        {"OVLCoverPage FirstLast", "/CoverPages device 3 eq"},
        {"OVLCoverPageSource Tray3", "orvel$CoverPageSource 2 eq"},
    };
    InterpreterRun run;
    for (const auto& [whole, snippet] : snippets) {
        std::string check = snippet.Check().value_or("true");
        const auto [first, last] = meanings.equal_range(snippet.name);
        for (auto each = first; each != last; ++each)
            check += " " + each->second + " and";
        EXPECT_TRUE(snippet.Check() || first != last) << "nothing is checked: " << snippet.name;
        meanings.erase(snippet.name);
        run.Add(snippet.name, whole, check);
    }
    EXPECT_THAT(meanings, ElementsAre());
    EXPECT_THAT(run.Failures(), ElementsAre());
}

/// The settings of a page, and the check that the device got them.
using PageSetting = std::pair<std::wstring, std::string>;

std::vector<PageSetting> PageSettings() {
    std::vector<PageSetting> settings = {
        {L"media-size=100000,100000", "/PageSize device [283 283] same"},
        {L"effective-media-type=media-type-api-unspecified", "/MediaType device null eq"},
        {L"media-color=media-color-unspecified", "/MediaColor device null eq"},
        {L"sides-imaged=one-sided", "/Duplex device not /Tumble device not and"},
        {L"sides-imaged=two-sided-long-edge", "/Duplex device /Tumble device not and"},
        {L"sides-imaged=two-sided-short-edge", "/Duplex device /Tumble device and"},
        {L"input-tray=tray-2", "/MediaInputTray device (tray-2) eq"},
        {L"input-tray=AutoSelect", "/MediaInputTray device (automatic) eq"},
    };
    for (const PageLevelTables::SizeName& row : PageLevelTables::sizeNames) {
        const auto microns = [](int points) { return std::to_wstring(points * 25400 / 72); };
        settings.emplace_back(L"media-size=" + microns(row.width) + L"," + microns(row.height),
                              "/PageSize device [" + std::to_string(row.width) + " " +
                                  std::to_string(row.height) + "] same");
    }
    for (const PageLevelTables::Name& row : PageLevelTables::mediaTypes)
        settings.emplace_back(std::wstring(L"effective-media-type=") + row.from,
                              "/MediaType device (" + Utf8(row.to) + ") eq");
    for (const PageLevelTables::Name& row : PageLevelTables::mediaColors)
        settings.emplace_back(std::wstring(L"media-color=") + row.from,
                              "/MediaColor device (" + Utf8(row.to) + ") eq");
    return settings;
}

/// A product with a command for each setting but sizes and sides. before, behind: what stands around the
/// command's entry.
CPString ProductOfEntries(const std::string& before, const std::string& behind) {
    const auto option = [&](const wchar_t* name, const std::string& entry) {
        return "<" + Utf8(name) + " PS='" + before + entry + behind + "'/>";
    };
    std::string text = "<p job-patch-file='1'><input-tray>" +
                       option(L"tray-2", "(tray-2) orvel$MediaInputTray") +
                       option(L"AutoSelect", "(automatic) orvel$MediaInputTray") +
                       option(L"automatic", "(automatic) orvel$MediaInputTray") +
                       "</input-tray><media-color>" + option(L"media-color-unspecified", "/MediaColor null");
    for (const PageLevelTables::Name& row : PageLevelTables::mediaColors)
        text += option(row.to, "/MediaColor (" + Utf8(row.to) + ")");
    text += "</media-color><media-type-api>" + option(L"media-type-api-unspecified", "/MediaType null");
    for (const PageLevelTables::Name& row : PageLevelTables::mediaTypes)
        text += option(row.to, "/MediaType (" + Utf8(row.to) + ")");
    return text + "</media-type-api></p>";
}

TEST_F(EveryRow, ReachesTheDeviceBetweenPages) {
    // A device that refuses the dictionary of all, and takes what comes then.
    const std::string refusal = "/= {pop} def /genuine /setpagedevice load def "
                                "/setpagedevice {/setpagedevice /genuine load def stop} def";
    const CPString commands = ProductOfEntries("&lt;&lt; ", " >> setpagedevice");
    const CPString entries = ProductOfEntries("", "");
    const CPString nothing = "<p/>";
    PostScriptPageLevelPDLHelper byCommands(commands);
    PostScriptPageLevelPDLHelper byEntries(entries);
    PostScriptPageLevelPDLHelper byNothing(nothing);
    InterpreterRun run;
    std::set<std::string> blocks;
    for (const auto& [setting, check] : PageSettings()) {
        std::vector<CXString> settings = {setting.c_str()};
        const std::string name = Utf8(settings[0]);
        const std::string builtIn = Utf8(byNothing.GenerateOcptBasedPageLevelPostScript(settings));
        const std::string mixed =
            Utf8(byCommands.GenerateOcptAndProductSpecificPDLPageLevelPostScript(settings));
        blocks.insert(builtIn);
        blocks.insert(mixed);
        run.Add(name, builtIn, check);
        run.Add(name + ", retried", builtIn, check, refusal);
        run.Add(name + ", product", mixed, check);
        run.Add(name + ", product, retried", mixed, check, refusal);
        run.Add(name + ", product alone", Utf8(byEntries.GeneratePDLFromProductData(settings)), check);
    }
    for (const PageLevelTables::Name& row : PageLevelTables::colorEntries) {
        std::vector<CXString> settings = {L"media-color=" + CXString(row.from)};
        std::string color = Utf8(row.to);
        color.replace(0, color.find('('), "/MediaColor device ");
        run.Add(Utf8(settings[0]), Utf8(byNothing.GeneratePDLFromProductData(settings)), color + " eq");
    }
    EXPECT_EQ(FingerprintOf(blocks), 0x3D55BF8E793FDA08);
    EXPECT_THAT(run.Failures(), ElementsAre());
}

} // namespace
