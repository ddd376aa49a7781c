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
    xmlStopParser(Parser());
}

const std::wstring& SaxParse::Wide(std::string_view text) {
    Assign(m_text, text);
    return m_text;
}

HRESULT SaxParse::FromBytes(std::string_view bytes) { return TakeBytes(bytes) ? Parse() : Fail(Failure()); }

HRESULT SaxParse::FromText(std::string_view utf8) { return TakeText(utf8) ? Parse() : Fail(Failure()); }

HRESULT SaxParse::FromStream(CComPtr<ISequentialStream> stream) {
    return TakeStream(std::move(stream)) ? Parse() : Fail(Failure());
}

HRESULT SaxParse::Fail(const XmlFailure& failure) {
    if (m_handlers.errors) {
        const std::wstring reason = Wide(failure.reason);
        m_handlers.errors->fatalError(m_locator, reason.c_str(), failure.code);
    }
    return failure.code;
}

HRESULT SaxParse::Parse() {
    // With entities in place of their references; there are only those of XML itself.
    if (!Open(XML_PARSE_NOENT)) return Fail(Failure());
    m_locator->Follow(Parser());
    Run();
    if (m_result == S_OK && Failure().code != S_OK) m_result = Fail(Failure());
    m_locator->Follow(nullptr);
    return m_result;
}

void SaxParse::StartDocument() {
    const auto& content = m_handlers.content;
    if (!content) return;
    Tell([&] { return content->putDocumentLocator(m_locator); });
    Tell([&] { return content->startDocument(); });
}

void SaxParse::EndDocument() {
    const auto& content = m_handlers.content;
    if (content && Failure().code == S_OK && Parser()->wellFormed != 0)
        Tell([&] { return content->endDocument(); });
}

void SaxParse::ListAttributes(const StartTagEvent& tag) {
    m_attributes->Clear();
    const auto addDeclaration = [&](int index) {
        SaxAttributes::Item& item = m_attributes->Add();
        const xmlChar* prefix = tag.declarations[2 * index];
        item.qName = prefix != nullptr ? L"xmlns:" : L"xmlns";
        AppendUtf16(item.qName, View(prefix));
        AppendUtf16(item.value, View(tag.declarations[2 * index + 1]));
    };
    const auto addAttribute = [&](int index) {
        const xmlChar** attribute = tag.attributes + 5 * index;
        SaxAttributes::Item& item = m_attributes->Add();
        Assign(item.localName, View(attribute[0]));
        AssignName(item.qName, attribute[1], attribute[0]);
        Assign(item.uri, View(attribute[2]));
        Assign(item.value, View(attribute[3], static_cast<int>(attribute[4] - attribute[3])));
    };
    const int declarationCount = m_handlers.namespacePrefixes ? tag.declarationCount : 0;
    int declaration = 0;
    int attribute = 0;
    if (declarationCount != 0) {
        StartTag source = StartTag::Before(*Parser()->input);
        for (std::string_view name = source.NextName(); !name.empty(); name = source.NextName()) {
            if (StartTag::IsDeclaration(name)) {
                if (declaration < declarationCount) addDeclaration(declaration++);
            } else if (attribute < tag.attributeCount) {
                addAttribute(attribute++);
            }
        }
    }
    while (declaration < declarationCount)
        addDeclaration(declaration++);
    while (attribute < tag.attributeCount)
        addAttribute(attribute++);
}

void SaxParse::StartElement(const StartTagEvent& tag) {
    if (!Enter(m_handlers.maxElementDepth)) return;
    if (Depth() > m_scopes.size()) m_scopes.emplace_back();
    Scope& scope = m_scopes[Depth() - 1];
    const auto& content = m_handlers.content;
    if (!content) return;
    scope.prefixes = m_prefixes.size();
    Assign(scope.uri, View(tag.uri));
    Assign(scope.localName, View(tag.name));
    AssignName(scope.qName, tag.prefix, tag.name);
    for (int index = 0; index < tag.declarationCount; ++index) {
        std::wstring& declared = m_prefixes.emplace_back();
        AppendUtf16(declared, View(tag.declarations[2 * index]));
        const std::wstring& target = Wide(View(tag.declarations[2 * index + 1]));
        Tell([&] {
            return content->startPrefixMapping(declared.c_str(), Length(declared), target.c_str(),
                                               Length(target));
        });
    }
    ListAttributes(tag);
    Tell([&] {
        return content->startElement(scope.uri.c_str(), Length(scope.uri), scope.localName.c_str(),
                                     Length(scope.localName), scope.qName.c_str(), Length(scope.qName),
                                     m_attributes);
    });
    m_attributes->Clear();
}

void SaxParse::EndElement(const xmlChar*, const xmlChar*, const xmlChar*) {
    if (Depth() == 0) return;
    const Scope& scope = m_scopes[Depth() - 1];
    Leave();
    const auto& content = m_handlers.content;
    if (!content) return;
    Tell([&] {
        return content->endElement(scope.uri.c_str(), Length(scope.uri), scope.localName.c_str(),
                                   Length(scope.localName), scope.qName.c_str(), Length(scope.qName));
    });
    for (; m_prefixes.size() > scope.prefixes; m_prefixes.pop_back()) {
        const std::wstring& prefix = m_prefixes.back();
        Tell([&] { return content->endPrefixMapping(prefix.c_str(), Length(prefix)); });
    }
}

void SaxParse::Characters(const xmlChar* text, int length) {
    const auto& content = m_handlers.content;
    if (!content) return;
    const std::wstring& wide = Wide(View(text, length));
    Tell([&] { return content->characters(wide.c_str(), Length(wide)); });
}

void SaxParse::CData(const xmlChar* text, int length) {
    const auto& lexical = m_handlers.lexical;
    if (lexical) Tell([&] { return lexical->startCDATA(); });
    Characters(text, length);
    if (lexical) Tell([&] { return lexical->endCDATA(); });
}

void SaxParse::Comment(const xmlChar* text) {
    const auto& lexical = m_handlers.lexical;
    if (!lexical) return;
    const std::wstring& wide = Wide(View(text));
    Tell([&] { return lexical->comment(wide.c_str(), Length(wide)); });
}

void SaxParse::ProcessingInstruction(const xmlChar* target, const xmlChar* data) {
    const auto& content = m_handlers.content;
    if (!content) return;
    std::wstring name;
    AppendUtf16(name, View(target));
    const std::wstring& wide = Wide(View(data));
    Tell([&] {
        return content->processingInstruction(name.c_str(), Length(name), wide.c_str(), Length(wide));
    });
}

} // namespace OvPlatform
