#include "Xml/DocumentBytes.h"

#include "System/InputFile.h"
#include "Xml/DocumentBound.h"
#include "Xml/TextConversion.h"

#include <atlcomcli.h>
#include <msxml6.h>
#include <streamcopy.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace OvPlatform {

namespace {

/// One more than a document may have: whoever parses them sees that they are too many.
constexpr std::size_t mostBytes = mostDocumentBytes + 1;
constexpr ULONG block = 64 * 1024;

using File = std::unique_ptr<std::FILE, decltype(&std::fclose)>;

HRESULT ResultOfErrno() noexcept {
    switch (errno) {
    case ENOENT:
    case ENOTDIR:
    case EISDIR:
        return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    case EACCES:
    case EPERM:
        return E_ACCESSDENIED;
    case ENOSPC:
        return HRESULT_FROM_WIN32(ERROR_DISK_FULL);
    default:
        return E_FAIL;
    }
}

IUnknown* ObjectIn(const VARIANT& source) noexcept {
    switch (source.vt) {
    case VT_UNKNOWN:
    case VT_DISPATCH:
        return source.punkVal;
    case VT_UNKNOWN | VT_BYREF:
    case VT_DISPATCH | VT_BYREF:
        return source.ppunkVal != nullptr ? *source.ppunkVal : nullptr;
    default:
        return nullptr;
    }
}

/// The path that a caller named, in the system's own spelling.
bool PathOf(BSTR name, std::string& path) {
    if (!AppendUtf8(path, ViewOf(name))) return false;
    constexpr std::string_view scheme = "file://";
    if (path.starts_with(scheme)) path.erase(0, scheme.size());
    return path.find("://") == std::string::npos;
}

} // namespace

const VARIANT& DocumentBytes::Value(const VARIANT& variant) noexcept {
    const VARIANT* value = &variant;
    for (int depth = 0; depth < 4 && value->vt == (VT_BYREF | VT_VARIANT) && value->pvarVal != nullptr;
         ++depth)
        value = value->pvarVal;
    return *value;
}

HRESULT DocumentBytes::Read(const VARIANT& source, std::string& bytes) {
    switch (source.vt) {
    case VT_ARRAY | VT_UI1: {
        if (source.parray == nullptr) return E_INVALIDARG;
        void* data = nullptr;
        if (const HRESULT result = ::SafeArrayAccessData(source.parray, &data); FAILED(result)) return result;
        bytes.assign(static_cast<const char*>(data),
                     std::min<std::size_t>(source.parray->rgsabound[0].cElements, mostBytes));
        ::SafeArrayUnaccessData(source.parray);
        return S_OK;
    }
    default: {
        CComPtr<ISequentialStream> stream;
        const HRESULT result = FindStream(source, stream);
        if (FAILED(result)) return result;
        return stream ? ReadStream(stream, bytes) : E_INVALIDARG;
    }
    }
}

HRESULT DocumentBytes::ReadStream(ISequentialStream* stream, std::string& bytes) {
    const CComQIPtr<IStream> sized(stream);
    STATSTG stat = {};
    std::size_t expected = block;
    if (sized && SUCCEEDED(sized->Stat(&stat, STATFLAG_NONAME)) && stat.cbSize.QuadPart < mostBytes)
        expected = static_cast<std::size_t>(stat.cbSize.QuadPart) + 1;
    std::size_t used = 0;
    bytes.resize(std::min(expected, mostBytes));
    while (used < mostBytes) {
        // The size is only a hint: what is read counts. One byte more tells that it was right, without room
        // that whoever keeps the bytes would keep with them.
        if (used == bytes.size()) bytes.resize(std::min(used + block, mostBytes));
        ULONG read = 0;
        const auto room = static_cast<ULONG>(bytes.size() - used);
        const HRESULT result = stream->Read(bytes.data() + used, room, &read);
        if (FAILED(result)) return result;
        if (read > room) return E_UNEXPECTED;
        used += read;
        if (read == 0) break;
    }
    bytes.resize(used);
    return S_OK;
}

HRESULT DocumentBytes::FindStream(const VARIANT& source, CComPtr<ISequentialStream>& stream) {
    stream.Release();
    IUnknown* const object = ObjectIn(source);
    if (object == nullptr) return S_OK;
    CComPtr<IStream> sized;
    if (FAILED(object->QueryInterface(&sized))) {
        object->QueryInterface(&stream);
        return S_OK;
    }
    // A document itself is read from its start, a stream from where it stands.
    const CComQIPtr<IXMLDOMDocument> document(object);
    if (document && static_cast<IUnknown*>(sized) != object)
        if (const HRESULT result = sized->Seek({}, STREAM_SEEK_SET, nullptr); FAILED(result)) return result;
    stream = static_cast<ISequentialStream*>(sized.p);
    return S_OK;
}

HRESULT DocumentBytes::ReadFile(BSTR name, std::string& bytes, std::string& reason) {
    std::string path;
    if (!PathOf(name, path)) {
        reason = "Documents are not fetched from the network: " + path;
        return E_ACCESSDENIED;
    }
    const File file(OpenInputFile(path), &std::fclose);
    if (file == nullptr) {
        const HRESULT result = ResultOfErrno();
        reason = "The file cannot be read: " + path + ": " + std::strerror(errno);
        return result;
    }
    std::size_t used = 0;
    while (used < mostBytes) {
        bytes.resize(std::min<std::size_t>(used + block, mostBytes));
        const std::size_t read = std::fread(bytes.data() + used, 1, bytes.size() - used, file.get());
        if (read == 0) break;
        used += read;
    }
    bytes.resize(used);
    if (std::ferror(file.get()) == 0) return S_OK;
    reason = "The file cannot be read: " + path;
    return E_FAIL;
}

HRESULT DocumentBytes::WriteFile(BSTR name, const std::string& bytes) {
    std::string path;
    if (!PathOf(name, path) || path.empty()) return E_INVALIDARG;
    File file(std::fopen(path.c_str(), "wb"), &std::fclose);
    if (file == nullptr) return ResultOfErrno();
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
    const bool closed = std::fclose(file.release()) == 0;
    if (written && closed) return S_OK;
    const HRESULT result = ResultOfErrno();
    std::remove(path.c_str());
    return result;
}

HRESULT DocumentBytes::WriteStream(IUnknown* target, const std::string& bytes) {
    CComPtr<ISequentialStream> stream;
    if (target == nullptr || FAILED(target->QueryInterface(&stream))) return E_INVALIDARG;
    ULONGLONG written = 0;
    return WriteWhole(stream, bytes.data(), bytes.size(), &written);
}

} // namespace OvPlatform
