#include "LowLevelFacilities/Numbers/Dimension.h"

#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"

#include <array>

namespace {

/// The length of a unit in microns, as a fraction.
struct UnitRow {
    unsigned int numerator;
    unsigned int denominator;
    const char* symbol;
};

constexpr std::array<UnitRow, 13> unitTable{{
    {25400, 1, "in"},     // inch
    {2540, 1, "1/10in"},  // tenth of an inch
    {635, 36, "1/20pt"},  // twentieth of a point
    {254, 1, "1/100in"},  // hundredth of an inch
    {127, 5, "1/1000in"}, // thousandth of an inch
    {1000, 1, "mm"},      // millimetre
    {100, 1, "1/10mm"},   // tenth of a millimetre
    {10, 1, "1/100mm"},   // hundredth of a millimetre
    {1, 1, "um"},         // micron
    {3175, 9, "pt"},      // point
    {635, 18, "1/10pt"},  // tenth of a point
    {127, 36, "1/100pt"}, // hundredth of a point
    {3175, 12, "1/96in"}, // XPS unit
}};

const UnitRow& rowOf(Dimension::UnitsEnum unit) {
    const auto index = static_cast<std::size_t>(unit);
    if (index >= unitTable.size()) {
        ThrowFailure<CPExceptionInvalidArgument>(
            [index] { return "Not a unit of length: " + std::to_string(index); });
    }
    return unitTable[index];
}

} // namespace

Dimension::Dimension(double value, UnitsEnum unit) : m_value(Number::fromDouble(value)), m_unit(unit) {}

void Dimension::SetValue(const Number& value, UnitsEnum unit) {
    m_value = value;
    m_unit = unit;
}

Number Dimension::GetValue(UnitsEnum unit) const {
    if (unit == m_unit) return m_value;
    const OperationScope operation("Dimension::GetValue");
    const UnitRow& from = rowOf(m_unit);
    const UnitRow& to = rowOf(unit);
    return m_value.times(from.numerator * to.denominator, from.denominator * to.numerator);
}

CPString Dimension::GetStringValue(UnitsEnum unit, unsigned int digits, double roundingOffset,
                                   bool withoutTrailingZeros, bool withUnit) const {
    const OperationScope operation("Dimension::GetStringValue");
    std::string text = GetValue(unit).GetDecimalText(digits, roundingOffset);
    if (withoutTrailingZeros && text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.') text.pop_back();
    }
    if (withUnit) (text += ' ') += rowOf(unit).symbol;
    return CPString{std::move(text)};
}
