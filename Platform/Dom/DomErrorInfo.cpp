#include "Dom/DomErrorInfo.h"

#include "Xml/TextConversion.h"

#include <atlcomcli.h>

namespace OvPlatform {

HRESULT Failed(HRESULT result, std::string_view reason) noexcept {
    CComPtr<ICreateErrorInfo> made;
    CComPtr<IErrorInfo> info;
    if (FAILED(::CreateErrorInfo(&made))) return result;
    CComBSTR text;
    text.Attach(ToBstr(reason));
    if (SUCCEEDED(made->SetDescription(text)) && SUCCEEDED(made->QueryInterface(&info)))
        ::SetErrorInfo(0, info);
    return result;
}

} // namespace OvPlatform
