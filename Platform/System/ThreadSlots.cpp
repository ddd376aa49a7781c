// The slots of a thread, on those of POSIX. Without fault points: how often they are called depends on what a
// thread did before, and who finds no slot goes on without.
#include <fibersapi.h>
#include <pthread.h>

#include <climits>

namespace {

// By slot, since whoever gives a slot up has its callback called once more.
PFLS_CALLBACK_FUNCTION callbacks[PTHREAD_KEYS_MAX];

BOOL Result(int error) {
    if (error != 0) SetLastError(ERROR_INVALID_PARAMETER);
    return error == 0;
}

} // namespace

DWORD FlsAlloc(PFLS_CALLBACK_FUNCTION callback) {
    pthread_key_t slot = 0;
    if (pthread_key_create(&slot, callback) != 0) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return FLS_OUT_OF_INDEXES;
    }
    callbacks[slot] = callback;
    return slot;
}

PVOID FlsGetValue(DWORD slot) { return pthread_getspecific(slot); }

BOOL FlsSetValue(DWORD slot, PVOID value) { return Result(pthread_setspecific(slot, value)); }

BOOL FlsFree(DWORD slot) {
    PVOID const value = pthread_getspecific(slot);
    const int error = pthread_key_delete(slot);
    if (error == 0 && value != nullptr && callbacks[slot] != nullptr) callbacks[slot](value);
    return Result(error);
}
