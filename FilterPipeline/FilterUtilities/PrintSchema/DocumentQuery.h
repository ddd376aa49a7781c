#pragma once

#include "PrintSchema/PrintTicketQueryBuilder.h"

#include <msxml6.h>

#include <vector>

class PrintSchemaXmlDocument;

/// A question to one document, with its framework prefix. Other than a query as text, it finds private names
/// by their namespace: under each prefix that stands for it in the document, and never those of somebody else
/// who uses the same prefix. The document is borrowed.
class DocumentQuery : public PrintTicketQueryBuilder {
public:
    explicit DocumentQuery(const PrintSchemaXmlDocument& document);

    HRESULT AddFeature(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddProperty(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddParameterDef(const wchar_t* prefix, const wchar_t* name);
    HRESULT AddParameterInit(const wchar_t* prefix, const wchar_t* name);

    using PrintTicketQueryBuilder::Text;
    /// The first that it finds in the document, null if there is none. Failures are raised under the name of
    /// the operation that asks.
    [[nodiscard]] CComPtr<IXMLDOMNode> FindFirst() const;
    [[nodiscard]] std::vector<CComPtr<IXMLDOMNode>> FindAll() const;

private:
    void AddKeyword(const wchar_t* element, const wchar_t* prefix, const wchar_t* name);
    [[nodiscard]] bool IsMeant(IXMLDOMNode* found) const;
    std::vector<CComPtr<IXMLDOMNode>> Find(std::size_t limit) const;

    const PrintSchemaXmlDocument& m_document;
    std::vector<CComBSTR> m_doubtful; // names that stand for a private one only where their prefix does
};
