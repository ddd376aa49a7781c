#pragma once

#include "LowLevelFacilities/Failures/CPException.h"

/// A dictionary was asked for a key that it does not have.
class OV_UTILITIES_API CPExceptionUnknownKeyRequest : public CPException {
public:
    CPExceptionUnknownKeyRequest(std::string&& message, unsigned int lastError, DebugContextCopy context);
    ~CPExceptionUnknownKeyRequest() override;

    [[nodiscard]] std::string getExceptionType() const override;
};
