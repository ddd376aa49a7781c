#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"

CPExceptionInvalidArgument::CPExceptionInvalidArgument(std::string&& message, unsigned int lastError,
                                                       DebugContextCopy context)
    : CPException(std::move(message), lastError, std::move(context)) {}

CPExceptionInvalidArgument::CPExceptionInvalidArgument(const char* message, unsigned int lastError,
                                                       DebugContextCopy context)
    : CPException(std::string(message == nullptr ? "" : message), lastError, std::move(context)) {}

CPExceptionInvalidArgument::~CPExceptionInvalidArgument() = default;

std::string CPExceptionInvalidArgument::getExceptionType() const { return "CPExceptionInvalidArgument"; }
