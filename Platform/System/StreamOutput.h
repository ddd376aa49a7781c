#pragma once

#include "System/ByteOutput.h"

#include <functional>
#include <string>

namespace OvPlatform {

/// An output into a stream that somebody reads while it is written, such as a pipe. It cannot be taken back:
/// what has been written stands, whatever becomes of the rest. Everything throws FileError; a stream that
/// nobody reads any more is a failure like any other for a process that ignores SIGPIPE.
class OV_PLATFORM_API StreamOutput final : public ByteOutput {
public:
    /// descriptor: open as long as this lives, and its caller's to close. isStopped: asked while the reader
    /// keeps the stream waiting; true ends the wait with a failure.
    StreamOutput(int descriptor, std::filesystem::path name, std::function<bool()> isStopped);

    const std::filesystem::path& Name() const override { return m_name; }
    std::filesystem::path Folder() const override;
    void Write(const void* bytes, std::size_t size) override;
    void Flush() override;
    void Finish() override { Flush(); }
    void Commit() override {}

private:
    void WaitForRoom() const;

    int m_descriptor;
    std::filesystem::path m_name;
    std::function<bool()> m_isStopped;
    std::string m_buffer;
};

} // namespace OvPlatform
