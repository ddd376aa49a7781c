#pragma once

#include <string>
#include <vector>

namespace OvPipeline {

/// Lines of cells as text: each column as wide as its widest cell, two spaces between columns, none at the
/// end of a line. Widths are counted in characters. Each line begins with the indent. Cells may hold text
/// from outside: they are written as it is shown, a long one shortened.
std::string AlignedTable(std::vector<std::vector<std::string>> lines, const std::string& indent = {});

} // namespace OvPipeline
