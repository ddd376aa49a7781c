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
    std::optional<JobSettings> settings;

private:
    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
    CComPtr<IPrinterPropertyBag> m_properties;
};

template <typename Entry, typename Dictionary>
std::vector<const Entry*> Entries(const Dictionary* dictionary) {
    std::vector<const Entry*> entries;
    dictionary->GetAllEntries(entries);
    return entries;
}
const auto features = [] {
    return Entries<NativeXmlConfigFeatureEntry>(NativeXmlConfigFeatureDictionary::Instance());
};

class SampleQueue : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Samples, SampleQueue, testing::Values("ColorOffice", "MonoOffice"),
                         [](const auto& one) { return std::string(one.param); });

// A misspelt name would be a feature that nobody asks for.
TEST_P(SampleQueue, DescribeTheirDevicesInWordsThatTheDictionariesHave) {
    const SampleQueueJob job(GetParam());
    std::map<tagFeatureEnum, std::set<std::string>> wordsOf;
    for (const auto* option :
         Entries<NativeXmlConfigCpssOptionValueEntry>(NativeXmlConfigCpssOptionValueDictionary::Instance()))
        wordsOf[option->feature].insert(option->cpssOptionName.utf8Bytes());
    int known = 0;
    for (const auto* entry : features()) {
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
    for (const auto* entry : features()) {
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
        {FEAT_FINISHING_1_STAPLE, VAL_FINISHING_1_STAPLE_TOP_RIGHT, L"JobStapleAllDocuments",
         L"StapleTopRight"},
        {FEAT_JOB_IDENTIFICATION, VAL_PRINT_ID_CUSTOM_BANNER_SHEET, L"JobIdentification",
         L"JobIdCustomBanner"},
        {FEAT_PAGE_LAYOUT, VAL_PAGE_LAYOUT_NUP_16, L"JobNUpAllDocumentsContiguously", L"16"},
    };
    for (const auto& [asked, value, ticketFeature, option] : rows) {
        color.settings->TicketAccess().SetCurrentValueOptionFeature(ticketFeature, option);
        EXPECT_EQ(color.Ask(asked), (Answered{true, value, FeatureValueSource::PrintTicket}))
            << CPString(option);
    }
    mono.settings->TicketAccess().SetCurrentValueOptionFeature(L"JobHolePunch", L"HolePunchDualLeft");
    EXPECT_EQ(mono.Ask(FEAT_FINISHING_HOLE_PUNCH).value, VAL_FINISHING_2_HOLE_PUNCH) << "counts only";
}

} // namespace
