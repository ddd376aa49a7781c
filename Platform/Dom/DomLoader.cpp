#include "Dom/DomLoader.h"

#include "Dom/DomTree.h"
#include "Xml/StartTag.h"

#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <utility>

namespace OvPlatform {

namespace {

bool IsBlank(const xmlChar* text, int length) noexcept {
    return std::all_of(text, text + length,
                       [](xmlChar c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

} // namespace

XmlDocument DomLoader::FromBytes(std::string_view bytes) { return TakeBytes(bytes) ? Parse() : nullptr; }

XmlDocument DomLoader::FromText(std::string_view utf8) { return TakeText(utf8) ? Parse() : nullptr; }

XmlDocument DomLoader::Parse() {
    const auto limit = static_cast<ULONGLONG>(std::max<LONG>(m_settings.maxXmlSize, 0)) * 1024;
    if (limit != 0 && Source().Text().size() > limit) {
        Refuse(XML_E_MAX_SIZE, "The text is longer than the document allows");
        return nullptr;
    }
    if (!Open(XML_PARSE_COMPACT)) return nullptr;
    // An attribute xml:id is one like others: it need not be a name, nor be the only one, and no edit has to
    // see to a table of them.
    Parser()->loadsubset |= XML_SKIP_IDS;
    Run();
    XmlDocument document(std::exchange(Parser()->myDoc, nullptr));
    if (!document || xmlDocGetRootElement(document.get()) == nullptr) NotWellFormed();
    return Failure().code == S_OK ? std::move(document) : nullptr;
}

void DomLoader::StartDocument() {
    xmlSAX2StartDocument(Parser());
    xmlDoc* document = Parser()->myDoc;
    const std::optional<XmlDeclaration>& declared = Source().Declaration();
    if (!declared || document == nullptr) return;
    xmlNode* declaration = xmlNewDocPI(document, AsXml("xml"), AsXml(declared->Data().c_str()));
    if (declaration == nullptr) return;
    Mark(declaration, ReadDeclaration);
    xmlAddChild(reinterpret_cast<xmlNode*>(document), declaration);
}

void DomLoader::EndDocument() { xmlSAX2EndDocument(Parser()); }

void DomLoader::EndText() noexcept {
    if (!m_inText && !m_blanks.empty()) m_breakPending = true;
    m_blanks.clear();
    m_inText = false;
}

void DomLoader::MarkBreak(xmlNode* node, NodeMark mark) noexcept {
    if (std::exchange(m_breakPending, false) && node != nullptr) Mark(node, mark);
}

void DomLoader::StartElement(const StartTagEvent& tag) {
    EndText();
    if (!Enter(m_settings.maxElementDepth)) return;
    xmlSAX2StartElementNs(Parser(), tag.name, tag.prefix, tag.uri, tag.declarationCount, tag.declarations,
                          tag.attributeCount, tag.defaultedCount, tag.attributes);
    xmlNode* element = Parser()->node;
    if (element == nullptr) return;
    MarkBreak(element, BreakBefore);
    if (tag.declarationCount == 0 || tag.attributeCount == 0) return;
    AttributeOrder::RankFromSource(element, StartTag::Before(*Parser()->input));
}

void DomLoader::EndElement(const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) {
    EndText();
    MarkBreak(Parser()->node, BreakBeforeEnd);
    Leave();
    xmlSAX2EndElementNs(Parser(), name, prefix, uri);
}

void DomLoader::Characters(const xmlChar* text, int length) {
    const int* space = Parser()->space;
    const bool keepsBlanks = m_settings.preserveWhiteSpace || (space != nullptr && *space == 1);
    if (!keepsBlanks && !m_inText) {
        if (IsBlank(text, length)) {
            m_blanks.append(reinterpret_cast<const char*>(text), static_cast<std::size_t>(length));
            return;
        }
        if (!m_blanks.empty())
            xmlSAX2Characters(Parser(), AsXml(m_blanks.data()), static_cast<int>(m_blanks.size()));
        m_blanks.clear();
    }
    m_inText = true;
    m_breakPending = false;
    xmlSAX2Characters(Parser(), text, length);
}

template <class Add>
void DomLoader::AddNode(Add&& add) {
    EndText();
    const xmlNode* parent = Parser()->node;
    const xmlNode* before = parent != nullptr ? parent->last : nullptr;
    add();
    if (parent == nullptr)
        m_breakPending = false;
    else if (parent->last != before)
        MarkBreak(parent->last, BreakBefore);
}

void DomLoader::CData(const xmlChar* text, int length) {
    AddNode([&] { xmlSAX2CDataBlock(Parser(), text, length); });
}

void DomLoader::Comment(const xmlChar* text) {
    AddNode([&] { xmlSAX2Comment(Parser(), text); });
}

void DomLoader::ProcessingInstruction(const xmlChar* target, const xmlChar* data) {
    AddNode([&] { xmlSAX2ProcessingInstruction(Parser(), target, data); });
}

} // namespace OvPlatform
