#pragma once

#include "ObjectModel/MarkupWriter.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace OvPlatform {

class PageElement;

/// A counted reference to an element's object.
class ElementPtr {
public:
    ElementPtr() = default;
    explicit ElementPtr(PageElement* element) noexcept;
    /// Takes over the reference that the object was born with.
    static ElementPtr Adopt(PageElement* element) noexcept {
        ElementPtr adopted;
        adopted.m_element = element;
        return adopted;
    }
    ElementPtr(const ElementPtr& other) noexcept : ElementPtr(other.m_element) {}
    ElementPtr(ElementPtr&& other) noexcept : m_element(std::exchange(other.m_element, nullptr)) {}
    ElementPtr& operator=(ElementPtr other) noexcept {
        std::swap(m_element, other.m_element);
        return *this;
    }
    ~ElementPtr();

    PageElement* Get() const noexcept { return m_element; }
    PageElement* operator->() const noexcept { return m_element; }
    explicit operator bool() const noexcept { return m_element != nullptr; }

private:
    PageElement* m_element = nullptr;
};

/// How the platform's own objects are told from others, and found behind their interfaces.
MIDL_INTERFACE("b1a5a5ae-3f77-4c51-9d0c-0f4ad28a6f5e") IPageElement : public IUnknown {
public:
    virtual PageElement& Element() noexcept = 0;
};

/// An element of markup and what was changed in it: its attributes, its values (that stand in attributes or
/// in property elements) and, of pages, canvases and dictionaries, the objects that stand in it. What was not
/// changed stays a range of its source, and objects are made when they are asked for.
class PageElement {
public:
    PageElement(const PageElement&) = delete;
    PageElement& operator=(const PageElement&) = delete;

    ElementKind Kind() const noexcept { return m_kind; }
    PageElement* Owner() const noexcept { return m_owner; }
    /// Null for a new one.
    const std::shared_ptr<const PageSource>& Source() const noexcept { return m_source; }
    bool IsInSource() const noexcept { return m_index != noElement; }
    std::uint32_t Index() const noexcept { return m_index; }
    bool IsTouched() const noexcept { return m_isTouched; }
    /// From now on it is written anew, and so is all that it stands in.
    void Touch() noexcept;

    virtual IUnknown* Identity() noexcept = 0;
    virtual ULONG Hold() noexcept = 0;
    virtual ULONG Drop() noexcept = 0;

    // Attributes. The name "x:Key" stands for a resource's key, whatever the prefix.
    std::optional<std::string> Attribute(std::string_view name) const;
    void SetAttribute(std::string_view name, ReferringValue value);
    void SetAttribute(std::string_view name, std::string value) {
        SetAttribute(name, ReferringValue(std::move(value)));
    }
    void RemoveAttribute(std::string_view name);
    /// The part that a reference of an attribute leads to, by its number in the value. Null if there is none.
    IXpsOMResource* Referred(std::string_view attribute, ReferenceKind kind, std::size_t number = 0) const;

    // Values by the name of their attribute, "Fill" for what may stand in <Path.Fill> too.
    /// Null where it has none, or a lookup.
    PageElement* Value(std::string_view name);
    /// Null removes it. Throws MarkupFailure with XPS_E_ALREADY_OWNED.
    void SetValue(std::string_view name, PageElement* value);
    /// The key of a resource that the value is looked up by.
    std::optional<std::string> Lookup(std::string_view name) const;
    void SetLookup(std::string_view name, const std::string& key);
    /// Looks the value up, if need be. Null where there is none, or none is found.
    CComPtr<IXpsOMShareable> Resolved(std::string_view name);
    CComPtr<IXpsOMShareable> FindResource(const std::string& key);

    // The objects that stand in it, one behind the other. An index must be one that there is.
    std::uint32_t ChildCount();
    PageElement& Child(std::uint32_t index);
    std::optional<std::string> ChildKey(std::uint32_t index);
    /// The first of that key.
    std::optional<std::uint32_t> FindKey(const std::string& key);
    /// Of one that stands in this.
    std::uint32_t IndexOf(const PageElement& child);
    void InsertChild(std::uint32_t index, PageElement& child);
    void RemoveChild(std::uint32_t index);
    void ReplaceChild(std::uint32_t index, PageElement& child);

    /// Throws MarkupFailure with XPS_E_ALREADY_OWNED, and with XPS_E_VISUAL_CIRCULAR_REF for one that this
    /// stands in.
    void CheckCanOwn(const PageElement& element) const;

    void Write(MarkupWriter& out);

    /// Whether it is the content of a part, which is not in another element.
    virtual bool IsOwnedByPart() const noexcept { return false; }

    /// As the value of an attribute; nothing if it needs an element.
    virtual std::optional<ReferringValue> AttributeForm() { return std::nullopt; }

protected:
    /// A new one.
    explicit PageElement(ElementKind kind) noexcept : m_kind(kind) {}
    /// One of a source. noElement for a value that stood in an attribute, whose references the source
    /// resolves.
    PageElement(ElementKind kind, std::shared_ptr<const PageSource> source, std::uint32_t index) noexcept
        : m_kind(kind), m_source(std::move(source)), m_index(index), m_isTouched(false) {}
    virtual ~PageElement();

    /// Sees that it can be written: throws MarkupFailure otherwise. Attributes may be set here for the last
    /// time.
    virtual void Prepare() {}
    /// What a derived class writes behind values and children.
    virtual bool HasOwnContent() const { return false; }
    virtual void WriteOwnContent(MarkupWriter&) {}
    /// Whether an element in this is one of its children.
    virtual bool IsChild(ElementKind kind) const { return IsVisual(kind); }
    /// What was set so far is what it was read with.
    void Settle() noexcept { m_isTouched = false; }
    /// An element in it that is no longer to be written.
    void RemoveFromSource(std::uint32_t element);

private:
    friend class ElementPtr;

    struct Edit {
        std::string name;
        std::optional<ReferringValue> value; ///< nothing where it was removed
    };
    struct PropertyValue {
        std::string name;
        std::uint32_t element;                     ///< of the source, as <Path.Fill>; noElement
        std::uint32_t object;                      ///< that stands in it
        ElementPtr value;                          ///< null until it is asked for
        std::optional<ReferringValue> attribute{}; ///< while it is written: what says it without an element
        bool isSet = false;                        ///< it came from elsewhere, also if nothing in it changed
    };
    struct ChildEntry {
        std::uint32_t element; ///< of the source; noElement for one that came later
        std::uint32_t place;   ///< the element of the source that it stands for; noElement for none
        ElementPtr object;
        std::uint32_t id = 0; ///< its own for as long as it stands there
    };

    bool IsName(std::string_view name, std::string_view written) const;
    const Edit* FindEdit(std::string_view name) const noexcept;
    std::optional<std::string> SourceAttribute(std::string_view name) const;
    void LoadValues();
    void LoadChildren();
    PropertyValue* FindValue(std::string_view name);
    /// Where the format wants it among the others.
    PropertyValue& InsertValue(PropertyValue value);
    void DropValue(std::string_view name);
    std::uint32_t IndexOfId(std::uint32_t id);
    /// The key of a child is another one from now on.
    void NoteKey(std::uint32_t id, const std::optional<std::string>& before,
                 const std::optional<std::string>& now);
    void Adopt(PageElement& element) noexcept;
    static void LetGo(ElementPtr& element) noexcept;

    static bool IsRenewed(const PropertyValue& value);
    bool IsShadowed(std::string_view attribute) const;
    void SettleValues();
    bool HasNewContent() const;
    void WriteNew(MarkupWriter& out);
    void WriteChanged(MarkupWriter& out);
    /// hasRules: its attributes of markup compatibility have been written.
    void WriteTagOfSource(MarkupWriter& out, bool hasContent, bool hasRules);
    void WriteEdits(MarkupWriter& out, const std::vector<std::string>& written);
    void WriteContentOfSource(MarkupWriter& out);
    void WriteChildren(MarkupWriter& out, std::size_t& at);
    void WriteNewValue(MarkupWriter& out, PropertyValue& value);
    void WriteChangedValue(MarkupWriter& out, PropertyValue& value);
    /// Copies the source from where the writing stands, without what was removed.
    void CopyTo(MarkupWriter& out, std::size_t& at, std::size_t end) const;

    const ElementKind m_kind;
    std::shared_ptr<const PageSource> m_source;
    std::uint32_t m_index = noElement;
    PageElement* m_owner = nullptr; // which takes itself away before it ends
    bool m_isTouched = true;
    bool m_hasValues = false;
    bool m_hasChildren = false;
    std::vector<Edit> m_edits;
    std::vector<PropertyValue> m_values;
    std::vector<ChildEntry> m_children;
    std::unordered_map<std::string, std::uint32_t> m_keys; // ids of children, as long as m_hasKeys
    bool m_hasKeys = false;
    bool m_hasEqualKeys = false;            // the first one's id stands for them
    std::vector<std::uint32_t> m_indexOfId; // of children, as long as m_hasIndices
    bool m_hasIndices = false;
    std::uint32_t m_nextId = 0;           // for a child
    std::uint32_t m_id = 0;               // among the children of its owner
    std::vector<std::uint32_t> m_removed; // elements of the source, in its order
};

/// The object of an interface. Throws MarkupFailure: E_POINTER for null, XPS_E_NO_CUSTOM_OBJECTS for a
/// foreign one.
PageElement& ElementOf(IUnknown* object);

/// An object for an element of a source; null for a kind that has none.
ElementPtr MakeElementObject(const std::shared_ptr<const PageSource>& source, std::uint32_t index);
/// For a value that stands in an attribute.
ElementPtr MakeValueObject(std::string_view name, const std::string& text,
                           const std::shared_ptr<const PageSource>& source);

} // namespace OvPlatform
__CRT_UUID_DECL(OvPlatform::IPageElement, 0xb1a5a5ae, 0x3f77, 0x4c51, 0x9d, 0x0c, 0x0f, 0x4a, 0xd2, 0x8a,
                0x6f, 0x5e)
