#include "Dom/DomLoader.h"

#include "Dom/DomTree.h"
#include "Dom/ParserError.h"
#include "Dom/StartTag.h"
#include "Dom/TextConversion.h"

#include <libxml/SAX2.h>
#include <libxml/parserInternals.h>

#include <algorithm>
#include <new>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t LongestSource = 512;

struct ParserDeleter {
    void operator()(xmlParserCtxt* parser) const noexcept {
        xmlFreeDoc(parser->myDoc);
        xmlFreeParserCtxt(parser);
    }
};

bool IsBlank(const xmlChar* text, int length) noexcept {
    return std::all_of(text, text + length,
                       [](xmlChar c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
}

} // namespace

DomLoader& DomLoader::Of(void* context) noexcept {
    return *static_cast<DomLoader*>(static_cast<xmlParserCtxt*>(context)->_private);
}

void DomLoader::Refuse(HRESULT code, std::string reason) {
    m_failure.code = code;
    m_failure.reason = std::move(reason);
}

xmlDoc* DomLoader::FromBytes(std::string_view bytes) {
    return m_source.FromBytes(bytes, m_failure) ? Parse() : nullptr;
}

xmlDoc* DomLoader::FromText(std::string_view utf8) {
    return m_source.FromText(utf8, m_failure) ? Parse() : nullptr;
}

xmlDoc* DomLoader::Parse() {
    const std::string_view text = m_source.Text();
    if (text.empty()) {
        Refuse(XML_E_MISSINGROOT, "The text is empty: a document must have a root element");
        return nullptr;
    }
    const auto limit = static_cast<ULONGLONG>(std::max<LONG>(m_settings.maxXmlSize, 0)) * 1024;
    if (limit != 0 && text.size() > limit) {
        Refuse(XML_E_MAX_SIZE, "The text is longer than the document allows");
        return nullptr;
    }
    const std::unique_ptr<xmlParserCtxt, ParserDeleter> parser(
        xmlCreateMemoryParserCtxt(text.data(), static_cast<int>(text.size())));
    if (parser == nullptr) throw std::bad_alloc();
    parser->_private = this;
    xmlSAXHandler& sax = *parser->sax;
    sax.startDocument = StartDocument;
    sax.startElementNs = StartElement;
    sax.endElementNs = EndElement;
    sax.characters = Characters;
    sax.ignorableWhitespace = Characters;
    sax.cdataBlock = CData;
    sax.comment = Comment;
    sax.processingInstruction = ProcessingInstruction;
    sax.internalSubset = DocumentType;
    sax.serror = NoteError;
    sax.error = nullptr;
    sax.warning = nullptr;

    // The depth is bounded by the handler, hence the option for huge documents.
    xmlCtxtUseOptions(parser.get(), XML_PARSE_NONET | XML_PARSE_COMPACT | XML_PARSE_HUGE |
                                        (m_source.IsUtf8() ? XML_PARSE_IGNORE_ENC : 0));
    // An attribute xml:id is one like others: it need not be a name, nor be the only one, and no edit has to
    // see to a table of them.
    parser->loadsubset |= XML_SKIP_IDS;
    xmlParseDocument(parser.get());
    xmlDoc* document = std::exchange(parser->myDoc, nullptr);
    if (m_failure.code == S_OK &&
        (document == nullptr || parser->wellFormed == 0 || xmlDocGetRootElement(document) == nullptr))
        FailAt(parser.get(), XML_E_SYNTAX, "The text is not well-formed", 0, 0);
    if (m_failure.code != S_OK) {
        xmlFreeDoc(document);
        return nullptr;
    }
    return document;
}

void DomLoader::FailAt(xmlParserCtxt* parser, HRESULT code, std::string reason, int line, int column) {
    if (m_failure.code == S_OK) {
        Refuse(code, std::move(reason));
        m_failure.line = line;
        m_failure.column = column;
        if (parser->input != nullptr) {
            const auto read = static_cast<std::size_t>(parser->input->cur - parser->input->base);
            m_failure.position = static_cast<LONG>(parser->input->consumed + read);
        }
        NoteSource(line, column);
    }
    xmlStopParser(parser);
}

void DomLoader::NoteSource(int line, int column) {
    std::string_view rest = m_source.Text();
    for (int passed = 1; passed < line; ++passed) {
        const std::size_t end = rest.find('\n');
        if (end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
    rest = rest.substr(0, std::min(rest.find_first_of("\r\n"), rest.size()));
    const auto at = static_cast<std::size_t>(std::max(column, 0));
    std::size_t begin = at > LongestSource ? std::min(at - LongestSource, rest.size()) : 0;
    while (begin < rest.size() && (rest[begin] & 0xC0) == 0x80)
        ++begin;
    std::size_t end = std::min(begin + 2 * LongestSource, rest.size());
    while (end < rest.size() && (rest[end] & 0xC0) == 0x80)
        ++end;
    m_failure.source = rest.substr(begin, end - begin);
}

void DomLoader::NoteError(void* context, xmlError* error) {
    auto* parser = static_cast<xmlParserCtxt*>(error->ctxt != nullptr ? error->ctxt : context);
    if (ParserError::Matters(*error))
        Of(parser).FailAt(parser, CodeOfParserError(error->code), ParserError::Reason(*error), error->line,
                          error->int2);
}

void DomLoader::StartDocument(void* context) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    xmlSAX2StartDocument(context);
    const std::optional<XmlDeclaration>& declared = Of(context).m_source.Declaration();
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
    DomLoader& loader = Of(context);
    loader.EndText();
    if (++loader.m_depth > loader.m_settings.maxElementDepth && loader.m_settings.maxElementDepth > 0) {
        loader.FailAt(parser, XML_E_MAX_ELEMENT_DEPTH, "Elements are nested too deeply", parser->input->line,
                      parser->input->col);
        return;
    }
    xmlSAX2StartElementNs(context, name, prefix, uri, declarationCount, declarations, attributeCount,
                          defaultedCount, attributes);
    xmlNode* element = parser->node;
    if (element == nullptr) return;
    loader.MarkBreak(element, BreakBefore);
    if (declarationCount == 0 || attributeCount == 0) return;
    AttributeOrder::RankFromSource(element, StartTag::Before(*parser->input));
}

void DomLoader::EndElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) {
    DomLoader& loader = Of(context);
    loader.EndText();
    loader.MarkBreak(static_cast<xmlParserCtxt*>(context)->node, BreakBeforeEnd);
    --loader.m_depth;
    xmlSAX2EndElementNs(context, name, prefix, uri);
}

void DomLoader::Characters(void* context, const xmlChar* text, int length) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    DomLoader& loader = Of(context);
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
    Of(context).EndText();
    xmlNode* before = parser->node ? parser->node->last : nullptr;
    xmlSAX2CDataBlock(context, text, length);
    Of(context).AfterNode(parser, before);
}

void DomLoader::Comment(void* context, const xmlChar* text) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    Of(context).EndText();
    xmlNode* before = parser->node ? parser->node->last : nullptr;
    xmlSAX2Comment(context, text);
    Of(context).AfterNode(parser, before);
}

void DomLoader::ProcessingInstruction(void* context, const xmlChar* target, const xmlChar* data) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    Of(context).EndText();
    xmlNode* before = parser->node ? parser->node->last : nullptr;
    xmlSAX2ProcessingInstruction(context, target, data);
    Of(context).AfterNode(parser, before);
}

void DomLoader::DocumentType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    auto* parser = static_cast<xmlParserCtxt*>(context);
    Of(context).FailAt(parser, XML_E_DTD_PROHIBITED, "A document type declaration (DTD) is not allowed",
                       parser->input->line, parser->input->col);
}

} // namespace OvPlatform
