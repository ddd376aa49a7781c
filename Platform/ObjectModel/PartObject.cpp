#include "ObjectModel/PartObject.h"

#include "Package/OpcUri.h"
#include "Package/PartName.h"
#include "Xml/TextConversion.h"

#include <atlcomcli.h>

#include <atomic>

namespace OvPlatform {

namespace {

std::atomic<std::size_t> renames{0};

} // namespace

std::string PartNameOf(IOpcPartUri* uri) {
    CComBSTR text;
    Require(uri->GetRawUri(&text), "a part", "its name cannot be had");
    std::string name;
    if (!text.m_str || !AppendUtf8(name, ViewOf(text.m_str)))
        throw PackageError(OPC_E_NONCONFORMING_URI, "a part", "it has no name");
    CheckPartName(name);
    if (IsRelationshipsPartName(name))
        throw PackageError(OPC_E_NONCONFORMING_URI, name, "the name is that of a relationships part");
    return name;
}

std::string PartNameOf(IXpsOMPart* part) {
    CComPtr<IOpcPartUri> uri;
    Require(part->GetPartName(&uri), "a part", "its name cannot be had");
    return PartNameOf(uri);
}

std::size_t RenameCount() noexcept { return renames; }

void CountRename() noexcept { ++renames; }

HRESULT GivePartUri(const std::string& name, IOpcPartUri** uri) noexcept {
    return ModelCall(uri, [&] { return CreateOpcPartUri(name, uri); });
}

HRESULT TakePartName(IOpcPartUri* uri, std::string& name) noexcept {
    if (uri == nullptr) return E_POINTER;
    return ModelCall([&] {
        name = PartNameOf(uri);
        CountRename();
        return S_OK;
    });
}

} // namespace OvPlatform
