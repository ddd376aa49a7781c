#pragma once

#include "Dom/DomNodeObject.h"

#include <optional>
#include <vector>

namespace OvPlatform {

/// The slots that lists and maps share: a place where nextNode stands, and access by number.
template <class Interface_>
class DomNodeSequence : public Dispatch<CountedObject<Interface_, ISupportErrorInfo>> {
public:
    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID riid) override {
        return riid == __uuidof(Interface_) ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE get_item(LONG index, IXMLDOMNode** item) override {
        return Guarded([&]() -> HRESULT {
            if (item == nullptr) return E_INVALIDARG;
            *item = nullptr;
            return index < 0 ? S_FALSE : GiveAt(static_cast<std::size_t>(index), item);
        });
    }
    HRESULT STDMETHODCALLTYPE get_length(LONG* length) override {
        return Guarded([&]() -> HRESULT {
            if (length == nullptr) return E_INVALIDARG;
            *length = static_cast<LONG>(Length());
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE nextNode(IXMLDOMNode** next) override {
        return Guarded([&]() -> HRESULT {
            if (next == nullptr) return E_INVALIDARG;
            *next = nullptr;
            const HRESULT result = GiveAt(m_next, next);
            if (result == S_OK) ++m_next;
            return result;
        });
    }
    HRESULT STDMETHODCALLTYPE reset() override {
        return Guarded([&]() -> HRESULT {
            m_next = 0;
            return S_OK;
        });
    }
    /// Enumerators serve scripts, of which there are none here.
    HRESULT STDMETHODCALLTYPE get__newEnum(IUnknown** enumerator) override {
        if (enumerator != nullptr) *enumerator = nullptr;
        return E_NOTIMPL;
    }

protected:
    ~DomNodeSequence() override = default;

    /// S_FALSE and null behind the end.
    virtual HRESULT GiveAt(std::size_t index, IXMLDOMNode** item) = 0;
    virtual std::size_t Length() = 0;

private:
    std::size_t m_next = 0;
};

/// The nodes that a query selected, as they were then.
class DomSelection final : public DomNodeSequence<IXMLDOMNodeList> {
public:
    DomSelection(DomTree& tree, std::vector<xmlNode*> nodes) noexcept;

private:
    ~DomSelection() override;
    HRESULT GiveAt(std::size_t index, IXMLDOMNode** item) override;
    std::size_t Length() override { return m_nodes.size(); }

    DomTree& m_tree;
    std::vector<xmlNode*> m_nodes;
};

/// The children of a node, as they are at each moment.
class DomChildList final : public DomNodeSequence<IXMLDOMNodeList> {
public:
    explicit DomChildList(DomNodeObject& parent) noexcept;

private:
    ~DomChildList() override;
    HRESULT GiveAt(std::size_t index, IXMLDOMNode** item) override;
    std::size_t Length() override;

    void StartOverIfChanged() noexcept;

    DomNodeObject& m_parent;
    /// Where the last access was and what was counted, so that a walk by number does not start over each
    /// time.
    std::uint64_t m_version = 0;
    std::optional<std::size_t> m_length;
    xmlNode* m_last = nullptr;
    std::size_t m_lastIndex = 0;
};

} // namespace OvPlatform
