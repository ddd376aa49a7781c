#include "PrintSchema/TreeChange.h"

#include "ComSupport/ThrowHresult.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/DocumentQuery.h"

using namespace PrintSchemaText;

namespace {

using Node = CComPtr<IXMLDOMNode>;

VARIANT Reference(IXMLDOMNode* node) {
    VARIANT variant;
    ::VariantInit(&variant);
    if (node == nullptr) return variant;
    variant.vt = VT_UNKNOWN;
    variant.punkVal = node;
    return variant;
}

// What is declared as a private name is written. The attributes of a root element can be thousands: no others
// are looked at.
constexpr const wchar_t* declarations[] = {L"xmlns:ok", L"xmlns:ns0000"};

std::wstring_view TextOf(const CComVariant& value) {
    return value.vt == VT_BSTR ? std::wstring_view(value.bstrVal, ::SysStringLen(value.bstrVal))
                               : std::wstring_view();
}

} // namespace

TreeChange::TreeChange(IXMLDOMNode* root) {
    if (root == nullptr) ThrowComException(E_PENDING);
    ThrowIfFailed(root->QueryInterface(&m_root));
    for (const wchar_t* const name : declarations) {
        Declaration declaration{Make(name), {}};
        ThrowIfFailed(m_root->getAttribute(declaration.name, &declaration.uri));
        m_declarations.push_back(std::move(declaration));
    }
}

TreeChange::~TreeChange() {
    if (m_isKept) return;
    try {
        for (auto step = m_steps.rbegin(); step != m_steps.rend(); ++step)
            TakeBack(*step);
        RestoreDeclarations();
    } catch (...) {
        // A second failure, on the way back from the first: there is nothing left to try.
    }
}

// ---- Changing

bool TreeChange::Replace(const DocumentQuery& query, IXMLDOMNode* replacement, Place place) {
    const std::vector<Node> old = query.FindAll();
    if (replacement != nullptr) {
        Node before;
        if (place == Place::First) ThrowIfFailed(m_root->get_firstChild(&before));
        Insert(m_root, replacement, before);
    }
    for (const Node& node : old)
        Remove(node);
    return !old.empty();
}

void TreeChange::Append(IXMLDOMNode* parent, IXMLDOMNode* child) { Insert(parent, child, nullptr); }

void TreeChange::Insert(IXMLDOMNode* parent, IXMLDOMNode* child, IXMLDOMNode* before) {
    m_steps.push_back(PlaceOf(child));
    const HRESULT hr = parent->insertBefore(child, Reference(before), nullptr);
    if (FAILED(hr)) m_steps.pop_back();
    ThrowIfFailed(hr);
}

bool TreeChange::Remove(IXMLDOMNode* node) {
    Before step = PlaceOf(node);
    const Node parent = step.parent;
    if (!parent) return false;
    m_steps.push_back(std::move(step));
    const HRESULT hr = parent->removeChild(node, nullptr);
    if (FAILED(hr)) m_steps.pop_back();
    ThrowIfFailed(hr);
    return true;
}

void TreeChange::SetValue(IXMLDOMNode* node, BSTR value) {
    Before step;
    step.node = node;
    ThrowIfFailed(node->get_nodeValue(&step.value));
    m_steps.push_back(std::move(step));
    const HRESULT hr = node->put_nodeValue(Borrowed(value));
    if (FAILED(hr)) m_steps.pop_back();
    ThrowIfFailed(hr);
}

TreeChange::Before TreeChange::PlaceOf(IXMLDOMNode* node) const {
    Before step;
    step.node = node;
    step.isMoved = true;
    ThrowIfFailed(node->get_parentNode(&step.parent));
    if (step.parent) ThrowIfFailed(node->get_nextSibling(&step.nextSibling));
    return step;
}

// ---- Taking back. What fails here is passed over, so that the rest comes back all the same.

void TreeChange::TakeBack(const Before& step) {
    if (!step.isMoved) {
        step.node->put_nodeValue(step.value);
        return;
    }
    if (step.parent) {
        step.parent->insertBefore(step.node, Reference(step.nextSibling), nullptr);
        return;
    }
    Node parent;
    if (SUCCEEDED(step.node->get_parentNode(&parent)) && parent) parent->removeChild(step.node, nullptr);
}

void TreeChange::RestoreDeclarations() const {
    for (const Declaration& before : m_declarations) {
        CComVariant uri;
        if (FAILED(m_root->getAttribute(before.name, &uri)) || TextOf(uri) == TextOf(before.uri)) continue;
        if (before.uri.vt == VT_BSTR)
            m_root->setAttribute(before.name, before.uri);
        else
            m_root->removeAttribute(before.name);
    }
}
