#pragma once

namespace OvPipeline {

/// First of all in a program: makes up for what whoever started it may have left behind. A standard stream
/// that was closed must not become a file of the job's, which would then get what is said to the user: its
/// place is taken by one that cannot be written either. And processes that the program starts are waited for.
void StartProgram();

} // namespace OvPipeline
