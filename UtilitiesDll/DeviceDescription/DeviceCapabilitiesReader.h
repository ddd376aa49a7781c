#pragma once

#include <memory>
#include <string_view>

class DeviceFeatureList;

/// Reads the device capabilities document; docs/formats/device-capabilities.md says what it looks like.
class DeviceCapabilitiesReader {
public:
    DeviceCapabilitiesReader() = delete;

    /// The features at the top, never null; none for a blank text. Throws CPComException, which says what is
    /// wrong and in which line: the failure of the platform's XML reader, or ERROR_INVALID_DATA for XML that
    /// is not this document. The thread must be in a COM apartment.
    [[nodiscard]] static std::unique_ptr<const DeviceFeatureList> Read(std::string_view xml);
};
