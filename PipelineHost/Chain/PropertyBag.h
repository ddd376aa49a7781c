#pragma once

#include "Common/ComObject.h"

#include <atlcomcli.h>
#include <filterpipeline.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace OvPipeline {

/// The property bag that the filters of a job share. A name that is not there gives E_ELEMENT_NOT_FOUND; a
/// name that is added again gets the new value. Any thread.
class PropertyBag final : public ComObject<IPrintPipelinePropertyBag> {
public:
    HRESULT STDMETHODCALLTYPE AddProperty(PCWSTR name, const VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE GetProperty(PCWSTR name, VARIANT* value) override;
    BOOL STDMETHODCALLTYPE DeleteProperty(PCWSTR name) override;

    /// The same properties in a bag of its own.
    CComPtr<PropertyBag> Clone();

    static CComPtr<PropertyBag> Make() {
        CComPtr<PropertyBag> bag;
        bag.Attach(new PropertyBag);
        return bag;
    }

private:
    PropertyBag() = default;
    ~PropertyBag() override = default;

    /// Never changed once it stands in the bag.
    struct Value {
        explicit Value(const VARIANT& from);
        Value(const Value&) = delete;
        Value& operator=(const Value&) = delete;
        ~Value();
        VARIANT variant;
    };

    std::mutex m_mutex;
    std::map<std::wstring, std::shared_ptr<const Value>> m_values;
};

} // namespace OvPipeline
