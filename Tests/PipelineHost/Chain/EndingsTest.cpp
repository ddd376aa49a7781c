// How jobs come to an end that their filters do not bring about: streams that nobody closes, threads that
// cannot be had, failures at the very end, and the one moment after which nothing stops a job.
#include "Support/PipelineJob.h"
#include "Support/Rows.h"

#include <Filter/XpsFilterBase.h>
#include <LowLevelFacilities/Failures/CPException.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OvPipeline;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr FilterEnds partsToParts{EndKind::XpsParts, EndKind::XpsParts};
constexpr const char* firstPage = "/Documents/1/Pages/1.fpage";

class EndingsTest : public testing::Test {
protected:
    JobOutcome Run(std::vector<FilterSpec> filters, int pages = 2) {
        SampleJob job;
        job.pages = pages;
        job.jobTicket = SampleTicket("PageOrientation", "Landscape");
        job.documentTicket = SampleTicket("DocumentCollate", "Collated");
        job.Write(m_folder / "job.xps");
        JobDescription description = MakeJob(m_folder / "job.xps", m_folder / "out.xps", std::move(filters));
        description.queue = OvPlatform::QueueFolder::Load(OV_SOURCE_DIR "/Samples/Queues/ColorOffice");
        return RunJob(std::move(description));
    }
    void ExpectFailure(const JobOutcome& outcome, const std::string& line) {
        EXPECT_FALSE(outcome.isWritten);
        EXPECT_THAT(FailureLine(outcome), HasSubstr(line));
        EXPECT_THAT(m_folder.Names(), ElementsAre("job.xps"));
    }

    TemporaryFolder m_folder;
};

CComPtr<IPrintWriteStream> BeginMarkup(IFixedPage* page) {
    CComPtr<IPrintWriteStream> stream;
    EXPECT_EQ(S_OK, page->GetWriteStream(&stream));
    return stream;
}

CComPtr<IPrintWriteStream> AddImage(IXpsDocumentConsumer* to, IFixedPage* page) {
    CComPtr<IPartImage> image;
    CComPtr<IPrintWriteStream> stream;
    EXPECT_EQ(S_OK, to->GetNewEmptyPart(L"/Resources/new.png", __uuidof(IPartImage),
                                        reinterpret_cast<void**>(&image), &stream));
    EXPECT_EQ(S_OK, page->SetPagePart(image));
    return stream;
}

bool IsFirst(IFixedPage* page) { return UriOf(page) == firstPage; }

TEST_F(EndingsTest, AStreamThatItsFilterLeavesOpenFailsTheJobInItsName) {
    CComPtr<IPrintWriteStream> kept; // outlives the filters, as one that was never released
    const auto keepMarkup = PassOn([&](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage* page) {
        if (IsFirst(page)) kept = BeginMarkup(page);
        return S_OK;
    });
    const auto keepImage = PassOn([&](const FilterEnv&, IXpsDocumentConsumer* to, IFixedPage* page) {
        if (IsFirst(page)) kept = AddImage(to, page);
        return S_OK;
    });
    const auto readMarkup = PassOn([](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage* page) -> HRESULT {
        CComPtr<IPrintReadStream> stream;
        return page->GetStream(&stream);
    });
    const auto readImage = PassOn([](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage* page) -> HRESULT {
        CComPtr<IUnknown> part;
        CComPtr<IPrintReadStream> stream;
        if (FAILED(page->GetPagePart(L"/Resources/new.png", &part))) return S_OK;
        return CComQIPtr<IPartImage>(part)->GetStream(&stream);
    });
    const std::string left = ": filter keeps is done and has left the stream open that it wrote: 0x80520113";
    const Rows<std::vector<FilterSpec>, std::string> cases{
        {{Filter("keeps", keepMarkup)}, "the output: " + (firstPage + left)},
        {{Filter("keeps", keepMarkup), Filter("reads", readMarkup)}, "filter reads: " + (firstPage + left)},
        {{Filter("keeps", keepImage), Filter("passes", PassOn()), Filter("reads", readImage)},
         "/Resources/new.png" + left},
    };
    for (const auto& [filters, line] : cases) {
        ExpectFailure(Run(filters), line);
        kept.Release();
    }
}

// The reader of the first page takes no pages meanwhile; the writer has more of them than a queue holds.
TEST_F(EndingsTest, AFilterMayCloseItsFirstStreamAfterItsLastPage) {
    CComPtr<IPrintWriteStream> first;
    const auto keep = PassOn([&](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage* page) {
        if (IsFirst(page)) first = BeginMarkup(page);
        return S_OK;
    });
    const auto closeLate = [&](const FilterEnv& env) {
        const HRESULT hr = keep(env);
        WriteAll(first, "<FixedPage/>");
        return hr;
    };
    const JobOutcome outcome = Run({Filter("late", closeLate), Filter("passes", PassOn())}, 40);
    EXPECT_TRUE(outcome.isWritten) << FailureLine(outcome);
    EXPECT_EQ("<FixedPage/>", ReadZip(m_folder / "out.xps").at(firstPage + 1));
}

// The filters before and behind it do not work yet.
TEST_F(EndingsTest, NoFilterWaitsForAnotherBeforeBothAreStarted) {
    const auto calls = std::make_shared<TestFilter::Calls>();
    HRESULT result = S_OK;
    calls->atInitialisation = [&](const FilterEnv& env) {
        CComPtr<IUnknown> part;
        result = env.Provider()->GetXpsPart(&part);
    };
    Run({Filter("first", PassOn()), Filter("eager", PassOn(), partsToParts, calls)});
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_INVALID_STATE), result);

    calls->atInitialisation = [&](const FilterEnv& env) {
        CComPtr<IPartImage> image;
        CComPtr<IPrintWriteStream> stream;
        env.Consumer()->GetNewEmptyPart(L"/new.png", __uuidof(IPartImage), reinterpret_cast<void**>(&image),
                                        &stream);
        for (result = S_OK; SUCCEEDED(result);)
            result = env.Consumer()->SendXpsUnknown(image);
    };
    Run({Filter("eager", PassOn(), partsToParts, calls), Filter("last", PassOn())});
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_INVALID_STATE), result);
}

TEST_F(EndingsTest, AShutdownThatThrowsFailsTheJob) {
    const auto calls = std::make_shared<TestFilter::Calls>();
    calls->atShutdown = [] { throw std::runtime_error("no way down"); };
    const auto after = std::make_shared<TestFilter::Calls>();
    ExpectFailure(
        Run({Filter("bad", PassOn(), partsToParts, calls), Filter("after", PassOn(), partsToParts, after)}),
        "filter bad (ShutdownOperation): no way down: 0x80004005");
    EXPECT_EQ(1, after->shutDown);
}

// One of the library's filters, with what it does at the first page.
class LibraryFilter final : public XpsFilterBase {
public:
    using OnPage = std::function<HRESULT(IFixedPage*)>;

    static FilterSpec Spec(OnPage onPage) {
        FilterSpec spec;
        spec.name = "talks";
        spec.ends = partsToParts;
        spec.maker = [onPage = std::move(onPage)]() -> IPrintPipelineFilter* {
            return new LibraryFilter(onPage);
        };
        return spec;
    }

protected:
    HRESULT OnFixedPage(IFixedPage* page) override {
        const HRESULT hr = m_onPage(page);
        return FAILED(hr) ? hr : XpsFilterBase::OnFixedPage(page);
    }

private:
    explicit LibraryFilter(OnPage onPage) : m_onPage(std::move(onPage)) {}

    OnPage m_onPage;
};

void Report(const char* words) {
    CPException::reportAndProcessCaughtException(
        std::runtime_error(words), DebugContextReference(__FILE__, __LINE__, "Report"), "Caught in a test.");
}

TEST_F(EndingsTest, TheFailureIsTheFiltersOwnFirstWordsAtThePageInHand) {
    const Rows<LibraryFilter::OnPage, const char*> cases{
        {[](IFixedPage*) -> HRESULT { throw std::runtime_error("out of ink"); },
         "filter talks at /Documents/1/Pages/1.fpage: out of ink: 0x80004005 E_FAIL"},
        {[](IFixedPage*) -> HRESULT {
             Report("the cause");
             Report("what follows from it");
             return E_ACCESSDENIED;
         },
         "filter talks at /Documents/1/Pages/1.fpage: the cause: 0x80070005"},
        {[](IFixedPage* page) -> HRESULT {
             if (IsFirst(page)) Report("nothing that matters");
             return IsFirst(page) ? S_OK : E_ACCESSDENIED;
         },
         "filter talks at /Documents/1/Pages/2.fpage: in XpsFilterBase::StartOperation_throws: 0x80070005"},
    };
    for (const auto& [onPage, line] : cases)
        ExpectFailure(Run({LibraryFilter::Spec(onPage)}), line);
}

TEST(JobStateTest, IsEitherPublishedOrStopped) {
    JobState asked;
    EXPECT_TRUE(asked.AskCancel());
    EXPECT_FALSE(asked.Publish([] { FAIL() << "somebody has asked for the end"; }));
    EXPECT_TRUE(asked.IsCancelled());

    JobState published;
    EXPECT_TRUE(published.Publish([] {}));
    published.Cancel();
    EXPECT_FALSE(published.AskCancel());
    EXPECT_FALSE(published.IsCancelled());

    JobState failed;
    EXPECT_THROW(failed.Publish([] { throw std::runtime_error("no room"); }), std::runtime_error);
    failed.Fail({});
    EXPECT_TRUE(failed.Failure());
}

} // namespace
