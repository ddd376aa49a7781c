// A module whose class is no filter.
#include <windows.h>

extern "C" __attribute__((visibility("default"))) HRESULT DllGetClassObject(REFCLSID, REFIID, void** object) {
    *object = nullptr;
    return E_NOINTERFACE;
}
