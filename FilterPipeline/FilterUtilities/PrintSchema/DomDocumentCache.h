#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <windows.h>
#include <atlcomcli.h>
#include <msxml6.h>

#include <map>

/// An independent copy of a document: what its XML says, as parsed anew. The caller owns the result, which is
/// null on failure. E_POINTER for a null argument, E_FAIL if the copy does not parse, or the failure of the
/// platform.
OV_FILTER_UTILITIES_API HRESULT CreateCopyOfIXMLDOMDocument(IXMLDOMDocument2* source, IXMLDOMDocument2** out);

/// The document that a stream holds, read from its start. Results as above.
OV_FILTER_UTILITIES_API HRESULT CreateIXMLDOMDocumentFromIStream(IStream* stream, IXMLDOMDocument2** out);

/// Documents by key. What goes in and what comes out is a copy, so that no caller can edit a stored document.
/// Reports by results; raises only when memory for keys and entries is out. One thread at a time.
class OV_FILTER_UTILITIES_API DomDocumentCache {
public:
    DomDocumentCache();
    /// Copies share the stored documents.
    DomDocumentCache(const DomDocumentCache& other);
    DomDocumentCache& operator=(const DomDocumentCache& other);
    virtual ~DomDocumentCache();

    /// E_FAIL is the ordinary miss, E_INVALIDARG a null out. S_OK with null: the stored document could not be
    /// copied, which counts as a document without content.
    HRESULT TryGetPrintSchemaDomFromCache(const CXString& key, IXMLDOMDocument2** out);
    /// Under a key that is taken, the old document stays. E_INVALIDARG for null, or the failure of the copy.
    HRESULT AddPrintSchemaDomToCache(const CXString& key, IXMLDOMDocument2* document);
    /// Always S_OK.
    HRESULT ClearCache();

private:
    struct ByCompare {
        bool operator()(const CXString& left, const CXString& right) const { return left.Compare(right) < 0; }
    };

    std::map<CXString, CComPtr<IXMLDOMDocument2>, ByCompare> m_documents;
};
