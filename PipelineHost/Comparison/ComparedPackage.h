#pragma once

#include "Comparison/MarkupReader.h"

#include <ObjectModel/SourcePackage.h>

#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace OvPipeline {

/// One of two packages that are compared: its parts by their roles, and fingerprints of what is in them.
/// Content is read a chunk at a time. What is wrong with the package is thrown as an InputError about the
/// file.
class ComparedPackage {
public:
    using Part = OvPlatform::PackagePart;

    struct Document {
        OvPlatform::SourceDocument source;
        const Part* ticket; // null: none
    };
    /// A part that is neither sequence, document, page, ticket nor the core properties.
    struct Resource {
        const Part* part;
        std::string digest; // empty until it is asked for
    };
    /// A relationship of a part, print tickets and core properties left out, which are compared themselves.
    struct Relation {
        std::string meaning; // whatever the target is called
        std::string kind;
        std::string target;
    };

    explicit ComparedPackage(const std::filesystem::path& file);

    const std::string& File() const { return m_file; }
    OvPlatform::XpsFlavour Flavour() const { return m_package->Flavour(); }
    const Part& Sequence() const { return m_package->Sequence(); }
    const Part* JobTicket() const { return m_jobTicket; }
    const Part* CoreProperties() const { return m_coreProperties; }
    const std::vector<Document>& Documents() const { return m_documents; }
    std::vector<Resource>& Resources() { return m_resources; }
    const Part* TicketOf(const Part& part) const;

    /// Whether the part's markup counts, and not its bytes.
    static bool IsMarkup(const Part& part);

    /// Of the bytes; of a font that is obfuscated by its name, as it is without.
    std::string DigestOfBytes(const Part& part) const;
    /// Of what the markup means; of the bytes, where it is none.
    std::string DigestOfMarkup(const Part& part) const;
    /// Of a page: its markup, what it relates to, and what its document says of it. bytes: what stands for
    /// the markup, which is not read then; null: its meaning does.
    std::string DigestOfPage(const OvPlatform::SourcePage& page, const std::string* bytes) const;

    std::string ReadTicket(const Part& part) const;
    /// By their meaning.
    std::vector<Relation> RelationsOf(const std::string& source) const;
    /// References are what Identify has said they stand for.
    std::unique_ptr<MarkupReader> OpenMarkup(const Part& part) const;

    /// What references to the part stand for from now on.
    void Identify(const Part& part, std::string identity) { m_identities[&part] = std::move(identity); }

private:
    void FindResources();

    template <class Body>
    auto Named(Body&& body) const;

    std::string m_file;
    std::shared_ptr<OvPlatform::SourcePackage> m_package;
    std::vector<Document> m_documents;
    const Part* m_jobTicket = nullptr;
    const Part* m_coreProperties = nullptr;
    std::vector<Resource> m_resources;
    std::unordered_map<const Part*, std::string> m_identities;
};

} // namespace OvPipeline
