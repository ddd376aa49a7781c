#include "ObjectModel/PartMarkup.h"

#include "Xml/DocumentBound.h"
#include "Xml/ParserError.h"

#include <libxml/xmlreader.h>

#include <limits>
#include <new>
#include <utility>

namespace OvPlatform {

namespace {

// Problems are told by the exception, not on the error stream.
void Ignore(void*, xmlErrorPtr) {}

} // namespace

PartMarkup::PartMarkup(std::string partName, ReadBytes bytes, Bounds bounds)
    : m_partName(std::move(partName)), m_bytes(std::move(bytes)),
      m_left(bounds == Bounds::Owners ? mostDocumentBytes : std::numeric_limits<std::size_t>::max()) {
    const int options = XML_PARSE_NONET | (bounds == Bounds::Owners ? XML_PARSE_HUGE : 0);
    m_reader.reset(xmlReaderForIO(&PartMarkup::PassBytes, nullptr, this, nullptr, nullptr, options));
    if (!m_reader) throw std::bad_alloc();
    xmlTextReaderSetStructuredErrorHandler(m_reader.get(), &Ignore, nullptr);
}

int PartMarkup::PassBytes(void* context, char* buffer, int size) {
    auto* const self = static_cast<PartMarkup*>(context);
    try {
        const std::size_t read = self->m_bytes(buffer, static_cast<std::size_t>(size));
        if (read > self->m_left)
            throw PackageError(XPS_E_INVALID_MARKUP, self->m_partName, "the markup is too large");
        self->m_left -= read;
        if (!self->m_attributes.Passes({buffer, read}))
            throw PackageError(XPS_E_INVALID_MARKUP, self->m_partName,
                               "elements have more attributes and declarations than are allowed");
        return static_cast<int>(read);
    } catch (...) {
        self->m_readFailure = std::current_exception();
        return -1;
    }
}

bool PartMarkup::Advance() {
    const int more = xmlTextReaderRead(m_reader.get());
    if (m_readFailure) std::rethrow_exception(m_readFailure);
    if (more < 0) {
        const xmlError* const error = xmlGetLastError();
        Refuse(error != nullptr ? ParserError::FirstLine(error) : "the markup cannot be read");
    }
    if (more == 1 && xmlTextReaderNodeType(m_reader.get()) == XML_READER_TYPE_DOCUMENT_TYPE)
        Refuse("document type declarations are not allowed");
    return more == 1;
}

void PartMarkup::Refuse(const std::string& problem, HRESULT hr) const {
    throw PackageError(hr, m_partName, xmlTextReaderGetParserLineNumber(m_reader.get()), problem);
}

} // namespace OvPlatform
