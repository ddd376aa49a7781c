#pragma once

#include "Chain/FilterSpec.h"

#include <filterpipeline.h>

#include <memory>

namespace OvPipeline {

/// A loaded module. It is unloaded with the last reference, where it says that it can be.
class FilterModule {
public:
    /// Loads the module that a spec names. A name without a folder is looked for beside the configuration, in
    /// the folders of OV_FILTERS, beside the program and in its lib folder; "Name.dll" and "Name" also find
    /// "Name.so" and "libName.so", so that one configuration serves all systems. Throws HostError.
    static std::shared_ptr<FilterModule> Load(const FilterSpec& spec);

    FilterModule(const FilterModule&) = delete;
    FilterModule& operator=(const FilterModule&) = delete;
    ~FilterModule();

    /// A new filter, by the module's class factory, or straight from DllGetClassObject as older modules have
    /// it. Throws HostError, also for what the module throws.
    CComPtr<IPrintPipelineFilter> MakeFilter(const GUID& clsid) const;

    /// Lets a service module fill the bag. Throws HostError where it does not export how.
    void PopulateServices(IPrintPipelinePropertyBag* bag) const;

    const std::string& Path() const { return m_path; }

private:
    FilterModule(std::string path, void* handle, std::function<IPrintPipelineFilter*()> maker = {})
        : m_path(std::move(path)), m_handle(handle), m_maker(std::move(maker)) {}

    template <class Function>
    Function Find(const char* name) const;
    /// As MakeFilter, by DllGetClassObject; a failure as its result.
    HRESULT MakeByClass(const GUID& clsid, CComPtr<IPrintPipelineFilter>& filter) const;

    std::string m_path;
    void* m_handle; // null where a maker takes the module's place
    std::function<IPrintPipelineFilter*()> m_maker;
};

} // namespace OvPipeline
