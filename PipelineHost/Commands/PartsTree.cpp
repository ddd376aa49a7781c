#include "Commands/PartsTree.h"

#include "Common/Text.h"

namespace OvPipeline {

void PartsTree::Begin(const std::string& job, std::uint64_t bytes) {
    const char* const format = m_context->flavour == XpsFlavour::OpenXps ? "OpenXPS" : "XPS";
    const std::size_t parts = m_context->package->Parts().size();
    if (m_form == Form::Text)
        return m_out.Line(job + "  " + ByteCount(bytes) + "  " + format + ", " + Counted(parts, "part"));
    m_json.BeginObject().Key("job").Text(job).Key("bytes").Number(static_cast<long long>(bytes));
    m_json.Key("format")
        .Text(format)
        .Key("partCount")
        .Number(static_cast<long long>(parts))
        .Key("parts")
        .BeginArray();
}

void PartsTree::Show(IUnknown* part) {
    if (const CComQIPtr<IHostPage> page(part); page) {
        ShowPage(page->Page());
    } else if (const CComQIPtr<IFixedDocument> document(part); document) {
        m_pagesOfDocument = 0;
        ShowTicketed("document " + std::to_string(++m_documents), document.p, 1);
    } else if (const CComQIPtr<IFixedDocumentSequence> sequence(part); sequence) {
        ShowTicketed("document sequence", sequence.p, 0);
    } else if (const CComQIPtr<IXpsDocument> package(part); package) {
        ShowPackage(package);
    } else if (const CComQIPtr<IHostPart> other(part); other) {
        ShowOther(other->Core());
    }
}

void PartsTree::End() {
    if (m_form == Form::Text) return m_out.Line(Counted(m_pages, "page"));
    m_json.EndArray().Key("pageCount").Number(static_cast<long long>(m_pages)).EndObject();
    m_out.Json(m_json);
}

void PartsTree::Row(int depth, const std::string& what, const std::string& name, const Remarks& remarks) {
    m_form == Form::Text ? TextRow(depth, what, name, remarks) : JsonRow(depth, what, name, remarks);
}

void PartsTree::TextRow(int depth, const std::string& what, const std::string& name, const Remarks& remarks) {
    const OvPlatform::PackagePart* part = m_context->package->Find(name);
    std::string line = std::string(static_cast<std::size_t>(2 * depth), ' ') + what + " " + name;
    if (part) line += "  " + ByteCount(part->size);
    if (part && part->pieces > 1) line += " in " + Counted(part->pieces, "piece");
    for (const std::string& remark : {remarks.size, remarks.contentType})
        if (!remark.empty()) line += "  " + remark;
    if (remarks.isShownBefore) line += "  (shown before)";
    if (remarks.isUnrelated) line += "  (no page relates to it)";
    m_out.Line(line);
}

void PartsTree::JsonRow(int depth, const std::string& what, const std::string& name, const Remarks& remarks) {
    const OvPlatform::PackagePart* part = m_context->package->Find(name);
    m_json.BeginObject().Key("depth").Number(depth).Key("kind").Text(what).Key("name").Text(name);
    m_json.Key("bytes");
    part ? m_json.Number(static_cast<long long>(part->size)) : m_json.Null();
    m_json.Key("pieces").Number(part ? part->pieces : 0);
    m_json.Key("contentType");
    part ? m_json.Text(part->contentType) : m_json.Null();
    m_json.Key("pageSize");
    remarks.size.empty() ? m_json.Null() : m_json.Text(remarks.size);
    m_json.Key("shownBefore").Bool(remarks.isShownBefore).EndObject();
    m_out.JsonPiece(m_json.Take());
}

// Shared parts are told apart from a page's own.
bool PartsTree::IsShownBefore(const std::string& name) { return !m_shown.insert(LowerAscii(name)).second; }

void PartsTree::ShowTicket(TicketSlot& ticket, int depth) {
    if (ticket.IsEmpty()) return;
    const std::string name = ticket.Name();
    Row(depth, "print ticket", name, {.isShownBefore = IsShownBefore(name)});
}

template <class Part>
void PartsTree::ShowTicketed(const std::string& what, Part* part, int depth) {
    CComBSTR uri;
    part->GetUri(&uri);
    Row(depth, what, Utf8Argument(uri), {});
    if (const CComQIPtr<IHostTicketed> ticketed(part); ticketed) ShowTicket(ticketed->Ticket(), depth + 1);
}

void PartsTree::ShowPackage(IXpsDocument* package) {
    CComPtr<IPartThumbnail> thumbnail;
    package->GetThumbnail(&thumbnail);
    CComBSTR uri;
    if (thumbnail && SUCCEEDED(thumbnail->GetUri(&uri))) Row(0, "thumbnail", Utf8Argument(uri), {});
}

void PartsTree::ShowPage(FixedPagePart& page) {
    ++m_pages;
    const PageReference& reference = page.Reference();
    Row(2, "page " + std::to_string(++m_pagesOfDocument), page.Core().name,
        {.size = reference.width.empty() ? "" : reference.width + " x " + reference.height});
    ShowTicket(page.Ticket(), 3);
    for (const PageResource& resource : page.Resources()) {
        const bool isThumbnail = RelationOf(resource.relationshipType) == Relation::Thumbnail;
        const PartKind kind = KindOf(resource.stored->contentType, resource.name);
        Row(resource.viaDictionary ? 4 : 3, isThumbnail ? "thumbnail" : KindName(kind), resource.name,
            {.isShownBefore = IsShownBefore(resource.name)});
    }
}

void PartsTree::ShowOther(const PartCore& core) {
    const int depth = !core.anchor || core.anchor->source == "/" ? 0 : 2;
    Row(depth, core.anchor ? "part" : KindName(core.kind), core.name,
        {.contentType = core.anchor ? core.contentType : "", .isUnrelated = !core.anchor});
}

} // namespace OvPipeline
