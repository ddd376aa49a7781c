#pragma once

#include <objidl.h>

#include <string>
#include <string_view>

namespace OvPlatform {

/// All that is left to read in the stream. Results of the stream pass through; E_OUTOFMEMORY beyond
/// MostDocumentBytes.
HRESULT ReadStreamBytes(IStream* stream, std::string& bytes);

/// Writes where the stream stands and leaves it at the end of what was written.
HRESULT WriteStreamBytes(IStream* stream, std::string_view bytes);

} // namespace OvPlatform
