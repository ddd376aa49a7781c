#pragma once

#include <tuple>
#include <vector>

/// The rows of a table-driven test, which a loop takes apart by name:
///   for (const auto& [text, value] : Rows<const char*, int>{{"1", 1}, {"2", 2}})
/// A lambda in the loop takes a column only by a capture of its own ([text = text]): clang wants it so.
template <typename... Columns>
using Rows = std::vector<std::tuple<Columns...>>;
