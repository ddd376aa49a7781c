#pragma once

#include "Dom/SaxAttributes.h"
#include "Dom/SaxLocator.h"
#include "Dom/SourceText.h"

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

/// One parse of one text.
class SaxParse {
public:
    /// The handlers stay what they are during the parse.
    explicit SaxParse(const SaxHandlers& handlers);
    ~SaxParse();
    SaxParse(const SaxParse&) = delete;
    SaxParse& operator=(const SaxParse&) = delete;

    HRESULT FromBytes(std::string_view bytes);
    HRESULT FromText(std::string_view utf8);
    /// There is no text. Tells the error handler, and gives the code back.
    HRESULT Fail(const DomFailure& failure);

private:
    struct Scope {
        std::size_t prefixes;
        std::wstring uri;
        std::wstring localName;
        std::wstring qName;
    };

    static SaxParse& Of(void* context) noexcept;
    static void StartDocument(void* context);
    static void EndDocument(void* context);
    static void StartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                             int declarationCount, const xmlChar** declarations, int attributeCount,
                             int defaultedCount, const xmlChar** attributes);
    static void EndElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri);
    static void Characters(void* context, const xmlChar* text, int length);
    static void CData(void* context, const xmlChar* text, int length);
    static void Comment(void* context, const xmlChar* text);
    static void ProcessingInstruction(void* context, const xmlChar* target, const xmlChar* data);
    static void DocumentType(void* context, const xmlChar* name, const xmlChar* publicId,
                             const xmlChar* systemId);
    static void NoteError(void* context, xmlError* error);

    HRESULT Run(const SourceText& source);
    void ListAttributes(int declarationCount, const xmlChar** declarations, int attributeCount,
                        const xmlChar** attributes);
    template <class Call>
    void Tell(Call&& call);
    const std::wstring& Wide(std::string_view text);

    const SaxHandlers m_handlers;
    xmlParserCtxt* m_parser = nullptr;
    SaxLocator* m_locator;
    SaxAttributes* m_attributes;
    std::vector<Scope> m_scopes;
    std::size_t m_depth = 0;
    std::vector<std::wstring> m_prefixes;
    std::wstring m_text;
    HRESULT m_result = S_OK;
    DomFailure m_failure;
};

} // namespace OvPlatform
