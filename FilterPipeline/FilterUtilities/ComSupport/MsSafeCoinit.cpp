#include "ComSupport/MsSafeCoinit.h"

#include "ComSupport/ThrowHresult.h"

#include <windows.h>

MsSafeCoInit::MsSafeCoInit() : m_uninitializeIsOwed(false) {
    const OperationScope operation("MsSafeCoInit::MsSafeCoInit");
    const HRESULT hr = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    // A thread that lives in another apartment stays there, and nothing is owed for it.
    if (hr == RPC_E_CHANGED_MODE) return;
    ThrowIfFailed(hr);
    m_uninitializeIsOwed = true;
}

MsSafeCoInit::~MsSafeCoInit() {
    if (m_uninitializeIsOwed) CoUninitialize();
}
