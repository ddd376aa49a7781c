#include "AttributeStore/AttributeRecordReader.h"

#include "AttributeStore/AttributeRecordForm.h"
#include "AttributeStore/PersistentAttributes.h"

#include <utf8coder.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

using namespace AttributeRecordForm;
using Bytes = std::span<const unsigned char>;
using Kind = AttributeBytesValue::Kind;

namespace {

std::optional<std::uint32_t> readWholeNumber(Bytes content) noexcept {
    PackedBytes::Reader reader(content);
    std::uint32_t number = 0;
    if (!reader.readNumber(number) || !reader.isAtEnd()) return {};
    return number;
}

std::optional<CXString> readText(Bytes content) {
    std::wstring text;
    text.reserve(content.size());
    const auto* next = reinterpret_cast<const char*>(content.data());
    const char* const end = next + content.size();
    while (next != end) {
        bool isValid = true;
        wchar_t units[2];
        const char32_t code = OvPlatform::Utf8::Decode(next, end, isValid);
        if (!isValid) return {};
        text.append(units, OvPlatform::Utf8::Encode(code, units));
    }
    return CXString(std::move(text));
}

std::optional<NaturalNumber> readNatural(Bytes content) {
    if (content.size() > maxNaturalBytes || (!content.empty() && content.back() == 0)) return {};
    return NaturalNumber::fromBytes(content.data(), content.size());
}

std::optional<Dimension> readDimension(Bytes content) {
    PackedBytes::Reader reader(content);
    unsigned char head = 0;
    std::uint32_t length = 0;
    Bytes bytes;
    if (!reader.readByte(head) || !reader.readNumber(length) || !reader.readBytes(length, bytes)) return {};
    const bool isNegative = (head & negativeFlag) != 0;
    const unsigned int unit = head & unitMask;
    auto numerator = readNatural(bytes);
    auto denominator = readNatural(reader.rest());
    if (!numerator || !denominator || denominator->isZero() || unit > Dimension::XpsUnit ||
        (isNegative && numerator->isZero()))
        return {};
    Dimension dimension;
    dimension.SetValue(Number::fromFraction(std::move(*numerator), std::move(*denominator), isNegative),
                       static_cast<Dimension::UnitsEnum>(unit));
    return dimension;
}

} // namespace

bool AttributeRecordReader::ReadInto(AttributeBytesRawList& list) {
    return ReadMembers(m_reader, true, 0, list);
}

bool AttributeRecordReader::Refuse(const char* damage, const PackedBytes::Reader& at) noexcept {
    m_damage = damage;
    m_damagePosition = static_cast<std::size_t>(at.rest().data() - m_records.data());
    return false;
}

bool AttributeRecordReader::ReadMembers(PackedBytes::Reader reader, bool areNumbered, unsigned int depth,
                                        AttributeBytesRawList& list) {
    for (std::uint64_t next = 0; !reader.isAtEnd(); ++next) {
        if (++m_count > PersistentAttributes::maxRecords) return Refuse("too many records", reader);
        std::uint32_t step = 0;
        const PackedBytes::Reader start = reader;
        if (areNumbered && !reader.readNumber(step)) return Refuse("a feature number is cut", start);
        next += step;
        if (next > UINT32_MAX) return Refuse("a feature number is too large", start);
        const AttributeBytesFeatureId id(static_cast<LONG>(static_cast<std::uint32_t>(next)));
        if (!ReadMember(reader, id, depth, list)) return false;
    }
    return true;
}

bool AttributeRecordReader::ReadMember(PackedBytes::Reader& reader, AttributeBytesFeatureId id,
                                       unsigned int depth, AttributeBytesRawList& list) {
    const PackedBytes::Reader start = reader;
    unsigned char head = 0;
    if (!reader.readByte(head)) return Refuse("a record is cut", start);
    std::uint32_t length = head >> lengthShift;
    if (length == longLength && (!reader.readNumber(length) || length < longLength))
        return Refuse("a length is cut or not in its shortest form", start);
    Bytes content;
    if (!reader.readBytes(length, content)) return Refuse("a record is longer than what holds it", start);

    const bool isSpecified = (head & specifiedFlag) != 0;
    const auto add = [&](AttributeBytesValue&& value) {
        list.AddAttributeBytes(OvlSharedPtr<AttributeBytes>::make(id, std::move(value)));
        return true;
    };
    const auto kind = static_cast<Kind>(head & kindMask);
    switch (kind) {
    case Kind::Option: {
        const auto number = readWholeNumber(content);
        if (!number) return Refuse("an option is no number", start);
        return add(AttributeBytesValue::FromOption(static_cast<LONG>(*number), isSpecified));
    }
    case Kind::Integer: {
        const auto number = readWholeNumber(content);
        if (!number) return Refuse("an integer is no number", start);
        return add(AttributeBytesValue::FromInteger(PackedBytes::toSigned(*number), isSpecified));
    }
    case Kind::String: {
        auto text = readText(content);
        if (!text) return Refuse("a string is not UTF-8", start);
        return add(AttributeBytesValue::FromString(std::move(*text), isSpecified));
    }
    case Kind::Dimension: {
        auto dimension = readDimension(content);
        if (!dimension) return Refuse("a dimension is not in its form", start);
        return add(AttributeBytesValue::FromDimension(std::move(*dimension), isSpecified));
    }
    case Kind::Collection:
    case Kind::CollectionSet: {
        if (depth == AttributeBytesValue::maxDepth) return Refuse("collections nest too deep", start);
        AttributeBytesRawList members;
        if (!ReadMembers(PackedBytes::Reader(content), kind == Kind::Collection, depth + 1, members))
            return false;
        return add(kind == Kind::Collection ? AttributeBytesValue::FromCollection(members, isSpecified)
                                            : AttributeBytesValue::FromCollectionSet(members, isSpecified));
    }
    }
    return add(AttributeBytesValue::FromUnknown(head & kindMask, ByteBuffer(content.data(), content.size()),
                                                isSpecified));
}
