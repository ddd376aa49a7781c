#pragma once

// The small platform wrappers and helpers that all filter code shares, in one include.

#include "ComSupport/DebugMessages.h"
#include "ComSupport/HresultHelpers.h"
#include "ComSupport/MsHGlobalLock.h"
#include "ComSupport/MsSafeHGlobal.h"
#include "ComSupport/MsSafeVariant.h"
#include "ComSupport/XGenerateRandomGuidAsString.h"
