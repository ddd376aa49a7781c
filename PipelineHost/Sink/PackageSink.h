#pragma once

#include "Parts/FixedPagePart.h"

#include <Package/PackageWriter.h>

#include <atlcomcli.h>

#include <unordered_map>
#include <unordered_set>

namespace OvPipeline {

/// Whether the parts that a page uses lie before or behind its markup in the package.
enum class Interleaving { ResourcesFirst, MarkupFirst };

/// Writes the pipeline's parts into a package: names, content types and compression as they are, each shared
/// part once, tickets and resources related as they were, and what nobody has changed byte by byte as it is
/// packed; a ticket whose name another one has taken gets a name of its own. Nothing stands under the
/// target's name before Commit, and nothing is left of it without. Everything throws: HostError or
/// OvPlatform::PackageError. Belongs to one thread at a time.
class PackageSink {
public:
    PackageSink(std::unique_ptr<OvPlatform::ByteOutput> output, std::shared_ptr<JobState> job,
                XpsFlavour flavour, Interleaving interleaving);

    void Take(IUnknown* part);
    /// All parts are there: writes the markup that refers to them. HostError where no page came.
    void Complete();
    /// Behind Complete: writes the package out, which may take a while; a job that stops ends it.
    void Finish();
    /// Behind Finish: puts the package under its name, and does nothing else.
    void Commit();

    bool HasPart(const std::string& name) const { return m_writer->HasPart(name); }
    /// Behind Finish: of the package, in bytes.
    std::uint64_t Size() const { return m_writer->Size(); }

private:
    struct Written {
        std::uint64_t identity;
        bool isStored; // in the package that the job came in
    };
    struct Link {
        std::string source;
        std::string type;
        std::string target;
    };

    void TakeDocument(IFixedDocument* document);
    void TakePage(FixedPagePart& page);
    void OpenDocument();
    void CloseDocument();
    void CompleteRelationships(FixedPagePart& page);
    void WriteMarkup(FixedPagePart& page);
    void WriteResources(FixedPagePart& page);
    std::string WriteObject(IUnknown* object);
    void WriteCore(const PartCore& core);
    void WriteTicket(const std::string& owner, IPartPrintTicket* ticket);
    bool IsDisplaced(const PartCore& core) const;
    std::string WriteDisplaced(PartCore core);
    bool Claim(const PartCore& core);
    void WriteContent(const PartCore& core, const std::string& contentType);
    bool TakeOver(const PartCore& core, const std::string& contentType);
    void WriteBytes(const std::string& name, const std::string& contentType,
                    EXpsCompressionOptions compression, ByteReader& bytes);
    void Begin(const std::string& name) const;
    void Pass(OvPlatform::PackagePartSink& sink, const void* bytes, std::size_t size) const;
    void WriteText(const std::string& name, const char* contentType, const std::string& text);
    void Relate(const std::string& source, Relation relation, const std::string& target);
    void Relate(const std::string& source, const std::string& type, const std::string& target);
    void Say(std::string_view step, const std::string& name) const;

    std::shared_ptr<JobState> m_job;
    XpsFlavour m_flavour;
    Interleaving m_interleaving;
    std::unique_ptr<OvPlatform::PackageWriter> m_writer;
    std::unordered_map<std::string, Written> m_written;         // by name in lower case
    std::unordered_map<std::uint64_t, std::string> m_displaced; // new names by identity
    std::vector<Link> m_links;                                  // between parts that may never be written
    std::string m_sequenceName;
    std::string m_sequenceMarkup;
    CComPtr<IFixedDocument> m_document;
    std::string m_documentName;
    std::shared_ptr<SpooledBytes> m_documentMarkup; // null until the document's first page
    std::unordered_set<std::string> m_restrictedFonts;
    std::uint64_t m_pages = 0;
    std::vector<char> m_chunk =
        std::vector<char>(std::size_t{64} * 1024); // on its way from package to package
};

} // namespace OvPipeline
