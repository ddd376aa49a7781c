#pragma once

#include "AttributeStore/AttributeBytesRawList.h"
#include "BinaryForms/PackedBytes.h"

#include <cstddef>
#include <span>

/// Reads the records of a name space.
class AttributeRecordReader {
public:
    explicit AttributeRecordReader(std::span<const unsigned char> records) noexcept
        : m_records(records), m_reader(records) {}

    /// Appends the attributes to the list, to the end or up to damage; false for damage.
    [[nodiscard]] bool ReadInto(AttributeBytesRawList& list);

    /// What is wrong, and at which byte of the records; null if nothing is.
    [[nodiscard]] const char* Damage() const noexcept { return m_damage; }
    [[nodiscard]] std::size_t DamagePosition() const noexcept { return m_damagePosition; }

private:
    bool ReadMembers(PackedBytes::Reader reader, bool areNumbered, unsigned int depth,
                     AttributeBytesRawList& list);
    bool ReadMember(PackedBytes::Reader& reader, AttributeBytesFeatureId id, unsigned int depth,
                    AttributeBytesRawList& list);
    bool Refuse(const char* damage, const PackedBytes::Reader& at) noexcept;

    std::span<const unsigned char> m_records;
    PackedBytes::Reader m_reader;
    std::size_t m_count = 0;
    const char* m_damage = nullptr;
    std::size_t m_damagePosition = 0;
};
