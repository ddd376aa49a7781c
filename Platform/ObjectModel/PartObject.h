#pragma once

#include "Com/CountedObject.h"
#include "ObjectModel/ModelCall.h"

#include <msopc.h>
#include <xpsobjectmodel.h>

#include <cstddef>
#include <string>

namespace OvPlatform {

template <>
struct ExtendedInterface<IXpsOMResource> {
    using Type = IXpsOMPart;
};
template <>
struct ExtendedInterface<IXpsOMDocument> {
    using Type = IXpsOMPart;
};
template <>
struct ExtendedInterface<IXpsOMDocumentSequence> {
    using Type = IXpsOMPart;
};
template <>
struct ExtendedInterface<IXpsOMCoreProperties> {
    using Type = IXpsOMPart;
};

/// The part name that a URI says. Throws PackageError for what no part may be called.
std::string PartNameOf(IOpcPartUri* uri);
/// The name of a part of the model. Throws PackageError.
std::string PartNameOf(IXpsOMPart* part);

/// Goes up whenever any part of a model gets another name: who keeps parts by their names looks again.
std::size_t RenameCount() noexcept;
void CountRename() noexcept;

/// What GetPartName answers.
HRESULT GivePartUri(const std::string& name, IOpcPartUri** uri) noexcept;

/// Takes another name; the old one stays where it is refused.
HRESULT TakePartName(IOpcPartUri* uri, std::string& name) noexcept;

} // namespace OvPlatform
