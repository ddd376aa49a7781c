#pragma once

#include <string_view>

/// The figures of paths in the markup of pages: "M 0,0 L 10,10 z".
namespace PathData {

/// Whether a renderer may be given the markup, which libgxps is not: it ends the whole program over a letter
/// that is no command of a figure, and over a sign without a number. Looks at the attributes that hold
/// figures.
bool AreFiguresReadable(std::string_view markup);

} // namespace PathData
