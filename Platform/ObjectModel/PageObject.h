#pragma once

#include "ObjectModel/ElementCollections.h"

namespace OvPlatform {

/// A page. Whether it is the target of a link is said by its document.
class PageObject final : public ElementObject<IXpsOMPage1> {
public:
    /// An empty one. Throws MarkupFailure.
    PageObject(const XPS_SIZE& dimensions, LPCWSTR language, IOpcPartUri* name);
    PageObject(std::shared_ptr<const PageSource> source, IOpcPartUri* name);

    /// Not counted.
    IXpsOMPageReference* PageReference() const noexcept { return m_owner; }
    void BelongTo(IXpsOMPageReference* owner) noexcept { m_owner = owner; }

    HRESULT STDMETHODCALLTYPE GetPartName(IOpcPartUri** name) override;
    HRESULT STDMETHODCALLTYPE SetPartName(IOpcPartUri* name) override;
    HRESULT STDMETHODCALLTYPE GetOwner(IXpsOMPageReference** reference) override;
    HRESULT STDMETHODCALLTYPE GetVisuals(IXpsOMVisualCollection** visuals) override;
    HRESULT STDMETHODCALLTYPE GetPageDimensions(XPS_SIZE* dimensions) override;
    HRESULT STDMETHODCALLTYPE SetPageDimensions(const XPS_SIZE* dimensions) override;
    HRESULT STDMETHODCALLTYPE GetContentBox(XPS_RECT* box) override;
    HRESULT STDMETHODCALLTYPE SetContentBox(const XPS_RECT* box) override;
    HRESULT STDMETHODCALLTYPE GetBleedBox(XPS_RECT* box) override;
    HRESULT STDMETHODCALLTYPE SetBleedBox(const XPS_RECT* box) override;
    HRESULT STDMETHODCALLTYPE GetLanguage(LPWSTR* language) override;
    HRESULT STDMETHODCALLTYPE SetLanguage(LPCWSTR language) override;
    HRESULT STDMETHODCALLTYPE GetName(LPWSTR* name) override;
    HRESULT STDMETHODCALLTYPE SetName(LPCWSTR name) override;
    HRESULT STDMETHODCALLTYPE GetIsHyperlinkTarget(BOOL* isTarget) override;
    HRESULT STDMETHODCALLTYPE SetIsHyperlinkTarget(BOOL isTarget) override;
    HRESULT STDMETHODCALLTYPE GetDictionary(IXpsOMDictionary** dictionary) override;
    HRESULT STDMETHODCALLTYPE GetDictionaryLocal(IXpsOMDictionary** dictionary) override;
    HRESULT STDMETHODCALLTYPE SetDictionaryLocal(IXpsOMDictionary* dictionary) override;
    HRESULT STDMETHODCALLTYPE GetDictionaryResource(IXpsOMRemoteDictionaryResource** part) override;
    HRESULT STDMETHODCALLTYPE SetDictionaryResource(IXpsOMRemoteDictionaryResource* part) override;
    HRESULT STDMETHODCALLTYPE Write(ISequentialStream* stream, BOOL optimizeMarkupSize) override;
    HRESULT STDMETHODCALLTYPE GenerateUnusedLookupKey(XPS_OBJECT_TYPE type, LPWSTR* key) override;
    HRESULT STDMETHODCALLTYPE Clone(IXpsOMPage** page) override;
    HRESULT STDMETHODCALLTYPE GetDocumentType(XPS_DOCUMENT_TYPE* type) override;
    HRESULT STDMETHODCALLTYPE Write1(ISequentialStream* stream, BOOL optimizeMarkupSize,
                                     XPS_DOCUMENT_TYPE type) override;

private:
    void SetDimensions(const XPS_SIZE& dimensions);
    HRESULT SetBox(const char* name, const XPS_RECT* box);
    HRESULT GetBox(const char* name, XPS_RECT* box);

    VisualCollection m_visuals;
    CComPtr<IOpcPartUri> m_name;
    IXpsOMPageReference* m_owner = nullptr;
    UINT32 m_generatedKeys = 0;
};

} // namespace OvPlatform
