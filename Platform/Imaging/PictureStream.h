#pragma once

#include <windows.h>
#include <objidl.h>

#include <cstddef>

namespace OvPlatform {

/// Streams to read from, at their beginning; the caller's to release.

/// A regular file. The last error's result where it cannot be opened.
HRESULT OpenPictureFile(LPCWSTR name, IStream** stream);
/// Bytes that stay the caller's, and stay as long as the stream and its clones.
HRESULT OpenPictureMemory(const BYTE* bytes, std::size_t size, IStream** stream);

} // namespace OvPlatform
