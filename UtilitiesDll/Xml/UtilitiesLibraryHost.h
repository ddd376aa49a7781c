#pragma once

#include "LowLevelFacilities/Ownership/OvlUniquePtr.h"
#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"
#include "Xml/OrvelXmlParser.h"

#include <windows.h>

class OV_UTILITIES_API UtilitiesLibraryHost {
public:
    UtilitiesLibraryHost() = delete;

    /// Throws CPComException if the platform's DOM cannot be had.
    [[nodiscard]] static OvlUniquePtr<OrvelXmlParser> CreateMicrosoftXmlParser(const CXString& name,
                                                                               bool preserveWhiteSpace);

    /// To be called from within a catch block: reports the exception in flight, with a message that says what
    /// was going on, and gives the HRESULT that stands for it: that of a COM error, E_OUTOFMEMORY for
    /// std::bad_alloc, E_FAIL for another failure of this library or of the standard library, E_UNEXPECTED
    /// for anything else.
    static HRESULT CatchPossibleComErrorExceptionAndAssertUnreachable(const CPString& message) noexcept;
};
