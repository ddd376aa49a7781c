#pragma once

#include "ComSupport/FilterUtilitiesExport.h"

class IFilterFeatureAccess;

/// The application that a job comes from, which the device is told in a comment.
class OV_FILTER_UTILITIES_API CreatorName {
public:
    CreatorName() = delete;

    /// Where the application has not said its name, takes it from the document's, if that gives it away.
    static void FillIn(IFilterFeatureAccess& features);
};
