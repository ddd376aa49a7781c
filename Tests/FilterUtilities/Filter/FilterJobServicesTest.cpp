#include "Support/FakePrinterPropertyBag.h"
#include "Support/FilterJob.h"
#include "Support/Rows.h"

#include <ComSupport/MsSafeCoinit.h>
#include <FeatureAccess/JobSettings.h>
#include <Filter/StreamFilterBase.h>
#include <LowLevelFacilities/Failures/CPComException.h>

#include <gtest/gtest.h>

namespace {

class SomeFilter : public StreamFilterBase {
public:
    using StreamFilterBase::JobSettingsOf;
};

struct FilterJobServices : testing::Test {
    const MsSafeCoInit apartment; // as the thread of a running filter has it

    CComPtr<SomeFilter> Initialized(FilterJob& job) {
        CComPtr<SomeFilter> filter;
        filter.Attach(new SomeFilter);
        const auto communicator =
            MakeFake<FakeCommunicator>(MakeFake<MemoryReadStream>(""), MakeFake<MemoryWriteStream>());
        EXPECT_EQ(filter->InitializeFilter(communicator, job.bag, job.control), S_OK);
        job.bag->reads.clear();
        return filter;
    }
};

TEST_F(FilterJobServices, DestinationFollowsThePort) {
    const Rows<const wchar_t*, int, bool, const wchar_t*> cases{
        {L"LPT1:", MsRenderFilterBase::OutputDestinationDevicePort, false, L""},
        {L"192.0.2.7", MsRenderFilterBase::OutputDestinationDevicePort, false, L""},
        {L"NUL:", MsRenderFilterBase::OutputDestinationNulPort, false, L""},
        {L"file:", MsRenderFilterBase::OutputDestinationFilePort, true, L""},
        {L"C:\\spool\\out.prn", MsRenderFilterBase::OutputDestinationPathPort, true, L"C:\\spool\\out.prn"},
    };
    for (const auto& [port, destination, isFile, fileName] : cases) {
        FilterJob job(port);
        const auto filter = Initialized(job);
        EXPECT_EQ(filter->GetOutputDestinationEnum(), MsRenderFilterBase::OutputDestinationNotYetDetermined);
        EXPECT_EQ(filter->IsJobDefinitelyBeingPrintedToFile(), isFile) << destination;
        EXPECT_EQ(filter->GetOutputDestinationEnum(), destination);
        EXPECT_STREQ(filter->GetOutputFilenameIfKnown(), fileName);
    }
}

TEST_F(FilterJobServices, FileNameOfTheJobDecidesAndIsReadOnce) {
    FilterJob job;
    job.bag->SetString(L"PrintOutputFileName", L"/tmp/out.prn");
    const auto filter = Initialized(job);
    EXPECT_TRUE(filter->GetOutputFilenameIfKnown().IsEmpty());
    EXPECT_TRUE(filter->IsJobDefinitelyBeingPrintedToFile());
    EXPECT_TRUE(filter->IsJobDefinitelyBeingPrintedToFile());
    EXPECT_EQ(filter->GetOutputDestinationEnum(), MsRenderFilterBase::OutputDestinationNamedFile);
    EXPECT_STREQ(filter->GetOutputFilenameIfKnown(), L"/tmp/out.prn");
    EXPECT_EQ(job.bag->reads, std::vector<std::wstring>{L"PrintOutputFileName"});
}

TEST_F(FilterJobServices, BlankFileNameLeavesItToThePort) {
    FilterJob job(L"FILE:");
    job.bag->SetString(L"PrintOutputFileName", L"  ");
    const auto filter = Initialized(job);
    EXPECT_TRUE(filter->IsJobDefinitelyBeingPrintedToFile());
    EXPECT_EQ(filter->GetOutputDestinationEnum(), MsRenderFilterBase::OutputDestinationFilePort);
}

TEST_F(FilterJobServices, PrinterThatCannotBeAskedIsUnknown) {
    FilterJob job;
    job.bag->SetHandle(L"PrinterHandle", nullptr);
    const auto filter = Initialized(job);
    EXPECT_FALSE(filter->IsJobDefinitelyBeingPrintedToFile());
    EXPECT_EQ(filter->GetOutputDestinationEnum(), MsRenderFilterBase::OutputDestinationUnknown);
    job.bag->SetString(L"PrintOutputFileName", L"too late");
    EXPECT_FALSE(filter->IsJobDefinitelyBeingPrintedToFile());
}

TEST_F(FilterJobServices, TicketManagerIsMadeFromTheUsersTicket) {
    FilterJob job;
    const auto filter = Initialized(job);
    ASSERT_EQ(filter->InitializePrintTicketManager(), S_OK);
    ASSERT_NE(filter->GetPTManagerPtr(), nullptr);
    EXPECT_STREQ(filter->GetPTManagerPtr()->GetPrinterName(), SampleQueue::name);
    EXPECT_NE(filter->GetPTManagerPtr()->GetPtrToDefaultPrintTicketForReading(), nullptr);
    filter->UnInitializePrintTicketManager();
    EXPECT_EQ(filter->GetPTManagerPtr(), nullptr);
    filter->UnInitializePrintTicketManager();
}

TEST_F(FilterJobServices, TicketManagerReportsWhatIsWrong) {
    CComPtr<SomeFilter> uninitialized;
    uninitialized.Attach(new SomeFilter);
    EXPECT_EQ(uninitialized->InitializePrintTicketManager(), E_PENDING);

    FilterJob job;
    const auto filter = Initialized(job);
    job.bag->SetObject(L"PerUserPrintTicket", MakeFake<MemoryReadStream>("")); // no factory
    EXPECT_EQ(filter->InitializePrintTicketManager(), E_NOINTERFACE);
    job.userTicket->result = E_ABORT;
    job.bag->SetObject(L"PerUserPrintTicket", job.userTicket);
    EXPECT_EQ(filter->InitializePrintTicketManager(), E_ABORT);
    EXPECT_EQ(filter->GetPTManagerPtr(), nullptr);

    job.bag->SetObject(L"PerUserPrintTicket", MakeFake<MemoryStreamFactory>("<no ticket"));
    EXPECT_EQ(filter->InitializePrintTicketManager(), E_FAIL);
    EXPECT_NE(filter->GetPTManagerPtr(), nullptr); // the manager that failed stays

    job.bag->SetString(L"PrinterName", L"");
    job.bag->SetObject(L"PerUserPrintTicket", MakeFake<MemoryStreamFactory>(job.queue.DefaultTicket()));
    EXPECT_EQ(Initialized(job)->InitializePrintTicketManager(), E_INVALIDARG);
}

TEST_F(FilterJobServices, SettingsOfTheJobHaveTheNamesThatTheSpoolerKnows) {
    FilterJob job;
    const auto filter = Initialized(job);
    const auto failure = [&] {
        try {
            static_cast<void>(filter->JobSettingsOf(kPTJobScope));
        } catch (const CPComException& caught) {
            return caught.GetHresult();
        }
        return S_OK;
    };
    EXPECT_EQ(failure(), E_PENDING) << "no manager";
    ASSERT_EQ(filter->InitializePrintTicketManager(), S_OK);
    EXPECT_EQ(failure(), E_ELEMENT_NOT_FOUND) << "no bag";
    job.bag->SetObject(L"DriverPropertyBag", MakeFake<FakePrinterPropertyBag>());
    EXPECT_EQ(failure(), E_PENDING) << "not merged";

    const auto sequence = MakeFake<FakeFixedDocumentSequence>();
    ASSERT_EQ(filter->GetPTManagerPtr()->MergeAndValidatePartPrintTicket(sequence), S_OK);
    const JobSettings settings = filter->JobSettingsOf(kPTJobScope);
    EXPECT_EQ(settings.Features().GetPrintJobDocumentName(), L"Report");
    EXPECT_EQ(settings.Features().GetPrintJobUserName(), L"ada");
    int copies = 0;
    EXPECT_TRUE(settings.Features().GetIntegerValue(DataModelIds::FEAT_COPIES, copies));
}

TEST_F(FilterJobServices, PropertyBagsAreThoseOfThePipeline) {
    FilterJob job;
    const auto filter = Initialized(job);
    EXPECT_FALSE(filter->GetDriverPropertyBagAccess());
    EXPECT_FALSE(filter->GetQueuePropertyBagAccess());
    EXPECT_EQ(filter->GetOrCreateOrvelDriverPropertyBagOnFirstUse(), nullptr);

    job.bag->SetObject(L"DriverPropertyBag", MakeFake<MemoryReadStream>("")); // of the wrong kind
    EXPECT_FALSE(filter->GetDriverPropertyBagAccess());

    const auto driverBag = MakeFake<FakePrinterPropertyBag>();
    const auto queueBag = MakeFake<FakePrinterPropertyBag>();
    driverBag->SetInt32(CComBSTR(L"Number"), 1);
    queueBag->SetInt32(CComBSTR(L"Number"), 2);
    job.bag->SetObject(L"DriverPropertyBag", driverBag);
    job.bag->SetObject(L"QueuePropertyBag", queueBag);
    EXPECT_EQ(filter->GetDriverPropertyBagAccess()->GetPrinterPropertyBagInteger(CXString(L"Number")), 1);
    EXPECT_EQ(filter->GetQueuePropertyBagAccess()->GetPrinterPropertyBagInteger(CXString(L"Number")), 2);
    EXPECT_EQ(driverBag->References(), 2u); // the test's and the pipeline's

    OrvelDriverPropertyBag* const bag = filter->GetOrCreateOrvelDriverPropertyBagOnFirstUse();
    ASSERT_NE(bag, nullptr);
    EXPECT_EQ(filter->GetOrCreateOrvelDriverPropertyBagOnFirstUse(), bag);
}

// Makes a bag whenever it is asked for one, and keeps none.
class BagMaker : public FakePropertyBag {
public:
    class Bag : public FakePrinterPropertyBag {
    public:
        explicit Bag(int& alive) : m_alive(++alive) {}
        ~Bag() override { --m_alive; }

    private:
        int& m_alive;
    };

    HRESULT STDMETHODCALLTYPE GetProperty(PCWSTR name, VARIANT* value) override {
        if (std::wstring_view(name) != L"DriverPropertyBag" && std::wstring_view(name) != L"QueuePropertyBag")
            return FakePropertyBag::GetProperty(name, value);
        CComPtr<Bag> bag = MakeFake<Bag>(alive);
        bag->SetInt32(CComBSTR(L"Number"), 3);
        value->vt = VT_UNKNOWN;
        value->punkVal = bag.Detach();
        return S_OK;
    }

    int alive = 0;
};

TEST_F(FilterJobServices, ABagLivesAsLongAsItsAccess) {
    FilterJob job;
    const auto maker = MakeFake<BagMaker>();
    maker->SetString(L"PrinterName", SampleQueue::name);
    maker->SetHandle(L"PrinterHandle", job.queue.handle);
    maker->SetHandle(L"UserSecurityToken", nullptr);
    maker->SetNumber(L"PrintJobId", 7);
    job.bag = static_cast<FakePropertyBag*>(maker.p);
    auto filter = Initialized(job);
    auto driverBag = filter->GetDriverPropertyBagAccess();
    const auto queueBag = filter->GetQueuePropertyBagAccess();
    EXPECT_EQ(maker->alive, 2);
    EXPECT_EQ(driverBag->GetPrinterPropertyBagInteger(CXString(L"Number")), 3);
    driverBag.reset();
    EXPECT_EQ(maker->alive, 1);

    ASSERT_NE(filter->GetOrCreateOrvelDriverPropertyBagOnFirstUse(), nullptr);
    EXPECT_EQ(maker->alive, 2);
    filter.Release();
    EXPECT_EQ(maker->alive, 1) << "the filter is gone, the access it gave away is not";
    EXPECT_EQ(queueBag->GetPrinterPropertyBagInteger(CXString(L"Number")), 3);
}

} // namespace
