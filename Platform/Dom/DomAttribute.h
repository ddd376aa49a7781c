#pragma once

#include "Dom/DomNode.h"

namespace OvPlatform {

/// An attribute, or a namespace declaration as one.
class DomAttribute final : public DomNode<IXMLDOMAttribute> {
public:
    DomAttribute(DomTree& tree, xmlNode* attribute) noexcept : DomNode(tree, attribute) {}

    HRESULT STDMETHODCALLTYPE get_name(BSTR* name) override {
        return Guarded([&] { return NodeName(name); });
    }
    HRESULT STDMETHODCALLTYPE get_value(VARIANT* value) override {
        return Guarded([&] { return TypedValue(value); });
    }
    HRESULT STDMETHODCALLTYPE put_value(VARIANT value) override {
        return Guarded([&] { return SetNodeValue(value); });
    }
};

} // namespace OvPlatform
