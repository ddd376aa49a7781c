#include "PageSupport.h"
#include "Support/FailureSweep.h"

namespace {

/// A page with a text on it, and what is to come onto it.
struct StampedPage {
    PageModel model;
    CComPtr<IXpsOMPage> page = model.Read(PageOf("<Path Data=\"M 0,0\" Fill=\"#FF000000\"/>" + glyphsMarkup));
    CComPtr<IXpsOMVisualCollection> visuals = PageModel::Visuals(page);
    CComPtr<IXpsOMPath> path = PageModel::At<IXpsOMPath>(visuals, 0);
    CComPtr<IXpsOMGlyphs> glyphs = PageModel::At<IXpsOMGlyphs>(visuals, 1);
    CComPtr<IXpsOMGlyphs> text = model.Text(L"new");
    CComPtr<IXpsOMSolidColorBrush> brush = model.Solid(1, 2, 3, 4);
    CComPtr<IStream> stream = PageModel::Stream({});

    std::string State() const { return PageModel::Written(page); }
};

struct SweptEdit {
    const char* name;
    HRESULT (*edit)(StampedPage& world);
};

const SweptEdit edits[] = {
    {"Append",
     [](StampedPage& world) {
         CComPtr<IUnknown> owner;
         const HRESULT result = world.text->GetOwner(&owner);
         return FAILED(result) || owner ? result : world.visuals->Append(world.text);
     }},
    {"Fill", [](StampedPage& world) { return world.path->SetFillBrushLocal(world.brush); }},
    {"Font", [](StampedPage& world) { return world.glyphs->SetFontResource(world.model.font); }},
    {"Text",
     [](StampedPage& world) {
         CComPtr<IXpsOMGlyphsEditor> editor;
         HRESULT result = world.glyphs->GetGlyphsEditor(&editor);
         if (SUCCEEDED(result)) result = editor->SetUnicodeString(L"other");
         return SUCCEEDED(result) ? editor->ApplyEdits() : result;
     }},
    {"Write", [](StampedPage& world) { return world.page->Write(world.stream, FALSE); }},
    {"Clone",
     [](StampedPage& world) {
         CComPtr<IXpsOMPage> clone;
         return world.page->Clone(&clone);
     }},
};

TEST(PageEdits, LeaveThePageAsItWasOrAsAskedWhereACallFails) {
    for (const SweptEdit& swept : edits)
        FailureSweep<StampedPage>([] { return std::make_unique<StampedPage>(); },
                                  [&](StampedPage& world) { return SweptAnswer(swept.edit(world)); })
            .Run(swept.name);
}

} // namespace
