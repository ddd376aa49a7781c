#pragma once

#include "Sax/SaxAttributes.h"
#include "Sax/SaxLocator.h"
#include "Xml/EventParse.h"

#include <atlcomcli.h>

#include <string>
#include <string_view>
#include <vector>

namespace OvPlatform {

/// Whom a parse calls, and how.
struct SaxHandlers {
    CComPtr<ISAXContentHandler> content;
    CComPtr<ISAXErrorHandler> errors;
    CComPtr<ISAXLexicalHandler> lexical;
    /// Whether declarations are among the attributes, as the published reader has it unless told otherwise.
    bool namespacePrefixes = true;
    LONG maxElementDepth = 256;
};

/// One parse of one text, told to its handlers.
class SaxParse final : public EventParse {
public:
    /// The handlers stay what they are during the parse.
    explicit SaxParse(const SaxHandlers& handlers);
    ~SaxParse() override;
    SaxParse(const SaxParse&) = delete;
    SaxParse& operator=(const SaxParse&) = delete;

    HRESULT FromBytes(std::string_view bytes);
    HRESULT FromText(std::string_view utf8);
    /// The stream is read as the handlers are told, so that its text is never in memory as a whole.
    HRESULT FromStream(CComPtr<ISequentialStream> stream);
    /// There is no text. Tells the error handler, and gives the code back.
    HRESULT Fail(const XmlFailure& failure);

private:
    struct Scope {
        std::size_t prefixes;
        std::wstring uri;
        std::wstring localName;
        std::wstring qName;
    };

    void StartDocument() override;
    void EndDocument() override;
    void StartElement(const StartTagEvent& tag) override;
    void EndElement(const xmlChar* name, const xmlChar* prefix, const xmlChar* uri) override;
    void Characters(const xmlChar* text, int length) override;
    void CData(const xmlChar* text, int length) override;
    void Comment(const xmlChar* text) override;
    void ProcessingInstruction(const xmlChar* target, const xmlChar* data) override;

    HRESULT Parse();
    void ListAttributes(const StartTagEvent& tag);
    template <class Call>
    void Tell(Call&& call);
    const std::wstring& Wide(std::string_view text);

    const SaxHandlers m_handlers;
    SaxLocator* m_locator;
    SaxAttributes* m_attributes;
    std::vector<Scope> m_scopes;
    std::vector<std::wstring> m_prefixes;
    std::wstring m_text;
    HRESULT m_result = S_OK;
};

} // namespace OvPlatform
