#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <span>
#include <string_view>

class PrintInstructionGenerator;

/// The text among the driver's properties that names the family of a queue's device.
inline constexpr const wchar_t* deviceFamilyPropertyName = L"DeviceFamily";

/// What a family's generator writes. A family without the second or the third leaves it empty.
struct DeviceInstructions {
    CXString pjlCommands;   // before the page data
    CXString setupCommands; // PostScript for the start of the job; the page ticket where the pages are PCLm
    CXString trailerComments;
};

/// A family of devices under the name that it has among a queue's properties, and the way to its generator.
struct DeviceFamily {
    enum class PageLanguage { PostScript, Pcl6, Pclm };

    std::string_view name;
    PageLanguage language; // what the device takes its pages in
    bool writesPlainPasswords;
    /// The pages come as they were made: nothing has corrected their colours.
    void (*generate)(PrintInstructionGenerator& generator, DeviceInstructions& instructions);
};

/// All of them, the same at each call.
OV_FILTER_UTILITIES_API std::span<const DeviceFamily> DeviceFamilies() noexcept;

/// Without regard to ASCII case; null for a name that is none of them.
OV_FILTER_UTILITIES_API const DeviceFamily* FindDeviceFamily(std::string_view name) noexcept;
