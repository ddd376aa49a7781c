#pragma once

#include "LowLevelFacilities/WideStrings/ByteBuffer.h"

#include <windows.h>

/// Reads a record of the spooler whose size it tells only when asked: query(buffer, size, &needed) is one of
/// its functions with the other arguments bound. The record may grow between the calls, so the question is
/// put again a few times. False, with the last error set and the buffer empty, on failure.
template <typename Query>
bool ReadSpoolerRecord(ByteBuffer& record, Query query) {
    constexpr int attempts = 4;
    record.clear();
    for (int attempt = 0; attempt < attempts; ++attempt) {
        DWORD needed = 0;
        if (query(record.getLpbyte(), static_cast<DWORD>(record.size()), &needed)) return true;
        const DWORD error = GetLastError();
        if (error != ERROR_INSUFFICIENT_BUFFER || needed <= record.size()) {
            record.clear();
            SetLastError(error);
            return false;
        }
        record.assign(needed, 0);
    }
    record.clear();
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return false;
}
