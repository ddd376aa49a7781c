#include "SystemServices/SetThreadTokenWrapper.h"

#include "LowLevelFacilities/CPComException.h"
#include "LowLevelFacilities/LastErrorKeeper.h"

SetThreadTokenWrapper::SetThreadTokenWrapper(HANDLE token) {
    if (SetThreadToken(nullptr, token)) return;
    const DWORD error = GetLastError();
    throw CPComException(
        "CPComException: the thread cannot take the user's token.", error,
        DebugContextReference(__FILE__, __LINE__, "SetThreadTokenWrapper::SetThreadTokenWrapper"),
        error == ERROR_SUCCESS ? E_FAIL : HRESULT_FROM_WIN32(error));
}

SetThreadTokenWrapper::~SetThreadTokenWrapper() {
    const LastErrorKeeper keeper;
    SetThreadToken(nullptr, nullptr);
}
