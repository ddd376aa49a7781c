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

void DomLoader::SetHandlers(xmlSAXHandler& handlers) {
    handlers.startDocument = StartDocument;
    handlers.startElementNs = StartElement;
    handlers.endElementNs = EndElement;
    handlers.characters = Characters;
    handlers.ignorableWhitespace = Characters;
    handlers.cdataBlock = CData;
    handlers.comment = Comment;
    handlers.processingInstruction = ProcessingInstruction;
}

XmlDocument DomLoader::Parse() {
    const auto limit = static_cast<ULONGLONG>(std::max<LONG>(m_settings.maxXmlSize, 0)) * 1024;
    if (limit != 0 && Source().Text().size() > limit) {
        Refuse(XML_E_MAX_SIZE, "The text is longer than the document allows");
        return nullptr;
    }
    const XmlPointer<xmlParserCtxt> parser = NewParser(SetHandlers, XML_PARSE_COMPACT);
    if (parser == nullptr) return nullptr;
    // An attribute xml:id is one like others: it need not be a name, nor be the only one, and no edit has to
    // see to a table of them.
    parser->loadsubset |= XML_SKIP_IDS;
    Run(parser.get());
    XmlDocument document(std::exchange(parser->myDoc, nullptr));
    if (document == nullptr || xmlDocGetRootElement(document.get()) == nullptr) NotWellFormed(parser.get());
    return Failure().code == S_OK ? std::move(document) : nullptr;
}

void DomLoader::StartDocument(void* context) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    xmlSAX2StartDocument(context);
    const std::optional<XmlDeclaration>& declared = Of<DomLoader>(context).Source().Declaration();
    if (!declared || parser->myDoc == nullptr) return;
    xmlNode* declaration = xmlNewDocPI(parser->myDoc, AsXml("xml"), AsXml(declared->Data().c_str()));
    if (declaration == nullptr) return;
    Mark(declaration, ReadDeclaration);
    xmlAddChild(reinterpret_cast<xmlNode*>(parser->myDoc), declaration);
}

void DomLoader::EndText() noexcept {
    if (!m_inText && !m_blanks.empty()) m_breakPending = true;
    m_blanks.clear();
    m_inText = false;
}

void DomLoader::MarkBreak(xmlNode* node, NodeMark mark) noexcept {
    if (std::exchange(m_breakPending, false) && node != nullptr) Mark(node, mark);
}

void DomLoader::StartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                             int declarationCount, const xmlChar** declarations, int attributeCount,
                             int defaultedCount, const xmlChar** attributes) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    DomLoader& loader = Of<DomLoader>(context);
    loader.EndText();
    if (!loader.Enter(parser, loader.m_settings.maxElementDepth)) return;
    xmlSAX2StartElementNs(context, name, prefix, uri, declarationCount, declarations, attributeCount,
                          defaultedCount, attributes);
    xmlNode* element = parser->node;
    if (element == nullptr) return;
    loader.MarkBreak(element, BreakBefore);
    if (declarationCount == 0 || attributeCount == 0) return;
    AttributeOrder::RankFromSource(element, StartTag::Before(*parser->input));
}

void DomLoader::EndElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) {
    DomLoader& loader = Of<DomLoader>(context);
    loader.EndText();
    loader.MarkBreak(static_cast<xmlParserCtxt*>(context)->node, BreakBeforeEnd);
    loader.Leave();
    xmlSAX2EndElementNs(context, name, prefix, uri);
}

void DomLoader::Characters(void* context, const xmlChar* text, int length) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    DomLoader& loader = Of<DomLoader>(context);
    const bool keepsBlanks =
        loader.m_settings.preserveWhiteSpace || (parser->space != nullptr && *parser->space == 1);
    if (!keepsBlanks && !loader.m_inText) {
        if (IsBlank(text, length)) {
            loader.m_blanks.append(reinterpret_cast<const char*>(text), static_cast<std::size_t>(length));
            return;
        }
        if (!loader.m_blanks.empty())
            xmlSAX2Characters(context, AsXml(loader.m_blanks.data()),
                              static_cast<int>(loader.m_blanks.size()));
        loader.m_blanks.clear();
    }
    loader.m_inText = true;
    loader.m_breakPending = false;
    xmlSAX2Characters(context, text, length);
}

void DomLoader::AfterNode(xmlParserCtxt* parser, xmlNode* before) noexcept {
    xmlNode* parent = parser->node;
    if (parent == nullptr) {
        m_breakPending = false;
        return;
    }
    if (parent->last != before) MarkBreak(parent->last, BreakBefore);
}

void DomLoader::CData(void* context, const xmlChar* text, int length) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    Of<DomLoader>(context).EndText();
    xmlNode* before = parser->node ? parser->node->last : nullptr;
    xmlSAX2CDataBlock(context, text, length);
    Of<DomLoader>(context).AfterNode(parser, before);
}

void DomLoader::Comment(void* context, const xmlChar* text) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    Of<DomLoader>(context).EndText();
    xmlNode* before = parser->node ? parser->node->last : nullptr;
    xmlSAX2Comment(context, text);
    Of<DomLoader>(context).AfterNode(parser, before);
}

void DomLoader::ProcessingInstruction(void* context, const xmlChar* target, const xmlChar* data) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    Of<DomLoader>(context).EndText();
    xmlNode* before = parser->node ? parser->node->last : nullptr;
    xmlSAX2ProcessingInstruction(context, target, data);
    Of<DomLoader>(context).AfterNode(parser, before);
}

} // namespace OvPlatform
