#include "Chain/FilterModule.h"

#include "Common/Installation.h"

#include <dlfcn.h>

#include <cstdlib>

namespace OvPipeline {

namespace {

using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
using CanUnloadNow = HRESULT(STDAPICALLTYPE*)();
using PopulateFilterServices = HRESULT(STDAPICALLTYPE*)(IPrintPipelinePropertyBag*);

std::vector<std::filesystem::path> SearchFolders(const FilterSpec& spec) {
    std::vector<std::filesystem::path> folders;
    if (!spec.beside.empty()) folders.push_back(spec.beside);
    if (const char* list = std::getenv("OV_FILTERS")) {
        std::string_view rest = list;
        while (!rest.empty()) {
            const std::size_t colon = rest.find(':');
            folders.emplace_back(rest.substr(0, colon));
            rest.remove_prefix(colon == std::string_view::npos ? rest.size() : colon + 1);
        }
    }
    for (auto& folder : Installation::FilterFolders())
        folders.push_back(std::move(folder));
    return folders;
}

std::vector<std::string> FileNames(const std::filesystem::path& module) {
    const std::string name = module.filename().string();
    const std::string stem =
        EqualIgnoringAsciiCase(module.extension().string(), ".dll") ? module.stem().string() : name;
    return {name, stem + ".so", "lib" + stem + ".so"};
}

std::string Joined(const auto& names) {
    std::string text;
    for (const auto& name : names)
        text += (text.empty() ? "" : ", ") + std::filesystem::path(name).string();
    return text;
}

std::string FindModule(const FilterSpec& spec) {
    const std::filesystem::path module = spec.module;
    std::vector<std::filesystem::path> folders;
    if (module.has_parent_path())
        folders = {module.is_absolute() || spec.beside.empty() ? module.parent_path()
                                                               : spec.beside / module.parent_path()};
    else
        folders = SearchFolders(spec);
    for (const auto& folder : folders)
        for (const std::string& name : FileNames(module)) {
            std::error_code error;
            const auto file = folder / name;
            if (std::filesystem::is_regular_file(file, error))
                return std::filesystem::absolute(file).string();
        }
    throw HostError(HRESULT_FROM_WIN32(ERROR_MOD_NOT_FOUND), spec.module,
                    "there is no module " + spec.module + "; looked for " + Joined(FileNames(module)) +
                        " in " + Joined(folders));
}

// What the module's code throws is a failure of the module.
template <class Call>
auto Calling(const std::string& module, Call&& call) {
    try {
        return call();
    } catch (const HostError&) {
        throw;
    } catch (...) {
        const HRESULT hr = NoteException();
        const std::string words = ThreadNote().problem;
        throw HostError(hr, module,
                        "the module " + module + " throws an exception" +
                            (words.empty() ? "" : ": " + words));
    }
}

} // namespace

std::shared_ptr<FilterModule> FilterModule::Load(const FilterSpec& spec) {
    if (spec.maker) return std::shared_ptr<FilterModule>(new FilterModule(spec.name, nullptr, spec.maker));
    const std::string path = FindModule(spec);
    void* handle = Calling(path, [&] { return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL); });
    if (handle == nullptr) {
        const char* problem = dlerror();
        throw HostError(HRESULT_FROM_WIN32(ERROR_BAD_EXE_FORMAT), path,
                        std::string("cannot load the module: ") + (problem != nullptr ? problem : path));
    }
    return std::shared_ptr<FilterModule>(new FilterModule(path, handle));
}

FilterModule::~FilterModule() {
    if (m_handle == nullptr) return;
    try {
        const auto canUnload = Find<CanUnloadNow>("DllCanUnloadNow");
        if (canUnload && canUnload() == S_OK) dlclose(m_handle);
    } catch (...) {
        // It stays: who cannot say whether it may go may not.
    }
}

template <class Function>
Function FilterModule::Find(const char* name) const {
    return reinterpret_cast<Function>(dlsym(m_handle, name));
}

CComPtr<IPrintPipelineFilter> FilterModule::MakeFilter(const GUID& clsid) const {
    CComPtr<IPrintPipelineFilter> filter;
    if (m_maker) {
        Calling(m_path, [&] { filter.Attach(m_maker()); });
        if (!filter) throw HostError(E_POINTER, m_path, "the filter " + m_path + " cannot be made");
        return filter;
    }
    HRESULT hr = Calling(m_path, [&] { return MakeByClass(clsid, filter); });
    if (SUCCEEDED(hr) && !filter) hr = E_POINTER;
    if (hr == CLASS_E_CLASSNOTAVAILABLE && clsid == GUID{})
        throw HostError(hr, m_path,
                        "the module " + m_path + " wants a class id: name it as MODULE,{class id}");
    if (FAILED(hr))
        throw HostError(hr, m_path,
                        "the module " + m_path + " makes no filter of the class " + GuidText(clsid));
    return filter;
}

HRESULT FilterModule::MakeByClass(const GUID& clsid, CComPtr<IPrintPipelineFilter>& filter) const {
    const auto getClassObject = Find<GetClassObject>("DllGetClassObject");
    if (!getClassObject)
        throw HostError(HRESULT_FROM_WIN32(ERROR_PROC_NOT_FOUND), m_path,
                        "the module " + m_path + " has no DllGetClassObject");
    CComPtr<IClassFactory> factory;
    HRESULT hr = getClassObject(clsid, __uuidof(IClassFactory), reinterpret_cast<void**>(&factory));
    if (SUCCEEDED(hr) && factory)
        hr = factory->CreateInstance(nullptr, __uuidof(IPrintPipelineFilter),
                                     reinterpret_cast<void**>(&filter));
    else if (hr != CLASS_E_CLASSNOTAVAILABLE)
        hr = getClassObject(clsid, __uuidof(IPrintPipelineFilter), reinterpret_cast<void**>(&filter));
    return hr;
}

void FilterModule::PopulateServices(IPrintPipelinePropertyBag* bag) const {
    const auto populate = Find<PopulateFilterServices>("DrvPopulateFilterServices");
    if (!populate)
        throw HostError(HRESULT_FROM_WIN32(ERROR_PROC_NOT_FOUND), m_path,
                        "the module " + m_path + " has no DrvPopulateFilterServices");
    if (const HRESULT hr = Calling(m_path, [&] { return populate(bag); }); FAILED(hr))
        throw HostError(hr, m_path, "the services of the module " + m_path + " cannot be had");
}

} // namespace OvPipeline
