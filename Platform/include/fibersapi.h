#pragma once

#include <windows.h>

// What a thread keeps in slots. Fibers are not played: each thread has one.
#define FLS_OUT_OF_INDEXES (static_cast<DWORD>(0xFFFFFFFF))

/// Called with what a thread has in the slot, where it is not null, when the thread ends.
typedef VOID(WINAPI* PFLS_CALLBACK_FUNCTION)(PVOID lpFlsData);

EXTERN_C WINBASEAPI DWORD WINAPI FlsAlloc(PFLS_CALLBACK_FUNCTION lpCallback);
EXTERN_C WINBASEAPI PVOID WINAPI FlsGetValue(DWORD dwFlsIndex);
EXTERN_C WINBASEAPI BOOL WINAPI FlsSetValue(DWORD dwFlsIndex, PVOID lpFlsData);
/// Calls back for the calling thread; what other threads have in the slot stays behind.
EXTERN_C WINBASEAPI BOOL WINAPI FlsFree(DWORD dwFlsIndex);
