#include "LowLevelFacilities/Failures/CPExceptionTooManyArguments.h"

CPExceptionTooManyArguments::CPExceptionTooManyArguments(std::string&& message, unsigned int lastError,
                                                         DebugContextCopy context)
    : CPException(std::move(message), lastError, std::move(context)) {}

CPExceptionTooManyArguments::~CPExceptionTooManyArguments() = default;

std::string CPExceptionTooManyArguments::getExceptionType() const { return "CPExceptionTooManyArguments"; }
