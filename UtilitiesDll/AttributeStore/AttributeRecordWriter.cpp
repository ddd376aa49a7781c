#include "AttributeStore/AttributeRecordWriter.h"

#include "AttributeStore/AttributeBytesIndexedList.h"
#include "AttributeStore/AttributeRecordForm.h"
#include "AttributeStore/PersistentAttributes.h"
#include "BinaryForms/PackedBytes.h"
#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"

#include <cstdint>

using namespace AttributeRecordForm;
using Kind = AttributeBytesValue::Kind;

namespace {

[[noreturn]] void refuse(const char* reason) {
    ThrowFailure<CPExceptionInvalidArgument>([reason] { return std::string(reason); });
}

void appendDimension(ByteBuffer& bytes, const Dimension& dimension) {
    const Number& value = dimension.GetValue();
    const auto numerator = value.GetNumerator().getBytes();
    const auto denominator = value.GetDenominator().getBytes();
    const auto unit = static_cast<unsigned int>(dimension.GetUnits());
    if (unit > Dimension::XpsUnit) refuse("A dimension without a unit cannot be stored");
    if (numerator.size() > maxNaturalBytes || denominator.size() > maxNaturalBytes)
        refuse("A dimension has more digits than a store takes");
    bytes.push_back(static_cast<unsigned char>(unit | (value.IsNegative() ? negativeFlag : 0)));
    PackedBytes::appendNumber(bytes, static_cast<std::uint32_t>(numerator.size()));
    bytes.insert(bytes.end(), numerator.begin(), numerator.end());
    bytes.insert(bytes.end(), denominator.begin(), denominator.end());
}

} // namespace

ByteBuffer AttributeRecordWriter::Write(const AttributeBytesRawList& attributes) {
    const OperationScope operation("AttributeRecordWriter::Write");
    ByteBuffer bytes;
    AttributeRecordWriter().AppendMembers(bytes, attributes, true);
    return bytes;
}

void AttributeRecordWriter::AppendMembers(ByteBuffer& bytes, const AttributeBytesRawList& members,
                                          bool areNumbered) {
    AttributeBytesIndexedList ordered;
    ordered.ImportFromRawList(members);
    std::uint32_t next = 0;
    for (auto i = ordered.GetIterator(); ordered.IsValid(i);) {
        if (++m_count > PersistentAttributes::maxRecords) refuse("A store does not take so many attributes");
        const AttributeBytes& member = *ordered.GetNextAttributeBytes(i);
        const auto id = static_cast<std::uint32_t>(member.GetFeatureId().GetFeatureId());
        if (areNumbered) PackedBytes::appendNumber(bytes, id - next);
        next = id + 1;
        AppendMember(bytes, member.GetAttributeBytesValue());
        if (bytes.size() > PersistentAttributes::maxBytes) refuse("The attributes are too large for a store");
    }
}

void AttributeRecordWriter::AppendMember(ByteBuffer& bytes, const AttributeBytesValue& value) {
    const ByteBuffer content = ContentOf(value);
    const auto length = static_cast<unsigned int>(content.size());
    bytes.push_back(static_cast<unsigned char>(static_cast<unsigned int>(value.GetKind()) |
                                               (value.IsSpecified() ? specifiedFlag : 0) |
                                               (length < longLength ? length : longLength) << lengthShift));
    if (length >= longLength) PackedBytes::appendNumber(bytes, length);
    bytes.insert(bytes.end(), content.begin(), content.end());
}

ByteBuffer AttributeRecordWriter::ContentOf(const AttributeBytesValue& value) {
    ByteBuffer content;
    if (const LONG* const option = value.GetOption())
        PackedBytes::appendNumber(content, static_cast<std::uint32_t>(*option));
    else if (const LONG* const integer = value.GetInteger())
        PackedBytes::appendNumber(content, PackedBytes::fromSigned(static_cast<std::int32_t>(*integer)));
    else if (const CXString* const text = value.GetString())
        content.appendAsUtf8(*text);
    else if (const Dimension* const dimension = value.GetDimension())
        appendDimension(content, *dimension);
    else if (const AttributeBytesRawList* const members = value.GetCollection())
        AppendMembers(content, *members, value.GetKind() == Kind::Collection);
    else
        content = *value.GetUnknown();
    return content;
}
