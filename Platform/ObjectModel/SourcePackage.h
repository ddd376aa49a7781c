#pragma once

#include "Com/PlatformExport.h"
#include "ObjectModel/Collections.h"
#include "ObjectModel/ReferenceList.h"
#include "ObjectModel/Resources.h"
#include "ObjectModel/XpsVocabulary.h"
#include "Package/PackageReader.h"

#include <filesystem>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace OvPlatform {

/// Where a package refers to a document or a page: in which part, as which of its references, and how.
struct SourceOrigin {
    const PackagePart* part = nullptr; // null for what is new
    std::size_t number = 0;
    std::string reference; // as written
};

/// A page as a document of a package refers to it.
struct SourcePage {
    const PackagePart* part = nullptr;
    PageReference reference;
    SourceOrigin origin;
};

/// A document as the sequence of a package refers to it, with all its pages.
struct SourceDocument {
    const PackagePart* part = nullptr;
    std::vector<SourcePage> pages;
    SourceOrigin origin;
};

/// The package that a model was read from: which parts are what, and the resources in it as objects, one for
/// each that was asked for. Parts are read when they are needed. Throws PackageError. One thread at a time.
class OV_PLATFORM_API SourcePackage : public std::enable_shared_from_this<SourcePackage> {
public:
    /// Finds the sequence: XPS_E_MISSING_DOCUMENTSEQUENCE_RELATIONSHIP and the like where there is none.
    static std::shared_ptr<SourcePackage> Open(const std::filesystem::path& file);

    const PackageReader& Reader() const { return *m_reader; }
    const std::shared_ptr<const PackageReader>& SharedReader() const { return m_reader; }
    XpsFlavour Flavour() const { return m_flavour; }
    const PackagePart& Sequence() const { return *m_sequence; }

    /// The documents and their pages, each of which must be there once; at least one of each. Checks what
    /// they and the sequence relate to. Once.
    std::vector<SourceDocument> ReadDocuments();

    /// The one part that a source ("/" for the package) relates to in that way; null where there is none.
    const PackagePart* Related(const std::string& source, Relation relation, HRESULT ifTwice) const;
    /// All of them.
    std::vector<const PackagePart*> AllRelated(const std::string& source, Relation relation) const;

    /// The object of a part, of the kind that the interface says.
    template <class Interface>
    CComPtr<Interface> Resource(const PackagePart& part) {
        CComPtr<IXpsOMResource>& known = m_resources[&part];
        if (CComQIPtr<Interface> same(known); same) return same.p;
        CComPtr<Interface> made;
        MakeStored(Describe(part), &made);
        if (!known) known = made;
        return made;
    }
    /// By the part's type; null for a part that no page can use.
    CComPtr<IXpsOMResource> PageResource(const PackagePart& part);
    /// Null for a part that nobody has asked for.
    IXpsOMResource* KnownResource(const PackagePart& part) const;

    /// What a page relates to, and as a last resort whatever the package has: pages are met that use what
    /// they do not relate to.
    CComPtr<IXpsOMPartResources> ResourcesOf(const std::string& page);

private:
    explicit SourcePackage(std::shared_ptr<const PackageReader> reader);

    void FindSequence();
    const PackagePart& Refer(const std::string& source, const PageReference& reference, PartKind kind,
                             HRESULT missing);
    void ReadPages(SourceDocument& document);
    void NoteRestrictedFonts(const std::string& document);
    StoredResource Describe(const PackagePart& part) const;
    CComPtr<IXpsOMRemoteDictionaryResource> Dictionary(const PackagePart& part);
    ReferenceList References(ReferenceList::Of kind, const PackagePart& part) const;

    std::shared_ptr<const PackageReader> m_reader;
    XpsFlavour m_flavour = XpsFlavour::Xps;
    const PackagePart* m_sequence = nullptr;
    std::unordered_set<const PackagePart*> m_referred; // while the documents are read
    std::unordered_set<const PackagePart*> m_restrictedFonts;
    std::unordered_map<const PackagePart*, CComPtr<IXpsOMResource>> m_resources;
};

} // namespace OvPlatform
