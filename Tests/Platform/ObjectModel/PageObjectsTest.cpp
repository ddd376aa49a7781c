// What stands on pages: how it is read, what is written of a change, and who owns it.

#include "PageSupport.h"
#include "Support/Rows.h"

#include <functional>
#include <limits>

namespace {

// Written with the rest of a page around it.
std::string Appended(PageModel& model, IXpsOMVisual* visual) {
    const CComPtr<IXpsOMPage> page = model.Read(PageOf(""));
    EXPECT_EQ(S_OK, PageModel::Visuals(page)->Append(visual));
    const std::string text = PageModel::Written(page);
    EXPECT_TRUE(model.Read(text));
    const std::size_t begin = PageOf("").size() - std::string("</FixedPage>").size();
    return text.substr(begin, text.rfind("</FixedPage>") - begin);
}

CComPtr<IXpsOMGeometryFigure> Figure(PageModel& model, const std::vector<XPS_SEGMENT_TYPE>& types,
                                     const std::vector<FLOAT>& data, BOOL isStroked) {
    const XPS_POINT start{1, 2};
    CComPtr<IXpsOMGeometryFigure> figure;
    EXPECT_EQ(S_OK, model->CreateGeometryFigure(&start, &figure));
    const std::vector<BOOL> strokes(types.size(), isStroked);
    EXPECT_EQ(S_OK, figure->SetSegments(static_cast<UINT32>(types.size()), static_cast<UINT32>(data.size()),
                                        types.data(), data.data(), strokes.data()));
    EXPECT_EQ(S_OK, figure->SetIsClosed(TRUE));
    return figure;
}

CComPtr<IXpsOMPath> PathOf(PageModel& model, IXpsOMGeometryFigure* figure) {
    CComPtr<IXpsOMGeometry> geometry;
    EXPECT_EQ(S_OK, model->CreateGeometry(&geometry));
    CComPtr<IXpsOMGeometryFigureCollection> figures;
    EXPECT_EQ(S_OK, geometry->GetFigures(&figures));
    EXPECT_EQ(S_OK, figures->Append(figure));
    CComPtr<IXpsOMPath> path;
    EXPECT_EQ(S_OK, model->CreatePath(&path));
    EXPECT_EQ(S_OK, path->SetGeometryLocal(geometry));
    return path;
}

CComPtr<IXpsOMPath> Rectangle(PageModel& model) {
    return PathOf(model, Figure(model, std::vector(3, XPS_SEGMENT_TYPE_LINE), {1, 9, 8, 9, 8, 2}, TRUE));
}

CComPtr<IXpsOMImageBrush> ImageBrush(PageModel& model) {
    const XPS_RECT box{0, 0, 4, 3};
    const XPS_RECT port{1, 2, 7, 7.5F};
    CComPtr<IXpsOMImageBrush> brush;
    EXPECT_EQ(S_OK, model->CreateImageBrush(model.image, &box, &port, &brush));
    return brush;
}

CComPtr<IXpsOMMatrixTransform> Matrix(PageModel& model, const XPS_MATRIX& matrix) {
    CComPtr<IXpsOMMatrixTransform> transform;
    EXPECT_EQ(S_OK, model->CreateMatrixTransform(&matrix, &transform));
    return transform;
}

CComPtr<IXpsOMCanvas> Canvas(PageModel& model) {
    CComPtr<IXpsOMCanvas> canvas;
    EXPECT_EQ(S_OK, model->CreateCanvas(&canvas));
    return canvas;
}

struct NewVisual {
    const char* name;
    std::function<CComPtr<IXpsOMVisual>(PageModel&)> make;
    std::string markup;
};
void PrintTo(const NewVisual& row, std::ostream* out) { *out << row.name; }

CComPtr<IXpsOMVisual> Colored(PageModel& model, const XPS_COLOR& color, FLOAT opacity) {
    CComPtr<IXpsOMSolidColorBrush> brush;
    const bool isContext = color.colorType == XPS_COLOR_TYPE_CONTEXT;
    EXPECT_EQ(S_OK, model->CreateSolidColorBrush(&color, isContext ? model.profile.p : nullptr, &brush));
    EXPECT_EQ(S_OK, opacity == 1 ? S_OK : brush->SetOpacity(opacity));
    const CComPtr<IXpsOMPath> path = Rectangle(model);
    EXPECT_EQ(S_OK, path->SetStrokeBrushLocal(brush));
    return path.p;
}

XPS_COLOR Context() {
    XPS_COLOR color{};
    color.colorType = XPS_COLOR_TYPE_CONTEXT;
    color.value.context.channelCount = 2;
    color.value.context.channels[0] = 1;
    color.value.context.channels[1] = 0.25F;
    color.value.context.channels[2] = 0.1F;
    return color;
}

XPS_COLOR Linear() {
    XPS_COLOR color{};
    color.colorType = XPS_COLOR_TYPE_SCRGB;
    color.value.scRGB = {1, -0.5F, 1e-7F, 2};
    return color;
}

const std::string textStart =
    "<Glyphs FontUri=\"../../../Resources/a.ttf\" OriginX=\"10\" OriginY=\"20\" FontRenderingEmSize=\"16\" ";
const std::string textEnd = "Fill=\"#FF000000\"/>";
const std::string data = "Data=\"M 1,2 L 1,9 8,9 8,2 Z\"";

NewVisual Text(const char* name, const wchar_t* text, const std::string& attribute) {
    return {name, [text](PageModel& model) { return CComPtr<IXpsOMVisual>(model.Text(text).p); },
            textStart + "UnicodeString=\"" + attribute + "\" " + textEnd};
}

const NewVisual newVisuals[] = {
    Text("Escaped", L"<a b=\"c\" d='e'> & \t\r\n", "&lt;a b=&quot;c&quot; d='e'&gt; &amp; &#9;&#13;&#10;"),
    Text("Braced", L"{StaticResource x}", "{}{StaticResource x}"),
    Text("Supplementary", L"\xD83D\xDE00\x05D0\x0301", "\xF0\x9F\x98\x80\xD7\x90\xCC\x81"),
    {"Rectangle", [](PageModel& model) { return CComPtr<IXpsOMVisual>(Rectangle(model).p); },
     "<Path " + data + "/>"},
    {"ImageWithOpacity",
     [](PageModel& model) {
         const CComPtr<IXpsOMPath> path = Rectangle(model);
         const CComPtr<IXpsOMImageBrush> brush = ImageBrush(model);
         EXPECT_EQ(S_OK, brush->SetOpacity(0.3F));
         EXPECT_EQ(S_OK, path->SetFillBrushLocal(brush));
         EXPECT_EQ(S_OK, path->SetTransformLocal(Matrix(model, {0.70710677F, 0, 0, 1, -1.5F, 1e20F})));
         return CComPtr<IXpsOMVisual>(path.p);
     },
     "<Path RenderTransform=\"0.70710677,0,0,1,-1.5,1e+20\" " + data +
         "><Path.Fill><ImageBrush ImageSource=\"../../../Resources/i.png\" Viewbox=\"0,0,4,3\" "
         "Viewport=\"1,2,7,7.5\" ViewboxUnits=\"Absolute\" ViewportUnits=\"Absolute\" Opacity=\"0.3\"/>"
         "</Path.Fill></Path>"},
    {"LinearColor", [](PageModel& model) { return Colored(model, Linear(), 1); },
     "<Path Stroke=\"sc#1,-0.5,1e-07,2\" " + data + "/>"},
    {"ContextColorWithOpacity", [](PageModel& model) { return Colored(model, Context(), 0.5F); },
     "<Path " + data +
         "><Path.Stroke><SolidColorBrush Color=\"ContextColor ../../../Resources/p.icc 1,0.25,0.1\" "
         "Opacity=\"0.5\"/></Path.Stroke></Path>"},
    {"CurvesWithoutStroke",
     [](PageModel& model) {
         const auto figure = Figure(model,
                                    {XPS_SEGMENT_TYPE_ARC_SMALL_CLOCKWISE, XPS_SEGMENT_TYPE_BEZIER,
                                     XPS_SEGMENT_TYPE_QUADRATIC_BEZIER},
                                    {9, 8, 3, 4, 45, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, FALSE);
         EXPECT_EQ(S_OK, figure->SetIsFilled(FALSE));
         return CComPtr<IXpsOMVisual>(PathOf(model, figure).p);
     },
     "<Path><Path.Data><PathGeometry><PathFigure StartPoint=\"1,2\" IsClosed=\"true\" IsFilled=\"false\">"
     "<ArcSegment Point=\"9,8\" Size=\"3,4\" RotationAngle=\"45\" IsLargeArc=\"false\" "
     "SweepDirection=\"Clockwise\" IsStroked=\"false\"/><PolyBezierSegment Points=\"1,2,3,4,5,6\" "
     "IsStroked=\"false\"/><PolyQuadraticBezierSegment Points=\"7,8,9,10\" IsStroked=\"false\"/>"
     "</PathFigure></PathGeometry></Path.Data></Path>"},
    {"CanvasWithAKey",
     [](PageModel& model) {
         const CComPtr<IXpsOMCanvas> canvas = Canvas(model);
         CComPtr<IXpsOMDictionary> dictionary;
         EXPECT_EQ(S_OK, model->CreateDictionary(&dictionary));
         EXPECT_EQ(S_OK, dictionary->Append(L"red", model.Solid(255, 255, 0, 0)));
         EXPECT_EQ(S_OK, canvas->SetDictionaryLocal(dictionary));
         const CComPtr<IXpsOMPath> path = Rectangle(model);
         EXPECT_EQ(S_OK, path->SetFillBrushLookup(L"red"));
         CComPtr<IXpsOMVisualCollection> visuals;
         EXPECT_EQ(S_OK, canvas->GetVisuals(&visuals));
         EXPECT_EQ(S_OK, visuals->Append(path));
         CComPtr<IXpsOMBrush> found;
         EXPECT_EQ(S_OK, path->GetFillBrush(&found));
         EXPECT_TRUE(found);
         return CComPtr<IXpsOMVisual>(canvas.p);
     },
     "<Canvas><Canvas.Resources><ResourceDictionary><SolidColorBrush Color=\"#FFFF0000\" x:Key=\"red\"/>"
     "</ResourceDictionary></Canvas.Resources><Path Fill=\"{StaticResource red}\" " +
         data + "/></Canvas>"},
};

class NewVisuals : public testing::TestWithParam<NewVisual> {};

TEST_P(NewVisuals, AreWrittenWithWhatWasSetAndNothingElse) {
    PageModel model;
    const CComPtr<IXpsOMVisual> visual = GetParam().make(model);
    EXPECT_EQ(GetParam().markup, Appended(model, visual));
}

// What was written, read and written again as a copy, is the same.
TEST_P(NewVisuals, AreReadAsTheyWere) {
    PageModel model;
    const CComPtr<IXpsOMPage> page = model.Read(PageOf(GetParam().markup));
    const auto visual = PageModel::At<IXpsOMVisual>(PageModel::Visuals(page), 0);
    CComPtr<IXpsOMVisual> clone;
    if (const CComQIPtr<IXpsOMGlyphs> glyphs(visual); glyphs) {
        CComPtr<IXpsOMGlyphs> copy;
        EXPECT_EQ(S_OK, glyphs->Clone(&copy));
        clone = copy.p;
    } else if (const CComQIPtr<IXpsOMPath> path(visual); path) {
        CComPtr<IXpsOMPath> copy;
        EXPECT_EQ(S_OK, path->Clone(&copy));
        CComPtr<IXpsOMGeometry> geometry;
        EXPECT_EQ(S_OK, copy->GetGeometryLocal(&geometry));
        EXPECT_EQ(S_OK, geometry->SetFillRule(XPS_FILL_RULE_NONZERO)); // so that it is written anew
        EXPECT_EQ(S_OK, geometry->SetFillRule(XPS_FILL_RULE_EVENODD));
        clone = copy.p;
    } else {
        return;
    }
    XPS_OBJECT_TYPE type{};
    XPS_OBJECT_TYPE cloned{};
    EXPECT_EQ(S_OK, visual->GetType(&type));
    EXPECT_EQ(S_OK, clone->GetType(&cloned));
    EXPECT_EQ(type, cloned);
    std::string text = Appended(model, clone);
    // That the rule is the usual one may be said.
    if (const std::size_t said = text.find(" FillRule=\"EvenOdd\""); said != std::string::npos)
        text.erase(said, 19);
    EXPECT_EQ(GetParam().markup.size(), text.size()) << text;
}

INSTANTIATE_TEST_SUITE_P(All, NewVisuals, testing::ValuesIn(newVisuals),
                         [](const auto& info) { return std::string(info.param.name); });

// A change in what was read: only that is written anew.
struct Change {
    const char* name;
    std::string before;
    std::function<void(PageModel&, IXpsOMPage*)> make;
    std::string after;
};
void PrintTo(const Change& change, std::ostream* out) { *out << change.name; }
class Changes : public testing::TestWithParam<Change> {};

template <class Interface>
std::function<void(PageModel&, IXpsOMPage*)> OnFirst(std::function<void(PageModel&, Interface*)> change) {
    return [change](PageModel& model, IXpsOMPage* page) {
        change(model, PageModel::At<Interface>(PageModel::Visuals(page), 0));
    };
}

const std::string gradient = "<Path.Fill> <VisualBrush/></Path.Fill>";

const Change changes[] = {
    {"AttributeInItsPlace", glyphsMarkup, OnFirst<IXpsOMGlyphs>([](PageModel&, IXpsOMGlyphs* glyphs) {
         EXPECT_EQ(S_OK, glyphs->SetFontRenderingEmSize(0.1F));
         EXPECT_EQ(S_OK, glyphs->SetOpacity(0.5F));
     }),
     "<Glyphs  FontUri='../../../Resources/a.ttf#1' FontRenderingEmSize=\"0.1\" OriginX='1' OriginY=\"2.50\" "
     "UnicodeString=\"one &amp; two\" Fill=\"#FF102030\" Unknown=\"kept\" Opacity=\"0.5\" />"},
    {"TextAndNotTheRest",
     "<Glyphs FontUri=\"/Resources/a.ttf\" Indices=\"(2:1)7;,50.0;\" UnicodeString=\"abc\"/>",
     OnFirst<IXpsOMGlyphs>([](PageModel&, IXpsOMGlyphs* glyphs) {
         CComPtr<IXpsOMGlyphsEditor> editor;
         EXPECT_EQ(S_OK, glyphs->GetGlyphsEditor(&editor));
         EXPECT_EQ(S_OK, editor->SetUnicodeString(L"{bc"));
         EXPECT_EQ(S_OK, editor->ApplyEdits());
     }),
     "<Glyphs FontUri=\"/Resources/a.ttf\" Indices=\"(2:1)7;,50.0;\" UnicodeString=\"{}{bc\"/>"},
    {"ColourOfAnAttribute", glyphsMarkup, OnFirst<IXpsOMGlyphs>([](PageModel&, IXpsOMGlyphs* glyphs) {
         CComPtr<IXpsOMBrush> brush;
         EXPECT_EQ(S_OK, glyphs->GetFillBrushLocal(&brush));
         const CComQIPtr<IXpsOMSolidColorBrush> solid(brush);
         XPS_COLOR color{};
         CComPtr<IXpsOMColorProfileResource> profile;
         EXPECT_EQ(S_OK, solid->GetColor(&color, &profile));
         EXPECT_EQ(0x20, color.value.sRGB.green);
         color.value.sRGB.green = 0xAB;
         EXPECT_EQ(S_OK, solid->SetColor(&color, nullptr));
     }),
     "<Glyphs  FontUri='../../../Resources/a.ttf#1' FontRenderingEmSize=\"12\" OriginX='1' OriginY=\"2.50\" "
     "UnicodeString=\"one &amp; two\" Unknown=\"kept\" Fill=\"#FF10AB30\" />"},
    {"BrushInAnElement",
     "<Path><!--a--><Path.Fill >\n<SolidColorBrush Color='#112233' q='1'/><!--b--></Path.Fill> </Path>",
     OnFirst<IXpsOMPath>([](PageModel&, IXpsOMPath* path) {
         CComPtr<IXpsOMBrush> brush;
         EXPECT_EQ(S_OK, path->GetFillBrush(&brush));
         EXPECT_EQ(S_OK, brush->SetOpacity(0));
     }),
     "<Path><!--a--><Path.Fill >\n<SolidColorBrush Color='#112233' q='1' Opacity=\"0\"/><!--b--></Path.Fill> "
     "</Path>"},
    {"ClipAheadOfTheFilling", "<Path a='1'> " + gradient + "</Path>",
     OnFirst<IXpsOMPath>([](PageModel& model, IXpsOMPath* path) {
         const auto figure = Figure(model, {XPS_SEGMENT_TYPE_LINE}, {5, 5}, FALSE);
         CComPtr<IXpsOMGeometry> clip;
         EXPECT_EQ(S_OK, model->CreateGeometry(&clip));
         CComPtr<IXpsOMGeometryFigureCollection> figures;
         EXPECT_EQ(S_OK, clip->GetFigures(&figures));
         EXPECT_EQ(S_OK, figures->Append(figure));
         EXPECT_EQ(S_OK, path->SetClipGeometryLocal(clip));
     }),
     "<Path a='1'><Path.Clip><PathGeometry><PathFigure StartPoint=\"1,2\" IsClosed=\"true\"><PolyLineSegment "
     "Points=\"5,5\" IsStroked=\"false\"/></PathFigure></PathGeometry></Path.Clip> " +
         gradient + "</Path>"},
    {"OpacityOfAFilling",
     "<Path Fill=\"#FF102030\"><Path.Data><PathGeometry Figures=\"\"/></Path.Data></Path>",
     OnFirst<IXpsOMPath>([](PageModel&, IXpsOMPath* path) {
         CComPtr<IXpsOMBrush> brush;
         EXPECT_EQ(S_OK, path->GetFillBrush(&brush));
         EXPECT_EQ(S_OK, brush->SetOpacity(0.25F));
     }),
     "<Path><Path.Fill><SolidColorBrush Color=\"#FF102030\" Opacity=\"0.25\"/></Path.Fill><Path.Data>"
     "<PathGeometry Figures=\"\"/></Path.Data></Path>"},
    {"FillingReplaced", "<Path Data=\"M 0,0\"> " + gradient + " </Path>",
     OnFirst<IXpsOMPath>([](PageModel& model, IXpsOMPath* path) {
         EXPECT_EQ(S_OK, path->SetFillBrushLocal(model.Solid(1, 2, 3, 4)));
     }),
     "<Path Data=\"M 0,0\" Fill=\"#01020304\">  </Path>"},
    {"FiguresOfAGeometry", "<Path Data=\"F 1 m 1,1 l 1,0 0,1 z\"/>",
     OnFirst<IXpsOMPath>([](PageModel&, IXpsOMPath* path) {
         CComPtr<IXpsOMGeometry> geometry;
         EXPECT_EQ(S_OK, path->GetGeometry(&geometry));
         CComPtr<IXpsOMGeometryFigureCollection> figures;
         EXPECT_EQ(S_OK, geometry->GetFigures(&figures));
         CComPtr<IXpsOMGeometryFigure> figure;
         EXPECT_EQ(S_OK, figures->GetAt(0, &figure));
         EXPECT_EQ(S_OK, figure->SetIsClosed(FALSE));
     }),
     "<Path Data=\"F1 M 1,1 L 2,1 2,2\"/>"},
    {"Dashes", "<Path StrokeDashArray='1 2  3,4'/>", OnFirst<IXpsOMPath>([](PageModel&, IXpsOMPath* path) {
         CComPtr<IXpsOMDashCollection> dashes;
         EXPECT_EQ(S_OK, path->GetStrokeDashes(&dashes));
         const XPS_DASH dash{0.5F, 6};
         EXPECT_EQ(S_OK, dashes->InsertAt(1, &dash));
         EXPECT_EQ(S_OK, dashes->RemoveAt(0));
         EXPECT_EQ(XPS_E_INDEX_OUT_OF_RANGE, dashes->RemoveAt(2));
     }),
     "<Path StrokeDashArray=\"0.5 6 3 4\"/>"},
    {"VisualsInOrder",
     "<FixedPage.Resources><ResourceDictionary/></FixedPage.Resources><!--0--><Path/> <Canvas/> <Path "
     "a='2'/>\n",
     [](PageModel& model, IXpsOMPage* page) {
         const auto visuals = PageModel::Visuals(page);
         EXPECT_EQ(S_OK, visuals->InsertAt(0, Canvas(model))); // below everything
         EXPECT_EQ(S_OK, visuals->RemoveAt(1));                // the first path
         EXPECT_EQ(S_OK, visuals->SetAt(1, Rectangle(model))); // for the canvas
         EXPECT_EQ(S_OK, visuals->Append(Canvas(model)));
         EXPECT_EQ(4U, PageModel::Count(visuals));
     },
     "<FixedPage.Resources><ResourceDictionary/></FixedPage.Resources><Canvas/><!--0--> <Path " + data +
         "/> <Path a='2'/>\n<Canvas/>"},
    {"DictionaryOfThePage",
     "<FixedPage.Resources><ResourceDictionary><SolidColorBrush x:Key=\"a\" "
     "Color=\"#1\"/><LinearGradientBrush "
     "x:Key=\"g\"/></ResourceDictionary></FixedPage.Resources>",
     [](PageModel& model, IXpsOMPage* page) {
         CComPtr<IXpsOMDictionary> dictionary;
         EXPECT_EQ(S_OK, page->GetDictionary(&dictionary));
         EXPECT_EQ(XPS_E_DUPLICATE_RESOURCE_KEYS, dictionary->Append(L"g", model.Solid(0, 0, 0, 0)));
         EXPECT_EQ(S_OK, dictionary->SetAt(0, L"b", model.Solid(9, 0, 0, 0)));
         CComPtr<IXpsOMShareable> entry;
         EXPECT_EQ(S_OK, dictionary->GetByKey(L"a", nullptr, &entry));
         EXPECT_FALSE(entry);
         EXPECT_EQ(S_OK, dictionary->GetByKey(L"g", nullptr, &entry));
         UINT32 index = 0;
         EXPECT_EQ(S_OK, dictionary->GetIndex(entry, &index));
         EXPECT_EQ(1U, index);
     },
     "<FixedPage.Resources><ResourceDictionary><SolidColorBrush Color=\"#09000000\" "
     "x:Key=\"b\"/><LinearGradientBrush "
     "x:Key=\"g\"/></ResourceDictionary></FixedPage.Resources>"},
};

TEST_P(Changes, AreAllThatIsWrittenAnew) {
    PageModel model;
    const CComPtr<IXpsOMPage> page = model.Read(PageOf(GetParam().before));
    GetParam().make(model, page);
    EXPECT_EQ(PageOf(GetParam().after), PageModel::Written(page));
}

INSTANTIATE_TEST_SUITE_P(All, Changes, testing::ValuesIn(changes),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(Visuals, TakeTheirDeclarationsAndReferencesAlongToAnotherPage) {
    PageModel model;
    const CComPtr<IXpsOMPage> from =
        model.Read(PageOf("<Canvas xmlns:o=\"urn:o\" xmlns:p=\"" + xpsNamespace +
                          "\" o:a=\"1\"><p:Glyphs FontUri=\"../../../Resources/a.ttf\" "
                          "o:b=\"2\"/></Canvas>"));
    CComPtr<IXpsOMVisualCollection> inCanvas;
    EXPECT_EQ(S_OK, PageModel::At<IXpsOMCanvas>(PageModel::Visuals(from), 0)->GetVisuals(&inCanvas));
    const auto glyphs = PageModel::At<IXpsOMGlyphs>(inCanvas, 0);
    ASSERT_EQ(S_OK, inCanvas->RemoveAt(0));
    const XPS_SIZE size{10, 10};
    CComPtr<IXpsOMPage> to;
    ASSERT_EQ(S_OK, model->CreatePage(&size, nullptr, model.Name(L"/top.fpage"), &to));
    ASSERT_EQ(S_OK, PageModel::Visuals(to)->Append(glyphs));
    EXPECT_EQ("<FixedPage xmlns=\"" + xpsNamespace + "\" Width=\"10\" Height=\"10\"><p:Glyphs xmlns:p=\"" +
                  xpsNamespace + "\" xmlns:o=\"urn:o\" xmlns:x=\"" + keyNamespace +
                  "\" FontUri=\"Resources/a.ttf\" o:b=\"2\"/></FixedPage>",
              PageModel::Written(to));
    EXPECT_EQ(PageOf("<Canvas xmlns:o=\"urn:o\" xmlns:p=\"" + xpsNamespace + "\" o:a=\"1\"></Canvas>"),
              PageModel::Written(from));
}

// What a page lets its readers ignore is ignored wherever a part of it goes.
TEST(Visuals, TakeTheRulesOfMarkupCompatibilityAlong) {
    const std::string compatibility =
        "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\"";
    const std::string page = "<FixedPage xmlns=\"" + xpsNamespace +
                             "\" xmlns:o=\"urn:o\" xmlns:u=\"urn:u\" " + compatibility +
                             " mc:Ignorable=\"o u gone\" mc:MustUnderstand='u' Width=\"9\" Height=\"9\">";
    const std::string o = " xmlns:o=\"urn:o\"";
    const std::string u = " xmlns:u=\"urn:u\"";
    const Rows<std::string, std::string> rows{
        {"<Canvas o:a=\"1\"><o:x/></Canvas>",
         "<Canvas " + compatibility + u + o +
             " mc:MustUnderstand=\"u\" mc:Ignorable=\"o u\" o:a=\"1\"><o:x/></Canvas>"},
        {"<Canvas xmlns:p=\"urn:p\" mc:Ignorable='p' o:a=\"1\" mc:ProcessContent=\"o:y p:*\" b='2'/>",
         "<Canvas " + compatibility + u + o +
             " mc:ProcessContent=\"o:y p:*\" mc:Ignorable=\"p o u\" mc:MustUnderstand=\"u\" xmlns:p=\"urn:p\""
             " o:a=\"1\" b='2'/>"},
        // Where its prefixes stand for something else.
        {"<Canvas xmlns:o=\"urn:p\" xmlns:mc=\"urn:mc\" xmlns:q=\"urn:o\" q:a=\"1\"/>",
         "<Canvas" + u + " xmlns:n0_1=" + compatibility.substr(9) +
             " n0_1:MustUnderstand=\"u\" n0_1:Ignorable=\"q u\" xmlns:o=\"urn:p\" xmlns:mc=\"urn:mc\" "
             "xmlns:q=\"urn:o\" q:a=\"1\"/>"},
    };
    for (const bool isTouched : {false, true}) {
        for (const auto& [visual, moved] : rows) {
            PageModel model;
            const CComPtr<IXpsOMPage> from = model.Read(page + visual + "</FixedPage>");
            const auto canvas = PageModel::At<IXpsOMCanvas>(PageModel::Visuals(from), 0);
            ASSERT_EQ(S_OK, PageModel::Visuals(from)->RemoveAt(0));
            EXPECT_EQ(page + "</FixedPage>", PageModel::Written(from));
            if (isTouched) {
                ASSERT_EQ(S_OK, canvas->SetOpacity(0.5F));
            }
            const CComPtr<IXpsOMPage> to = model.Read(PageOf(""));
            ASSERT_EQ(S_OK, PageModel::Visuals(to)->Append(canvas));
            std::string text = PageModel::Written(to);
            EXPECT_TRUE(model.Read(text));
            if (const std::size_t edit = text.find(" Opacity=\"0.5\""); isTouched) text.erase(edit, 14);
            EXPECT_EQ(PageOf(moved), text);

            // Back where it came from, all is said already.
            ASSERT_EQ(S_OK, PageModel::Visuals(to)->RemoveAt(0));
            ASSERT_EQ(S_OK, PageModel::Visuals(from)->Append(canvas));
            EXPECT_EQ(PageModel::Written(from).find("MustUnderstand", page.size()), std::string::npos);
        }
    }
}

TEST(Visuals, BelongToOneOwner) {
    PageModel model;
    CComPtr<IXpsOMPage> page = model.Read(PageOf("<Canvas/>"));
    const auto visuals = PageModel::Visuals(page);
    const CComPtr<IXpsOMGlyphs> text = model.Text(L"x");
    CComPtr<IUnknown> owner;
    EXPECT_EQ(S_OK, text->GetOwner(&owner));
    EXPECT_FALSE(owner);
    ASSERT_EQ(S_OK, visuals->Append(text));
    EXPECT_EQ(XPS_E_ALREADY_OWNED, visuals->Append(text));
    EXPECT_EQ(S_OK, text->GetOwner(&owner));
    EXPECT_TRUE(owner.IsEqualObject(page));
    CComPtr<IXpsOMBrush> brush;
    EXPECT_EQ(S_OK, text->GetFillBrushLocal(&brush));
    EXPECT_EQ(XPS_E_ALREADY_OWNED, model.Text(L"y")->SetFillBrushLocal(brush));
    EXPECT_EQ(S_OK, text->SetFillBrushLocal(nullptr));
    EXPECT_EQ(S_OK, model.Text(L"y")->SetFillBrushLocal(brush));

    const CComPtr<IXpsOMCanvas> outer = Canvas(model);
    CComPtr<IXpsOMVisualCollection> inOuter;
    EXPECT_EQ(S_OK, outer->GetVisuals(&inOuter));
    EXPECT_EQ(XPS_E_VISUAL_CIRCULAR_REF, inOuter->Append(outer));
    EXPECT_EQ(E_POINTER, inOuter->Append(nullptr));
    EXPECT_EQ(XPS_E_INDEX_OUT_OF_RANGE, inOuter->InsertAt(1, Rectangle(model)));
    EXPECT_EQ(XPS_E_INDEX_OUT_OF_RANGE, inOuter->RemoveAt(0));

    // What outlives its page has no owner any more, and still says what it is.
    const auto canvas = PageModel::At<IXpsOMCanvas>(visuals, 0);
    owner.Release();
    page.Release();
    const_cast<CComPtr<IXpsOMVisualCollection>&>(visuals).Release();
    EXPECT_EQ(S_OK, text->GetOwner(&owner));
    EXPECT_FALSE(owner);
    EXPECT_EQ(S_OK, canvas->SetName(L"a1"));
    EXPECT_EQ("<Canvas Name=\"a1\"/>", Appended(model, canvas));
}

TEST(Glyphs, RefuseRunsThatTheFormatDoesNotAllow) {
    PageModel model;
    const CComPtr<IXpsOMGlyphs> glyphs = model.Text(L"abc");
    CComPtr<IXpsOMGlyphsEditor> editor;
    ASSERT_EQ(S_OK, glyphs->GetGlyphsEditor(&editor));
    for (const wchar_t* text : {L"\x0001", L"\xFFFF", L"\xD800x", L"\xDC00"})
        EXPECT_EQ(XPS_E_INVALID_MARKUP, editor->SetUnicodeString(text));
    const XPS_GLYPH_INDEX index{3, -1, 0, 0};
    const std::vector<XPS_GLYPH_INDEX> indices(4, index);
    struct Row {
        std::vector<XPS_GLYPH_MAPPING> mappings;
        UINT32 indices;
        HRESULT result;
    };
    const Row rows[] = {
        {{}, 3, S_OK},
        {{}, 4, XPS_E_TOO_MANY_INDICES},
        {{{0, 1, 0, 2}}, 4, S_OK},
        {{{0, 2, 0, 1}, {2, 1, 1, 3}}, 4, S_OK},
        {{{1, 1, 2, 1}}, 3, XPS_E_ONE_TO_ONE_MAPPING_EXPECTED},
        {{{1, 1, 1, 1}, {0, 1, 0, 1}}, 3, XPS_E_MAPPING_OUT_OF_ORDER},
        {{{2, 2, 2, 1}}, 3, XPS_E_MAPPING_OUTSIDE_STRING},
        {{{2, 1, 2, 3}}, 4, XPS_E_MAPPING_OUTSIDE_INDICES},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(S_OK, editor->SetGlyphIndices(row.indices, indices.data()));
        EXPECT_EQ(S_OK,
                  editor->SetGlyphMappings(static_cast<UINT32>(row.mappings.size()), row.mappings.data()));
        EXPECT_EQ(row.result, editor->ApplyEdits()) << &row - rows;
    }
    const UINT32 stops[] = {1, 4};
    EXPECT_EQ(S_OK, editor->SetGlyphIndices(0, nullptr));
    EXPECT_EQ(S_OK, editor->SetGlyphMappings(0, nullptr));
    EXPECT_EQ(S_OK, editor->SetProhibitedCaretStops(2, stops));
    EXPECT_EQ(XPS_E_CARET_OUTSIDE_STRING, editor->ApplyEdits());
    EXPECT_EQ(S_OK, editor->SetProhibitedCaretStops(1, stops));
    EXPECT_EQ(S_OK, editor->SetBidiLevel(1));
    EXPECT_EQ(S_OK, editor->SetIsSideways(TRUE));
    EXPECT_EQ(XPS_E_ODD_BIDILEVEL, editor->ApplyEdits());
    EXPECT_EQ(S_OK, editor->SetIsSideways(FALSE));
    EXPECT_EQ(S_OK, editor->ApplyEdits());
    EXPECT_EQ(textStart + "UnicodeString=\"abc\" CaretStops=\"B\" BidiLevel=\"1\" " + textEnd,
              Appended(model, glyphs));
    EXPECT_EQ(XPS_E_INVALID_FLOAT, glyphs->SetFontRenderingEmSize(std::numeric_limits<FLOAT>::infinity()));
    EXPECT_EQ(XPS_E_NEGATIVE_FLOAT, glyphs->SetFontRenderingEmSize(-1));
}

TEST(Glyphs, WithoutTextAreNotWritten) {
    PageModel model;
    CComPtr<IXpsOMGlyphs> glyphs;
    ASSERT_EQ(S_OK, model->CreateGlyphs(model.font, &glyphs));
    const CComPtr<IXpsOMPage> page = model.Read(PageOf(""));
    ASSERT_EQ(S_OK, PageModel::Visuals(page)->Append(glyphs));
    EXPECT_EQ(XPS_E_MISSING_GLYPHS, page->Write(PageModel::Stream({}), FALSE));
}

// Each text is read, changed so that it is written anew, and read again: the two say the same.
TEST(Runs, OfAllKindsAreReadAndWrittenAlike) {
    PageModel model;
    for (const char* indices : {"", ";", "12", "12,5.5;;,,1,-2", "(1:2)3;4,100,.5;(3)9", "(2:1)7;,1e1"}) {
        const CComPtr<IXpsOMPage> page =
            model.Read(PageOf("<Glyphs FontUri=\"/Resources/a.ttf\" UnicodeString=\"abcdef\" Indices=\"" +
                              std::string(indices) + "\"/>"));
        const auto glyphs = PageModel::At<IXpsOMGlyphs>(PageModel::Visuals(page), 0);
        const auto read = [](auto* run, auto count, auto get, auto item) {
            UINT32 number = 0;
            EXPECT_EQ(S_OK, (run->*count)(&number));
            std::vector<decltype(item)> items(number);
            EXPECT_EQ(S_OK, (run->*get)(&number, items.data()));
            return items;
        };
        const auto glyphIndices = read(glyphs.p, &IXpsOMGlyphs::GetGlyphIndexCount,
                                       &IXpsOMGlyphs::GetGlyphIndices, XPS_GLYPH_INDEX{});
        const auto mappings = read(glyphs.p, &IXpsOMGlyphs::GetGlyphMappingCount,
                                   &IXpsOMGlyphs::GetGlyphMappings, XPS_GLYPH_MAPPING{});
        const CComPtr<IXpsOMGlyphs> copy = model.Text(L"abcdef");
        CComPtr<IXpsOMGlyphsEditor> editor;
        EXPECT_EQ(S_OK, copy->GetGlyphsEditor(&editor));
        EXPECT_EQ(S_OK,
                  editor->SetGlyphIndices(static_cast<UINT32>(glyphIndices.size()), glyphIndices.data()));
        EXPECT_EQ(S_OK, editor->SetGlyphMappings(static_cast<UINT32>(mappings.size()), mappings.data()));
        EXPECT_EQ(S_OK, editor->ApplyEdits()) << indices;
        const auto again = read(copy.p, &IXpsOMGlyphs::GetGlyphIndexCount, &IXpsOMGlyphs::GetGlyphIndices,
                                XPS_GLYPH_INDEX{});
        ASSERT_EQ(glyphIndices.size(), again.size()) << indices;
        for (std::size_t at = 0; at < again.size(); ++at) {
            EXPECT_EQ(glyphIndices[at].index, again[at].index) << indices;
            EXPECT_EQ(glyphIndices[at].advanceWidth, again[at].advanceWidth) << indices;
            EXPECT_EQ(glyphIndices[at].horizontalOffset, again[at].horizontalOffset) << indices;
            EXPECT_EQ(glyphIndices[at].verticalOffset, again[at].verticalOffset) << indices;
        }
        EXPECT_EQ(mappings.size(), read(copy.p, &IXpsOMGlyphs::GetGlyphMappingCount,
                                        &IXpsOMGlyphs::GetGlyphMappings, XPS_GLYPH_MAPPING{})
                                       .size());
    }
}

TEST(Values, ThatAreNoneAreInvalidMarkupWhenTheyAreAskedFor) {
    PageModel model;
    const auto first = [&](const std::string& markup) {
        CComPtr<IXpsOMPage> page = model.Read(PageOf(markup));
        return std::pair(page, PageModel::At<IXpsOMVisual>(PageModel::Visuals(page), 0));
    };
    for (const char* bad : {"", "L 1,1", "M 1", "M 1,1 X 2", "M 1,1 L 1,nan", "M inf,0", "M 0,0 1",
                            "M 0,0 C 1,1 2,2", "M 0,0 Z 3"}) {
        const auto [page, visual] = first("<Path Data=\"" + std::string(bad) + "\"/>");
        CComPtr<IXpsOMGeometry> geometry;
        const HRESULT wanted = *bad == 0 ? S_OK : XPS_E_INVALID_MARKUP;
        EXPECT_EQ(wanted, CComQIPtr<IXpsOMPath>(visual)->GetGeometry(&geometry)) << bad;
    }
    for (const char* bad :
         {"red", "#12345", "#GG0000", "sc#1,2", "ContextColor /Resources/p.icc", "sc#1,2,1e99"}) {
        const auto [page, visual] = first("<Path Fill=\"" + std::string(bad) + "\"/>");
        CComPtr<IXpsOMBrush> brush;
        EXPECT_EQ(XPS_E_INVALID_MARKUP, CComQIPtr<IXpsOMPath>(visual)->GetFillBrush(&brush)) << bad;
    }
    const auto [page, visual] = first("<Canvas RenderTransform=\"1,0,0,1,0\" Opacity=\"much\"/>");
    CComPtr<IXpsOMMatrixTransform> transform;
    EXPECT_EQ(XPS_E_INVALID_MARKUP, visual->GetTransform(&transform));
    FLOAT opacity = 0;
    EXPECT_EQ(S_OK, visual->GetOpacity(&opacity));
    EXPECT_EQ(1, opacity);
}

TEST(Dictionaries, ThatArePartsAreReadWrittenAndLookedInto) {
    PageModel model;
    const std::string markup =
        "<ResourceDictionary xmlns=\"" + xpsNamespace + "\" xmlns:k=\"" + keyNamespace +
        "\"><ImageBrush k:Key=\"i\" ImageSource=\"/Resources/i.png\" Viewbox=\"0,0,1,1\" "
        "Viewport=\"0,0,1,1\"/></ResourceDictionary>";
    const auto part = model.AddDictionary(L"/Resources/d.dict", markup);
    const std::string resources =
        "<FixedPage.Resources><ResourceDictionary Source=\"/Resources/d.dict\"/></FixedPage.Resources>";
    const CComPtr<IXpsOMPage> page = model.Read(PageOf(resources + "<Path Fill=\"{StaticResource i}\"/>"));
    CComPtr<IXpsOMBrush> brush;
    EXPECT_EQ(S_OK, PageModel::At<IXpsOMPath>(PageModel::Visuals(page), 0)->GetFillBrush(&brush));
    const CComQIPtr<IXpsOMImageBrush> found(brush);
    ASSERT_TRUE(found);
    CComPtr<IXpsOMImageResource> image;
    EXPECT_EQ(S_OK, found->GetImageResource(&image));
    EXPECT_EQ(model.image.p, image.p);
    CComPtr<IXpsOMDictionary> local;
    EXPECT_EQ(S_OK, page->GetDictionaryLocal(&local));
    EXPECT_FALSE(local);
    CComPtr<IXpsOMDictionary> dictionary;
    ASSERT_EQ(S_OK, page->GetDictionary(&dictionary));
    EXPECT_EQ(XPS_E_ALREADY_OWNED, page->SetDictionaryLocal(dictionary));
    const CComPtr<IStream> stream = PageModel::Stream({});
    ASSERT_EQ(S_OK, OvPlatform::WriteDictionary(dictionary, model.Name(L"/Resources/d.dict"), stream,
                                                XPS_DOCUMENT_TYPE_UNSPECIFIED));
    EXPECT_EQ(markup, PageModel::Bytes(stream));
    EXPECT_EQ(std::vector<std::string>{"/Resources/d.dict"}, PageModel::UsedBy(page));

    const CComPtr<IXpsOMPage> empty = model.Read(PageOf("<Canvas/>"));
    ASSERT_EQ(S_OK, empty->SetDictionaryResource(part));
    EXPECT_EQ(PageOf("<FixedPage.Resources><ResourceDictionary Source=\"../../../Resources/d.dict\"/>"
                     "</FixedPage.Resources><Canvas/>"),
              PageModel::Written(empty));
}

// A copy that nobody changed is new where it is set.
// Whatever is put in, taken out or renamed in between.
TEST(Dictionaries, FindTheFirstOfAKeyAndEachEntry) {
    PageModel model;
    const CComPtr<IXpsOMPage> page = model.Read(
        PageOf("<FixedPage.Resources><ResourceDictionary><Canvas x:Key=\"a\"/><Path x:Key=\"a\"/><Glyphs "
               "x:Key=\"b\" FontUri=\"/Resources/a.ttf\"/></ResourceDictionary></FixedPage.Resources>"));
    CComPtr<IXpsOMDictionary> dictionary;
    ASSERT_EQ(S_OK, page->GetDictionary(&dictionary));
    const auto placeOf = [&](LPCWSTR key, IXpsOMShareable* before) {
        CComPtr<IXpsOMShareable> entry;
        UINT32 index = 99;
        EXPECT_EQ(S_OK, dictionary->GetByKey(key, before, &entry));
        if (entry) {
            EXPECT_EQ(S_OK, dictionary->GetIndex(entry, &index));
        }
        return index;
    };
    EXPECT_EQ(0U, placeOf(L"a", nullptr));
    EXPECT_EQ(S_OK, dictionary->RemoveAt(0));
    EXPECT_EQ(0U, placeOf(L"a", nullptr)) << "the second one of that key";
    const auto brush = model.Solid(1, 2, 3, 4);
    EXPECT_EQ(S_OK, dictionary->InsertAt(0, L"c", brush));
    EXPECT_EQ(1U, placeOf(L"a", nullptr));
    EXPECT_EQ(99U, placeOf(L"a", brush));
    EXPECT_EQ(S_OK, dictionary->Append(L"d", model.Solid(1, 2, 3, 4)));
    EXPECT_EQ(3U, placeOf(L"d", nullptr));
    EXPECT_EQ(S_OK, dictionary->SetAt(3, L"e", model.Solid(1, 2, 3, 4)));
    EXPECT_EQ(99U, placeOf(L"d", nullptr));
    EXPECT_EQ(3U, placeOf(L"e", nullptr));
    EXPECT_EQ(S_OK, dictionary->SetAt(0, L"f", brush));
    EXPECT_EQ(99U, placeOf(L"c", nullptr));
    EXPECT_EQ(XPS_E_DUPLICATE_RESOURCE_KEYS, dictionary->Append(L"f", model.Solid(1, 2, 3, 4)));
    EXPECT_EQ(S_OK, dictionary->RemoveAt(1));
    EXPECT_EQ(1U, placeOf(L"b", nullptr));
    UINT32 index = 0;
    EXPECT_EQ(XPS_E_RESOURCE_NOT_OWNED, dictionary->GetIndex(model.Solid(1, 2, 3, 4), &index));
}

TEST(CopiedValues, AreWrittenWhereTheyAreSet) {
    PageModel model;
    const std::string shape = "<PathGeometry><PathFigure StartPoint=\"0,0\"><PolyLineSegment Points=\"1,1\"/>"
                              "</PathFigure></PathGeometry>";
    const CComPtr<IXpsOMPage> page =
        model.Read(PageOf("<Path><Path.Fill><SolidColorBrush Color=\"#FF010203\"/></Path.Fill><Path.Data>" +
                          shape + "</Path.Data></Path><Path Data=\"M0,0\" Fill=\"#FF000000\"/>"));
    const auto from = PageModel::At<IXpsOMPath>(PageModel::Visuals(page), 0);
    const auto to = PageModel::At<IXpsOMPath>(PageModel::Visuals(page), 1);
    CComPtr<IXpsOMBrush> brush;
    ASSERT_EQ(S_OK, from->GetFillBrushLocal(&brush));
    const CComQIPtr<IXpsOMSolidColorBrush> solid(brush);
    CComPtr<IXpsOMSolidColorBrush> copy;
    ASSERT_EQ(S_OK, solid->Clone(&copy));
    EXPECT_EQ(S_OK, to->SetFillBrushLocal(copy));
    CComPtr<IXpsOMGeometry> geometry, geometryCopy;
    ASSERT_EQ(S_OK, from->GetGeometryLocal(&geometry));
    ASSERT_EQ(S_OK, geometry->Clone(&geometryCopy));
    EXPECT_EQ(S_OK, to->SetGeometryLocal(geometryCopy));
    const std::string written = PageModel::Written(page);
    const std::string changed = written.substr(written.find("</Path>") + 7);
    EXPECT_NE(changed.find("#FF010203"), std::string::npos) << changed;
    EXPECT_NE(changed.find("1,1"), std::string::npos) << changed;
    EXPECT_EQ(changed.find("#FF000000"), std::string::npos) << changed;
    EXPECT_TRUE(model.Read(written));

    // Also one that leaves an element behind it.
    ASSERT_EQ(S_OK, from->SetFillBrushLocal(nullptr));
    EXPECT_EQ(S_OK, to->SetFillBrushLocal(brush));
    const std::string moved = PageModel::Written(page);
    EXPECT_EQ(moved.find("#FF010203"), moved.rfind("#FF010203"));
    EXPECT_NE(moved.find("#FF010203"), std::string::npos);
}

TEST(CopiedValues, LeaveTheirKeyAndWhatStandsAroundThemBehind) {
    PageModel model;
    const std::string dictionary =
        "<ResourceDictionary><Path x:Key=\"p\" Data=\"M0,0\"/></ResourceDictionary>";
    const CComPtr<IXpsOMPage> page =
        model.Read(PageOf("<FixedPage.Resources>" + dictionary + "</FixedPage.Resources>" + glyphsMarkup));
    CComPtr<IXpsOMDictionary> local, copy;
    ASSERT_EQ(S_OK, page->GetDictionaryLocal(&local));
    CComPtr<IXpsOMShareable> entry;
    ASSERT_EQ(S_OK, local->GetByKey(L"p", nullptr, &entry));
    const CComQIPtr<IXpsOMPath> path(entry);
    CComPtr<IXpsOMPath> visual;
    ASSERT_EQ(S_OK, path->Clone(&visual));
    const std::string appended = Appended(model, visual);
    EXPECT_NE(appended.find("M0,0"), std::string::npos);
    EXPECT_EQ(appended.find("Key"), std::string::npos) << appended;

    ASSERT_EQ(S_OK, local->Clone(&copy));
    CComPtr<IXpsOMRemoteDictionaryResource> remote;
    EXPECT_EQ(XPS_E_ALREADY_OWNED,
              model->CreateRemoteDictionaryResource(local, model.Name(L"/Resources/New.dict"), &remote));
    ASSERT_EQ(S_OK, model->CreateRemoteDictionaryResource(copy, model.Name(L"/Resources/New.dict"), &remote));
    EXPECT_EQ(remote->SetDictionary(local), XPS_E_ALREADY_OWNED);
    const CComQIPtr<IXpsOMRemoteDictionaryResource1> writable(remote);
    CComPtr<IStream> stream = PageModel::Stream({});
    ASSERT_EQ(S_OK, writable->Write1(stream, XPS_DOCUMENT_TYPE_XPS));
    const std::string part = PageModel::Bytes(stream);
    EXPECT_EQ(part.find("FixedPage"), std::string::npos) << part;
    EXPECT_NE(part.find("x:Key=\"p\""), std::string::npos) << part;
    model.AddDictionary(L"/Resources/Again.dict", part);
}

TEST(ColoursOfProfiles, TakeTheirProfileAlong) {
    PageModel model;
    const CComPtr<IXpsOMPage> from =
        model.Read(PageOf("<Path Data=\"M0,0\" Fill=\"ContextColor  ../../../Resources/p.icc 1,0.5\"/>"));
    const auto path = PageModel::At<IXpsOMPath>(PageModel::Visuals(from), 0);
    CComPtr<IXpsOMBrush> brush;
    ASSERT_EQ(S_OK, path->GetFillBrushLocal(&brush));
    EXPECT_EQ(S_OK, brush->SetOpacity(0.5F)); // which the attribute has no place for
    ASSERT_EQ(S_OK, path->SetFillBrushLocal(nullptr));
    const XPS_SIZE size{10, 10};
    CComPtr<IXpsOMPage> to;
    ASSERT_EQ(S_OK, model->CreatePage(&size, nullptr, model.Name(L"/top.fpage"), &to));
    const CComPtr<IXpsOMPath> other = Rectangle(model);
    EXPECT_EQ(S_OK, other->SetFillBrushLocal(brush));
    ASSERT_EQ(S_OK, PageModel::Visuals(to)->Append(other));
    EXPECT_EQ(std::vector<std::string>{"/Resources/p.icc"}, PageModel::UsedBy(to));
    const std::string text = PageModel::Written(to);
    EXPECT_NE(text.find("\"ContextColor  Resources/p.icc 1,0.5\""), std::string::npos) << text;
    const CComQIPtr<IXpsOMSolidColorBrush> solid(brush);
    XPS_COLOR color{};
    CComPtr<IXpsOMColorProfileResource> profile;
    EXPECT_EQ(S_OK, solid->GetColor(&color, &profile));
    EXPECT_EQ(profile, model.profile);
    EXPECT_EQ(color.value.context.channels[1], 0.5F);
}

TEST(SmoothCurves, BeginAnewBehindAnotherFigure) {
    PageModel model;
    for (const char* const data : {"M0,0 C1,1 2,2 3,3 M9,9 S10,8 11,9", "M9,9 C1,1 2,2 3,3 Z S10,8 11,9"}) {
        const CComPtr<IXpsOMPage> page = model.Read(PageOf("<Path Data=\"" + std::string(data) + "\"/>"));
        CComPtr<IXpsOMGeometry> geometry;
        ASSERT_EQ(S_OK, PageModel::At<IXpsOMPath>(PageModel::Visuals(page), 0)->GetGeometryLocal(&geometry));
        CComPtr<IXpsOMGeometryFigureCollection> figures;
        ASSERT_EQ(S_OK, geometry->GetFigures(&figures));
        CComPtr<IXpsOMGeometryFigure> figure;
        ASSERT_EQ(S_OK, figures->GetAt(1, &figure));
        std::vector<FLOAT> points(6);
        UINT32 count = 6;
        ASSERT_EQ(S_OK, figure->GetSegmentData(&count, points.data()));
        EXPECT_EQ(points, (std::vector<FLOAT>{9, 9, 10, 8, 11, 9})) << data;
    }
}

} // namespace
