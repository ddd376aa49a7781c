#pragma once

#include "LowLevelFacilities/Failures/CPException.h"

/// A caller's mistake.
class OV_UTILITIES_API CPExceptionInvalidArgument : public CPException {
public:
    CPExceptionInvalidArgument(std::string&& message, unsigned int lastError, DebugContextCopy context);
    CPExceptionInvalidArgument(const char* message, unsigned int lastError, DebugContextCopy context);
    ~CPExceptionInvalidArgument() override;

    [[nodiscard]] std::string getExceptionType() const override;
};
