#include "Support/PipelineJob.h"
#include "Support/Rows.h"

#include <Parts/DescribePart.h>
#include <Source/PackageSource.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <msopc.h>
#include <xpsobjectmodel.h>

using namespace OvPipeline;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class PackageSourceTest : public testing::Test {
protected:
    CComPtr<PackageSource> Open(const ZipItems& items) {
        const auto file = m_folder / "job.xps";
        WriteZip(file, items);
        CComPtr<PackageSource> source;
        source.Attach(new PackageSource(OpenJobPackage(file, std::make_shared<JobState>())));
        return source;
    }
    // The names of all parts in order.
    std::vector<std::string> Walk(const ZipItems& items) {
        std::vector<std::string> parts;
        const auto source = Open(items);
        while (const CComPtr<IUnknown> part = source->Next())
            parts.push_back(DescribePart(part));
        return parts;
    }
    CComPtr<IFixedPage> FirstPage(const ZipItems& items) { return NextPage(*Open(items)); }

    TemporaryFolder m_folder;
};

std::vector<std::string> PartsOf(IFixedPage* page) {
    std::vector<std::string> names;
    CComPtr<IXpsPartIterator> iterator;
    page->GetXpsPartIterator(&iterator);
    for (; !iterator->IsDone(); iterator->Next()) {
        CComBSTR uri;
        CComPtr<IUnknown> part;
        EXPECT_EQ(S_OK, iterator->Current(&uri, &part));
        EXPECT_EQ(Utf8Argument(uri), UriOf(CComQIPtr<IPartBase>(part).p));
        names.push_back(DescribePart(part));
    }
    return names;
}

TEST_F(PackageSourceTest, GivesThePartsInTheOrderOfThePipelineInBothVocabularies) {
    for (const bool isOpenXps : {false, true}) {
        SampleJob job;
        job.isOpenXps = isOpenXps;
        job.documents = 2;
        job.pages = 1;
        ZipItems items = job.Items();
        items["Resources/Unused.png"] = "an image that no page relates to";
        EXPECT_THAT(Walk(items),
                    ElementsAre("XPS document", "part /docProps/core.xml",
                                "document sequence /FixedDocSeq.fdseq", "document /Documents/1/FixedDoc.fdoc",
                                "part /Documents/1/Structure.struct", "page /Documents/1/Pages/1.fpage",
                                "document /Documents/2/FixedDoc.fdoc", "part /Documents/2/Structure.struct",
                                "page /Documents/2/Pages/1.fpage", "image /Resources/Unused.png"));
    }
}

TEST_F(PackageSourceTest, GivesTheTicketOfItsLevelAndNoneWhereThereIsNone) {
    SampleJob job;
    job.documentTicket = "<document/>";
    const auto source = Open(job.Items());
    while (const CComPtr<IUnknown> part = source->Next()) {
        CComPtr<IPartPrintTicket> ticket;
        if (const CComQIPtr<IFixedDocument> document(part); document) {
            ASSERT_EQ(S_OK, document->GetPrintTicket(&ticket));
            EXPECT_EQ("<document/>", BytesOf(ticket));
        } else if (const CComQIPtr<IFixedPage> page(part); page) {
            EXPECT_EQ(E_ELEMENT_NOT_FOUND, page->GetPrintTicket(&ticket));
        }
    }
}

TEST_F(PackageSourceTest, GivesAPageTheResourcesOfItsDictionariesToo) {
    ZipItems items = SampleJob().Items();
    items["Resources/Other.png"] = "an image that no page relates to";
    const CComPtr<IFixedPage> page = FirstPage(items);
    EXPECT_THAT(PartsOf(page),
                ElementsAre(std::string("font ") + SampleJob::fontName, "image /Resources/Picture.png",
                            "resource dictionary /Resources/Brushes.dict", "image /Resources/Pattern.jpg"));
    const Rows<const wchar_t*, HRESULT> asked{
        {L"../../../resources/PICTURE.png", S_OK}, // relative, in another case
        {L"/Resources/Other.png", S_OK},           // of the package, though not of the page
        {L"/Resources/None.png", E_ELEMENT_NOT_FOUND},
        {L"/FixedDocSeq.fdseq", E_ELEMENT_NOT_FOUND}};
    for (const auto& [name, result] : asked) {
        CComPtr<IUnknown> part;
        EXPECT_EQ(result, page->GetPagePart(name, &part)) << Utf8(name);
    }
}

TEST_F(PackageSourceTest, EndsWhereDictionariesLeadInCircles) {
    ZipItems items = SampleJob().Items();
    const std::string required = SampleJob().Base() + "/required-resource";
    items["Resources/Second.dict"] = "<ResourceDictionary/>";
    items["Resources/_rels/Brushes.dict.rels"] = SampleJob::Relationships({{required, "Second.dict"}});
    items["Resources/_rels/Second.dict.rels"] =
        SampleJob::Relationships({{required, "Brushes.dict"}, {required, "Second.dict"}});
    EXPECT_EQ(4u, PartsOf(FirstPage(items)).size());
}

TEST_F(PackageSourceTest, FindsPagesWhoseReferencesAndNamesAreEncodedDifferently) {
    ZipItems items = SampleJob().Items();
    items["Documents/1/Pages/A%20page.fpage"] = "<FixedPage/>";
    items["Documents/1/FixedDoc.fdoc"] = "<FixedDocument xmlns=\"" + SampleJob().Base() +
                                         "\"><PageContent Source=\"Pages/A page.fpage\"/>"
                                         "<PageContent Source=\"../../Documents/1/Pages/1.fpage#anchor\"/>"
                                         "</FixedDocument>";
    EXPECT_THAT(Walk(items), testing::IsSupersetOf({"page /Documents/1/Pages/A%20page.fpage",
                                                    "page /Documents/1/Pages/1.fpage"}));
}

TEST_F(PackageSourceTest, RefusesDamagedPackagesWithTheResultAndWords) {
    const std::string xps = SampleJob().Base();
    const auto documentOf = [&](const std::string& content) {
        return "<FixedDocument xmlns=\"" + xps + "\">" + content + "</FixedDocument>";
    };
    const auto sequenceOf = [&](const std::string& content) {
        return "<FixedDocumentSequence xmlns=\"" + xps + "\">" + content + "</FixedDocumentSequence>";
    };
    const auto links = [&](const std::string& type, const std::vector<std::string>& targets) {
        SampleJob::Links all;
        for (const std::string& target : targets)
            all.push_back({xps + type, target});
        return SampleJob::Relationships(all);
    };
    const std::string root = "_rels/.rels", sequence = "FixedDocSeq.fdseq", gone = "(gone)";
    const std::string document = "Documents/1/FixedDoc.fdoc", ticketOf = "_rels/FixedDocSeq.fdseq.rels";
    const std::string page = "<PageContent Source='Pages/1.fpage'/>";
    // The item and what it holds in place of its own; the result, or 0 for one of packages.
    const Rows<const char*, std::string, std::string, HRESULT, const char*> rows{
        {"no sequence", root, links("", {}), XPS_E_MISSING_DOCUMENTSEQUENCE_RELATIONSHIP,
         "names no document sequence"},
        {"two sequences", root, links("/fixedrepresentation", {sequence, "Second.fdseq"}),
         XPS_E_MULTIPLE_DOCUMENTSEQUENCE_RELATIONSHIPS,
         "two document sequences, /FixedDocSeq.fdseq and /Second.fdseq"},
        {"sequence of the wrong type", root, links("/fixedrepresentation", {"Resources/Picture.png"}),
         XPS_E_UNEXPECTED_CONTENT_TYPE, "/Resources/Picture.png is of type image/png"},
        {"document missing", document, gone, XPS_E_MISSING_REFERRED_DOCUMENT,
         "/FixedDocSeq.fdseq names the document Documents/1/FixedDoc.fdoc, which the package does not hold"},
        {"page missing", "Documents/1/Pages/2.fpage", gone, XPS_E_MISSING_REFERRED_PAGE,
         "/Documents/1/FixedDoc.fdoc names the page Pages/2.fpage, which the package does not hold"},
        {"page twice", document, documentOf(page + page), XPS_E_MULTIPLE_REFERENCES_TO_PART,
         "the page /Documents/1/Pages/1.fpage is referred to twice"},
        {"document that is a sequence", sequence,
         sequenceOf("<DocumentReference Source=\"FixedDocSeq.fdseq\"/>"), XPS_E_UNEXPECTED_CONTENT_TYPE,
         "/FixedDocSeq.fdseq is of type"},
        {"no documents", sequence, sequenceOf(""), XPS_E_MISSING_DOCUMENT, "has no documents"},
        {"no pages", document, documentOf(""), XPS_E_MISSING_PAGE_IN_DOCUMENT, "the job has no pages"},
        {"document not well-formed", document, documentOf("\n<PageContent"), XPS_E_INVALID_MARKUP,
         "/Documents/1/FixedDoc.fdoc line 2:"},
        {"document with a DTD", document, "<!DOCTYPE x [<!ENTITY a \"b\">]>" + documentOf(page),
         XPS_E_INVALID_MARKUP, "document type declarations are not allowed"},
        {"document of another namespace", document, "<FixedDocument xmlns=\"urn:other\"/>",
         XPS_E_INVALID_MARKUP, "not a FixedDocument of XPS"},
        {"page without a source", document, documentOf("\n<PageContent/>"), XPS_E_MISSING_PART_REFERENCE,
         "/Documents/1/FixedDoc.fdoc line 2: a PageContent has no Source"},
        {"two tickets", ticketOf, links("/printticket", {"Metadata/a.xml", "Metadata/b.xml"}),
         XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENTSEQUENCE,
         "has two print tickets, /Metadata/a.xml and /Metadata/b.xml"},
        {"resource missing", "Resources/Picture.png", gone, OPC_E_NO_SUCH_PART, "Picture.png"},
        {"relationships not well-formed", "Documents/1/Pages/_rels/2.fpage.rels", "<Relationships",
         OPC_E_NONCONFORMING_RELS_XML, "/Documents/1/Pages/_rels/2.fpage.rels"},
    };
    for (const auto& [what, item, content, result, line] : rows) {
        SCOPED_TRACE(what);
        ZipItems items = SampleJob().Items();
        items["Second.fdseq"] = items[sequence];
        items["Metadata/a.xml"] = items["Metadata/b.xml"] = "<t/>";
        items[item] = content;
        if (content == gone) items.erase(item);
        try {
            Walk(items);
            ADD_FAILURE() << "nothing was said";
        } catch (const HostError& error) {
            EXPECT_EQ(result, error.Result()) << error.what();
            EXPECT_TRUE(error.FromInput());
            EXPECT_THAT(error.what(), HasSubstr(line));
        } catch (const OvPlatform::PackageError& error) {
            EXPECT_EQ(result, error.Result()) << error.what();
            EXPECT_THAT(error.what(), HasSubstr(line));
        }
    }
}

} // namespace
