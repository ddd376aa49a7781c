#include "Support/PipelineJob.h"

#include <PrintTicket/PrintTicketMerge.h>
#include <Spooler/QueuePropertyBag.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>

using namespace OvPipeline;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr FilterEnds PartsToParts{EndKind::XpsParts, EndKind::XpsParts};
constexpr FilterEnds PartsToBytes{EndKind::XpsParts, EndKind::Bytes};
constexpr FilterEnds BytesToBytes{EndKind::Bytes, EndKind::Bytes};

class PipelineTest : public testing::Test {
protected:
    std::filesystem::path WriteJob(const SampleJob& job) {
        job.Write(m_folder / "job.xps");
        return m_folder / "job.xps";
    }
    JobOutcome Run(const SampleJob& job, std::vector<FilterSpec> filters) {
        return RunJob(MakeJob(WriteJob(job), Output(), std::move(filters)));
    }
    std::filesystem::path Output() const { return m_folder / "out.xps"; }
    // Nothing but the job is there: no output, and no rest of one.
    void ExpectNoOutput() { EXPECT_THAT(m_folder.Names(), ElementsAre("job.xps")); }

    TemporaryFolder m_folder;
};

// Each part's relationships as "source -> type target", whatever their ids and their order.
std::vector<std::string> Links(const std::shared_ptr<const OvPlatform::PackageReader>& package) {
    std::vector<std::string> links;
    std::vector<std::string> sources{"/"};
    for (const auto& part : package->Parts())
        sources.push_back(part.name);
    for (const std::string& source : sources)
        for (const auto& link : package->Relationships(source))
            links.push_back(source + " -> " + link.type + " " + link.targetPart);
    std::sort(links.begin(), links.end());
    return links;
}

TEST_F(PipelineTest, PassesAWholeJobThroughAsItIs) {
    for (const bool isOpenXps : {false, true}) {
        SampleJob job;
        job.isOpenXps = isOpenXps;
        job.documents = 2;
        job.pages = 30; // more than a queue holds
        job.jobTicket = "<job/>";
        job.documentTicket = "<document/>";
        job.pageTicket = "<page/>";
        const JobOutcome outcome = Run(job, {Filter("first", PassOn()), Filter("second", PassOn())});
        ASSERT_TRUE(outcome.isWritten) << FailureLine(outcome);

        const auto before = OvPlatform::PackageReader::Open(m_folder / "job.xps");
        const auto after = OvPlatform::PackageReader::Open(Output());
        std::vector<std::string> lost;
        for (const auto& part : before->Parts()) {
            const auto* written = after->Find(part.name);
            if (!written) {
                lost.push_back(part.name);
                continue;
            }
            EXPECT_EQ(part.contentType, written->contentType) << part.name;
            const PartKind kind = KindOf(part.contentType, part.name);
            if (kind == PartKind::Sequence || kind == PartKind::Document) continue;
            EXPECT_EQ(before->ReadPart(part.name, 1 << 20), after->ReadPart(part.name, 1 << 20)) << part.name;
        }
        EXPECT_EQ(60u, lost.size()) << "story fragments only";
        std::vector<std::string> expected = Links(before);
        std::erase_if(expected,
                      [](const std::string& link) { return link.find("/storyfragments ") != link.npos; });
        EXPECT_EQ(expected, Links(after));
        EXPECT_THAT(after->ReadPart("/Documents/2/FixedDoc.fdoc", 1 << 20),
                    HasSubstr("<PageContent Source=\"Pages/30.fpage\" Width=\"816\" Height=\"1056\"/>"));
        std::filesystem::remove(Output());
    }
}

TEST_F(PipelineTest, WritesWhatFiltersReplaceAddAndDelete) {
    const auto rewrite = [](const FilterEnv&, IXpsDocumentConsumer* to, IFixedPage* page) -> HRESULT {
        CComPtr<IPrintWriteStream> markup;
        page->GetWriteStream(&markup);
        WriteAll(markup, "<FixedPage>new</FixedPage>");
        page->DeleteResource(L"/Resources/Picture.png");
        CComPtr<IPartPrintTicket> ticket;
        CComPtr<IPrintWriteStream> stream;
        const HRESULT hr =
            to->GetNewEmptyPart((L"/Metadata/new" + Wide(UriOf(page).substr(19, 1)) + L".xml").c_str(),
                                __uuidof(IPartPrintTicket), reinterpret_cast<void**>(&ticket), &stream);
        if (FAILED(hr)) return hr;
        WriteAll(stream, "<new/>");
        return page->SetPrintTicket(ticket);
    };
    // One new image for all pages, made with the first.
    CComPtr<IPartImage> stamp;
    const auto addStamp = [&](const FilterEnv&, IXpsDocumentConsumer* to, IFixedPage* page) -> HRESULT {
        if (!stamp) {
            CComPtr<IPrintWriteStream> stream;
            const HRESULT hr = to->GetNewEmptyPart(L"/Resources/stamp.png", __uuidof(IPartImage),
                                                   reinterpret_cast<void**>(&stamp), &stream);
            if (FAILED(hr)) return hr;
            WriteAll(stream, "stamp");
        }
        EXPECT_EQ("<FixedPage>new</FixedPage>", BytesOf(page)) << "sees what the filter before it wrote";
        return page->SetPagePart(stamp);
    };
    const JobOutcome outcome =
        Run({}, {Filter("rewrite", PassOn(rewrite)), Filter("stamp", PassOn(addStamp))});
    ASSERT_TRUE(outcome.isWritten) << FailureLine(outcome);
    const ZipItems items = ReadZip(Output());
    EXPECT_EQ("<FixedPage>new</FixedPage>", items.at("Documents/1/Pages/2.fpage"));
    EXPECT_EQ("stamp", items.at("Resources/stamp.png"));
    EXPECT_EQ("<new/>", items.at("Metadata/new2.xml"));
    EXPECT_FALSE(items.contains("Resources/Picture.png"));
    const std::string links = items.at("Documents/1/Pages/_rels/2.fpage.rels");
    EXPECT_THAT(links, HasSubstr("stamp.png"));
    EXPECT_THAT(links, HasSubstr("new2.xml"));
    EXPECT_THAT(links, testing::Not(HasSubstr("Picture.png")));
}

TEST_F(PipelineTest, TurnsPartsIntoBytesAndHandsThemOn) {
    const auto list = [](const FilterEnv& env) -> HRESULT {
        const auto from = env.Provider();
        const auto to = env.Writer();
        for (;;) {
            CComPtr<IUnknown> part;
            if (const HRESULT hr = from->GetXpsPart(&part); FAILED(hr)) return hr;
            if (!part) break;
            const CComQIPtr<IFixedPage> page(part);
            ULONG written = 0;
            const std::string line = page ? UriOf(page.p) + "\n" : std::string();
            to->WriteBytes(line.data(), static_cast<ULONG>(line.size()), &written);
        }
        to->Close();
        return S_OK;
    };
    const auto upper = [](const FilterEnv& env) -> HRESULT {
        std::string bytes = ReadAll(env.Reader());
        for (char& c : bytes)
            c = static_cast<char>(std::toupper(c));
        return WriteAll(env.Writer(), bytes);
    };
    const JobOutcome outcome =
        Run({}, {Filter("list", list, PartsToBytes), Filter("upper", upper, BytesToBytes)});
    ASSERT_TRUE(outcome.isWritten) << FailureLine(outcome);
    std::ifstream file(Output());
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    EXPECT_EQ("/DOCUMENTS/1/PAGES/1.FPAGE\n/DOCUMENTS/1/PAGES/2.FPAGE\n", text);
}

TEST_F(PipelineTest, FillsThePropertyBagInThePublishedTypes) {
    std::map<std::string, VARTYPE> types;
    const auto look = [&](const FilterEnv& env, IXpsDocumentConsumer*, IFixedPage*) -> HRESULT {
        for (const wchar_t* name :
             {L"PrinterName", L"PrinterHandle", L"UserSecurityToken", L"PrintJobId", L"PerUserPrintTicket",
              L"DriverPropertyBag", L"QueuePropertyBag", L"PrintOutputFileName", L"ProgressReport"}) {
            VARIANT value;
            VariantInit(&value);
            if (FAILED(env.bag->GetProperty(name, &value))) continue;
            types[Utf8(name)] = value.vt;
            EXPECT_TRUE(value.vt != VT_BYREF || value.byref) << Utf8(name);
            if (const CComQIPtr<IPrintReadStreamFactory> factory(value.vt == VT_UNKNOWN ? value.punkVal
                                                                                        : nullptr);
                factory) {
                CComPtr<IPrintReadStream> stream;
                EXPECT_EQ(S_OK, factory->GetStream(&stream));
                EXPECT_THAT(ReadAll(stream), HasSubstr("psk:Portrait"));
            }
            if (const CComQIPtr<IPrinterPropertyBag> bag(value.vt == VT_UNKNOWN ? value.punkVal : nullptr);
                bag && std::wstring_view(name) == L"DriverPropertyBag") {
                CComBSTR model;
                EXPECT_EQ(S_OK, bag->GetString(CComBSTR(L"Model"), &model));
                EXPECT_EQ("T-1000", Utf8Argument(model));
            }
            if (value.vt != VT_BYREF) VariantClear(&value);
        }
        VARIANT none;
        EXPECT_EQ(E_ELEMENT_NOT_FOUND, env.bag->GetProperty(L"NoSuchProperty", &none));
        return S_OK;
    };
    JobDescription job = MakeJob(WriteJob({}), Output(), {Filter("look", PassOn(look))});
    job.outputIsNamed = true;
    const JobOutcome outcome = RunJob(std::move(job));
    ASSERT_TRUE(outcome.isWritten) << FailureLine(outcome);
    const std::map<std::string, VARTYPE> expected{
        {"PrinterName", VT_BSTR},           {"PrinterHandle", VT_BYREF},
        {"UserSecurityToken", VT_BYREF},    {"PrintJobId", VT_UI4},
        {"PerUserPrintTicket", VT_UNKNOWN}, {"DriverPropertyBag", VT_UNKNOWN},
        {"QueuePropertyBag", VT_UNKNOWN},   {"PrintOutputFileName", VT_BSTR},
        {"ProgressReport", VT_UNKNOWN}};
    EXPECT_EQ(expected, types);
}

struct Misbehaviour {
    const char* what;
    TestFilter::Body body;
    const char* line;
};
void PrintTo(const Misbehaviour& m, std::ostream* out) { *out << m.what; }

const Misbehaviour Misbehaviours[] = {
    {"fails at a page", PassOn([](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage* page) {
         return UriOf(page) == "/Documents/1/Pages/2.fpage" ? E_ACCESSDENIED : S_OK;
     }),
     "filter bad at /Documents/1/Pages/2.fpage: 0x80070005 E_ACCESSDENIED"},
    {"fails at once, its output closed",
     [](const FilterEnv& env) {
         env.Consumer()->CloseSender();
         return E_NOTIMPL;
     },
     "filter bad: 0x80004001 E_NOTIMPL (not implemented)"},
    {"throws", [](const FilterEnv&) -> HRESULT { throw std::runtime_error("thrown by the filter"); },
     "filter bad: thrown by the filter: 0x80004005"},
    {"asks for the end of the job", PassOn([](const FilterEnv& env, IXpsDocumentConsumer*, IFixedPage*) {
         env.control->RequestShutdown(E_ABORT, nullptr);
         return S_OK;
     }),
     "filter bad at /Documents/1/Pages/1.fpage: the filter asks for the end of the job: 0x80004004 E_ABORT"},
    {"sends a second sequence",
     [](const FilterEnv& env) {
         CComPtr<IUnknown> part;
         while (SUCCEEDED(env.Provider()->GetXpsPart(&part)) && !CComQIPtr<IFixedDocumentSequence>(part))
             part.Release();
         env.Consumer()->SendFixedDocumentSequence(CComQIPtr<IFixedDocumentSequence>(part));
         return env.Consumer()->SendFixedDocumentSequence(CComQIPtr<IFixedDocumentSequence>(part));
     },
     "a second document sequence /FixedDocSeq.fdseq is sent: 0x8007139f"},
    {"sends nothing", [](const FilterEnv& env) { return env.Consumer()->CloseSender(); },
     "the output: the last filter sent no page"},
    {"sends a page twice", PassOn([](const FilterEnv&, IXpsDocumentConsumer* to, IFixedPage* page) {
         return to->SendFixedPage(page);
     }),
     "/Documents/1/Pages/1.fpage"},
    {"gives up a stream", PassOn([](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage* page) {
         CComPtr<IPrintWriteStream> stream;
         return page->GetWriteStream(&stream);
     }),
     "the output: /Documents/1/Pages/1.fpage: filter bad has given the stream up without closing it"},
    {"sends two parts under one name",
     PassOn([](const FilterEnv&, IXpsDocumentConsumer* to, IFixedPage* page) -> HRESULT {
         CComPtr<IPartImage> image;
         CComPtr<IPrintWriteStream> stream;
         to->GetNewEmptyPart(L"/Resources/One.png", __uuidof(IPartImage), reinterpret_cast<void**>(&image),
                             &stream);
         WriteAll(stream, "image");
         return page->SetPagePart(image);
     }),
     "two different parts were sent under the name /Resources/One.png: 0x8051000b OPC_E_DUPLICATE_PART"},
};

class FailingFilter : public PipelineTest, public testing::WithParamInterface<Misbehaviour> {};

TEST_P(FailingFilter, FailsTheJobWithOneLineAndNoOutput) {
    const auto before = std::make_shared<TestFilter::Calls>();
    const auto after = std::make_shared<TestFilter::Calls>();
    const JobOutcome outcome = Run({}, {Filter("before", PassOn(), PartsToParts, before),
                                        Filter("bad", GetParam().body, PartsToParts),
                                        Filter("after", PassOn(), PartsToParts, after)});
    EXPECT_FALSE(outcome.isWritten);
    EXPECT_FALSE(outcome.isCancelled);
    EXPECT_THAT(FailureLine(outcome), HasSubstr(GetParam().line));
    EXPECT_EQ(1, before->shutDown);
    EXPECT_EQ(1, after->shutDown);
    ExpectNoOutput();
}

INSTANTIATE_TEST_SUITE_P(, FailingFilter, testing::ValuesIn(Misbehaviours));

TEST_F(PipelineTest, StartsNoFilterWhereOneCannotBeInitialised) {
    const auto good = std::make_shared<TestFilter::Calls>();
    const auto bad = std::make_shared<TestFilter::Calls>();
    bad->initialiseResult = E_NOINTERFACE;
    const JobOutcome outcome =
        Run({}, {Filter("good", PassOn(), PartsToParts, good), Filter("bad", PassOn(), PartsToParts, bad)});
    EXPECT_THAT(
        FailureLine(outcome),
        HasSubstr(
            "filter bad (InitializeFilter): it does not read XPS parts (IXpsDocumentProvider) and write "
            "XPS parts (IXpsDocumentConsumer): 0x80004002"));
    EXPECT_EQ(0, good->started + bad->started);
    EXPECT_EQ(2, good->shutDown + bad->shutDown);
    ExpectNoOutput();
}

TEST_F(PipelineTest, ADamagedPageFailsTheJobInTheInputsName) {
    SampleJob job;
    job.pages = 3;
    ZipItems items = job.Items();
    items["Documents/1/Pages/_rels/3.fpage.rels"] = "<broken";
    WriteZip(m_folder / "job.xps", items);
    const JobOutcome outcome = RunJob(MakeJob(m_folder / "job.xps", Output(), {Filter("pass", PassOn())}));
    ASSERT_TRUE(outcome.failure);
    EXPECT_TRUE(outcome.failure->fromInput);
    EXPECT_THAT(FailureLine(outcome), HasSubstr("/Documents/1/Pages/_rels/3.fpage.rels"));
    ExpectNoOutput();
}

// Whatever the filters do at that moment, the job ends soon, every filter is told once, and nothing is left.
TEST_F(PipelineTest, CancellationFromAnotherThreadEndsEveryFilter) {
    SampleJob job;
    job.pages = 200;
    const auto file = WriteJob(job);
    const auto slowly = [](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage*) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        return S_OK;
    };
    for (const bool firstIsSlow : {true, false}) {
        const auto first = std::make_shared<TestFilter::Calls>();
        const auto second = std::make_shared<TestFilter::Calls>();
        Pipeline pipeline(
            MakeJob(file, Output(),
                    {Filter("first", firstIsSlow ? PassOn(slowly) : PassOn(), PartsToParts, first),
                     Filter("second", firstIsSlow ? PassOn() : PassOn(slowly), PartsToParts, second)}),
            std::make_shared<JobState>());
        std::thread canceller([&] {
            while (first->started == 0)
                std::this_thread::yield();
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            pipeline.Cancel();
        });
        const JobOutcome outcome = pipeline.Run();
        canceller.join();
        EXPECT_TRUE(outcome.isCancelled) << FailureLine(outcome);
        EXPECT_FALSE(outcome.isWritten);
        EXPECT_EQ(1, first->shutDown);
        EXPECT_EQ(1, second->shutDown);
        for (const FilterOutcome& filter : outcome.filters)
            EXPECT_TRUE(filter.closedOutput) << filter.name;
        ExpectNoOutput();
    }
}

// The library's own filters, whose tickets, parts and streams are on the way at each of these moments.
TEST_F(PipelineTest, CancellationAtAnyMomentEndsTheLibrarysFilters) {
    SampleJob job;
    job.pages = 60;
    job.pageSize = 20000;
    job.jobTicket = SampleTicket("PageOrientation", "Landscape");
    job.pageTicket = SampleTicket("PageMediaSize", "ISOA4");
    const auto file = WriteJob(job);
    const auto queue = OvPlatform::QueueFolder::Load(OV_SOURCE_DIR "/Samples/Queues/ColorOffice");
    const OvPlatform::PrintTicketMerge tickets(queue); // lest every job reads the queue's documents again
    const auto sample = [](const char* name) {
        return ParseFilterArgument(std::string(OV_BINARY_DIR "/lib/lib") + name + ".so");
    };
    const std::vector<FilterSpec> chains[] = {
        {sample("PassThrough"), sample("PassThrough")},
        {sample("PassThrough"), sample("PageList"), sample("StreamCopy")}};
    int cancelled = 0;
    for (const std::vector<FilterSpec>& chain : chains) {
        for (const std::uint64_t parts : {0, 1, 2, 4, 8, 20, 40, 60, 64}) {
            SCOPED_TRACE(parts);
            const auto state = std::make_shared<JobState>();
            JobDescription description = MakeJob(file, Output(), chain);
            description.queue = queue;
            Pipeline pipeline(std::move(description), state);
            std::atomic<bool> isOver{false};
            std::thread canceller([&] {
                while (state->Counters().parts < parts && !isOver)
                    std::this_thread::yield();
                pipeline.Cancel();
            });
            const JobOutcome outcome = pipeline.Run();
            isOver = true;
            canceller.join();
            EXPECT_FALSE(outcome.failure) << FailureLine(outcome);
            EXPECT_NE(outcome.isWritten, outcome.isCancelled);
            for (const FilterOutcome& filter : outcome.filters)
                EXPECT_EQ(filter.wasStarted, filter.closedOutput) << filter.name;
            cancelled += outcome.isCancelled;
            std::filesystem::remove(Output());
            ExpectNoOutput();
        }
    }
    EXPECT_GE(cancelled, 10) << "most moments lie within the job";
}

TEST_F(PipelineTest, CancellationWakesAFilterThatWaitsForBytes) {
    std::promise<void> isWaiting;
    const auto wait = [&](const FilterEnv& env) -> HRESULT {
        while (!env.isShutDown)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return HRESULT_FROM_WIN32(ERROR_PRINT_CANCELLED);
    };
    HRESULT readResult = S_OK;
    const auto read = [&](const FilterEnv& env) -> HRESULT {
        const auto reader = env.Reader();
        isWaiting.set_value();
        char byte = 0;
        ULONG count = 0;
        BOOL atEnd = FALSE;
        return readResult = reader->ReadBytes(&byte, 1, &count, &atEnd);
    };
    Pipeline pipeline(MakeJob(WriteJob({}), Output(),
                              {Filter("wait", wait, PartsToBytes), Filter("read", read, BytesToBytes)}),
                      std::make_shared<JobState>());
    std::thread canceller([&] {
        isWaiting.get_future().wait();
        pipeline.Cancel();
    });
    const JobOutcome outcome = pipeline.Run();
    canceller.join();
    EXPECT_TRUE(outcome.isCancelled);
    EXPECT_TRUE(FAILED(readResult));
    ExpectNoOutput();
}

TEST_F(PipelineTest, CancelledBeforeItRunsItWritesNothing) {
    Pipeline pipeline(MakeJob(WriteJob({}), Output(), {Filter("pass", PassOn())}),
                      std::make_shared<JobState>());
    pipeline.Cancel();
    EXPECT_TRUE(pipeline.Run().isCancelled);
    ExpectNoOutput();
}

TEST_F(PipelineTest, KeepsAnOutputThatWasThereWhenTheJobFails) {
    std::ofstream(Output()) << "from before";
    const JobOutcome outcome = Run({}, {Filter("bad", [](const FilterEnv&) { return E_FAIL; })});
    EXPECT_FALSE(outcome.isWritten);
    std::ifstream file(Output());
    EXPECT_EQ("from before", std::string((std::istreambuf_iterator<char>(file)), {}));
}

TEST_F(PipelineTest, SaysWhereTheOutputCannotBeWritten) {
    for (const auto& target : {m_folder.Path() / "none" / "out.xps", m_folder.Path()}) {
        JobDescription job = MakeJob(WriteJob({}), target, {Filter("pass", PassOn())});
        EXPECT_THAT(FailureLine(RunJob(std::move(job))), HasSubstr(target.string()));
    }
}

} // namespace
