#pragma once

#include <string>
#include <vector>

namespace OvPipeline {

/// Lines of cells as text: each column as wide as its widest cell, two spaces between columns, none at the
/// end of a line. Widths are counted in characters. Each line begins with the indent. Cells may hold text
/// from outside: they are written as it is shown, a long one shortened. width: what lines have to fit into,
/// 0 for anything; the widest columns give way, as long as something of them can still be read.
std::string AlignedTable(std::vector<std::vector<std::string>> lines, std::size_t width,
                         const std::string& indent = {});

} // namespace OvPipeline
