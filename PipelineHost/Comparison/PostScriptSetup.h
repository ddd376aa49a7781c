#pragma once

#include "Comparison/DeviceStreamReader.h"

#include <string>
#include <string_view>
#include <vector>

namespace OvPipeline {

/// Takes set-up PostScript apart: what it gives the page device, and the rest.
struct PostScriptSetup {
    DeviceStream::Values device;       // "/Duplex" and its value, for each << ... >> setpagedevice
    std::vector<std::string> commands; // all else, a line each, without blanks and comments

    /// Of any bytes: what is no PostScript is all else.
    static PostScriptSetup Read(std::string_view text);
};

} // namespace OvPipeline
