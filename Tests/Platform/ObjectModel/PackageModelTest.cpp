#include "PackageContents.h"
#include "Support/FailureSweep.h"
#include "Support/Growth.h"
#include "Support/InApartment.h"
#include "Support/MemoryStreams.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"

#include <Com/FaultInjection.h>

#include <atlcomcli.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <msopc.h>
#include <objbase.h>
#include <sys/resource.h>
#include <xpsobjectmodel.h>
#include <xpsobjectmodel_1.h>

#include <csignal>
#include <fstream>
#include <functional>
#include <string>

namespace {

using testing::ElementsAre;

CComPtr<IXpsOMObjectFactory1> NewFactory() {
    CComPtr<IXpsOMObjectFactory1> factory;
    EXPECT_EQ(factory.CoCreateInstance(__uuidof(XpsOMObjectFactory), nullptr, CLSCTX_INPROC_SERVER), S_OK);
    return factory;
}

CComPtr<IStream> StreamOf(const std::string& bytes) {
    CComPtr<IStream> stream;
    EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
    EXPECT_EQ(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr), S_OK);
    return stream;
}

class PackageModel : public InApartment<> {
protected:
    std::wstring Path(const std::string& name) { return (folder / name).wstring(); }
    CComPtr<IOpcPartUri> Uri(const wchar_t* name) {
        CComPtr<IOpcPartUri> uri;
        EXPECT_EQ(factory->CreatePartUri(name, &uri), S_OK);
        return uri;
    }
    HRESULT Open(const std::string& name) {
        package.Release();
        sequence.Release();
        documents.Release();
        const HRESULT result = factory->CreatePackageFromFile1(Path(name).c_str(), TRUE, &package);
        if (FAILED(result)) return result;
        EXPECT_EQ(package->GetDocumentSequence(&sequence), S_OK);
        EXPECT_EQ(sequence->GetDocuments(&documents), S_OK);
        return result;
    }
    HRESULT Write(const std::string& name) {
        return package->WriteToFile(Path(name).c_str(), nullptr, 0x80, FALSE);
    }
    PackageContents Contents(const std::string& name) { return PackageContents::Of(folder / name); }

    CComPtr<IXpsOMDocument> Document(UINT32 index) {
        CComPtr<IXpsOMDocument> document;
        EXPECT_EQ(documents->GetAt(index, &document), S_OK);
        return document;
    }
    static CComPtr<IXpsOMPageReferenceCollection> PagesOf(IXpsOMDocument* document) {
        CComPtr<IXpsOMPageReferenceCollection> pages;
        EXPECT_EQ(document->GetPageReferences(&pages), S_OK);
        return pages;
    }
    CComPtr<IXpsOMPageReference> Page(UINT32 document, UINT32 index) {
        CComPtr<IXpsOMPageReference> page;
        EXPECT_EQ(PagesOf(Document(document))->GetAt(index, &page), S_OK);
        return page;
    }
    CComPtr<IXpsOMPrintTicketResource> Ticket(const std::string& text, const wchar_t* name) {
        CComPtr<IXpsOMPrintTicketResource> ticket;
        EXPECT_EQ(factory->CreatePrintTicketResource(StreamOf(text), Uri(name), &ticket), S_OK);
        return ticket;
    }

    TemporaryFolder folder;
    CComPtr<IXpsOMObjectFactory1> factory = NewFactory();
    CComPtr<IXpsOMPackage1> package;
    CComPtr<IXpsOMDocumentSequence> sequence;
    CComPtr<IXpsOMDocumentCollection> documents;
};

SampleJob FullJob(bool isOpenXps) {
    SampleJob job;
    job.isOpenXps = isOpenXps;
    job.documents = 2;
    job.jobTicket = "<job/>";
    job.documentTicket = "<document/>";
    job.pageTicket = "<page/>";
    return job;
}

// With parts that no published relationship leads to.
ZipItems WithForeignParts(ZipItems items) {
    items["Foreign/unknown.bin"] = "a part that nobody knows";
    items["Foreign/orphan.png"] = "a part that nothing leads to";
    items["Foreign/_rels/unknown.bin.rels"] = SampleJob::Relationships({{"urn:more", "orphan.png"}});
    auto& types = items["[Content_Types].xml"];
    types.insert(types.find("</Types>"), "<Default Extension=\"bin\" ContentType=\"application/x-own\"/>");
    auto& root = items["_rels/.rels"];
    root.insert(
        root.find("</Relationships>"),
        "<Relationship Id=\"own\" Type=\"urn:own\" Target=\"/Foreign/unknown.bin\"/>"
        "<Relationship Id=\"out\" Type=\"urn:out\" Target=\"http://x.test/\" TargetMode=\"External\"/>"
        "<Relationship Id=\"sign\" Type=\"" +
            SampleJob::package + "/digital-signature/origin\" Target=\"/Foreign/orphan.png\"/>");
    return items;
}

TEST_F(PackageModel, WritesWhatItReadInItsOwnFormatWithNothingLost) {
    for (const bool isOpenXps : {false, true}) {
        WriteZip(folder / "in.xps", WithForeignParts(FullJob(isOpenXps).Items()));
        const PackageContents read = Contents("in.xps");
        ASSERT_EQ(Open("in.xps"), S_OK);
        XPS_DOCUMENT_TYPE type{};
        EXPECT_EQ(package->GetDocumentType(&type), S_OK);
        EXPECT_EQ(type, isOpenXps ? XPS_DOCUMENT_TYPE_OPENXPS : XPS_DOCUMENT_TYPE_XPS);
        EXPECT_EQ(Write("out.xps"), S_OK);
        EXPECT_EQ(Contents("out.xps"), read);
        EXPECT_EQ(Write("in.xps"), S_OK) << "over the file that was read";
        EXPECT_EQ(Contents("in.xps"), read);
        EXPECT_EQ(Write("again.xps"), S_OK) << "of which the bytes are still there";
        EXPECT_EQ(Contents("again.xps"), read);

        const CComPtr<IStream> stream = StreamOf({});
        EXPECT_EQ(package->WriteToStream(stream, FALSE), S_OK);
        EXPECT_EQ(stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr), S_OK);
        CComPtr<IXpsOMPackage> second;
        ASSERT_EQ(factory->CreatePackageFromStream(stream, TRUE, &second), S_OK);
        EXPECT_EQ(second->WriteToFile(Path("second.xps").c_str(), nullptr, 0x80, FALSE), S_OK);
        EXPECT_EQ(Contents("second.xps"), read);
        EXPECT_EQ(package->WriteToFile1(Path("other.xps").c_str(), nullptr, 0x80, FALSE,
                                        isOpenXps ? XPS_DOCUMENT_TYPE_XPS : XPS_DOCUMENT_TYPE_OPENXPS),
                  E_NOTIMPL);
    }
}

TEST_F(PackageModel, ListsDocumentsPagesAndWhatHangsOnThem) {
    WriteZip(folder / "in.xps", FullJob(false).Items());
    ASSERT_EQ(Open("in.xps"), S_OK);
    UINT32 count = 0;
    EXPECT_EQ(documents->GetCount(&count), S_OK);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(PagesOf(Document(1))->GetCount(&count), S_OK);
    EXPECT_EQ(count, 2u);
    const auto page = Page(1, 1);
    XPS_SIZE size{};
    EXPECT_EQ(page->GetAdvisoryPageDimensions(&size), S_OK);
    EXPECT_EQ(size.width, 816);
    EXPECT_EQ(size.height, 1056);
    BOOL isLoaded = TRUE;
    EXPECT_EQ(page->IsPageLoaded(&isLoaded), S_OK);
    EXPECT_FALSE(isLoaded);
    BOOL hasRestricted = FALSE;
    EXPECT_EQ(page->HasRestrictedFonts(&hasRestricted), S_OK);
    EXPECT_TRUE(hasRestricted);

    CComPtr<IXpsOMPrintTicketResource> ticket;
    CComPtr<IStream> stream;
    ASSERT_EQ(sequence->GetPrintTicketResource(&ticket), S_OK);
    ASSERT_EQ(ticket->GetStream(&stream), S_OK);
    EXPECT_EQ(ReadAll(stream), "<job/>");
    CComPtr<IXpsOMStoryFragmentsResource> fragments;
    CComPtr<IXpsOMPageReference> owner;
    ASSERT_EQ(page->GetStoryFragmentsResource(&fragments), S_OK);
    EXPECT_EQ(fragments->GetOwner(&owner), S_OK);
    EXPECT_EQ(owner.p, page.p);
    CComPtr<IXpsOMDocument> document;
    EXPECT_EQ(page->GetOwner(&document), S_OK);
    EXPECT_EQ(document.p, Document(1).p);
}

TEST_F(PackageModel, GivesFontsPlainAndKnowsWhoRestrictsThem) {
    WriteZip(folder / "in.xps", FullJob(false).Items());
    ASSERT_EQ(Open("in.xps"), S_OK);
    CComPtr<IXpsOMPartResources> resources;
    CComPtr<IXpsOMFontResourceCollection> fonts;
    CComPtr<IXpsOMFontResource> font;
    ASSERT_EQ(Page(0, 0)->CollectPartResources(&resources), S_OK);
    ASSERT_EQ(resources->GetFontResources(&fonts), S_OK);
    ASSERT_EQ(fonts->GetByPartName(Uri(L"/resources/00010203-0405-0607-0809-0a0b0c0d0e0f.ODTTF"), &font),
              S_OK);
    ASSERT_TRUE(font);
    XPS_FONT_EMBEDDING embedding{};
    EXPECT_EQ(font->GetEmbeddingOption(&embedding), S_OK);
    EXPECT_EQ(embedding, XPS_FONT_EMBEDDING_RESTRICTED);
    CComPtr<IStream> stream;
    ASSERT_EQ(font->GetStream(&stream), S_OK);
    EXPECT_EQ(ReadAll(stream), SampleJob::FontBytes());
    LARGE_INTEGER place;
    place.QuadPart = 30;
    CComPtr<IStream> clone;
    EXPECT_EQ(stream->Seek(place, STREAM_SEEK_SET, nullptr), S_OK);
    ASSERT_EQ(stream->Clone(&clone), S_OK);
    std::string some(5, 'x');
    EXPECT_EQ(clone->Read(some.data(), 5, nullptr), S_OK);
    EXPECT_EQ(some, SampleJob::FontBytes().substr(30, 5));
    font.Release();
    EXPECT_EQ(fonts->GetByPartName(Uri(L"/Resources/Picture.png"), &font), S_OK);
    EXPECT_FALSE(font);

    // The same font, changed: it is written under the key of its new name, in its old place.
    EXPECT_EQ(fonts->GetAt(0, &font), S_OK);
    EXPECT_EQ(font->SetContent(StreamOf(std::string(40, '\0')), XPS_FONT_EMBEDDING_OBFUSCATED,
                               Uri(L"/Resources/00010203-0405-0607-0809-0A0B0C0D0E0F.odttf")),
              S_OK);
    ASSERT_EQ(Write("out.xps"), S_OK);
    const std::string written = Contents("out.xps").parts.at(SampleJob::fontName);
    EXPECT_EQ(written.substr(written.find('\n') + 1),
              SampleJob::StoredFontBytes().substr(0, 32) + std::string(8, '\0'));
    EXPECT_EQ(font->SetContent(StreamOf("x"), XPS_FONT_EMBEDDING_OBFUSCATED, Uri(L"/Resources/a.odttf")),
              XPS_E_INVALID_OBFUSCATED_FONT_URI);
    EXPECT_EQ(font->SetContent(StreamOf("x"), XPS_FONT_EMBEDDING{}, Uri(L"/Resources/a.ttf")), E_INVALIDARG);
}

TEST_F(PackageModel, WritesWhatWasRemovedNoMoreAndKeepsWhatOthersUse) {
    ZipItems items = WithForeignParts(FullJob(false).Items());
    items["Resources/Own.png"] = "of one page alone";
    const std::string rels = "Documents/2/Pages/_rels/1.fpage.rels";
    items[rels].insert(items[rels].find("</Relationships>"),
                       "<Relationship Id=\"own\" Type=\"http://schemas.microsoft.com/xps/2005/06/"
                       "required-resource\" Target=\"/Resources/Own.png\"/>");
    WriteZip(folder / "in.xps", items);
    ASSERT_EQ(Open("in.xps"), S_OK);
    EXPECT_EQ(PagesOf(Document(1))->RemoveAt(0), S_OK);
    ASSERT_EQ(Write("out.xps"), S_OK);
    PackageContents expected = Contents("in.xps");
    for (const char* gone :
         {"/Documents/2/Pages/1.fpage", "/Documents/2/Pages/1.frag", "/Resources/Own.png"}) {
        EXPECT_EQ(expected.parts.erase(gone), 1u) << gone;
        std::erase_if(expected.relationships,
                      [&](const std::string& one) { return one.starts_with(std::string(gone) + " "); });
    }
    PackageContents written = Contents("out.xps");
    const std::string markup = written.parts["/Documents/2/FixedDoc.fdoc"];
    EXPECT_EQ(markup.find("1.fpage"), std::string::npos);
    EXPECT_NE(markup.find("Source=\"Pages/2.fpage\""), std::string::npos);
    expected.parts["/Documents/2/FixedDoc.fdoc"] = markup;
    EXPECT_EQ(written, expected);

    // The whole second document, and the first page again in another place.
    EXPECT_EQ(documents->RemoveAt(1), S_OK);
    const auto first = Page(0, 0);
    EXPECT_EQ(PagesOf(Document(0))->Append(first), XPS_E_ALREADY_OWNED);
    EXPECT_EQ(PagesOf(Document(0))->RemoveAt(0), S_OK);
    EXPECT_EQ(PagesOf(Document(0))->Append(first), S_OK);
    EXPECT_EQ(PagesOf(Document(0))->RemoveAt(2), XPS_E_INDEX_OUT_OF_RANGE);
    ASSERT_EQ(Write("out.xps"), S_OK);
    written = Contents("out.xps");
    for (const auto& part : written.parts)
        EXPECT_FALSE(part.first.starts_with("/Documents/2/")) << part.first;
    const std::string order = written.parts["/Documents/1/FixedDoc.fdoc"];
    EXPECT_LT(order.find("2.fpage"), order.find("1.fpage"));
    EXPECT_EQ(documents->RemoveAt(0), S_OK);
    EXPECT_EQ(Write("out.xps"), XPS_E_MISSING_DOCUMENT);
    EXPECT_EQ(Contents("out.xps"), written) << "which stands there still";
}

// What documents and sequences say beside their references, and in these beside what is known.
TEST_F(PackageModel, KeepsTheRestOfTheMarkupThatListsPages) {
    ZipItems items = SampleJob().Items();
    const std::string base = SampleJob().Base();
    const std::string head = "<?xml version=\"1.0\"?>\n<!-- who --><p:FixedDocument xmlns:p='" + base +
                             "' xmlns:o=\"urn:o\" o:a='1'>\n ";
    const std::string one =
        "<p:PageContent o:b='&lt;' Width='5' Source='Pages/1.fpage'><p:PageContent.LinkTargets>"
        "<p:LinkTarget Name='t'/></p:PageContent.LinkTargets><o:in/></p:PageContent>";
    const std::string two = "<p:PageContent Source=\"Pages/2.fpage\" Height='7'\n/>";
    const std::string tail = "<o:last/></p:FixedDocument><?after?>";
    items["Documents/1/FixedDoc.fdoc"] = head + one + "<!-- between --><o:x/>" + two + tail;
    const std::string sequenceMarkup = "<FixedDocumentSequence xmlns=\"" + base +
                                       "\" ><!-- s --><DocumentReference "
                                       "Source=\"Documents/1/FixedDoc.fdoc\" /><x xmlns='urn:x'/>"
                                       "</FixedDocumentSequence>";
    items["FixedDocSeq.fdseq"] = sequenceMarkup;
    WriteZip(folder / "in.xps", items);

    struct Edit {
        std::function<void()> make;
        std::string document;
    };
    const std::string made = "<p:PageContent Source=\"/new.fpage\" Width=\"10\" Height=\"20\"/>";
    const auto setSize = [&](FLOAT width, FLOAT height) {
        const XPS_SIZE size{width, height};
        EXPECT_EQ(Page(0, 0)->SetAdvisoryPageDimensions(&size), S_OK);
    };
    const Edit edits[] = {
        {[&] { EXPECT_EQ(PagesOf(Document(0))->RemoveAt(0), S_OK); },
         head + "<!-- between --><o:x/>" + two + tail},
        {[&] {
             const auto first = Page(0, 0);
             EXPECT_EQ(PagesOf(Document(0))->RemoveAt(0), S_OK);
             EXPECT_EQ(PagesOf(Document(0))->Append(first), S_OK);
         },
         head + "<!-- between --><o:x/>" + two + one + tail},
        {[&] {
             const XPS_SIZE size{10, 20};
             CComPtr<IXpsOMPageReference> reference;
             CComPtr<IXpsOMPage> page;
             EXPECT_EQ(factory->CreatePageReference(&size, &reference), S_OK);
             EXPECT_EQ(factory->CreatePage(&size, L"en", Uri(L"/new.fpage"), &page), S_OK);
             EXPECT_EQ(reference->SetPage(page), S_OK);
             EXPECT_EQ(PagesOf(Document(0))->InsertAt(1, reference), S_OK);
         },
         head + one + made + "<!-- between --><o:x/>" + two + tail},
        {[&] { setSize(-1, 8.5F); },
         head + "<p:PageContent o:b='&lt;' Source='Pages/1.fpage' Height=\"8.5\">" +
             one.substr(one.find('>') + 1) + "<!-- between --><o:x/>" + two + tail},
        {[&] {
             CComPtr<IXpsOMPage> page;
             EXPECT_EQ(Page(0, 1)->GetPage(&page), S_OK);
             EXPECT_EQ(page->SetPartName(Uri(L"/Documents/1/b.fpage")), S_OK);
         },
         head + one + "<!-- between --><o:x/><p:PageContent Source=\"b.fpage\" Height='7'\n/>" + tail},
    };
    for (const Edit& edit : edits) {
        ASSERT_EQ(Open("in.xps"), S_OK);
        edit.make();
        ASSERT_EQ(Write("out.xps"), S_OK);
        EXPECT_THAT(Contents("out.xps").parts.at("/Documents/1/FixedDoc.fdoc"),
                    testing::EndsWith("\n" + edit.document));
        EXPECT_EQ(Open("out.xps"), S_OK);
    }

    // Another name, and a document and a page of another package.
    ASSERT_EQ(Open("in.xps"), S_OK);
    EXPECT_EQ(Document(0)->SetPartName(Uri(L"/d.fdoc")), S_OK);
    SampleJob other;
    other.documents = 2;
    WriteZip(folder / "other.xps", other.Items());
    const CComPtr<IXpsOMDocumentCollection> here = documents;
    const CComPtr<IXpsOMPackage1> target = package;
    const auto moved = Page(0, 0);
    EXPECT_EQ(PagesOf(Document(0))->RemoveAt(0), S_OK);
    ASSERT_EQ(Open("other.xps"), S_OK);
    const auto second = Document(1);
    EXPECT_EQ(documents->RemoveAt(1), S_OK);
    EXPECT_EQ(PagesOf(second)->Append(moved), S_OK);
    EXPECT_EQ(here->Append(second), S_OK);
    ASSERT_EQ(target->WriteToFile(Path("out.xps").c_str(), nullptr, 0x80, FALSE), S_OK);
    const PackageContents written = Contents("out.xps");
    EXPECT_THAT(written.parts.at("/d.fdoc"),
                testing::EndsWith("\n" + head +
                                  "<!-- between --><o:x/><p:PageContent "
                                  "Source=\"Documents/1/Pages/2.fpage\" Height='7'\n/>" +
                                  tail));
    EXPECT_THAT(
        written.parts.at("/Documents/2/FixedDoc.fdoc"),
        testing::HasSubstr("<p:PageContent xmlns:o=\"urn:o\" xmlns:p=\"" + base +
                           "\" xmlns=\"\" o:b='&lt;' Width='5' Source=\"/Documents/1/Pages/1.fpage\">"));
    std::string sequenceNow = sequenceMarkup;
    sequenceNow.replace(sequenceNow.find("Documents/1/FixedDoc.fdoc"), 25, "d.fdoc");
    sequenceNow.insert(sequenceNow.find("<x "), "<DocumentReference Source=\"Documents/2/FixedDoc.fdoc\"/>");
    EXPECT_THAT(written.parts.at("/FixedDocSeq.fdseq"), testing::EndsWith("\n" + sequenceNow));
}

TEST_F(PackageModel, ReplacesWhatHangsOnAPart) {
    WriteZip(folder / "in.xps", FullJob(true).Items());
    ASSERT_EQ(Open("in.xps"), S_OK);
    // Under the name of the old one, and under one of its own.
    EXPECT_EQ(sequence->SetPrintTicketResource(Ticket("<new/>", L"/Metadata/Job_PT.xml")), S_OK);
    EXPECT_EQ(Document(0)->SetPrintTicketResource(Ticket("<mine/>", L"/Mine.xml")), S_OK);
    EXPECT_EQ(Page(0, 0)->SetPrintTicketResource(nullptr), S_OK);
    const XPS_SIZE size{300.5F, -1};
    EXPECT_EQ(Page(1, 0)->SetAdvisoryPageDimensions(&size), S_OK);
    const XPS_SIZE none{0, 0};
    EXPECT_EQ(Page(1, 0)->SetAdvisoryPageDimensions(&none), XPS_E_INVALID_PAGE_SIZE);
    ASSERT_EQ(Write("out.xps"), S_OK);
    const PackageContents written = Contents("out.xps");
    EXPECT_THAT(written.parts.at("/Metadata/Job_PT.xml"), testing::EndsWith("\n<new/>"));
    EXPECT_TRUE(written.Relates("/FixedDocSeq.fdseq", "oxps/v1.0/printticket", "/Metadata/Job_PT.xml"));
    EXPECT_TRUE(written.Relates("/Documents/1/FixedDoc.fdoc", "/printticket", "/Mine.xml"));
    EXPECT_FALSE(written.Has("/Documents/1/Metadata/Doc_PT.xml")) << "which nothing leads to any more";
    EXPECT_FALSE(written.Relates("/Documents/1/Pages/1.fpage", "/printticket", "/Metadata/Page_PT.xml"));
    EXPECT_TRUE(written.Relates("/Documents/1/Pages/2.fpage", "/printticket", "/Metadata/Page_PT.xml"));
    EXPECT_THAT(written.parts.at("/Documents/2/FixedDoc.fdoc"),
                testing::HasSubstr("Source=\"Pages/1.fpage\" Width=\"300.5\"/>"));

    // A name that another part has is no place for a ticket.
    EXPECT_EQ(Document(0)->SetPrintTicketResource(Ticket("<mine/>", L"/Metadata/Page_PT.xml")), S_OK);
    EXPECT_EQ(Write("out.xps"), XPS_E_MULTIPLE_RESOURCES);
    EXPECT_EQ(Document(0)->SetPrintTicketResource(Ticket("<mine/>", L"/Two.xml")), S_OK);
    EXPECT_EQ(Document(1)->SetPrintTicketResource(Ticket("<mine/>", L"/two.XML")), S_OK);
    EXPECT_EQ(Write("out.xps"), XPS_E_MULTIPLE_RESOURCES);
    EXPECT_EQ(Contents("out.xps"), written);
}

const std::string gone = "(gone)";

// What hangs on a part may be taken off and put on again, there or elsewhere.
TEST_F(PackageModel, KeepsAPartThatIsUsedAnewWhereNothingElseLeadsToIt) {
    SampleJob job;
    job.jobTicket = SampleTicket("PageOrientation", "Landscape");
    WriteZip(folder / "in.xps", job.Items());
    ASSERT_EQ(Open("in.xps"), S_OK);
    const PackageContents read = Contents("in.xps");
    CComPtr<IXpsOMPrintTicketResource> ticket;
    ASSERT_EQ(sequence->GetPrintTicketResource(&ticket), S_OK);
    ASSERT_TRUE(ticket);
    EXPECT_EQ(sequence->SetPrintTicketResource(nullptr), S_OK);
    EXPECT_EQ(sequence->SetPrintTicketResource(ticket), S_OK);
    ASSERT_EQ(Write("out.xps"), S_OK);
    EXPECT_EQ(Contents("out.xps").parts, read.parts);
    EXPECT_EQ(sequence->SetPrintTicketResource(nullptr), S_OK);
    EXPECT_EQ(Document(0)->SetPrintTicketResource(ticket), S_OK);
    ASSERT_EQ(Write("out.xps"), S_OK);
    EXPECT_EQ(Contents("out.xps").parts, read.parts);
    EXPECT_TRUE(
        Contents("out.xps").Relates("/Documents/1/FixedDoc.fdoc", "/printticket", "/Metadata/Job_PT.xml"));
}

TEST_F(PackageModel, ListsAndReplacesTheSignatureBlocksOfADocument) {
    SampleJob job;
    ZipItems items = job.Items();
    items["Documents/1/a.xml"] = "<SignatureDefinitions/>";
    std::string& links = items["Documents/1/_rels/FixedDoc.fdoc.rels"];
    links.insert(links.find("</Relationships>"), "<Relationship Id=\"sign\" Type=\"" + job.Base() +
                                                     "/signature-definitions\" Target=\"a.xml\"/>");
    WriteZip(folder / "in.xps", items);
    ASSERT_EQ(Open("in.xps"), S_OK);
    CComPtr<IXpsOMSignatureBlockResourceCollection> blocks;
    CComPtr<IXpsOMSignatureBlockResource> block;
    CComPtr<IXpsOMDocument> owner;
    ASSERT_EQ(Document(0)->GetSignatureBlockResources(&blocks), S_OK);
    ASSERT_EQ(blocks->GetByPartName(Uri(L"/Documents/1/a.xml"), &block), S_OK);
    ASSERT_TRUE(block);
    EXPECT_EQ(block->GetOwner(&owner), S_OK);
    EXPECT_EQ(owner, Document(0));
    ASSERT_EQ(Write("out.xps"), S_OK);
    EXPECT_EQ(Contents("out.xps"), Contents("in.xps"));
    block.Release();
    ASSERT_EQ(factory->CreateSignatureBlockResource(StreamOf("<new/>"), Uri(L"/b.xml"), &block), S_OK);
    EXPECT_EQ(blocks->SetAt(0, block), S_OK);
    ASSERT_EQ(Write("out.xps"), S_OK);
    const PackageContents written = Contents("out.xps");
    EXPECT_FALSE(written.Has("/Documents/1/a.xml"));
    EXPECT_EQ(written.parts.at("/b.xml"), "application/xml\n<new/>");
    EXPECT_TRUE(written.Relates("/Documents/1/FixedDoc.fdoc", "/signature-definitions", "/b.xml"));
}

TEST_F(PackageModel, RefusesDamagedPackagesWithTheResult) {
    const std::string sequenceItem = "FixedDocSeq.fdseq";
    const std::string documentItem = "Documents/1/FixedDoc.fdoc";
    const std::string base = SampleJob().Base();
    const auto sequenceOf = [&](const std::string& inner) {
        return "<FixedDocumentSequence xmlns=\"" + base + "\">" + inner + "</FixedDocumentSequence>";
    };
    const auto documentOf = [&](const std::string& inner) {
        return "<FixedDocument xmlns=\"" + base + "\">" + inner + "</FixedDocument>";
    };
    const std::string page = "<PageContent Source=\"Pages/1.fpage\"/>";
    const Rows<std::string, std::string, HRESULT> rows{
        {"_rels/.rels", SampleJob::Relationships({}), XPS_E_MISSING_DOCUMENTSEQUENCE_RELATIONSHIP},
        {"_rels/.rels", "<Relationships", OPC_E_NONCONFORMING_RELS_XML},
        {"_rels/.rels",
         SampleJob::Relationships({{base + "/fixedrepresentation", "/FixedDocSeq.fdseq"},
                                   {base + "/fixedrepresentation", "/Second.fdseq"}}),
         XPS_E_MULTIPLE_DOCUMENTSEQUENCE_RELATIONSHIPS},
        {"_rels/.rels", SampleJob::Relationships({{base + "/fixedrepresentation", documentItem}}),
         XPS_E_UNEXPECTED_CONTENT_TYPE},
        {sequenceItem, gone, OPC_E_NO_SUCH_PART},
        {sequenceItem, sequenceOf(""), XPS_E_MISSING_DOCUMENT},
        {sequenceItem, sequenceOf("<DocumentReference Source=\"nowhere.fdoc\"/>"),
         XPS_E_MISSING_REFERRED_DOCUMENT},
        {sequenceItem, sequenceOf("<DocumentReference Source=\"FixedDocSeq.fdseq\"/>"),
         XPS_E_UNEXPECTED_CONTENT_TYPE},
        {documentItem, gone, XPS_E_MISSING_REFERRED_DOCUMENT},
        {documentItem, documentOf(""), XPS_E_MISSING_PAGE_IN_DOCUMENT},
        {documentItem, documentOf(page + page), XPS_E_MULTIPLE_REFERENCES_TO_PART},
        {documentItem, documentOf("<PageContent/>"), XPS_E_MISSING_PART_REFERENCE},
        {documentItem, documentOf("<PageContent"), XPS_E_INVALID_MARKUP},
        {documentItem, "<!DOCTYPE x [<!ENTITY a \"b\">]>" + documentOf(page), XPS_E_INVALID_MARKUP},
        {documentItem, "<FixedDocument xmlns=\"urn:other\"/>", XPS_E_INVALID_MARKUP},
        {"Documents/1/Pages/2.fpage", gone, XPS_E_MISSING_REFERRED_PAGE},
        {"_rels/FixedDocSeq.fdseq.rels",
         SampleJob::Relationships({{base + "/printticket", "a.xml"}, {base + "/printticket", "b.xml"}}),
         XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENTSEQUENCE},
    };
    for (const auto& [item, bytes, result] : rows) {
        ZipItems items = SampleJob().Items();
        items["Second.fdseq"] = items[sequenceItem];
        items["a.xml"] = items["b.xml"] = "<t/>";
        items[item] = bytes;
        if (bytes == gone) items.erase(item);
        WriteZip(folder / "in.xps", items);
        EXPECT_EQ(Open("in.xps"), result) << item << ": " << bytes;
        EXPECT_FALSE(package);
    }
    folder.Write("in.xps", "PK\x03\x04 cut short");
    EXPECT_EQ(Open("in.xps"), OPC_E_ZIP_MISSING_END_OF_CENTRAL_DIRECTORY);
    EXPECT_EQ(Open("nowhere.xps"), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    CComPtr<IXpsOMPackage> none;
    EXPECT_EQ(factory->CreatePackageFromStream(StreamOf("no package"), TRUE, &none),
              OPC_E_ZIP_CORRUPTED_ARCHIVE);
    EXPECT_EQ(factory->CreatePackageFromFile(nullptr, TRUE, &none), E_POINTER);

    // What a page lacks is found where it is asked for, and where it is copied.
    ZipItems items = SampleJob().Items();
    items.erase("Resources/Picture.png");
    WriteZip(folder / "in.xps", items);
    ASSERT_EQ(Open("in.xps"), S_OK);
    CComPtr<IXpsOMPartResources> resources;
    EXPECT_EQ(Page(0, 0)->CollectPartResources(&resources), OPC_E_NO_SUCH_PART);
    EXPECT_EQ(Write("out.xps"), OPC_E_NO_SUCH_PART);
    EXPECT_THAT(folder.Names(), ElementsAre("in.xps"));
}

TEST_F(PackageModel, AFailedWriteLeavesWhatWasThere) {
    WriteZip(folder / "in.xps", FullJob(false).Items());
    const std::string before = TemporaryFolder::Read(folder / "in.xps");
    ASSERT_EQ(Open("in.xps"), S_OK);
    EXPECT_EQ(Write("missing/out.xps"), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
    // As many bytes as a file may have are fewer than the package needs.
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{2000, limit.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const HRESULT result = Write("in.xps");
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_TRUE(FAILED(result));
    EXPECT_EQ(TemporaryFolder::Read(folder / "in.xps"), before);
    EXPECT_THAT(folder.Names(), ElementsAre("in.xps"));
    EXPECT_EQ(Write("in.xps"), S_OK);
}

// A package that is read, changed and written: what stands under the name is the old file or the new one.
struct WrittenPackage {
    TemporaryFolder folder;

    WrittenPackage() {
        FullJob(false).Write(folder / "in.xps");
        folder.Write("out.xps", "before");
    }
    std::string State() const {
        EXPECT_EQ(folder.Names().size(), 2u);
        const std::string bytes = TemporaryFolder::Read(folder / "out.xps");
        return bytes == "before" ? bytes : PackageContents::Of(folder / "out.xps").parts.at("/New.xml");
    }
};

TEST_F(PackageModel, EachFailingCallIsToldAndLeavesTheOldFileOrTheNew) {
    FailureSweep<WrittenPackage> sweep(
        [] { return std::make_unique<WrittenPackage>(); },
        [](WrittenPackage& world) -> SweptAnswer {
            CComPtr<IXpsOMObjectFactory> factory;
            CComPtr<IXpsOMPackage> package;
            CComPtr<IXpsOMDocumentSequence> sequence;
            CComPtr<IOpcPartUri> uri;
            CComPtr<IStream> stream;
            CComPtr<IXpsOMPrintTicketResource> ticket;
            HRESULT result =
                factory.CoCreateInstance(__uuidof(XpsOMObjectFactory), nullptr, CLSCTX_INPROC_SERVER);
            if (SUCCEEDED(result))
                result = factory->CreatePackageFromFile((world.folder / "in.xps").wstring().c_str(), TRUE,
                                                        &package);
            if (SUCCEEDED(result)) result = package->GetDocumentSequence(&sequence);
            if (SUCCEEDED(result)) result = factory->CreatePartUri(L"/New.xml", &uri);
            if (SUCCEEDED(result)) result = CreateStreamOnHGlobal(nullptr, TRUE, &stream);
            if (SUCCEEDED(result)) result = stream->Write("<t/>", 4, nullptr);
            if (SUCCEEDED(result)) result = factory->CreatePrintTicketResource(stream, uri, &ticket);
            if (SUCCEEDED(result)) result = sequence->SetPrintTicketResource(ticket);
            if (SUCCEEDED(result))
                result =
                    package->WriteToFile((world.folder / "out.xps").wstring().c_str(), nullptr, 0x80, FALSE);
            return result;
        });
    sweep.Run("a package with another ticket");
}

class PackageModelGrowth : public InApartment<testing::TestWithParam<GrowthCase>> {};

TEST_P(PackageModelGrowth, IsInProportion) { ExpectLinearGrowth(GetParam()); }

std::function<void()> ReadsAndWrites(const SampleJob& job, bool isEdited) {
    auto folder = std::make_shared<TemporaryFolder>();
    job.Write(*folder / "in.xps");
    return [folder, isEdited] {
        const auto factory = NewFactory();
        CComPtr<IXpsOMPackage> package;
        ASSERT_EQ(factory->CreatePackageFromFile((*folder / "in.xps").wstring().c_str(), TRUE, &package),
                  S_OK);
        CComPtr<IXpsOMDocumentSequence> sequence;
        ASSERT_EQ(package->GetDocumentSequence(&sequence), S_OK);
        if (isEdited) {
            ASSERT_EQ(sequence->SetPrintTicketResource(nullptr), S_OK);
            CComPtr<IXpsOMDocumentCollection> documents;
            CComPtr<IXpsOMDocument> document;
            CComPtr<IXpsOMPageReferenceCollection> pages;
            ASSERT_EQ(sequence->GetDocuments(&documents), S_OK);
            ASSERT_EQ(documents->GetAt(0, &document), S_OK);
            ASSERT_EQ(document->GetPageReferences(&pages), S_OK);
            ASSERT_EQ(pages->RemoveAt(1), S_OK);
        }
        ASSERT_EQ(package->WriteToFile((*folder / "out.xps").wstring().c_str(), nullptr, 0x80, FALSE), S_OK);
    };
}

INSTANTIATE_TEST_SUITE_P(Work, PackageModelGrowth,
                         testing::Values(GrowthCase{"pages",
                                                    [](std::size_t n) {
                                                        SampleJob job;
                                                        job.pages = static_cast<int>(n);
                                                        job.jobTicket = "<t/>";
                                                        return ReadsAndWrites(job, true);
                                                    }},
                                         GrowthCase{"documents",
                                                    [](std::size_t n) {
                                                        SampleJob job;
                                                        job.documents = static_cast<int>(n);
                                                        return ReadsAndWrites(job, false);
                                                    }}),
                         GrowthName);

} // namespace
