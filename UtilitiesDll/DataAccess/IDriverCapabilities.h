#pragma once

#include "LowLevelFacilities/Strings/CPString.h"

/// What a driver says about its device.
class IDriverCapabilities {
public:
    virtual ~IDriverCapabilities() = default;

    /// The product's data for page description languages, an XML text; empty if the driver has none. Valid as
    /// long as this object.
    [[nodiscard]] virtual const CPString& GetProductPdlDataXml() const = 0;
};
