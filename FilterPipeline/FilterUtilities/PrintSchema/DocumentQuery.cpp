#include "DocumentQuery.h"

#include "Bstr.h"
#include "PrintSchemaXmlDocument.h"
#include "PrivateKeywordNames.h"

#include <ComSupport/ThrowHresult.h>

#include <algorithm>
#include <limits>
#include <utility>

using namespace PrintSchemaText;

DocumentQuery::DocumentQuery(const PrintSchemaXmlDocument& document)
    : PrintTicketQueryBuilder(document.FrameworkPrefix()), m_document(document) {}

void DocumentQuery::AddKeyword(const wchar_t* element, const wchar_t* prefix, const wchar_t* name) {
    constexpr char function[] = "PrintTicketQueryBuilder::AddFeature";
    const PrivateKeywordNames privateNames(m_document, function);
    std::vector<CComBSTR> names;
    if (!privateNames.AreMeantBy(View(prefix))) {
        names.push_back(Join({View(prefix), View(name)}, function));
    } else {
        for (const std::wstring_view each : privateNames.Prefixes())
            names.push_back(Join({each, View(name)}, function));
        if (!privateNames.AreNormalised())
            for (const CComBSTR& each : names)
                m_doubtful.push_back(Copy(each, function));
    }
    AddNamed(element, names, function);
}

HRESULT DocumentQuery::AddFeature(const wchar_t* prefix, const wchar_t* name) {
    AddKeyword(PrintSchema::FEATURE_ELEMENT_NAME, prefix, name);
    return S_OK;
}

HRESULT DocumentQuery::AddProperty(const wchar_t* prefix, const wchar_t* name) {
    AddKeyword(PrintSchema::PROPERTY_ELEMENT_NAME, prefix, name);
    return S_OK;
}

HRESULT DocumentQuery::AddParameterDef(const wchar_t* prefix, const wchar_t* name) {
    AddKeyword(PrintSchema::PARAM_DEF_ELEMENT_NAME, prefix, name);
    return S_OK;
}

HRESULT DocumentQuery::AddParameterInit(const wchar_t* prefix, const wchar_t* name) {
    AddKeyword(PrintSchema::PARAM_INIT_ELEMENT_NAME, prefix, name);
    return S_OK;
}

CComBSTR DocumentQuery::Text() const {
    CComBSTR text;
    GetQuery(&text);
    return text;
}

bool DocumentQuery::IsMeant(IXMLDOMNode* found, const char* function) const {
    const PrivateKeywordNames privateNames(m_document, function);
    for (CComPtr<IXMLDOMNode> each = found; each;) {
        CComBSTR name;
        PrintSchemaXmlDocument::ReadAttribute(each, PrintSchema::NAME_ATTRIBUTE_NAME, name, function);
        const bool isDoubtful = std::any_of(m_doubtful.begin(), m_doubtful.end(),
                                            [&](const CComBSTR& asked) { return View(asked) == View(name); });
        if (isDoubtful && !privateNames.StandsAt(each, View(name))) return false;
        CComPtr<IXMLDOMNode> parent;
        ThrowIfFailed(each->get_parentNode(&parent), function);
        each = std::move(parent);
    }
    return true;
}

std::vector<CComPtr<IXMLDOMNode>> DocumentQuery::Find(std::size_t limit, const char* function) const {
    std::vector<CComPtr<IXMLDOMNode>> found;
    const CComPtr<IXMLDOMNodeList> nodes = m_document.SelectNodes(Text(), function);
    while (found.size() < limit) {
        CComPtr<IXMLDOMNode> node;
        ThrowIfFailed(nodes->nextNode(&node), function);
        if (!node) break;
        if (m_doubtful.empty() || IsMeant(node, function)) found.push_back(std::move(node));
    }
    return found;
}

CComPtr<IXMLDOMNode> DocumentQuery::FindFirst(const char* function) const {
    if (m_doubtful.empty()) {
        CComPtr<IXMLDOMNode> node;
        m_document.GetNode(Text(), &node);
        return node;
    }
    std::vector<CComPtr<IXMLDOMNode>> found = Find(1, function);
    return found.empty() ? nullptr : std::move(found.front());
}

std::vector<CComPtr<IXMLDOMNode>> DocumentQuery::FindAll(const char* function) const {
    return Find((std::numeric_limits<std::size_t>::max)(), function);
}
