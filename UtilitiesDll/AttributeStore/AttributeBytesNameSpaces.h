#pragma once

#include "AttributeStore/AttributeBytesNameSpacesId.h"
#include "AttributeStore/AttributeBytesRawList.h"
#include "LowLevelFacilities/UtilitiesExport.h"

#include <map>

/// What is to be written into a store, by name space.
class OV_UTILITIES_API AttributeBytesNameSpaces {
public:
    /// Takes the place of what the name space was to become before.
    void SetNameSpaceAttributes(AttributeBytesNameSpacesId id, const AttributeBytesRawList& attributes);

    [[nodiscard]] const std::map<AttributeBytesNameSpacesId, AttributeBytesRawList>&
    GetNameSpaces() const noexcept {
        return m_nameSpaces;
    }

private:
    std::map<AttributeBytesNameSpacesId, AttributeBytesRawList> m_nameSpaces;
};
