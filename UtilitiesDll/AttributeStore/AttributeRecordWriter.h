#pragma once

#include "AttributeStore/AttributeBytesRawList.h"
#include "LowLevelFacilities/WideStrings/ByteBuffer.h"

#include <cstddef>

/// Writes the records of a name space. Throws CPExceptionInvalidArgument beyond the limits of a store.
class AttributeRecordWriter {
public:
    [[nodiscard]] static ByteBuffer Write(const AttributeBytesRawList& attributes);

private:
    void AppendMembers(ByteBuffer& bytes, const AttributeBytesRawList& members, bool areNumbered);
    void AppendMember(ByteBuffer& bytes, const AttributeBytesValue& value);
    [[nodiscard]] ByteBuffer ContentOf(const AttributeBytesValue& value);

    std::size_t m_count = 0;
};
