#pragma once

#include "System/ByteOutput.h"

#include <cstdio>
#include <optional>

namespace OvPlatform {

/// A file that comes to stand under its name only when it is complete, at once: until Commit its bytes have
/// no name, and without Commit nothing is left of them. Only where the file system knows no nameless files,
/// and for the moment in which another file is replaced, they stand under a random name beside it; a process
/// that is killed then leaves that behind. Everything throws FileError. One thread at a time.
class OV_PLATFORM_API OutputFile final : public ByteOutput {
public:
    /// A symbolic link is followed: what it leads to is written, there or not. What is no regular file is
    /// refused, as is a file that a process has open and hands on as a link (/dev/stdout).
    explicit OutputFile(const std::filesystem::path& target);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile() override;

    const std::filesystem::path& Name() const override { return m_named; }
    /// The folder in which the file is going to stand.
    std::filesystem::path Folder() const override;

    void Write(const void* bytes, std::size_t size) override;
    void Flush() override;

    /// A file that replaces another gets its mode, and its owner and group as far as the system lets; a new
    /// one has what the user's mask leaves.
    void Finish() override;
    /// Puts the file under its name.
    void Commit() override;

private:
    struct Rights {
        unsigned mode;
        unsigned owner;
        unsigned group;
    };

    void Open();
    void LookAtTarget();
    void TakeOverRights() const;
    [[noreturn]] void Throw(int number) const;

    std::filesystem::path m_named; // as the caller calls it
    std::filesystem::path m_target;
    std::filesystem::path m_temporary; // empty while the file has no name
    std::optional<Rights> m_replaced;
    std::FILE* m_file = nullptr;
    int m_descriptor = -1; // of m_file
};

} // namespace OvPlatform
