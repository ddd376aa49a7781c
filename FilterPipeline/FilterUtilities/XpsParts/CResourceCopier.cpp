#include "XpsParts/CResourceCopier.h"

#include <atlcomcli.h>

CResourceCopier::~CResourceCopier() = default;

HRESULT CResourceCopier::CopyPageResources(const IFixedPage* from, IFixedPage* to) {
    if (from == nullptr || to == nullptr) return E_POINTER;
    CComPtr<IXpsPartIterator> parts;
    // The published interface knows no const; the page is only read.
    HRESULT hr = const_cast<IFixedPage*>(from)->GetXpsPartIterator(&parts);
    if (FAILED(hr)) return hr;
    for (parts->Reset(); !parts->IsDone(); parts->Next()) {
        CComBSTR uri;
        CComPtr<IUnknown> part;
        hr = parts->Current(&uri, &part);
        if (SUCCEEDED(hr)) hr = to->SetPagePart(part);
        if (FAILED(hr)) return hr;
    }
    return S_OK;
}
