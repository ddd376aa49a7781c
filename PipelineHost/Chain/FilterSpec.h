#pragma once

#include "Chain/Ends.h"
#include "Sink/PackageSink.h"

#include <filterpipeline.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// One filter of a chain, as a configuration or a command names it.
struct FilterSpec {
    std::string name;
    /// Makes the filter in place of a module, for a program that runs a filter of its own. Hands over a
    /// reference.
    std::function<IPrintPipelineFilter*()> maker;
    std::string module;             // as written
    std::filesystem::path beside;   // the folder that relative modules are looked for in first; may be empty
    GUID clsid{};                   // null: whatever class the module makes
    std::optional<FilterEnds> ends; // not known where a module is named by itself
};

struct PipelineSpec {
    std::vector<FilterSpec> filters;
    std::vector<FilterSpec> services; // modules that fill the property bag; name and module only
    std::vector<FilterSpec> optionalServices;
    Interleaving interleaving = Interleaving::ResourcesFirst;
};

/// Reads a pipeline configuration. Throws HostError that names the file, the line and what is wrong.
PipelineSpec ReadPipelineConfiguration(const std::filesystem::path& file);

/// One module by itself: MODULE or MODULE,{class id}. Throws HostError for a class id that is not a valid
/// one.
FilterSpec ParseFilterArgument(const std::string& argument);

/// Reads "{cdb62fc0-8bed-434e-86fb-a2cae55f19ea}", braces optional, any case; false for anything else.
bool ParseGuid(std::string text, GUID& guid);

} // namespace OvPipeline
