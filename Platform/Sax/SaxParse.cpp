#include "Sax/SaxParse.h"

#include "Xml/StartTag.h"
#include "Xml/TextConversion.h"
#include "Xml/XmlString.h"

#include <libxml/parserInternals.h>

namespace OvPlatform {

namespace {

int Length(const std::wstring& text) noexcept { return static_cast<int>(text.size()); }

void AssignName(std::wstring& target, const xmlChar* prefix, const xmlChar* name) {
    target.clear();
    if (prefix != nullptr) {
        AppendUtf16(target, View(prefix));
        target += L':';
    }
    AppendUtf16(target, View(name));
}

void Assign(std::wstring& target, std::string_view text) {
    target.clear();
    AppendUtf16(target, text);
}

} // namespace

SaxParse::SaxParse(const SaxHandlers& handlers)
    : m_handlers(handlers), m_locator(new SaxLocator), m_attributes(new SaxAttributes) {}

SaxParse::~SaxParse() {
    m_locator->Follow(nullptr);
    m_locator->Release();
    m_attributes->Clear();
    m_attributes->Release();
}

/// Calls a handler, unless one has failed already. Its failure ends the parse.
template <class Call>
void SaxParse::Tell(Call&& call) {
    if (m_result != S_OK) return;
    const HRESULT result = call();
    if (SUCCEEDED(result)) return;
    m_result = result;
    xmlStopParser(m_parser);
}

const std::wstring& SaxParse::Wide(std::string_view text) {
    Assign(m_text, text);
    return m_text;
}

HRESULT SaxParse::FromBytes(std::string_view bytes) { return TakeBytes(bytes) ? Parse() : Fail(Failure()); }

HRESULT SaxParse::FromText(std::string_view utf8) { return TakeText(utf8) ? Parse() : Fail(Failure()); }

HRESULT SaxParse::Fail(const XmlFailure& failure) {
    if (m_handlers.errors) {
        const std::wstring reason = Wide(failure.reason);
        m_handlers.errors->fatalError(m_locator, reason.c_str(), failure.code);
    }
    return failure.code;
}

void SaxParse::SetHandlers(xmlSAXHandler& handlers) {
    handlers = {}; // no tree is made
    handlers.initialized = XML_SAX2_MAGIC;
    handlers.startDocument = StartDocument;
    handlers.endDocument = EndDocument;
    handlers.startElementNs = StartElement;
    handlers.endElementNs = EndElement;
    handlers.characters = Characters;
    handlers.ignorableWhitespace = Characters;
    handlers.cdataBlock = CData;
    handlers.comment = Comment;
    handlers.processingInstruction = ProcessingInstruction;
}

HRESULT SaxParse::Parse() {
    // With entities in place of their references; there are only those of XML itself.
    const XmlPointer<xmlParserCtxt> parser = NewParser(SetHandlers, XML_PARSE_NOENT);
    if (parser == nullptr) return Fail(Failure());
    m_parser = parser.get();
    m_locator->Follow(m_parser);
    Run(m_parser);
    if (m_result == S_OK && Failure().code != S_OK) m_result = Fail(Failure());
    m_locator->Follow(nullptr);
    m_parser = nullptr;
    return m_result;
}

void SaxParse::StartDocument(void* context) {
    SaxParse& parse = Of<SaxParse>(context);
    const auto& content = parse.m_handlers.content;
    if (!content) return;
    parse.Tell([&] { return content->putDocumentLocator(parse.m_locator); });
    parse.Tell([&] { return content->startDocument(); });
}

void SaxParse::EndDocument(void* context) {
    SaxParse& parse = Of<SaxParse>(context);
    const auto& content = parse.m_handlers.content;
    if (content && parse.Failure().code == S_OK && parse.m_parser->wellFormed != 0)
        parse.Tell([&] { return content->endDocument(); });
}

void SaxParse::ListAttributes(int declarationCount, const xmlChar** declarations, int attributeCount,
                              const xmlChar** attributes) {
    m_attributes->Clear();
    const auto addDeclaration = [&](int index) {
        SaxAttributes::Item& item = m_attributes->Add();
        const xmlChar* prefix = declarations[2 * index];
        item.qName = prefix != nullptr ? L"xmlns:" : L"xmlns";
        AppendUtf16(item.qName, View(prefix));
        AppendUtf16(item.value, View(declarations[2 * index + 1]));
    };
    const auto addAttribute = [&](int index) {
        const xmlChar** attribute = attributes + 5 * index;
        SaxAttributes::Item& item = m_attributes->Add();
        Assign(item.localName, View(attribute[0]));
        AssignName(item.qName, attribute[1], attribute[0]);
        Assign(item.uri, View(attribute[2]));
        Assign(item.value, View(attribute[3], static_cast<int>(attribute[4] - attribute[3])));
    };
    if (!m_handlers.namespacePrefixes) declarationCount = 0;
    int declaration = 0;
    int attribute = 0;
    if (declarationCount != 0) {
        StartTag tag = StartTag::Before(*m_parser->input);
        for (std::string_view name = tag.NextName(); !name.empty(); name = tag.NextName()) {
            if (StartTag::IsDeclaration(name)) {
                if (declaration < declarationCount) addDeclaration(declaration++);
            } else if (attribute < attributeCount) {
                addAttribute(attribute++);
            }
        }
    }
    while (declaration < declarationCount)
        addDeclaration(declaration++);
    while (attribute < attributeCount)
        addAttribute(attribute++);
}

void SaxParse::StartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                            int declarationCount, const xmlChar** declarations, int attributeCount, int,
                            const xmlChar** attributes) {
    SaxParse& parse = Of<SaxParse>(context);
    if (!parse.Enter(parse.m_parser, parse.m_handlers.maxElementDepth)) return;
    if (parse.Depth() > parse.m_scopes.size()) parse.m_scopes.emplace_back();
    Scope& scope = parse.m_scopes[parse.Depth() - 1];
    const auto& content = parse.m_handlers.content;
    if (!content) return;
    scope.prefixes = parse.m_prefixes.size();
    Assign(scope.uri, View(uri));
    Assign(scope.localName, View(name));
    AssignName(scope.qName, prefix, name);
    for (int index = 0; index < declarationCount; ++index) {
        std::wstring& declared = parse.m_prefixes.emplace_back();
        AppendUtf16(declared, View(declarations[2 * index]));
        const std::wstring& target = parse.Wide(View(declarations[2 * index + 1]));
        parse.Tell([&] {
            return content->startPrefixMapping(declared.c_str(), Length(declared), target.c_str(),
                                               Length(target));
        });
    }
    parse.ListAttributes(declarationCount, declarations, attributeCount, attributes);
    parse.Tell([&] {
        return content->startElement(scope.uri.c_str(), Length(scope.uri), scope.localName.c_str(),
                                     Length(scope.localName), scope.qName.c_str(), Length(scope.qName),
                                     parse.m_attributes);
    });
    parse.m_attributes->Clear();
}

void SaxParse::EndElement(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    SaxParse& parse = Of<SaxParse>(context);
    if (parse.Depth() == 0) return;
    const Scope& scope = parse.m_scopes[parse.Depth() - 1];
    parse.Leave();
    const auto& content = parse.m_handlers.content;
    if (!content) return;
    parse.Tell([&] {
        return content->endElement(scope.uri.c_str(), Length(scope.uri), scope.localName.c_str(),
                                   Length(scope.localName), scope.qName.c_str(), Length(scope.qName));
    });
    for (; parse.m_prefixes.size() > scope.prefixes; parse.m_prefixes.pop_back()) {
        const std::wstring& prefix = parse.m_prefixes.back();
        parse.Tell([&] { return content->endPrefixMapping(prefix.c_str(), Length(prefix)); });
    }
}

void SaxParse::Characters(void* context, const xmlChar* text, int length) {
    SaxParse& parse = Of<SaxParse>(context);
    const auto& content = parse.m_handlers.content;
    if (!content) return;
    const std::wstring& wide = parse.Wide(View(text, length));
    parse.Tell([&] { return content->characters(wide.c_str(), Length(wide)); });
}

void SaxParse::CData(void* context, const xmlChar* text, int length) {
    SaxParse& parse = Of<SaxParse>(context);
    const auto& lexical = parse.m_handlers.lexical;
    if (lexical) parse.Tell([&] { return lexical->startCDATA(); });
    Characters(context, text, length);
    if (lexical) parse.Tell([&] { return lexical->endCDATA(); });
}

void SaxParse::Comment(void* context, const xmlChar* text) {
    SaxParse& parse = Of<SaxParse>(context);
    const auto& lexical = parse.m_handlers.lexical;
    if (!lexical) return;
    const std::wstring& wide = parse.Wide(View(text));
    parse.Tell([&] { return lexical->comment(wide.c_str(), Length(wide)); });
}

void SaxParse::ProcessingInstruction(void* context, const xmlChar* target, const xmlChar* data) {
    SaxParse& parse = Of<SaxParse>(context);
    const auto& content = parse.m_handlers.content;
    if (!content) return;
    std::wstring name;
    AppendUtf16(name, View(target));
    const std::wstring& wide = parse.Wide(View(data));
    parse.Tell([&] {
        return content->processingInstruction(name.c_str(), Length(name), wide.c_str(), Length(wide));
    });
}

} // namespace OvPlatform
