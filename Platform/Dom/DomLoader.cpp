#include "Dom/DomLoader.h"

#include "Dom/DomTree.h"
#include "Dom/NodeMaking.h"
#include "Dom/WhiteSpace.h"
#include "Xml/StartTag.h"

#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <cstddef>
#include <new>
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

ReadBack DomLoader::Form(const xmlDoc* document) const {
    ReadBack form = ReadBack::OfLoaded(document, Source().Text().size(), m_depth, m_hasIdleMarks);
    form.preservesWhiteSpace = m_settings.preserveWhiteSpace;
    return form;
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

void DomLoader::MarkBreak(xmlNode* node, NodeMark mark, const xmlNode* before) noexcept {
    if (!std::exchange(m_breakPending, false) || node == nullptr) return;
    Mark(node, mark);
    if (IsText(node) || (before != nullptr && IsText(before))) m_hasIdleMarks = true;
}

void DomLoader::StartElement(const StartTagEvent& tag) {
    EndText();
    if (!Enter(m_settings.maxElementDepth)) return;
    m_depth = std::max(m_depth, Depth());
    xmlNode* element = nullptr;
    try {
        element = AddElement(tag);
    } catch (const std::bad_alloc&) {
        FailHere(E_OUTOFMEMORY, {}); // nothing is thrown through the parser
        return;
    }
    MarkBreak(element, BreakBefore, element->prev);
    if (tag.declarationCount == 0 || tag.attributeCount == 0) return;
    AttributeOrder::RankFromSource(element, StartTag::Before(*Parser()->input));
}

xmlNode* DomLoader::AddElement(const StartTagEvent& tag) {
    xmlNode* parent = Parser()->node;
    if (parent == nullptr) parent = reinterpret_cast<xmlNode*>(Parser()->myDoc);
    xmlNode* element = MakeNode(Parser()->myDoc, XML_ELEMENT_NODE);
    AppendNode(parent, element);
    element->name = tag.name; // of the dictionary, which the document shares
    m_outside.push_back(m_declared.size());
    AddDeclarations(tag, element);
    if (tag.uri != nullptr) element->ns = Namespace(tag.prefix);
    AddAttributes(tag, element);
    if (nodePush(Parser(), element) < 0) throw std::bad_alloc();
    return element;
}

void DomLoader::AddDeclarations(const StartTagEvent& tag, xmlNode* element) {
    xmlNs** place = &element->nsDef;
    for (int index = 0; index < tag.declarationCount; ++index) {
        const xmlChar* const* declaration = tag.declarations + std::ptrdiff_t{2} * index;
        *place = xmlNewNs(nullptr, declaration[1], declaration[0]);
        if (*place == nullptr) throw std::bad_alloc();
        m_declared.push_back({declaration[0], *place});
        place = &(*place)->next;
    }
}

xmlNs* DomLoader::Namespace(const xmlChar* prefix) const noexcept {
    for (std::size_t index = m_declared.size(); index-- != 0;)
        if (m_declared[index].prefix == prefix) return m_declared[index].ns;
    // The prefix xml, which nobody declares.
    return xmlSearchNs(Parser()->myDoc, reinterpret_cast<xmlNode*>(Parser()->myDoc), prefix);
}

void DomLoader::AddAttributes(const StartTagEvent& tag, xmlNode* element) {
    xmlAttr* last = nullptr;
    for (int index = 0; index < tag.attributeCount; ++index) {
        const xmlChar* const* parts =
            tag.attributes + std::ptrdiff_t{5} * index; // name, prefix, URI, begin and end
        last = AppendAttribute(element, last);
        last->name = parts[0];
        if (parts[1] != nullptr) last->ns = Namespace(parts[1]);
        const std::string_view value = View(parts[3], static_cast<int>(parts[4] - parts[3]));
        if (value.find('&') == std::string_view::npos) {
            SetValue(last, value);
            continue;
        }
        // The parser leaves an ampersand as a reference.
        const XmlPointer<xmlChar> plain(xmlStringLenDecodeEntities(
            Parser(), parts[3], static_cast<int>(value.size()), XML_SUBSTITUTE_REF, 0, 0, 0));
        if (!plain) throw std::bad_alloc();
        SetValue(last, View(plain.get()));
    }
}

void DomLoader::EndElement(const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) {
    EndText();
    if (xmlNode* element = Parser()->node) MarkBreak(element, BreakBeforeEnd, element->last);
    Leave();
    m_declared.resize(m_outside.back());
    m_outside.pop_back();
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
        MarkBreak(parent->last, BreakBefore, before);
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
