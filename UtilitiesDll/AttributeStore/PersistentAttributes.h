#pragma once

#include "AttributeStore/AttributeBytesNameSpaces.h"
#include "AttributeStore/AttributeBytesNameSpacesId.h"
#include "AttributeStore/AttributeBytesRawList.h"
#include "AttributeStore/DriverVersion.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/ByteBuffer.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>

/// A store of driver settings: attributes in name spaces, read from bytes and written back
/// (docs/formats/attribute-store.md). Name spaces that nobody asks for or replaces, and records of kinds that
/// are unknown here, are written back as they came.
///
/// Damage throws CPExceptionInvalidArgument, with what is wrong and where, in place of an answer: a job whose
/// settings cannot be read must not print as if it had none.
class OV_UTILITIES_API PersistentAttributes {
public:
    static constexpr std::size_t maxBytes = std::size_t{1024} * 1024;
    /// Of all levels of a name space together.
    static constexpr std::size_t maxRecords = 65'536;
    static constexpr std::size_t maxNameSpaces = 256;

    /// Empty bytes are a store without name spaces. All that this driver reads is checked here.
    ///
    /// With toleratesDamage, nothing throws: what stands before the damage is taken, GetDamage tells of it,
    /// and the store cannot be written. For an engineer who wants to see what is left. The version is
    /// accepted for callers that have one; the layout does not depend on it.
    PersistentAttributes(const ByteBuffer& store, bool toleratesDamage, DriverVersion* version);

    /// The settings of the driver in a ticket.
    [[nodiscard]] static AttributeBytesNameSpacesId GetDataModelDocPropNameSpaceId() noexcept;

    /// Replaces the list's content. False, with an empty list, if the store does not have the name space.
    /// Throws as said above if the name space is not one of records of this form.
    bool GetAttributeBytesListForNameSpace(AttributeBytesNameSpacesId id, AttributeBytesRawList& list);

    /// Puts these name spaces in place of those of the same number; the others stay. Of a feature that stands
    /// in a list more than once, the last attribute is taken. Throws CPExceptionInvalidArgument, and changes
    /// nothing, if a list goes beyond the limits of a store.
    void SetAttributeBytesNameSpaces(const AttributeBytesNameSpaces& nameSpaces);

    /// The store as bytes. Throws CPExceptionInvalidArgument if it was damaged, as what could not be read
    /// would be lost, or if it would be larger than maxBytes.
    [[nodiscard]] ByteBuffer GetPersistentAttributesState() const;

    /// What was wrong with the store, and where; empty if nothing was.
    [[nodiscard]] const std::string& GetDamage() const noexcept { return m_damage; }

private:
    struct NameSpace {
        ByteBuffer records;
        std::optional<AttributeBytesRawList> attributes; // read already, for the first who asks
    };

    void ReadNameSpaces(const ByteBuffer& store);
    AttributeBytesRawList ReadRecords(AttributeBytesNameSpacesId id, const NameSpace& nameSpace);
    void ReportDamage(const std::string& what);

    std::map<AttributeBytesNameSpacesId, NameSpace> m_nameSpaces;
    std::string m_damage;
    bool m_toleratesDamage;
};
