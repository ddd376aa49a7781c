#pragma once

#include "Com/PlatformExport.h"

#include <objbase.h>

namespace OvPlatform {

/// Makes the class `clsid` known to CoCreateInstance and CoGetClassObject. The table counts `factory` once; a
/// second registration of a class replaces the first. Call it before the class is asked for, from any thread.
OV_PLATFORM_API HRESULT RegisterClass(REFCLSID clsid, IClassFactory* factory) noexcept;

/// Makes an object and answers for `riid`. The count of the object that it leaves is the caller's.
using CreateObject = HRESULT (*)(REFIID riid, void** object);

/// The same with a function instead of a class factory.
OV_PLATFORM_API HRESULT RegisterClass(REFCLSID clsid, CreateObject create) noexcept;

/// A class that the platform supplies: registers itself while the library is loaded.
class ClassRegistration {
public:
    ClassRegistration(REFCLSID clsid, CreateObject create) noexcept { RegisterClass(clsid, create); }
};

} // namespace OvPlatform
