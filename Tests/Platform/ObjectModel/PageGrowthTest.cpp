#include "PageSupport.h"
#include "Support/Growth.h"

#include <memory>

namespace {

using Run = std::function<void()>;

// Reads it, and says nothing of what becomes of it.
Run Reading(std::string bytes) {
    const auto model = std::make_shared<PageModel>();
    return [model, bytes = std::move(bytes)] {
        CComPtr<IXpsOMPage> page;
        model->TryRead(bytes, page);
    };
}

const Item oneText = [](std::size_t) { return glyphsMarkup; };

Run LookUpAll(std::size_t n) {
    const auto model = std::make_shared<PageModel>();
    const std::string entries = Times(n, [](std::size_t index) {
        return "<SolidColorBrush x:Key=\"k" + std::to_string(index) + "\" Color=\"#123456\"/>";
    });
    const std::string paths = Times(n, [](std::size_t index) {
        return "<Path Fill=\"{StaticResource k" + std::to_string(index) + "}\"/>";
    });
    const CComPtr<IXpsOMPage> page =
        model->Read(PageOf("<FixedPage.Resources><ResourceDictionary>" + entries +
                           "</ResourceDictionary></FixedPage.Resources>" + paths));
    return [model, page] {
        const auto visuals = PageModel::Visuals(page);
        for (UINT32 index = 0, count = PageModel::Count(visuals); index < count; ++index) {
            CComPtr<IXpsOMBrush> brush;
            PageModel::At<IXpsOMPath>(visuals, index)->GetFillBrush(&brush);
        }
    };
}

// Appended, looked for by key and by themselves, and given other keys.
Run FillDictionary(std::size_t n) {
    const auto model = std::make_shared<PageModel>();
    return [model, n] {
        CComPtr<IXpsOMDictionary> dictionary;
        (*model)->CreateDictionary(&dictionary);
        std::vector<CComPtr<IXpsOMSolidColorBrush>> brushes;
        const auto keyOf = [](std::size_t index) { return L"k" + std::to_wstring(index); };
        for (std::size_t index = 0; index < n; ++index) {
            brushes.push_back(model->Solid(0, 0, 0, 0));
            dictionary->Append(keyOf(index).c_str(), brushes.back());
        }
        UINT32 place = 0;
        for (std::size_t index = 0; index < n; ++index) {
            CComPtr<IXpsOMShareable> entry;
            dictionary->GetByKey(keyOf(index).c_str(), brushes[n / 2], &entry);
            dictionary->GetIndex(brushes[index], &place);
            dictionary->SetAt(place, (keyOf(index) + L"b").c_str(), brushes[index]);
        }
    };
}

Run ChangeAll(std::size_t n) {
    const auto model = std::make_shared<PageModel>();
    const CComPtr<IXpsOMPage> page = model->Read(PageOf(Times(n, oneText)));
    return [model, page] {
        const auto visuals = PageModel::Visuals(page);
        for (UINT32 index = 0, count = PageModel::Count(visuals); index < count; ++index)
            PageModel::At<IXpsOMGlyphs>(visuals, index)->SetOpacity(0.5F);
        for (int index = 0; index < 100; ++index)
            visuals->Append(model->Text(L"x"));
        PageModel::Written(page);
    };
}

// One value of so many numbers.
Run ReadValue(const std::string& markup) {
    const auto model = std::make_shared<PageModel>();
    const CComPtr<IXpsOMPage> page = model->Read(PageOf(markup));
    return [model, page] {
        const auto visual = PageModel::At<IXpsOMVisual>(PageModel::Visuals(page), 0);
        if (const CComQIPtr<IXpsOMPath> path(visual); path) {
            CComPtr<IXpsOMGeometry> geometry;
            path->GetGeometry(&geometry);
        } else if (const CComQIPtr<IXpsOMGlyphs> glyphs(visual); glyphs) {
            CComPtr<IXpsOMGlyphsEditor> editor;
            glyphs->GetGlyphsEditor(&editor);
            editor->ApplyEdits();
        }
    };
}

std::string Path(const std::string& attributes) { return "<Path " + attributes + "/>"; }

const GrowthCase growths[] = {
    {"Texts", [](std::size_t n) { return Reading(PageOf(Times(n, oneText))); }},
    {"TextsThatNeverEnd",
     [](std::size_t n) { return Reading(PageOf("").substr(0, 150) + Times(n, oneText)); }},
    {"FontsByManyNames",
     [](std::size_t n) {
         return Reading(PageOf(Times(n, [](std::size_t index) {
             return "<Glyphs FontUri=\"" + std::string(index % 100, '.') + "/../Resources/a.ttf#" +
                    std::to_string(index) + "\"/>";
         })));
     }},
    {"PartsThatAreNotThere",
     [](std::size_t n) {
         return Reading(PageOf(
             "<mc:AlternateContent "
             "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\">" +
             Times(n,
                   [](std::size_t index) { return "<Glyphs FontUri=\"/" + std::to_string(index) + "\"/>"; }) +
             "</mc:AlternateContent>"));
     }},
    {"Declarations",
     [](std::size_t n) {
         return Reading(PageOf(Times(n, [](std::size_t index) {
             return "<a" + std::to_string(index) + ":e xmlns:a" + std::to_string(index) + "=\"" +
                    xpsNamespace + "\"/>";
         })));
     },
     40'000}, // with some hundred thousand names libxml2's dictionary has more of them than places
    {"ColoursOfManyWords",
     [](std::size_t n) {
         std::string attributes;
         for (int index = 0; index < 100; ++index)
             attributes += " a" + std::to_string(index) + "=\"ContextColor /Resources/p.icc" +
                           Times(n, [](std::size_t) { return " 1"; }) + "\"";
         return Reading(PageOf(Path(attributes)));
     }},
    {"LookUps", LookUpAll},
    {"Changes", ChangeAll},
    {"Entries", FillDictionary},
    {"Figures",
     [](std::size_t n) {
         return ReadValue(
             Path("Data=\"" + Times(n, [](std::size_t) { return "M 1,1 l 2,3 c 1,2 3,4 5,6 z "; }) + "\""));
     }},
    {"Indices",
     [](std::size_t n) {
         return ReadValue("<Glyphs FontUri=\"/Resources/a.ttf\" Indices=\"" +
                          Times(n, [](std::size_t) { return "(1:2)3,4;5,,6;"; }) + "\"/>");
     }},
};

class PageGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(PageGrowth, IsInProportion) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(All, PageGrowth, testing::ValuesIn(growths), GrowthName);

} // namespace
