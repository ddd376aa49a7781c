#pragma once

#include "AttributeStore/AttributeBytesValue.h"

#include <cstddef>

/// The first byte of a record's value, from the top: the length if it is short, the specified flag, the kind.
namespace AttributeRecordForm {

inline constexpr unsigned int kindMask = AttributeBytesValue::maxKind;
inline constexpr unsigned int specifiedFlag = 0x10;
inline constexpr unsigned int lengthShift = 5;
/// In the place of a length: the length follows, as a number, and is at least this.
inline constexpr unsigned int longLength = 7;

/// The first byte of a dimension.
inline constexpr unsigned int unitMask = 0x7F;
inline constexpr unsigned int negativeFlag = 0x80;
/// Of numerator and of denominator; a double needs 135.
inline constexpr std::size_t maxNaturalBytes = 512;

} // namespace AttributeRecordForm
