#include "ObjectModel/ModelCall.h"

#include "Package/PartName.h"
#include "System/FileError.h"
#include "System/Thread.h"
#include "Xml/TextConversion.h"

#include <atlcomcli.h>
#include <oleauto.h>

#include <new>

namespace OvPlatform {

namespace {

// Where it cannot be told, the result must do.
HRESULT Tell(HRESULT result, const char* what) {
    CComPtr<ICreateErrorInfo> record;
    const CComBSTR text = [what] {
        CComBSTR made;
        made.Attach(ToBstr(what));
        return made;
    }();
    if (SUCCEEDED(CreateErrorInfo(&record)) && SUCCEEDED(record->SetDescription(text.m_str)))
        if (const CComQIPtr<IErrorInfo> told(record); told) SetErrorInfo(0, told);
    return result;
}

} // namespace

HRESULT ModelFailure() noexcept {
    try {
        throw;
    } catch (const PackageError& error) {
        return Tell(error.Result(), error.what());
    } catch (const PartNameError& error) {
        return Tell(error.Result(), error.what());
    } catch (const FileError& error) {
        return Tell(error.Result(), error.what());
    } catch (const ThreadError& error) {
        return Tell(error.Result(), error.what());
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

} // namespace OvPlatform
