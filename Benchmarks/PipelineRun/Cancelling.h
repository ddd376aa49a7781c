#pragma once

#include <string>
#include <vector>

/// Runs a command, asks it to end (SIGINT) after so many seconds, and gives the seconds from then to its end;
/// 0 where it was over before. isRead: its output stream is a file; else a pipe that nobody reads. Throws
/// where it ends with anything but success or the exit code of a cancelled job.
double SecondsToEnd(const std::vector<std::string>& command, double after, bool isRead);
