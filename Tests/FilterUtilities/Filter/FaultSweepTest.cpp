#include "Support/FilterJob.h"
#include "Support/TicketText.h"

#include <Com/FaultInjection.h>
#include <ComSupport/MsSafeCoinit.h>
#include <Filter/XpsFilterBase.h>

#include <gtest/gtest.h>
#include <prntvpt.h>

namespace {

// Merges the page's ticket too, as a filter that reads page settings does.
class PageMergingFilter : public XpsFilterBase {
protected:
    HRESULT OnFixedPage(IFixedPage* page) override {
        const HRESULT hr = GetPTManagerPtr()->MergeAndValidatePartPrintTicket(page);
        return FAILED(hr) ? hr : XpsFilterBase::OnFixedPage(page);
    }
};

CComPtr<IPartPrintTicket> Ticket(const wchar_t* uri, const std::string& elements) {
    return CComPtr<IPartPrintTicket>(new FakePrintTicketPart(uri, TicketText(elements)));
}

// One whole life of a filter. Gives the result that the pipeline sees.
HRESULT RunJob(FilterJob& job, FakeXpsProvider& provider, FakeXpsConsumer& consumer) {
    provider.asked = 0;
    consumer.journal.clear();
    const auto communicator = MakeFake<FakeCommunicator>(&provider, &consumer);
    CComPtr<PageMergingFilter> filter;
    filter.Attach(new PageMergingFilter);
    const HRESULT hr = filter->InitializeFilter(communicator, job.bag, job.control);
    if (FAILED(hr)) return hr;
    const HRESULT jobResult = filter->StartOperation();
    EXPECT_TRUE(!consumer.journal.empty() && consumer.journal.back() == "close");
    return jobResult;
}

// Whatever platform call fails, the filter reports it or does without, ends its output, and lets go of all.
TEST(FaultSweep, FilterSurvivesTheFailureOfAnyPlatformCall) {
    const MsSafeCoInit apartment;
    FilterJob job;
    const auto provider = MakeFake<FakeXpsProvider>();
    const auto consumer = MakeFake<FakeXpsConsumer>();
    const auto sequence = MakeFake<FakeFixedDocumentSequence>();
    const auto document = MakeFake<FakeFixedDocument>();
    const auto page = MakeFake<FakeFixedPage>();
    sequence->ticket = Ticket(L"/j", Choice("psk:PageMediaSize", "psk:ISOA3"));
    page->ticket = Ticket(L"/p", Choice("psk:PageOrientation", "psk:Landscape"));
    provider->parts = {MakeFake<FakeXpsDocument>().p, sequence.p, document.p, page.p, page.p};

    // While another provider is open, the queue's capabilities stay read; to read them anew for each job is
    // most of the time that a job takes.
    HPTPROVIDER other = nullptr;
    ASSERT_EQ(PTOpenProvider(SampleQueue::name, 1, &other), S_OK);

    OvPlatform::FaultInjection::CountCalls();
    ASSERT_EQ(RunJob(job, *provider, *consumer), S_OK);
    const LONG calls = OvPlatform::FaultInjection::CallCount();
    OvPlatform::FaultInjection::Reset();
    ASSERT_GT(calls, 0);

    constexpr HRESULT injected = E_ABORT;
    LONG reported = 0;
    for (LONG number = 1; number <= calls; ++number) {
        OvPlatform::FaultInjection::FailCall(number, injected);
        const HRESULT hr = RunJob(job, *provider, *consumer);
        const bool hasFailed = OvPlatform::FaultInjection::HasFailed();
        OvPlatform::FaultInjection::Reset();
        ASSERT_TRUE(hasFailed) << number;
        if (FAILED(hr)) ++reported;
        ASSERT_EQ(page->References(), 3u) << number;
        ASSERT_EQ(sequence->References(), 2u) << number;
        ASSERT_EQ(job.bag->References(), 1u) << number;
    }
    EXPECT_EQ(PTCloseProvider(other), S_OK);
    // The look into the job's own ticket may fail, and what only tidies up; most else may not.
    EXPECT_GT(reported, calls / 3);
}

} // namespace
