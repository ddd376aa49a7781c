#pragma once

#include "AttributeStore/AttributeBytes.h"
#include "AttributeStore/IAttributeBytesDebugDisplayHelper.h"
#include "LowLevelFacilities/Ownership/OvlSharedPtr.h"
#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/UtilitiesExport.h"

#include <cstddef>
#include <vector>

/// Attributes in an order. Copies share the attributes. One thread uses a list at a time.
class OV_UTILITIES_API AttributeBytesList {
public:
    using SharedPtr = OvlSharedPtr<const AttributeBytes>;

    /// A place in a list. A change of the list makes it invalid.
    class Iterator {
    public:
        Iterator() noexcept = default;

    private:
        friend class AttributeBytesList;
        friend class AttributeBytesIndexedList;
        std::size_t m_position = 0;
    };

    virtual ~AttributeBytesList();

    [[nodiscard]] bool IsEmpty() const noexcept { return m_attributes.empty(); }
    [[nodiscard]] bool LengthIsExactlyOne() const noexcept { return m_attributes.size() == 1; }
    [[nodiscard]] unsigned int GetNumberOfAttributeBytes() const noexcept {
        return static_cast<unsigned int>(m_attributes.size());
    }

    /// A null pointer throws CPExceptionInvalidArgument.
    virtual void AddAttributeBytes(SharedPtr attribute);
    void AddAttributeBytes(const AttributeBytes& attribute);
    void DeleteAllAttributeBytes() noexcept { m_attributes.clear(); }

    /// From the first attribute on: while (list.IsValid(i)) use(list.GetNextAttributeBytes(i));
    [[nodiscard]] Iterator GetIterator() const noexcept { return {}; }
    [[nodiscard]] bool IsValid(const Iterator& iterator) const noexcept {
        return iterator.m_position < m_attributes.size();
    }
    /// The attribute at the iterator, which moves behind it. Null at the end.
    const AttributeBytes* GetNextAttributeBytes(Iterator& iterator) const noexcept;
    SharedPtr GetNextAttributeBytesSharedPtr(Iterator& iterator) const noexcept;

    /// A line for each attribute, members of collections indented below theirs. It shows all texts, private
    /// ones too: for an engineer's eyes.
    [[nodiscard]] CPString AttributeBytesDump(const IAttributeBytesDebugDisplayHelper& helper) const;

protected:
    AttributeBytesList() noexcept = default;
    AttributeBytesList(const AttributeBytesList&) = default;
    AttributeBytesList(AttributeBytesList&&) noexcept = default;
    AttributeBytesList& operator=(const AttributeBytesList&) = default;
    AttributeBytesList& operator=(AttributeBytesList&&) noexcept = default;

    /// Of a list of another class, too.
    static const std::vector<SharedPtr>& AttributesOf(const AttributeBytesList& list) noexcept {
        return list.m_attributes;
    }

    std::vector<SharedPtr> m_attributes; // no null among them
};
