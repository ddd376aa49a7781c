#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

#include <filterpipeline.h>

/// Gives one page the resources of another.
class OV_FILTER_UTILITIES_API CResourceCopier {
public:
    virtual ~CResourceCopier();

    /// Binds each resource of the one page to the other. The first failure ends it.
    HRESULT CopyPageResources(const IFixedPage* from, IFixedPage* to);
};
