#include "Support/FilterJob.h"
#include "Support/ReportRecorder.h"
#include "Support/Rows.h"

#include <Filter/XpsInStreamOutFilterBase.h>

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <map>
#include <thread>

namespace {

// So that a fault shows as a failure, not as a test that hangs.
constexpr std::chrono::seconds patience{20};

// Writes down its steps; what a test puts into `during` runs within the step of that name and gives its
// result.
template <typename Base>
class RecordingFilter : public Base {
public:
    Journal journal;
    std::map<std::string, std::function<HRESULT()>> during;
    IFixedDocument* lastFixedDocument = nullptr;

    using Base::m_fixedDocumentCount;
    using Base::m_fixedPageCount;

protected:
    HRESULT OnXpsDocument(IXpsDocument* part) override {
        return Step("document", [&] { return Base::OnXpsDocument(part); });
    }
    HRESULT OnFixedDocumentSequence(IFixedDocumentSequence* part) override {
        return Step("sequence", [&] { return Base::OnFixedDocumentSequence(part); });
    }
    HRESULT OnFixedDocument(IFixedDocument* part) override {
        lastFixedDocument = part;
        return Step("fixed document", [&] { return Base::OnFixedDocument(part); });
    }
    HRESULT OnFixedPage(IFixedPage* part) override {
        return Step("page", [&] { return Base::OnFixedPage(part); });
    }
    HRESULT OnFinalize() override {
        return Step("finalize", [&] { return Base::OnFinalize(); });
    }

private:
    HRESULT Step(const char* name, const std::function<HRESULT()>& base) {
        journal.push_back(name);
        const auto special = during.find(name);
        const HRESULT hr = special != during.end() ? special->second() : S_OK;
        return FAILED(hr) ? hr : base();
    }
};

template <typename Base>
struct RunningFilter {
    RunningFilter() {
        filter.Attach(new RecordingFilter<Base>);
        provider->parts = {document.p, sequence.p, fixedDocument.p, page.p};
    }

    HRESULT RunJob() {
        EXPECT_EQ(filter->InitializeFilter(communicator, job.bag, job.control), S_OK);
        return filter->StartOperation();
    }

    FilterJob job;
    CComPtr<FakeXpsDocument> document = MakeFake<FakeXpsDocument>();
    CComPtr<FakeFixedDocumentSequence> sequence = MakeFake<FakeFixedDocumentSequence>();
    CComPtr<FakeFixedDocument> fixedDocument = MakeFake<FakeFixedDocument>();
    CComPtr<FakeFixedPage> page = MakeFake<FakeFixedPage>();
    CComPtr<FakeXpsProvider> provider = MakeFake<FakeXpsProvider>();
    CComPtr<FakeXpsConsumer> consumer = MakeFake<FakeXpsConsumer>();
    CComPtr<MemoryWriteStream> stream = MakeFake<MemoryWriteStream>();
    CComPtr<FakeCommunicator> communicator = MakeFake<FakeCommunicator>(
        provider, std::is_same_v<Base, XpsFilterBase> ? static_cast<IUnknown*>(consumer.p) : stream.p);
    CComPtr<RecordingFilter<Base>> filter;
};

using XpsFilterBaseTest = RunningFilter<XpsFilterBase>;
using XpsInStreamOutFilterBaseTest = RunningFilter<XpsInStreamOutFilterBase>;

struct XpsLoop : testing::Test, XpsFilterBaseTest {};
struct StreamOutLoop : testing::Test, XpsInStreamOutFilterBaseTest {};

TEST_F(XpsLoop, PassesAJobOnInOrder) {
    const auto secondDocument = MakeFake<FakeFixedDocument>();
    provider->parts = {document.p, sequence.p, fixedDocument.p, page.p, page.p, secondDocument.p, page.p};
    filter->during["page"] = [&] { return filter->GetPTManagerPtr() ? S_OK : E_UNEXPECTED; };
    EXPECT_EQ(RunJob(), S_OK);
    const Journal parts{"document", "sequence", "fixed document", "page", "page", "fixed document", "page"};
    Journal steps = parts;
    steps.push_back("finalize");
    Journal sent = parts;
    sent.push_back("close");
    EXPECT_EQ(filter->journal, steps);
    EXPECT_EQ(consumer->journal, sent);
    EXPECT_EQ(filter->m_fixedDocumentCount, 2u);
    EXPECT_EQ(filter->m_fixedPageCount, 3u);
    EXPECT_EQ(filter->GetPTManagerPtr(), nullptr);
    EXPECT_EQ(filter->lastFixedDocument, static_cast<IFixedDocument*>(secondDocument));
}

TEST_F(XpsLoop, PartsThatWaitForAPageAreSeenWithIt) {
    const auto secondDocument = MakeFake<FakeFixedDocument>();
    const CComPtr<IUnknown> unknown = MakeFake<FakeUnknownPart>().p;
    const Journal whole{"document", "sequence", "fixed document", "page", "finalize"};
    const Rows<const char*, std::vector<CComPtr<IUnknown>>, HRESULT, Journal, Journal> cases{
        {"only the last of several",
         {document.p, sequence.p, fixedDocument.p, secondDocument.p, page.p},
         S_OK,
         whole,
         {"document", "sequence", "fixed document", "page", "close"}},
        {"none without a document ahead",
         {sequence.p, fixedDocument.p, page.p},
         E_POINTER,
         {"document"},
         {"close"}},
        {"an unknown one overtakes them",
         {document.p, unknown, sequence.p, fixedDocument.p, page.p},
         S_OK,
         whole,
         {"unknown", "document", "sequence", "fixed document", "page", "close"}},
        {"none without a page", {document.p, sequence.p, fixedDocument.p}, S_OK, {"finalize"}, {"close"}},
    };
    for (const auto& [what, parts, result, steps, sent] : cases) {
        SCOPED_TRACE(what);
        XpsFilterBaseTest test;
        test.provider->parts = parts;
        test.consumer->sendUnknownResult = E_FAIL; // does not matter
        EXPECT_EQ(test.RunJob(), result);
        EXPECT_EQ(test.filter->journal, steps);
        EXPECT_EQ(test.consumer->journal, sent);
        EXPECT_EQ(test.filter->m_fixedDocumentCount, std::ranges::count_if(parts, [](const auto& part) {
                      return CComQIPtr<IFixedDocument>(part) != nullptr;
                  }));
        if (test.filter->lastFixedDocument != nullptr) {
            EXPECT_EQ(test.filter->lastFixedDocument == secondDocument, parts[3] == secondDocument.p);
        }
    }
}

TEST_F(StreamOutLoop, PageNeedsNothingAheadOfIt) {
    provider->parts = {page.p, MakeFake<FakeUnknownPart>().p, page.p};
    EXPECT_EQ(RunJob(), S_OK);
    EXPECT_EQ(filter->journal,
              (Journal{"document", "sequence", "fixed document", "page", "page", "finalize"}));
    EXPECT_EQ(stream->timesClosed, 1);
    EXPECT_TRUE(consumer->journal.empty());
}

TEST(XpsFilterBase, FailingStepEndsTheJobAndClosesTheWriter) {
    const std::vector<std::string> steps{"document", "sequence", "fixed document", "page"};
    for (std::size_t failing = 0; failing < steps.size(); ++failing) {
        XpsFilterBaseTest test;
        test.filter->during[steps[failing]] = [] { return E_ACCESSDENIED; };
        EXPECT_EQ(test.RunJob(), E_ACCESSDENIED) << steps[failing];
        EXPECT_EQ(test.filter->journal,
                  Journal(steps.begin(), steps.begin() + static_cast<long>(failing) + 1));
        EXPECT_EQ(test.consumer->journal.back(), "close");
        EXPECT_EQ(test.provider->asked, 4u);
    }
}

TEST_F(XpsLoop, FailingProviderOrSendIsTheResultAndAFailureAtTheEndIsNot) {
    filter->during["finalize"] = [] { return E_FAIL; };
    EXPECT_EQ(RunJob(), S_OK);
    provider->asked = 0;
    provider->failAt = 4;
    provider->failure = E_ABORT;
    EXPECT_EQ(RunJob(), E_ABORT);
    EXPECT_EQ(filter->journal.back(), "page");
    EXPECT_EQ(consumer->journal.back(), "close");
    EXPECT_NE(filter->GetPTManagerPtr(), nullptr); // until the filter dies

    XpsFilterBaseTest other;
    other.consumer->sendResult = E_PENDING;
    EXPECT_EQ(other.RunJob(), E_PENDING);
    EXPECT_EQ(other.consumer->journal, (Journal{"document", "close"}));

    XpsFilterBaseTest atOnce;
    atOnce.provider->failAt = 0;
    EXPECT_EQ(atOnce.RunJob(), atOnce.provider->failure);
}

TEST_F(XpsLoop, UnreadableUserTicketEndsTheJobAheadOfItsParts) {
    job.bag->failures = {{L"PerUserPrintTicket", E_ACCESSDENIED}};
    EXPECT_EQ(RunJob(), E_ACCESSDENIED);
    EXPECT_EQ(provider->asked, 0u);
    EXPECT_EQ(consumer->journal, Journal{"close"});
}

TEST_F(XpsLoop, PartWhoseTicketCannotBeMergedIsNotSent) {
    fixedDocument->ticket = MakeFake<FakePrintTicketPart>(L"/Metadata/Doc_PT.xml", "<not a ticket").p;
    EXPECT_TRUE(FAILED(RunJob()));
    EXPECT_EQ(consumer->journal, (Journal{"document", "sequence", "close"}));
}

TEST(XpsFilterBase, ShutdownDuringTheFlushLeavesTheRest) {
    const std::vector<std::string> steps{"document", "sequence", "fixed document"};
    for (std::size_t at = 0; at < steps.size(); ++at) {
        XpsFilterBaseTest test;
        test.filter->during[steps[at]] = [&] { return test.filter->ShutdownOperation(); };
        EXPECT_EQ(test.RunJob(), S_OK);
        Journal expected(steps.begin(), steps.begin() + static_cast<long>(at) + 1);
        Journal sent = expected;
        expected.push_back("finalize");
        sent.push_back("close");
        EXPECT_EQ(test.filter->journal, expected);
        EXPECT_EQ(test.consumer->journal, sent);
        EXPECT_EQ(test.filter->m_fixedPageCount, 0u);
        EXPECT_EQ(test.fixedDocument->References(), at < 2 ? 3u : 2u);
        test.filter.Release();
        EXPECT_EQ(test.fixedDocument->References(), 2u);
        EXPECT_EQ(test.sequence->References(), 2u);
    }
}

TEST_F(XpsLoop, ShutdownAheadOfTheStartLeavesNothingToDo) {
    ASSERT_EQ(filter->InitializeFilter(communicator, job.bag, job.control), S_OK);
    EXPECT_EQ(filter->ShutdownOperation(), S_OK);
    EXPECT_EQ(filter->StartOperation(), S_OK);
    EXPECT_EQ(filter->journal, Journal{"finalize"});
    EXPECT_EQ(consumer->journal, Journal{"close"});
    EXPECT_EQ(filter->m_fixedDocumentCount, 0u);
}

// A report made within a step says which filter ran, and where.
TEST_F(XpsLoop, ReportsOfAStepNameTheLoop) {
    const ReportRecorder recorder;
    const auto report = [] {
        DebugUtilities::reportErrorForLowLevelUtilities("Something is odd.", "Test");
        return S_OK;
    };
    filter->during["page"] = report;
    EXPECT_EQ(RunJob(), S_OK);
    report();
    ASSERT_EQ(ReportRecorder::reports().size(), 2u);
    const std::string& within = ReportRecorder::reports()[0].text;
    for (const char* const part : {"XpsFilterBase::StartOperation_throws", "code 31676", "RecordingFilter"})
        EXPECT_NE(within.find(part), std::string::npos) << within;
    EXPECT_EQ(ReportRecorder::reports()[1].text.find("31676"), std::string::npos);
}

// The job would go on for ever; only the other thread ends it, wherever the loop happens to be.
TEST_F(XpsLoop, ShutdownFromAnotherThreadEndsARunningJob) {
    std::promise<void> isRunning;
    provider->beforePart = [&](std::size_t index) {
        provider->parts.emplace_back(page);
        if (index == 20) isRunning.set_value();
    };
    std::thread other([&] {
        isRunning.get_future().wait_for(patience);
        EXPECT_EQ(filter->ShutdownOperation(), S_OK);
    });
    EXPECT_EQ(RunJob(), S_OK);
    other.join();
    EXPECT_EQ(filter->journal.back(), "finalize");
    EXPECT_EQ(consumer->journal.back(), "close");
}

// The second thread comes while the flush is within its first step, and is through when the step returns.
TEST_F(XpsLoop, ShutdownFromAnotherThreadIsSeenWithinTheFlush) {
    std::promise<void> isFlushing;
    std::promise<void> isShutDown;
    filter->during["document"] = [&] {
        isFlushing.set_value();
        isShutDown.get_future().wait_for(patience);
        return S_OK;
    };
    std::thread other([&] {
        isFlushing.get_future().wait_for(patience);
        EXPECT_EQ(filter->ShutdownOperation(), S_OK);
        isShutDown.set_value();
    });
    EXPECT_EQ(RunJob(), S_OK);
    other.join();
    EXPECT_EQ(filter->journal, (Journal{"document", "finalize"}));
}

} // namespace
