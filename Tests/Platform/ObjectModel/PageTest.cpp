#include "PageSupport.h"

#include <utf8coder.h>

namespace {

std::string ToUtf16Bytes(std::string_view utf8) {
    std::string bytes = "\xFF\xFE";
    for (const char* next = utf8.data(); next != utf8.data() + utf8.size();) {
        char16_t units[OvPlatform::Utf8::MostUnits];
        const char32_t character = OvPlatform::Utf8::Decode(next, utf8.data() + utf8.size());
        for (std::size_t at = 0, count = OvPlatform::Utf8::Encode(character, units); at < count; ++at) {
            bytes.push_back(static_cast<char>(units[at] & 0xFF));
            bytes.push_back(static_cast<char>(units[at] >> 8));
        }
    }
    return bytes;
}

std::string BigEndian(std::string bytes) {
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2)
        std::swap(bytes[at], bytes[at + 1]);
    return bytes;
}

// All that a page may have and that has no object.
const std::string opaque =
    "\r\n <!-- <Glyphs> --><?pi <Canvas> ?>\n<Path Data=\"M 0,0 L 9,9\"><Path.Fill>"
    "<LinearGradientBrush MappingMode=\"Absolute\" StartPoint=\"0,0\" EndPoint=\"9,9\">"
    "<LinearGradientBrush.GradientStops><GradientStop Color=\"#FF000000\" Offset=\"0\"/>"
    "<GradientStop Color='#FFFFFFFF' Offset='1'/></LinearGradientBrush.GradientStops></LinearGradientBrush>"
    "</Path.Fill></Path>"
    "<mc:AlternateContent xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\">"
    "<mc:Choice Requires=\"n\" xmlns:n=\"urn:n\"><Glyphs FontUri=\"/gone.ttf\"/></mc:Choice>"
    "<mc:Fallback><Canvas/></mc:Fallback></mc:AlternateContent>\t"
    "<Canvas xmlns:mc='http://schemas.openxmlformats.org/markup-compatibility/2006' xmlns:g=\"urn:g\" "
    "mc:Ignorable=\"g\" g:a='1' xml:space=\"preserve\"> <![CDATA[<Glyphs>]]> <g:Glyphs/> </Canvas>";

struct Form {
    const char* name;
    std::string bytes;
    std::string appended; // as the stamp is to be found, in UTF-8
};

void PrintTo(const Form& form, std::ostream* out) { *out << form.name; }

class PageForms : public testing::TestWithParam<Form> {};

std::string Stamp(const std::string& prefix) {
    return "<" + prefix +
           "Glyphs FontUri=\"../../../Resources/a.ttf\" OriginX=\"10\" OriginY=\"20\" "
           "FontRenderingEmSize=\"16\" UnicodeString=\"new\" Fill=\"#FF000000\"/>";
}

const std::string plainPage = "<?xml version='1.0'?>\n" + PageOf(glyphsMarkup + opaque) + "\n<!-- end -->";

std::string Prefixed() {
    return "<p:FixedPage xmlns:p='" + xpsNamespace +
           "' Width=\"10\" Height=\"10\"><p:Canvas><p:Path Data=\"M 1,1\"/>" + "</p:Canvas></p:FixedPage>";
}

std::string OpenXps() {
    return "<FixedPage xmlns=\"http://schemas.openxps.org/oxps/v1.0\" Width=\"10\" "
           "Height=\"10\"></FixedPage>";
}

const Form forms[] = {
    {"Plain", plainPage, Stamp("")},
    {"Marked", "\xEF\xBB\xBF" + plainPage, Stamp("")},
    {"Utf16",
     ToUtf16Bytes("<?xml version=\"1.0\" encoding=\"UTF-16\"?>" +
                  PageOf(glyphsMarkup + "<!--\xF0\x9F\x98\x80-->")),
     Stamp("")},
    {"Utf16BigEndian", BigEndian(ToUtf16Bytes(PageOf(opaque))), Stamp("")},
    {"Prefixed", Prefixed(), Stamp("p:")},
    {"OpenXps", OpenXps(), Stamp("")},
    {"EmptyTag", "<FixedPage xmlns=\"" + xpsNamespace + "\" Width=\"10\" Height=\"10\" />", Stamp("")},
};

std::string ToUtf8(std::string bytes) {
    if (bytes.starts_with("\xFE\xFF")) bytes = BigEndian(std::move(bytes));
    if (!bytes.starts_with("\xFF\xFE")) return bytes;
    std::u16string units;
    for (std::size_t at = 2; at + 1 < bytes.size(); at += 2)
        units.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[at]) |
                                              static_cast<unsigned char>(bytes[at + 1]) << 8));
    std::string text;
    for (const char16_t* next = units.data(); next != units.data() + units.size();) {
        bool wellFormed = true;
        char encoded[OvPlatform::Utf8::MostBytes];
        text.append(encoded,
                    OvPlatform::Utf8::Encode(
                        OvPlatform::Utf8::Decode(next, units.data() + units.size(), wellFormed), encoded));
    }
    return text;
}

TEST_P(PageForms, KeepAllBytesWhenTheyAreReadAndWritten) {
    PageModel model;
    const CComPtr<IXpsOMPage> page = model.Read(GetParam().bytes);
    EXPECT_EQ(GetParam().bytes, PageModel::Written(page));
    // Looking at what stands on the page changes nothing.
    const auto visuals = PageModel::Visuals(page);
    for (UINT32 index = 0; index < PageModel::Count(visuals); ++index)
        PageModel::At<IXpsOMVisual>(visuals, index);
    EXPECT_EQ(GetParam().bytes, PageModel::Written(page));
    EXPECT_FALSE(OvPlatform::IsPageChanged(page));
}

TEST_P(PageForms, GetAnAppendedTextBehindAllElseAndChangeNothingMore) {
    PageModel model;
    const CComPtr<IXpsOMPage> page = model.Read(GetParam().bytes);
    const UINT32 before = PageModel::Count(PageModel::Visuals(page));
    ASSERT_EQ(S_OK, PageModel::Visuals(page)->Append(model.Text(L"new")));
    EXPECT_TRUE(OvPlatform::IsPageChanged(page));
    const std::string bytes = PageModel::Written(page);
    EXPECT_EQ(GetParam().bytes.substr(0, 2), bytes.substr(0, 2));
    std::string text = ToUtf8(bytes);
    const std::size_t place = text.find(GetParam().appended);
    ASSERT_NE(std::string::npos, place) << text;
    EXPECT_TRUE(text.substr(place + GetParam().appended.size()).starts_with("</")) << text;
    text.erase(place, GetParam().appended.size());
    std::string wanted = ToUtf8(GetParam().bytes);
    if (const std::size_t end = wanted.find(" />"); std::string_view(GetParam().name) == "EmptyTag")
        wanted.replace(end, 3, "></FixedPage>");
    EXPECT_EQ(wanted, text);
    // What was written is a page that has one visual more, and it is the text.
    const CComPtr<IXpsOMPage> again = model.Read(bytes);
    ASSERT_EQ(before + 1, PageModel::Count(PageModel::Visuals(again)));
    const auto glyphs = PageModel::At<IXpsOMGlyphs>(PageModel::Visuals(again), before);
    EXPECT_EQ(L"new", PageModel::TextOf([&](LPWSTR* place) { return glyphs->GetUnicodeString(place); }));
}

INSTANTIATE_TEST_SUITE_P(All, PageForms, testing::ValuesIn(forms),
                         [](const auto& info) { return std::string(info.param.name); });

struct Refused {
    const char* name;
    std::string bytes;
    HRESULT result;
};
void PrintTo(const Refused& refused, std::ostream* out) { *out << refused.name; }
class RefusedPages : public testing::TestWithParam<Refused> {};

std::string Deep(std::size_t depth) {
    std::string text;
    for (std::size_t index = 0; index < depth; ++index)
        text += "<Canvas>";
    for (std::size_t index = 0; index < depth; ++index)
        text += "</Canvas>";
    return PageOf(text);
}

std::string Glyphs(const std::string& attributes) { return PageOf("<Glyphs " + attributes + "/>"); }

const Refused refusals[] = {
    {"Empty", "", XPS_E_INVALID_MARKUP},
    {"NoXml", "page", XPS_E_INVALID_MARKUP},
    {"NoEndTag", PageOf(glyphsMarkup).substr(0, 300), XPS_E_INVALID_MARKUP},
    {"OtherRoot", "<Canvas xmlns=\"" + xpsNamespace + "\"/>", XPS_E_INVALID_MARKUP},
    {"OtherNamespace", "<FixedPage xmlns=\"urn:other\" Width=\"1\" Height=\"1\"/>", XPS_E_INVALID_MARKUP},
    {"UndeclaredPrefix", PageOf("<q:Glyphs/>"), XPS_E_INVALID_MARKUP},
    {"DocumentType", "<!DOCTYPE FixedPage>" + PageOf(""), XPS_E_INVALID_MARKUP},
    {"Entity", PageOf("&e;"), XPS_E_INVALID_MARKUP},
    {"TooDeep", Deep(256), XPS_E_INVALID_MARKUP},
    {"OtherEncoding", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + PageOf(""),
     XPS_E_INVALID_XML_ENCODING},
    {"ContradictedEncoding", "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + PageOf(""),
     XPS_E_INVALID_XML_ENCODING},
    {"HalfUtf16", ToUtf16Bytes(PageOf("")) + "x", XPS_E_INVALID_XML_ENCODING},
    {"NoUtf8", PageOf("<!--\xC0\x80-->"), XPS_E_INVALID_MARKUP},
    {"NoSize", "<FixedPage xmlns=\"" + xpsNamespace + "\"/>", XPS_E_INVALID_PAGE_SIZE},
    {"NoFont", Glyphs("UnicodeString=\"x\""), XPS_E_MISSING_FONTURI},
    {"EmptyFont", Glyphs("FontUri=\"\""), XPS_E_MISSING_RESOURCE_RELATIONSHIP},
    {"FontOutsideThePackage", Glyphs("FontUri=\"../../../../up.ttf\""), XPS_E_INVALID_FONT_URI},
    {"UnknownFont", Glyphs("FontUri=\"/other.ttf\""), XPS_E_MISSING_RESOURCE_RELATIONSHIP},
    {"ImageForAFont", Glyphs("FontUri=\"/Resources/i.png\""), XPS_E_MISSING_RESOURCE_RELATIONSHIP},
    {"UnknownImage", PageOf("<Path><Path.Fill><ImageBrush ImageSource=\"/x.png\"/></Path.Fill></Path>"),
     XPS_E_MISSING_RESOURCE_RELATIONSHIP},
    {"UnknownProfile", PageOf("<Path Fill=\"ContextColor /x.icc 1,0,0\"/>"),
     XPS_E_MISSING_RESOURCE_RELATIONSHIP},
};

TEST_P(RefusedPages, AreNoPages) {
    PageModel model;
    CComPtr<IXpsOMPage> page;
    EXPECT_EQ(GetParam().result, model.TryRead(GetParam().bytes, page));
    EXPECT_EQ(nullptr, page.p);
}

INSTANTIATE_TEST_SUITE_P(All, RefusedPages, testing::ValuesIn(refusals),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(Pages, MayBeAsDeepAsIsAllowed) {
    PageModel model;
    EXPECT_TRUE(model.Read(Deep(255)));
}

TEST(Pages, AreMadeWithASizeAndALanguage) {
    PageModel model;
    const XPS_SIZE size{816, 1056.5F};
    CComPtr<IXpsOMPage> page;
    ASSERT_EQ(S_OK, model->CreatePage(&size, L"de-CH", model.Name(PageModel::pageName), &page));
    EXPECT_EQ("<FixedPage xmlns=\"" + xpsNamespace +
                  "\" Width=\"816\" Height=\"1056.5\" xml:lang=\"de-CH\"/>",
              PageModel::Written(page));
    CComPtr<IXpsOMPage1> page1;
    ASSERT_EQ(S_OK, page->QueryInterface(&page1));
    const CComPtr<IStream> open = PageModel::Stream({});
    ASSERT_EQ(S_OK, page1->Write1(open, FALSE, XPS_DOCUMENT_TYPE_OPENXPS));
    EXPECT_NE(std::string::npos, PageModel::Bytes(open).find("\"http://schemas.openxps.org/oxps/v1.0\""));

    const XPS_SIZE none{0, 10};
    CComPtr<IXpsOMPage> refused;
    EXPECT_EQ(XPS_E_INVALID_PAGE_SIZE,
              model->CreatePage(&none, L"en", model.Name(PageModel::pageName), &refused));
    EXPECT_EQ(XPS_E_INVALID_LANGUAGE,
              model->CreatePage(&size, L"e n", model.Name(PageModel::pageName), &refused));
}

TEST(Pages, ChangeOnlyTheAttributeThatIsSet) {
    PageModel model;
    const CComPtr<IXpsOMPage> page = model.Read(PageOf(glyphsMarkup + opaque));
    const XPS_SIZE size{100, 200};
    ASSERT_EQ(S_OK, page->SetPageDimensions(&size));
    ASSERT_EQ(S_OK, page->SetLanguage(L"fr"));
    std::string wanted = PageOf(glyphsMarkup + opaque);
    const std::string attributes = "xml:lang=\"en-US\" Width=\"816\" Height=\"1056\"";
    wanted.replace(wanted.find(attributes), attributes.size(),
                   "xml:lang=\"fr\" Width=\"100\" Height=\"200\"");
    EXPECT_EQ(wanted, PageModel::Written(page));
}

// References that say something else from where the page now is, and from what its resources are now called.
TEST(Pages, KeepWhatTheyReferToWhenPartsAreRenamed) {
    PageModel model;
    const std::string brush = "<Path><Path.Fill><ImageBrush ImageSource='{ColorConvertedBitmap "
                              "../../../Resources/i.png /Resources/p.icc}'/></Path.Fill></Path>";
    const std::string colored = "<Path Stroke=\"ContextColor /Resources/p.icc 1,0.5\"/>";
    const std::string link = "<Canvas FixedPage.NavigateUri=\"../../../Resources/p.icc\"/>"; // of the reader
    const CComPtr<IXpsOMPage> page = model.Read(PageOf(glyphsMarkup + brush + colored + link));
    EXPECT_EQ((std::vector<std::string>{"/Resources/a.ttf", "/Resources/i.png", "/Resources/p.icc"}),
              PageModel::UsedBy(page));
    ASSERT_EQ(S_OK, page->SetPartName(model.Name(L"/Resources/page.fpage")));
    ASSERT_EQ(S_OK, model.font->SetPartName(model.Name(L"/b%20c.ttf")));
    const std::string text = PageModel::Written(page);
    EXPECT_NE(std::string::npos, text.find("FontUri='../b%20c.ttf#1'")) << text;
    EXPECT_NE(std::string::npos, text.find("'{ColorConvertedBitmap i.png p.icc}'")) << text;
    EXPECT_NE(std::string::npos, text.find("\"ContextColor p.icc 1,0.5\"")) << text;
    EXPECT_NE(std::string::npos, text.find(link)) << text;
    EXPECT_EQ("/b%20c.ttf", PageModel::UsedBy(page)[0]);
}

TEST(Pages, UseNoLongerWhatWasRemoved) {
    PageModel model;
    const CComPtr<IXpsOMPage> page =
        model.Read(PageOf("<Path Fill=\"ContextColor /Resources/p.icc 1,0\"/>" + glyphsMarkup));
    ASSERT_EQ(S_OK, PageModel::Visuals(page)->RemoveAt(1));
    EXPECT_EQ(std::vector<std::string>{"/Resources/p.icc"}, PageModel::UsedBy(page));
    EXPECT_EQ(PageOf("<Path Fill=\"ContextColor /Resources/p.icc 1,0\"/>"), PageModel::Written(page));
}

TEST(Pages, AreWrittenInTheOtherFormatWithItsNamespaces) {
    PageModel model;
    const CComPtr<IXpsOMPage> page =
        model.Read(PageOf("<Canvas xmlns:o=\"urn:o\" o:a=\"" + xpsNamespace + "\"/>"));
    CComPtr<IXpsOMPage1> page1;
    ASSERT_EQ(S_OK, page->QueryInterface(&page1));
    XPS_DOCUMENT_TYPE type{};
    EXPECT_EQ(S_OK, page1->GetDocumentType(&type));
    EXPECT_EQ(XPS_DOCUMENT_TYPE_XPS, type);
    const CComPtr<IStream> stream = PageModel::Stream({});
    ASSERT_EQ(S_OK, page1->Write1(stream, FALSE, XPS_DOCUMENT_TYPE_OPENXPS));
    const std::string open = "http://schemas.openxps.org/oxps/v1.0";
    EXPECT_EQ("<FixedPage xmlns=\"" + open + "\" xmlns:x=\"" + open +
                  "/resourcedictionary-key\" xml:lang=\"en-US\" Width=\"816\" Height=\"1056\">"
                  "<Canvas xmlns:o=\"urn:o\" o:a=\"" +
                  xpsNamespace + "\"/></FixedPage>",
              PageModel::Bytes(stream));
}

TEST(Pages, AreClonedAsTheyStand) {
    PageModel model;
    const CComPtr<IXpsOMPage> page = model.Read(ToUtf16Bytes(PageOf(glyphsMarkup)));
    ASSERT_EQ(S_OK, PageModel::Visuals(page)->Append(model.Text(L"new")));
    CComPtr<IXpsOMPage> clone;
    ASSERT_EQ(S_OK, page->Clone(&clone));
    EXPECT_EQ(PageModel::Written(page), PageModel::Written(clone));
    ASSERT_EQ(S_OK, PageModel::Visuals(clone)->RemoveAt(0));
    EXPECT_EQ(2U, PageModel::Count(PageModel::Visuals(page)));
}

} // namespace
