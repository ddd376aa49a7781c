#pragma once

#include "Comparison/ContentDigest.h"
#include "Comparison/MarkupReader.h"

#include <optional>
#include <string>

namespace OvPipeline {

/// The first place where two markups mean something else.
struct MarkupDifference {
    std::string place; // an element, and an attribute of it if that differs
    std::string a;     // empty where there is nothing
    std::string b;
};

/// Adds what the markup means; to its end. Throws as the reader does.
void AddMeaning(ContentDigest& digest, MarkupReader& markup);

/// Nothing where both mean the same. Throws as the readers do.
std::optional<MarkupDifference> FindDifference(MarkupReader& a, MarkupReader& b);

} // namespace OvPipeline
