#pragma once

#include "LowLevelFacilities/Failures/CPException.h"

/// More format arguments than specifiers.
class OV_UTILITIES_API CPExceptionTooManyArguments : public CPException {
public:
    CPExceptionTooManyArguments(std::string&& message, unsigned int lastError, DebugContextCopy context);
    ~CPExceptionTooManyArguments() override;

    [[nodiscard]] std::string getExceptionType() const override;
};
