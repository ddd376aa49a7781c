#pragma once

#include "Com/CountedObject.h"

#include <libxml/parser.h>
#include <msxml6.h>

namespace OvPlatform {

/// Where a reader stands. Outside a parse it stands nowhere: line and column are 0.
class SaxLocator final : public CountedObject<ISAXLocator> {
public:
    SaxLocator() = default;

    void Follow(const xmlParserCtxt* parser) noexcept { m_parser = parser; }

    HRESULT STDMETHODCALLTYPE getColumnNumber(int* column) override;
    HRESULT STDMETHODCALLTYPE getLineNumber(int* line) override;
    HRESULT STDMETHODCALLTYPE getPublicId(const wchar_t** publicId) override;
    HRESULT STDMETHODCALLTYPE getSystemId(const wchar_t** systemId) override;

private:
    ~SaxLocator() override = default;

    const xmlParserCtxt* m_parser = nullptr;
};

} // namespace OvPlatform
