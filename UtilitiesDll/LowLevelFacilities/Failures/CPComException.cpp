#include "LowLevelFacilities/Failures/CPComException.h"

#include <cstdio>

CPComException::CPComException(std::string&& message, unsigned int lastError,
                               const DebugContextReference& context, HRESULT result)
    : CPException(std::move(message), lastError, context), m_result(result) {}

CPComException::~CPComException() = default;

std::string CPComException::getExceptionType() const { return "CPComException"; }

std::string CPComException::getLogString() const {
    char text[32];
    std::snprintf(text, sizeof text, " (HRESULT 0x%08X)", static_cast<unsigned int>(m_result));
    return CPException::getLogString() + text;
}
