// The sample queues: their devices, capabilities and default tickets fit each other and the dictionaries.

#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "Support/Rows.h"

#include <DataModel/NativeXmlConfigCpssOptionValueDictionary.h>
#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DeviceDescription/OrvelDriverPropertyBag.h>
#include <FeatureAccess/JobSettings.h>
#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>
#include <Spooler/QueueFolder.h>
#include <Spooler/QueuePropertyBag.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>

namespace {

using namespace DataModelIds;

// A job without wishes of its own: what the queue's default ticket says.
class SampleQueueJob {
public:
    explicit SampleQueueJob(const std::string& name)
        : folder(std::string(OV_SOURCE_DIR "/Samples/Queues/") + name),
          m_queue(OvPlatform::QueueFolder::Load(folder)) {
        EXPECT_EQ(S_OK, OvPlatform::QueuePropertyBag::Create(m_queue->DriverProperties(),
                                                             OvPlatform::QueuePropertyBag::Access::ReadOnly,
                                                             &m_properties));
        NativeComPrinterPropertyBagAccess bag(
            *m_properties, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere);
        const OrvelDriverPropertyBag driver(bag);
        coversTravelInOpif = driver.AreCoversSupportedAndOutputInOpif();
        settings.emplace(CXString(m_queue->DefaultTicket().c_str()),
                         CXString(m_queue->Capabilities().c_str()), driver.GetSimpleOcapParser());
    }

    [[nodiscard]] Answered Ask(tagFeatureEnum feature) const {
        FeatureValueSource source{};
        const SimpleOptionValue value = settings->Features().GetOptionValue(feature, source);
        return {value.IsSpecified(), value.GetValue(), source};
    }

private:
    MsSafeCoInit m_apartment;

public:
    const std::filesystem::path folder;
    bool coversTravelInOpif = false;
    std::optional<JobSettings> settings;

private:
    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
    CComPtr<IPrinterPropertyBag> m_properties;
};

std::vector<const NativeXmlConfigFeatureEntry*> Entries(const NativeXmlConfigFeatureDictionary& dictionary) {
    std::vector<const NativeXmlConfigFeatureEntry*> entries;
    dictionary.GetAllEntries(entries);
    return entries;
}

std::vector<const NativeXmlConfigCpssOptionValueEntry*>
Entries(const NativeXmlConfigCpssOptionValueDictionary& dictionary) {
    std::vector<const NativeXmlConfigCpssOptionValueEntry*> entries;
    dictionary.GetAllEntries(entries);
    return entries;
}

class SampleQueue : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Samples, SampleQueue, testing::Values("ColorOffice", "MonoOffice"),
                         [](const auto& one) { return std::string(one.param); });

// A misspelt name would be a feature that nobody asks for.
TEST_P(SampleQueue, DescribeTheirDevicesInWordsThatTheDictionariesHave) {
    const SampleQueueJob job(GetParam());
    std::map<tagFeatureEnum, std::set<std::string>> wordsOf;
    for (const auto* option : Entries(*NativeXmlConfigCpssOptionValueDictionary::Instance()))
        wordsOf[option->feature].insert(option->cpssOptionName.utf8Bytes());
    int known = 0;
    for (const auto* entry : Entries(*NativeXmlConfigFeatureDictionary::Instance())) {
        const CPString& name = entry->cpssFeatureName;
        if (!job.settings->Device().IsCpssFeatureSupported(name)) continue;
        ++known;
        if (!wordsOf.contains(entry->feature)) continue;
        const auto values = job.settings->Device().GetSupportedFeatureOrValuesFromOcap(name, false);
        EXPECT_FALSE(values.empty()) << name;
        for (const CPString& value : values)
            EXPECT_TRUE(wordsOf[entry->feature].contains(value.utf8Bytes())) << name << ": " << value;
    }
    int listed = 0;
    std::ifstream document(job.folder / "device-capabilities.xml");
    for (std::string line; std::getline(document, line);)
        listed += line.starts_with("  <") && line[3] != '/' && line[3] != '!';
    EXPECT_EQ(listed, known)
        << "features at the top of the document, and those with a name in the dictionary";
    for (const CXString& option : job.settings->Device().GetSupportedInstallableOptionFeaturesFromOcap())
        EXPECT_TRUE(option.View().starts_with(L"installable-")) << option;
}

// A feature may be decided by the ticket only if the capabilities show it, in the words of the dictionary.
TEST(SampleQueues, OfferEveryFeatureOfTickets) {
    SampleQueueJob color("ColorOffice");
    for (const auto* entry : Entries(*NativeXmlConfigFeatureDictionary::Instance())) {
        if (entry->ticketKind == NativeXmlConfigFeatureEntry::TICKET_KIND) {
            EXPECT_TRUE(color.settings->Features().IsSupportedFeature(entry->feature))
                << entry->featureEnumString;
        }
    }
    SampleQueueJob mono("MonoOffice");
    EXPECT_FALSE(mono.settings->Features().IsSupportedFeature(FEAT_FINISHING_STAPLE));
    EXPECT_FALSE(mono.settings->Features().IsSupportedFeature(FEAT_FINISHING_FOLD));

    const Rows<tagFeatureEnum, int, const wchar_t*, const wchar_t*> rows{
        {FEAT_FINISHING_2_HOLE_PUNCH, VAL_FINISHING_HOLE_PUNCH_PTLR, L"JobHolePunch", L"HolePunchDualTop"},
        {FEAT_FINISHING_4_HOLE_PUNCH, VAL_FINISHING_HOLE_PUNCH_PLLT, L"JobHolePunch", L"HolePunchQuadLeft"},
        {FEAT_FINISHING_FOLD, VAL_FINISHING_Z_FOLD_PI, L"JobBindAllDocuments", L"FoldZ"},
        {FEAT_FINISHING_1_STAPLE, VAL_FINISHING_1_STAPLE_TOP_RIGHT, L"JobStapleAllDocuments",
         L"StapleTopRight"},
        {FEAT_JOB_IDENTIFICATION, VAL_PRINT_ID_CUSTOM_BANNER_SHEET, L"JobIdentification",
         L"JobIdCustomBanner"},
        {FEAT_PAGE_LAYOUT, VAL_PAGE_LAYOUT_NUP_16, L"JobNUpAllDocumentsContiguously", L"16"},
        {FEAT_MS_PIN_PRINTING, VAL_PIN_PRINTING_ON, L"JobPasscode", L"On"},
        {FEAT_MARGINS, VAL_MARGINS_BORDERLESS, L"PageBorderless", L"Borderless"},
    };
    for (const auto& [asked, value, ticketFeature, option] : rows) {
        color.settings->TicketAccess().SetCurrentValueOptionFeature(ticketFeature, option);
        EXPECT_EQ(color.Ask(asked), (Answered{true, value, FeatureValueSource::PrintTicket}))
            << CPString(option);
    }
    mono.settings->TicketAccess().SetCurrentValueOptionFeature(L"JobHolePunch", L"HolePunchDualLeft");
    EXPECT_EQ(mono.Ask(FEAT_FINISHING_HOLE_PUNCH).value, VAL_FINISHING_2_HOLE_PUNCH) << "counts only";
}

TEST(SampleQueues, ShowEachSourceDecide) {
    using enum FeatureValueSource;
    const SampleQueueJob job("ColorOffice");
    const Rows<tagFeatureEnum, Answered> rows{
        {FEAT_COLOR_EFFECTS, {true, VAL_COLOR_EFFECTS_COLOR, PrintTicket}},
        {FEAT_JOB_IDENTIFICATION, {true, VAL_PRINT_ID_OFF, PrintTicket}},
        {FEAT_PRINT_QUALITY_LEVEL, {true, VAL_QUALITY_ENHANCED, PublicDocumentSettings}},
        {FEAT_OUTLINES, {true, VAL_OUTLINES_ON, PublicDocumentSettings}},
        {FEAT_OUTPUT_DESTINATION, {true, VAL_OUTPUT_BIN_MAILBOX3, AttributeBytes}},
        {FEAT_DISPLAY_COLOR_CORRECTION, {true, VAL_SOURCE_CMYK_COMMERCIAL, AttributeBytes}},
        {FEAT_JOB_OFFSET_API, {true, VAL_JOB_OFFSET_SET, AttributeBytes}},
        {FEAT_BOOKLET, {true, VAL_BOOKLET_OFF, FactoryDefault}},
        {FEAT_COVER_OPTIONS, {true, VAL_COVER_OPTION_NONE, FactoryDefault}},
        {FEAT_JOB_TYPE, {true, VAL_JOB_TYPE_NORMAL_PRINT, FactoryDefault}},
    };
    for (const auto& [feature, answer] : rows)
        EXPECT_EQ(job.Ask(feature), answer) << job.settings->Features().GetFeatureEnumNameForDisplay(feature);
    int value = 0;
    FeatureValueSource source{};
    EXPECT_TRUE(job.settings->Features().GetIntegerValue(FEAT_LIGHTNESS, value, source));
    EXPECT_TRUE(value == 5 && source == AttributeBytes) << value;
    EXPECT_TRUE(job.settings->Features().GetIntegerValue(FEAT_SATURATION, value, source));
    EXPECT_TRUE(value == 10 && source == FactoryDefault) << value;
    EXPECT_TRUE(job.coversTravelInOpif);
    EXPECT_FALSE(SampleQueueJob("MonoOffice").coversTravelInOpif);
}

} // namespace
