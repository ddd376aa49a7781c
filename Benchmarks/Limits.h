#pragma once

#include <string>

enum class Bound { AtMost, AtLeast };

/// The figures of a program beside their limits. A line for each stands at the end of the run, which
/// `scripts/bench` sums up:
///
///     limit  met     load of a ticket, in parses: 1.04 (at most 1.05)
///     limit  MISSED  ...
///
/// One thread at a time.
namespace Limits {

/// what: of which task, in which unit; measured again, the last figure counts.
void Report(const std::string& what, double value, double limit, Bound bound = Bound::AtMost);

/// Prints the lines, in the order of the reports. 0 where all limits are met, else 1: the exit code of the
/// program.
int Conclude();

} // namespace Limits
