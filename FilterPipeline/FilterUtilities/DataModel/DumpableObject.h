#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "DataModel/DumpArgs.h"

/// What a diagnostic build can dump.
class OV_FILTER_UTILITIES_API DumpableObject {
public:
    virtual ~DumpableObject();
    virtual void Dump(DumpArgs arguments) const = 0;

protected:
    DumpableObject() = default;
    DumpableObject(const DumpableObject&) = default;
    DumpableObject& operator=(const DumpableObject&) = default;
};
