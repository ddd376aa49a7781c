#pragma once

#include "Dom/DomNode.h"
#include "Xml/TextConversion.h"

namespace OvPlatform {

/// A processing instruction; the XML declaration is one with the target `xml`.
class DomProcessingInstruction final : public DomNode<IXMLDOMProcessingInstruction> {
public:
    DomProcessingInstruction(DomTree& tree, xmlNode* instruction) noexcept : DomNode(tree, instruction) {}

    HRESULT STDMETHODCALLTYPE get_target(BSTR* name) override {
        return Guarded([&] { return NodeName(name); });
    }
    HRESULT STDMETHODCALLTYPE get_data(BSTR* value) override {
        return Guarded([&] { return GiveText(value, View(Node()->content)); });
    }
    HRESULT STDMETHODCALLTYPE put_data(BSTR value) override {
        return Guarded([&] { return SetText(value); });
    }
};

} // namespace OvPlatform
