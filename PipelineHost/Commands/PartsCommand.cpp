#include "Commands/Commands.h"
#include "Source/PackageSource.h"

namespace OvPipeline {

namespace {

// Prints the job's parts as they come, each line under what it belongs to.
class PartsTree {
public:
    PartsTree(SharedContext context, ShownOutput& out) : m_context(std::move(context)), m_out(out) {}

    void Show(IUnknown* part) {
        if (const CComQIPtr<IHostPage> page(part); page)
            ShowPage(page->Page());
        else if (const CComQIPtr<IFixedDocument> document(part); document)
            ShowDocument(document);
        else if (const CComQIPtr<IFixedDocumentSequence> sequence(part); sequence)
            ShowTicketed("document sequence", sequence.p, 0);
        else if (const CComQIPtr<IXpsDocument> package(part); package)
            ShowPackage(package);
        else if (const CComQIPtr<IHostPart> other(part); other)
            ShowOther(other->Core());
    }

    std::uint64_t Pages() const { return m_pages; }

private:
    void Line(int depth, const std::string& what, const std::string& name, const std::string& remark = {}) {
        const OvPlatform::PackagePart* part = m_context->package->Find(name);
        std::string line = std::string(static_cast<std::size_t>(2 * depth), ' ') + what + " " + name;
        if (part) line += "  " + ByteCount(part->size);
        if (part && part->pieces > 1) line += " in " + Counted(part->pieces, "piece");
        m_out.Line(line + remark);
    }
    // Shared parts are told apart from a page's own.
    std::string Again(const std::string& name) {
        return m_shown.insert(LowerAscii(name)).second ? std::string() : "  (shown before)";
    }
    void ShowTicket(TicketSlot& ticket, int depth) {
        if (ticket.IsEmpty()) return;
        const std::string name = ticket.Name();
        Line(depth, "print ticket", name, Again(name));
    }
    template <class Part>
    void ShowTicketed(const std::string& what, Part* part, int depth) {
        CComBSTR uri;
        part->GetUri(&uri);
        Line(depth, what, Utf8Argument(uri));
        if (const CComQIPtr<IHostTicketed> ticketed(part); ticketed)
            ShowTicket(ticketed->Ticket(), depth + 1);
    }
    void ShowPackage(IXpsDocument* package) {
        CComPtr<IPartThumbnail> thumbnail;
        package->GetThumbnail(&thumbnail);
        CComBSTR uri;
        if (thumbnail && SUCCEEDED(thumbnail->GetUri(&uri))) Line(0, "thumbnail", Utf8Argument(uri));
    }
    void ShowDocument(IFixedDocument* document) {
        m_pagesOfDocument = 0;
        ShowTicketed("document " + std::to_string(++m_documents), document, 1);
    }
    void ShowPage(FixedPagePart& page) {
        ++m_pages;
        const PageReference& reference = page.Reference();
        Line(2, "page " + std::to_string(++m_pagesOfDocument), page.Core().name,
             reference.width.empty() ? "" : "  " + reference.width + " x " + reference.height);
        ShowTicket(page.Ticket(), 3);
        for (const PageResource& resource : page.Resources()) {
            const bool isThumbnail = RelationOf(resource.relationshipType) == Relation::Thumbnail;
            const PartKind kind = KindOf(resource.stored->contentType, resource.name);
            Line(resource.viaDictionary ? 4 : 3, isThumbnail ? "thumbnail" : KindName(kind), resource.name,
                 Again(resource.name));
        }
    }
    void ShowOther(const PartCore& core) {
        const int depth = !core.anchor || core.anchor->source == "/" ? 0 : 2;
        Line(depth, core.anchor ? "part" : KindName(core.kind), core.name,
             core.anchor ? "  " + core.contentType : "  (no page relates to it)");
    }

    SharedContext m_context;
    ShownOutput& m_out;
    std::unordered_set<std::string> m_shown;
    std::uint64_t m_documents = 0;
    std::uint64_t m_pages = 0;
    std::uint64_t m_pagesOfDocument = 0;
};

} // namespace

int PartsCommand(const CommandOptions& options, ShownOutput& out, ShownOutput&) {
    const SharedContext context = OpenJobPackage(options.job, std::make_shared<JobState>());
    CComPtr<PackageSource> source;
    source.Attach(new PackageSource(context));
    std::error_code error;
    out.Line(options.job.name + "  " + ByteCount(std::filesystem::file_size(options.job.path, error)) + "  " +
             (context->flavour == XpsFlavour::OpenXps ? "OpenXPS" : "XPS") + ", " +
             Counted(context->package->Parts().size(), "part"));
    PartsTree tree(context, out);
    while (const CComPtr<IUnknown> part = source->Next())
        tree.Show(part);
    out.Line(Counted(tree.Pages(), "page"));
    return ExitOk;
}

} // namespace OvPipeline
