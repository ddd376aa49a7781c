#include "AttributeStore/AttributeBytesList.h"

#include "AttributeStore/AttributeBytesRawList.h"
#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"
#include "LowLevelFacilities/Strings/CPStringUtils.h"

#include <string>
#include <utility>

namespace {

void appendNamed(std::string& text, LONG number, const CPString& name) {
    text += std::to_string(number);
    if (!name.view().empty()) ((text += " (") += name.view()) += ')';
}

void appendValue(std::string& text, const AttributeBytes& attribute,
                 const IAttributeBytesDebugDisplayHelper& helper) {
    const AttributeBytesValue& value = attribute.GetAttributeBytesValue();
    if (const LONG* const option = value.GetOption()) {
        text += "option ";
        appendNamed(text, *option, helper.GetOptionName(attribute.GetFeatureId(), *option));
    } else if (const LONG* const integer = value.GetInteger()) {
        text += "integer " + std::to_string(*integer);
    } else if (const CXString* const string = value.GetString()) {
        text += "string \"" + CPStringUtils::narrowToStdString(*string) + '"';
    } else if (const Dimension* const dimension = value.GetDimension()) {
        text += "dimension ";
        text += dimension->GetStringValue(dimension->GetUnits(), 3, Number::toNearest, true, true).view();
    } else if (const AttributeBytesRawList* const members = value.GetCollection()) {
        text += value.GetKind() == AttributeBytesValue::Kind::Collection ? "collection of " : "set of ";
        text += std::to_string(members->GetNumberOfAttributeBytes());
    } else {
        text += "kind " + std::to_string(static_cast<unsigned int>(value.GetKind())) + ", " +
                std::to_string(value.GetUnknown()->size()) + " bytes";
    }
    if (!value.IsSpecified()) text += ", not specified";
}

void appendList(std::string& text, const AttributeBytesList& list, std::size_t depth,
                const IAttributeBytesDebugDisplayHelper& helper) {
    for (auto i = list.GetIterator(); list.IsValid(i);) {
        const AttributeBytes& attribute = *list.GetNextAttributeBytes(i);
        text.append(2 * depth, ' ');
        appendNamed(text, attribute.GetFeatureId().GetFeatureId(),
                    helper.GetFeatureName(attribute.GetFeatureId()));
        text += ": ";
        appendValue(text, attribute, helper);
        text += '\n';
        if (const auto* const members = attribute.GetAttributeBytesValue().GetCollection())
            appendList(text, *members, depth + 1, helper);
    }
}

} // namespace

AttributeBytesList::~AttributeBytesList() = default;

void AttributeBytesList::AddAttributeBytes(SharedPtr attribute) {
    const OperationScope operation("AttributeBytesList::AddAttributeBytes");
    if (attribute == nullptr) {
        ThrowFailure<CPExceptionInvalidArgument>([] { return "No attribute to add"; });
    }
    m_attributes.push_back(std::move(attribute));
}

void AttributeBytesList::AddAttributeBytes(const AttributeBytes& attribute) {
    AddAttributeBytes(SharedPtr(OvlSharedPtr<AttributeBytes>::make(attribute)));
}

const AttributeBytes* AttributeBytesList::GetNextAttributeBytes(Iterator& iterator) const noexcept {
    return IsValid(iterator) ? m_attributes[iterator.m_position++].get() : nullptr;
}

AttributeBytesList::SharedPtr
AttributeBytesList::GetNextAttributeBytesSharedPtr(Iterator& iterator) const noexcept {
    return IsValid(iterator) ? m_attributes[iterator.m_position++] : SharedPtr();
}

CPString AttributeBytesList::AttributeBytesDump(const IAttributeBytesDebugDisplayHelper& helper) const {
    std::string text;
    appendList(text, *this, 0, helper);
    return CPString(std::move(text));
}
