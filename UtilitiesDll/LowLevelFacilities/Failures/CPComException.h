#pragma once

#include "LowLevelFacilities/Failures/CPException.h"

#include <windows.h>

/// A failing HRESULT.
class OV_UTILITIES_API CPComException : public CPException {
public:
    CPComException(std::string&& message, unsigned int lastError, const DebugContextReference& context,
                   HRESULT result);
    ~CPComException() override;

    [[nodiscard]] HRESULT GetHresult() const noexcept { return m_result; }
    [[nodiscard]] std::string getExceptionType() const override;
    [[nodiscard]] std::string getLogString() const override;

private:
    HRESULT m_result;
};
