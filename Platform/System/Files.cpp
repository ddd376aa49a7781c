#include "Com/FaultInjection.h"
#include "Locale/Utf16.h"
#include "System/HandleTable.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <string>

namespace {

using namespace OvPlatform;

BOOL Fail(DWORD error) {
    SetLastError(error);
    return FALSE;
}

BOOL FailByErrno() { return Fail(ErrorFromErrno(errno)); }

class OpenFile final : public HandleObject {
public:
    explicit OpenFile(int descriptor) : m_descriptor(descriptor) {}
    ~OpenFile() override { close(m_descriptor); }

    int Descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

/// The flags of open(2); negative if the arguments make no sense together.
int OpenFlags(DWORD access, DWORD disposition) {
    const bool writes = (access & (GENERIC_WRITE | GENERIC_ALL)) != 0;
    const bool reads = (access & (GENERIC_READ | GENERIC_ALL)) != 0 || !writes;
    int flags = O_CLOEXEC | (writes ? (reads ? O_RDWR : O_WRONLY) : O_RDONLY);
    switch (disposition) {
    case CREATE_NEW:
        return flags | O_CREAT | O_EXCL;
    case CREATE_ALWAYS:
        return flags | O_CREAT | O_TRUNC;
    case OPEN_EXISTING:
        return flags;
    case OPEN_ALWAYS:
        return flags | O_CREAT;
    case TRUNCATE_EXISTING:
        return writes ? flags | O_TRUNC : -1;
    default:
        return -1;
    }
}

/// The descriptor of a file; negative with errno otherwise. A pipe would be waited for, and a device might
/// never end.
int OpenRegular(const std::string& path, int flags) {
    const int descriptor = open(path.c_str(), flags | O_NONBLOCK, 0666);
    struct stat state {};
    if (descriptor < 0 || (fstat(descriptor, &state) == 0 && S_ISREG(state.st_mode))) return descriptor;
    close(descriptor);
    errno = EACCES;
    return -1;
}

int Origin(DWORD method) {
    switch (method) {
    case FILE_BEGIN:
        return SEEK_SET;
    case FILE_CURRENT:
        return SEEK_CUR;
    case FILE_END:
        return SEEK_END;
    default:
        return -1;
    }
}

/// Moves all bytes that there are, over interruptions and short counts; negative with errno on failure.
template <typename Move>
ssize_t MoveAll(DWORD count, Move move) {
    DWORD done = 0;
    while (done < count) {
        const ssize_t moved = move(done, count - done);
        if (moved < 0 && errno == EINTR) continue;
        if (moved < 0) return -1;
        if (moved == 0) break;
        done += static_cast<DWORD>(moved);
    }
    return static_cast<ssize_t>(done);
}

} // namespace

HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD, LPSECURITY_ATTRIBUTES, DWORD disposition, DWORD,
                   HANDLE) {
    if (FaultPointHit()) return INVALID_HANDLE_VALUE;
    const int flags = OpenFlags(access, disposition);
    if (name == nullptr || flags < 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return INVALID_HANDLE_VALUE;
    }
    try {
        const std::string path = ToUtf8(name);
        const int descriptor = OpenRegular(path, flags);
        if (descriptor < 0) {
            // A missing folder is told from a missing file.
            const DWORD error = ErrorFromErrno(errno);
            std::error_code ignored;
            const std::filesystem::path folder = std::filesystem::path(path).parent_path();
            const bool folderMissing =
                error == ERROR_FILE_NOT_FOUND && !folder.empty() && !std::filesystem::exists(folder, ignored);
            SetLastError(folderMissing ? ERROR_PATH_NOT_FOUND : error);
            return INVALID_HANDLE_VALUE;
        }
        return HandleTable::Open(std::make_shared<OpenFile>(descriptor));
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_OUTOFMEMORY);
        return INVALID_HANDLE_VALUE;
    }
}

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD count, LPDWORD got, LPOVERLAPPED overlapped) {
    if (got != nullptr) *got = 0;
    if (FaultPointHit()) return FALSE;
    const auto opened = HandleTable::FindAs<OpenFile>(file);
    if (!opened) return Fail(ERROR_INVALID_HANDLE);
    if (overlapped != nullptr || (buffer == nullptr && count > 0)) return Fail(ERROR_INVALID_PARAMETER);
    const ssize_t moved = MoveAll(count, [&](DWORD done, DWORD left) {
        return read(opened->Descriptor(), static_cast<BYTE*>(buffer) + done, left);
    });
    if (moved < 0) return FailByErrno();
    if (got != nullptr) *got = static_cast<DWORD>(moved);
    return TRUE;
}

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD count, LPDWORD written, LPOVERLAPPED overlapped) {
    if (written != nullptr) *written = 0;
    if (FaultPointHit()) return FALSE;
    const auto opened = HandleTable::FindAs<OpenFile>(file);
    if (!opened) return Fail(ERROR_INVALID_HANDLE);
    if (overlapped != nullptr || (buffer == nullptr && count > 0)) return Fail(ERROR_INVALID_PARAMETER);
    const ssize_t moved = MoveAll(count, [&](DWORD done, DWORD left) {
        return write(opened->Descriptor(), static_cast<const BYTE*>(buffer) + done, left);
    });
    if (moved < 0) return FailByErrno();
    if (written != nullptr) *written = static_cast<DWORD>(moved);
    return TRUE;
}

BOOL GetFileSizeEx(HANDLE file, PLARGE_INTEGER size) {
    if (FaultPointHit()) return FALSE;
    const auto opened = HandleTable::FindAs<OpenFile>(file);
    if (!opened) return Fail(ERROR_INVALID_HANDLE);
    if (size == nullptr) return Fail(ERROR_INVALID_PARAMETER);
    struct stat facts;
    if (fstat(opened->Descriptor(), &facts) != 0) return FailByErrno();
    size->QuadPart = facts.st_size;
    return TRUE;
}

BOOL SetFilePointerEx(HANDLE file, LARGE_INTEGER distance, PLARGE_INTEGER position, DWORD method) {
    if (FaultPointHit()) return FALSE;
    const auto opened = HandleTable::FindAs<OpenFile>(file);
    if (!opened) return Fail(ERROR_INVALID_HANDLE);
    if (Origin(method) < 0) return Fail(ERROR_INVALID_PARAMETER);
    const off_t moved = lseek(opened->Descriptor(), distance.QuadPart, Origin(method));
    if (moved < 0) return FailByErrno();
    if (position != nullptr) position->QuadPart = moved;
    return TRUE;
}

BOOL DeleteFileW(LPCWSTR name) {
    if (FaultPointHit()) return FALSE;
    if (name == nullptr) return Fail(ERROR_INVALID_PARAMETER);
    try {
        return unlink(ToUtf8(name).c_str()) == 0 ? TRUE : FailByErrno();
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_OUTOFMEMORY);
    }
}

DWORD GetFileAttributesW(LPCWSTR name) {
    if (FaultPointHit()) return INVALID_FILE_ATTRIBUTES;
    if (name == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return INVALID_FILE_ATTRIBUTES;
    }
    try {
        struct stat facts;
        if (stat(ToUtf8(name).c_str(), &facts) != 0) {
            SetLastError(ErrorFromErrno(errno));
            return INVALID_FILE_ATTRIBUTES;
        }
        const DWORD readOnly = (facts.st_mode & 0222) == 0 ? FILE_ATTRIBUTE_READONLY : 0;
        if (S_ISDIR(facts.st_mode)) return FILE_ATTRIBUTE_DIRECTORY | readOnly;
        return readOnly != 0 ? readOnly : FILE_ATTRIBUTE_NORMAL;
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_OUTOFMEMORY);
        return INVALID_FILE_ATTRIBUTES;
    }
}

DWORD GetTempPathW(DWORD capacity, LPWSTR buffer) {
    if (FaultPointHit()) return 0;
    try {
        const char* folder = std::getenv("TMPDIR");
        std::wstring path = FromUtf8(folder != nullptr && *folder != '\0' ? folder : "/tmp");
        if (path.back() != L'/') path += L'/';
        const bool fits = CopyText(path, buffer, capacity);
        return static_cast<DWORD>(path.size() + (fits ? 0 : 1));
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_OUTOFMEMORY);
        return 0;
    }
}
