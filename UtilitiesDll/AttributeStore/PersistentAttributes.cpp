#include "AttributeStore/PersistentAttributes.h"

#include "AttributeStore/AttributeBytesIndexedList.h"
#include "AttributeStore/AttributeRecordReader.h"
#include "AttributeStore/AttributeRecordWriter.h"
#include "BinaryForms/PackedBytes.h"
#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

constexpr char mark[] = "OA";
constexpr AttributeBytesNameSpacesId dataModelDocProp(1);

} // namespace

PersistentAttributes::PersistentAttributes(const ByteBuffer& store, bool toleratesDamage, DriverVersion*)
    : m_toleratesDamage(toleratesDamage) {
    const OperationScope operation("PersistentAttributes::PersistentAttributes");
    if (!store.empty()) ReadNameSpaces(store);
    const auto ours = m_nameSpaces.find(dataModelDocProp);
    if (ours != m_nameSpaces.end()) ours->second.attributes = ReadRecords(ours->first, ours->second);
}

AttributeBytesNameSpacesId PersistentAttributes::GetDataModelDocPropNameSpaceId() noexcept {
    return dataModelDocProp;
}

bool PersistentAttributes::GetAttributeBytesListForNameSpace(AttributeBytesNameSpacesId id,
                                                             AttributeBytesRawList& list) {
    const OperationScope operation("PersistentAttributes::GetAttributeBytesListForNameSpace");
    list.DeleteAllAttributeBytes();
    const auto nameSpace = m_nameSpaces.find(id);
    if (nameSpace == m_nameSpaces.end()) return false;
    auto& attributes = nameSpace->second.attributes;
    list = attributes ? std::move(*attributes) : ReadRecords(id, nameSpace->second);
    attributes.reset();
    return true;
}

void PersistentAttributes::SetAttributeBytesNameSpaces(const AttributeBytesNameSpaces& nameSpaces) {
    const OperationScope operation("PersistentAttributes::SetAttributeBytesNameSpaces");
    auto changed = m_nameSpaces;
    for (const auto& [id, attributes] : nameSpaces.GetNameSpaces())
        changed.insert_or_assign(id, NameSpace{AttributeRecordWriter::Write(attributes), {}});
    if (changed.size() > maxNameSpaces) {
        ThrowFailure<CPExceptionInvalidArgument>([] { return "A store does not take so many name spaces"; });
    }
    m_nameSpaces = std::move(changed);
}

ByteBuffer PersistentAttributes::GetPersistentAttributesState() const {
    const OperationScope operation("PersistentAttributes::GetPersistentAttributesState");
    if (!m_damage.empty()) {
        ThrowFailure<CPExceptionInvalidArgument>(
            [this] { return "A damaged store cannot be written without loss. Its damage: " + m_damage; });
    }
    ByteBuffer store = PackedBytes::beginEnvelope(mark);
    std::uint32_t next = 0;
    for (const auto& [id, nameSpace] : m_nameSpaces) {
        const auto number = static_cast<std::uint32_t>(id.GetNameSpaceId());
        PackedBytes::appendNumber(store, number - next);
        PackedBytes::appendNumber(store, static_cast<std::uint32_t>(nameSpace.records.size()));
        store.insert(store.end(), nameSpace.records.begin(), nameSpace.records.end());
        next = number + 1;
    }
    PackedBytes::endEnvelope(store);
    if (store.size() > maxBytes) {
        ThrowFailure<CPExceptionInvalidArgument>([] { return "The attributes are too large for a store"; });
    }
    return store;
}

void PersistentAttributes::ReadNameSpaces(const ByteBuffer& store) {
    if (store.size() > maxBytes) return ReportDamage("it is larger than a store may be");
    const char* damage = nullptr;
    PackedBytes::Reader reader(PackedBytes::openEnvelope(store, mark, damage));
    if (damage != nullptr) ReportDamage(damage);
    for (std::uint64_t next = 0; !reader.isAtEnd(); ++next) {
        if (m_nameSpaces.size() == maxNameSpaces) return ReportDamage("too many name spaces");
        std::uint32_t step = 0;
        std::uint32_t length = 0;
        if (!reader.readNumber(step) || !reader.readNumber(length))
            return ReportDamage("the head of a name space is cut");
        next += step;
        if (next > UINT32_MAX) return ReportDamage("the number of a name space is too large");
        const AttributeBytesNameSpacesId id(static_cast<LONG>(static_cast<std::uint32_t>(next)));
        if (length > reader.rest().size())
            ReportDamage("name space " + std::to_string(id.GetNameSpaceId()) +
                         " is longer than what holds it");
        std::span<const unsigned char> records;
        if (!reader.readBytes((std::min)(std::size_t{length}, reader.rest().size()), records)) return;
        m_nameSpaces.try_emplace(id, NameSpace{ByteBuffer(records.data(), records.size()), {}});
    }
}

AttributeBytesRawList PersistentAttributes::ReadRecords(AttributeBytesNameSpacesId id,
                                                        const NameSpace& nameSpace) {
    AttributeBytesRawList attributes;
    AttributeRecordReader reader(nameSpace.records);
    if (!reader.ReadInto(attributes))
        ReportDamage(std::string(reader.Damage()) + ", at byte " + std::to_string(reader.DamagePosition()) +
                     " of name space " + std::to_string(id.GetNameSpaceId()));
    return attributes;
}

void PersistentAttributes::ReportDamage(const std::string& what) {
    if (!m_toleratesDamage) {
        ThrowFailure<CPExceptionInvalidArgument>(
            [&what] { return "The store of driver settings cannot be read: " + what; });
    }
    if (m_damage.empty()) m_damage = what;
}
