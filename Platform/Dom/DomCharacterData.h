#pragma once

#include "Dom/DomNode.h"
#include "Xml/TextConversion.h"

namespace OvPlatform {

/// Texts, CDATA sections and comments. Offsets and counts are in UTF-16 units. An offset must lie in the data
/// or at its end; a count may reach behind it.
template <class Interface_>
class DomCharacterData : public DomNode<Interface_> {
public:
    using DomNode<Interface_>::DomNode;

    HRESULT STDMETHODCALLTYPE get_data(BSTR* data) override {
        return this->Guarded([&] { return GiveText(data, Content()); });
    }
    HRESULT STDMETHODCALLTYPE put_data(BSTR data) override {
        return this->Guarded([&] { return this->SetText(data); });
    }
    HRESULT STDMETHODCALLTYPE get_length(LONG* length) override {
        return this->Guarded([&]() -> HRESULT {
            if (length == nullptr) return E_INVALIDARG;
            *length = static_cast<LONG>(Units().size());
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE substringData(LONG offset, LONG count, BSTR* data) override {
        return this->Guarded([&]() -> HRESULT {
            if (data == nullptr) return E_INVALIDARG;
            *data = nullptr;
            if (offset < 0 || count < 0) return E_INVALIDARG;
            const std::wstring units = Units();
            if (count == 0 || !HasOffset(units, offset)) return S_FALSE;
            const std::wstring part =
                units.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(count));
            *data = ::SysAllocStringLen(part.data(), static_cast<UINT>(part.size()));
            return *data != nullptr ? S_OK : E_OUTOFMEMORY;
        });
    }
    HRESULT STDMETHODCALLTYPE appendData(BSTR data) override {
        return this->Guarded([&] { return Splice(static_cast<LONG>(Units().size()), 0, data); });
    }
    HRESULT STDMETHODCALLTYPE insertData(LONG offset, BSTR data) override {
        return this->Guarded(
            [&]() -> HRESULT { return ::SysStringLen(data) == 0 ? S_OK : Splice(offset, 0, data); });
    }
    HRESULT STDMETHODCALLTYPE deleteData(LONG offset, LONG count) override {
        return this->Guarded([&] { return Splice(offset, count, nullptr); });
    }
    HRESULT STDMETHODCALLTYPE replaceData(LONG offset, LONG count, BSTR data) override {
        return this->Guarded([&] { return Splice(offset, count, data); });
    }

protected:
    bool Answers(REFIID riid) const noexcept override {
        return riid == __uuidof(IXMLDOMCharacterData) || DomNode<Interface_>::Answers(riid);
    }

    std::string_view Content() const noexcept { return View(this->Node()->content); }
    std::wstring Units() const {
        std::wstring units;
        AppendUtf16(units, Content());
        return units;
    }
    static bool HasOffset(const std::wstring& units, LONG offset) noexcept {
        return offset >= 0 && static_cast<std::size_t>(offset) <= units.size();
    }

private:
    HRESULT Splice(LONG offset, LONG count, BSTR data) {
        std::wstring units = Units();
        if (count < 0 || !HasOffset(units, offset)) return E_INVALIDARG;
        units.replace(static_cast<std::size_t>(offset), static_cast<std::size_t>(count), ViewOf(data));
        std::string value;
        return AppendXmlUtf8(value, units) ? this->SetValue(value) : E_INVALIDARG;
    }
};

/// What texts and CDATA sections have beyond that.
template <class Interface_>
class DomTextBase : public DomCharacterData<Interface_> {
public:
    using DomCharacterData<Interface_>::DomCharacterData;

    HRESULT STDMETHODCALLTYPE splitText(LONG offset, IXMLDOMText** rightHandText) override {
        return this->Guarded([&]() -> HRESULT {
            if (rightHandText == nullptr) return E_INVALIDARG;
            *rightHandText = nullptr;
            const std::wstring units = this->Units();
            if (!this->HasOffset(units, offset)) return E_INVALIDARG;
            const auto at = static_cast<std::size_t>(offset);
            std::string left, right;
            if (!AppendXmlUtf8(left, std::wstring_view(units).substr(0, at)) ||
                !AppendXmlUtf8(right, std::wstring_view(units).substr(at)))
                return E_INVALIDARG;
            xmlNode* own = this->Node();
            xmlNode* fresh = this->Tree().NewCharacterData(own->type, right);
            if (const HRESULT result = this->SetValue(left); FAILED(result)) {
                this->Tree().Dispose(fresh);
                return result;
            }
            if (own->parent != nullptr) this->Tree().Link(own->parent, fresh, own->next);
            return DomNodeObject::GiveAs(this->Tree(), fresh, rightHandText);
        });
    }

protected:
    bool Answers(REFIID riid) const noexcept override {
        return riid == __uuidof(IXMLDOMText) || DomCharacterData<Interface_>::Answers(riid);
    }
};

class DomText final : public DomTextBase<IXMLDOMText> {
public:
    DomText(DomTree& tree, xmlNode* text) noexcept : DomTextBase(tree, text) {}
};

class DomCDataSection final : public DomTextBase<IXMLDOMCDATASection> {
public:
    DomCDataSection(DomTree& tree, xmlNode* section) noexcept : DomTextBase(tree, section) {}
};

class DomComment final : public DomCharacterData<IXMLDOMComment> {
public:
    DomComment(DomTree& tree, xmlNode* comment) noexcept : DomCharacterData(tree, comment) {}
};

} // namespace OvPlatform
