#include "System/HandleTable.h"

#include <cerrno>
#include <mutex>
#include <unordered_map>

namespace OvPlatform {
namespace {

struct Table {
    std::mutex lock;
    std::unordered_map<HANDLE, std::shared_ptr<HandleObject>> objects;
    // Far from the values of other subsystems and from small numbers that a caller made up.
    ULONG_PTR next = 0x48000000;
};

Table& Handles() {
    static Table& table = *new Table;
    return table;
}

} // namespace

HANDLE HandleTable::Open(std::shared_ptr<HandleObject> object) {
    Table& table = Handles();
    std::lock_guard guard(table.lock);
    table.next += 4;
    const HANDLE handle = reinterpret_cast<HANDLE>(table.next);
    table.objects.emplace(handle, std::move(object));
    return handle;
}

std::shared_ptr<HandleObject> HandleTable::Find(HANDLE handle) noexcept {
    Table& table = Handles();
    std::lock_guard guard(table.lock);
    const auto found = table.objects.find(handle);
    return found == table.objects.end() ? nullptr : found->second;
}

bool HandleTable::Close(HANDLE handle) noexcept {
    Table& table = Handles();
    std::shared_ptr<HandleObject> closed;
    {
        std::lock_guard guard(table.lock);
        const auto found = table.objects.find(handle);
        if (found == table.objects.end()) return false;
        closed = std::move(found->second);
        table.objects.erase(found);
    }
    return true;
}

DWORD ErrorFromErrno(int number) noexcept {
    switch (number) {
    case 0:
        return ERROR_SUCCESS;
    case ENOENT:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EISDIR:
        return ERROR_ACCESS_DENIED;
    case EROFS:
        return ERROR_WRITE_PROTECT;
    case EEXIST:
        return ERROR_FILE_EXISTS;
    case EMFILE:
    case ENFILE:
        return ERROR_TOO_MANY_OPEN_FILES;
    case ENOMEM:
        return ERROR_NOT_ENOUGH_MEMORY;
    case ENOSPC:
    case EDQUOT:
        return ERROR_DISK_FULL;
    case ENAMETOOLONG:
        return ERROR_FILENAME_EXCED_RANGE;
    case EBADF:
        return ERROR_INVALID_HANDLE;
    case EINVAL:
        return ERROR_INVALID_PARAMETER;
    case EBUSY:
    case ETXTBSY:
        return ERROR_SHARING_VIOLATION;
    default:
        return ERROR_GEN_FAILURE;
    }
}

} // namespace OvPlatform

BOOL CloseHandle(HANDLE handle) {
    if (OvPlatform::HandleTable::Close(handle)) return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}
