#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "Configuration/NativeXmlConfigurationFeatureSet.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <filterpipeline.h>

/// The administrator's configuration for filters.
class OV_FILTER_UTILITIES_API NativeXmlConfigurationFilterUtilities {
public:
    NativeXmlConfigurationFilterUtilities() = delete;

    /// Out of the pipeline's property bag alone; a pipeline without a driver's or a queue's bag has an empty
    /// configuration. Parses it at each call: a filter asks once a job. Throws only when memory is out. A
    /// fault of the configuration, of the device's description or of a bag is reported.
    static NativeXmlConfigurationFeatureSet
    CreateNativeXmlConfigurationFeatureSetFromPipelineProperties(IPrintPipelinePropertyBag& bag,
                                                                 const CXString& printerName);
};
