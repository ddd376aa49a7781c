#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <windows.h>

/// A VARIANT that starts empty and frees what it holds.
class OV_FILTER_UTILITIES_API MsSafeVariant : public VARIANT {
public:
    MsSafeVariant();
    ~MsSafeVariant();
    MsSafeVariant(const MsSafeVariant&) = delete;
    MsSafeVariant& operator=(const MsSafeVariant&) = delete;
};
