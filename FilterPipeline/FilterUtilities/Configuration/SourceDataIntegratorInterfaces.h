#pragma once

#include <LowLevelFacilities/Strings/CPString.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

/// Keeps what a job was made from beside the job's diagnostic data. Implemented outside of this library.
class SourceDataIntegratorInterfaces {
public:
    virtual ~SourceDataIntegratorInterfaces() = default;
    /// The name is that of the file to keep the text in.
    virtual void AddSourceData(const CXString& fileName, const CPString& text) = 0;
};
