#pragma once

#include "Package/PackageError.h"
#include "Xml/AttributeBound.h"
#include "Xml/XmlPointer.h"

#include <xpsobjectmodel.h>

#include <cstddef>
#include <exception>
#include <functional>
#include <string>

namespace OvPlatform {

/// The markup of a part, node after node as libxml2's reader has it, while its bytes are read: memory does
/// not grow with it. Whoever owns it asks the reader what the node is.
class OV_PLATFORM_API PartMarkup {
public:
    /// Up to size bytes of the part's; 0 at the end. May throw.
    using ReadBytes = std::function<std::size_t(void* buffer, std::size_t size)>;

    /// Parsers: depth and texts are bounded as the parser bounds them, the length is not. Owners: the length
    /// is bounded as a document's is, and the owner bounds the depth.
    enum class Bounds { Parsers, Owners };

    PartMarkup(std::string partName, ReadBytes bytes, Bounds bounds);
    PartMarkup(const PartMarkup&) = delete;
    PartMarkup& operator=(const PartMarkup&) = delete;

    /// Goes to the next node; false at the end. Throws PackageError (with the line) for markup that cannot be
    /// read, a document type declaration and what is out of bounds, and what the bytes throw.
    bool Advance();

    _xmlTextReader* Reader() const { return m_reader.get(); }

    /// Throws PackageError with the line of the node.
    [[noreturn]] void Refuse(const std::string& problem, HRESULT hr = XPS_E_INVALID_MARKUP) const;

private:
    static int PassBytes(void* context, char* buffer, int size);

    std::string m_partName;
    ReadBytes m_bytes;
    std::size_t m_left; // bytes that may still come
    AttributeBound m_attributes;
    std::exception_ptr m_readFailure;
    XmlPointer<_xmlTextReader> m_reader;
};

} // namespace OvPlatform
