#include "Support/Growth.h"
#include "Support/PipelineJob.h"

#include <Source/PackageSource.h>

#include <stdexcept>

using namespace OvPipeline;

namespace {

struct Job {
    TemporaryFolder folder;

    std::filesystem::path Input() const { return folder / "in.xps"; }
};

// A job as the sample has it, with more of something, and what is done on it.
GrowthMaker On(std::function<void(ZipItems&, std::size_t)> change, std::function<void(const Job&)> run) {
    return [=](std::size_t n) {
        SampleJob sample;
        sample.pages = 1;
        sample.hasExtras = false;
        ZipItems items = sample.Items();
        change(items, n);
        auto job = std::make_shared<Job>();
        WriteZip(job->Input(), items);
        return [job, run] { run(*job); };
    };
}

using OnPart = std::function<void(IFixedPage*, BSTR, IUnknown*)>;

// Through the whole pipeline, by a filter that asks each page for its parts and does something to them.
std::function<void(const Job&)> Printing(const OnPart& change = [](IFixedPage*, BSTR, IUnknown*) {}) {
    const auto onPage = [=](const FilterEnv&, IXpsDocumentConsumer*, IFixedPage* page) -> HRESULT {
        std::vector<std::pair<CComBSTR, CComPtr<IUnknown>>> parts;
        CComPtr<IXpsPartIterator> iterator;
        page->GetXpsPartIterator(&iterator);
        for (; !iterator->IsDone(); iterator->Next()) {
            auto& [uri, part] = parts.emplace_back();
            iterator->Current(&uri, &part);
        }
        for (const auto& [uri, part] : parts)
            change(page, uri, part);
        return S_OK;
    };
    return [=](const Job& job) {
        const JobOutcome outcome =
            RunJob(MakeJob(job.Input(), job.folder / "out.xps", {Filter("asks", PassOn(onPage))}));
        EXPECT_TRUE(outcome.isWritten) << FailureLine(outcome);
    };
}

// Puts everything in its own place again, and asks for it by name.
void Replace(IFixedPage* page, BSTR uri, IUnknown* part) {
    CComPtr<IUnknown> same;
    EXPECT_EQ(S_OK, page->SetPagePart(part));
    EXPECT_EQ(S_OK, page->GetPagePart(uri, &same));
}

void Delete(IFixedPage* page, BSTR uri, IUnknown*) { EXPECT_EQ(S_OK, page->DeleteResource(uri)); }

const std::string base = SampleJob().Base();
const std::string relations = "Documents/1/Pages/_rels/1.fpage.rels";

std::string Name(const std::string& head, std::size_t i, const std::string& end) {
    return head + std::to_string(i) + end;
}

void ManyPages(ZipItems& items, std::size_t n) {
    std::string markup = "<FixedDocument xmlns=\"" + base + "\">";
    for (std::size_t i = 1; i <= n; ++i) {
        items[Name("Documents/1/Pages/", i, ".fpage")] = items["Documents/1/Pages/1.fpage"];
        items[Name("Documents/1/Pages/_rels/", i, ".fpage.rels")] = items[relations];
        markup += Name("<PageContent Source=\"Pages/", i, ".fpage\"/>");
    }
    items["Documents/1/FixedDoc.fdoc"] = markup + "</FixedDocument>";
}

void ManyDocuments(ZipItems& items, std::size_t n) {
    std::string markup = "<FixedDocumentSequence xmlns=\"" + base + "\">";
    for (std::size_t i = 1; i <= n; ++i) {
        items[Name("Documents/", i, "/FixedDoc.fdoc")] = items["Documents/1/FixedDoc.fdoc"];
        items[Name("Documents/", i, "/Pages/1.fpage")] = items["Documents/1/Pages/1.fpage"];
        markup += Name("<DocumentReference Source=\"/Documents/", i, "/FixedDoc.fdoc\"/>");
    }
    items["FixedDocSeq.fdseq"] = markup + "</FixedDocumentSequence>";
}

void ManyResources(ZipItems& items, std::size_t n) {
    SampleJob::Links links;
    for (std::size_t i = 0; i < n; ++i) {
        items[Name("Resources/i", i, ".png")] = "x";
        links.push_back({base + "/required-resource", Name("/Resources/i", i, ".png")});
    }
    items[relations] = SampleJob::Relationships(links);
}

// Each dictionary leads to the next one.
void ChainedDictionaries(ZipItems& items, std::size_t n) {
    const auto to = [](std::size_t i) {
        return SampleJob::Relationships({{base + "/required-resource", Name("/Resources/d", i, ".dict")}});
    };
    for (std::size_t i = 0; i < n; ++i) {
        items[Name("Resources/d", i, ".dict")] = "<ResourceDictionary xmlns=\"" + base + "\"/>";
        if (i + 1 != n) items[Name("Resources/_rels/d", i, ".dict.rels")] = to(i + 1);
    }
    items[relations] = to(0);
}

void ManyForeignParts(ZipItems& items, std::size_t n) {
    SampleJob::Links links{{base + "/fixedrepresentation", "/FixedDocSeq.fdseq"}};
    for (std::size_t i = 0; i < n; ++i) {
        items[Name("Foreign/", i, ".xml")] = "x";
        links.push_back({"urn:foreign", Name("/Foreign/", i, ".xml")});
    }
    items["_rels/.rels"] = SampleJob::Relationships(links);
}

void ManyLinkTargets(ZipItems& items, std::size_t n) {
    std::string markup = "<FixedDocument xmlns=\"" + base +
                         "\"><PageContent Source=\"Pages/1.fpage\"><PageContent.LinkTargets>";
    for (std::size_t i = 0; i < n; ++i)
        markup += Name("<LinkTarget Name=\"t", i, "\"/>");
    items["Documents/1/FixedDoc.fdoc"] = markup + "</PageContent.LinkTargets></PageContent></FixedDocument>";
}

void ManyAttributes(ZipItems& items, std::size_t n) {
    std::string markup = "<FixedDocument xmlns=\"" + base + "\"><PageContent Source=\"Pages/1.fpage\"";
    for (std::size_t i = 0; i < n; ++i)
        markup += Name(" a", i, "=\"\"");
    items["Documents/1/FixedDoc.fdoc"] = markup + "/></FixedDocument>";
}

// What is refused is as good as what is read, if that is seen in time.
void Walk(const Job& job) {
    CComPtr<PackageSource> source;
    source.Attach(new PackageSource(OpenJobPackage(job.Input(), std::make_shared<JobState>())));
    try {
        while (source->Next()) {
        }
    } catch (const std::runtime_error&) {
    }
}

std::function<void()> ReadConfiguration(std::size_t n) {
    auto folder = std::make_shared<TemporaryFolder>();
    std::string text = "<Filters>";
    const std::string ends = ".dll' clsid='{00000000-0000-0000-0000-000000000000}'>"
                             "<Input guid='{b8cf8530-5562-47c4-ab67-b1f69ecf961e}'/>"
                             "<Output guid='{4368d8a2-4181-4a9f-b295-3d9a38bb9ba0}'/></Filter>\n";
    for (std::size_t i = 0; i < n; ++i)
        text += Name("<Filter dll='", i, ends);
    folder->Write("pipeline.xml", text + "</Filters>");
    return [=] { EXPECT_EQ(n, ReadPipelineConfiguration(folder->Path() / "pipeline.xml").filters.size()); };
}

constexpr std::size_t mostItems = 4000; // a page is several, and the archive made for this holds 65,535

const GrowthCase cases[] = {
    {"PrintsPages", On(ManyPages, Printing()), mostItems},
    {"PrintsDocuments", On(ManyDocuments, Printing()), mostItems},
    {"PrintsChainedDictionaries", On(ChainedDictionaries, Printing()), mostItems},
    {"PrintsForeignParts", On(ManyForeignParts, Printing()), mostItems},
    {"PrintsLinkTargets", On(ManyLinkTargets, Printing())},
    {"ReplacesResources", On(ManyResources, Printing(Replace)), mostItems},
    {"DeletesResources", On(ManyResources, Printing(Delete)), mostItems},
    {"ReadsPipelineConfigurations", ReadConfiguration, 1'000},
    {"ReadsAttributes", On(ManyAttributes, Walk)},
};

class JobGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(JobGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, JobGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
