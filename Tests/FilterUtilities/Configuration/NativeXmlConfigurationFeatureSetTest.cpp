#include "Support/ConfiguredQueue.h"
#include "Support/FakePipeline.h"
#include "Support/FakePrinterPropertyBag.h"
#include "Support/InApartment.h"
#include "Support/ReportRecorder.h"
#include "Support/Rows.h"

#include <Configuration/NativeXmlConfigurationFilterUtilities.h>
#include <Configuration/TicketEnforcement.h>
#include <LowLevelFacilities/Failures/CPExceptionUnknownKeyRequest.h>
#include <LowLevelFacilities/Formatter/CPFormat.h>

#include <gtest/gtest.h>

#include <set>

namespace {

using namespace DataModelIds;
using Feature = NativeXmlConfigurationFeature;
using JobTypes = NativeXmlConfigurationFeatureSet::JobTypes;
using NativeXmlConfigurationFeatureSetTest = InApartment<>;

TEST_F(NativeXmlConfigurationFeatureSetTest, MembersAnswerOutOfTheDictionaries) {
    const auto set = ConfiguredFeatures(
        ConfiguredFeature("2-SidedPrinting", "TwoSidedAny", "EnforcedDefault") +
        ConfiguredFeature("SecurePrintOnly", "Enabled", "Default") + ConfiguredFeature("FaxJobType", "ON") +
        ConfiguredFeature("JobType", "nonsense", "") + "<Feature Name='Staple'><UID/><Setting/></Feature>");
    // By name, with their behaviours.
    const Rows<Feature::BehaviorEnum, std::string> members{
        {Feature::EnforcedDefault,
         "DOCUMENT: DataModelIds::VAL_SIDES_TWO_SIDED_ANY (OPTION) is EnforcedDefault "
         "for 2-SidedPrinting/DataModelIds::FEAT_SIDES_IMAGED/sides"},
        {Feature::EnforcedSetting,
         "DOCUMENT: true (BOOLEAN) is EnforcedSetting for "
         "FaxJobType/DataModelIds::FEAT_DEV_CONFIGURE_JOB_TYPE_FAX/odrv-device-configure-job-type-fax"},
        {Feature::EnforcedSetting,
         "DOCUMENT: nonsense (OPTION) is  for JobType/DataModelIds::FEAT_JOB_TYPE/job-type-api"},
        {Feature::Default,
         "DEVICE: DataModelIds::VAL_SECURE_PRINT_ONLY_ENABLED (OPTION) is Default for "
         "SecurePrintOnly/DataModelIds::FEAT_DEV_SECURE_PRINT_ONLY/odrv-device-secure-print-only"},
        {Feature::NoBehavior,
         "DOCUMENT:  (OPTION) is  for Staple/DataModelIds::FEAT_FINISHING_STAPLE/staple-api"},
    };
    ASSERT_EQ(set.NumberOfFeatures(), members.size());
    unsigned int i = 0;
    for (const auto& [behavior, display] : members) {
        const Feature& member = set.GetFeature(i++);
        EXPECT_EQ(member.GetDebugDisplayString(), display.c_str());
        EXPECT_EQ(member.GetBehaviorEnum(), behavior) << display;
        EXPECT_EQ(set.TryGetFeature(member.GetXmlConfigFeature()), &member);
        EXPECT_EQ(set.TryGetFeature(member.GetFeatureEnum()), &member);
    }
    EXPECT_EQ(set.GetFeature(0).GetValueEnum(), VAL_SIDES_TWO_SIDED_ANY);
    EXPECT_EQ(set.GetFeature(0).GetValueEnumString(), "DataModelIds::VAL_SIDES_TWO_SIDED_ANY");
    EXPECT_THROW(static_cast<void>(set.GetFeature(2).GetValueEnum()), CPExceptionUnknownKeyRequest);
    EXPECT_FALSE(set.GetFeature(2).TryGetValueEnum());
    EXPECT_EQ(set.TryGetFeature("Color"), nullptr);
    EXPECT_EQ(set.TryGetFeature(FEAT_COLOR_EFFECTS), nullptr);
}

TEST_F(NativeXmlConfigurationFeatureSetTest, WordsForYes) {
    const Rows<const char*, bool> words{{"T", true},    {"Enabled", true}, {"ON", true}, {"true", true},
                                        {"yes", false}, {"1", false},      {"", false},  {"tru", false}};
    for (const auto& [word, isYes] : words)
        EXPECT_EQ(ConfiguredFeatures(ConfiguredFeature("FaxJobType", word)).GetFeature(0).GetBooleanValue(),
                  isYes)
            << word;
}

TEST_F(NativeXmlConfigurationFeatureSetTest, KnowsCollectionsAndOlderNamesOfValues) {
    const auto set =
        ConfiguredFeatures(ConfiguredFeature("PullPrintStapler", "x") +
                           ConfiguredFeature("PaperSizeSubsequentRotationSetting", "Envelope4_375x5_75"));
    const Feature& sizes = *set.TryGetFeature("PaperSizeSubsequentRotationSetting");
    EXPECT_EQ(sizes.GetValueEnum(), VAL_MEDIA_SIZE_OPTIONS_ENV_5_5_4_375X5_75);
    const Feature& stapler = *set.TryGetFeature("PullPrintStapler");
    EXPECT_TRUE(stapler.HasParentFeatures());
    EXPECT_TRUE(std::string(stapler.GetDebugDisplayString().view()).ends_with("-actual (parents: 747)"));
}

TEST_F(NativeXmlConfigurationFeatureSetTest, ASubsetIsByModeAndAMemberCanGo) {
    auto set =
        ConfiguredFeatures(ConfiguredFeature("Staple", "None") +
                           ConfiguredFeature("SecurePrintOnly", "Enabled") + ConfiguredFeature("Color", "x"));
    EXPECT_EQ(set.GetDeviceFeatures().NumberOfFeatures(), 1u);
    EXPECT_NE(set.GetDeviceFeatures().TryGetFeature("SecurePrintOnly"), nullptr);
    EXPECT_EQ(set.GetDocumentFeatures().NumberOfFeatures(), 2u);
    EXPECT_TRUE(set.RemoveIfPresent(FEAT_FINISHING_STAPLE));
    EXPECT_FALSE(set.RemoveIfPresent(FEAT_FINISHING_STAPLE));
    EXPECT_EQ(set.NumberOfFeatures(), 2u);
    EXPECT_EQ(set.TryGetFeature("Staple"), nullptr);
}

TEST_F(NativeXmlConfigurationFeatureSetTest, JobTypesAreDisallowedOnlyByANo) {
    // Every feature there is says no in turn, says yes, and has no setting.
    const auto disallowed = [](const std::string& configuration) {
        const auto set = ConfiguredFeatures(configuration);
        std::string types;
        for (int type = 7880; type < 7920; ++type)
            if (set.IsJobTypeValueDisallowedByXmlConfig(static_cast<tagValueEnum>(type)))
                types += " " + std::to_string(type);
        return types;
    };
    std::vector<const NativeXmlConfigFeatureEntry*> entries;
    NativeXmlConfigFeatureDictionary::Instance()->GetAllEntries(entries);
    std::set<std::string> guards;
    for (const auto* const entry : entries) {
        const std::string name(entry->xmlConfigFeatureName.view());
        const std::string types = disallowed(ConfiguredFeature(name, "no"));
        if (!types.empty()) guards.insert(name + types);
        EXPECT_EQ(disallowed(ConfiguredFeature(name, "Enabled")), "") << name;
        EXPECT_EQ(disallowed("<Feature Name='" + name + "'><ModelName/></Feature>"), "") << name;
    }
    EXPECT_EQ(guards, (std::set<std::string>{"NormalPrintJobType 7890", "SecurePrintJobType 7891",
                                             "DelayedPrintJobType 7893", "FaxJobType 7894",
                                             "SaveJobType 7895", "PrintAndSaveJobType 7896",
                                             "PersonalPrintJobType 7897", "SavedJobType 7898 7900",
                                             "ProofPrintJobType 7899 7905", "PrintWithJobType 7901",
                                             "HoldJobType 7902", "CreateBackgroundFormJobType 7903"}));
    const NativeXmlConfigurationFeatureSet empty = ConfiguredFeatures("");
    EXPECT_TRUE(
        empty.IsJobTypeValueSupportedByPrinterPriorToConstraints({VAL_JOB_TYPE_HOLD}, VAL_JOB_TYPE_HOLD));
    EXPECT_FALSE(empty.IsJobTypeValueSupportedByPrinterPriorToConstraints({}, VAL_JOB_TYPE_HOLD));
    EXPECT_FALSE(empty.IsJobTypeValueSupportedByPrinterPriorToConstraints({VAL_JOB_TYPE_PRINT_WITH},
                                                                          VAL_JOB_TYPE_PRINT_WITH));
}

TEST_F(NativeXmlConfigurationFeatureSetTest, AJobBecomesATypeThatIsAllowed) {
    const auto of = [](std::initializer_list<int> types) {
        JobTypes result;
        for (const int type : types)
            result.push_back(static_cast<tagValueEnum>(type));
        return result;
    };
    const auto wants = [](const char* type) { return ConfiguredFeature("JobType", type); };
    const auto no = [](const char* guard) { return ConfiguredFeature(guard, "false"); };
    const std::string secureOnly = ConfiguredFeature("SecurePrintOnly", "Enabled");
    // the configuration, the device's types, the job's; what it becomes, and what was enforced
    const Rows<std::string, JobTypes, int, int, int> jobs{
        {"", of({7890}), 7890, 7890, 5001},
        {"", of({7890}), 7891, 7890, 5001},
        {"", of({7895, 7897, 7902}), 5001, 7897, 7897},
        {"", of({}), 5001, 7904, 7904},
        {"", of({7890, 7894, 7901}), 7894, 7890, 5001},
        {"", of({7890, 7901}), 7901, 7890, 5001},
        {secureOnly + wants("HoldJobType"), of({}), 7890, 7891, 7891},
        {ConfiguredFeature("SecurePrintOnly", "Disabled"), of({7890}), 7890, 7890, 5001},
        {ConfiguredFeature("SecurePrintOnly", "nonsense"), of({7890}), 7890, 7890, 5001},
        {wants("HoldJobType"), of({7890, 7902}), 7890, 7902, 7902},
        {wants("HoldJobType") + no("HoldJobType"), of({7890, 7902}), 7890, 7890, 7902},
        {wants("HoldJobType"), of({7891}), 7890, 7891, 7902},
        {wants("nonsense"), of({7890}), 7890, 7890, 5001},
        {wants("ProofPrintJobType"), of({7899, 7905}), 7890, 7899, 7899},
        {wants("ProofPrintJobType"), of({7905}), 7890, 7905, 7905},
        {wants("SavedJobType"), of({7900, 7898}), 7890, 7900, 7900},
        {wants("SavedJobType"), of({7898}), 7890, 7898, 7898},
        {wants("SavedJobType"), of({7890}), 5001, 7890, 7900},
        {no("NormalPrintJobType") + no("PersonalPrintJobType"), of({7890, 7897, 7899}), 7890, 7899, 5001},
    };
    for (const auto& [configuration, ofDevice, current, expected, expectedEnforced] : jobs) {
        auto set = ConfiguredFeatures(configuration);
        tagValueEnum enforced{};
        EXPECT_EQ(set.GetNewJobTypeValueByEnforcingXmlConfig(ofDevice, static_cast<tagValueEnum>(current),
                                                             enforced),
                  expected)
            << configuration;
        EXPECT_EQ(enforced, expectedEnforced) << configuration;
    }
    // The order in which others are tried: one after the other is taken off the device.
    JobTypes ofDevice =
        of({7890, 7891, 7893, 7894, 7895, 7896, 7897, 7898, 7899, 7900, 7901, 7902, 7903, 7904, 7905});
    const auto set = ConfiguredFeatures("");
    for (const int expected : {7890, 7897, 7899, 7902, 7898, 7893, 7900, 7895, 7896, 7891, 7903, 7905}) {
        EXPECT_EQ(set.GetAllowableJobTypeFallbackValue(ofDevice, VAL_UNSPECIFIED), expected);
        EXPECT_NE(set.GetAllowableJobTypeFallbackValue(ofDevice, static_cast<tagValueEnum>(expected)),
                  expected);
        std::erase(ofDevice, static_cast<tagValueEnum>(expected));
    }
    EXPECT_EQ(set.GetAllowableJobTypeFallbackValue(ofDevice, VAL_UNSPECIFIED), VAL_JOB_TYPE_NONE);
}

TEST_F(NativeXmlConfigurationFeatureSetTest, ThreeFeaturesAreEnforcedInTickets) {
    // Every value that the dictionary has for them, with what it writes; a star where a default does, too.
    std::vector<const NativeXmlConfigOptionValueEntry*> options;
    NativeXmlConfigOptionValueDictionary::Instance()->GetAllEntries(options);
    std::string told;
    for (const TicketEnforcement::Feature& feature : TicketEnforcement::GetFeatures()) {
        const std::string name(feature.configurationName);
        EXPECT_EQ(TicketEnforcement::Find(name), &feature);
        told += name + ":";
        const auto find = [&](const CPString& value, const char* behavior) {
            const auto set = ConfiguredFeatures(ConfiguredFeature(name, value.utf8Bytes(), behavior));
            return TicketEnforcement::FindValue(feature, set.GetFeature(0));
        };
        for (const auto* const option : options) {
            const CPString& value = option->xmlConfigOptionName;
            const auto* const written = find(value, "EnforcedSetting");
            if (written == nullptr || written->value != option->value) continue; // of another feature
            told += FormatStdString(" %s=%s", value, written->text);
            if (written->number != 0) told += FormatStdString("/%d", written->number);
            if (find(value, "EnforcedDefault") == written) told += "*";
            EXPECT_EQ(find(value, "Default"), nullptr);
        }
        told += "\n";
    }
    EXPECT_EQ(told,
              "ImagesPerPage: 1=1/1 2=2/2 4=4/4 6=6/6 9=9/9 16=16/16\n"
              "JobIdentification: DisableJobId=ok:JobIdOff PrintIdOnABannerSheet=ok:JobIdBannerOn "
              "PrintIdInMarginsFirstPageOnly=ok:JobIdPrintFirstPage "
              "PrintIdInMarginsAllPages=ok:JobIdPrintAllPages _custombannersheet_=ok:JobIdCustomBanner\n"
              "2-SidedPrinting: OneSided=OneSided TwoSidedLongEdge=TwoSidedLongEdge "
              "TwoSidedShortEdge=TwoSidedShortEdge TwoSidedAny=TwoSidedLongEdge*\n");
    EXPECT_EQ(TicketEnforcement::Find("Staple"), nullptr);
    const auto sides = [](const char* configured, const wchar_t* current) {
        const auto& feature = *TicketEnforcement::Find("2-SidedPrinting");
        const auto set = ConfiguredFeatures(ConfiguredFeature("2-SidedPrinting", configured));
        return TicketEnforcement::Replaces(*TicketEnforcement::FindValue(feature, set.GetFeature(0)),
                                           current);
    };
    EXPECT_TRUE(sides("TwoSidedAny", L"OneSided"));
    EXPECT_FALSE(sides("TwoSidedAny", L"TwoSidedShortEdge"));
    EXPECT_FALSE(sides("TwoSidedAny", L"Other"));
    EXPECT_TRUE(sides("TwoSidedLongEdge", L"TwoSidedShortEdge"));
    EXPECT_FALSE(sides("TwoSidedLongEdge", L"TwoSidedLongEdge"));
}

TEST_F(NativeXmlConfigurationFeatureSetTest, FiltersHaveItFromThePipeline) {
    const auto build = [](FakePropertyBag& pipeline) {
        return NativeXmlConfigurationFilterUtilities::
            CreateNativeXmlConfigurationFeatureSetFromPipelineProperties(pipeline, L"Printer")
                .NumberOfFeatures();
    };
    const ReportRecorder recorder;
    const auto queueBag = MakeFake<FakePrinterPropertyBag>();
    const auto driverBag = MakeFake<FakePrinterPropertyBag>();
    const std::string properties = "<q><OrvelQueuePrePostConfiguration><![CDATA[<c>" +
                                   ConfiguredFeature("Staple", "None") +
                                   "</c>]]></OrvelQueuePrePostConfiguration></q>";
    queueBag->SetString(CComBSTR(L"OrvelQueueProperties"), CComBSTR(CXString(properties.c_str())));
    const auto pipeline = MakeFake<FakePropertyBag>();
    EXPECT_EQ(build(*pipeline), 0u);
    pipeline->SetObject(XPS_FP_QUEUE_PROPERTY_BAG, queueBag);
    EXPECT_EQ(build(*pipeline), 0u) << "no driver bag";
    pipeline->SetObject(XPS_FP_DRIVER_PROPERTY_BAG, driverBag);
    EXPECT_EQ(build(*pipeline), 1u);
    pipeline->SetString(XPS_FP_QUEUE_PROPERTY_BAG, L"no bag");
    EXPECT_EQ(build(*pipeline), 0u);
    EXPECT_TRUE(ReportRecorder::reports().empty());

    // A device whose description is broken is governed all the same.
    pipeline->SetObject(XPS_FP_QUEUE_PROPERTY_BAG, queueBag);
    CComPtr<IStream> capabilities;
    driverBag->GetWriteStream(CComBSTR(L"DeviceCapabilities"), &capabilities);
    capabilities->Write("broken", 6, nullptr);
    EXPECT_EQ(build(*pipeline), 1u);
    EXPECT_EQ(ReportRecorder::reports().size(), 1u);
    pipeline->failures[XPS_FP_QUEUE_PROPERTY_BAG] = E_ACCESSDENIED;
    EXPECT_EQ(build(*pipeline), 0u);
    EXPECT_EQ(ReportRecorder::reports().size(), 2u) << "a bag that is there but cannot be had";
    EXPECT_EQ(queueBag->References(), 2u) << "ours and the pipeline's";
}

} // namespace
