#pragma once

#include "LowLevelFacilities/Numbers/Number.h"
#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/UtilitiesExport.h"

/// A length that remembers its unit. Conversions are exact.
class OV_UTILITIES_API Dimension {
public:
    enum UnitsEnum {
        Inch = 0,
        TenthOfInch = 1,
        TwentiethOfPoint = 2,
        HundredthOfInch = 3,
        ThousandthOfInch = 4,
        Millimeter = 5,
        TenthOfMillimeter = 6,
        HundredthOfMillimeter = 7,
        Micron = 8,
        Point = 9, // 72 to the inch
        TenthOfPoint = 10,
        HundredthOfPoint = 11,
        XpsUnit = 12, // 96 to the inch
    };

    Dimension() = default;
    Dimension(double value, UnitsEnum unit);

    void SetValue(const Number& value, UnitsEnum unit);
    [[nodiscard]] UnitsEnum GetUnits() const noexcept { return m_unit; }
    /// In the dimension's own unit.
    [[nodiscard]] const Number& GetValue() const noexcept { return m_value; }
    /// Throws CPExceptionInvalidArgument for a number that is no unit.
    [[nodiscard]] Number GetValue(UnitsEnum unit) const;
    /// The value as a decimal with that many digits behind the point, rounded by the offset at its last digit
    /// (Number::toNearest). withoutTrailingZeros drops zeros at the end of the fraction, and a bare
    /// point with them; withUnit appends a blank and the unit's symbol.
    [[nodiscard]] CPString GetStringValue(UnitsEnum unit, unsigned int digits, double roundingOffset,
                                          bool withoutTrailingZeros, bool withUnit) const;

private:
    Number m_value;
    UnitsEnum m_unit = Inch;
};
