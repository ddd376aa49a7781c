#pragma once

#include <string>
#include <vector>

namespace OvPipeline {

// Lines of cells as text: each column as wide as its widest cell, two spaces between columns, none at the end
// of a line. Widths are counted in characters. Each line begins with the indent.
std::string AlignedTable(const std::vector<std::vector<std::string>>& lines, const std::string& indent = {});

} // namespace OvPipeline
