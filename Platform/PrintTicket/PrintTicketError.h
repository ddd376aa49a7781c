#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

#include <stdexcept>
#include <string>

namespace OvPlatform {

/// A document that the ticket provider refuses. what() is one line in UTF-8: which document, where in it, and
/// what is wrong.
class OV_PLATFORM_API PrintTicketError : public std::runtime_error {
public:
    PrintTicketError(HRESULT result, const std::string& problem)
        : std::runtime_error(problem), m_result(result) {}

    /// E_PRINTTICKET_FORMAT, E_DELTA_PRINTTICKET_FORMAT or E_PRINTCAPABILITIES_FORMAT.
    HRESULT Result() const { return m_result; }

private:
    HRESULT m_result;
};

} // namespace OvPlatform
