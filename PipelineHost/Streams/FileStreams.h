#pragma once

#include "Common/ComObject.h"
#include "Report/JobState.h"
#include "Streams/ByteReader.h"

#include <System/OutputFile.h>

#include <filterpipeline.h>

#include <filesystem>

namespace OvPipeline {

/// The bytes of a file. Open throws HostError.
class FileContent final : public Content {
public:
    explicit FileContent(std::filesystem::path file) : m_file(std::move(file)) {}

    std::unique_ptr<ByteReader> Open() const override;
    std::uint64_t Identity() const override { return 0; }

private:
    std::filesystem::path m_file;
};

/// A file of bytes that comes to stand under its name only when all is well, as OutputFile has it. Throws
/// HostError. A filter may hold on to it: behind Finish nothing can be written.
class FileSink {
public:
    explicit FileSink(const std::filesystem::path& target);

    void Write(const void* bytes, std::size_t size);
    void Flush();
    /// All is written: what takes time.
    void Finish();
    /// Behind Finish: puts the file under its name, and does nothing else.
    void Commit();

private:
    void RequireUnfinished() const;

    OvPlatform::OutputFile m_file;
    std::atomic<bool> m_isFinished{false};
};

/// The last filter's way into a file. Writes fail once the job stops.
class FileWriteStream final : public ComObject<IPrintWriteStream, IPrintWriteStreamFlush> {
public:
    FileWriteStream(std::shared_ptr<FileSink> sink, std::shared_ptr<JobState> job)
        : m_sink(std::move(sink)), m_job(std::move(job)) {}

    HRESULT STDMETHODCALLTYPE WriteBytes(const void* bytes, ULONG count, ULONG* written) override;
    void STDMETHODCALLTYPE Close() override;
    HRESULT STDMETHODCALLTYPE FlushData() override;

    bool IsClosed() const { return m_isClosed.load(); }

private:
    ~FileWriteStream() override = default;

    std::shared_ptr<FileSink> m_sink;
    std::shared_ptr<JobState> m_job;
    std::atomic<bool> m_isClosed{false};
};

} // namespace OvPipeline
