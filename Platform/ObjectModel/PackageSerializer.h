#pragma once

#include "ObjectModel/PackageObject.h"
#include "ObjectModel/StructureWriter.h"
#include "Package/PackageWriter.h"

#include <memory>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace OvPlatform {

/// Writes a model: what was read and not changed as it lies in its package, in that package's order, what was
/// changed in its place, and what is new behind. Parts that only what has been removed leads to go with it;
/// all others stay, known or not. Throws PackageError. Once.
class PackageSerializer {
public:
    PackageSerializer(PackageWriter& writer, const PackageObject& package, XpsFlavour flavour);

    /// All parts and relationships.
    void Write();

private:
    using Relationships = std::vector<PackageRelationship>;
    struct PlannedPart {
        std::string name;
        DocumentSequenceObject* sequence = nullptr; // one of these
        DocumentObject* document = nullptr;
        PageReferenceObject* page = nullptr;
        const DocumentObject* owner = nullptr; // of the page
    };

    void Plan();
    void PlanDocument(DocumentObject& document);
    void PlanPart(PlannedPart planned, const PackagePart* stored);
    void DropRemoved();
    void MoveRenamed();
    void RequireFree(const std::string& name) const;
    bool UsesMoved(const std::string& user) const;
    template <class Interface>
    void Cut(const SourcePlace& place, const RelatedPart<Interface>& part);
    void Cut(const SourcePlace& place, Relation relation);
    std::unordered_set<const PackagePart*> Reach(std::vector<const PackagePart*> from,
                                                 const std::unordered_set<const PackagePart*>& walls,
                                                 bool isCut) const;

    void WriteStored(const PackagePart& part);
    void WritePlanned(const PlannedPart& planned);
    void WriteSequence(const PlannedPart& planned);
    void WriteDocument(const PlannedPart& planned);
    void WritePage(const PlannedPart& planned);
    std::shared_ptr<const PageSource> StructureOf(const SourcePlace& place, const PackagePart* part);
    void FindStructureItem(const SourcePlace& place, const SourceOrigin& origin, const PackagePart* stored,
                           StructureItem& item);
    void WriteStructure(const std::string& name, const char* contentType, ElementKind root,
                        const std::shared_ptr<const PageSource>& own,
                        const std::vector<StructureItem>& items);
    /// `like`: what has the encoding that it is to be written in.
    template <class Fill>
    void WriteMarkup(const std::string& name, const char* contentType, const PageSource* like,
                     const Fill& fill);
    bool WriteInFormat(const std::string& name, const char* contentType, const PartContent& content);
    void CopyBytes(const PackagePart& part);
    void WriteBytes(const std::string& name, const char* contentType, PackageCompression compression,
                    const PartContent& content);
    void WriteText(const std::string& name, const char* contentType, const std::string& text);
    void WriteResource(IXpsOMResource* resource);
    void WriteResourceBytes(IModelResource& resource);
    void WriteDictionary(IXpsOMRemoteDictionaryResource* dictionary, const ResourceCore& core);
    void UseParts(const std::string& user, const std::vector<struct UsedPart>& parts,
                  const DocumentObject* document);

    void RelatePackage();
    void RelateSequence(const PlannedPart& planned);
    void RelateDocument(const PlannedPart& planned);
    void RelatePage(const PlannedPart& planned);
    /// What the part has in its package, but for what the model says anew.
    void CopyRelationships(const SourcePlace& place, const std::string& name);
    /// What has not been copied with the relationships, since it was changed or lies in another package.
    template <class Interface>
    void RelateOwn(const std::string& source, const SourcePlace& place, const RelatedPart<Interface>& part);
    void RelateSignatureBlocks(const std::string& source, DocumentObject& document);
    void Relate(const std::string& source, Relation relation, const std::string& target);

    bool IsStoredHere(const SourcePlace& place) const {
        return m_source != nullptr && place.package.get() == m_source;
    }
    bool IsOfAnother(const SourcePlace& place) const { return place && !IsStoredHere(place); }
    bool AreCorePropertiesChanged() const;
    /// Of a part that is written from the package.
    const std::string& NameNow(const PackagePart& part) const;
    /// The part of the package that the resource was read as; null for one of another package, or a new one.
    const PackagePart* PartOf(const ResourceCore& core) const;
    /// False for one that was noted before. Throws PackageError where another one has its name.
    bool NoteResource(const ResourceCore& core);

    PackageWriter& m_writer;
    const PackageObject& m_package;
    SourcePackage* m_source; // null for a new package
    XpsFlavour m_flavour;
    struct Structure {
        std::shared_ptr<const PageSource> source;
        std::vector<StructureReference> references;
    };
    std::unordered_map<const PackagePart*, Structure>
        m_structures; // documents and sequences, as they were read
    std::vector<PlannedPart> m_planned;
    std::unordered_map<const PackagePart*, std::size_t> m_plannedAt; // those that stand in another's place
    std::unordered_set<const PackagePart*> m_dropped;
    std::unordered_set<const PackagePart*> m_kept; // sequence, documents and pages
    // Relationships that the model says anew, by their source; a null part stands for the package.
    std::set<std::pair<const PackagePart*, Relation>> m_cut;
    std::unordered_map<std::string, std::string, PartNameHash, PartNameEqual> m_renamed;
    std::unordered_map<const ResourceCore*, const PackagePart*> m_changed; // what they were read as
    std::unordered_map<const PackagePart*, std::string> m_moved; // resources that have other names now
    std::unordered_map<std::string, const ResourceCore*, PartNameHash, PartNameEqual> m_resources;
    std::unordered_set<std::string, PartNameHash, PartNameEqual> m_names; // of the planned parts
};

} // namespace OvPlatform
