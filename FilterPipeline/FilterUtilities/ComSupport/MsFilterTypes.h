#pragma once

// The small platform wrappers and helpers that all filter code shares, in one include.

#include "DebugMessages.h"
#include "HresultHelpers.h"
#include "MsHGlobalLock.h"
#include "MsSafeHGlobal.h"
#include "MsSafeVariant.h"
#include "XGenerateRandomGuidAsString.h"
