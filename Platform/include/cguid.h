#pragma once

#include <guiddef.h>
#include <windef.h>

EXTERN_C DECLSPEC_IMPORT const IID GUID_NULL;
#define IID_NULL GUID_NULL
#define CLSID_NULL GUID_NULL
