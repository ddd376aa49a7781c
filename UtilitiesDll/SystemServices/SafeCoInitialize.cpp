#include "SystemServices/SafeCoInitialize.h"

#include <objbase.h>

SafeCoInitialize::~SafeCoInitialize() {
    if (m_owesUninitialize) CoUninitialize();
}

bool SafeCoInitialize::TryInitializeCom(DWORD mode, bool onlyThisMode) {
    if (m_isDone) return true;
    const HRESULT result = CoInitializeEx(nullptr, mode);
    m_owesUninitialize = SUCCEEDED(result);
    m_isDone = m_owesUninitialize || (result == RPC_E_CHANGED_MODE && !onlyThisMode);
    return m_isDone;
}
