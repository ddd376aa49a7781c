#include "ObjectModel/ReferenceList.h"

#include "ObjectModel/XpsVocabulary.h"
#include "Xml/XmlString.h"

#include <libxml/xmlreader.h>
#include <xpsobjectmodel.h>

#include <utility>

namespace OvPlatform {

namespace {

const char* RootName(ReferenceList::Of kind) {
    return kind == ReferenceList::Of::Sequence ? "FixedDocumentSequence" : "FixedDocument";
}

const char* ItemName(ReferenceList::Of kind) {
    return kind == ReferenceList::Of::Sequence ? "DocumentReference" : "PageContent";
}

std::string Text(const xmlChar* text) { return std::string(View(text)); }

} // namespace

ReferenceList::ReferenceList(Of kind, std::string partName, PartMarkup::ReadBytes bytes)
    : m_kind(kind), m_markup(std::move(partName), std::move(bytes), PartMarkup::Bounds::Parsers) {}

bool ReferenceList::IsElement(const char* name) const {
    return xmlTextReaderNodeType(m_markup.Reader()) == XML_READER_TYPE_ELEMENT &&
           Text(xmlTextReaderConstLocalName(m_markup.Reader())) == name &&
           IsMarkupNamespace(Text(xmlTextReaderConstNamespaceUri(m_markup.Reader())));
}

std::string ReferenceList::Attribute(const char* name) const {
    const XmlPointer<xmlChar> value(xmlTextReaderGetAttribute(m_markup.Reader(), AsXml(name)));
    return Text(value.get());
}

void ReferenceList::CheckRoot() {
    while (m_markup.Advance()) {
        if (xmlTextReaderNodeType(m_markup.Reader()) != XML_READER_TYPE_ELEMENT) continue;
        if (!IsElement(RootName(m_kind)))
            m_markup.Refuse("the root element is " + Text(xmlTextReaderConstName(m_markup.Reader())) +
                            ", not a " + RootName(m_kind) + " of XPS");
        return;
    }
    m_markup.Refuse("the part is empty");
}

void ReferenceList::TakeLinkTargets(PageReference& reference) {
    if (xmlTextReaderIsEmptyElement(m_markup.Reader())) return;
    const int depth = xmlTextReaderDepth(m_markup.Reader());
    while (m_markup.Advance() && xmlTextReaderDepth(m_markup.Reader()) > depth)
        if (IsElement("LinkTarget")) reference.linkTargets.push_back(Attribute("Name"));
}

PageReference ReferenceList::TakeReference() {
    PageReference reference{Attribute("Source"), Attribute("Width"), Attribute("Height"), {}};
    if (reference.source.empty())
        m_markup.Refuse(std::string("a ") + ItemName(m_kind) + " has no Source",
                        XPS_E_MISSING_PART_REFERENCE);
    if (m_kind == Of::Document) TakeLinkTargets(reference);
    return reference;
}

std::optional<PageReference> ReferenceList::Next() {
    if (!m_started) CheckRoot();
    m_started = true;
    while (!m_ended) {
        if (!m_markup.Advance()) {
            m_ended = true;
        } else if (xmlTextReaderDepth(m_markup.Reader()) == 1 && IsElement(ItemName(m_kind))) {
            return TakeReference();
        } else if (xmlTextReaderNodeType(m_markup.Reader()) == XML_READER_TYPE_ELEMENT &&
                   Text(xmlTextReaderConstLocalName(m_markup.Reader())) == "AlternateContent") {
            // To leave pages out in silence would be worse.
            m_markup.Refuse("alternatives (AlternateContent) are not supported here");
        }
    }
    return {};
}

} // namespace OvPlatform
