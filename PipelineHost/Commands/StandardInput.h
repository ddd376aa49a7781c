#pragma once

#include "Source/JobFile.h"

namespace OvPipeline {

/// A job that comes by the input stream, as a file: a package is read from its end. A stream that is a file
/// is taken as it is, all else is kept in a temporary file without a name, of which nothing is left however
/// the program ends.
class StandardInput {
public:
    /// Reads to the end of the stream. Throws UsageError where it leads to a terminal, and HostError.
    StandardInput();
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;
    ~StandardInput();

    /// As long as this lives.
    JobFile File() const;

private:
    int m_file;
};

} // namespace OvPipeline
