#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/DumpArgs.h"
#include "DataModel/ValueIds.h"

#include <LowLevelFacilities/Strings/CPString.h>

/// The choice of a feature, with the statement whether any source made it. A default that is known but that
/// no source stated is an unspecified value other than VAL_UNSPECIFIED.
class OV_FILTER_UTILITIES_API SimpleOptionValue {
public:
    /// Unspecified, VAL_UNSPECIFIED.
    SimpleOptionValue();
    /// Specified unless value is VAL_UNSPECIFIED.
    SimpleOptionValue(DataModelIds::tagValueEnum value);
    /// Both as given, also a specified VAL_UNSPECIFIED.
    SimpleOptionValue(bool isSpecified, DataModelIds::tagValueEnum value);
    SimpleOptionValue(const SimpleOptionValue& other);
    SimpleOptionValue& operator=(const SimpleOptionValue& other);
    ~SimpleOptionValue();

    bool IsSpecified() const;
    /// As stored, specified or not.
    DataModelIds::tagValueEnum GetValue() const;
    /// VAL_UNSPECIFIED if it is not specified.
    DataModelIds::tagValueEnum GetValuePlusSpecifiedState() const;

    /// Ignored where it would make VAL_UNSPECIFIED specified.
    void SetIsSpecified(bool isSpecified);
    /// Makes it specified unless value is VAL_UNSPECIFIED.
    void SetValue(DataModelIds::tagValueEnum value);

    /// Equal in both members.
    bool operator==(const SimpleOptionValue& other) const;
    bool operator!=(const SimpleOptionValue& other) const;

    /// For diagnostic builds; without effect in this one.
    void Dump(DumpArgs arguments) const;
    /// For diagnostic builds; empty in this one.
    CPString GetDumpDisplayString() const;

private:
    bool m_isSpecified;
    DataModelIds::tagValueEnum m_value;
};
