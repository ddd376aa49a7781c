#pragma once

#include "Dom/DomNodeList.h"

namespace OvPlatform {

/// The attributes and namespace declarations of an element, one sequence in the order of the text.
class DomNamedNodeMap final : public DomNodeSequence<IXMLDOMNamedNodeMap> {
public:
    explicit DomNamedNodeMap(DomNodeObject& element) noexcept;

    HRESULT STDMETHODCALLTYPE getNamedItem(BSTR name, IXMLDOMNode** item) override;
    HRESULT STDMETHODCALLTYPE setNamedItem(IXMLDOMNode* newItem, IXMLDOMNode** item) override;
    HRESULT STDMETHODCALLTYPE removeNamedItem(BSTR name, IXMLDOMNode** item) override;
    HRESULT STDMETHODCALLTYPE getQualifiedItem(BSTR baseName, BSTR namespaceUri, IXMLDOMNode** item) override;
    HRESULT STDMETHODCALLTYPE removeQualifiedItem(BSTR baseName, BSTR namespaceUri,
                                                  IXMLDOMNode** item) override;

    // The same for the operations of elements. Results are counted, and null where there is nothing to give.

    /// S_FALSE and null if the element has no such attribute.
    static HRESULT Get(DomNodeObject& element, BSTR name, IXMLDOMNode** item);
    /// Gives the element an attribute and gives back the one of that name that it replaces.
    static HRESULT Set(DomNodeObject& element, IXMLDOMNode* attribute, IXMLDOMNode** replaced);
    /// Sets an attribute's value, and makes the attribute if there is none. E_FAIL for an undeclared prefix.
    static HRESULT SetValue(DomNodeObject& element, BSTR name, std::string_view value);
    static HRESULT Remove(DomNodeObject& element, AttributeSlot slot, IXMLDOMNode** removed);

    /// Whether an element may declare that prefix so: not if its own name or an attribute's is bound to
    /// another.
    static bool MayDeclare(const xmlNode* element, std::string_view prefix, std::string_view uri) noexcept;

private:
    ~DomNamedNodeMap() override;
    HRESULT GiveAt(std::size_t index, IXMLDOMNode** item) override;
    std::size_t Length() override;
    static HRESULT Give(DomNodeObject& element, AttributeSlot slot, IXMLDOMNode** item);

    DomNodeObject& m_element;
    std::uint64_t m_version = 0;
    AttributeCursor m_cursor;
    AttributeSlot m_last;
    std::size_t m_lastIndex = 0;
};

} // namespace OvPlatform
