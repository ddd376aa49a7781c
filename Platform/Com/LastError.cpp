#include <windows.h>

namespace {
constinit thread_local DWORD lastError = ERROR_SUCCESS;
}

DWORD GetLastError() { return lastError; }

void SetLastError(DWORD code) { lastError = code; }
