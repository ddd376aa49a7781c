#pragma once

#include "Com/Dispatch.h"

#include <atlcomcli.h>
#include <printerextension.h>

#include <vector>

namespace OvPlatform {

/// The printers that an extension is told of. Never changed.
class ContextCollection final : public Dispatch<CountedObject<IPrinterExtensionContextCollection>> {
public:
    explicit ContextCollection(std::vector<CComPtr<IPrinterExtensionContext>> contexts)
        : m_contexts(std::move(contexts)) {}

    HRESULT STDMETHODCALLTYPE get_Count(ULONG* value) override;
    /// From 0; E_INVALIDARG behind the last.
    HRESULT STDMETHODCALLTYPE GetAt(ULONG value, IPrinterExtensionContext** context) override;
    /// For scripts: E_NOTIMPL.
    HRESULT STDMETHODCALLTYPE get__NewEnum(IUnknown** object) override;

private:
    ~ContextCollection() override = default;

    const std::vector<CComPtr<IPrinterExtensionContext>> m_contexts;
};

} // namespace OvPlatform
