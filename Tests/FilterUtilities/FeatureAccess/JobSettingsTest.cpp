#include "Support/FilterJob.h"
#include "Support/TicketText.h"

#include <ComSupport/MsSafeCoinit.h>
#include <FeatureAccess/JobSettings.h>
#include <LowLevelFacilities/Failures/CPComException.h>
#include <PropertyBags/NativeComPrinterPropertyBagAccess.h>
#include <Spooler/QueuePropertyBag.h>
#include <Ticket/PrintTicketManager.h>

#include <gtest/gtest.h>

namespace {

using namespace DataModelIds;
using enum FeatureValueSource;

// A manager that has merged a job on the sample queue, whose page asks for its own orientation.
class JobSettingsTest : public testing::Test {
protected:
    void SetUp() override {
        std::wstring name = SampleQueue::name;
        ASSERT_EQ(manager.Initialize(MakeFake<MemoryReadStream>(queue.DefaultTicket()), name.data(), nullptr),
                  S_OK);
        m_job->ticket = Ticket(L"/job", "psk:Landscape");
        m_page->ticket = Ticket(L"/page", "psk:Portrait");
        const auto folder = OvPlatform::QueueFolder::Load(OV_SOURCE_DIR "/Samples/Queues/ColorOffice");
        ASSERT_EQ(OvPlatform::QueuePropertyBag::Create(folder->DriverProperties(),
                                                       OvPlatform::QueuePropertyBag::Access::ReadOnly,
                                                       &m_properties),
                  S_OK);
        m_bag.emplace(*m_properties, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere);
        driver.emplace(*m_bag);
    }
    void Merge() {
        ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(m_job), S_OK);
        ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(m_document), S_OK);
        ASSERT_EQ(manager.MergeAndValidatePartPrintTicket(m_page), S_OK);
    }

    const MsSafeCoInit apartment;
    SampleQueue queue;
    PrintTicketManager manager;
    std::optional<OrvelDriverPropertyBag> driver;

private:
    static CComPtr<IPartPrintTicket> Ticket(const wchar_t* uri, const std::string& orientation) {
        return CComPtr<IPartPrintTicket>(
            new FakePrintTicketPart(uri, TicketText(Choice("psk:PageOrientation", orientation))));
    }

    CComPtr<FakeFixedDocumentSequence> m_job = MakeFake<FakeFixedDocumentSequence>();
    CComPtr<FakeFixedDocument> m_document = MakeFake<FakeFixedDocument>();
    CComPtr<FakeFixedPage> m_page = MakeFake<FakeFixedPage>();
    CComPtr<IPrinterPropertyBag> m_properties;
    std::optional<NativeComPrinterPropertyBagAccess> m_bag;
};

TEST_F(JobSettingsTest, AnswerForEachLevelFromAllPlaces) {
    Merge();
    JobSettings job(manager, kPTJobScope, *driver, {.documentName = L"report", .userName = L"ada"});
    JobSettings page(manager, kPTPageScope, job);
    const struct {
        JobSettings& settings;
        tagFeatureEnum feature;
        int value;
        FeatureValueSource source;
    } rows[] = {
        {job, FEAT_MS_ORIENTATION, VAL_MS_ORIENTATION_LANDSCAPE, PrintTicket},
        {page, FEAT_MS_ORIENTATION, VAL_MS_ORIENTATION_PORTRAIT, PrintTicket},
        {job, FEAT_OUTLINES, VAL_OUTLINES_ON, PublicDocumentSettings},
        {job, FEAT_OUTPUT_DESTINATION, VAL_OUTPUT_BIN_MAILBOX3, AttributeBytes},
        {page, FEAT_BOOKLET, VAL_BOOKLET_OFF, FactoryDefault},
    };
    for (const auto& row : rows) {
        FeatureValueSource source{};
        EXPECT_EQ(row.settings.Features().GetOptionValue(row.feature, source).GetValuePlusSpecifiedState(),
                  row.value)
            << row.feature;
        EXPECT_TRUE(source == row.source) << row.feature;
    }
    Dimension width;
    Dimension height;
    EXPECT_TRUE(page.Features().GetOutputSize(width, height));
    EXPECT_EQ(width.GetValue(Dimension::Micron), Number(210'000));
    EXPECT_EQ(page.Features().GetPrintJobUserName(), L"ada") << "as the other level has it";
    EXPECT_EQ(&page.Device(), &job.Device());

    const RecordedFeatureAccess recorded = job.RecordedFeatures();
    (void)recorded.GetOptionValue(FEAT_OUTLINES);
    (void)recorded.GetOutputSize(width, height);
    ASSERT_EQ(recorded.Answers().size(), 2U);
    EXPECT_TRUE(recorded.Answers()[0].source == PublicDocumentSettings);
    EXPECT_TRUE(recorded.Answers()[1].source == PrintTicket);
}

TEST_F(JobSettingsTest, WriteIntoTheTicketOfTheManager) {
    Merge();
    JobSettings settings(manager, kPTDocumentScope, *driver);
    EXPECT_EQ(settings.DocumentSettings().SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(
                  L"outlines-api", L"keyword", true, L"outlines-off"),
              S_OK);
    EXPECT_EQ(settings.DocumentSettings().CommitChangesToPrintTicket(), S_OK);
    settings.Features().SetOptionValue(FEAT_COLLATION, VAL_COLLATION_UNCOLLATED);
    const JobSettings again(manager, kPTDocumentScope, settings);
    EXPECT_EQ(again.Features().GetOptionValue(FEAT_OUTLINES).GetValue(), VAL_OUTLINES_OFF);
    EXPECT_EQ(again.Features().GetOptionValue(FEAT_COLLATION).GetValue(), VAL_COLLATION_UNCOLLATED);
}

TEST_F(JobSettingsTest, NeedALevelThatIsMerged) {
    EXPECT_THROW(JobSettings(manager, kPTPageScope, *driver), CPComException);
}

} // namespace
