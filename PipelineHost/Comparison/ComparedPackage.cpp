#include "Comparison/ComparedPackage.h"

#include "Common/HostError.h"
#include "Common/Text.h"
#include "Comparison/MarkupComparison.h"

#include <ObjectModel/FontObfuscation.h>
#include <ObjectModel/ReferredPart.h>
#include <ObjectModel/XpsVocabulary.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

using namespace OvPlatform;

namespace OvPipeline {

namespace {

constexpr std::uint64_t largestTicket = std::uint64_t{64} << 20; // as in a queue folder
constexpr std::size_t chunk = 64u << 10;

// A type of both vocabularies of XPS as one.
std::string TypeOf(const PackageRelationship& relationship) {
    const auto relation = RelationOf(relationship.type);
    return relation == OvPlatform::Relation::Other ? relationship.type
                                                   : RelationType(relation, XpsFlavour::Xps);
}

} // namespace

template <class Body>
auto ComparedPackage::Named(Body&& body) const {
    try {
        return body();
    } catch (const PackageError& error) {
        throw InputError(error.Result(), m_file, error.what());
    }
}

ComparedPackage::ComparedPackage(const std::filesystem::path& file) : m_file(file.string()) {
    Named([&] {
        m_package = SourcePackage::Open(file);
        for (SourceDocument& document : m_package->ReadDocuments()) {
            const Part* const ticket = TicketOf(*document.part);
            m_documents.push_back({std::move(document), ticket});
        }
        m_jobTicket = TicketOf(Sequence());
        m_coreProperties = m_package->Related(std::string(packageRoot), OvPlatform::Relation::CoreProperties,
                                              XPS_E_MULTIPLE_REFERENCES_TO_PART);
        FindResources();
    });
}

const PackagePart* ComparedPackage::TicketOf(const Part& part) const {
    return Named([&] {
        return m_package->Related(part.name, OvPlatform::Relation::PrintTicket,
                                  XPS_E_MULTIPLE_PRINTTICKETS_ON_PAGE);
    });
}

void ComparedPackage::FindResources() {
    std::unordered_set<const Part*> others{&Sequence(), m_jobTicket, m_coreProperties};
    for (const Document& document : m_documents) {
        others.insert({document.source.part, document.ticket});
        for (const SourcePage& page : document.source.pages)
            others.insert({page.part, TicketOf(*page.part)});
    }
    for (const Part& part : m_package->Reader().Parts())
        if (!others.contains(&part)) m_resources.push_back({&part, {}});
}

bool ComparedPackage::IsMarkup(const Part& part) {
    const std::string type = LowerAscii(part.contentType.substr(0, part.contentType.find_first_of("; ")));
    return type.ends_with("+xml") || type.ends_with("/xml");
}

std::string ComparedPackage::DigestOfBytes(const Part& part) const {
    return Named([&] {
        const auto key = IsObfuscatedFontType(part.contentType) ? ObfuscationKeyOf(part.name)
                                                                : std::optional<ObfuscationKey>();
        const auto stream = m_package->Reader().OpenPart(part.name);
        ContentDigest digest;
        std::vector<char> bytes(chunk);
        std::uint64_t position = 0;
        while (const std::size_t count = stream->Read(bytes.data(), bytes.size())) {
            if (key) Obfuscate(*key, position, bytes.data(), count);
            digest.Add(bytes.data(), count);
            position += count;
        }
        return digest.Result();
    });
}

std::unique_ptr<MarkupReader> ComparedPackage::OpenMarkup(const Part& part) const {
    return Named([&] {
        const std::shared_ptr<PackagePartStream> stream = m_package->Reader().OpenPart(part.name);
        const auto resolve = [this, &part](const std::string& reference) -> std::optional<std::string> {
            try {
                const Part* const referred = FindReferred(m_package->Reader(), part.name, reference);
                const auto known = m_identities.find(referred);
                if (known != m_identities.end()) return known->second;
            } catch (const PackageError&) { // it stands for itself
            }
            return std::nullopt;
        };
        return std::make_unique<MarkupReader>(
            part.name, [stream](void* buffer, std::size_t size) { return stream->Read(buffer, size); },
            resolve);
    });
}

std::string ComparedPackage::DigestOfMarkup(const Part& part) const {
    try {
        ContentDigest digest;
        AddMeaning(digest, *OpenMarkup(part));
        return digest.Result();
    } catch (const PackageError& error) {
        if (error.Result() != XPS_E_INVALID_MARKUP) throw InputError(error.Result(), m_file, error.what());
        return DigestOfBytes(part);
    }
}

std::string ComparedPackage::DigestOfPage(const SourcePage& page, const std::string* bytes) const {
    return Named([&] {
        ContentDigest digest;
        if (bytes != nullptr)
            digest.AddText(*bytes);
        else
            AddMeaning(digest, *OpenMarkup(*page.part));
        for (const Relation& relation : RelationsOf(page.part->name))
            digest.AddText(relation.meaning);
        digest.AddText(page.reference.width).AddText(page.reference.height);
        for (const std::string& target : page.reference.linkTargets)
            digest.AddText(target);
        return digest.Result();
    });
}

std::string ComparedPackage::ReadTicket(const Part& part) const {
    return Named([&] { return m_package->Reader().ReadPart(part.name, largestTicket); });
}

std::vector<ComparedPackage::Relation> ComparedPackage::RelationsOf(const std::string& source) const {
    using Kind = OvPlatform::Relation;
    return Named([&] {
        std::vector<Relation> relations;
        for (const PackageRelationship& relationship : m_package->Reader().Relationships(source)) {
            const Kind relation = RelationOf(relationship.type);
            if (relation == Kind::PrintTicket || relation == Kind::CoreProperties ||
                relation == Kind::FixedRepresentation)
                continue;
            const std::string type = TypeOf(relationship);
            const std::string kind = type.substr(type.rfind('/') + 1);
            if (relationship.external) {
                relations.push_back({type + "\1\1" + relationship.target, kind, relationship.target});
                continue;
            }
            const auto known = m_identities.find(m_package->Reader().Find(relationship.targetPart));
            const std::string identity =
                known == m_identities.end() ? FoldPartName(relationship.targetPart) : known->second;
            relations.push_back(
                {std::string(type).append("\1").append(identity), kind, relationship.targetPart});
        }
        // Twice says no more than once.
        std::ranges::stable_sort(relations, {}, &Relation::meaning);
        const auto isSame = [](const Relation& one, const Relation& other) {
            return one.meaning == other.meaning;
        };
        relations.erase(std::unique(relations.begin(), relations.end(), isSame), relations.end());
        return relations;
    });
}

} // namespace OvPipeline
