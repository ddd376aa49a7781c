#include "LowLevelFacilities/Failures/CPExceptionOSApiError.h"

CPExceptionOSApiError::CPExceptionOSApiError(const char* message, unsigned int lastError,
                                             DebugContextCopy context)
    : CPException(std::string(message == nullptr ? "" : message), lastError, std::move(context)) {}

CPExceptionOSApiError::~CPExceptionOSApiError() = default;

std::string CPExceptionOSApiError::getExceptionType() const { return "CPExceptionOSApiError"; }
