#include "Support/PipelineJob.h"
#include "Support/Rows.h"

#include <Package/PackageWriter.h>
#include <PrintTicket/PrintTicketMerge.h>
#include <Sink/PackageSink.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <printerextension.h>

#include <atomic>
#include <chrono>
#include <future>
#include <set>
#include <thread>

using namespace OvPipeline;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr FilterEnds partsToParts{EndKind::XpsParts, EndKind::XpsParts};
constexpr FilterEnds partsToBytes{EndKind::XpsParts, EndKind::Bytes};
constexpr FilterEnds bytesToBytes{EndKind::Bytes, EndKind::Bytes};

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

// Each part's relationships as "source -> type target", whatever their ids and their order; but those to
// story fragments, which do not survive the pipeline.
std::multiset<std::string> Links(const std::shared_ptr<const OvPlatform::PackageReader>& package) {
    std::multiset<std::string> links;
    std::vector<std::string> sources{"/"};
    for (const auto& part : package->Parts())
        sources.push_back(part.name);
    for (const std::string& source : sources)
        for (const auto& link : package->Relationships(source))
            if (!link.type.ends_with("/storyfragments"))
                links.insert(source + " -> " + link.type + " " + link.targetPart);
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
        std::size_t lost = 0;
        for (const auto& part : before->Parts()) {
            const auto* written = after->Find(part.name);
            lost += written == nullptr;
            if (!written) continue;
            EXPECT_EQ(part.contentType, written->contentType) << part.name;
            const PartKind kind = KindOf(part.contentType, part.name);
            if (kind == PartKind::Sequence || kind == PartKind::Document) continue;
            EXPECT_EQ(before->ReadPart(part.name, 1 << 20), after->ReadPart(part.name, 1 << 20)) << part.name;
        }
        EXPECT_EQ(60u, lost) << "story fragments only";
        EXPECT_EQ(Links(before), Links(after));
        EXPECT_THAT(after->ReadPart("/Documents/2/FixedDoc.fdoc", 1 << 20),
                    HasSubstr("<PageContent Source=\"Pages/30.fpage\" Width=\"816\" Height=\"1056\"/>"));
        std::filesystem::remove(Output());
    }
}

std::string PackedBytes(const std::filesystem::path& file, const std::string& part) {
    std::string bytes(100'000, '\0');
    bytes.resize(OvPlatform::PackageReader::Open(file)->OpenPacked(part)->Read(bytes.data(), bytes.size()));
    return bytes;
}

TEST_F(PipelineTest, TakesOverWhatNobodyChangesAsItIsPacked) {
    SampleJob sample;
    sample.pageSize = 1000;
    const std::string page = "/Documents/1/Pages/1.fpage";
    // Packed as the pipeline itself would not do it.
    ZipItems items = sample.Items();
    {
        const auto writer = OvPlatform::PackageWriter::Create(m_folder / "job.xps");
        const auto from = OvPlatform::PackageReader::Open(WriteJob(sample));
        for (const auto& part : from->Parts()) {
            const auto sink =
                writer->AddPart(part.name, part.contentType, OvPlatform::PackageCompression::Fast);
            const std::string bytes = from->ReadPart(part.name, 1 << 20);
            sink->Write(bytes.data(), bytes.size());
            sink->Close();
        }
        for (int number = 0; const std::string& link : Links(from)) {
            const std::size_t type = link.find(" -> ") + 4, target = link.find(' ', type) + 1;
            writer->AddRelationship(link.substr(0, type - 4), link.substr(type, target - type - 1),
                                    link.substr(target), false, "own" + std::to_string(++number));
        }
        writer->Finish();
        writer->Commit();
    }
    const std::filesystem::path job = m_folder / "job.xps";
    const std::string packed = PackedBytes(job, page);
    const auto compression = [](EXpsCompressionOptions option) {
        return PassOn([option](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage* part) {
            return part->SetPartCompression(option);
        });
    };
    for (const bool isChanged : {false, true}) {
        const JobOutcome outcome = RunJob(MakeJob(
            job, Output(), {Filter("f", compression(isChanged ? Compression_Small : Compression_Normal))}));
        ASSERT_TRUE(outcome.isWritten) << FailureLine(outcome);
        EXPECT_EQ(PackedBytes(Output(), page) == packed, !isChanged);
        EXPECT_EQ(PackedBytes(Output(), SampleJob::fontName), PackedBytes(job, SampleJob::fontName));
        EXPECT_EQ(OvPlatform::PackageReader::Open(Output())->ReadPart(page, 1 << 20),
                  items.at(page.substr(1)));
        const std::string links = "Documents/1/Pages/_rels/1.fpage.rels";
        EXPECT_THAT(ReadZip(job).at(links), HasSubstr("Id=\"own"));
        EXPECT_EQ(ReadZip(Output()).at(links), ReadZip(job).at(links));
        std::filesystem::remove(Output());
    }

    std::string bytes = TemporaryFolder::Read(job);
    bytes[bytes.find(packed) + packed.size() / 2] ^= 1;
    m_folder.Write("job.xps", bytes);
    const JobOutcome outcome = RunJob(MakeJob(job, Output(), {Filter("f", PassOn())}));
    ASSERT_TRUE(outcome.failure);
    EXPECT_TRUE(outcome.failure->fromInput);
    EXPECT_EQ(outcome.failure->part, page);
    ExpectNoOutput();
}

TEST_F(PipelineTest, StopsInTheMiddleOfALargePart) {
    class Cancelling final : public OvPlatform::ByteOutput {
    public:
        Cancelling(std::filesystem::path folder, std::shared_ptr<JobState> job,
                   std::atomic<std::size_t>& size)
            : m_folder(std::move(folder)), m_job(std::move(job)), m_size(size) {}
        const std::filesystem::path& Name() const override { return m_folder; }
        std::filesystem::path Folder() const override { return m_folder; }
        void Write(const void*, std::size_t size) override {
            m_size += size;
            m_job->Cancel();
        }
        void Flush() override {}
        void Finish() override {}
        void Commit() override {}

    private:
        std::filesystem::path m_folder;
        std::shared_ptr<JobState> m_job;
        std::atomic<std::size_t>& m_size;
    };
    ZipItems items = SampleJob().Items();
    constexpr std::size_t large = 12 << 20;
    std::string& markup = items[SampleJob::PageName(1, 1).substr(1)];
    for (unsigned seed = 1; markup.size() < large; seed = seed * 1664525 + 1013904223)
        markup += static_cast<char>(seed >> 24);
    WriteZip(m_folder / "job.xps", items);
    for (const EXpsCompressionOptions compression : {Compression_Normal, Compression_Fast}) {
        const auto job = std::make_shared<JobState>();
        const auto context = OpenJobPackage(m_folder / "job.xps", job);
        const CComPtr<PackageSource> source = [&] {
            CComPtr<PackageSource> made;
            made.Attach(new PackageSource(context));
            return made;
        }();
        std::atomic<std::size_t> size = 0; // from another thread
        PackageSink sink(std::make_unique<Cancelling>(m_folder.Path(), job, size), job, context->flavour,
                         Interleaving::MarkupFirst);
        try {
            while (const CComPtr<IUnknown> part = source->Next()) {
                if (const CComQIPtr<IFixedPage> page(part); page) page->SetPartCompression(compression);
                sink.Take(part);
            }
            ADD_FAILURE() << compression;
        } catch (const HostError& error) {
            EXPECT_EQ(error.Result(), job->StopResult());
        }
        EXPECT_TRUE(job->IsCancelled());
        EXPECT_LT(size, large / 2) << compression;
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

TEST_F(PipelineTest, FillsThePropertyBagInThePublishedTypes) {
    using Types = std::map<std::string, VARTYPE>;
    const Types expected{{"PrinterName", VT_BSTR},           {"PrinterHandle", VT_BYREF},
                         {"UserSecurityToken", VT_BYREF},    {"PrintJobId", VT_UI4},
                         {"PerUserPrintTicket", VT_UNKNOWN}, {"DriverPropertyBag", VT_UNKNOWN},
                         {"QueuePropertyBag", VT_UNKNOWN},   {"PrintOutputFileName", VT_BSTR},
                         {"ProgressReport", VT_UNKNOWN}};
    Types types;
    const auto look = [&](const FilterEnv& env, IXpsDocumentConsumer*, IFixedPage*) -> HRESULT {
        for (const auto& [name, type] : expected) {
            VARIANT value;
            VariantInit(&value);
            EXPECT_EQ(S_OK, env.bag->GetProperty(Wide(name).c_str(), &value)) << name;
            types[name] = value.vt;
            if (value.vt != VT_BYREF) VariantClear(&value);
        }
        CComVariant ticket;
        EXPECT_EQ(S_OK, env.bag->GetProperty(L"PerUserPrintTicket", &ticket));
        CComPtr<IPrintReadStream> stream;
        EXPECT_EQ(S_OK, CComQIPtr<IPrintReadStreamFactory>(ticket.punkVal)->GetStream(&stream));
        EXPECT_THAT(ReadAll(stream), HasSubstr("psk:Portrait"));
        CComVariant bag;
        EXPECT_EQ(S_OK, env.bag->GetProperty(L"DriverPropertyBag", &bag));
        CComBSTR model;
        EXPECT_EQ(S_OK, CComQIPtr<IPrinterPropertyBag>(bag.punkVal)->GetString(CComBSTR(L"Model"), &model));
        EXPECT_EQ("T-1000", Utf8Argument(model));
        CComVariant none;
        EXPECT_EQ(E_ELEMENT_NOT_FOUND, env.bag->GetProperty(L"NoSuchProperty", &none));
        return S_OK;
    };
    JobDescription job = MakeJob(WriteJob({}), Output(), {Filter("look", PassOn(look))});
    job.outputIsNamed = true;
    const JobOutcome outcome = RunJob(std::move(job));
    ASSERT_TRUE(outcome.isWritten) << FailureLine(outcome);
    EXPECT_EQ(expected, types);
}

TEST_F(PipelineTest, AMisbehavingFilterFailsTheJobWithOneLineAndNoOutput) {
    const Rows<const char*, TestFilter::Body, const char*> cases{
        {"fails at a page", PassOn([](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage* page) {
             return UriOf(page) == "/Documents/1/Pages/2.fpage" ? E_ACCESSDENIED : S_OK;
         }),
         "filter bad at /Documents/1/Pages/2.fpage: 0x80070005 E_ACCESSDENIED"},
        {"throws", [](const FilterEnv&) -> HRESULT { throw std::runtime_error("thrown by the filter"); },
         "filter bad: thrown by the filter: 0x80004005"},
        {"asks for the end of the job", PassOn([](const FilterEnv& env, IXpsDocumentConsumer*, IFixedPage*) {
             env.control->RequestShutdown(E_ABORT, nullptr);
             return S_OK;
         }),
         "filter bad at /Documents/1/Pages/1.fpage: the filter asks for the end of the job: 0x80004004 "
         "E_ABORT"},
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
        {"gives up a stream", PassOn([](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage* page) {
             CComPtr<IPrintWriteStream> stream;
             return page->GetWriteStream(&stream);
         }),
         "the output: /Documents/1/Pages/1.fpage: filter bad has given the stream up without closing it"},
        {"sends two parts under one name",
         PassOn([](const FilterEnv&, IXpsDocumentConsumer* to, IFixedPage* page) -> HRESULT {
             CComPtr<IPartImage> image;
             CComPtr<IPrintWriteStream> stream;
             to->GetNewEmptyPart(L"/Resources/One.png", __uuidof(IPartImage),
                                 reinterpret_cast<void**>(&image), &stream);
             WriteAll(stream, "image");
             return page->SetPagePart(image);
         }),
         "two different parts were sent under the name /Resources/One.png: 0x8051000b OPC_E_DUPLICATE_PART"},
    };

    for (const auto& [what, body, line] : cases) {
        SCOPED_TRACE(what);
        const auto before = std::make_shared<TestFilter::Calls>();
        const auto after = std::make_shared<TestFilter::Calls>();
        const JobOutcome outcome =
            Run({}, {Filter("before", PassOn(), partsToParts, before), Filter("bad", body, partsToParts),
                     Filter("after", PassOn(), partsToParts, after)});
        EXPECT_FALSE(outcome.isWritten);
        EXPECT_FALSE(outcome.isCancelled);
        EXPECT_THAT(FailureLine(outcome), HasSubstr(line));
        EXPECT_EQ(1, before->shutDown);
        EXPECT_EQ(1, after->shutDown);
        ExpectNoOutput();
    }
}

TEST_F(PipelineTest, AFilterNeedNotTakeWhatTheOneBeforeItSends) {
    const auto sendOnePage = [](const FilterEnv& env) -> HRESULT {
        const auto to = env.Consumer();
        for (bool isPage = false; !isPage;) {
            CComPtr<IUnknown> part;
            if (const HRESULT hr = env.Provider()->GetXpsPart(&part); FAILED(hr)) return hr;
            isPage = CComQIPtr<IFixedPage>(part) != nullptr;
            SendPart(to, part);
        }
        return to->CloseSender();
    };
    SampleJob job;
    job.pages = 40; // more than a queue holds
    const JobOutcome outcome = Run(job, {Filter("passes", PassOn()), Filter("first", sendOnePage)});
    EXPECT_TRUE(outcome.isWritten) << FailureLine(outcome);
}

TEST_F(PipelineTest, StartsNoFilterWhereOneCannotBeInitialised) {
    const auto good = std::make_shared<TestFilter::Calls>();
    const auto bad = std::make_shared<TestFilter::Calls>();
    bad->initialiseResult = E_NOINTERFACE;
    const JobOutcome outcome =
        Run({}, {Filter("good", PassOn(), partsToParts, good), Filter("bad", PassOn(), partsToParts, bad)});
    EXPECT_THAT(
        FailureLine(outcome),
        HasSubstr(
            "filter bad (InitializeFilter): it does not read XPS parts (IXpsDocumentProvider) and write "
            "XPS parts (IXpsDocumentConsumer): 0x80004002"));
    EXPECT_EQ(0, good->started + bad->started);
    EXPECT_EQ(2, good->shutDown + bad->shutDown);
    ExpectNoOutput();
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
    const auto calls = std::make_shared<TestFilter::Calls>();
    Pipeline pipeline(
        MakeJob(WriteJob({}), Output(),
                {Filter("wait", wait, partsToBytes, calls), Filter("read", read, bytesToBytes)}),
        std::make_shared<JobState>());
    std::thread canceller([&] {
        isWaiting.get_future().wait();
        pipeline.Cancel();
    });
    const JobOutcome outcome = pipeline.Run();
    canceller.join();
    EXPECT_TRUE(outcome.isCancelled);
    EXPECT_TRUE(FAILED(readResult));
    EXPECT_EQ(1, calls->shutDown);
    ExpectNoOutput();
}

} // namespace
