#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

/// A fresh GUID as 36 characters, upper case, with hyphens and without braces; empty if the platform gives
/// none.
OV_FILTER_UTILITIES_API CXString XGenerateRandomGuidAsString();
