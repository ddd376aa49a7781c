#include "Support/Rows.h"

#include <DataModel/NativeXmlConfigCpssOptionValueDictionary.h>
#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DataModel/NativeXmlConfigOptionValueDictionary.h>

#include <gtest/gtest.h>

#include <functional>
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
        if (feature->narrowPrintTicketFeatureName.view() != "_" + bare + "_") continue;
        ++obeyingNames;
        EXPECT_EQ(feature->ticketKind, NativeXmlConfigFeatureEntry::DEVICE_KIND);
        // A feature without a name of its own in the configuration has the ticket's.
        if (feature->xmlConfigFeatureName.startsWith('_')) {
            EXPECT_EQ(feature->xmlConfigFeatureName, feature->narrowPrintTicketFeatureName);
        }
    }
    EXPECT_EQ(obeyingNames, 104);
}

TEST(FeatureDictionary, KeepsTheRowsThatTell) {
    const struct {
        tagFeatureEnum feature;
        const char* cpssName;
        const char* xmlConfigName;
        const wchar_t* printTicketName;
        std::vector<tagFeatureEnum> parents;
    } rows[] = {
        {FEAT_FINISHING_1_STAPLE, "one-staple-api", "_onestapleapi_", L"JobStapleAllDocuments", {}},
        {FEAT_FINISHING_FOLD, "fold-api", "_JobBindAllDocuments_", L"JobBindAllDocuments", {}},
        {FEAT_JOB_PASSWORD, "job-password", "_JobPassword_", L"JobSimpleSecurePrint", {}},
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
    std::set<tagValueEnum> values;
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
        values.insert(option->value);
    }
    EXPECT_EQ(values.size(), 242u);
    for (const auto* option : allCpssOptions()) {
        SCOPED_TRACE(option->valueEnumString.view());
        const NativeXmlConfigFeatureEntry& feature = Features().GetEntry(option->feature);
        EXPECT_EQ(feature.syntax, NativeXmlConfigFeatureEntry::OPTION);
        EXPECT_EQ(option->featureEnumString, feature.featureEnumString);
        EXPECT_EQ(&CpssOptions().GetEntry(option->feature, option->value), option);
        EXPECT_EQ(&CpssOptions().GetEntryByCpssName(option->feature, option->cpssOptionName.view()), option);
    }
    EXPECT_EQ(allCpssOptions().size(), 245u);
}

TEST(OptionDictionaries, KeepTheRowsThatTell) {
    const Rows<tagFeatureEnum, tagValueEnum, const char*, const char*> rows{
        {FEAT_SIDES_IMAGED, VAL_SIDES_TWO_SIDED_ANY, "TwoSidedAny", "_TwoSidedAny_"},
        {FEAT_FINISHING_FOLD, VAL_UNSPECIFIED, "_None_", "None"},
        {FEAT_FINISHING_STAPLE, VAL_FINISHING_1_STAPLE, "OneStaple", "StapleTopLeft"},
        {FEAT_JOB_TYPE, VAL_JOB_TYPE_SAVED_PRINT, "SavedJobType", "_SavedJobType_"},
        {FEAT_SIZES_TO_ROTATE, VAL_MEDIA_SIZE_NAME_CUSTOM, "A4Tab", "CustomMediaSize"},
        {FEAT_SIZES_TO_ROTATE, VAL_MEDIA_SIZE_OPTIONS_216X340, "216x343", "SouthAmericaOficio"},
        {FEAT_DEV_ACCT_SAVE_IDS, VAL_ACCT_SAVE_IDS_ON, "Enabled", "_On_"},
    };
    for (const auto& [feature, value, xmlConfigName, printTicketName] : rows) {
        const NativeXmlConfigOptionValueEntry& entry = Options().GetEntry(value);
        EXPECT_EQ(&Options().GetEntryByXmlConfigName(feature, xmlConfigName), &entry);
        EXPECT_EQ(&Options().GetEntryByPrintTicketName(feature, printTicketName), &entry);
        EXPECT_TRUE(Options().IsPrintTicketNamePresent(feature, printTicketName));
    }
    EXPECT_FALSE(Options().IsValuePresent(VAL_JOB_TYPE_NONE));

    const Rows<tagFeatureEnum, tagValueEnum, const char*> cpssRows{
        {FEAT_JOB_TYPE, VAL_JOB_TYPE_NONE, "none"},
        {FEAT_JOB_OFFSET_API, VAL_JOB_OFFSET_NONE, "none"},
        {FEAT_DISPLAY_COLOR_CORRECTION, VAL_SOURCE_RGB_ADOBE, "Adobe RGB"},
        {FEAT_DISPLAY_COLOR_CORRECTION, VAL_SOURCE_RGB_SIMULATE_ADOBE, "adobe-rgb"},
        {FEAT_FINISHING_2_HOLE_PUNCH, VAL_FINISHING_HOLE_PUNCH_PLLT, "hole-punch-pllt"},
        {FEAT_FINISHING_3_HOLE_PUNCH, VAL_FINISHING_HOLE_PUNCH_PLLT, "hole-punch-pllt"},
    };
    for (const auto& [feature, value, cpssName] : cpssRows) {
        EXPECT_EQ(CpssOptions().GetEntryByCpssName(feature, cpssName).value, value) << cpssName;
        EXPECT_TRUE(CpssOptions().IsValuePresent(feature, value));
        EXPECT_TRUE(CpssOptions().IsCpssNamePresent(feature, cpssName));
    }
}

TEST(OptionDictionaries, KnowOlderNamesOnlyWhereAConfigurationIsRead) {
    EXPECT_EQ(Options().GetEntryByXmlConfigName(FEAT_SIZES_TO_ROTATE, "Envelope4_375x5_75").value,
              VAL_MEDIA_SIZE_OPTIONS_ENV_5_5_4_375X5_75);
    EXPECT_EQ(Options().FindEntryByXmlConfigName(FEAT_SIZES_TO_ROTATE, "12_6x18_5"),
              &Options().GetEntryByXmlConfigName(FEAT_SIZES_TO_ROTATE, "SR12_6x18_5"));
    EXPECT_EQ(Options().FindEntryByXmlConfigName(FEAT_COLOR_EFFECTS, "12_6x18_5"), nullptr);
    EXPECT_TRUE(Options().IsXmlConfigNamePresent(FEAT_SIZES_TO_ROTATE, "SR12_6x18_5"));
    EXPECT_FALSE(Options().IsXmlConfigNamePresent(FEAT_SIZES_TO_ROTATE, "12_6x18_5"));
    EXPECT_FALSE(Options().IsPrintTicketNamePresent(FEAT_SIZES_TO_ROTATE, "12_6x18_5"));
    EXPECT_EQ(MessageOf([] { (void)Options().GetEntryByPrintTicketName(FEAT_SIZES_TO_ROTATE, "12_6x18_5"); }),
              NoSuchKey("0076712_6x18_5"));
    // What is looked up is what the message shows.
    EXPECT_EQ(MessageOf([] { (void)Options().GetEntryByXmlConfigName(FEAT_COLOR_EFFECTS, "12_6x18_5"); }),
              NoSuchKey("00105SR12_6x18_5"));
}

TEST(OptionDictionaries, ComposeTheirKeys) {
    const std::string longName(1000, 'n');
    const Rows<std::function<void()>, std::string> cases{
        {[] { (void)Options().GetEntryByXmlConfigName(FEAT_BOOKLET, "booklet-on"); }, "00199booklet-on"},
        {[] { (void)Options().GetEntryByPrintTicketName(tagFeatureEnum{123456}, L"\xD83D\xDE00\x20AC"); },
         "123456\xF0\x9F\x98\x80\xE2\x82\xAC"},
        {[] { (void)CpssOptions().GetEntryByCpssName(tagFeatureEnum{-12}, ""); }, "-00012"},
        {[&] { (void)CpssOptions().GetEntryByCpssName(FEAT_JOB_TYPE, longName); }, "00036" + longName},
        {[] { (void)CpssOptions().GetEntry(FEAT_COPIES, VAL_JOB_TYPE_NONE); }, "0003807904"},
    };
    for (const auto& [ask, key] : cases)
        EXPECT_EQ(MessageOf(ask), NoSuchKey(key));
}
