#pragma once

#include "LowLevelFacilities/Failures/CPException.h"

/// A second entry under one key of a dictionary.
class OV_UTILITIES_API CPExceptionDuplicateDictionaryIndexEntry : public CPException {
public:
    CPExceptionDuplicateDictionaryIndexEntry(std::string&& message, unsigned int lastError,
                                             DebugContextCopy context);
    ~CPExceptionDuplicateDictionaryIndexEntry() override;

    [[nodiscard]] std::string getExceptionType() const override;
};
