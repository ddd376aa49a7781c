// Any bytes as a page that is read as objects: what is taken comes back byte for byte, a text that is
// appended changes nothing else, and what is written of changes, copies and moves is a page again.

#include <ObjectModel/PageObjects.h>

#include <atlcomcli.h>
#include <countedbase.h>
#include <xpsobjectmodel_1.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

void Check(bool holds) {
    if (!holds) std::abort();
}
void Must(HRESULT result) { Check(SUCCEEDED(result)); }

IXpsOMObjectFactory& Factory() {
    static const CComPtr<IXpsOMObjectFactory> factory = [] {
        CComPtr<IXpsOMObjectFactory> made;
        Must(made.CoCreateInstance(__uuidof(XpsOMObjectFactory)));
        return made;
    }();
    return *factory;
}

CComPtr<IOpcPartUri> Name(const wchar_t* name) {
    CComPtr<IOpcPartUri> uri;
    Must(Factory().CreatePartUri(name, &uri));
    return uri;
}

CComPtr<IStream> Stream(std::string_view bytes) {
    CComPtr<IStream> stream;
    Must(::CreateStreamOnHGlobal(nullptr, TRUE, &stream));
    ULONG written = 0;
    if (!bytes.empty()) Must(stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written));
    Must(stream->Seek({}, STREAM_SEEK_SET, nullptr));
    return stream;
}

std::string Bytes(IStream* stream) {
    std::string bytes;
    Must(stream->Seek({}, STREAM_SEEK_SET, nullptr));
    std::array<char, 4096> block;
    for (ULONG read = 1; read != 0; bytes.append(block.data(), read))
        Must(stream->Read(block.data(), static_cast<ULONG>(block.size()), &read));
    return bytes;
}

HRESULT Make(IOpcPartUri* name, IXpsOMFontResource** made) {
    return Factory().CreateFontResource(Stream("f"), XPS_FONT_EMBEDDING_NORMAL, name, FALSE, made);
}
HRESULT Make(IOpcPartUri* name, IXpsOMImageResource** made) {
    return Factory().CreateImageResource(Stream("i"), XPS_IMAGE_TYPE_PNG, name, made);
}
HRESULT Make(IOpcPartUri* name, IXpsOMColorProfileResource** made) {
    return Factory().CreateColorProfileResource(Stream("p"), name, made);
}
HRESULT Make(IOpcPartUri* name, IXpsOMRemoteDictionaryResource** made) {
    CComPtr<IXpsOMDictionary> dictionary;
    Must(Factory().CreateDictionary(&dictionary));
    return Factory().CreateRemoteDictionaryResource(dictionary, name, made);
}

/// Has a resource of whatever name it is asked for.
template <class Interface, class Resource>
class AllResources final : public OvPlatform::CountedBase<OvPlatform::PlainEntry, Interface> {
public:
    HRESULT STDMETHODCALLTYPE GetCount(UINT32* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetAt(UINT32, Resource**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InsertAt(UINT32, Resource*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveAt(UINT32) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetAt(UINT32, Resource*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Append(Resource*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetByPartName(IOpcPartUri* name, Resource** resource) override {
        return Make(name, resource);
    }
};

class EveryPart final : public OvPlatform::CountedBase<OvPlatform::PlainEntry, IXpsOMPartResources> {
public:
    HRESULT STDMETHODCALLTYPE GetFontResources(IXpsOMFontResourceCollection** all) override {
        *all = new AllResources<IXpsOMFontResourceCollection, IXpsOMFontResource>;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetImageResources(IXpsOMImageResourceCollection** all) override {
        *all = new AllResources<IXpsOMImageResourceCollection, IXpsOMImageResource>;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetColorProfileResources(IXpsOMColorProfileResourceCollection** all) override {
        *all = new AllResources<IXpsOMColorProfileResourceCollection, IXpsOMColorProfileResource>;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE
    GetRemoteDictionaryResources(IXpsOMRemoteDictionaryResourceCollection** all) override {
        *all = new AllResources<IXpsOMRemoteDictionaryResourceCollection, IXpsOMRemoteDictionaryResource>;
        return S_OK;
    }
};

CComPtr<IXpsOMPage> Read(std::string_view bytes, const wchar_t* name) {
    CComPtr<IXpsOMPartResources> resources;
    resources.Attach(new EveryPart);
    CComPtr<IXpsOMPage> page;
    const HRESULT result = Factory().CreatePageFromStream(Stream(bytes), Name(name), resources, FALSE, &page);
    Check(SUCCEEDED(result) == (page.p != nullptr));
    return page;
}

std::string Write(IXpsOMPage* page) {
    const CComPtr<IStream> stream = Stream({});
    Must(page->Write(stream, FALSE));
    return Bytes(stream);
}

CComPtr<IXpsOMVisualCollection> VisualsOf(IXpsOMPage* page) {
    CComPtr<IXpsOMVisualCollection> visuals;
    Must(page->GetVisuals(&visuals));
    return visuals;
}

UINT32 CountOf(IXpsOMVisualCollection* visuals) {
    UINT32 count = 0;
    Must(visuals->GetCount(&count));
    return count;
}

/// Asks for all that has objects, as deep as it goes. Values that are none are refused.
void Visit(IXpsOMVisualCollection* visuals) {
    for (UINT32 index = 0, count = CountOf(visuals); index < count; ++index) {
        CComPtr<IXpsOMVisual> visual;
        Must(visuals->GetAt(index, &visual));
        CComPtr<IXpsOMMatrixTransform> transform;
        CComPtr<IXpsOMGeometry> geometry;
        CComPtr<IXpsOMBrush> brush;
        CComPtr<IXpsOMBrush> mask;
        visual->GetTransform(&transform);
        visual->GetOpacityMaskBrush(&mask);
        if (const CComQIPtr<IXpsOMPath> path(visual); path) {
            path->GetFillBrush(&brush);
            if (SUCCEEDED(path->GetGeometry(&geometry)) && geometry) {
                CComPtr<IXpsOMGeometryFigureCollection> figures;
                geometry->GetFigures(&figures);
            }
        } else if (const CComQIPtr<IXpsOMGlyphs> glyphs(visual); glyphs) {
            CComPtr<IXpsOMGlyphsEditor> editor;
            glyphs->GetFillBrush(&brush);
            // What was read and says nothing new is taken, and stays, or is refused.
            if (SUCCEEDED(glyphs->GetGlyphsEditor(&editor))) editor->ApplyEdits();
        } else if (const CComQIPtr<IXpsOMCanvas> canvas(visual); canvas) {
            CComPtr<IXpsOMVisualCollection> inside;
            Must(canvas->GetVisuals(&inside));
            Visit(inside);
        }
    }
}

CComPtr<IXpsOMGlyphs> Stamp() {
    CComPtr<IXpsOMFontResource> font;
    Must(Make(Name(L"/stamp.ttf"), &font));
    CComPtr<IXpsOMGlyphs> glyphs;
    Must(Factory().CreateGlyphs(font, &glyphs));
    CComPtr<IXpsOMGlyphsEditor> editor;
    Must(glyphs->GetGlyphsEditor(&editor));
    Must(editor->SetUnicodeString(L"{a\"<"));
    Must(editor->ApplyEdits());
    return glyphs;
}

/// Whether it is the bytes with something put in.
bool Extends(std::string_view whole, std::string_view bytes) {
    const auto ahead = std::mismatch(bytes.begin(), bytes.end(), whole.begin(), whole.end()).first;
    const auto behind = std::mismatch(bytes.rbegin(), bytes.rend(), whole.rbegin(), whole.rend()).first;
    return (ahead - bytes.begin()) + (behind - bytes.rbegin()) >= static_cast<std::ptrdiff_t>(bytes.size());
}

void AppendStamp(const std::string& bytes, IXpsOMPage* page) {
    const UINT32 count = CountOf(VisualsOf(page));
    Must(VisualsOf(page)->Append(Stamp()));
    const std::string stamped = Write(page);
    // A root that was all one tag has got an end tag.
    Check(Extends(stamped, bytes) || count == 0);
    const CComPtr<IXpsOMPage> again = Read(stamped, L"/a/b.fpage");
    Check(again && CountOf(VisualsOf(again)) == count + 1 && Write(again) == stamped);
}

void ChangeAndMove(const std::string& bytes) {
    const CComPtr<IXpsOMPage> page = Read(bytes, L"/a/b.fpage");
    const CComPtr<IXpsOMVisualCollection> visuals = VisualsOf(page);
    const UINT32 count = CountOf(visuals);
    for (UINT32 index = 0; index < count && index < 8; ++index) {
        CComPtr<IXpsOMVisual> visual;
        Must(visuals->GetAt(index, &visual));
        Must(visual->SetOpacity(0.5F));
    }
    if (const CComPtr<IXpsOMPage> again = Read(Write(page), L"/a/b.fpage"); true)
        Check(again && CountOf(VisualsOf(again)) == count);
    const XPS_SIZE size{10, 10};
    CComPtr<IXpsOMPage> other;
    Must(Factory().CreatePage(&size, nullptr, Name(L"/other.fpage"), &other));
    for (UINT32 moved = 0; moved < 4 && CountOf(visuals) != 0; ++moved) {
        CComPtr<IXpsOMVisual> visual;
        Must(visuals->GetAt(0, &visual));
        Must(visuals->RemoveAt(0));
        Must(VisualsOf(other)->Append(visual));
    }
    for (IXpsOMPage* each : {page.p, other.p}) {
        const CComPtr<IXpsOMPage> again = Read(Write(each), each == other ? L"/other.fpage" : L"/a/b.fpage");
        Check(again && CountOf(VisualsOf(again)) == CountOf(VisualsOf(each)));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const CComPtr<IXpsOMPage> page = Read(bytes, L"/a/b.fpage");
    if (!page) return 0;
    Check(Write(page) == bytes);
    Visit(VisualsOf(page));
    Check(Write(page) == bytes);
    Must(page->SetPartName(Name(L"/elsewhere.fpage")));
    Check(Read(Write(page), L"/elsewhere.fpage"));
    Must(page->SetPartName(Name(L"/a/b.fpage")));
    AppendStamp(bytes, page);
    ChangeAndMove(bytes);
    return 0;
}
