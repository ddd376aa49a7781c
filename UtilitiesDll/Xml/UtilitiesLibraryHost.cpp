#include "Xml/UtilitiesLibraryHost.h"

#include "LowLevelFacilities/Failures/CPComException.h"
#include "Xml/MicrosoftXmlParser.h"

#include <atlcomcli.h>

#include <new>

OvlUniquePtr<OrvelXmlParser> UtilitiesLibraryHost::CreateMicrosoftXmlParser(const CXString& name,
                                                                            bool preserveWhiteSpace) {
    return OvlUniquePtr<OrvelXmlParser>(new MicrosoftXmlParser(name, preserveWhiteSpace));
}

HRESULT
UtilitiesLibraryHost::CatchPossibleComErrorExceptionAndAssertUnreachable(const CPString& message) noexcept {
    const DebugContextReference context(
        __FILE__, __LINE__, "UtilitiesLibraryHost::CatchPossibleComErrorExceptionAndAssertUnreachable");
    const auto report = [&](const std::exception& caught) {
        CPException::reportAndProcessCaughtException(caught, DebugContextReference(context),
                                                     message.utf8Bytes());
    };
    // The derived types stand before their bases.
    try {
        throw;
    } catch (const CPComException& caught) {
        report(caught);
        return caught.GetHresult();
    } catch (const std::bad_alloc& caught) {
        report(caught);
        return E_OUTOFMEMORY;
    } catch (const std::exception& caught) {
        report(caught);
        return E_FAIL;
    } catch (const CAtlException& caught) {
        CPException::reportAndProcessUnknownCaughtException(DebugContextReference(context),
                                                            message.utf8Bytes());
        return caught.m_hr;
    } catch (...) {
        CPException::reportAndProcessUnknownCaughtException(DebugContextReference(context),
                                                            message.utf8Bytes());
        return E_UNEXPECTED;
    }
}
