#include "Com/FaultInjection.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <mutex>
#include <new>
#include <thread>

namespace {

using Lock = std::recursive_mutex;
static_assert(sizeof(Lock) <= sizeof(CRITICAL_SECTION::state));
static_assert(alignof(Lock) <= alignof(CRITICAL_SECTION));

Lock& LockOf(LPCRITICAL_SECTION section) { return *std::launder(reinterpret_cast<Lock*>(section->state)); }

} // namespace

void InitializeCriticalSection(LPCRITICAL_SECTION section) { new (section->state) Lock; }

BOOL InitializeCriticalSectionAndSpinCount(LPCRITICAL_SECTION section, DWORD) {
    if (OvPlatform::FaultPointHit()) return FALSE;
    InitializeCriticalSection(section);
    return TRUE;
}

void EnterCriticalSection(LPCRITICAL_SECTION section) { LockOf(section).lock(); }

BOOL TryEnterCriticalSection(LPCRITICAL_SECTION section) { return LockOf(section).try_lock(); }

void LeaveCriticalSection(LPCRITICAL_SECTION section) { LockOf(section).unlock(); }

void DeleteCriticalSection(LPCRITICAL_SECTION section) { LockOf(section).~Lock(); }

DWORD GetCurrentThreadId() { return static_cast<DWORD>(syscall(SYS_gettid)); }

DWORD GetCurrentProcessId() { return static_cast<DWORD>(getpid()); }

// Values that mean the caller itself, as published; they need not be closed.
HANDLE GetCurrentThread() { return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-2)); }

HANDLE GetCurrentProcess() { return reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-1)); }

void Sleep(DWORD milliseconds) {
    if (milliseconds == INFINITE)
        for (;;)
            pause();
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
