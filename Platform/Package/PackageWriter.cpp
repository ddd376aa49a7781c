#include "Package/PackageWriter.h"

#include "Package/ContentTypes.h"
#include "Package/PackageAssembly.h"
#include "Package/PartCompressor.h"
#include "Package/PartName.h"
#include "Package/SpoolFile.h"
#include "System/FileError.h"
#include "System/OutputFile.h"

#include <msopc.h>

#include <algorithm>
#include <atomic>
#include <deque>
#include <iterator>
#include <map>
#include <mutex>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t chunkSize = 64u << 10;

enum class PartState { Open, Complete, Abandoned };

struct NewPart {
    NewPart(std::string_view partName, std::string_view type, PackageCompression compression)
        : name(partName), contentType(type), spooled(compression) {}

    const std::string name;
    const std::string_view contentType; // of the writer's pool
    SpooledPart spooled;
    PartState state = PartState::Open;
};

// A relationship with its texts in the writer's pool: the pages of a job say much the same.
struct NewRelationship {
    std::string_view id;
    std::string_view type;
    std::string_view target;
    bool external = false;
};

// The relationships of one source, in their order; texts of the writer's pool, of which equal ones are one.
class RelationshipList {
public:
    // One that says the same, whatever its id; null if there is none.
    const NewRelationship* FindSame(const NewRelationship& wanted) const {
        if (m_index) {
            const auto found = m_index->places.find(KeyOf(wanted));
            return found == m_index->places.end() ? nullptr : &m_list[found->second];
        }
        const auto found = std::find_if(m_list.begin(), m_list.end(), [&](const NewRelationship& other) {
            return KeyOf(other) == KeyOf(wanted);
        });
        return found == m_list.end() ? nullptr : &*found;
    }

    bool HasId(std::string_view id) const {
        if (m_index) return m_index->ids.contains(id);
        return std::any_of(m_list.begin(), m_list.end(),
                           [&](const NewRelationship& other) { return other.id == id; });
    }

    std::string FreeId() {
        for (m_nextNumber = (std::max)(m_nextNumber, m_list.size() + 1);; ++m_nextNumber)
            if (std::string id = "R" + std::to_string(m_nextNumber); !HasId(id)) return id;
    }

    void Add(const NewRelationship& relationship) {
        m_list.push_back(relationship);
        if (m_index) {
            m_index->Add(relationship, m_list.size() - 1);
        } else if (m_list.size() == few) {
            m_index = std::make_unique<Index>();
            for (std::size_t place = 0; place < m_list.size(); ++place)
                m_index->Add(m_list[place], place);
        }
    }

    const std::vector<NewRelationship>& All() const { return m_list; }

private:
    // Most parts have a handful, which is looked through as fast as it could be looked up.
    static constexpr std::size_t few = 32;

    using Key = std::tuple<const char*, const char*, bool>;
    static Key KeyOf(const NewRelationship& relationship) {
        return {relationship.type.data(), relationship.target.data(), relationship.external};
    }

    struct Index {
        std::unordered_set<std::string_view> ids;
        std::map<Key, std::size_t> places;

        void Add(const NewRelationship& relationship, std::size_t place) {
            ids.insert(relationship.id);
            places.try_emplace(KeyOf(relationship), place);
        }
    };

    std::vector<NewRelationship> m_list;
    std::unique_ptr<Index> m_index; // null where there are few
    std::size_t m_nextNumber = 0;   // no id of a lower one is free
};

// What describes the parts, spooled; the order of the items is that of the parts.
struct Structure {
    std::unique_ptr<SpooledPart> contentTypes;
    std::unique_ptr<SpooledPart> packageRelationships; // null where there are none
    std::deque<SpooledPart> relationships;             // of the parts that have some, in their order
};

// Trouble with the output file is trouble with the package.
template <class Step>
auto Writing(Step&& step) {
    try {
        return step();
    } catch (const FileError& error) {
        throw PackageError(error);
    }
}

// What sinks share with their writer, so that neither need outlive the other.
struct WriterCore {
    explicit WriterCore(const std::filesystem::path& file)
        : target(file), output(file), spool(output.Folder(), file), compressor(spool) {}

    void SetState(NewPart& part, PartState state) {
        const std::lock_guard guard(lock);
        part.state = state;
        if (state == PartState::Abandoned) byName.erase(part.name);
    }

    const std::filesystem::path target;
    OutputFile output;
    SpoolFile spool;
    std::atomic<std::uint64_t> bytesWritten = 0;

    std::mutex lock;                                                // for what follows
    std::deque<NewPart> parts;                                      // in the order of adding; addresses stand
    std::map<std::string_view, NewPart*, PartNameTreeOrder> byName; // without the abandoned ones
    Structure structure;
    bool finished = false;
    bool complete = false; // in the output file, and not yet under its name

    PartCompressor compressor; // last, so that it ends before what it works on goes
};

class SpoolingSink final : public PackagePartSink {
public:
    SpoolingSink(std::shared_ptr<WriterCore> core, NewPart& part) : m_core(std::move(core)), m_part(part) {}

    ~SpoolingSink() override {
        if (m_closed) return;
        try {
            m_core->SetState(m_part, PartState::Abandoned);
            Pass(PartCompressor::End::Abandoned);
        } catch (...) {
            // The compressor failed before, and tells it when the package is finished.
        }
    }

    void Write(const void* bytes, std::size_t size) override {
        if (m_closed) throw PackageError(E_UNEXPECTED, m_part.name, "the part is closed");
        const auto* next = static_cast<const std::uint8_t*>(bytes);
        m_core->bytesWritten += size;
        while (size != 0) {
            const std::size_t step = (std::min)(size, chunkSize - m_chunk.size());
            m_chunk.insert(m_chunk.end(), next, next + step);
            next += step;
            size -= step;
            if (m_chunk.size() == chunkSize) Pass(PartCompressor::End::More);
        }
    }

    void Close() override {
        if (m_closed) return;
        m_closed = true;
        Pass(PartCompressor::End::Complete);
        m_core->SetState(m_part, PartState::Complete);
    }

private:
    void Pass(PartCompressor::End end) {
        m_core->compressor.Put(m_part.spooled, std::exchange(m_chunk, {}), end);
        if (end == PartCompressor::End::More) m_chunk.reserve(chunkSize);
    }

    std::shared_ptr<WriterCore> m_core;
    NewPart& m_part;
    std::vector<std::uint8_t> m_chunk;
    bool m_closed = false;
};

class SpoolingWriter final : public PackageWriter {
public:
    explicit SpoolingWriter(const std::filesystem::path& target)
        : m_core(std::make_shared<WriterCore>(target)) {}

    std::unique_ptr<PackagePartSink> AddPart(std::string_view name, std::string_view contentType,
                                             PackageCompression compression) override {
        const std::string text(name);
        try {
            CheckPartName(name);
        } catch (const PartNameError& error) {
            throw PackageError(error.Result(), text, error.what());
        }
        if (IsRelationshipsPartName(name))
            throw PackageError(OPC_E_NONCONFORMING_URI, text, "the name is that of a relationships part");
        if (contentType.empty())
            throw PackageError(OPC_E_INVALID_CONTENT_TYPE, text, "the part has no content type");

        const std::lock_guard guard(m_core->lock);
        RequireUnfinished();
        CheckFree(text);
        NewPart& part = m_core->parts.emplace_back(name, Pooled(contentType), compression);
        m_core->byName[part.name] = &part;
        return std::make_unique<SpoolingSink>(m_core, part);
    }

    bool HasPart(std::string_view name) const override {
        const std::lock_guard guard(m_core->lock);
        return Find(name) != nullptr;
    }

    std::string AddRelationship(std::string_view source, std::string_view type, std::string_view target,
                                bool external, std::string_view id) override {
        if (!external) {
            try {
                CheckPartName(target);
            } catch (const PartNameError& error) {
                throw PackageError(OPC_E_INVALID_RELATIONSHIP_TARGET, RelationshipsPartName(source),
                                   "the target '" + std::string(target) + "': " + error.what());
            }
        }
        const std::lock_guard guard(m_core->lock);
        RequireUnfinished();
        RelationshipList& list = m_relationships.try_emplace(std::string(source)).first->second;
        NewRelationship relationship{{}, Pooled(type), Pooled(target), external};
        if (id.empty()) {
            if (const NewRelationship* same = list.FindSame(relationship)) return std::string(same->id);
        } else if (list.HasId(id)) {
            throw PackageError(OPC_E_DUPLICATE_RELATIONSHIP, RelationshipsPartName(source),
                               "the relationship '" + std::string(id) + "' stands twice");
        }
        relationship.id = Pooled(id.empty() ? list.FreeId() : std::string(id));
        list.Add(relationship);
        return std::string(relationship.id);
    }

    void Finish(const StopQuestion& isStopped) override;
    void Commit() override;

    std::uint64_t BytesWritten() const override { return m_core->bytesWritten; }

private:
    void RequireUnfinished() const {
        if (m_core->finished)
            throw PackageError(E_UNEXPECTED, m_core->target.string(), "the package is finished");
    }

    const NewPart* Find(std::string_view name) const {
        const auto found = m_core->byName.find(name);
        return found == m_core->byName.end() ? nullptr : found->second;
    }

    // No name extends another, so what extends a new one or what it extends would stand beside it.
    void CheckFree(const std::string& name) {
        const auto next = m_core->byName.lower_bound(name);
        if (next != m_core->byName.end() && ComparePartNames(next->first, name) == 0)
            throw PackageError(OPC_E_DUPLICATE_PART, name, "there is a part of that name");
        if (next != m_core->byName.begin()) {
            const std::string_view before = std::prev(next)->first;
            if (ExtendsPartName(name, before))
                throw PackageError(OPC_E_DUPLICATE_PART, name,
                                   "the name extends the name of the part '" + name.substr(0, before.size()) +
                                       "'");
        }
        if (next != m_core->byName.end() && ExtendsPartName(next->first, name))
            throw PackageError(OPC_E_DUPLICATE_PART, name, "the names of other parts extend that name");
    }

    std::string_view Pooled(std::string_view text) { return *m_pool.emplace(text).first; }

    const RelationshipList* RelationshipsOf(const std::string& source) const {
        const auto found = m_relationships.find(source);
        return found == m_relationships.end() ? nullptr : &found->second;
    }

    void Spool(SpooledPart& part, const std::string& text);
    void SpoolRelationships(SpooledPart& part, const std::string& source, const RelationshipList& list);
    void CheckRelationships() const;
    void SpoolStructure(const StopQuestion& isStopped);
    void Assemble(const StopQuestion& isStopped);
    void StopIf(const StopQuestion& isStopped) const;

    std::shared_ptr<WriterCore> m_core;
    std::unordered_set<std::string> m_pool;
    std::unordered_map<std::string, RelationshipList, PartNameHash, PartNameEqual>
        m_relationships; // by source
};

std::string ZipName(std::string_view partName) { return std::string(partName.substr(1)); }

void SpoolingWriter::Spool(SpooledPart& part, const std::string& text) {
    m_core->compressor.Put(part, {text.begin(), text.end()}, PartCompressor::End::Complete);
}

void SpoolingWriter::SpoolRelationships(SpooledPart& part, const std::string& source,
                                        const RelationshipList& list) {
    std::vector<PackageRelationship> relationships;
    relationships.reserve(list.All().size());
    for (const NewRelationship& from : list.All()) {
        PackageRelationship& to = relationships.emplace_back();
        to.id = from.id;
        to.type = from.type;
        to.target = from.external ? std::string(from.target) : RelativeReference(source, from.target);
        to.external = from.external;
    }
    Spool(part, FormatRelationships(relationships));
}

void SpoolingWriter::CheckRelationships() const {
    for (const auto& [source, list] : m_relationships) {
        if (source != packageRoot && !Find(source))
            throw PackageError(OPC_E_NO_SUCH_PART, RelationshipsPartName(source),
                               "there is no part '" + source + "' that has these relationships");
        for (const NewRelationship& relationship : list.All())
            if (!relationship.external && !Find(relationship.target))
                throw PackageError(OPC_E_NO_SUCH_PART, RelationshipsPartName(source),
                                   "the relationship '" + std::string(relationship.id) + "' leads to '" +
                                       std::string(relationship.target) + "', which is not in the package");
    }
}

void SpoolingWriter::StopIf(const StopQuestion& isStopped) const {
    if (isStopped && isStopped()) throw PackageError(E_ABORT, m_core->target.string(), "it is given up");
}

void SpoolingWriter::SpoolStructure(const StopQuestion& isStopped) {
    constexpr PackageCompression packing = PackageCompression::Normal;
    Structure& structure = m_core->structure;
    ContentTypes types;
    types.SetDefault("rels", relationshipsContentType);
    const std::string root(packageRoot);
    if (const RelationshipList* list = RelationshipsOf(root)) {
        structure.packageRelationships = std::make_unique<SpooledPart>(packing);
        SpoolRelationships(*structure.packageRelationships, root, *list);
    }
    for (const NewPart& part : m_core->parts) {
        if (part.state != PartState::Complete) continue;
        StopIf(isStopped);
        types.Add(part.name, part.contentType);
        if (const RelationshipList* list = RelationshipsOf(part.name))
            SpoolRelationships(structure.relationships.emplace_back(packing), part.name, *list);
    }
    structure.contentTypes = std::make_unique<SpooledPart>(packing);
    Spool(*structure.contentTypes, types.Format());
}

// The content types first, and each relationships part behind its source.
void SpoolingWriter::Assemble(const StopQuestion& isStopped) {
    const Structure& structure = m_core->structure;
    PackageAssembly assembly(m_core->output, m_core->target, m_core->spool);
    assembly.Add(ZipName(contentTypesName), *structure.contentTypes);
    if (structure.packageRelationships)
        assembly.Add(ZipName(RelationshipsPartName(packageRoot)), *structure.packageRelationships);
    auto relationships = structure.relationships.begin();
    for (const NewPart& part : m_core->parts) {
        if (part.state != PartState::Complete) continue;
        StopIf(isStopped);
        assembly.Add(ZipName(part.name), part.spooled);
        if (RelationshipsOf(part.name))
            assembly.Add(ZipName(RelationshipsPartName(part.name)), *relationships++);
    }
    assembly.Finish(isStopped);
}

void SpoolingWriter::Finish(const StopQuestion& isStopped) {
    const std::lock_guard guard(m_core->lock);
    RequireUnfinished();
    for (const NewPart& part : m_core->parts)
        if (part.state == PartState::Open)
            throw PackageError(E_UNEXPECTED, part.name, "the part was not closed");
    CheckRelationships();
    m_core->finished = true;
    SpoolStructure(isStopped);
    m_core->compressor.Finish();
    Writing([&] { Assemble(isStopped); });
    m_core->complete = true;
}

void SpoolingWriter::Commit() {
    const std::lock_guard guard(m_core->lock);
    if (!m_core->complete)
        throw PackageError(E_UNEXPECTED, m_core->target.string(), "the package is not finished");
    m_core->complete = false;
    Writing([&] { m_core->output.Commit(); });
}

} // namespace

std::unique_ptr<PackageWriter> PackageWriter::Create(const std::filesystem::path& target) {
    return Writing([&] { return std::make_unique<SpoolingWriter>(target); });
}

} // namespace OvPlatform
