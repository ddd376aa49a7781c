#include "Package/PackageWriter.h"

#include "Package/ContentTypes.h"
#include "Package/PartCompressor.h"
#include "Package/PartName.h"
#include "Package/PartNames.h"
#include "Package/RelationshipList.h"
#include "System/FileError.h"
#include "System/OutputFile.h"

#include <msopc.h>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <map>
#include <mutex>
#include <set>
#include <tuple>
#include <unordered_set>
#include <utility>

namespace OvPlatform {

namespace {

constexpr std::size_t chunkSize = 64u << 10;
// Of a part whose relationships part, too, has a name that an archive can hold, which is without its slash.
constexpr std::size_t longestName = 0xFFFF - std::string_view("_rels/.rels").size() + 1;

std::string ZipName(std::string_view partName) { return std::string(partName.substr(1)); }

// Trouble with the output is trouble with the package.
template <class Step>
auto Writing(Step&& step) {
    try {
        return step();
    } catch (const FileError& error) {
        throw PackageError(error);
    }
}

// A part whose sink is open.
struct NewPart {
    std::string name;
    std::string_view contentType; // of the writer's pool
    std::shared_ptr<ArrivingPart> arriving;
};

// What sinks share with their writer, so that neither need outlive the other.
struct WriterCore {
    explicit WriterCore(std::unique_ptr<ByteOutput> to)
        : output(std::move(to)), archive(*output), compressor(archive, *output) {}

    void Close(const NewPart& part) {
        const std::lock_guard guard(lock);
        open.erase(part.name);
        names.Add(part.name);
        types.Add(part.name, part.contentType);
    }
    void Abandon(const NewPart& part) {
        const std::lock_guard guard(lock);
        open.erase(part.name);
    }

    const std::unique_ptr<ByteOutput> output;
    ZipWriter archive; // the compressor's until that has finished
    std::atomic<std::uint64_t> bytesWritten = 0;

    std::mutex lock; // for what follows
    PartNames names; // of the parts that are closed
    ContentTypes types;
    std::map<std::string_view, std::unique_ptr<NewPart>, PartNameTreeOrder> open;
    std::unordered_set<std::string> pool;
    bool finished = false;
    bool complete = false; // in the output, and not yet under its name

    PartCompressor compressor; // last, so that it ends before what it works on goes
};

class PartSink final : public PackagePartSink {
public:
    PartSink(std::shared_ptr<WriterCore> core, NewPart part)
        : m_core(std::move(core)), m_part(std::move(part)) {}

    ~PartSink() override {
        if (m_closed) return;
        try {
            Pass(PartCompressor::End::Abandoned);
        } catch (...) {
            // The compressor failed before, and tells it when the package is finished.
        }
        // Only now, so that nobody finishes the package ahead of that.
        m_core->Abandon(m_part);
    }

    void Write(const void* bytes, std::size_t size) override {
        if (m_closed) throw PackageError(E_UNEXPECTED, m_part.name, "the part is closed");
        const auto* next = static_cast<const std::uint8_t*>(bytes);
        if (!m_part.arriving->isPacked) m_core->bytesWritten += size;
        m_size += size;
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
        if (m_part.arriving->isPacked) {
            if (m_size != m_part.arriving->entry.storedSize)
                throw PackageError(E_UNEXPECTED, m_part.name, "it has another size than was said");
            m_core->bytesWritten += m_part.arriving->entry.size;
        }
        m_closed = true;
        Pass(PartCompressor::End::Complete);
        m_core->Close(m_part);
    }

private:
    void Pass(PartCompressor::End end) {
        Writing([&] { m_core->compressor.Put(m_part.arriving, std::exchange(m_chunk, {}), end); });
        if (end == PartCompressor::End::More) m_chunk.reserve(chunkSize);
    }

    std::shared_ptr<WriterCore> m_core;
    NewPart m_part;
    std::vector<std::uint8_t> m_chunk;
    std::uint64_t m_size = 0;
    bool m_closed = false;
};

bool SayTheSame(const RelationshipList& added, const std::vector<PackageRelationship>& others) {
    if (added.All().size() != others.size()) return false;
    std::set<std::tuple<std::string_view, std::string_view, bool>> left;
    for (const NewRelationship& each : added.All())
        left.emplace(each.type, each.target, each.external);
    return std::all_of(others.begin(), others.end(), [&](const PackageRelationship& each) {
        return left.erase({each.type, each.external ? each.target : each.targetPart, each.external}) != 0;
    });
}

class StreamingWriter final : public PackageWriter {
public:
    explicit StreamingWriter(std::unique_ptr<ByteOutput> output)
        : m_core(std::make_shared<WriterCore>(std::move(output))) {
        m_core->types.SetDefault("rels", relationshipsContentType);
    }

    std::unique_ptr<PackagePartSink> AddPart(std::string_view name, std::string_view contentType,
                                             PackageCompression compression) override {
        ArrivingPart part;
        part.compression = compression;
        part.entry.isDeflated = compression != PackageCompression::None;
        return Add(name, contentType, std::move(part));
    }

    std::unique_ptr<PackagePartSink> AddPackedPart(std::string_view name, std::string_view contentType,
                                                   const PackedForm& form) override {
        ArrivingPart part;
        part.isPacked = true;
        part.entry = {{}, form.isDeflated, form.checksum, form.size, form.storedSize};
        return Add(name, contentType, std::move(part));
    }

    bool HasPart(std::string_view name) const override {
        const std::lock_guard guard(m_core->lock);
        return IsThere(name);
    }

    std::string AddRelationship(std::string_view source, std::string_view type, std::string_view target,
                                bool external, std::string_view id) override;
    void CompleteRelationships(std::string_view source) override;
    bool HasJust(std::string_view source,
                 const std::vector<PackageRelationship>& relationships) const override;
    void CompleteRelationships(std::string_view source, const PackedForm& form,
                               std::vector<std::uint8_t> bytes) override;
    void Finish(const StopQuestion& isStopped) override;
    void Commit() override;

    std::uint64_t BytesWritten() const override { return m_core->bytesWritten; }
    std::uint64_t Size() const override { return m_core->archive.Size(); }

private:
    // Of a relationship that is written, and leads to what is not there yet.
    struct Promise {
        std::string relationshipsPart;
        std::string_view id;
    };

    void RequireUnfinished() const {
        if (m_core->finished)
            throw PackageError(E_UNEXPECTED, m_core->output->Name().string(), "the package is finished");
    }
    bool IsThere(std::string_view name) const {
        return m_core->names.Contains(name) || m_core->open.contains(name);
    }
    std::string_view Pooled(std::string_view text) { return *m_core->pool.emplace(text).first; }

    std::unique_ptr<PackagePartSink> Add(std::string_view name, std::string_view contentType,
                                         ArrivingPart arriving);
    void CheckFree(const std::string& name) const;
    bool IsCompleted(std::string_view source) const;
    std::uint32_t NumberOf(std::string_view source) const;
    RelationshipList TakeComplete(std::uint32_t source);
    void Put(const std::string& name, const std::string& text);
    void PutRelationships(std::string_view source, const RelationshipList& list);
    void CheckRelationships() const;
    [[noreturn]] void ThrowMissing(const std::string& part, std::string_view id,
                                   std::string_view target) const;
    void PutRest(const StopQuestion& isStopped);
    void StopIf(const StopQuestion& isStopped) const;

    std::shared_ptr<WriterCore> m_core;
    std::map<std::string, RelationshipList, PartNameTreeOrder>
        m_relationships;                            // by source, but for those that are written
    std::vector<bool> m_areWritten;                 // relationships, by number of the source's name
    std::map<std::string_view, Promise> m_promises; // by target; the first of each
};

std::unique_ptr<PackagePartSink> StreamingWriter::Add(std::string_view name, std::string_view contentType,
                                                      ArrivingPart arriving) {
    const std::string text(name);
    try {
        CheckPartName(name);
    } catch (const PartNameError& error) {
        throw PackageError(error.Result(), text, error.what());
    }
    if (IsRelationshipsPartName(name))
        throw PackageError(OPC_E_NONCONFORMING_URI, text, "the name is that of a relationships part");
    if (name.size() > longestName)
        throw PackageError(OPC_E_NONCONFORMING_URI, text, "the name is longer than a package can hold");
    if (contentType.empty())
        throw PackageError(OPC_E_INVALID_CONTENT_TYPE, text, "the part has no content type");

    const std::lock_guard guard(m_core->lock);
    RequireUnfinished();
    CheckFree(text);
    arriving.entry.name = ZipName(text);
    NewPart part{text, Pooled(contentType), std::make_shared<ArrivingPart>(std::move(arriving))};
    auto open = std::make_unique<NewPart>(part);
    const std::string_view key = open->name;
    m_core->open.emplace(key, std::move(open));
    return std::make_unique<PartSink>(m_core, std::move(part));
}

// No name extends another, so what extends a new one or what it extends would stand beside it.
void StreamingWriter::CheckFree(const std::string& name) const {
    const auto refuse = [&](PartNames::Conflict conflict, std::string_view other) {
        if (conflict == PartNames::Conflict::Same)
            throw PackageError(OPC_E_DUPLICATE_PART, name, "there is a part of that name");
        if (conflict == PartNames::Conflict::Extends)
            throw PackageError(OPC_E_DUPLICATE_PART, name,
                               "the name extends the name of the part '" + name.substr(0, other.size()) +
                                   "'");
        if (conflict == PartNames::Conflict::IsExtended)
            throw PackageError(OPC_E_DUPLICATE_PART, name, "the names of other parts extend that name");
    };
    std::string_view other;
    const PartNames::Conflict conflict = m_core->names.ConflictOf(name, other);
    refuse(conflict, other);
    const auto& open = m_core->open;
    const auto next = open.lower_bound(name);
    if (next != open.end() && ComparePartNames(next->first, name) == 0)
        refuse(PartNames::Conflict::Same, next->first);
    if (next != open.begin() && ExtendsPartName(name, std::prev(next)->first))
        refuse(PartNames::Conflict::Extends, std::prev(next)->first);
    if (next != open.end() && ExtendsPartName(next->first, name))
        refuse(PartNames::Conflict::IsExtended, next->first);
}

std::string StreamingWriter::AddRelationship(std::string_view source, std::string_view type,
                                             std::string_view target, bool external, std::string_view id) {
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
    if (IsCompleted(source))
        throw PackageError(E_UNEXPECTED, RelationshipsPartName(source), "its relationships are complete");
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

bool StreamingWriter::IsCompleted(std::string_view source) const {
    const std::uint32_t number = m_core->names.Find(source);
    return number < m_areWritten.size() && m_areWritten[number]; // none is beyond all
}

std::uint32_t StreamingWriter::NumberOf(std::string_view source) const {
    const std::uint32_t number = m_core->names.Find(source);
    if (number == PartNames::none)
        throw PackageError(OPC_E_NO_SUCH_PART, RelationshipsPartName(source),
                           "there is no part '" + std::string(source) + "' that has these relationships");
    return number;
}

// What was added, which may be nothing. Nothing more can be added behind it.
RelationshipList StreamingWriter::TakeComplete(std::uint32_t source) {
    if (source >= m_areWritten.size()) m_areWritten.resize(m_core->names.Count());
    m_areWritten[source] = true;
    const std::string_view name = m_core->names.At(source); // as the part is called
    const auto found = m_relationships.find(std::string(name));
    if (found == m_relationships.end()) return {};
    RelationshipList list = std::move(found->second);
    m_relationships.erase(found);
    for (const NewRelationship& relationship : list.All())
        if (!relationship.external && !m_core->names.Contains(relationship.target))
            m_promises.try_emplace(relationship.target,
                                   Promise{RelationshipsPartName(name), relationship.id});
    return list;
}

void StreamingWriter::CompleteRelationships(std::string_view source) {
    const std::lock_guard guard(m_core->lock);
    RequireUnfinished();
    const std::uint32_t number = NumberOf(source);
    const RelationshipList list = TakeComplete(number);
    if (!list.All().empty()) PutRelationships(m_core->names.At(number), list);
}

bool StreamingWriter::HasJust(std::string_view source,
                              const std::vector<PackageRelationship>& relationships) const {
    const std::lock_guard guard(m_core->lock);
    const auto found = m_relationships.find(std::string(source));
    return found != m_relationships.end() ? SayTheSame(found->second, relationships) : relationships.empty();
}

void StreamingWriter::CompleteRelationships(std::string_view source, const PackedForm& form,
                                            std::vector<std::uint8_t> bytes) {
    const std::lock_guard guard(m_core->lock);
    RequireUnfinished();
    const std::uint32_t number = NumberOf(source);
    const std::string name = RelationshipsPartName(m_core->names.At(number));
    if (bytes.size() != form.storedSize)
        throw PackageError(E_UNEXPECTED, name, "it has another size than was said");
    if (TakeComplete(number).All().empty()) return;
    const auto part = std::make_shared<ArrivingPart>();
    part->isPacked = true;
    part->entry = {ZipName(name), form.isDeflated, form.checksum, form.size, form.storedSize};
    Writing([&] { m_core->compressor.Put(part, std::move(bytes), PartCompressor::End::Complete); });
}

void StreamingWriter::Put(const std::string& name, const std::string& text) {
    const auto part = std::make_shared<ArrivingPart>();
    part->entry.name = ZipName(name);
    Writing([&] { m_core->compressor.Put(part, {text.begin(), text.end()}, PartCompressor::End::Complete); });
}

void StreamingWriter::PutRelationships(std::string_view source, const RelationshipList& list) {
    std::vector<PackageRelationship> relationships;
    relationships.reserve(list.All().size());
    for (const NewRelationship& from : list.All()) {
        PackageRelationship& to = relationships.emplace_back();
        to.id = from.id;
        to.type = from.type;
        to.target = from.external ? std::string(from.target) : RelativeReference(source, from.target);
        to.external = from.external;
    }
    Put(RelationshipsPartName(source), FormatRelationships(relationships));
}

void StreamingWriter::ThrowMissing(const std::string& part, std::string_view id,
                                   std::string_view target) const {
    throw PackageError(OPC_E_NO_SUCH_PART, part,
                       "the relationship '" + std::string(id) + "' leads to '" + std::string(target) +
                           "', which is not in the package");
}

void StreamingWriter::CheckRelationships() const {
    for (const auto& [target, promise] : m_promises)
        if (!m_core->names.Contains(target)) ThrowMissing(promise.relationshipsPart, promise.id, target);
    for (const auto& [source, list] : m_relationships) {
        if (source != packageRoot && !m_core->names.Contains(source))
            throw PackageError(OPC_E_NO_SUCH_PART, RelationshipsPartName(source),
                               "there is no part '" + source + "' that has these relationships");
        for (const NewRelationship& relationship : list.All())
            if (!relationship.external && !m_core->names.Contains(relationship.target))
                ThrowMissing(RelationshipsPartName(source), relationship.id, relationship.target);
    }
}

void StreamingWriter::StopIf(const StopQuestion& isStopped) const {
    if (isStopped && isStopped())
        throw PackageError(E_ABORT, m_core->output->Name().string(), "it is given up");
}

// The relationships that are left, in the order of their sources, and the content types.
void StreamingWriter::PutRest(const StopQuestion& isStopped) {
    const std::string root(packageRoot);
    if (const auto found = m_relationships.find(root); found != m_relationships.end())
        PutRelationships(root, found->second);
    for (std::uint32_t number = 0; number < m_core->names.Count() && !m_relationships.empty(); ++number) {
        StopIf(isStopped);
        const auto found = m_relationships.find(std::string(m_core->names.At(number)));
        if (found != m_relationships.end()) PutRelationships(m_core->names.At(number), found->second);
    }
    StopIf(isStopped);
    Put(std::string(contentTypesName), m_core->types.Format());
}

void StreamingWriter::Finish(const StopQuestion& isStopped) {
    const std::lock_guard guard(m_core->lock);
    RequireUnfinished();
    if (!m_core->open.empty())
        throw PackageError(E_UNEXPECTED, m_core->open.begin()->second->name, "the part was not closed");
    CheckRelationships();
    m_core->finished = true;
    PutRest(isStopped);
    Writing([&] {
        m_core->compressor.Finish();
        m_core->archive.Finish(isStopped);
        StopIf(isStopped);
        m_core->output->Finish();
    });
    m_core->complete = true;
}

void StreamingWriter::Commit() {
    const std::lock_guard guard(m_core->lock);
    if (!m_core->complete)
        throw PackageError(E_UNEXPECTED, m_core->output->Name().string(), "the package is not finished");
    m_core->complete = false;
    Writing([&] { m_core->output->Commit(); });
}

} // namespace

std::unique_ptr<PackageWriter> PackageWriter::Create(const std::filesystem::path& target) {
    return Create(Writing([&] { return std::make_unique<OutputFile>(target); }));
}

std::unique_ptr<PackageWriter> PackageWriter::Create(std::unique_ptr<ByteOutput> output) {
    return Writing([&] { return std::make_unique<StreamingWriter>(std::move(output)); });
}

void TakeOverPart(PackageWriter& writer, std::string_view name, std::string_view contentType,
                  PackedPartStream& part) {
    const auto sink = writer.AddPackedPart(name, contentType, part.Form());
    const std::unique_ptr<char[]> chunk = std::make_unique_for_overwrite<char[]>(chunkSize);
    while (const std::size_t count = part.Read(chunk.get(), chunkSize))
        sink->Write(chunk.get(), count);
    sink->Close();
}

} // namespace OvPlatform
