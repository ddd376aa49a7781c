#include "Com/FaultInjection.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

struct MessageRow {
    DWORD code;
    std::wstring_view text;
};

// What this layer's own functions give, by code.
constexpr std::array<MessageRow, 19> messages{{
    {ERROR_SUCCESS, L"The operation completed successfully."},
    {ERROR_FILE_NOT_FOUND, L"The system cannot find the file specified."},
    {ERROR_PATH_NOT_FOUND, L"The system cannot find the path specified."},
    {ERROR_ACCESS_DENIED, L"Access is denied."},
    {ERROR_INVALID_HANDLE, L"The handle is invalid."},
    {ERROR_NOT_ENOUGH_MEMORY, L"There is not enough memory to process this command."},
    {ERROR_INVALID_DATA, L"The data is invalid."},
    {ERROR_OUTOFMEMORY, L"There is not enough memory to complete this operation."},
    {ERROR_GEN_FAILURE, L"A device attached to the system is not functioning."},
    {ERROR_NOT_SUPPORTED, L"The request is not supported."},
    {ERROR_INVALID_PARAMETER, L"The parameter is incorrect."},
    {ERROR_DISK_FULL, L"There is not enough space on the disk."},
    {ERROR_INSUFFICIENT_BUFFER, L"The data area passed to a system call is too small."},
    {ERROR_BAD_PATHNAME, L"The specified path is invalid."},
    {ERROR_MORE_DATA, L"More data is available."},
    {ERROR_BADDB, L"The configuration registry database is corrupt."},
    {ERROR_CANTREAD, L"The configuration registry key could not be read."},
    {ERROR_CANTWRITE, L"The configuration registry key could not be written."},
    {ERROR_KEY_DELETED, L"Illegal operation attempted on a registry key that has been marked for deletion."},
}};
static_assert(std::is_sorted(messages.begin(), messages.end(),
                             [](const auto& one, const auto& other) { return one.code < other.code; }));

constexpr std::wstring_view lineEnd = L"\r\n";

DWORD Fail(DWORD code) {
    SetLastError(code);
    return 0;
}

} // namespace

DWORD FormatMessageW(DWORD flags, LPCVOID, DWORD messageId, DWORD, LPWSTR buffer, DWORD size, va_list*) {
    if (OvPlatform::FaultPointHit()) return 0;
    if (flags != (FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS))
        return Fail(ERROR_NOT_SUPPORTED);
    if (buffer == nullptr) return Fail(ERROR_INVALID_PARAMETER);
    const auto found = std::lower_bound(messages.begin(), messages.end(), messageId,
                                        [](const MessageRow& row, DWORD code) { return row.code < code; });
    if (found == messages.end() || found->code != messageId) return Fail(ERROR_MR_MID_NOT_FOUND);
    const std::size_t length = found->text.size() + lineEnd.size();
    if (length >= size) return Fail(ERROR_INSUFFICIENT_BUFFER);
    wchar_t* const end =
        std::copy(lineEnd.begin(), lineEnd.end(), std::copy(found->text.begin(), found->text.end(), buffer));
    *end = L'\0';
    return static_cast<DWORD>(length);
}
