#include "Imaging/PictureStream.h"

#include "Com/CountedObject.h"
#include "Com/FaultInjection.h"
#include "Locale/Utf16.h"
#include "System/HandleTable.h"
#include "System/InputFile.h"

#include <streambase.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace OvPlatform {
namespace {

struct FileClose {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using SharedFile = std::shared_ptr<std::FILE>;

HRESULT ResultOfErrno() { return HRESULT_FROM_WIN32(ErrorFromErrno(errno)); }

class FileStream final : public StreamBase<FaultEntry> {
public:
    FileStream(SharedFile file, std::size_t position)
        : StreamBase(STGM_READ, position), m_file(std::move(file)) {}

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* got) override {
        if (got != nullptr) *got = 0;
        if (buffer == nullptr) return STG_E_INVALIDPOINTER;
        if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        ULONG done = 0;
        while (done < count) {
            // Where the stream stands is its own affair, not the file's, which clones share.
            const ssize_t moved = pread(fileno(m_file.get()), static_cast<BYTE*>(buffer) + done, count - done,
                                        static_cast<off_t>(m_position));
            if (moved < 0 && errno == EINTR) continue;
            if (moved < 0) return ResultOfErrno();
            if (moved == 0) break;
            done += static_cast<ULONG>(moved);
            m_position += static_cast<std::size_t>(moved);
        }
        if (got != nullptr) *got = done;
        return done == count ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override {
        if (clone == nullptr) return STG_E_INVALIDPOINTER;
        *clone = nullptr;
        if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        *clone = new (std::nothrow) FileStream(m_file, m_position);
        return *clone != nullptr ? S_OK : E_OUTOFMEMORY;
    }

private:
    HRESULT Size(std::size_t& size) override {
        struct stat facts {};
        if (fstat(fileno(m_file.get()), &facts) != 0) return ResultOfErrno();
        size = static_cast<std::size_t>(facts.st_size);
        return S_OK;
    }

    SharedFile m_file;
};

class MemoryStream final : public StreamBase<FaultEntry> {
public:
    MemoryStream(const BYTE* bytes, std::size_t size, std::size_t position)
        : StreamBase(STGM_READ, position), m_bytes(bytes), m_size(size) {}

    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* got) override {
        if (got != nullptr) *got = 0;
        if (buffer == nullptr) return STG_E_INVALIDPOINTER;
        if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        const std::size_t left = m_size - (std::min)(m_size, m_position);
        const auto taken = static_cast<ULONG>((std::min)(std::size_t{count}, left));
        if (taken > 0) std::memcpy(buffer, m_bytes + m_position, taken);
        m_position += taken;
        if (got != nullptr) *got = taken;
        return taken == count ? S_OK : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override {
        if (clone == nullptr) return STG_E_INVALIDPOINTER;
        *clone = nullptr;
        if (const HRESULT fault = FaultPoint(); FAILED(fault)) return fault;
        *clone = new (std::nothrow) MemoryStream(m_bytes, m_size, m_position);
        return *clone != nullptr ? S_OK : E_OUTOFMEMORY;
    }

private:
    HRESULT Size(std::size_t& size) override {
        size = m_size;
        return S_OK;
    }

    const BYTE* m_bytes;
    std::size_t m_size;
};

} // namespace

HRESULT OpenPictureFile(LPCWSTR name, IStream** stream) {
    *stream = nullptr;
    std::FILE* const opened = OpenInputFile(ToUtf8(name));
    if (opened == nullptr) return ResultOfErrno();
    const SharedFile file(opened, FileClose());
    *stream = new FileStream(file, 0);
    return S_OK;
}

HRESULT OpenPictureMemory(const BYTE* bytes, std::size_t size, IStream** stream) {
    *stream = new MemoryStream(bytes, size, 0);
    return S_OK;
}

} // namespace OvPlatform
