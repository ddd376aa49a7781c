#pragma once

#include <msopc.h>

#include <string>

namespace OvPlatform {

// URIs of the package's root and of parts as published objects. They do not change, and may be used on any
// thread.

/// The URI of the root, "/".
HRESULT CreateOpcRootUri(IOpcUri** uri);

/// The URI of a part from a valid part name.
HRESULT CreateOpcPartUri(const std::string& name, IOpcPartUri** uri);

/// A relative reference.
HRESULT CreateRelativeUri(const std::string& reference, IUri** uri);

/// The part that a reference leads to from a source, as a URI. OPC_E_... where there is none.
HRESULT ResolveOpcPartUri(const std::string& source, const wchar_t* reference, IOpcPartUri** uri);

} // namespace OvPlatform
