#include "PackageContents.h"
#include "Support/InApartment.h"
#include "Support/MemoryStreams.h"
#include "Support/SampleJob.h"

#include <atlcomcli.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <msopc.h>
#include <objbase.h>
#include <xpsobjectmodel.h>
#include <xpsobjectmodel_1.h>

#include <string>

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;

// A package whose one document is looked at.
struct OpenPackage {
    CComPtr<IXpsOMPackage1> package;
    CComPtr<IXpsOMDocumentCollection> documents;
    CComPtr<IXpsOMPageReferenceCollection> pages;

    OpenPackage(IXpsOMObjectFactory1* factory, const std::filesystem::path& file) {
        CComPtr<IXpsOMDocumentSequence> sequence;
        CComPtr<IXpsOMDocument> document;
        EXPECT_EQ(factory->CreatePackageFromFile1(file.wstring().c_str(), TRUE, &package), S_OK);
        if (!package) return;
        EXPECT_EQ(package->GetDocumentSequence(&sequence), S_OK);
        EXPECT_EQ(sequence->GetDocuments(&documents), S_OK);
        EXPECT_EQ(documents->GetAt(0, &document), S_OK);
        EXPECT_EQ(document->GetPageReferences(&pages), S_OK);
    }
    CComPtr<IXpsOMPageReference> At(UINT32 index) const {
        CComPtr<IXpsOMPageReference> page;
        EXPECT_EQ(pages->GetAt(index, &page), S_OK);
        return page;
    }
};

class PackagePages : public InApartment<> {
protected:
    PackagePages() {
        EXPECT_EQ(factory.CoCreateInstance(__uuidof(XpsOMObjectFactory), nullptr, CLSCTX_INPROC_SERVER),
                  S_OK);
    }
    CComPtr<IOpcPartUri> Uri(const std::wstring& name) {
        CComPtr<IOpcPartUri> uri;
        EXPECT_EQ(factory->CreatePartUri(name.c_str(), &uri), S_OK);
        return uri;
    }
    CComPtr<IXpsOMFontResource> Font(const wchar_t* name, XPS_FONT_EMBEDDING embedding) {
        CComPtr<IStream> stream;
        CComPtr<IXpsOMFontResource> font;
        EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
        EXPECT_EQ(stream->Write(fontBytes.data(), static_cast<ULONG>(fontBytes.size()), nullptr), S_OK);
        EXPECT_EQ(factory->CreateFontResource(stream, embedding, Uri(name), FALSE, &font), S_OK);
        return font;
    }
    void AddText(IXpsOMPageReference* reference, IXpsOMFontResource* font) {
        CComPtr<IXpsOMPage> page;
        CComPtr<IXpsOMVisualCollection> visuals;
        CComPtr<IXpsOMGlyphs> glyphs;
        CComPtr<IXpsOMGlyphsEditor> editor;
        ASSERT_EQ(reference->GetPage(&page), S_OK);
        ASSERT_EQ(page->GetVisuals(&visuals), S_OK);
        ASSERT_EQ(factory->CreateGlyphs(font, &glyphs), S_OK);
        ASSERT_EQ(glyphs->GetGlyphsEditor(&editor), S_OK);
        ASSERT_EQ(editor->SetUnicodeString(L"added"), S_OK);
        ASSERT_EQ(editor->ApplyEdits(), S_OK);
        ASSERT_EQ(visuals->Append(glyphs), S_OK);
    }
    HRESULT Write(IXpsOMPackage* package, const std::string& name) {
        return package->WriteToFile((folder / name).wstring().c_str(), nullptr, 0x80, FALSE);
    }
    PackageContents Contents(const std::string& name) { return PackageContents::Of(folder / name); }

    // One with a document that has no pages yet, and one that has nothing.
    struct NewPackage {
        CComPtr<IXpsOMPackage1> package, empty;
        CComPtr<IXpsOMDocumentCollection> documents;
        CComPtr<IXpsOMPageReferenceCollection> pages;

        explicit NewPackage(PackagePages& test) {
            CComPtr<IXpsOMDocumentSequence> sequence;
            CComPtr<IXpsOMDocument> document;
            EXPECT_EQ(test.factory->CreatePackage1(&empty), S_OK);
            EXPECT_EQ(test.factory->CreatePackage1(&package), S_OK);
            EXPECT_EQ(test.factory->CreateDocumentSequence(test.Uri(L"/s.fdseq"), &sequence), S_OK);
            EXPECT_EQ(package->SetDocumentSequence(sequence), S_OK);
            EXPECT_EQ(test.factory->CreateDocument(test.Uri(L"/d/d.fdoc"), &document), S_OK);
            EXPECT_EQ(sequence->GetDocuments(&documents), S_OK);
            EXPECT_EQ(documents->Append(document), S_OK);
            EXPECT_EQ(document->GetPageReferences(&pages), S_OK);
        }
    };

    TemporaryFolder folder;
    CComPtr<IXpsOMObjectFactory1> factory;
    const std::string fontBytes = std::string(32, '\0') + "and more of a font";
};

constexpr const wchar_t* newFont = L"/Fonts/FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF.odttf";
const std::string pageOne = SampleJob::PageName(1, 1);

TEST_F(PackagePages, AreReadOnDemandAndCopiedWhereNothingIsChanged) {
    ZipItems items = SampleJob().Items();
    items[SampleJob::PageName(1, 2).substr(1)] = "this is no page";
    WriteZip(folder / "in.xps", items);
    const PackageContents read = Contents("in.xps");
    const OpenPackage open(factory, folder / "in.xps");
    const auto reference = open.At(0);
    CComPtr<IXpsOMPage> page;
    ASSERT_EQ(reference->GetPage(&page), S_OK);
    CComPtr<IXpsOMPageReference> owner;
    EXPECT_EQ(page->GetOwner(&owner), S_OK);
    EXPECT_EQ(owner.p, reference.p);
    EXPECT_EQ(open.At(1)->SetPage(page), XPS_E_ALREADY_OWNED);
    CComPtr<IXpsOMPage> damaged;
    EXPECT_EQ(open.At(1)->GetPage(&damaged), XPS_E_INVALID_MARKUP);
    EXPECT_EQ(Write(open.package, "out.xps"), S_OK);
    EXPECT_EQ(Contents("out.xps"), read) << "the page that cannot be read, too";

    // What was changed is gone with the page.
    AddText(reference, Font(newFont, XPS_FONT_EMBEDDING_OBFUSCATED));
    EXPECT_EQ(reference->DiscardPage(), S_OK);
    BOOL isLoaded = TRUE;
    EXPECT_EQ(reference->IsPageLoaded(&isLoaded), S_OK);
    EXPECT_FALSE(isLoaded);
    EXPECT_EQ(Write(open.package, "out.xps"), S_OK);
    EXPECT_EQ(Contents("out.xps"), read);

    // And so is a page that was set in its place.
    const XPS_SIZE size{10, 10};
    CComPtr<IXpsOMPage> other;
    ASSERT_EQ(factory->CreatePage(&size, L"en", Uri(L"/other.fpage"), &other), S_OK);
    EXPECT_EQ(reference->SetPage(other), S_OK);
    EXPECT_EQ(reference->DiscardPage(), S_OK);
    EXPECT_EQ(reference->GetPage(&damaged), S_OK);
    EXPECT_EQ(Write(open.package, "out.xps"), S_OK);
    EXPECT_EQ(Contents("out.xps"), read);
    CComPtr<IXpsOMImageResource> tiff;
    CComPtr<IStream> bytes;
    EXPECT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &bytes), S_OK);
    ASSERT_EQ(factory->CreateImageResource(bytes, XPS_IMAGE_TYPE_TIFF, Uri(L"/t.tif"), &tiff), S_OK);
    EXPECT_EQ(reference->SetThumbnailResource(tiff), XPS_E_INVALID_THUMBNAIL_IMAGE_TYPE);
}

TEST_F(PackagePages, BringWhatTheyUseIntoThePackageOnce) {
    WriteZip(folder / "in.xps", SampleJob().Items());
    PackageContents expected = Contents("in.xps");
    const OpenPackage open(factory, folder / "in.xps");
    const auto font = Font(newFont, XPS_FONT_EMBEDDING_RESTRICTED);
    AddText(open.At(0), font);
    AddText(open.At(1), font);
    ASSERT_EQ(Write(open.package, "out.xps"), S_OK);
    const PackageContents written = Contents("out.xps");
    const std::string name = "/Fonts/FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF.odttf";
    EXPECT_EQ(written.parts.at(name), "application/vnd.ms-package.obfuscated-opentype\n" +
                                          std::string(32, '\xFF') + fontBytes.substr(32));
    EXPECT_TRUE(written.Relates("/Documents/1/FixedDoc.fdoc", "/restricted-font", name));
    for (const int page : {1, 2}) {
        const std::string part = SampleJob::PageName(1, page);
        EXPECT_TRUE(written.Relates(part, "/required-resource", name));
        EXPECT_THAT(written.parts.at(part), AllOf(HasSubstr("\"added\""), HasSubstr("<!-- 1.")));
    }
    for (const auto& [part, bytes] : expected.parts)
        if (part.find(".fpage") == std::string::npos) {
            EXPECT_EQ(written.parts.at(part), bytes) << part;
        }
    for (const std::string& relationship : expected.relationships)
        EXPECT_TRUE(written.relationships.contains(relationship)) << relationship;

    // Another resource of that name is none that can stand beside it, on another page or on the same one.
    for (const UINT32 page : {1U, 0U}) {
        const OpenPackage again(factory, folder / "in.xps");
        AddText(again.At(0), font);
        AddText(again.At(page), Font(newFont, XPS_FONT_EMBEDDING_OBFUSCATED));
        EXPECT_EQ(Write(again.package, "out.xps"), XPS_E_MULTIPLE_RESOURCES);
    }
    EXPECT_EQ(Contents("out.xps"), written);
}

TEST_F(PackagePages, MoveFromOnePackageIntoAnotherWithWhatTheyUse) {
    SampleJob job;
    job.pages = 3;
    job.pageTicket = "<page/>";
    ZipItems items = job.Items();
    items[pageOne.substr(1)] =
        "<FixedPage xmlns=\"" + SampleJob().Base() +
        "\" Width=\"10\" Height=\"20\" xml:lang=\"en\"><Glyphs FontUri=\"" +
        std::string(SampleJob::fontName) +
        "\" FontRenderingEmSize=\"9\" OriginX=\"0\" OriginY=\"0\" Fill=\"#000000\" UnicodeString=\"moved\"/>"
        "</FixedPage>";
    items["Documents/1/Pages/1.frag"] =
        "<!-- f --><StoryFragments xmlns='" + job.Base() + "/documentstructure'/>";
    std::string& links = items["Documents/1/Pages/_rels/1.fpage.rels"];
    links.insert(links.find("</Relationships>"),
                 "<Relationship Id=\"thumb\" Type=\"" + SampleJob::package +
                     "/metadata/thumbnail\" Target=\"/docProps/thumb.jpeg\"/>");
    WriteZip(folder / "from.xps", items);
    const OpenPackage from(factory, folder / "from.xps");
    const auto moved = from.At(0);
    const auto second = from.At(1);
    EXPECT_EQ(from.pages->RemoveAt(0), S_OK);
    EXPECT_EQ(from.pages->RemoveAt(0), S_OK);

    const NewPackage made(*this);
    EXPECT_EQ(Write(made.empty, "new.oxps"), XPS_E_MISSING_DOCUMENTSEQUENCE_RELATIONSHIP);
    ASSERT_EQ(made.pages->Append(moved), S_OK);
    ASSERT_EQ(made.pages->Append(second), S_OK);
    ASSERT_EQ(made.package->WriteToFile1((folder / "new.oxps").wstring().c_str(), nullptr, 0x80, FALSE,
                                         XPS_DOCUMENT_TYPE_OPENXPS),
              S_OK);
    const PackageContents written = Contents("new.oxps");
    EXPECT_THAT(written.parts.at(pageOne), AllOf(HasSubstr("openxps.org"), HasSubstr("moved")));
    EXPECT_THAT(written.parts.at(SampleJob::fontName), EndsWith(SampleJob::StoredFontBytes()));
    EXPECT_TRUE(written.Relates("/", "oxps/v1.0/fixedrepresentation", "/s.fdseq"));
    EXPECT_TRUE(written.Relates(pageOne, "oxps/v1.0/required-resource", SampleJob::fontName));
    EXPECT_THAT(written.parts.at("/d/d.fdoc"), HasSubstr("Source=\"/Documents/1/Pages/1.fpage\""));
    for (const int page : {1, 2}) {
        const std::string name = SampleJob::PageName(1, page);
        EXPECT_TRUE(written.Relates(name, "oxps/v1.0/printticket", "/Metadata/Page_PT.xml"));
        EXPECT_TRUE(written.Relates(name, "oxps/v1.0/storyfragments",
                                    "/Documents/1/Pages/" + std::to_string(page) + ".frag"));
        EXPECT_EQ(written.Relates(name, "/metadata/thumbnail", "/docProps/thumb.jpeg"), page == 1);
    }
    EXPECT_THAT(written.parts.at("/Metadata/Page_PT.xml"), EndsWith("<page/>"));
    EXPECT_THAT(
        written.parts.at("/Documents/1/Pages/1.frag"),
        EndsWith(
            "\n<!-- f --><StoryFragments xmlns='http://schemas.openxps.org/oxps/v1.0/documentstructure'/>"));
    const OpenPackage reread(factory, folder / "new.oxps");
    CComPtr<IXpsOMPage> page;
    EXPECT_EQ(reread.At(0)->GetPage(&page), S_OK);
}

TEST_F(PackagePages, MoveWithTheirDocumentAndWhatHangsOnIt) {
    SampleJob job;
    job.documentTicket = "<document/>";
    ZipItems items = job.Items();
    items["Documents/1/sign.xml"] = "<SignatureDefinitions/>";
    std::string& links = items["Documents/1/_rels/FixedDoc.fdoc.rels"];
    links.insert(links.find("</Relationships>"), "<Relationship Id=\"sign\" Type=\"" + job.Base() +
                                                     "/signature-definitions\" Target=\"sign.xml\"/>");
    WriteZip(folder / "from.xps", items);
    const OpenPackage from(factory, folder / "from.xps");
    CComPtr<IXpsOMDocument> document;
    ASSERT_EQ(from.documents->GetAt(0, &document), S_OK);
    ASSERT_EQ(from.documents->RemoveAt(0), S_OK);
    const NewPackage made(*this);
    ASSERT_EQ(made.documents->SetAt(0, document), S_OK);
    for (const bool isOpenXps : {false, true}) {
        ASSERT_EQ(made.package->WriteToFile1((folder / "new.xps").wstring().c_str(), nullptr, 0x80, FALSE,
                                             isOpenXps ? XPS_DOCUMENT_TYPE_OPENXPS : XPS_DOCUMENT_TYPE_XPS),
                  S_OK);
        const PackageContents written = Contents("new.xps");
        const std::string name = SampleJob::DocumentName(1);
        EXPECT_TRUE(written.Relates(name, "/printticket", "/Documents/1/Metadata/Doc_PT.xml"));
        EXPECT_TRUE(written.Relates(name, "/documentstructure", "/Documents/1/Structure.struct"));
        EXPECT_TRUE(written.Relates(name, "/signature-definitions", "/Documents/1/sign.xml"));
        EXPECT_THAT(written.parts.at("/Documents/1/sign.xml"),
                    testing::StartsWith(isOpenXps
                                            ? "application/vnd.ms-package.xps-signaturedefinitions+xml\n"
                                            : "application/xml\n"));
    }
}

// Whoever uses a resource that gets another name says so, whether anybody has looked at it or not.
TEST_F(PackagePages, FollowTheResourcesThatAreRenamed) {
    const std::string base = SampleJob().Base();
    ZipItems items = SampleJob().Items();
    const std::string glyphs = "<Glyphs FontUri=\"" + std::string(SampleJob::fontName) +
                               "\" FontRenderingEmSize=\"9\" OriginX=\"0\" OriginY=\"0\" Fill=\"#000000\" "
                               "UnicodeString=\"a\"/>";
    for (const int page : {1, 2})
        items[SampleJob::PageName(1, page).substr(1)] =
            "<FixedPage xmlns=\"" + base +
            "\" Width=\"9\" Height=\"9\"><FixedPage.Resources><ResourceDictionary "
            "Source=\"/Resources/Brushes.dict\"/></FixedPage.Resources>" +
            glyphs + "</FixedPage>";
    items["Resources/Brushes.dict"] =
        "<ResourceDictionary xmlns=\"" + base + "\" xmlns:x=\"" + base +
        "/resourcedictionary-key\"><ImageBrush x:Key=\"b\" ImageSource=\"Pattern.jpg\" Viewbox=\"0,0,1,1\" "
        "Viewport=\"0,0,1,1\" ViewboxUnits=\"Absolute\" ViewportUnits=\"Absolute\"/></ResourceDictionary>";
    WriteZip(folder / "in.xps", items);
    const PackageContents read = Contents("in.xps");
    const OpenPackage open(factory, folder / "in.xps");
    CComPtr<IXpsOMPage> page;
    EXPECT_EQ(open.At(0)->GetPage(&page), S_OK); // the second one stays in the package
    page.Release();
    CComPtr<IXpsOMPartResources> resources;
    ASSERT_EQ(open.At(1)->CollectPartResources(&resources), S_OK);
    CComPtr<IXpsOMFontResourceCollection> fonts;
    CComPtr<IXpsOMFontResource> font;
    ASSERT_EQ(resources->GetFontResources(&fonts), S_OK);
    ASSERT_EQ(fonts->GetAt(0, &font), S_OK);
    CComPtr<IXpsOMRemoteDictionaryResourceCollection> dictionaries;
    CComPtr<IXpsOMRemoteDictionaryResource> dictionary;
    ASSERT_EQ(resources->GetRemoteDictionaryResources(&dictionaries), S_OK);
    ASSERT_EQ(dictionaries->GetAt(0, &dictionary), S_OK);

    const std::string fontNow = "/Fonts/FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF.odttf";
    ASSERT_EQ(font->SetPartName(Uri(newFont)), S_OK);
    ASSERT_EQ(dictionary->SetPartName(Uri(L"/Other/Folder/b.dict")), S_OK);
    ASSERT_EQ(Write(open.package, "out.xps"), S_OK);
    const PackageContents written = Contents("out.xps");
    EXPECT_EQ(written.parts.size(), read.parts.size()) << "none under its old name";
    EXPECT_THAT(written.parts.at(fontNow),
                EndsWith(std::string(32, '\xFF') + SampleJob::FontBytes().substr(32)));
    EXPECT_TRUE(written.Relates(SampleJob::DocumentName(1), "/restricted-font", fontNow));
    EXPECT_THAT(written.parts.at("/Other/Folder/b.dict"),
                HasSubstr("ImageSource=\"../../Resources/Pattern.jpg\""));
    EXPECT_TRUE(written.Relates("/Other/Folder/b.dict", "/required-resource", "/Resources/Pattern.jpg"));
    for (const int page : {1, 2}) {
        const std::string part = SampleJob::PageName(1, page);
        EXPECT_TRUE(written.Relates(part, "/required-resource", fontNow));
        EXPECT_THAT(written.parts.at(part), AllOf(HasSubstr("\"../../../Fonts/FFFFFFFF-"),
                                                  HasSubstr("Source=\"../../../Other/Folder/b.dict\"")));
    }
    const OpenPackage again(factory, folder / "out.xps");
    ASSERT_EQ(again.At(1)->GetPage(&page), S_OK);
    CComPtr<IXpsOMDictionary> content;
    EXPECT_EQ(page->GetDictionary(&content), S_OK);

    // A name that is taken.
    CComPtr<IXpsOMImageResourceCollection> images;
    CComPtr<IXpsOMImageResource> picture;
    ASSERT_EQ(resources->GetImageResources(&images), S_OK);
    ASSERT_EQ(images->GetAt(0, &picture), S_OK);
    ASSERT_EQ(picture->SetPartName(Uri(L"/Resources/Pattern.jpg")), S_OK);
    EXPECT_EQ(Write(open.package, "out.xps"), XPS_E_MULTIPLE_RESOURCES);
    EXPECT_EQ(Contents("out.xps"), written);
}

TEST_F(PackagePages, StandBesideCorePropertiesThatAreKeptOrSet) {
    const std::string core = "http://schemas.openxmlformats.org/package/2006/metadata/core-properties";
    ZipItems items = SampleJob().Items();
    items["docProps/core.xml"] =
        "<c:coreProperties xmlns:c=\"" + core +
        "\" xmlns:xsi=\"urn:other\" xmlns:d=\"http://purl.org/dc/elements/1.1/\" "
        "xmlns:t=\"http://purl.org/dc/terms/\"><d:title>A "
        "&amp; "
        "B</d:title><t:created>2005-06-07T08:09:10Z</t:created><!-- x --><d:other xmlns:o='urn:o' "
        "o:a='1'/></c:coreProperties>";
    WriteZip(folder / "in.xps", items);
    const OpenPackage open(factory, folder / "in.xps");
    CComPtr<IXpsOMCoreProperties> properties;
    ASSERT_EQ(open.package->GetCoreProperties(&properties), S_OK);
    LPWSTR title = nullptr;
    LPWSTR none = nullptr;
    SYSTEMTIME created{};
    EXPECT_EQ(properties->GetTitle(&title), S_OK);
    EXPECT_STREQ(title, L"A & B");
    CoTaskMemFree(title);
    EXPECT_EQ(properties->GetCategory(&none), S_OK);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(properties->GetCreated(&created), S_OK);
    EXPECT_TRUE(created.wYear == 2005 && created.wMonth == 6 && created.wDay == 7 && created.wSecond == 10);
    ASSERT_EQ(Write(open.package, "out.xps"), S_OK);
    EXPECT_EQ(Contents("out.xps"), Contents("in.xps"));

    EXPECT_EQ(properties->SetCategory(L"<stamped>"), S_OK);
    EXPECT_EQ(properties->SetCategory(L"\xD800"), E_INVALIDARG);
    EXPECT_EQ(properties->SetTitle(L"A & C"), S_OK);
    const SYSTEMTIME modified{2024, 2, 0, 29, 0, 0, 0, 0};
    EXPECT_EQ(properties->SetModified(&modified), S_OK);
    ASSERT_EQ(Write(open.package, "out.xps"), S_OK);
    EXPECT_THAT(
        Contents("out.xps").parts.at("/docProps/core.xml"),
        HasSubstr("<d:title>A &amp; C</d:title><t:created>2005-06-07T08:09:10Z</t:created><!-- x -->"
                  "<d:other xmlns:o=\"urn:o\" o:a=\"1\"/><c:category>&lt;stamped&gt;</c:category>"
                  "<t:modified n1:type=\"t:W3CDTF\">2024-02-29T00:00:00Z</t:modified></c:coreProperties>"));
    EXPECT_EQ(properties->SetTitle(nullptr), S_OK);
    ASSERT_EQ(Write(open.package, "out.xps"), S_OK);
    EXPECT_THAT(Contents("out.xps").parts.at("/docProps/core.xml"), testing::Not(HasSubstr("title")));
    EXPECT_EQ(open.package->SetCoreProperties(nullptr), S_OK);
    ASSERT_EQ(Write(open.package, "out.xps"), S_OK);
    EXPECT_FALSE(Contents("out.xps").Has("/docProps/core.xml"));
}

} // namespace
