#include "Support/AllocationCount.h"

#include <DataModel/FeatureNameTable.h>
#include <DataModel/NativeXmlConfigCpssOptionValueDictionary.h>
#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DataModel/NativeXmlConfigOptionValueDictionary.h>
#include <DataModel/ValueNameTable.h>
#include <FeatureAccess/FeatureRuleTable.h>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>

using namespace DataModelIds;

namespace {

const NativeXmlConfigFeatureDictionary& Features() { return *NativeXmlConfigFeatureDictionary::Instance(); }
const NativeXmlConfigOptionValueDictionary& Options() {
    return *NativeXmlConfigOptionValueDictionary::Instance();
}
const NativeXmlConfigCpssOptionValueDictionary& CpssOptions() {
    return *NativeXmlConfigCpssOptionValueDictionary::Instance();
}

template <typename Entry, typename Dictionary>
std::vector<const Entry*> AllEntries(const Dictionary& dictionary) {
    std::vector<const Entry*> entries;
    dictionary.GetAllEntries(entries);
    return entries;
}
const auto allFeatures = [] { return AllEntries<NativeXmlConfigFeatureEntry>(Features()); };
const auto allOptions = [] { return AllEntries<NativeXmlConfigOptionValueEntry>(Options()); };
const auto allCpssOptions = [] { return AllEntries<NativeXmlConfigCpssOptionValueEntry>(CpssOptions()); };

std::string BetweenUnderscores(const CPString& name) { return "_" + std::string(name.view()) + "_"; }

template <typename Action>
std::string MessageOf(Action action) {
    try {
        action();
    } catch (const CPExceptionUnknownKeyRequest& failure) {
        return failure.what();
    }
    return "no failure";
}

std::string NoSuchKey(const std::string& key) {
    return "Could not find the requested entry with key=" + key + "\r\n";
}

} // namespace

// A copy in the program would answer in place of what the filters in it are answered from.
TEST(Dictionaries, ExistOnceInAProcess) {
    const auto moduleOf = [](const void* address) {
        Dl_info place{};
        EXPECT_NE(dladdr(address, &place), 0);
        return std::filesystem::path(place.dli_fname ? place.dli_fname : "").filename().string();
    };
    const auto moduleOfFunction = [&](auto* function) { return moduleOf(reinterpret_cast<void*>(function)); };
    const std::string library = "libov-FilterUtilities.so";
    EXPECT_EQ(moduleOfFunction(&NativeXmlConfigFeatureDictionary::Instance), library);
    EXPECT_EQ(moduleOfFunction(&NativeXmlConfigOptionValueDictionary::Instance), library);
    EXPECT_EQ(moduleOfFunction(&NativeXmlConfigCpssOptionValueDictionary::Instance), library);
    EXPECT_EQ(moduleOf(GetFeatureNames().data()), library);
    EXPECT_EQ(moduleOf(GetValueNames().data()), library);
    EXPECT_EQ(moduleOf(FindFeatureRule(FeatureQuestionKind::Option, FEAT_JOB_TYPE)), library);
    EXPECT_EQ(moduleOf(FindFeatureRule(FeatureQuestionKind::Option, {FEAT_MEDIA_COL, FEAT_INPUT_TRAY})
                           ->words.Rows()
                           .data()),
              library);
}

TEST(FeatureDictionary, HoldsEveryFeatureOnceInTheRightShape) {
    const auto features = allFeatures();
    std::set<std::string_view> cpssNames;
    int obeyingNames = 0;
    for (const auto* feature : features) {
        SCOPED_TRACE(feature->featureEnumString.view());
        EXPECT_EQ(&Features().GetEntry(feature->feature), feature);
        EXPECT_TRUE(cpssNames.insert(feature->cpssFeatureName.view()).second);
        EXPECT_EQ(CPString(feature->printTicketFeatureName), feature->narrowPrintTicketFeatureName);
        EXPECT_EQ(CPString(feature->wideCpssFeatureName), feature->cpssFeatureName);
        EXPECT_LE(feature->parentFeatures.size(), 1u);

        std::string bare(feature->cpssFeatureName.view());
        std::erase(bare, '-');
        const bool obeys = feature->narrowPrintTicketFeatureName.view() == "_" + bare + "_";
        obeyingNames += obeys;
        if (!obeys) continue;
        EXPECT_EQ(feature->ticketKind, NativeXmlConfigFeatureEntry::DEVICE_KIND);
        // A feature without a name of its own in the configuration has the ticket's.
        if (feature->xmlConfigFeatureName.startsWith('_')) {
            EXPECT_EQ(feature->xmlConfigFeatureName, feature->narrowPrintTicketFeatureName);
        }
    }
    EXPECT_EQ(obeyingNames, 104);
    const auto count = [&](auto member, auto value) {
        return std::ranges::count(features, value, [&](const auto* feature) { return feature->*member; });
    };
    EXPECT_EQ(count(&NativeXmlConfigFeatureEntry::mode, NativeXmlConfigFeatureEntry::DEVICE), 28);
    EXPECT_EQ(count(&NativeXmlConfigFeatureEntry::syntax, NativeXmlConfigFeatureEntry::PARENT), 9);
}

TEST(FeatureDictionary, KeepsTheRowsThatTell) {
    const struct {
        tagFeatureEnum feature;
        const char* cpssName;
        const char* xmlConfigName;
        const wchar_t* printTicketName;
        std::vector<tagFeatureEnum> parents;
    } rows[] = {
        {FEAT_COLOR_EFFECTS, "color-effects-type", "Color", L"PageOutputColor", {}},
        {FEAT_FINISHING_STAPLE, "staple-api", "Staple", L"JobStapleAllDocuments", {}},
        {FEAT_FINISHING_1_STAPLE, "one-staple-api", "_onestapleapi_", L"JobStapleAllDocuments", {}},
        {FEAT_FINISHING_2_STAPLES, "two-staples-api", "_twostaplesapi_", L"JobStapleAllDocuments", {}},
        {FEAT_FINISHING_FOLD, "fold-api", "_JobBindAllDocuments_", L"JobBindAllDocuments", {}},
        {FEAT_JOB_PASSWORD, "job-password", "_JobPassword_", L"JobSimpleSecurePrint", {}},
        {FEAT_MEDIA_SIZE_OPTION,
         "media-size-name",
         "_odrvfittonewsizeoption_",
         L"_odrvfittonewsizeoption_",
         {}},
        {FEAT_ORIENTATION_FOR_SUBSEQUENT_180_ROTATION,
         "odrv-orientation-for-subsequent-180-rotation",
         "OrientationSubsequentRotationSetting",
         L"_odrvorientationforsubsequent180-rotation",
         {}},
        {FEAT_DEV_CONFIG_TOOL_JOB_TYPE_SAVED_PRINT,
         "odrv-dev-config-tool-job-type-saved-print",
         "SaveJobTypeSaveAndPrint",
         L"_odrvdevconfigtooljobtypesavedprint_",
         {}},
        {FEAT_DEV_INSTALLABLE_JOB_ACCT_SYSTEM_ACTUAL,
         "installable-job-accounting-system-actual",
         "AccountingSystem",
         L"_installablejobaccountingsystemactual_",
         {FEAT_DEV_INSTALLABLE_COL}},
        {FEAT_INPUT_TRAY, "input-tray", "_inputtray_", L"PageInputBin", {FEAT_MEDIA_COL}},
    };
    for (const auto& row : rows) {
        const NativeXmlConfigFeatureEntry& entry = Features().GetEntryByXmlConfigName(row.xmlConfigName);
        EXPECT_EQ(entry.feature, row.feature) << row.xmlConfigName;
        EXPECT_EQ(entry.cpssFeatureName, row.cpssName);
        EXPECT_EQ(entry.printTicketFeatureName, row.printTicketName);
        EXPECT_EQ(entry.parentFeatures, row.parents);
    }
    EXPECT_FALSE(Features().IsFeaturePresent(FEAT_DEV_INSTALLABLE_COL));
    EXPECT_FALSE(Features().IsXmlConfigNamePresent("color"));
    EXPECT_EQ(MessageOf([] { (void)Features().GetEntryByXmlConfigName("color"); }), NoSuchKey("color"));
    EXPECT_EQ(MessageOf([] { (void)Features().GetEntry(tagFeatureEnum{849}); }), NoSuchKey("849"));
}

TEST(OptionDictionaries, HoldEveryOptionOnceInTheRightShape) {
    std::set<tagFeatureEnum> features;
    std::set<tagValueEnum> values;
    std::map<tagFeatureEnum, int> irregularNames;
    EXPECT_EQ(allOptions().size(), 242u);
    for (const auto* option : allOptions()) {
        SCOPED_TRACE(option->valueEnumString.view());
        const NativeXmlConfigFeatureEntry& feature = Features().GetEntry(option->feature);
        EXPECT_EQ(feature.syntax, NativeXmlConfigFeatureEntry::OPTION);
        EXPECT_EQ(option->featureEnumString, feature.featureEnumString);
        EXPECT_EQ(&Options().GetEntry(option->value), option);
        EXPECT_EQ(&Options().GetEntryByXmlConfigName(option->feature, option->xmlConfigOptionName.view()),
                  option);
        EXPECT_EQ(&Options().GetEntryByPrintTicketName(option->feature, option->printTicketOptionName.view()),
                  option);
        features.insert(option->feature);
        values.insert(option->value);
        irregularNames[option->feature] +=
            option->xmlConfigOptionName != option->printTicketOptionName &&
            option->printTicketOptionName.view() != BetweenUnderscores(option->xmlConfigOptionName) &&
            option->xmlConfigOptionName.view() != BetweenUnderscores(option->printTicketOptionName);
    }
    EXPECT_EQ(features.size(), 38u);
    EXPECT_EQ(values.size(), 242u);
    std::erase_if(irregularNames, [](const auto& entry) { return entry.second == 0; });
    EXPECT_EQ(irregularNames, (std::map<tagFeatureEnum, int>{{FEAT_DEV_ACCT_SAVE_IDS, 2},
                                                             {FEAT_DEV_ACCT_MASK_USER_ID, 2},
                                                             {FEAT_DEV_ACCT_MASK_ACCOUNT_ID, 2},
                                                             {FEAT_FINISHING_STAPLE, 1},
                                                             {FEAT_JOB_IDENTIFICATION, 5},
                                                             {FEAT_SIZES_TO_ROTATE, 93},
                                                             {FEAT_DEV_ACCT_MASK_BILLING_ID, 2}}));

    std::set<tagFeatureEnum> cpssFeatures;
    EXPECT_EQ(allCpssOptions().size(), 245u);
    for (const auto* option : allCpssOptions()) {
        SCOPED_TRACE(option->valueEnumString.view());
        const NativeXmlConfigFeatureEntry& feature = Features().GetEntry(option->feature);
        EXPECT_EQ(feature.syntax, NativeXmlConfigFeatureEntry::OPTION);
        EXPECT_EQ(option->featureEnumString, feature.featureEnumString);
        EXPECT_EQ(&CpssOptions().GetEntry(option->feature, option->value), option);
        EXPECT_EQ(&CpssOptions().GetEntryByCpssName(option->feature, option->cpssOptionName.view()), option);
        cpssFeatures.insert(option->feature);
        values.insert(option->value);
    }
    EXPECT_EQ(cpssFeatures.size(), 39u);
    EXPECT_EQ(values.size(), 373u);
}

TEST(OptionDictionaries, KeepTheRowsThatTell) {
    const struct {
        tagFeatureEnum feature;
        tagValueEnum value;
        const char* xmlConfigName;
        const char* printTicketName;
    } rows[] = {
        {FEAT_COLOR_EFFECTS, VAL_COLOR_EFFECTS_COLOR, "Color", "Color"},
        {FEAT_SIDES_IMAGED, VAL_SIDES_TWO_SIDED_ANY, "TwoSidedAny", "_TwoSidedAny_"},
        {FEAT_FINISHING_FOLD, VAL_UNSPECIFIED, "_None_", "None"},
        {FEAT_FINISHING_STAPLE, VAL_FINISHING_1_STAPLE, "OneStaple", "StapleTopLeft"},
        {FEAT_JOB_TYPE, VAL_JOB_TYPE_PERSONAL_SAVED_PRINT, "SaveJobTypeSaveAndPrint",
         "_SaveJobTypeSaveAndPrint_"},
        {FEAT_JOB_TYPE, VAL_JOB_TYPE_SAVED_PRINT, "SavedJobType", "_SavedJobType_"},
        {FEAT_SIZES_TO_ROTATE, VAL_MEDIA_SIZE_NAME_CUSTOM, "A4Tab", "CustomMediaSize"},
        {FEAT_SIZES_TO_ROTATE, VAL_MEDIA_SIZE_OPTIONS_A4_TAB_225X297, "Kakugata2Envelope",
         "OtherMetricA4Tab"},
        {FEAT_SIZES_TO_ROTATE, VAL_MEDIA_SIZE_OPTIONS_ENV_KAKUGATA_2_GOU_240X332, "Youkei2Envelope",
         "JapanKaku2Envelope"},
        {FEAT_SIZES_TO_ROTATE, VAL_MEDIA_SIZE_OPTIONS_216X340, "216x343", "SouthAmericaOficio"},
        {FEAT_SIZES_TO_ROTATE, VAL_MEDIA_SIZE_OPTIONS_12_99X18, "12_99x18", "_12_99x18_"},
        {FEAT_MS_PIN_PRINTING, VAL_PIN_PRINTING_ON, "_On_", "On"},
        {FEAT_DEV_ACCT_SAVE_IDS, VAL_ACCT_SAVE_IDS_ON, "Enabled", "_On_"},
        {FEAT_AL_HANDLER, VAL_AL_HANDLER_ENABLED, "Enabled", "_Enabled_"},
    };
    for (const auto& row : rows) {
        const NativeXmlConfigOptionValueEntry& entry = Options().GetEntry(row.value);
        EXPECT_EQ(&Options().GetEntryByXmlConfigName(row.feature, row.xmlConfigName), &entry);
        EXPECT_EQ(&Options().GetEntryByPrintTicketName(row.feature, row.printTicketName), &entry);
        EXPECT_TRUE(Options().IsPrintTicketNamePresent(row.feature, row.printTicketName));
    }
    EXPECT_FALSE(Options().IsValuePresent(VAL_JOB_TYPE_NONE));
    EXPECT_EQ(std::ranges::count(allOptions(), "Enabled",
                                 [](const auto* option) { return option->xmlConfigOptionName.view(); }),
              12);

    const struct {
        tagFeatureEnum feature;
        tagValueEnum value;
        const char* cpssName;
    } cpssRows[] = {
        {FEAT_JOB_TYPE, VAL_JOB_TYPE_NONE, "none"},
        {FEAT_JOB_OFFSET_API, VAL_JOB_OFFSET_NONE, "none"},
        {FEAT_JOB_TYPE, VAL_JOB_TYPE_HOLD, "hold-job"},
        {FEAT_PRINT_QUALITY_LEVEL, VAL_QUALITY_600_DEPRECATED, "600_DPI"},
        {FEAT_DISPLAY_COLOR_CORRECTION, VAL_SOURCE_RGB_ADOBE, "Adobe RGB"},
        {FEAT_DISPLAY_COLOR_CORRECTION, VAL_SOURCE_RGB_SIMULATE_ADOBE, "adobe-rgb"},
        {FEAT_DISPLAY_COLOR_CORRECTION, VAL_SOURCE_CMYK_JAPAN_COLOR_2001_TYPE_1_ART,
         "Japan Color 2001 (Type1:Art) CMYK"},
        {FEAT_DEV_INSTALLABLE_JOB_ACCT_SYSTEM_ACTUAL, VAL_JOB_ACCT_SYSTEM_LOCAL_OBDS, "internal-tallybox"},
        {FEAT_FINISHING_2_HOLE_PUNCH, VAL_FINISHING_HOLE_PUNCH_PLLT, "hole-punch-pllt"},
        {FEAT_FINISHING_3_HOLE_PUNCH, VAL_FINISHING_HOLE_PUNCH_PLLT, "hole-punch-pllt"},
        {FEAT_FINISHING_4_HOLE_PUNCH, VAL_FINISHING_HOLE_PUNCH_PRLB, "hole-punch-prlb"},
        {FEAT_OUTPUT_DESTINATION, VAL_OUTPUT_BIN_MAILBOX10, "mailbox-10"},
    };
    for (const auto& row : cpssRows) {
        EXPECT_EQ(CpssOptions().GetEntryByCpssName(row.feature, row.cpssName).value, row.value)
            << row.cpssName;
        EXPECT_TRUE(CpssOptions().IsValuePresent(row.feature, row.value));
        EXPECT_TRUE(CpssOptions().IsCpssNamePresent(row.feature, row.cpssName));
    }
}

TEST(OptionDictionaries, KnowOlderNamesOnlyWhereAConfigurationIsRead) {
    EXPECT_EQ(Options().GetEntryByXmlConfigName(FEAT_SIZES_TO_ROTATE, "12_6x18_5").xmlConfigOptionName,
              "SR12_6x18_5");
    EXPECT_EQ(Options().GetEntryByXmlConfigName(FEAT_SIZES_TO_ROTATE, "Envelope4_375x5_75").value,
              VAL_MEDIA_SIZE_OPTIONS_ENV_5_5_4_375X5_75);
    EXPECT_EQ(Options().FindEntryByXmlConfigName(FEAT_SIZES_TO_ROTATE, "12_6x18_5"),
              &Options().GetEntryByXmlConfigName(FEAT_SIZES_TO_ROTATE, "SR12_6x18_5"));
    EXPECT_EQ(Options().FindEntryByXmlConfigName(FEAT_COLOR_EFFECTS, "12_6x18_5"), nullptr);
    EXPECT_TRUE(Options().IsXmlConfigNamePresent(FEAT_SIZES_TO_ROTATE, "SR12_6x18_5"));
    EXPECT_FALSE(Options().IsXmlConfigNamePresent(FEAT_SIZES_TO_ROTATE, "12_6x18_5"));
    EXPECT_FALSE(Options().IsXmlConfigNamePresent(FEAT_SIZES_TO_ROTATE, "Envelope4_375x5_75"));
    EXPECT_FALSE(Options().IsPrintTicketNamePresent(FEAT_SIZES_TO_ROTATE, "12_6x18_5"));
    EXPECT_EQ(MessageOf([] { (void)Options().GetEntryByPrintTicketName(FEAT_SIZES_TO_ROTATE, "12_6x18_5"); }),
              NoSuchKey("0076712_6x18_5"));
    // What is looked up is what the message shows.
    EXPECT_EQ(MessageOf([] { (void)Options().GetEntryByXmlConfigName(FEAT_COLOR_EFFECTS, "12_6x18_5"); }),
              NoSuchKey("00105SR12_6x18_5"));
}

TEST(OptionDictionaries, ComposeTheirKeys) {
    const std::string longName(1000, 'n');
    const struct {
        std::string message;
        std::string key;
    } cases[] = {
        {MessageOf([] { (void)Options().GetEntryByXmlConfigName(FEAT_BOOKLET, "booklet-on"); }),
         "00199booklet-on"},
        {MessageOf([] { (void)Options().GetEntryByPrintTicketName(FEAT_MS_ORIENTATION, "Portrait"); }),
         "00003Portrait"},
        {MessageOf([] {
             (void)Options().GetEntryByPrintTicketName(tagFeatureEnum{123456}, L"\xD83D\xDE00\x20AC");
         }),
         "123456\xF0\x9F\x98\x80\xE2\x82\xAC"},
        {MessageOf([] { (void)CpssOptions().GetEntryByCpssName(tagFeatureEnum{-12}, ""); }), "-00012"},
        {MessageOf([&] { (void)CpssOptions().GetEntryByCpssName(FEAT_JOB_TYPE, longName); }),
         "00036" + longName},
        {MessageOf([&] {
             (void)CpssOptions().GetEntryByCpssName(FEAT_JOB_TYPE,
                                                    std::wstring(longName.begin(), longName.end()));
         }),
         "00036" + longName},
        {MessageOf([] { (void)CpssOptions().GetEntry(FEAT_COPIES, VAL_JOB_TYPE_NONE); }), "0003807904"},
    };
    for (const auto& expected : cases)
        EXPECT_EQ(expected.message, NoSuchKey(expected.key));
    EXPECT_EQ(CpssOptions().GetEntry(FEAT_JOB_TYPE, VAL_JOB_TYPE_NONE).cpssOptionName, "none");
}

TEST(OptionDictionaries, AllocateNothingForWhoHoldsText) {
    const auto options = allOptions();
    const auto cpssOptions = allCpssOptions();
    std::vector<std::wstring> wideNames;
    for (const auto* option : options)
        wideNames.push_back(CXString(option->printTicketOptionName).View().data());
    std::size_t found = 0;
    const std::size_t allocated = AllocationCount::Of([&] {
        for (std::size_t i = 0; i < options.size(); ++i) {
            const NativeXmlConfigOptionValueEntry& option = *options[i];
            found += &Options().GetEntryByPrintTicketName(option.feature, wideNames[i]) == &option;
            found += &Options().GetEntryByXmlConfigName(option.feature, option.xmlConfigOptionName.view()) ==
                     &option;
            found += Options().IsPrintTicketNamePresent(FEAT_COPIES, wideNames[i]);
        }
        for (const auto* option : cpssOptions) {
            found +=
                &CpssOptions().GetEntryByCpssName(option->feature, option->cpssOptionName.view()) == option;
            found += &CpssOptions().GetEntry(option->feature, option->value) == option;
            found += Features().IsXmlConfigNamePresent(option->featureEnumString.view());
        }
    });
    EXPECT_EQ(0u, allocated);
    EXPECT_EQ(found, 2 * options.size() + 2 * cpssOptions.size());
}
