#pragma once

#include "LowLevelFacilities/Failures/CPException.h"

/// A malformed configuration document.
class OV_UTILITIES_API CPExceptionXMLConfigurationFileParseFailed : public CPException {
public:
    CPExceptionXMLConfigurationFileParseFailed(std::string&& message, unsigned int lastError,
                                               DebugContextCopy context);
    ~CPExceptionXMLConfigurationFileParseFailed() override;

    [[nodiscard]] std::string getExceptionType() const override;
};
