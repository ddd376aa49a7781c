#pragma once

#include "LowLevelFacilities/Failures/CPException.h"

/// A call of the operating system that failed.
class OV_UTILITIES_API CPExceptionOSApiError : public CPException {
public:
    CPExceptionOSApiError(const char* message, unsigned int lastError, DebugContextCopy context);
    ~CPExceptionOSApiError() override;

    [[nodiscard]] std::string getExceptionType() const override;
};
