#include "LowLevelFacilities/Failures/CPExceptionXMLConfigurationFileParseFailed.h"

CPExceptionXMLConfigurationFileParseFailed::CPExceptionXMLConfigurationFileParseFailed(
    std::string&& message, unsigned int lastError, DebugContextCopy context)
    : CPException(std::move(message), lastError, std::move(context)) {}

CPExceptionXMLConfigurationFileParseFailed::~CPExceptionXMLConfigurationFileParseFailed() = default;

std::string CPExceptionXMLConfigurationFileParseFailed::getExceptionType() const {
    return "CPExceptionXMLConfigurationFileParseFailed";
}
