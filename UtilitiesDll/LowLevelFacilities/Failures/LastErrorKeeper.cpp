#include "LowLevelFacilities/Failures/LastErrorKeeper.h"

#include <windows.h>

unsigned int LastErrorKeeper::current() noexcept { return GetLastError(); }

void LastErrorKeeper::set(unsigned int lastError) noexcept { SetLastError(lastError); }
