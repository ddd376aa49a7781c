#include "ObjectModel/SourcePackage.h"

#include "ObjectModel/ReferredPart.h"

#include <utility>

namespace OvPlatform {

namespace {

std::string PluralOf(Relation relation) {
    switch (relation) {
    case Relation::PrintTicket:
        return "print tickets";
    case Relation::Thumbnail:
        return "thumbnails";
    case Relation::CoreProperties:
        return "parts of core properties";
    default:
        return "parts of one kind that it may have one of";
    }
}

using PartsByName = std::unordered_map<std::string, CComPtr<IXpsOMResource>, PartNameHash, PartNameEqual>;

// Markup that is read refers to parts by what they are called in the package.
template <class Find>
CComPtr<PartResources> ResourcesAsStored(const Find& find) {
    const auto of = [&]<class Interface>() {
        return [find](const std::string& name) {
            return CComPtr<Interface>(CComQIPtr<Interface>(find(name).p).p);
        };
    };
    CComPtr<PartResources> resources;
    resources.Attach(new PartResources(of.template operator()<IXpsOMFontResource>(),
                                       of.template operator()<IXpsOMImageResource>(),
                                       of.template operator()<IXpsOMColorProfileResource>(),
                                       of.template operator()<IXpsOMRemoteDictionaryResource>()));
    return resources;
}

} // namespace

SourcePackage::SourcePackage(std::shared_ptr<const PackageReader> reader) : m_reader(std::move(reader)) {}

std::shared_ptr<SourcePackage> SourcePackage::Open(const std::filesystem::path& file) {
    std::shared_ptr<SourcePackage> package(new SourcePackage(PackageReader::Open(file)));
    package->FindSequence();
    return package;
}

void SourcePackage::FindSequence() {
    const std::string file = m_reader->File().string();
    for (const auto& relationship : m_reader->Relationships(packageRoot)) {
        if (RelationOf(relationship.type) != Relation::FixedRepresentation) continue;
        if (IsOpenXpsType(relationship.type)) m_flavour = XpsFlavour::OpenXps;
        const PackagePart& part = RequireTarget(*m_reader, packageRoot, relationship);
        if (m_sequence != nullptr && m_sequence != &part)
            throw PackageError(XPS_E_MULTIPLE_DOCUMENTSEQUENCE_RELATIONSHIPS, file,
                               "the package names two document sequences, " + m_sequence->name + " and " +
                                   part.name);
        m_sequence = &part;
    }
    if (m_sequence == nullptr)
        throw PackageError(XPS_E_MISSING_DOCUMENTSEQUENCE_RELATIONSHIP, file,
                           "the package names no document sequence: it is no XPS document");
    if (KindOf(m_sequence->contentType, {}) != PartKind::Sequence)
        throw PackageError(XPS_E_UNEXPECTED_CONTENT_TYPE, m_sequence->name,
                           "it is of type " + m_sequence->contentType +
                               ", which is no fixed document sequence");
    m_referred.insert(m_sequence);
}

const PackagePart& SourcePackage::Refer(const std::string& source, const PageReference& reference,
                                        PartKind kind, HRESULT missing) {
    const PackagePart* part = FindReferred(*m_reader, source, reference.source);
    const std::string word = KindName(kind);
    if (part == nullptr)
        throw PackageError(missing, source,
                           "it names the " + word + " " + reference.source +
                               ", which the package does not hold");
    if (KindOf(part->contentType, {}) != kind)
        throw PackageError(XPS_E_UNEXPECTED_CONTENT_TYPE, part->name,
                           "it is of type " + part->contentType + ", which is no fixed " + word);
    if (!m_referred.insert(part).second)
        throw PackageError(XPS_E_MULTIPLE_REFERENCES_TO_PART, part->name,
                           "the " + word + " is referred to twice");
    return *part;
}

ReferenceList SourcePackage::References(ReferenceList::Of kind, const PackagePart& part) const {
    const std::shared_ptr<PackagePartStream> bytes = m_reader->OpenPart(part.name);
    return {kind, part.name, [bytes](void* buffer, std::size_t size) { return bytes->Read(buffer, size); }};
}

std::vector<SourceDocument> SourcePackage::ReadDocuments() {
    std::vector<SourceDocument> documents;
    std::size_t pages = 0;
    static_cast<void>(
        Related(m_sequence->name, Relation::PrintTicket, XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENTSEQUENCE));
    ReferenceList references = References(ReferenceList::Of::Sequence, *m_sequence);
    while (const auto reference = references.Next()) {
        SourceDocument& document = documents.emplace_back();
        document.part =
            &Refer(m_sequence->name, *reference, PartKind::Document, XPS_E_MISSING_REFERRED_DOCUMENT);
        document.origin = {m_sequence, documents.size() - 1, reference->source};
        static_cast<void>(
            Related(document.part->name, Relation::PrintTicket, XPS_E_MULTIPLE_PRINTTICKETS_ON_DOCUMENT));
        NoteRestrictedFonts(document.part->name);
        ReadPages(document);
        pages += document.pages.size();
    }
    m_referred.clear();
    if (documents.empty())
        throw PackageError(XPS_E_MISSING_DOCUMENT, m_sequence->name, "it has no documents");
    if (pages == 0)
        throw PackageError(XPS_E_MISSING_PAGE_IN_DOCUMENT, m_sequence->name, "its documents have no pages");
    return documents;
}

void SourcePackage::ReadPages(SourceDocument& document) {
    ReferenceList references = References(ReferenceList::Of::Document, *document.part);
    while (auto reference = references.Next()) {
        const PackagePart& part =
            Refer(document.part->name, *reference, PartKind::Page, XPS_E_MISSING_REFERRED_PAGE);
        SourceOrigin origin{document.part, document.pages.size(), reference->source};
        document.pages.push_back({&part, std::move(*reference), std::move(origin)});
    }
}

void SourcePackage::NoteRestrictedFonts(const std::string& document) {
    for (const PackagePart* font : AllRelated(document, Relation::RestrictedFont))
        m_restrictedFonts.insert(font);
}

const PackagePart* SourcePackage::Related(const std::string& source, Relation relation,
                                          HRESULT ifTwice) const {
    const auto all = AllRelated(source, relation);
    if (all.empty()) return nullptr;
    if (all.size() > 1)
        throw PackageError(ifTwice, source,
                           "it has two " + PluralOf(relation) + ", " + all[0]->name + " and " + all[1]->name);
    return all.front();
}

std::vector<const PackagePart*> SourcePackage::AllRelated(const std::string& source,
                                                          Relation relation) const {
    std::vector<const PackagePart*> parts;
    for (const auto& relationship : m_reader->Relationships(source))
        if (RelationOf(relationship.type) == relation)
            parts.push_back(&RequireTarget(*m_reader, source, relationship));
    return parts;
}

StoredResource SourcePackage::Describe(const PackagePart& part) const {
    return {m_reader, &part, m_restrictedFonts.contains(&part)};
}

CComPtr<IXpsOMRemoteDictionaryResource> SourcePackage::Dictionary(const PackagePart& part) {
    // What it holds must not hold this package, which holds it: only its own relationships count. A
    // dictionary that refers to dictionaries is none.
    const auto used = std::make_shared<PartsByName>();
    for (const PackagePart* each : AllRelated(part.name, Relation::RequiredResource))
        if (KindOf(each->contentType, each->name) != PartKind::ResourceDictionary)
            if (const auto resource = PageResource(*each); resource) used->emplace(each->name, resource);
    const auto resources = ResourcesAsStored([used](const std::string& name) {
        const auto found = used->find(name);
        return found == used->end() ? CComPtr<IXpsOMResource>() : found->second;
    });
    CComPtr<IXpsOMRemoteDictionaryResource> dictionary;
    MakeStoredDictionary(Describe(part), resources, &dictionary);
    return dictionary;
}

CComPtr<IXpsOMResource> SourcePackage::PageResource(const PackagePart& part) {
    switch (KindOf(part.contentType, part.name)) {
    case PartKind::Font:
        return Resource<IXpsOMFontResource>(part).p;
    case PartKind::Image:
        return Resource<IXpsOMImageResource>(part).p;
    case PartKind::ColorProfile:
        return Resource<IXpsOMColorProfileResource>(part).p;
    case PartKind::ResourceDictionary: {
        if (IXpsOMResource* known = KnownResource(part); known != nullptr) return known;
        const auto made = Dictionary(part);
        m_resources[&part] = made;
        return made.p;
    }
    default:
        return {};
    }
}

IXpsOMResource* SourcePackage::KnownResource(const PackagePart& part) const {
    const auto known = m_resources.find(&part);
    return known == m_resources.end() ? nullptr : known->second.p;
}

CComPtr<IXpsOMPartResources> SourcePackage::ResourcesOf(const std::string& page) {
    const auto resources = ResourcesAsStored([self = shared_from_this()](const std::string& name) {
        const PackagePart* part = self->m_reader->Find(name);
        return part == nullptr ? CComPtr<IXpsOMResource>() : self->PageResource(*part);
    });
    for (const PackagePart* part : AllRelated(page, Relation::RequiredResource))
        if (const auto resource = PageResource(*part); resource) resources->Fill(resource);
    return resources.p;
}

} // namespace OvPlatform
