#include "ObjectModel/PackageSerializer.h"

#include "ObjectModel/MarkupFailure.h"
#include "ObjectModel/MarkupOutput.h"
#include "ObjectModel/PageObjects.h"
#include "Xml/DocumentBound.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace OvPlatform {

namespace {

constexpr const char* corePropertiesContentType =
    "application/vnd.openxmlformats-package.core-properties+xml";

constexpr PackageCompression packing = PackageCompression::Normal;

// Takes markup as it is written.
class SinkStream final : public CountedObject<ISequentialStream> {
public:
    explicit SinkStream(PackagePartSink& sink) : m_sink(sink) {}

    HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return STG_E_ACCESSDENIED; }
    HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG size, ULONG* written) override {
        if (written != nullptr) *written = 0;
        try {
            m_sink.Write(bytes, size);
        } catch (...) {
            m_failure = std::current_exception();
            return STG_E_MEDIUMFULL;
        }
        if (written != nullptr) *written = size;
        return S_OK;
    }

    /// Throws what the sink threw, or what the result says.
    void Check(HRESULT result, const std::string& part) const {
        if (m_failure) std::rethrow_exception(m_failure);
        Require(result, part, "its markup cannot be written");
    }

private:
    PackagePartSink& m_sink;
    std::exception_ptr m_failure;
};

XPS_DOCUMENT_TYPE TypeOf(XpsFlavour flavour) {
    return flavour == XpsFlavour::OpenXps ? XPS_DOCUMENT_TYPE_OPENXPS : XPS_DOCUMENT_TYPE_XPS;
}

// Pictures are compressed as they are.
PackageCompression PackingOf(const char* contentType) {
    return std::string_view(contentType).starts_with("image/") ? PackageCompression::None : packing;
}

bool IsSameName(const std::string& one, const std::string& other) {
    return ComparePartNames(one, other) == 0;
}

} // namespace

PackageSerializer::PackageSerializer(PackageWriter& writer, const PackageObject& package, XpsFlavour flavour)
    : m_writer(writer), m_package(package), m_source(package.Source().get()), m_flavour(flavour) {}

void PackageSerializer::Write() {
    Plan();
    if (m_source != nullptr) {
        DropRemoved();
        MoveRenamed();
        for (const PackagePart& part : m_source->Reader().Parts())
            WriteStored(part);
    }
    RelatePackage();
    std::unordered_set<std::size_t> inPlace;
    for (const auto& [part, index] : m_plannedAt)
        inPlace.insert(index);
    for (std::size_t i = 0; i < m_planned.size(); ++i)
        if (!inPlace.contains(i)) WritePlanned(m_planned[i]);
}

// Which parts are written from objects, and in whose place they stand.
void PackageSerializer::Plan() {
    DocumentSequenceObject* sequence = m_package.Sequence();
    if (sequence == nullptr)
        throw PackageError(XPS_E_MISSING_DOCUMENTSEQUENCE_RELATIONSHIP, "the package",
                           "it has no document sequence");
    if (sequence->Documents().Items().empty())
        throw PackageError(XPS_E_MISSING_DOCUMENT, sequence->Name(), "it has no documents");
    PlannedPart planned;
    planned.name = sequence->Name();
    planned.sequence = sequence;
    PlanPart(std::move(planned), IsStoredHere(sequence->Place()) ? sequence->StoredPart() : nullptr);
    Cut(sequence->Place(), sequence->Ticket());
    const SourcePlace root{m_package.Source(), std::string(packageRoot)};
    Cut(root, m_package.Thumbnail());
    if (m_package.IsDiscardControlChanged()) Cut(root, Relation::DiscardControl);
    if (AreCorePropertiesChanged()) Cut(root, Relation::CoreProperties);
    for (const auto& document : sequence->Documents().Items())
        PlanDocument(static_cast<DocumentObject&>(*document));
}

void PackageSerializer::PlanDocument(DocumentObject& document) {
    PlannedPart planned;
    planned.name = document.Name();
    planned.document = &document;
    PlanPart(std::move(planned), IsStoredHere(document.Place()) ? document.StoredPart() : nullptr);
    Cut(document.Place(), document.Ticket());
    Cut(document.Place(), document.Structure());
    if (document.SignatureBlocks() != nullptr && document.SignatureBlocks()->IsChanged())
        Cut(document.Place(), Relation::SignatureDefinitions);
    for (const auto& item : document.Pages().Items()) {
        auto& page = static_cast<PageReferenceObject&>(*item);
        Cut(page.Place(), page.Ticket());
        Cut(page.Place(), page.Fragments());
        Cut(page.Place(), page.Thumbnail());
        if (page.IsReplaced()) Cut(page.Place(), Relation::RequiredResource);
        PlannedPart part;
        part.name = page.Name();
        part.page = &page;
        part.owner = &document;
        PlanPart(std::move(part), IsStoredHere(page.Place()) ? page.StoredPart() : nullptr);
    }
}

void PackageSerializer::PlanPart(PlannedPart planned, const PackagePart* stored) {
    if (!m_names.insert(planned.name).second)
        throw PackageError(XPS_E_DUPLICATE_NAMES, planned.name, "two parts have that name");
    if (stored != nullptr) {
        m_kept.insert(stored);
        m_plannedAt[stored] = m_planned.size();
        if (!IsSameName(stored->name, planned.name)) m_renamed[stored->name] = planned.name;
    } else if (m_source != nullptr && m_source->Reader().Find(planned.name) != nullptr) {
        // In the place of a part that has been removed there may be another one.
        m_renamed[planned.name] = planned.name;
    }
    m_planned.push_back(std::move(planned));
}

void PackageSerializer::Cut(const SourcePlace& place, Relation relation) {
    if (IsStoredHere(place)) m_cut.emplace(m_source->Reader().Find(place.name), relation);
}

template <class Interface>
void PackageSerializer::Cut(const SourcePlace& place, const RelatedPart<Interface>& part) {
    if (part.IsChanged()) Cut(place, part.Kind());
}

// What the parts lead to in the package, without going through walls. A null part stands for the package.
std::unordered_set<const PackagePart*>
PackageSerializer::Reach(std::vector<const PackagePart*> from,
                         const std::unordered_set<const PackagePart*>& walls, bool isCut) const {
    std::unordered_set<const PackagePart*> reached(from.begin(), from.end());
    while (!from.empty()) {
        const PackagePart* source = from.back();
        from.pop_back();
        for (const auto& relationship :
             m_source->Reader().Relationships(source == nullptr ? packageRoot : source->name)) {
            if (relationship.external) continue;
            if (isCut && m_cut.contains({source, RelationOf(relationship.type)})) continue;
            const PackagePart* part = m_source->Reader().Find(relationship.targetPart);
            if (part != nullptr && !walls.contains(part) && reached.insert(part).second) from.push_back(part);
        }
    }
    return reached;
}

// What only removed pages and documents, or replaced parts, lead to goes with them.
void PackageSerializer::DropRemoved() {
    const PackageReader& reader = m_source->Reader();
    std::unordered_set<const PackagePart*> removed;
    for (const PackagePart& part : reader.Parts()) {
        const PartKind kind = KindOf(part.contentType, {});
        const bool isStructure =
            kind == PartKind::Document || kind == PartKind::Page || &part == &m_source->Sequence();
        if (isStructure && !m_kept.contains(&part)) removed.insert(&part);
    }
    std::vector<const PackagePart*> gone(removed.begin(), removed.end());
    for (const auto& [source, relation] : m_cut)
        for (const PackagePart* part :
             m_source->AllRelated(source == nullptr ? std::string(packageRoot) : source->name, relation))
            gone.push_back(part);
    if (gone.empty()) return;
    std::vector<const PackagePart*> keepers(m_kept.begin(), m_kept.end());
    keepers.push_back(nullptr);
    const auto kept = Reach(std::move(keepers), removed, true);
    m_dropped = Reach(std::move(gone), {}, false);
    std::erase_if(m_dropped, [&](const PackagePart* part) { return kept.contains(part); });
}

// Resources that have got other names take them in the package too, and so does the markup of dictionaries
// that use them.
void PackageSerializer::MoveRenamed() {
    for (const PackagePart& part : m_source->Reader().Parts()) {
        IXpsOMResource* const known = m_source->KnownResource(part);
        if (known == nullptr) continue;
        const ResourceCore& core = ModelResource(known)->Core();
        if (core.stored == nullptr) m_changed.emplace(&core, &part);
        if (core.name != part.name && !m_dropped.contains(&part)) m_moved.emplace(&part, core.name);
    }
    for (const auto& [part, name] : m_moved)
        RequireFree(name);
    if (m_moved.empty()) return;
    for (const PackagePart& part : m_source->Reader().Parts()) {
        if (KindOf(part.contentType, part.name) != PartKind::ResourceDictionary || !UsesMoved(part.name))
            continue;
        const CComQIPtr<IXpsOMRemoteDictionaryResource> dictionary(m_source->PageResource(part));
        CComPtr<IXpsOMDictionary> content;
        if (dictionary)
            Require(dictionary->GetDictionary(&content), part.name, "the resource dictionary cannot be read");
    }
}

void PackageSerializer::RequireFree(const std::string& name) const {
    const PackagePart* const other = m_source == nullptr ? nullptr : m_source->Reader().Find(name);
    if (other != nullptr && !m_dropped.contains(other) && !m_moved.contains(other))
        throw PackageError(XPS_E_MULTIPLE_RESOURCES, name, "the package has another part of that name");
}

bool PackageSerializer::UsesMoved(const std::string& user) const {
    if (m_moved.empty()) return false;
    const auto used = m_source->AllRelated(user, Relation::RequiredResource);
    return std::any_of(used.begin(), used.end(),
                       [&](const PackagePart* part) { return m_moved.contains(part); });
}

const std::string& PackageSerializer::NameNow(const PackagePart& part) const {
    if (const auto moved = m_moved.find(&part); moved != m_moved.end()) return moved->second;
    const auto renamed = m_renamed.find(part.name);
    return renamed == m_renamed.end() ? part.name : renamed->second;
}

bool PackageSerializer::AreCorePropertiesChanged() const {
    const CorePropertiesObject* properties = m_package.CoreProperties();
    return m_package.AreCorePropertiesReplaced() || (properties != nullptr && properties->IsChanged());
}

const PackagePart* PackageSerializer::PartOf(const ResourceCore& core) const {
    if (const auto changed = m_changed.find(&core); changed != m_changed.end()) return changed->second;
    return m_source != nullptr && core.package == m_source->SharedReader() ? core.stored : nullptr;
}

bool PackageSerializer::NoteResource(const ResourceCore& core) {
    const auto [known, isNew] = m_resources.try_emplace(core.name, &core);
    if (known->second != &core)
        throw PackageError(XPS_E_MULTIPLE_RESOURCES, core.name, "two resources have that name");
    return isNew;
}

void PackageSerializer::WriteStored(const PackagePart& part) {
    if (const auto planned = m_plannedAt.find(&part); planned != m_plannedAt.end())
        return WritePlanned(m_planned[planned->second]);
    if (m_dropped.contains(&part)) return;
    const SourcePlace place{m_package.Source(), part.name};
    if (IXpsOMResource* known = m_source->KnownResource(part); known != nullptr) {
        const auto resource = ModelResource(known);
        const ResourceCore& core = resource->Core();
        if (core.stored == nullptr) {
            NoteResource(core);
            CopyRelationships(place, core.name); // with their ids, ahead of those that are added
            return WriteResourceBytes(*resource);
        }
    }
    CopyBytes(part);
    CopyRelationships(place, part.name);
}

void PackageSerializer::WritePlanned(const PlannedPart& planned) {
    if (planned.sequence != nullptr) {
        WriteSequence(planned);
        RelateSequence(planned);
    } else if (planned.document != nullptr) {
        WriteDocument(planned);
        RelateDocument(planned);
    } else {
        WritePage(planned);
    }
}

void PackageSerializer::WriteSequence(const PlannedPart& planned) {
    const DocumentSequenceObject& sequence = *planned.sequence;
    const auto& documents = sequence.Documents();
    const bool isSame = IsStoredHere(sequence.Place()) && m_renamed.empty() && !documents.IsChanged();
    if (isSame) return CopyBytes(*sequence.StoredPart());
    std::vector<StructureItem> items;
    for (const auto& each : documents.Items()) {
        const auto& document = static_cast<const DocumentObject&>(*each);
        StructureItem& item = items.emplace_back();
        item.target = document.Name();
        FindStructureItem(document.Place(), document.Origin(), document.StoredPart(), item);
    }
    WriteStructure(planned.name, sequenceContentType, ElementKind::FixedDocumentSequence,
                   StructureOf(sequence.Place(), sequence.StoredPart()), items);
}

void PackageSerializer::WriteDocument(const PlannedPart& planned) {
    const DocumentObject& document = *planned.document;
    const auto& pages = document.Pages().Items();
    const bool isSame = IsStoredHere(document.Place()) && m_renamed.empty() &&
                        !document.Pages().IsChanged() &&
                        std::none_of(pages.begin(), pages.end(), [](const auto& page) {
                            return static_cast<const PageReferenceObject&>(*page).IsReferenceChanged();
                        });
    if (isSame) return CopyBytes(*document.StoredPart());
    std::vector<StructureItem> items;
    for (const auto& each : pages) {
        const auto& page = static_cast<const PageReferenceObject&>(*each);
        StructureItem& item = items.emplace_back();
        item.target = page.Name();
        item.reference = &page.Reference();
        item.isReferenceChanged = page.IsReferenceChanged();
        FindStructureItem(page.Place(), page.Origin(), page.StoredPart(), item);
    }
    WriteStructure(planned.name, documentContentType, ElementKind::FixedDocument,
                   StructureOf(document.Place(), document.StoredPart()), items);
}

// As it was read; null for what is new.
std::shared_ptr<const PageSource> PackageSerializer::StructureOf(const SourcePlace& place,
                                                                 const PackagePart* part) {
    if (!place || part == nullptr) return nullptr;
    Structure& structure = m_structures[part];
    if (structure.source) return structure.source;
    const ElementKind root = KindOf(part->contentType, {}) == PartKind::Sequence
                                 ? ElementKind::FixedDocumentSequence
                                 : ElementKind::FixedDocument;
    const HRESULT result = ElementCall([&] {
        structure.source = PageSource::ReadStructure(
            place.package->Reader().ReadPart(part->name, mostDocumentBytes), part->name, root);
    });
    Require(result, part->name, "its markup cannot be read");
    structure.references = StructureWriter::ReferencesOf(*structure.source);
    return structure.source;
}

void PackageSerializer::FindStructureItem(const SourcePlace& place, const SourceOrigin& origin,
                                          const PackagePart* stored, StructureItem& item) {
    const auto source = StructureOf(place, origin.part);
    if (!source || stored == nullptr) return;
    const std::vector<StructureReference>& references = m_structures[origin.part].references;
    // One of another namespace than the root's is no child that is known here: it is written anew.
    if (origin.number >= references.size() || references[origin.number].source != origin.reference) return;
    item.source = source;
    item.element = references[origin.number].element;
    item.storedTarget = stored->name;
}

void PackageSerializer::WriteStructure(const std::string& name, const char* contentType, ElementKind root,
                                       const std::shared_ptr<const PageSource>& own,
                                       const std::vector<StructureItem>& items) {
    WriteMarkup(name, contentType, own.get(),
                [&](MarkupWriter& out) { StructureWriter(out, name, root, own).Write(items); });
}

template <class Fill>
void PackageSerializer::WriteMarkup(const std::string& name, const char* contentType, const PageSource* like,
                                    const Fill& fill) {
    const auto sink = m_writer.AddPart(name, contentType, packing);
    MarkupOutput output([&](std::string_view bytes) { sink->Write(bytes.data(), bytes.size()); }, like);
    MarkupWriter out([&](std::string_view text) { output.Write(text); }, name, TypeOf(m_flavour));
    fill(out);
    output.Flush();
    sink->Close();
}

void PackageSerializer::WritePage(const PlannedPart& planned) {
    PageReferenceObject& reference = *planned.page;
    IXpsOMPage* page = reference.ChangedPage();
    if (page == nullptr && IsStoredHere(reference.Place()) && !UsesMoved(reference.Place().name)) {
        CopyBytes(*reference.StoredPart());
        return RelatePage(planned);
    }
    // One of another package comes with all that it uses.
    CComPtr<IXpsOMPage> read;
    if (page == nullptr) {
        Require(reference.GetPage(&read), planned.name, "the page cannot be read");
        page = read;
    }
    std::vector<UsedPart> used;
    Require(ListUsedParts(page, used), planned.name, "what the page uses cannot be listed");
    const auto sink = m_writer.AddPart(planned.name, pageContentType, packing);
    CComPtr<SinkStream> stream;
    stream.Attach(new SinkStream(*sink));
    stream->Check(OvPlatform::WritePage(page, stream, TypeOf(m_flavour)), planned.name);
    sink->Close();
    RelatePage(planned);
    UseParts(planned.name, used, planned.owner);
}

void PackageSerializer::CopyBytes(const PackagePart& part) {
    if (const auto packed = m_source->Reader().OpenPacked(part.name))
        return TakeOverPart(m_writer, NameNow(part), part.contentType, *packed);
    WriteBytes(NameNow(part), part.contentType.c_str(), part.compression,
               *StoredContent(m_source->SharedReader(), part.name));
}

void PackageSerializer::WriteBytes(const std::string& name, const char* contentType,
                                   PackageCompression compression, const PartContent& content) {
    const auto bytes = content.Open();
    const auto sink = m_writer.AddPart(name, contentType, compression);
    std::array<char, std::size_t{64} * 1024> chunk;
    while (const std::size_t got = bytes->Read(chunk.data(), chunk.size()))
        sink->Write(chunk.data(), got);
    sink->Close();
}

void PackageSerializer::WriteText(const std::string& name, const char* contentType, const std::string& text) {
    const auto sink = m_writer.AddPart(name, contentType, packing);
    sink->Write(text.data(), text.size());
    sink->Close();
}

void PackageSerializer::WriteResource(IXpsOMResource* resource) {
    const auto own = ModelResource(resource);
    const ResourceCore& core = own->Core();
    const PackagePart* const part = PartOf(core);
    // One of the package is written in its place, unless nothing else leads to it any more.
    if (part != nullptr && !m_dropped.contains(part)) return;
    if (!NoteResource(core)) return;
    RequireFree(core.name);
    if (part != nullptr) CopyRelationships({m_package.Source(), part->name}, core.name);
    WriteResourceBytes(*own);
}

void PackageSerializer::WriteResourceBytes(IModelResource& resource) {
    const ResourceCore& core = resource.Core();
    const char* const contentType = resource.ContentType(m_flavour);
    if (const CComQIPtr<IXpsOMRemoteDictionaryResource> dictionary(&resource); dictionary)
        return WriteDictionary(dictionary, core);
    SharedContent content = core.content;
    if (IsObfuscatedFontType(contentType)) {
        const auto key = ObfuscationKeyOf(core.name);
        if (!key)
            throw PackageError(XPS_E_INVALID_OBFUSCATED_FONT_URI, core.name,
                               "a font that is obfuscated needs a GUID as its name");
        content = MaskedContent(content, *key);
    }
    if (!resource.IsOfFormat() || !WriteInFormat(core.name, contentType, *content))
        WriteBytes(core.name, contentType, PackingOf(contentType), *content);
}

// Markup of the other format gets the namespaces of this one. False for what is none.
bool PackageSerializer::WriteInFormat(const std::string& name, const char* contentType,
                                      const PartContent& content) {
    const std::string markup = ReadMarkup(content, name);
    const char* const other =
        MarkupNamespace(m_flavour == XpsFlavour::Xps ? XpsFlavour::OpenXps : XpsFlavour::Xps);
    const bool isUtf16 = markup.starts_with("\xFF\xFE") || markup.starts_with("\xFE\xFF");
    if (!isUtf16 && markup.find(other) == std::string::npos) return false;
    std::shared_ptr<const PageSource> source;
    const HRESULT result =
        ElementCall([&] { source = PageSource::ReadStructure(markup, name, ElementKind::Other); });
    Require(result, name, "its markup cannot be read");
    WriteMarkup(name, contentType, source.get(),
                [&](MarkupWriter& out) { out.Copy(*source, 0, source->Text().size()); });
    return true;
}

void PackageSerializer::WriteDictionary(IXpsOMRemoteDictionaryResource* dictionary,
                                        const ResourceCore& core) {
    CComPtr<IXpsOMDictionary> content;
    Require(dictionary->GetDictionary(&content), core.name, "the resource dictionary cannot be read");
    CComPtr<IOpcPartUri> uri;
    Require(dictionary->GetPartName(&uri), core.name, "it has no name");
    std::vector<UsedPart> used;
    Require(ListUsedParts(content, used), core.name, "what the dictionary uses cannot be listed");
    const auto sink = m_writer.AddPart(core.name, dictionaryContentType, packing);
    CComPtr<SinkStream> stream;
    stream.Attach(new SinkStream(*sink));
    stream->Check(OvPlatform::WriteDictionary(content, uri, stream, TypeOf(m_flavour)), core.name);
    sink->Close();
    UseParts(core.name, used, nullptr);
}

// A restricted font is known by a relationship of the document whose page uses it.
void PackageSerializer::UseParts(const std::string& user, const std::vector<UsedPart>& parts,
                                 const DocumentObject* document) {
    for (const UsedPart& part : parts) {
        if (!part.resource) continue;
        WriteResource(part.resource);
        Relate(user, Relation::RequiredResource, part.name);
        const CComQIPtr<IXpsOMFontResource> font(part.resource);
        if (font && document != nullptr &&
            ModelResource(font)->Core().embedding >= XPS_FONT_EMBEDDING_RESTRICTED)
            Relate(document->Name(), Relation::RestrictedFont, part.name);
    }
}

void PackageSerializer::Relate(const std::string& source, Relation relation, const std::string& target) {
    m_writer.AddRelationship(source, RelationType(relation, m_flavour), target);
}

template <class Interface>
void PackageSerializer::RelateOwn(const std::string& source, const SourcePlace& place,
                                  const RelatedPart<Interface>& part) {
    if (!part.IsChanged() && !IsOfAnother(place)) return;
    const CComPtr<Interface>& resource = part.Get(place);
    if (!resource) return;
    WriteResource(resource);
    Relate(source, part.Kind(), PartNameOf(resource));
}

void PackageSerializer::CopyRelationships(const SourcePlace& place, const std::string& name) {
    if (!IsStoredHere(place)) return;
    const PackageReader& reader = m_source->Reader();
    const PackagePart* const source = reader.Find(place.name); // null for the package
    for (const auto& relationship : reader.Relationships(place.name)) {
        const Relation relation = RelationOf(relationship.type);
        if (m_cut.contains({source, relation}) || relation == Relation::FixedRepresentation) continue;
        if (relationship.external) {
            m_writer.AddRelationship(name, relationship.type, relationship.target, true, relationship.id);
            continue;
        }
        const bool isRequired = relation == Relation::RequiredResource || relation == Relation::PrintTicket ||
                                relation == Relation::Thumbnail || relation == Relation::RestrictedFont;
        const PackagePart* part = isRequired ? &RequireTarget(reader, place.name, relationship)
                                             : reader.Find(relationship.targetPart);
        if (part == nullptr || m_dropped.contains(part)) continue;
        m_writer.AddRelationship(name, relationship.type, NameNow(*part), false, relationship.id);
    }
}

void PackageSerializer::RelatePackage() {
    const std::string root(packageRoot);
    // Under its id, where it has one.
    const DocumentSequenceObject& sequence = *m_package.Sequence();
    std::string id;
    if (m_source != nullptr)
        for (const auto& relationship : m_source->Reader().Relationships(root))
            if (RelationOf(relationship.type) == Relation::FixedRepresentation) id = relationship.id;
    m_writer.AddRelationship(root, RelationType(Relation::FixedRepresentation, m_flavour), sequence.Name(),
                             false, id);
    CopyRelationships({m_package.Source(), root}, root);
    RelateOwn(root, {m_package.Source(), root}, m_package.Thumbnail());
    if (const CorePropertiesObject* properties = m_package.CoreProperties();
        properties != nullptr && AreCorePropertiesChanged()) {
        WriteText(properties->Name(), corePropertiesContentType, properties->Markup());
        Relate(root, Relation::CoreProperties, properties->Name());
    }
    if (m_package.IsDiscardControlChanged() && !m_package.DiscardControl().empty())
        Relate(root, Relation::DiscardControl, m_package.DiscardControl());
}

void PackageSerializer::RelateSequence(const PlannedPart& planned) {
    const DocumentSequenceObject& sequence = *planned.sequence;
    CopyRelationships(sequence.Place(), planned.name);
    RelateOwn(planned.name, sequence.Place(), sequence.Ticket());
}

void PackageSerializer::RelateDocument(const PlannedPart& planned) {
    DocumentObject& document = *planned.document;
    CopyRelationships(document.Place(), planned.name);
    RelateOwn(planned.name, document.Place(), document.Ticket());
    RelateOwn(planned.name, document.Place(), document.Structure());
    RelateSignatureBlocks(planned.name, document);
}

void PackageSerializer::RelateSignatureBlocks(const std::string& source, DocumentObject& document) {
    if (IsOfAnother(document.Place())) {
        CComPtr<IXpsOMSignatureBlockResourceCollection> read;
        Require(document.GetSignatureBlockResources(&read), source, "its signature blocks cannot be read");
    }
    const SignatureBlockCollection* blocks = document.SignatureBlocks();
    if (blocks == nullptr || (!blocks->IsChanged() && !IsOfAnother(document.Place()))) return;
    for (const auto& block : blocks->Items()) {
        WriteResource(block);
        Relate(source, Relation::SignatureDefinitions, PartNameOf(block));
    }
}

void PackageSerializer::RelatePage(const PlannedPart& planned) {
    const PageReferenceObject& page = *planned.page;
    CopyRelationships(page.Place(), planned.name);
    RelateOwn(planned.name, page.Place(), page.Ticket());
    RelateOwn(planned.name, page.Place(), page.Fragments());
    RelateOwn(planned.name, page.Place(), page.Thumbnail());
}

} // namespace OvPlatform
