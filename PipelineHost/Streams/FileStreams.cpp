#include "Streams/FileStreams.h"

#include "Common/HostError.h"

#include <System/FileError.h>
#include <System/InputFile.h>
#include <System/OutputFile.h>

#include <cerrno>
#include <cstring>

namespace OvPipeline {

namespace {

HRESULT FromErrno(int error) {
    switch (error) {
    case ENOENT:
        return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    case ENOTDIR:
        return HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND);
    case EACCES:
    case EISDIR:
        return E_ACCESSDENIED;
    default:
        return E_FAIL;
    }
}

[[noreturn]] void ThrowUnreadable(int error, const std::filesystem::path& file) {
    throw InputError(FromErrno(error), file.string(),
                     "cannot read " + file.string() + ": " +
                         (error == EISDIR ? "this is not a file" : std::strerror(error)));
}

template <class Step>
auto Writing(Step&& step) {
    try {
        return step();
    } catch (const OvPlatform::FileError& error) {
        throw HostError(error.Result(), error.File(), error.what());
    }
}

class FileReader final : public ByteReader {
public:
    explicit FileReader(const std::filesystem::path& file)
        : m_name(file), m_file(OvPlatform::OpenInputFile(file)) {
        if (m_file == nullptr) ThrowUnreadable(errno, file);
        if (fseeko(m_file, 0, SEEK_END) != 0) {
            const int error = errno;
            std::fclose(m_file);
            ThrowUnreadable(error, file);
        }
        m_size = static_cast<std::uint64_t>(ftello(m_file));
        std::rewind(m_file);
    }
    ~FileReader() override { std::fclose(m_file); }

    std::size_t Read(void* buffer, std::size_t size) override {
        const std::size_t read = std::fread(buffer, 1, size, m_file);
        if (read == 0 && std::ferror(m_file)) ThrowUnreadable(errno, m_name);
        m_position += read;
        return read;
    }
    void Seek(std::uint64_t position) override {
        if (fseeko(m_file, static_cast<off_t>(position), SEEK_SET) != 0) ThrowUnreadable(errno, m_name);
        m_position = position;
    }
    std::uint64_t Position() const override { return m_position; }
    std::uint64_t Size() override { return m_size; }
    bool AtEnd() override { return m_position >= m_size; }

private:
    std::filesystem::path m_name;
    std::FILE* m_file;
    std::uint64_t m_position = 0;
    std::uint64_t m_size = 0;
};

} // namespace

std::unique_ptr<ByteReader> FileContent::Open() const { return std::make_unique<FileReader>(m_file); }

std::unique_ptr<OvPlatform::ByteOutput> OpenOutputFile(const std::filesystem::path& target) {
    return Writing([&] { return std::make_unique<OvPlatform::OutputFile>(target); });
}

void FileSink::RequireUnfinished() const {
    if (m_isFinished) throw HostError(E_UNEXPECTED, {}, "bytes are written to an output that is complete");
}

void FileSink::Write(const void* bytes, std::size_t size) {
    RequireUnfinished();
    Writing([&] { m_output->Write(bytes, size); });
    m_size += size;
}

void FileSink::Flush() {
    RequireUnfinished();
    Writing([&] { m_output->Flush(); });
}

void FileSink::Finish() {
    m_isFinished = true;
    Writing([&] { m_output->Finish(); });
}

void FileSink::Commit() {
    Writing([&] { m_output->Commit(); });
}

HRESULT FileWriteStream::WriteBytes(const void* bytes, ULONG count, ULONG* written) {
    if (written == nullptr || (bytes == nullptr && count > 0)) return E_POINTER;
    *written = 0;
    return Guarded([&] {
        if (m_job->IsStopping()) return m_job->StopResult();
        if (m_isClosed) throw HostError(E_UNEXPECTED, {}, "bytes are written to a stream that is closed");
        m_sink->Write(bytes, count);
        m_job->Counters().bytesWritten += count;
        *written = count;
        return S_OK;
    });
}

void FileWriteStream::Close() { m_isClosed = true; }

HRESULT FileWriteStream::FlushData() {
    return Guarded([&] {
        m_sink->Flush();
        return S_OK;
    });
}

} // namespace OvPipeline
