#pragma once

#include "Dom/Dispatch.h"

#include <libxml/parser.h>
#include <msxml6.h>

namespace OvPlatform {

/// Where a reader stands. Outside a parse it stands nowhere: line and column are 0.
class SaxLocator final : public ISAXLocator {
public:
    SaxLocator() = default;
    SaxLocator(const SaxLocator&) = delete;
    SaxLocator& operator=(const SaxLocator&) = delete;

    void Follow(const xmlParserCtxt* parser) noexcept { m_parser = parser; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return m_references.Increment(); }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE getColumnNumber(int* column) override;
    HRESULT STDMETHODCALLTYPE getLineNumber(int* line) override;
    HRESULT STDMETHODCALLTYPE getPublicId(const wchar_t** publicId) override;
    HRESULT STDMETHODCALLTYPE getSystemId(const wchar_t** systemId) override;

private:
    ~SaxLocator() = default;

    ReferenceCount m_references;
    const xmlParserCtxt* m_parser = nullptr;
};

} // namespace OvPlatform
