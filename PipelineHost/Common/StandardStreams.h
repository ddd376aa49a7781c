#pragma once

namespace OvPipeline {

/// For a program's start: a standard stream that was closed before must not become a file of the job's, which
/// would then get what is said to the user. Its place is taken by one that cannot be written either.
void FillStandardStreams();

} // namespace OvPipeline
