#pragma once

#include "AttributeStore/AttributeBytesFeatureId.h"
#include "AttributeStore/AttributeBytesValue.h"

#include <utility>

/// One attribute: a feature and its value. It does not change once it is made; lists share it.
class AttributeBytes {
public:
    AttributeBytes(AttributeBytesFeatureId id, AttributeBytesValue&& value) noexcept
        : m_value(std::move(value)), m_id(id) {}
    AttributeBytes(AttributeBytesFeatureId id, const AttributeBytesValue& value) : m_value(value), m_id(id) {}

    [[nodiscard]] AttributeBytesFeatureId GetFeatureId() const noexcept { return m_id; }
    [[nodiscard]] const AttributeBytesValue& GetAttributeBytesValue() const noexcept { return m_value; }
    [[nodiscard]] bool IsSpecified() const noexcept { return m_value.IsSpecified(); }

private:
    AttributeBytesValue m_value;
    AttributeBytesFeatureId m_id;
};
