#pragma once

#include "Common/ComObject.h"
#include "Report/JobState.h"
#include "Streams/ByteReader.h"

#include <System/ByteOutput.h>

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

/// A file that comes to stand under its name only when all is well, as OutputFile has it. Throws HostError.
std::unique_ptr<OvPlatform::ByteOutput> OpenOutputFile(const std::filesystem::path& target);

/// An output of bytes. Throws HostError. A filter may hold on to it: behind Finish nothing can be written.
class FileSink {
public:
    explicit FileSink(std::unique_ptr<OvPlatform::ByteOutput> output) : m_output(std::move(output)) {}

    void Write(const void* bytes, std::size_t size);
    void Flush();
    /// All is written: what takes time.
    void Finish();
    /// Behind Finish: puts the file under its name, and does nothing else.
    void Commit();

    std::uint64_t Size() const { return m_size; }

private:
    void RequireUnfinished() const;

    std::unique_ptr<OvPlatform::ByteOutput> m_output;
    std::uint64_t m_size = 0;
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
