#pragma once

#include <ObjectModel/PageObjects.h>

#include <gtest/gtest.h>
#include <objbase.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

/// A thread's model with a few resources, by which pages are read from texts and written.
class PageModel {
public:
    PageModel() {
        ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        EXPECT_EQ(S_OK, m_factory.CoCreateInstance(__uuidof(XpsOMObjectFactory)));
        EXPECT_EQ(S_OK, m_factory->CreatePartResources(&m_resources));
        font = AddFont(L"/Resources/a.ttf");
        image = AddImage(L"/Resources/i.png");
        profile = AddProfile(L"/Resources/p.icc");
    }
    PageModel(const PageModel&) = delete;
    PageModel& operator=(const PageModel&) = delete;
    ~PageModel() {
        font.Release();
        image.Release();
        profile.Release();
        m_resources.Release();
        m_factory.Release();
        ::CoUninitialize();
    }

    CComPtr<IXpsOMFontResource> font;
    CComPtr<IXpsOMImageResource> image;
    CComPtr<IXpsOMColorProfileResource> profile;

    IXpsOMObjectFactory* operator->() const { return m_factory; }
    IXpsOMPartResources* Resources() const { return m_resources; }

    CComPtr<IOpcPartUri> Name(const wchar_t* name) const {
        CComPtr<IOpcPartUri> uri;
        EXPECT_EQ(S_OK, m_factory->CreatePartUri(name, &uri));
        return uri;
    }

    static CComPtr<IStream> Stream(std::string_view bytes) {
        CComPtr<IStream> stream;
        EXPECT_EQ(S_OK, ::CreateStreamOnHGlobal(nullptr, TRUE, &stream));
        if (bytes.empty()) return stream;
        ULONG written = 0;
        EXPECT_EQ(S_OK, stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written));
        EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_SET, nullptr));
        return stream;
    }

    static std::string Bytes(IStream* stream) {
        std::string bytes;
        EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_SET, nullptr));
        std::array<char, 65536> block;
        for (ULONG read = 1; read != 0; bytes.append(block.data(), read))
            EXPECT_EQ(S_OK, stream->Read(block.data(), static_cast<ULONG>(block.size()), &read));
        return bytes;
    }

    CComPtr<IXpsOMFontResource> AddFont(const wchar_t* name) {
        CComPtr<IXpsOMFontResource> added;
        EXPECT_EQ(S_OK, m_factory->CreateFontResource(Stream("font"), XPS_FONT_EMBEDDING_NORMAL, Name(name),
                                                      FALSE, &added));
        CComPtr<IXpsOMFontResourceCollection> all;
        EXPECT_EQ(S_OK, m_resources->GetFontResources(&all));
        EXPECT_EQ(S_OK, all->Append(added));
        return added;
    }
    CComPtr<IXpsOMImageResource> AddImage(const wchar_t* name) {
        CComPtr<IXpsOMImageResource> added;
        EXPECT_EQ(S_OK,
                  m_factory->CreateImageResource(Stream("image"), XPS_IMAGE_TYPE_PNG, Name(name), &added));
        CComPtr<IXpsOMImageResourceCollection> all;
        EXPECT_EQ(S_OK, m_resources->GetImageResources(&all));
        EXPECT_EQ(S_OK, all->Append(added));
        return added;
    }
    CComPtr<IXpsOMColorProfileResource> AddProfile(const wchar_t* name) {
        CComPtr<IXpsOMColorProfileResource> added;
        EXPECT_EQ(S_OK, m_factory->CreateColorProfileResource(Stream("profile"), Name(name), &added));
        CComPtr<IXpsOMColorProfileResourceCollection> all;
        EXPECT_EQ(S_OK, m_resources->GetColorProfileResources(&all));
        EXPECT_EQ(S_OK, all->Append(added));
        return added;
    }
    CComPtr<IXpsOMRemoteDictionaryResource> AddDictionary(const wchar_t* name, std::string_view markup) {
        CComPtr<IXpsOMRemoteDictionaryResource> added;
        EXPECT_EQ(S_OK, m_factory->CreateRemoteDictionaryResourceFromStream(Stream(markup), Name(name),
                                                                            m_resources, &added));
        CComPtr<IXpsOMRemoteDictionaryResourceCollection> all;
        EXPECT_EQ(S_OK, m_resources->GetRemoteDictionaryResources(&all));
        EXPECT_EQ(S_OK, all->Append(added));
        return added;
    }

    HRESULT TryRead(std::string_view bytes, CComPtr<IXpsOMPage>& page) const {
        return m_factory->CreatePageFromStream(Stream(bytes), Name(pageName), m_resources, FALSE, &page);
    }
    CComPtr<IXpsOMPage> Read(std::string_view bytes) const {
        CComPtr<IXpsOMPage> page;
        EXPECT_EQ(S_OK, TryRead(bytes, page)) << bytes.substr(0, 500);
        return page;
    }

    static std::string Written(IXpsOMPage* page) {
        CComPtr<IStream> stream = Stream({});
        EXPECT_EQ(S_OK, page->Write(stream, FALSE));
        return Bytes(stream);
    }

    /// A text of that font, black, 16 high.
    CComPtr<IXpsOMGlyphs> Text(const wchar_t* text) const {
        CComPtr<IXpsOMGlyphs> glyphs;
        EXPECT_EQ(S_OK, m_factory->CreateGlyphs(font, &glyphs));
        const XPS_POINT origin{10, 20};
        EXPECT_EQ(S_OK, glyphs->SetOrigin(&origin));
        EXPECT_EQ(S_OK, glyphs->SetFontRenderingEmSize(16));
        EXPECT_EQ(S_OK, glyphs->SetFillBrushLocal(Solid(0xFF, 0, 0, 0)));
        CComPtr<IXpsOMGlyphsEditor> editor;
        EXPECT_EQ(S_OK, glyphs->GetGlyphsEditor(&editor));
        EXPECT_EQ(S_OK, editor->SetUnicodeString(text));
        EXPECT_EQ(S_OK, editor->ApplyEdits());
        return glyphs;
    }

    CComPtr<IXpsOMSolidColorBrush> Solid(UINT8 alpha, UINT8 red, UINT8 green, UINT8 blue) const {
        XPS_COLOR color{};
        color.colorType = XPS_COLOR_TYPE_SRGB;
        color.value.sRGB = {alpha, red, green, blue};
        CComPtr<IXpsOMSolidColorBrush> brush;
        EXPECT_EQ(S_OK, m_factory->CreateSolidColorBrush(&color, nullptr, &brush));
        return brush;
    }

    static CComPtr<IXpsOMVisualCollection> Visuals(IXpsOMPage* page) {
        CComPtr<IXpsOMVisualCollection> visuals;
        EXPECT_EQ(S_OK, page->GetVisuals(&visuals));
        return visuals;
    }
    static UINT32 Count(IXpsOMVisualCollection* visuals) {
        UINT32 count = 0;
        EXPECT_EQ(S_OK, visuals->GetCount(&count));
        return count;
    }
    /// The visual of that number, as what it is expected to be.
    template <class Interface>
    static CComPtr<Interface> At(IXpsOMVisualCollection* visuals, UINT32 index) {
        CComPtr<IXpsOMVisual> visual;
        EXPECT_EQ(S_OK, visuals->GetAt(index, &visual));
        CComPtr<Interface> wanted;
        EXPECT_TRUE(visual && SUCCEEDED(visual->QueryInterface(&wanted)));
        return wanted;
    }

    /// The text that a call gives.
    template <class Call>
    static std::wstring TextOf(Call&& call) {
        LPWSTR text = nullptr;
        EXPECT_EQ(S_OK, call(&text));
        std::wstring copy = text == nullptr ? L"(null)" : text;
        ::CoTaskMemFree(text);
        return copy;
    }

    static std::vector<std::string> UsedBy(IXpsOMPage* page) {
        std::vector<OvPlatform::UsedPart> parts;
        EXPECT_EQ(S_OK, OvPlatform::ListUsedParts(page, parts));
        std::vector<std::string> names;
        names.reserve(parts.size());
        for (const OvPlatform::UsedPart& part : parts)
            names.push_back(part.name);
        return names;
    }

    static constexpr const wchar_t* pageName = L"/Documents/1/Pages/1.fpage";

private:
    CComPtr<IXpsOMObjectFactory> m_factory;
    CComPtr<IXpsOMPartResources> m_resources;
};

inline const std::string xpsNamespace = "http://schemas.microsoft.com/xps/2005/06";
inline const std::string keyNamespace = xpsNamespace + "/resourcedictionary-key";

/// A page with that in it.
inline std::string PageOf(const std::string& content) {
    return "<FixedPage xmlns=\"" + xpsNamespace + "\" xmlns:x=\"" + keyNamespace +
           "\" xml:lang=\"en-US\" Width=\"816\" Height=\"1056\">" + content + "</FixedPage>";
}

inline const std::string glyphsMarkup =
    "<Glyphs  FontUri='../../../Resources/a.ttf#1' FontRenderingEmSize=\"12\" OriginX='1' OriginY=\"2.50\" "
    "UnicodeString=\"one &amp; two\" Fill=\"#FF102030\" Unknown=\"kept\" />";
