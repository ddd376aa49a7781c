#include "PrintSchema/DocumentQuery.h"

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/PrintSchemaXmlDocument.h"
#include "PrintSchema/PrivateKeywordNames.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

using namespace PrintSchemaText;

DocumentQuery::DocumentQuery(const PrintSchemaXmlDocument& document)
    : PrintTicketQueryBuilder(document.FrameworkPrefix()), m_document(document) {}

void DocumentQuery::AddKeyword(const wchar_t* element, const wchar_t* prefix, const wchar_t* name) {
    const PrivateKeywordNames privateNames(m_document);
    if (!privateNames.AreMeantBy(View(prefix))) return AddNamed(element, View(prefix), View(name));
    std::vector<CComBSTR> names;
    for (const std::wstring_view each : privateNames.Prefixes())
        names.push_back(Join({each, View(name)}));
    AddNamed(element, names);
    if (!privateNames.AreNormalised()) std::ranges::move(names, std::back_inserter(m_doubtful));
}

HRESULT DocumentQuery::AddFeature(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("DocumentQuery::AddFeature");
    AddKeyword(PrintSchema::FEATURE_ELEMENT_NAME, prefix, name);
    return S_OK;
}

HRESULT DocumentQuery::AddProperty(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("DocumentQuery::AddProperty");
    AddKeyword(PrintSchema::PROPERTY_ELEMENT_NAME, prefix, name);
    return S_OK;
}

HRESULT DocumentQuery::AddParameterDef(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("DocumentQuery::AddParameterDef");
    AddKeyword(PrintSchema::PARAM_DEF_ELEMENT_NAME, prefix, name);
    return S_OK;
}

HRESULT DocumentQuery::AddParameterInit(const wchar_t* prefix, const wchar_t* name) {
    const OperationScope operation("DocumentQuery::AddParameterInit");
    AddKeyword(PrintSchema::PARAM_INIT_ELEMENT_NAME, prefix, name);
    return S_OK;
}

bool DocumentQuery::IsMeant(IXMLDOMNode* found) const {
    const PrivateKeywordNames privateNames(m_document);
    for (CComPtr<IXMLDOMNode> each = found; each;) {
        CComBSTR name;
        PrintSchemaXmlDocument::ReadAttribute(each, PrintSchema::NAME_ATTRIBUTE_NAME, name);
        const bool isDoubtful = std::any_of(m_doubtful.begin(), m_doubtful.end(),
                                            [&](const CComBSTR& asked) { return View(asked) == View(name); });
        if (isDoubtful && !privateNames.StandsAt(each, View(name))) return false;
        CComPtr<IXMLDOMNode> parent;
        ThrowIfFailed(each->get_parentNode(&parent));
        each = std::move(parent);
    }
    return true;
}

std::vector<CComPtr<IXMLDOMNode>> DocumentQuery::Find(std::size_t limit) const {
    std::vector<CComPtr<IXMLDOMNode>> found;
    const CComPtr<IXMLDOMNodeList> nodes = m_document.SelectNodes(Text());
    while (found.size() < limit) {
        CComPtr<IXMLDOMNode> node;
        ThrowIfFailed(nodes->nextNode(&node));
        if (!node) break;
        if (m_doubtful.empty() || IsMeant(node)) found.push_back(std::move(node));
    }
    return found;
}

CComPtr<IXMLDOMNode> DocumentQuery::FindFirst() const {
    if (m_doubtful.empty()) return m_document.SelectFirst(Text());
    std::vector<CComPtr<IXMLDOMNode>> found = Find(1);
    return found.empty() ? nullptr : std::move(found.front());
}

std::vector<CComPtr<IXMLDOMNode>> DocumentQuery::FindAll() const {
    return Find((std::numeric_limits<std::size_t>::max)());
}
