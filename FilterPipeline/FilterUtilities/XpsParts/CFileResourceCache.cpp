#include "XpsParts/CFileResourceCache.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

namespace {

std::wstring_view Text(BSTR text) { return {text != nullptr ? text : L"", SysStringLen(text)}; }

} // namespace

bool CFileResourceCache::ByUnits::operator()(BSTR left, BSTR right) const { return Text(left) < Text(right); }

CFileResourceCache::CFileResourceCache() : m_clientResourcesAreLoaded(false) {}

CFileResourceCache::CFileResourceCache(const CFileResourceCache& other) = default;

CFileResourceCache& CFileResourceCache::operator=(const CFileResourceCache& other) = default;

CFileResourceCache::~CFileResourceCache() = default;

HRESULT CFileResourceCache::InitializeWithAnnotationResourcesEmbeddedByClient(IFixedPage* page,
                                                                              const CXString& uriPrefix) {
    if (page == nullptr) return E_POINTER;
    m_clientResourcesAreLoaded = true;
    CComPtr<IXpsPartIterator> parts;
    HRESULT hr = page->GetXpsPartIterator(&parts);
    if (FAILED(hr)) return hr;
    try {
        while (!parts->IsDone()) {
            hr = TakeInCurrentPart(*parts, uriPrefix);
            if (FAILED(hr)) return hr;
            parts->Next();
        }
    } catch (const std::exception&) {
        return E_FAIL;
    } catch (const CAtlException& failure) {
        return failure;
    }
    return S_OK;
}

HRESULT CFileResourceCache::TakeInCurrentPart(IXpsPartIterator& parts, const CXString& uriPrefix) {
    CComBSTR uri;
    CComPtr<IUnknown> part;
    HRESULT hr = parts.Current(&uri, &part);
    if (FAILED(hr) || !Text(uri).starts_with(uriPrefix.View())) return hr;
    Entry entry{uri, nullptr};
    hr = part->QueryInterface(__uuidof(IPartBase), reinterpret_cast<void**>(&entry.part));
    if (SUCCEEDED(hr)) m_entries.insert_or_assign(std::move(uri), std::move(entry));
    return hr;
}

HRESULT CFileResourceCache::WriteResource(IXpsDocumentConsumer* consumer, IFixedPage* page,
                                          IResWriter* writer) {
    if (consumer == nullptr || page == nullptr || writer == nullptr) return E_POINTER;
    CComBSTR key;
    CComBSTR uri;
    HRESULT hr = writer->GetKey(&key);
    if (SUCCEEDED(hr)) hr = writer->GetUri(&uri);
    if (SUCCEEDED(hr) && !IsInCache(key)) hr = WriteNewResource(*consumer, *writer, key, uri);
    if (FAILED(hr)) return hr;

    CComPtr<IPartBase> part;
    if (FAILED(GetIPartBaseFromCache(key, &part))) return E_FAIL;
    return page->SetPagePart(part);
}

HRESULT CFileResourceCache::WriteNewResource(IXpsDocumentConsumer& consumer, IResWriter& writer, BSTR key,
                                             BSTR uri) {
    CComPtr<IUnknown> newPart;
    CComPtr<IPrintWriteStream> stream;
    HRESULT hr =
        consumer.GetNewEmptyPart(uri, writer.GetPartIid(), reinterpret_cast<void**>(&newPart), &stream);
    if (FAILED(hr)) return hr;
    hr = writer.WriteResource(newPart, stream);
    stream->Close(); // a stream that was handed out has to be closed, also behind a failure
    if (FAILED(hr)) return hr;

    CComPtr<IPartBase> part;
    hr = newPart->QueryInterface(__uuidof(IPartBase), reinterpret_cast<void**>(&part));
    if (FAILED(hr)) return hr;
    try {
        m_entries.emplace(CComBSTR(key), Entry{CComBSTR(uri), part});
    } catch (const std::exception&) {
        return E_FAIL;
    } catch (const CAtlException& failure) {
        return failure;
    }
    return S_OK;
}

HRESULT CFileResourceCache::GetURI(BSTR key, BSTR* uri) {
    if (!uri) return E_POINTER;
    *uri = nullptr;
    const auto found = Find(key);
    if (found == m_entries.end()) return E_INVALIDARG;
    return found->second.uri.CopyTo(uri);
}

HRESULT CFileResourceCache::GetIPartBaseFromCache(BSTR key, IPartBase** part) {
    if (!part) return E_POINTER;
    *part = nullptr;
    const auto found = Find(key);
    if (found == m_entries.end()) return E_INVALIDARG;
    return found->second.part.CopyTo(part);
}

int CFileResourceCache::IsInCache(BSTR key) { return Find(key) != m_entries.end() ? 1 : 0; }

CFileResourceCache::Entries::const_iterator CFileResourceCache::Find(BSTR key) const {
    // Every page asks for what is there, mostly unit by unit.
    if (const auto found = m_entries.find(key); found != m_entries.end()) return found;
    // Not by the map's own order: what counts as the same key is the locale's to say.
    return std::find_if(m_entries.begin(), m_entries.end(), [key](const auto& entry) {
        return VarBstrCmp(entry.first, key, LOCALE_USER_DEFAULT, 0) == static_cast<HRESULT>(VARCMP_EQ);
    });
}
