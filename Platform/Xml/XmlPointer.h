#pragma once

#include "Com/PlatformExport.h"

#include <memory>

// libxml2's. Its headers are not needed by who only holds such objects.
struct _xmlBuffer;
struct _xmlCharEncodingHandler;
struct _xmlDoc;
struct _xmlNs;
struct _xmlParserCtxt;
struct _xmlTextReader;
struct _xmlTextWriter;
struct _xmlXPathCompExpr;
struct _xmlXPathContext;
struct _xmlXPathObject;

namespace OvPlatform {

/// Ends what libxml2 made, each kind by its own function.
struct OV_PLATFORM_API XmlRelease {
    void operator()(_xmlBuffer* buffer) const noexcept;
    void operator()(_xmlCharEncodingHandler* handler) const noexcept;
    void operator()(_xmlDoc* document) const noexcept;
    /// One that no element holds, without those behind it.
    void operator()(_xmlNs* declaration) const noexcept;
    /// With the document that it was making, unless somebody has taken that out.
    void operator()(_xmlParserCtxt* parser) const noexcept;
    void operator()(_xmlTextReader* reader) const noexcept;
    void operator()(_xmlTextWriter* writer) const noexcept;
    void operator()(_xmlXPathCompExpr* expression) const noexcept;
    void operator()(_xmlXPathContext* context) const noexcept;
    void operator()(_xmlXPathObject* object) const noexcept;
    /// A text.
    void operator()(unsigned char* text) const noexcept;
    void operator()(char* text) const noexcept;
};

template <class Object>
using XmlPointer = std::unique_ptr<Object, XmlRelease>;

using XmlDocument = XmlPointer<_xmlDoc>;

} // namespace OvPlatform
