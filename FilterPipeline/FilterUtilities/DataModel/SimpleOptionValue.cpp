#include "DataModel/SimpleOptionValue.h"

using DataModelIds::tagValueEnum;
using DataModelIds::VAL_UNSPECIFIED;

SimpleOptionValue::SimpleOptionValue() : SimpleOptionValue(false, VAL_UNSPECIFIED) {}

SimpleOptionValue::SimpleOptionValue(tagValueEnum value)
    : SimpleOptionValue(value != VAL_UNSPECIFIED, value) {}

SimpleOptionValue::SimpleOptionValue(bool isSpecified, tagValueEnum value)
    : m_isSpecified(isSpecified), m_value(value) {}

SimpleOptionValue::SimpleOptionValue(const SimpleOptionValue& other) = default;
SimpleOptionValue& SimpleOptionValue::operator=(const SimpleOptionValue& other) = default;

SimpleOptionValue::~SimpleOptionValue() = default;

bool SimpleOptionValue::IsSpecified() const { return m_isSpecified; }

tagValueEnum SimpleOptionValue::GetValue() const { return m_value; }

tagValueEnum SimpleOptionValue::GetValuePlusSpecifiedState() const {
    return m_isSpecified ? m_value : VAL_UNSPECIFIED;
}

void SimpleOptionValue::SetIsSpecified(bool isSpecified) {
    if (isSpecified && m_value == VAL_UNSPECIFIED) return;
    m_isSpecified = isSpecified;
}

void SimpleOptionValue::SetValue(tagValueEnum value) {
    m_value = value;
    m_isSpecified = value != VAL_UNSPECIFIED;
}

bool SimpleOptionValue::operator==(const SimpleOptionValue& other) const {
    return m_isSpecified == other.m_isSpecified && m_value == other.m_value;
}

bool SimpleOptionValue::operator!=(const SimpleOptionValue& other) const { return !(*this == other); }

void SimpleOptionValue::Dump(DumpArgs) const {}

CPString SimpleOptionValue::GetDumpDisplayString() const { return CPString(); }
