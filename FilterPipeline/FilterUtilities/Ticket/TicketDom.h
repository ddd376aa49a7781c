#pragma once

// Whole tickets as documents of the platform, for the classes of this room. Each function throws
// CPComException under the name of the operation that asks.

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/DomDocumentCache.h"

#include <atlcomcli.h>
#include <msxml6.h>

namespace TicketDom {

using Document = CComPtr<IXMLDOMDocument2>;

/// What the stream holds, read from its start.
inline Document Load(const CComPtr<IStream>& stream) {
    Document document;
    ThrowIfFailed(CreateIXMLDOMDocumentFromIStream(stream, &document));
    return document;
}

/// An independent copy.
inline Document Clone(const Document& source) {
    Document document;
    ThrowIfFailed(CreateCopyOfIXMLDOMDocument(source, &document));
    return document;
}

/// The document as a stream, for its text to be read or written. E_POINTER for a document that is not there
/// yet: its level was not merged.
inline CComPtr<IStream> AsStream(const Document& document) {
    if (!document) ThrowComException(E_POINTER);
    CComPtr<IStream> stream;
    ThrowIfFailed(document->QueryInterface(__uuidof(IStream), reinterpret_cast<void**>(&stream)));
    return stream;
}

inline void SeekToStart(IStream& stream) {
    ThrowIfFailed(stream.Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr));
}

} // namespace TicketDom
