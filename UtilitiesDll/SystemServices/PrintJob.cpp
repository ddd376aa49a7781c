#include "SystemServices/PrintJob.h"

#include "LowLevelFacilities/Failures/CPExceptionOSApiError.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"
#include "SystemServices/SpoolerRecord.h"

#include <winspool.h>

ByteBuffer PrintJob::GetJobInfo(HANDLE printer, unsigned int jobId, unsigned int level, bool throwOnFailure) {
    const OperationScope operation("PrintJob::GetJobInfo");
    ByteBuffer info;
    const bool done = ReadSpoolerRecord(info, [=](BYTE* buffer, DWORD size, DWORD* needed) {
        return GetJobW(printer, jobId, level, buffer, size, needed);
    });
    if (!done && throwOnFailure) {
        ThrowFailure<CPExceptionOSApiError>([] { return "The spooler has no record of the job."; });
    }
    return info;
}
