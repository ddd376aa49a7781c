#pragma once

#include <stdarg.h>
#include <winbase.h>
#include <windef.h>
#include <wingdi.h>
#include <winnls.h>
#include <winreg.h>
#include <winuser.h>
#include <winver.h>
#ifndef WIN32_LEAN_AND_MEAN
#include <ole2.h>
#endif
