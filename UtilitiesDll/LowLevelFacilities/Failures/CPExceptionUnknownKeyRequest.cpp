#include "LowLevelFacilities/Failures/CPExceptionUnknownKeyRequest.h"

CPExceptionUnknownKeyRequest::CPExceptionUnknownKeyRequest(std::string&& message, unsigned int lastError,
                                                           DebugContextCopy context)
    : CPException(std::move(message), lastError, std::move(context)) {}

CPExceptionUnknownKeyRequest::~CPExceptionUnknownKeyRequest() = default;

std::string CPExceptionUnknownKeyRequest::getExceptionType() const { return "CPExceptionUnknownKeyRequest"; }
