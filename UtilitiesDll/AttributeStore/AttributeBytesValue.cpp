#include "AttributeStore/AttributeBytesValue.h"

#include "AttributeStore/AttributeBytesRawList.h"
#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"

#include <algorithm>
#include <string>

namespace {

bool isNamed(unsigned int kind) noexcept {
    return kind >= static_cast<unsigned int>(AttributeBytesValue::Kind::Option) &&
           kind <= static_cast<unsigned int>(AttributeBytesValue::Kind::CollectionSet);
}

/// The depth of a collection of these members.
unsigned int depthOver(const AttributeBytesList& members) {
    unsigned int depth = 0;
    for (auto i = members.GetIterator(); members.IsValid(i);)
        depth = (std::max)(depth, members.GetNextAttributeBytes(i)->GetAttributeBytesValue().GetDepth());
    if (depth == AttributeBytesValue::maxDepth) {
        ThrowFailure<CPExceptionInvalidArgument>([] {
            return "Collections nest deeper than " + std::to_string(AttributeBytesValue::maxDepth) +
                   " levels";
        });
    }
    return depth + 1;
}

} // namespace

AttributeBytesValue AttributeBytesValue::FromOption(LONG value, bool isSpecified) {
    return {Kind::Option, isSpecified, value};
}

AttributeBytesValue AttributeBytesValue::FromInteger(int value, bool isSpecified) {
    return {Kind::Integer, isSpecified, static_cast<LONG>(value)};
}

AttributeBytesValue AttributeBytesValue::FromString(CXString value, bool isSpecified) {
    return {Kind::String, isSpecified, std::move(value)};
}

AttributeBytesValue AttributeBytesValue::FromDimension(::Dimension value, bool isSpecified) {
    return {Kind::Dimension, isSpecified, std::move(value)};
}

AttributeBytesValue AttributeBytesValue::FromCollection(const AttributeBytesList& members, bool isSpecified) {
    const OperationScope operation("AttributeBytesValue::FromCollection");
    const unsigned int depth = depthOver(members);
    auto copy = OvlSharedPtr<AttributeBytesRawList>::make();
    for (auto i = members.GetIterator(); members.IsValid(i);)
        copy->AddAttributeBytes(members.GetNextAttributeBytesSharedPtr(i));
    return {Kind::Collection, isSpecified, Members(std::move(copy)), depth};
}

AttributeBytesValue AttributeBytesValue::FromCollectionSet(const AttributeBytesList& members,
                                                           bool isSpecified) {
    const OperationScope operation("AttributeBytesValue::FromCollectionSet");
    const unsigned int depth = depthOver(members);
    auto copy = OvlSharedPtr<AttributeBytesRawList>::make();
    LONG position = 0;
    for (auto i = members.GetIterator(); members.IsValid(i); ++position) {
        auto member = members.GetNextAttributeBytesSharedPtr(i);
        const AttributeBytesFeatureId id(position);
        if (member->GetFeatureId() == id)
            copy->AddAttributeBytes(member);
        else
            copy->AddAttributeBytes(AttributeBytes(id, member->GetAttributeBytesValue()));
    }
    return {Kind::CollectionSet, isSpecified, Members(std::move(copy)), depth};
}

AttributeBytesValue AttributeBytesValue::FromUnknown(unsigned int kind, ByteBuffer bytes, bool isSpecified) {
    const OperationScope operation("AttributeBytesValue::FromUnknown");
    if (isNamed(kind) || kind > maxKind) {
        ThrowFailure<CPExceptionInvalidArgument>(
            [kind] { return "Not an unknown kind of attribute: " + std::to_string(kind); });
    }
    return {static_cast<Kind>(kind), isSpecified, std::move(bytes)};
}

const LONG* AttributeBytesValue::GetOption() const noexcept {
    return m_kind == Kind::Option ? std::get_if<LONG>(&m_content) : nullptr;
}

const LONG* AttributeBytesValue::GetInteger() const noexcept {
    return m_kind == Kind::Integer ? std::get_if<LONG>(&m_content) : nullptr;
}

const CXString* AttributeBytesValue::GetString() const noexcept { return std::get_if<CXString>(&m_content); }

const Dimension* AttributeBytesValue::GetDimension() const noexcept {
    return std::get_if<::Dimension>(&m_content);
}

const AttributeBytesRawList* AttributeBytesValue::GetCollection() const noexcept {
    const auto* const members = std::get_if<Members>(&m_content);
    return members == nullptr ? nullptr : members->get();
}

const ByteBuffer* AttributeBytesValue::GetUnknown() const noexcept {
    return std::get_if<ByteBuffer>(&m_content);
}
