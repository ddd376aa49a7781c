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

TEST_F(FilterJobServices, DestinationIsTheFileOfTheJobOrFollowsThePort) {
    using Filter = MsRenderFilterBase;
    const Rows<const wchar_t*, const wchar_t*, int, bool, const wchar_t*> cases{
        {L"192.0.2.7", nullptr, Filter::OutputDestinationDevicePort, false, L""},
        {L"NUL:", nullptr, Filter::OutputDestinationNulPort, false, L""},
        {L"file:", nullptr, Filter::OutputDestinationFilePort, true, L""},
        {L"file:", L"  ", Filter::OutputDestinationFilePort, true, L"  "},
        {L"C:\\spool\\out.prn", nullptr, Filter::OutputDestinationPathPort, true, L"C:\\spool\\out.prn"},
        {L"LPT1:", L"/tmp/out.prn", Filter::OutputDestinationNamedFile, true, L"/tmp/out.prn"},
    };
    for (const auto& [port, ofJob, destination, isFile, fileName] : cases) {
        SCOPED_TRACE(destination);
        FilterJob job(port);
        if (ofJob != nullptr) job.bag->SetString(L"PrintOutputFileName", ofJob);
        const auto filter = Initialized(job);
        EXPECT_EQ(filter->GetOutputDestinationEnum(), Filter::OutputDestinationNotYetDetermined);
        EXPECT_TRUE(filter->GetOutputFilenameIfKnown().IsEmpty());
        for (int time = 0; time < 2; ++time)
            EXPECT_EQ(filter->IsJobDefinitelyBeingPrintedToFile(), isFile);
        EXPECT_EQ(filter->GetOutputDestinationEnum(), destination);
        EXPECT_STREQ(filter->GetOutputFilenameIfKnown(), fileName);
        EXPECT_EQ(job.bag->reads, std::vector<std::wstring>{L"PrintOutputFileName"}) << "read once";
    }
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
    job.bag->SetNumber(L"PerUserPrintTicket", 7); // and no object
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
    auto filter = Initialized(job);
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
    {
        const auto access = filter->GetDriverPropertyBagAccess();
        EXPECT_EQ(access->GetPrinterPropertyBagInteger(CXString(L"Number")), 1);
        EXPECT_EQ(driverBag->References(), 3u) << "the test's, the pipeline's and that of the access";
    }
    EXPECT_EQ(driverBag->References(), 2u);

    OrvelDriverPropertyBag* const bag = filter->GetOrCreateOrvelDriverPropertyBagOnFirstUse();
    ASSERT_NE(bag, nullptr);
    EXPECT_EQ(filter->GetOrCreateOrvelDriverPropertyBagOnFirstUse(), bag);
    EXPECT_EQ(driverBag->References(), 3u);
    const auto ofQueue = filter->GetQueuePropertyBagAccess();
    filter.Release();
    EXPECT_EQ(driverBag->References(), 2u);
    EXPECT_EQ(queueBag->References(), 3u) << "the filter is gone, the access it gave away is not";
    EXPECT_EQ(ofQueue->GetPrinterPropertyBagInteger(CXString(L"Number")), 2);
}

} // namespace
