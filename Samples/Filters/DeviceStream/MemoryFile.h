#pragma once

#include <string>
#include <string_view>

/// A file without a name, which lives in memory, for a library that reads files by their names.
class MemoryFile {
public:
    /// Empty. Throws CPException where the system gives none.
    MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();

    // Throw CPException where there is no memory.
    /// To the beginning: what is written from there takes the place of what was.
    void Rewind();
    void Write(std::string_view bytes);
    /// What is written is all there is.
    void Truncate();

    /// By which this process can open it to read.
    [[nodiscard]] std::string Path() const;

private:
    int m_descriptor;
};
