// How elements are written: what was not changed as it stands in its source, and the rest between it.

#include "ObjectModel/MarkupText.h"
#include "ObjectModel/PageElement.h"

#include <algorithm>

namespace OvPlatform {

void PageElement::Write(MarkupWriter& out) {
    if (!IsInSource())
        WriteNew(out);
    else if (m_isTouched)
        WriteChanged(out);
    else
        out.CopyElement(*m_source, m_index);
}

bool PageElement::IsRenewed(const PropertyValue& value) {
    return value.value && (value.isSet || value.value->m_isTouched);
}

// Which values go into attributes is said once, ahead of the writing.
void PageElement::SettleValues() {
    for (PropertyValue& value : m_values) {
        value.attribute.reset();
        if (!IsRenewed(value) || value.element != noElement) continue;
        value.attribute = value.value->AttributeForm();
    }
}

bool PageElement::HasNewContent() const {
    return HasOwnContent() ||
           std::any_of(m_values.begin(), m_values.end(),
                       [](const PropertyValue& value) {
                           return value.element == noElement && IsRenewed(value) && !value.attribute;
                       }) ||
           std::any_of(m_children.begin(), m_children.end(),
                       [](const ChildEntry& child) { return child.element == noElement; });
}

void PageElement::WriteNew(MarkupWriter& out) {
    Prepare();
    SettleValues();
    const std::string name = out.QualifiedName(ElementName(m_kind));
    out.Write("<" + name);
    out.DeclareIfRoot();
    WriteEdits(out, {});
    if (!HasNewContent()) return out.Write("/>");
    out.Write(">");
    for (PropertyValue& value : m_values)
        WriteNewValue(out, value);
    for (const ChildEntry& child : m_children)
        child.object->Write(out);
    WriteOwnContent(out);
    out.Write("</" + name + ">");
}

void PageElement::WriteChanged(MarkupWriter& out) {
    LoadValues(); // which stand ahead of what was inserted
    Prepare();
    SettleValues();
    const bool hasContent = !m_source->IsEmptyTag(m_index) || HasNewContent();
    const bool hasRules = out.OpenTag(*m_source, m_index);
    const MarkupWriter::Inside inside(out, *m_source, m_index);
    WriteTagOfSource(out, hasContent, hasRules);
    if (!hasContent) return;
    WriteContentOfSource(out);
    if (m_source->IsEmptyTag(m_index))
        out.Write("</" + std::string(RawAttributes(m_source->StartTag(m_index)).ElementName()) + ">");
    else
        out.Copy(*m_source, m_source->ContentEnd(m_index), m_source->At(m_index).end);
}

void PageElement::WriteTagOfSource(MarkupWriter& out, bool hasContent, bool hasRules) {
    const SourceElement& element = m_source->At(m_index);
    RawAttributes attributes(m_source->StartTag(m_index));
    std::vector<std::string> written;
    std::size_t at = attributes.Position();
    for (RawAttributes::Item item; attributes.Next(item); at = item.end) {
        const auto edit = std::find_if(m_edits.begin(), m_edits.end(),
                                       [&](const Edit& one) { return IsName(one.name, item.name); });
        const bool isRenewed = std::any_of(m_values.begin(), m_values.end(), [&](const PropertyValue& value) {
            return value.name == item.name && IsRenewed(value);
        });
        if (isRenewed || (hasRules && MarkupWriter::IsRule(*m_source, m_index, item.name))) continue;
        if (edit == m_edits.end()) {
            out.Copy(*m_source, element.begin + at, element.begin + item.end);
        } else if (edit->value) {
            out.WriteAttribute(item.name, out.Resolve(*edit->value));
            written.push_back(edit->name);
        }
    }
    WriteEdits(out, written);
    if (m_source->IsEmptyTag(m_index) && hasContent)
        out.Write(">");
    else
        out.Copy(*m_source, element.begin + at, element.tagEnd);
}

void PageElement::WriteEdits(MarkupWriter& out, const std::vector<std::string>& written) {
    for (const Edit& edit : m_edits) {
        if (!edit.value || std::find(written.begin(), written.end(), edit.name) != written.end()) continue;
        if (IsShadowed(edit.name)) continue;
        std::string declaration;
        const std::string name = edit.name == "x:Key" ? out.KeyName(declaration) : edit.name;
        out.Write(declaration);
        out.WriteAttribute(name, out.Resolve(*edit.value));
    }
    for (const PropertyValue& value : m_values)
        if (value.attribute) out.WriteAttribute(value.name, out.Resolve(*value.attribute));
}

// Of a value that was made from an attribute and changed since, the attribute says nothing any more.
bool PageElement::IsShadowed(std::string_view attribute) const {
    return std::any_of(m_values.begin(), m_values.end(), [&](const PropertyValue& value) {
        return value.name == attribute && IsRenewed(value);
    });
}

void PageElement::WriteContentOfSource(MarkupWriter& out) {
    std::size_t at = m_source->At(m_index).tagEnd;
    for (PropertyValue& value : m_values) {
        if (value.element == noElement) {
            WriteNewValue(out, value);
            continue;
        }
        const SourceElement& element = m_source->At(value.element);
        CopyTo(out, at, element.begin);
        if (IsRenewed(value)) {
            WriteChangedValue(out, value);
            at = element.end;
        }
        CopyTo(out, at, element.end);
    }
    WriteChildren(out, at);
    CopyTo(out, at, m_source->ContentEnd(m_index));
    WriteOwnContent(out);
}

void PageElement::WriteChildren(MarkupWriter& out, std::size_t& at) {
    const auto hasPlace = [](const ChildEntry& child) { return child.place != noElement; };
    const auto lastWithPlace = std::find_if(m_children.rbegin(), m_children.rend(), hasPlace).base();
    std::size_t before = at; // the end of what stands before
    for (auto child = m_children.begin(); child != m_children.end(); ++child) {
        if (!hasPlace(*child)) {
            // What comes last comes behind all that the source has.
            CopyTo(out, at, child < lastWithPlace ? before : m_source->ContentEnd(m_index));
            child->object->Write(out);
            continue;
        }
        const SourceElement& element = m_source->At(child->place);
        before = element.end;
        if (!child->object || (child->element != noElement && !child->object->m_isTouched)) continue;
        CopyTo(out, at, element.begin);
        child->object->Write(out);
        at = element.end;
    }
}

void PageElement::WriteNewValue(MarkupWriter& out, PropertyValue& value) {
    if (!IsRenewed(value) || value.attribute) return;
    const std::string name = out.QualifiedName(std::string(ElementName(m_kind)) + "." + value.name);
    out.Write("<" + name + ">");
    value.value->Write(out);
    out.Write("</" + name + ">");
}

void PageElement::WriteChangedValue(MarkupWriter& out, PropertyValue& value) {
    const SourceElement& property = m_source->At(value.element);
    const SourceElement& object = m_source->At(value.object);
    out.Copy(*m_source, property.begin, object.begin);
    {
        const MarkupWriter::Inside inside(out, *m_source, value.element);
        value.value->Write(out);
    }
    out.Copy(*m_source, object.end, property.end);
}

void PageElement::CopyTo(MarkupWriter& out, std::size_t& at, std::size_t end) const {
    auto removed = std::lower_bound(
        m_removed.begin(), m_removed.end(), at,
        [&](std::uint32_t element, std::size_t place) { return m_source->At(element).begin < place; });
    for (; removed != m_removed.end() && m_source->At(*removed).begin < end; ++removed) {
        out.Copy(*m_source, at, m_source->At(*removed).begin);
        at = m_source->At(*removed).end;
    }
    if (at < end) {
        out.Copy(*m_source, at, end);
        at = end;
    }
}

} // namespace OvPlatform
