// The pipeline's pages and resources as objects of the document object model.
#include "FakeResources.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <ComSupport/MsSafeCoinit.h>
#include <LowLevelFacilities/Failures/CPComException.h>
#include <XpsParts/MsOMConvertor.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xpsfacility.h>

#include <functional>
#include <string>

namespace {

using testing::HasSubstr;

const std::string base = "http://schemas.microsoft.com/xps/2005/06";

class PageConversion : public testing::Test {
protected:
    void SetUp() override {
        SkipUnderWine("Wine has no document object model");
        ASSERT_EQ(objects.CoCreateInstance(__uuidof(XpsOMObjectFactory), nullptr, CLSCTX_INPROC_SERVER),
                  S_OK);
        ASSERT_EQ(packaging.CoCreateInstance(__uuidof(OpcFactory)), S_OK);
    }
    static std::string NameOf(IXpsOMPart* part) {
        CComPtr<IOpcPartUri> uri;
        CComBSTR text;
        EXPECT_EQ(part->GetPartName(&uri), S_OK);
        EXPECT_EQ(uri->GetRawUri(&text), S_OK);
        std::string name;
        for (UINT i = 0; i < text.Length(); ++i)
            name += static_cast<char>(text[i]);
        return name;
    }
    // What is thrown, with the operation that says so.
    static void ExpectThrown(HRESULT result, const std::string& operation,
                             const std::function<void()>& body) {
        try {
            body();
            ADD_FAILURE() << operation << " threw nothing";
        } catch (const CPComException& failure) {
            EXPECT_EQ(failure.GetHresult(), result) << failure.what();
            EXPECT_THAT(failure.what(), HasSubstr(operation));
        }
    }

    const MsSafeCoInit apartment;
    CComPtr<IXpsOMObjectFactory> objects;
    CComPtr<IOpcFactory> packaging;
};

TEST_F(PageConversion, KnowsPicturesByTheirContentType) {
    const Rows<const wchar_t*, int> rows{{L"image/jpeg", XPS_IMAGE_TYPE_JPEG},
                                         {L"IMAGE/PNG", XPS_IMAGE_TYPE_PNG},
                                         {L"image/tiff", XPS_IMAGE_TYPE_TIFF},
                                         {L"image/vnd.ms-photo", XPS_IMAGE_TYPE_WDP},
                                         {L"image/gif", 0},
                                         {L"", 0},
                                         {L"image/jxr", 0}};
    for (const auto& [contentType, type] : rows) {
        const auto part = MakeFake<FakePicture>(L"/Resources/1.png", contentType);
        const CComPtr<IPartImage> image(part);
        if (type == 0) {
            ExpectThrown(E_INVALIDARG, "CreateImageFromIPartImage",
                         [&] { CreateImageFromIPartImage(image, objects, packaging); });
            continue;
        }
        const auto resource = CreateImageFromIPartImage(image, objects, packaging);
        XPS_IMAGE_TYPE known{};
        CComPtr<IStream> stream;
        EXPECT_EQ(resource->GetImageType(&known), S_OK);
        EXPECT_EQ(known, type);
        EXPECT_EQ(resource->GetStream(&stream), S_OK);
        EXPECT_EQ(ReadAll(stream), "picture");
        EXPECT_EQ(NameOf(resource), "/Resources/1.png");
    }
}

TEST_F(PageConversion, EmbedsFontsAsTheirOptionsAndRestrictionsSay) {
    const Rows<bool, EXpsFontOptions, int, XPS_FONT_EMBEDDING> rows{
        {true, Font_Normal, 0x2, XPS_FONT_EMBEDDING_NORMAL},
        {true, Font_Obfusticate, 0x2, XPS_FONT_EMBEDDING_RESTRICTED},
        {true, Font_Obfusticate, 0x4, XPS_FONT_EMBEDDING_RESTRICTED},
        {true, Font_Obfusticate, 0x8, XPS_FONT_EMBEDDING_OBFUSCATED},
        {true, Font_Obfusticate, 0, XPS_FONT_EMBEDDING_OBFUSCATED},
        {false, Font_Obfusticate, 0x2, XPS_FONT_EMBEDDING_OBFUSCATED},
        {false, Font_Normal, 0, XPS_FONT_EMBEDDING_NORMAL},
    };
    const auto convert = [&](auto part, EXpsFontOptions options, int restriction) {
        part->options = options;
        part->restriction = static_cast<EXpsFontRestriction>(restriction);
        return CreateFontFromIPartFont(CComPtr<IPartFont>(part), objects, packaging);
    };
    for (const auto& [isNew, options, restriction, expected] : rows) {
        const auto font = isNew ? convert(MakeFake<FakeFont>(), options, restriction)
                                : convert(MakeFake<FakeOldFont>(), options, restriction);
        XPS_FONT_EMBEDDING embedding{};
        EXPECT_EQ(font->GetEmbeddingOption(&embedding), S_OK);
        EXPECT_EQ(embedding, expected) << options << " with " << restriction;
    }
    const auto part = MakeFake<FakeFont>();
    part->propertiesResult = E_PENDING;
    ExpectThrown(E_PENDING, "CreateFontFromIPartFont",
                 [&] { CreateFontFromIPartFont(CComPtr<IPartFont>(part), objects, packaging); });
    part->propertiesResult = S_OK;
    part->streamResult = E_ABORT;
    ExpectThrown(E_ABORT, "GetIStreamFromPart",
                 [&] { CreateFontFromIPartFont(CComPtr<IPartFont>(part), objects, packaging); });
}

TEST_F(PageConversion, MakesAPageWithItsResourcesUnderTheirNames) {
    const auto page = MakeFake<FakeFixedPage>();
    page->bytes =
        "<FixedPage xmlns=\"" + base + "\" xmlns:x=\"" + base +
        "/resourcedictionary-key\" Width=\"10\" Height=\"10\" xml:lang=\"en\">"
        "<FixedPage.Resources><ResourceDictionary Source=\"/Resources/b.dict\"/></FixedPage.Resources>"
        "<Glyphs FontUri=\"../../../Resources/00010203-0405-0607-0809-0A0B0C0D0E0F.odttf\" "
        "FontRenderingEmSize=\"9\" OriginX=\"0\" OriginY=\"0\" Fill=\"{StaticResource red}\" "
        "UnicodeString=\"a\"/></FixedPage>";
    // The dictionary comes ahead of the picture that it refers to.
    const auto dictionary = MakeFake<FakeDictionary>(
        L"/Resources/b.dict", "<ResourceDictionary xmlns=\"" + base + "\" xmlns:x=\"" + base +
                                  "/resourcedictionary-key\"><ImageBrush x:Key=\"red\" ImageSource=\"p.png\" "
                                  "Viewbox=\"0,0,1,1\" Viewport=\"0,0,1,1\" ViewboxUnits=\"Absolute\" "
                                  "ViewportUnits=\"Absolute\"/></ResourceDictionary>");
    const auto font = MakeFake<FakeFont>();
    const auto picture = MakeFake<FakePicture>(L"/Resources/p.png", L"image/png");
    const auto profile = MakeFake<FakeProfile>(L"/c.icc", "profile");
    const auto unknown = MakeFake<FakeUnknownPart>();
    page->parts.emplace_back(L"/Resources/b.dict", static_cast<IPartResourceDictionary*>(dictionary.p));
    page->parts.emplace_back(fontName, static_cast<IPartFont2*>(font.p));
    page->parts.emplace_back(L"/x", unknown.p);
    page->parts.emplace_back(L"/Resources/p.png", static_cast<IPartImage*>(picture.p));
    page->parts.emplace_back(L"/c.icc", static_cast<IPartColorProfile*>(profile.p));
    const CComPtr<IFixedPage> fixedPage(page);
    const auto resources = CollectPageResources(fixedPage, objects, packaging);
    CComPtr<IXpsOMRemoteDictionaryResourceCollection> dictionaries;
    CComPtr<IXpsOMColorProfileResourceCollection> profiles;
    UINT32 count = 0;
    EXPECT_EQ(resources->GetRemoteDictionaryResources(&dictionaries), S_OK);
    EXPECT_EQ(dictionaries->GetCount(&count), S_OK);
    EXPECT_EQ(count, 1u);
    EXPECT_EQ(resources->GetColorProfileResources(&profiles), S_OK);
    EXPECT_EQ(profiles->GetCount(&count), S_OK);
    EXPECT_EQ(count, 1u);

    const auto made = CreateXpsOMPageFromIFixedPage(fixedPage, objects, packaging);
    EXPECT_EQ(NameOf(made), "/Documents/1/Pages/1.fpage");
    CComPtr<IXpsOMVisualCollection> visuals;
    CComPtr<IXpsOMVisual> visual;
    CComPtr<IXpsOMFontResource> fontResource;
    ASSERT_EQ(made->GetVisuals(&visuals), S_OK);
    ASSERT_EQ(visuals->GetAt(0, &visual), S_OK);
    const CComQIPtr<IXpsOMGlyphs> glyphs(visual);
    ASSERT_TRUE(glyphs);
    ASSERT_EQ(glyphs->GetFontResource(&fontResource), S_OK);
    EXPECT_EQ(NameOf(fontResource), "/Resources/00010203-0405-0607-0809-0A0B0C0D0E0F.odttf");

    // A damaged part, once it is known, fails the page under the name of who found it.
    dictionary->bytes = "<ResourceDictionary";
    ExpectThrown(XPS_E_INVALID_MARKUP, "CreateDictionaryFromIPartResourceDictionary",
                 [&] { CreateXpsOMPageFromIFixedPage(fixedPage, objects, packaging); });
    page->parts.clear();
    ExpectThrown(XPS_E_MISSING_RESOURCE_RELATIONSHIP, "CreateXpsOMPageFromIFixedPage",
                 [&] { CreateXpsOMPageFromIFixedPage(fixedPage, objects, packaging); });
    page->uriResult = E_PENDING;
    ExpectThrown(E_PENDING, "CreateOpcPartUriFromPart",
                 [&] { CreateXpsOMPageFromIFixedPage(fixedPage, objects, packaging); });
    ExpectThrown(E_INVALIDARG, "CreateXpsOMPageFromIFixedPage",
                 [&] { CreateXpsOMPageFromIFixedPage({}, objects, packaging); });
    ExpectThrown(E_INVALIDARG, "CreateDictionaryFromIPartResourceDictionary", [&] {
        CreateDictionaryFromIPartResourceDictionary(CComPtr<IPartResourceDictionary>(dictionary), objects,
                                                    packaging, {});
    });
    ExpectThrown(E_INVALIDARG, "CollectPageResources",
                 [&] { CollectPageResources(fixedPage, {}, packaging); });
    EXPECT_EQ(page->References(), 2u) << "that of the test and that of its pointer";
}

} // namespace
