#pragma once

#include "Common/ComObject.h"
#include "Streams/ByteReader.h"

#include "Report/JobState.h"

#include <filterpipeline.h>

#include <cstdio>
#include <filesystem>

namespace OvPipeline {

// The bytes of a file. Open throws HostError.
class FileContent final : public Content {
public:
    explicit FileContent(std::filesystem::path file) : m_file(std::move(file)) {}

    std::unique_ptr<ByteReader> Open() const override;
    std::uint64_t Identity() const override { return 0; }

private:
    std::filesystem::path m_file;
};

// A file that comes to stand under its name only when all is well: until Publish the bytes lie beside it, and
// without it nothing is left of them.
class FileSink {
public:
    // Throws HostError.
    explicit FileSink(std::filesystem::path target);
    FileSink(const FileSink&) = delete;
    FileSink& operator=(const FileSink&) = delete;
    ~FileSink();

    void Write(const void* bytes, std::size_t size);
    void Flush();
    // All bytes are there. None may come behind it.
    void Finish();
    // Puts the finished file under its name.
    void Publish();

private:
    std::filesystem::path m_target;
    std::filesystem::path m_temporary;
    std::FILE* m_file = nullptr;
};

// The last filter's way into a file. Writes fail once the job stops.
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
