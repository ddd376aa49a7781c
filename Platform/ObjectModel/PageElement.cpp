#include "ObjectModel/PageElement.h"

#include "ObjectModel/MarkupFailure.h"
#include "ObjectModel/MarkupText.h"

#include <algorithm>
#include <array>

namespace OvPlatform {

namespace {

constexpr std::string_view keyAttribute = "x:Key";
constexpr std::string_view resources = "Resources";
constexpr std::string_view lookupStart = "{StaticResource";

// The order in which the format wants the values of an element that stand in elements of their own.
constexpr std::array<std::string_view, 8> valueOrder = {
    resources, "RenderTransform", "Transform", "Clip", "OpacityMask", "Fill", "Stroke", "Data"};

std::size_t RankOf(std::string_view name) noexcept {
    return static_cast<std::size_t>(std::find(valueOrder.begin(), valueOrder.end(), name) -
                                    valueOrder.begin());
}

std::string_view Trimmed(std::string_view text) noexcept {
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

bool IsKey(const PageSource& source, std::uint32_t element, std::string_view written) {
    if (LocalPartOf(written) != "Key" || PrefixOf(written).empty()) return false;
    const std::string* const uri = source.FindNamespace(source.At(element).scope, PrefixOf(written));
    return uri != nullptr && *uri == ResourceKeyNamespace(source.Type());
}

std::optional<std::string> KeyOfLookup(std::string_view value) {
    if (!value.starts_with(lookupStart)) return std::nullopt;
    return std::string(Trimmed(value.substr(lookupStart.size(), value.find('}') - lookupStart.size())));
}

CComPtr<IXpsOMShareable> ShareableOf(PageElement& element) {
    CComPtr<IXpsOMShareable> shareable;
    ThrowIfFailed(element.Identity()->QueryInterface(&shareable));
    return shareable;
}

} // namespace

ElementPtr::ElementPtr(PageElement* element) noexcept : m_element(element) {
    if (m_element != nullptr) m_element->Hold();
}

ElementPtr::~ElementPtr() {
    if (m_element != nullptr) m_element->Drop();
}

PageElement& ElementOf(IUnknown* object) {
    RequirePlace(object);
    CComPtr<IPageElement> own;
    const HRESULT result = object->QueryInterface(&own);
    if (result == E_NOINTERFACE) throw MarkupFailure(XPS_E_NO_CUSTOM_OBJECTS);
    ThrowIfFailed(result);
    return own->Element();
}

PageElement::~PageElement() {
    for (PropertyValue& value : m_values)
        LetGo(value.value);
    for (ChildEntry& child : m_children)
        LetGo(child.object);
}

void PageElement::Touch() noexcept {
    for (PageElement* at = this; at != nullptr && !at->m_isTouched; at = at->m_owner)
        at->m_isTouched = true;
}

// Attributes.

bool PageElement::IsName(std::string_view name, std::string_view written) const {
    return name == keyAttribute ? IsKey(*m_source, m_index, written) : name == written;
}

const PageElement::Edit* PageElement::FindEdit(std::string_view name) const noexcept {
    const auto found =
        std::find_if(m_edits.begin(), m_edits.end(), [&](const Edit& edit) { return edit.name == name; });
    return found == m_edits.end() ? nullptr : &*found;
}

std::optional<std::string> PageElement::SourceAttribute(std::string_view name) const {
    if (!IsInSource()) return std::nullopt;
    RawAttributes attributes(m_source->StartTag(m_index));
    for (RawAttributes::Item item; attributes.Next(item);)
        if (IsName(name, item.name)) return UnescapeAttribute(item.value);
    return std::nullopt;
}

std::optional<std::string> PageElement::Attribute(std::string_view name) const {
    const Edit* const edit = FindEdit(name);
    if (edit == nullptr) return SourceAttribute(name);
    return edit->value ? std::optional(edit->value->Text()) : std::nullopt;
}

void PageElement::SetAttribute(std::string_view name, ReferringValue value) {
    if (m_owner != nullptr && name == keyAttribute) m_owner->NoteKey(m_id, Attribute(name), value.Text());
    if (const Edit* const edit = FindEdit(name); edit != nullptr)
        m_edits[static_cast<std::size_t>(edit - m_edits.data())].value = std::move(value);
    else
        m_edits.push_back({std::string(name), std::move(value)});
    Touch();
}

void PageElement::RemoveAttribute(std::string_view name) {
    const std::optional<std::string> before = Attribute(name);
    if (!before) return;
    if (m_owner != nullptr && name == keyAttribute) m_owner->NoteKey(m_id, before, std::nullopt);
    std::erase_if(m_edits, [&](const Edit& edit) { return edit.name == name; });
    if (SourceAttribute(name)) m_edits.push_back({std::string(name), std::nullopt});
    Touch();
}

IXpsOMResource* PageElement::Referred(std::string_view attribute, ReferenceKind kind,
                                      std::size_t number) const {
    if (const Edit* const edit = FindEdit(attribute); edit != nullptr && edit->value)
        for (const ReferringValue::Piece& piece : edit->value->pieces)
            if (piece.part && number-- == 0) return piece.part;
    const std::optional<std::string> value = Attribute(attribute);
    if (!value || !m_source) return nullptr;
    const std::vector<ReferenceSpan> spans = ReferencesIn(kind, *value);
    if (number >= spans.size()) return nullptr;
    const SourcePart* const part =
        m_source->FindPart(std::string_view(*value).substr(spans[number].begin, spans[number].length));
    return part == nullptr ? nullptr : part->resource.p;
}

// Values.

void PageElement::LoadValues() {
    if (std::exchange(m_hasValues, true) || !IsInSource()) return;
    const std::string prefix = std::string(ElementName(m_kind)) + ".";
    for (std::uint32_t at = m_source->FirstChild(m_index); at != noElement;
         at = m_source->NextSibling(m_index, at)) {
        const SourceElement& element = m_source->At(at);
        if (element.kind != ElementKind::Property) {
            if (IsChild(element.kind)) break;
            continue;
        }
        const std::string_view name = LocalPartOf(RawAttributes(m_source->StartTag(at)).ElementName());
        if (!name.starts_with(prefix) || RankOf(name.substr(prefix.size())) == valueOrder.size()) continue;
        m_values.push_back({std::string(name.substr(prefix.size())), at, m_source->FirstChild(at), {}});
    }
}

PageElement::PropertyValue* PageElement::FindValue(std::string_view name) {
    LoadValues();
    const auto found = std::find_if(m_values.begin(), m_values.end(),
                                    [&](const PropertyValue& value) { return value.name == name; });
    return found == m_values.end() ? nullptr : &*found;
}

PageElement* PageElement::Value(std::string_view name) {
    if (PropertyValue* const value = FindValue(name); value != nullptr) {
        if (!value->value && value->object != noElement) {
            value->value = MakeElementObject(m_source, value->object);
            if (value->value) value->value->m_owner = this;
        }
        return value->value.Get();
    }
    const std::optional<std::string> text = Attribute(name);
    if (!text || KeyOfLookup(*text)) return nullptr;
    PropertyValue value{std::string(name), noElement, noElement, MakeValueObject(name, *text, m_source)};
    if (!value.value) throw MarkupFailure(XPS_E_INVALID_MARKUP);
    value.value->m_owner = this;
    return InsertValue(std::move(value)).value.Get();
}

void PageElement::SetValue(std::string_view name, PageElement* value) {
    if (value != nullptr) {
        PropertyValue* const known = FindValue(name);
        if (known != nullptr && known->value.Get() == value) return;
        CheckCanOwn(*value);
    }
    DropValue(name);
    if (value == nullptr) return;
    InsertValue({std::string(name), noElement, noElement, ElementPtr(value), {}, true});
    Adopt(*value);
    Touch();
}

PageElement::PropertyValue& PageElement::InsertValue(PropertyValue value) {
    const std::size_t rank = RankOf(value.name);
    const auto place = std::find_if(m_values.begin(), m_values.end(),
                                    [&](const PropertyValue& other) { return RankOf(other.name) > rank; });
    return *m_values.insert(place, std::move(value));
}

void PageElement::DropValue(std::string_view name) {
    PropertyValue* const value = FindValue(name);
    RemoveAttribute(name);
    if (value == nullptr) return;
    if (value->element != noElement) RemoveFromSource(value->element);
    LetGo(value->value);
    m_values.erase(m_values.begin() + (value - m_values.data()));
    Touch();
}

std::optional<std::string> PageElement::Lookup(std::string_view name) const {
    const std::optional<std::string> text = Attribute(name);
    return text ? KeyOfLookup(*text) : std::nullopt;
}

void PageElement::SetLookup(std::string_view name, const std::string& key) {
    DropValue(name);
    SetAttribute(name, std::string(lookupStart) + " " + key + "}");
}

CComPtr<IXpsOMShareable> PageElement::Resolved(std::string_view name) {
    if (PageElement* const local = Value(name); local != nullptr) return ShareableOf(*local);
    const std::optional<std::string> key = Lookup(name);
    return key ? FindResource(*key) : CComPtr<IXpsOMShareable>();
}

CComPtr<IXpsOMShareable> PageElement::FindResource(const std::string& key) {
    for (PageElement* at = this; at != nullptr; at = at->m_owner) {
        PageElement* dictionary = at->m_kind == ElementKind::ResourceDictionary ? at : at->Value(resources);
        if (dictionary == nullptr) continue;
        CComPtr<IXpsOMDictionary> content;
        if (const CComQIPtr<IXpsOMRemoteDictionaryResource> remote(
                dictionary->Referred("Source", ReferenceKind::Whole));
            remote) {
            ThrowIfFailed(remote->GetDictionary(&content));
            dictionary = &ElementOf(content);
        }
        if (const std::optional<std::uint32_t> index = dictionary->FindKey(key); index)
            return ShareableOf(dictionary->Child(*index));
    }
    return nullptr;
}

// Children.

void PageElement::LoadChildren() {
    if (std::exchange(m_hasChildren, true) || !IsInSource()) return;
    for (std::uint32_t at = m_source->FirstChild(m_index); at != noElement;
         at = m_source->NextSibling(m_index, at))
        if (IsChild(m_source->At(at).kind)) m_children.push_back({at, at, {}, m_nextId++});
}

std::uint32_t PageElement::ChildCount() {
    LoadChildren();
    return static_cast<std::uint32_t>(m_children.size());
}

PageElement& PageElement::Child(std::uint32_t index) {
    LoadChildren();
    ChildEntry& child = m_children[index];
    if (!child.object) {
        child.object = MakeElementObject(m_source, child.element);
        child.object->m_owner = this;
        child.object->m_id = child.id;
    }
    return *child.object.Get();
}

std::optional<std::string> PageElement::ChildKey(std::uint32_t index) {
    LoadChildren();
    const ChildEntry& child = m_children[index];
    if (child.object) return child.object->Attribute(keyAttribute);
    // No object is made to look for another.
    RawAttributes attributes(m_source->StartTag(child.element));
    for (RawAttributes::Item item; attributes.Next(item);)
        if (IsKey(*m_source, child.element, item.name)) return UnescapeAttribute(item.value);
    return std::nullopt;
}

std::optional<std::uint32_t> PageElement::FindKey(const std::string& key) {
    if (!std::exchange(m_hasKeys, true)) {
        m_keys.clear();
        m_hasEqualKeys = false;
        for (std::uint32_t index = 0; index < ChildCount(); ++index)
            if (std::optional<std::string> name = ChildKey(index); name)
                m_hasEqualKeys |= !m_keys.try_emplace(std::move(*name), m_children[index].id).second;
    }
    const auto found = m_keys.find(key);
    return found == m_keys.end() ? std::nullopt : std::optional(IndexOfId(found->second));
}

// Where keys are equal, which one is the first is found anew.
void PageElement::NoteKey(std::uint32_t id, const std::optional<std::string>& before,
                          const std::optional<std::string>& now) {
    if (!m_hasKeys || m_hasEqualKeys) {
        m_hasKeys = false;
        return;
    }
    if (before) m_keys.erase(*before);
    if (now) m_hasKeys = m_keys.try_emplace(*now, id).second;
}

std::uint32_t PageElement::IndexOf(const PageElement& child) { return IndexOfId(child.m_id); }

std::uint32_t PageElement::IndexOfId(std::uint32_t id) {
    if (!std::exchange(m_hasIndices, true)) {
        m_indexOfId.resize(m_nextId);
        for (std::uint32_t index = 0; index < m_children.size(); ++index)
            m_indexOfId[m_children[index].id] = index;
    }
    return m_indexOfId[id];
}

void PageElement::InsertChild(std::uint32_t index, PageElement& child) {
    LoadChildren();
    CheckCanOwn(child);
    const bool isLast = index == m_children.size();
    if (isLast && m_hasIndices) m_indexOfId.push_back(index);
    m_children.insert(m_children.begin() + index, {noElement, noElement, ElementPtr(&child), m_nextId});
    m_hasIndices = isLast && m_hasIndices;
    child.m_id = m_nextId++;
    NoteKey(child.m_id, std::nullopt, child.Attribute(keyAttribute));
    Adopt(child);
    Touch();
}

void PageElement::RemoveChild(std::uint32_t index) {
    LoadChildren();
    NoteKey(m_children[index].id, ChildKey(index), std::nullopt);
    ChildEntry& child = m_children[index];
    if (child.element != noElement) RemoveFromSource(child.element);
    LetGo(child.object);
    m_children.erase(m_children.begin() + index);
    m_hasIndices = false;
    Touch();
}

void PageElement::ReplaceChild(std::uint32_t index, PageElement& child) {
    LoadChildren();
    CheckCanOwn(child);
    NoteKey(m_children[index].id, ChildKey(index), child.Attribute(keyAttribute));
    ChildEntry& replaced = m_children[index];
    if (replaced.element != noElement) RemoveFromSource(replaced.element);
    LetGo(replaced.object);
    replaced = {noElement, replaced.place, ElementPtr(&child), replaced.id};
    child.m_id = replaced.id;
    Adopt(child);
    Touch();
}

void PageElement::CheckCanOwn(const PageElement& element) const {
    if (element.m_owner != nullptr || element.IsOwnedByPart()) throw MarkupFailure(XPS_E_ALREADY_OWNED);
    for (const PageElement* at = this; at != nullptr; at = at->m_owner)
        if (at == &element) throw MarkupFailure(XPS_E_VISUAL_CIRCULAR_REF);
}

void PageElement::Adopt(PageElement& element) noexcept {
    element.m_owner = this;
    if (!element.IsInSource()) element.m_isTouched = true; // its attribute is no longer that of its owner
}

void PageElement::LetGo(ElementPtr& element) noexcept {
    if (element) element->m_owner = nullptr;
    element = {};
}

void PageElement::RemoveFromSource(std::uint32_t element) {
    m_removed.insert(std::lower_bound(m_removed.begin(), m_removed.end(), element), element);
}

} // namespace OvPlatform
