#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "XpsParts/IResWriter.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <atlcomcli.h>
#include <filterpipeline.h>

#include <map>

/// Sees to it that a resource which many pages use is written to the output once, and bound to each of them.
/// Keys are compared as the user's locale compares text. A copy shares the parts. Belongs to the thread that
/// runs the job. Operations report by their HRESULT: E_POINTER for a null argument, E_FAIL or E_OUTOFMEMORY
/// where memory is out, and otherwise what the pipeline says.
class OV_FILTER_UTILITIES_API CFileResourceCache {
public:
    CFileResourceCache();
    CFileResourceCache(const CFileResourceCache& other);
    CFileResourceCache& operator=(const CFileResourceCache& other);
    virtual ~CFileResourceCache();

    /// Takes in the page's parts whose URIs begin with uriPrefix: those that a client has put into the job
    /// itself. The URI is their key. The first failure ends it, and what was taken in until then stays.
    HRESULT InitializeWithAnnotationResourcesEmbeddedByClient(IFixedPage* page, const CXString& uriPrefix);

    /// Writes the resource through the consumer unless it has been written before, and binds it to the page.
    /// A resource whose writing failed is not kept: the next call writes it again.
    HRESULT WriteResource(IXpsDocumentConsumer* consumer, IFixedPage* page, IResWriter* writer);

    /// E_INVALIDARG for a key that is not in the cache. The caller frees the string.
    HRESULT GetURI(BSTR key, BSTR* uri);

    /// As GetURI; the caller releases the part.
    HRESULT GetIPartBaseFromCache(BSTR key, IPartBase** part);

protected:
    /// Not 0 if the key is known.
    int IsInCache(BSTR key);

private:
    struct Entry {
        CComBSTR uri;
        CComPtr<IPartBase> part;
    };
    struct OV_FILTER_UTILITIES_API ByUnits {
        using is_transparent = void;
        bool operator()(BSTR left, BSTR right) const;
    };
    using Entries = std::map<CComBSTR, Entry, ByUnits>;

    Entries::const_iterator Find(BSTR key) const;
    HRESULT WriteNewResource(IXpsDocumentConsumer& consumer, IResWriter& writer, BSTR key, BSTR uri);
    HRESULT TakeInCurrentPart(IXpsPartIterator& parts, const CXString& uriPrefix);

    Entries m_entries;
    bool m_clientResourcesAreLoaded;
};
