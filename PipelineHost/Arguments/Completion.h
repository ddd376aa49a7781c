#pragma once

#include <string>

namespace OvPipeline {

// What shells complete a command line by: commands, options, and what stands behind them.

/// For bash; without help of other scripts.
std::string BashCompletion();
/// For zsh, as a function of its completion system.
std::string ZshCompletion();

} // namespace OvPipeline
