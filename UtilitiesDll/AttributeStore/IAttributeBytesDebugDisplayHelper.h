#pragma once

#include "AttributeStore/AttributeBytesFeatureId.h"
#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/UtilitiesExport.h"

#include <windows.h>

#include <memory>

/// Names features and options in a dump. Whoever keeps one keeps a clone.
class OV_UTILITIES_API IAttributeBytesDebugDisplayHelper {
public:
    virtual ~IAttributeBytesDebugDisplayHelper();

    [[nodiscard]] virtual std::unique_ptr<IAttributeBytesDebugDisplayHelper> Clone() const = 0;
    /// An empty name, which is what these give, lets the dump show the number alone.
    [[nodiscard]] virtual CPString GetFeatureName(AttributeBytesFeatureId feature) const;
    [[nodiscard]] virtual CPString GetOptionName(AttributeBytesFeatureId feature, LONG option) const;

protected:
    IAttributeBytesDebugDisplayHelper() = default;
    IAttributeBytesDebugDisplayHelper(const IAttributeBytesDebugDisplayHelper&) = default;
    IAttributeBytesDebugDisplayHelper& operator=(const IAttributeBytesDebugDisplayHelper&) = default;
};
