#include "ObjectModel/ReferenceList.h"

#include "ObjectModel/XpsVocabulary.h"
#include "Xml/ParserError.h"
#include "Xml/XmlString.h"

#include <libxml/xmlreader.h>
#include <xpsobjectmodel.h>

#include <new>
#include <utility>

namespace OvPlatform {

namespace {

// Problems are told by the exception, not on the error stream.
void Ignore(void*, xmlErrorPtr) {}

const char* RootName(ReferenceList::Of kind) {
    return kind == ReferenceList::Of::Sequence ? "FixedDocumentSequence" : "FixedDocument";
}

const char* ItemName(ReferenceList::Of kind) {
    return kind == ReferenceList::Of::Sequence ? "DocumentReference" : "PageContent";
}

std::string Text(const xmlChar* text) { return std::string(View(text)); }

} // namespace

ReferenceList::ReferenceList(Of kind, std::string partName, ReadBytes bytes)
    : m_kind(kind), m_partName(std::move(partName)), m_bytes(std::move(bytes)) {
    m_reader.reset(
        xmlReaderForIO(&ReferenceList::PassBytes, nullptr, this, nullptr, nullptr, XML_PARSE_NONET));
    if (!m_reader) throw std::bad_alloc();
    xmlTextReaderSetStructuredErrorHandler(m_reader.get(), &Ignore, nullptr);
}

int ReferenceList::PassBytes(void* context, char* buffer, int size) {
    auto* self = static_cast<ReferenceList*>(context);
    try {
        const std::size_t read = self->m_bytes(buffer, static_cast<std::size_t>(size));
        if (!self->m_attributes.Passes({buffer, read}))
            throw PackageError(XPS_E_INVALID_MARKUP, self->m_partName,
                               "elements have more attributes and declarations than are allowed");
        return static_cast<int>(read);
    } catch (...) {
        self->m_readFailure = std::current_exception();
        return -1;
    }
}

void ReferenceList::Refuse(const std::string& problem) const {
    throw PackageError(XPS_E_INVALID_MARKUP, m_partName, xmlTextReaderGetParserLineNumber(m_reader.get()),
                       problem);
}

bool ReferenceList::Advance() {
    const int more = xmlTextReaderRead(m_reader.get());
    if (m_readFailure) std::rethrow_exception(m_readFailure);
    if (more < 0) {
        const xmlError* error = xmlGetLastError();
        Refuse(error != nullptr ? ParserError::Reason(error) : "the markup cannot be read");
    }
    if (more == 1 && xmlTextReaderNodeType(m_reader.get()) == XML_READER_TYPE_DOCUMENT_TYPE)
        Refuse("document type declarations are not allowed");
    return more == 1;
}

bool ReferenceList::IsElement(const char* name) const {
    return xmlTextReaderNodeType(m_reader.get()) == XML_READER_TYPE_ELEMENT &&
           Text(xmlTextReaderConstLocalName(m_reader.get())) == name &&
           IsMarkupNamespace(Text(xmlTextReaderConstNamespaceUri(m_reader.get())));
}

std::string ReferenceList::Attribute(const char* name) const {
    const XmlPointer<xmlChar> value(xmlTextReaderGetAttribute(m_reader.get(), AsXml(name)));
    return Text(value.get());
}

void ReferenceList::CheckRoot() {
    while (Advance()) {
        if (xmlTextReaderNodeType(m_reader.get()) != XML_READER_TYPE_ELEMENT) continue;
        if (!IsElement(RootName(m_kind)))
            Refuse("the root element is " + Text(xmlTextReaderConstName(m_reader.get())) + ", not a " +
                   RootName(m_kind) + " of XPS");
        return;
    }
    Refuse("the part is empty");
}

void ReferenceList::TakeLinkTargets(PageReference& reference) {
    if (xmlTextReaderIsEmptyElement(m_reader.get())) return;
    const int depth = xmlTextReaderDepth(m_reader.get());
    while (Advance() && xmlTextReaderDepth(m_reader.get()) > depth)
        if (IsElement("LinkTarget")) reference.linkTargets.push_back(Attribute("Name"));
}

PageReference ReferenceList::TakeReference() {
    PageReference reference{Attribute("Source"), Attribute("Width"), Attribute("Height"), {}};
    if (reference.source.empty())
        throw PackageError(XPS_E_MISSING_PART_REFERENCE, m_partName,
                           xmlTextReaderGetParserLineNumber(m_reader.get()),
                           std::string("a ") + ItemName(m_kind) + " has no Source");
    if (m_kind == Of::Document) TakeLinkTargets(reference);
    return reference;
}

std::optional<PageReference> ReferenceList::Next() {
    if (!m_started) CheckRoot();
    m_started = true;
    while (!m_ended) {
        if (!Advance()) {
            m_ended = true;
        } else if (xmlTextReaderDepth(m_reader.get()) == 1 && IsElement(ItemName(m_kind))) {
            return TakeReference();
        } else if (xmlTextReaderNodeType(m_reader.get()) == XML_READER_TYPE_ELEMENT &&
                   Text(xmlTextReaderConstLocalName(m_reader.get())) == "AlternateContent") {
            // To leave pages out in silence would be worse.
            Refuse("alternatives (AlternateContent) are not supported here");
        }
    }
    return {};
}

} // namespace OvPlatform
