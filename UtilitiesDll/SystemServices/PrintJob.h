#pragma once

#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/ByteBuffer.h"

#include <windows.h>

class OV_UTILITIES_API PrintJob {
public:
    PrintJob() = delete;

    /// The spooler's record of a job at that level. The record points into the buffer, so a copy of the
    /// buffer is not a record; a moved one is. On failure the buffer is empty and the last error set, or,
    /// with throwOnFailure, CPExceptionOSApiError is thrown.
    [[nodiscard]] static ByteBuffer GetJobInfo(HANDLE printer, unsigned int jobId, unsigned int level,
                                               bool throwOnFailure);
};
