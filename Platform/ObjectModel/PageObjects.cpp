#include "ObjectModel/PageObjects.h"

#include "ObjectModel/BrushObjects.h"
#include "ObjectModel/CanvasObject.h"
#include "ObjectModel/GeometryObject.h"
#include "ObjectModel/GlyphsObject.h"
#include "ObjectModel/MarkupNumbers.h"
#include "ObjectModel/MarkupOutput.h"
#include "ObjectModel/MatrixTransformObject.h"
#include "ObjectModel/PageObject.h"
#include "ObjectModel/PartObject.h"
#include "ObjectModel/PathObject.h"
#include "Xml/DocumentBytes.h"

#include <streamcopy.h>

#include <algorithm>

namespace OvPlatform {

namespace {

template <class Interface, class Make>
HRESULT CreateObject(Interface** place, Make&& make) {
    return ElementCall([&] {
        RequirePlace(place);
        *place = nullptr;
        *place = make();
    });
}

std::string BytesOf(IStream* stream) {
    VARIANT source{};
    source.vt = VT_UNKNOWN;
    source.punkVal = stream;
    std::string bytes;
    ThrowIfFailed(DocumentBytes::Read(source, bytes));
    return bytes;
}

std::shared_ptr<const PageSource> ReadSource(IStream* markup, IOpcPartUri* name,
                                             IXpsOMPartResources* resources, ElementKind root) {
    RequirePlace(markup);
    RequirePlace(name);
    RequirePlace(resources);
    return PageSource::Read(BytesOf(markup), PartNameOf(name), resources, root);
}

XPS_DOCUMENT_TYPE TypeOf(const PageElement& element, XPS_DOCUMENT_TYPE wanted) {
    if (wanted != XPS_DOCUMENT_TYPE_UNSPECIFIED) return wanted;
    return element.Source() ? element.Source()->Type() : XPS_DOCUMENT_TYPE_XPS;
}

// What stands around the root of a part that was read stays too. Around another element, a cloned dictionary
// say, stands what it is no part of.
void WritePart(PageElement& root, MarkupWriter& out) {
    const bool isRoot = root.IsInSource() && root.Index() == 0;
    const PageSource* const source = isRoot ? root.Source().get() : nullptr;
    if (source != nullptr) out.Copy(*source, 0, source->At(root.Index()).begin);
    root.Write(out);
    if (source != nullptr) out.Copy(*source, source->At(root.Index()).end, source->Text().size());
}

void WriteTo(PageElement& root, const std::string& partName, ISequentialStream* stream,
             XPS_DOCUMENT_TYPE type) {
    RequirePlace(stream);
    const auto write = [stream](std::string_view bytes) {
        ULONGLONG written = 0;
        ThrowIfFailed(WriteWhole(stream, bytes.data(), bytes.size(), &written));
    };
    MarkupOutput output(write, root.Source().get());
    MarkupWriter out([&](std::string_view text) { output.Write(text); }, partName, TypeOf(root, type));
    WritePart(root, out);
    output.Flush();
}

std::vector<UsedPart> PartsOf(PageElement& root, const std::string& partName) {
    MarkupWriter out([](std::string_view) {}, partName, TypeOf(root, XPS_DOCUMENT_TYPE_UNSPECIFIED));
    WritePart(root, out);
    return out.Parts();
}

// Of a dictionary that is new, the name of its part is not known yet.
std::string PartNameIn(const PageElement& element) {
    return element.Source() ? element.Source()->PartName() : std::string(packageRoot);
}

} // namespace

HRESULT CreateCanvasObject(IXpsOMCanvas** canvas) {
    return CreateObject(canvas, [] { return new CanvasObject; });
}

HRESULT CreateGlyphsObject(IXpsOMFontResource* font, IXpsOMGlyphs** glyphs) {
    return CreateObject(glyphs, [&] {
        RequirePlace(font);
        CComPtr<IXpsOMGlyphs> made;
        made.Attach(new GlyphsObject);
        ThrowIfFailed(made->SetFontResource(font));
        return made.Detach();
    });
}

HRESULT CreatePathObject(IXpsOMPath** path) {
    return CreateObject(path, [] { return new PathObject; });
}

HRESULT CreateGeometryObject(IXpsOMGeometry** geometry) {
    return CreateObject(geometry, [] { return new GeometryObject; });
}

HRESULT CreateGeometryFigureObject(const XPS_POINT* startPoint, IXpsOMGeometryFigure** figure) {
    return CreateObject(figure, [&] {
        RequirePlace(startPoint);
        CheckFinite(startPoint->x);
        CheckFinite(startPoint->y);
        FigureData data;
        data.start = *startPoint;
        return new FigureObject(std::move(data));
    });
}

HRESULT CreateMatrixTransformObject(const XPS_MATRIX* matrix, IXpsOMMatrixTransform** transform) {
    return CreateObject(transform, [&] {
        RequirePlace(matrix);
        return new MatrixTransformObject(*matrix);
    });
}

HRESULT CreateSolidColorBrushObject(const XPS_COLOR* color, IXpsOMColorProfileResource* profile,
                                    IXpsOMSolidColorBrush** brush) {
    return CreateObject(brush, [&] {
        RequirePlace(color);
        return new SolidColorBrushObject(*color, profile);
    });
}

HRESULT CreateImageBrushObject(IXpsOMImageResource* image, const XPS_RECT* viewbox, const XPS_RECT* viewport,
                               IXpsOMImageBrush** brush) {
    return CreateObject(brush, [&] {
        RequirePlace(image);
        RequirePlace(viewbox);
        RequirePlace(viewport);
        return new ImageBrushObject(image, *viewbox, *viewport);
    });
}

HRESULT CreateDictionaryObject(IXpsOMDictionary** dictionary) {
    return CreateObject(dictionary, [] { return new DictionaryObject; });
}

HRESULT CreatePageObject(const XPS_SIZE* dimensions, LPCWSTR language, IOpcPartUri* name,
                         IXpsOMPage1** page) {
    return CreateObject(page, [&] {
        RequirePlace(dimensions);
        RequirePlace(name);
        return new PageObject(*dimensions, language, name);
    });
}

HRESULT ReadPage(IStream* markup, IOpcPartUri* name, IXpsOMPartResources* resources, BOOL,
                 IXpsOMPage1** page) {
    return CreateObject(page, [&] {
        return new PageObject(ReadSource(markup, name, resources, ElementKind::FixedPage), name);
    });
}

HRESULT ReadDictionary(IStream* markup, IOpcPartUri* name, IXpsOMPartResources* resources,
                       IXpsOMDictionary** dictionary) {
    return CreateObject(dictionary, [&] {
        return new DictionaryObject(ReadSource(markup, name, resources, ElementKind::ResourceDictionary), 0);
    });
}

HRESULT WritePage(IXpsOMPage* page, ISequentialStream* stream, XPS_DOCUMENT_TYPE type) {
    return ElementCall([&] { WriteTo(ElementOf(page), PartNameOf(page), stream, type); });
}

HRESULT WriteDictionary(IXpsOMDictionary* dictionary, IOpcPartUri* name, ISequentialStream* stream,
                        XPS_DOCUMENT_TYPE type) {
    return ElementCall([&] {
        RequirePlace(name);
        WriteTo(ElementOf(dictionary), PartNameOf(name), stream, type);
    });
}

HRESULT ListUsedParts(IXpsOMPage* page, std::vector<UsedPart>& parts) {
    return ElementCall([&] { parts = PartsOf(ElementOf(page), PartNameOf(page)); });
}

HRESULT ListUsedParts(IXpsOMDictionary* dictionary, std::vector<UsedPart>& parts) {
    return ElementCall([&] {
        PageElement& element = ElementOf(dictionary);
        parts = PartsOf(element, PartNameIn(element));
    });
}

bool IsPageChanged(IXpsOMPage* page) {
    bool isChanged = true;
    ElementCall([&] { isChanged = ElementOf(page).IsTouched(); });
    return isChanged;
}

bool RefersToRenamedParts(IXpsOMPage* page) {
    bool refers = false;
    ElementCall([&] {
        const PageSource* const source = ElementOf(page).Source().get();
        if (source == nullptr) return;
        const std::vector<SourcePart>& parts = source->Parts();
        refers = std::any_of(parts.begin(), parts.end(), [](const SourcePart& part) {
            return part.resource && PartNameOf(part.resource) != part.name;
        });
    });
    return refers;
}

HRESULT SetPageOwner(IXpsOMPage* page, IXpsOMPageReference* owner) {
    return ElementCall([&] {
        auto& object = dynamic_cast<PageObject&>(ElementOf(page));
        IXpsOMPageReference* const before = object.PageReference();
        if (owner != nullptr && before != nullptr && before != owner)
            throw MarkupFailure(XPS_E_ALREADY_OWNED);
        object.BelongTo(owner);
    });
}

HRESULT SetDictionaryOwner(IXpsOMDictionary* dictionary, IUnknown* owner) {
    return ElementCall([&] {
        auto& object = dynamic_cast<DictionaryObject&>(ElementOf(dictionary));
        IUnknown* const before = object.OwnerOfPart();
        const bool isTaken = object.Owner() != nullptr || (before != nullptr && before != owner);
        if (owner != nullptr && isTaken) throw MarkupFailure(XPS_E_ALREADY_OWNED);
        object.BelongTo(owner);
    });
}

HRESULT PageObject::Clone(IXpsOMPage** page) {
    return ElementCall([&] {
        RequirePlace(page);
        *page = nullptr;
        std::string text;
        MarkupWriter out([&](std::string_view piece) { text += piece; }, PartNameOf(m_name),
                         TypeOf(*this, XPS_DOCUMENT_TYPE_UNSPECIFIED));
        WritePart(*this, out);
        std::vector<SourcePart> parts;
        for (const UsedPart& part : out.Parts())
            parts.push_back({part.name, part.resource});
        *page = new PageObject(
            PageSource::FromText(std::move(text), PartNameOf(m_name), parts, Source().get()), m_name);
    });
}

} // namespace OvPlatform
