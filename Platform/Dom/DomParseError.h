#pragma once

#include "Com/Dispatch.h"
#include "Xml/XmlFailure.h"

#include <msxml6.h>

namespace OvPlatform {

template <>
struct ExtendedInterface<IXMLDOMParseError2> {
    using Type = IXMLDOMParseError;
};

/// What the last parse of a document said. Without a failure its code is 0 and its texts are empty.
class DomParseError final : public Dispatch<CountedObject<IXMLDOMParseError2, ISupportErrorInfo>> {
public:
    explicit DomParseError(const XmlFailure& failure) : m_failure(failure) {}

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID riid) override;

    HRESULT STDMETHODCALLTYPE get_errorCode(LONG* errorCode) override;
    HRESULT STDMETHODCALLTYPE get_url(BSTR* url) override;
    HRESULT STDMETHODCALLTYPE get_reason(BSTR* reason) override;
    HRESULT STDMETHODCALLTYPE get_srcText(BSTR* source) override;
    HRESULT STDMETHODCALLTYPE get_line(LONG* line) override;
    HRESULT STDMETHODCALLTYPE get_linepos(LONG* position) override;
    HRESULT STDMETHODCALLTYPE get_filepos(LONG* position) override;
    HRESULT STDMETHODCALLTYPE get_errorXPath(BSTR* xpath) override;
    /// Only the first error of a text is looked for.
    HRESULT STDMETHODCALLTYPE get_allErrors(IXMLDOMParseErrorCollection** allErrors) override;
    HRESULT STDMETHODCALLTYPE errorParameters(LONG index, BSTR* parameter) override;
    HRESULT STDMETHODCALLTYPE get_errorParametersCount(LONG* count) override;

private:
    ~DomParseError() override = default;

    const XmlFailure m_failure;
};

} // namespace OvPlatform
