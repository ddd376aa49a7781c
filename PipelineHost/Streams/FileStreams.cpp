#include "Streams/FileStreams.h"

#include "Common/HostError.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace OvPipeline {

namespace {

HRESULT FromErrno(int error) {
    switch (error) {
    case ENOENT:
        return static_cast<HRESULT>(0x80070002);
    case ENOTDIR:
        return static_cast<HRESULT>(0x80070003);
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return E_ACCESSDENIED;
    case ENOSPC:
        return static_cast<HRESULT>(0x80030070);
    default:
        return E_FAIL;
    }
}

[[noreturn]] void ThrowFor(int error, const std::filesystem::path& file, const char* what,
                           bool fromInput = false) {
    throw HostError(FromErrno(error), file.string(),
                    std::string(what) + " " + file.string() + ": " + std::strerror(error), fromInput);
}

class FileReader final : public ByteReader {
public:
    explicit FileReader(const std::filesystem::path& file)
        : m_name(file), m_file(std::fopen(file.c_str(), "rb")) {
        if (!m_file) ThrowFor(errno, file, "cannot read", true);
        struct stat state {};
        if (fstat(fileno(m_file), &state) == 0 && S_ISDIR(state.st_mode)) {
            std::fclose(m_file);
            ThrowFor(EISDIR, file, "cannot read", true);
        }
        if (fseeko(m_file, 0, SEEK_END) != 0) {
            const int error = errno;
            std::fclose(m_file);
            ThrowFor(error, file, "cannot read", true);
        }
        m_size = static_cast<std::uint64_t>(ftello(m_file));
        std::rewind(m_file);
    }
    ~FileReader() override { std::fclose(m_file); }

    std::size_t Read(void* buffer, std::size_t size) override {
        const std::size_t read = std::fread(buffer, 1, size, m_file);
        if (read == 0 && std::ferror(m_file)) ThrowFor(errno, m_name, "cannot read", true);
        m_position += read;
        return read;
    }
    void Seek(std::uint64_t position) override {
        if (fseeko(m_file, static_cast<off_t>(position), SEEK_SET) != 0)
            ThrowFor(errno, m_name, "cannot read", true);
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

FileSink::FileSink(std::filesystem::path target) : m_target(std::move(target)) {
    const std::string name = m_target.string() + "." + std::to_string(getpid()) + ".part";
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (file < 0) ThrowFor(errno, m_target, "cannot write");
    m_temporary = name;
    m_file = fdopen(file, "wb");
    if (!m_file) {
        const int error = errno;
        close(file);
        unlink(name.c_str());
        ThrowFor(error, m_target, "cannot write");
    }
}

FileSink::~FileSink() {
    if (m_file) std::fclose(m_file);
    if (!m_temporary.empty()) unlink(m_temporary.c_str());
}

void FileSink::Write(const void* bytes, std::size_t size) {
    if (!m_file || (size > 0 && std::fwrite(bytes, 1, size, m_file) != size))
        ThrowFor(errno, m_target, "cannot write");
}

void FileSink::Flush() {
    if (m_file && std::fflush(m_file) != 0) ThrowFor(errno, m_target, "cannot write");
}

void FileSink::Finish() {
    const int flushed = std::fclose(m_file);
    m_file = nullptr;
    if (flushed != 0) ThrowFor(errno, m_target, "cannot write");
}

void FileSink::Publish() {
    std::error_code error;
    std::filesystem::rename(m_temporary, m_target, error);
    if (error) ThrowFor(error.value(), m_target, "cannot write");
    m_temporary.clear();
}

HRESULT FileWriteStream::WriteBytes(const void* bytes, ULONG count, ULONG* written) {
    if (!written || (!bytes && count > 0)) return E_POINTER;
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
