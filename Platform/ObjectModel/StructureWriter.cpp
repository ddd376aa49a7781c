#include "ObjectModel/StructureWriter.h"

#include "ObjectModel/MarkupText.h"
#include "ObjectModel/StructureMarkup.h"

#include <algorithm>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::string_view sourceName = "Source";
constexpr std::string_view widthName = "Width";
constexpr std::string_view heightName = "Height";

bool IsItem(ElementKind kind) noexcept {
    return kind == ElementKind::PageContent || kind == ElementKind::DocumentReference;
}

} // namespace

StructureWriter::StructureWriter(MarkupWriter& out, std::string partName, ElementKind root,
                                 std::shared_ptr<const PageSource> own)
    : m_out(out), m_partName(std::move(partName)), m_root(root), m_own(std::move(own)) {}

std::vector<StructureReference> StructureWriter::ReferencesOf(const PageSource& source) {
    std::vector<StructureReference> references;
    for (std::uint32_t at = source.FirstChild(0); at != noElement; at = source.NextSibling(0, at)) {
        if (!IsItem(source.At(at).kind)) continue;
        StructureReference& reference = references.emplace_back(StructureReference{at, {}});
        RawAttributes attributes(source.StartTag(at));
        for (RawAttributes::Item item; attributes.Next(item);)
            if (item.name == sourceName) reference.source = UnescapeAttribute(item.value);
    }
    return references;
}

void StructureWriter::Write(const std::vector<StructureItem>& items) {
    if (!m_own) return WriteNew(items);
    const SourceElement& root = m_own->At(0);
    const bool isEmpty = m_own->IsEmptyTag(0);
    m_out.Copy(*m_own, 0, isEmpty ? m_own->Text().rfind('/', root.tagEnd) : root.tagEnd);
    if (isEmpty) m_out.Write(">");
    m_at = root.tagEnd;
    m_next = m_own->FirstChild(0);
    {
        const MarkupWriter::Inside inside(m_out, *m_own, 0);
        for (const StructureItem& item : items) {
            const bool isInOrder = item.source == m_own && m_own->At(item.element).begin >= m_at;
            if (isInOrder) CopyTo(m_own->At(item.element).begin);
            WriteItem(item);
            if (isInOrder) m_at = m_own->At(item.element).end;
        }
    }
    CopyTo(m_own->ContentEnd(0));
    if (isEmpty) m_out.Write("</" + std::string(RawAttributes(m_own->StartTag(0)).ElementName()) + ">");
    m_out.Copy(*m_own, isEmpty ? root.tagEnd : m_own->ContentEnd(0), m_own->Text().size());
}

void StructureWriter::WriteNew(const std::vector<StructureItem>& items) {
    const std::string name(ElementName(m_root));
    m_out.Write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + name);
    m_out.DeclareIfRoot();
    m_out.Write(">\n");
    for (const StructureItem& item : items) {
        WriteItem(item);
        m_out.Write("\n");
    }
    m_out.Write("</" + name + ">\n");
}

void StructureWriter::CopyTo(std::size_t end) {
    for (; m_next != noElement && m_own->At(m_next).begin < end; m_next = m_own->NextSibling(0, m_next)) {
        const SourceElement& child = m_own->At(m_next);
        if (!IsItem(child.kind) || child.begin < m_at) continue;
        m_out.Copy(*m_own, m_at, child.begin);
        m_at = child.end;
    }
    if (m_at < end) m_out.Copy(*m_own, m_at, end);
    m_at = std::max(m_at, end);
}

void StructureWriter::WriteItem(const StructureItem& item) {
    if (!item.source) return WriteNewItem(item);
    const PageSource& source = *item.source;
    const SourceElement& element = source.At(item.element);
    const bool keepsTarget =
        item.source == m_own && m_own->PartName() == m_partName && item.target == item.storedTarget;
    const bool hasRules = m_out.OpenTag(source, item.element);
    RawAttributes attributes(source.StartTag(item.element));
    std::size_t at = element.begin + 1 + attributes.ElementName().size();
    for (RawAttributes::Item each; attributes.Next(each); at = element.begin + each.end) {
        if (hasRules && MarkupWriter::IsRule(source, item.element, each.name)) continue;
        if (each.name == sourceName && !keepsTarget)
            m_out.WriteAttribute(sourceName, ReferenceWithin(m_partName, item.target));
        else if (!item.isReferenceChanged || (each.name != widthName && each.name != heightName))
            m_out.Copy(source, at, element.begin + each.end);
    }
    if (item.isReferenceChanged) WriteSize(*item.reference);
    m_out.Copy(source, at, element.end);
}

void StructureWriter::WriteNewItem(const StructureItem& item) {
    const ElementKind kind =
        m_root == ElementKind::FixedDocument ? ElementKind::PageContent : ElementKind::DocumentReference;
    m_out.Write("<" + m_out.QualifiedName(ElementName(kind)));
    m_out.WriteAttribute(sourceName, ReferenceWithin(m_partName, item.target));
    if (item.reference != nullptr) WriteSize(*item.reference);
    m_out.Write("/>");
}

void StructureWriter::WriteSize(const PageReference& reference) {
    if (!reference.width.empty()) m_out.WriteAttribute(widthName, reference.width);
    if (!reference.height.empty()) m_out.WriteAttribute(heightName, reference.height);
}

} // namespace OvPlatform
