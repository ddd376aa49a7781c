#pragma once

#include "Dom/DomNode.h"

namespace OvPlatform {

class DomElement final : public DomNode<IXMLDOMElement> {
public:
    DomElement(DomTree& tree, xmlNode* element) noexcept : DomNode(tree, element) {}

    HRESULT STDMETHODCALLTYPE get_tagName(BSTR* name) override;
    HRESULT STDMETHODCALLTYPE getAttribute(BSTR name, VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE setAttribute(BSTR name, VARIANT value) override;
    HRESULT STDMETHODCALLTYPE removeAttribute(BSTR name) override;
    HRESULT STDMETHODCALLTYPE getAttributeNode(BSTR name, IXMLDOMAttribute** attribute) override;
    HRESULT STDMETHODCALLTYPE setAttributeNode(IXMLDOMAttribute* attribute,
                                               IXMLDOMAttribute** replaced) override;
    HRESULT STDMETHODCALLTYPE removeAttributeNode(IXMLDOMAttribute* attribute,
                                                  IXMLDOMAttribute** removed) override;
    HRESULT STDMETHODCALLTYPE getElementsByTagName(BSTR name, IXMLDOMNodeList** list) override;
    /// Joins texts that stand side by side, and drops empty ones.
    HRESULT STDMETHODCALLTYPE normalize() override;

private:
    /// Joins the texts behind a text to it.
    void JoinTexts(xmlNode* first);
};

} // namespace OvPlatform
