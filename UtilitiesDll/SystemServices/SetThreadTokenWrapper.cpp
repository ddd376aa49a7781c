#include "SystemServices/SetThreadTokenWrapper.h"

#include "LowLevelFacilities/Failures/LastErrorKeeper.h"
#include "LowLevelFacilities/Failures/ThrowComException.h"

SetThreadTokenWrapper::SetThreadTokenWrapper(HANDLE token) {
    const OperationScope operation("SetThreadTokenWrapper::SetThreadTokenWrapper");
    if (SetThreadToken(nullptr, token)) return;
    const DWORD error = GetLastError();
    ThrowComException(error == ERROR_SUCCESS ? E_FAIL : HRESULT_FROM_WIN32(error),
                      "the thread cannot take the user's token.");
}

SetThreadTokenWrapper::~SetThreadTokenWrapper() {
    const LastErrorKeeper keeper;
    SetThreadToken(nullptr, nullptr);
}
