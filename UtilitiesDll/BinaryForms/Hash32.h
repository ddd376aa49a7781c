#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <cstddef>

/// A 32-bit hash that is the same in every process and on every machine.
class OV_UTILITIES_API Hash32 {
public:
    Hash32() = delete;

    /// Of the text's UTF-16LE bytes.
    [[nodiscard]] static unsigned int GetHash32(const CXString& text) noexcept;
    [[nodiscard]] static unsigned int GetHash32(const void* bytes, std::size_t length) noexcept;
};
