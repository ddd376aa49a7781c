#pragma once

// The resources of a page, as the pipeline hands them out.

#include "Support/FakeParts.h"

#include <string>
#include <utility>

inline constexpr const wchar_t* fontName = L"/Resources/00010203-0405-0607-0809-0A0B0C0D0E0F.odttf";

class FakePicture : public FakeImagePart {
public:
    FakePicture(std::wstring name, std::wstring type, std::string content = "picture")
        : FakeImagePart(std::move(name), std::move(content)), contentType(std::move(type)) {}
    std::wstring contentType;
    HRESULT propertiesResult = S_OK;

    HRESULT STDMETHODCALLTYPE GetImageProperties(BSTR* out) override {
        if (FAILED(propertiesResult)) return propertiesResult;
        *out = SysAllocString(contentType.c_str());
        return S_OK;
    }
};

// Of a font, with or without the newer interface.
template <typename... Interfaces>
class FakeFontOf : public FakePartOf<Interfaces...> {
public:
    FakeFontOf() : FakePartOf<Interfaces...>(fontName, "font") {}
    EXpsFontOptions options = Font_Normal;
    EXpsFontRestriction restriction = Xps_Restricted_Font_Installable;
    HRESULT propertiesResult = S_OK;

    HRESULT STDMETHODCALLTYPE GetFontProperties(BSTR* type, EXpsFontOptions* out) override {
        if (FAILED(propertiesResult)) return propertiesResult;
        *type = SysAllocString(L"application/vnd.ms-opentype");
        *out = options;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetFontContent(PCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetFontOptions(EXpsFontOptions) override { return S_OK; }
};
using FakeOldFont = FakeFontOf<IPartFont, IPartBase>;
class FakeFont : public FakeFontOf<IPartFont2, IPartFont, IPartBase> {
public:
    HRESULT STDMETHODCALLTYPE GetFontRestriction(EXpsFontRestriction* out) override {
        *out = restriction;
        return S_OK;
    }
};
using FakeProfile = FakePartOf<IPartColorProfile, IPartBase>;
using FakeDictionary = FakePartOf<IPartResourceDictionary, IPartBase>;
