#pragma once

// The one form in which the library throws a failing HRESULT: ThrowComException and ThrowIfFailed.

#include <LowLevelFacilities/Failures/ThrowComException.h>
