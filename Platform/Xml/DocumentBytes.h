#pragma once

#include <atlcomcli.h>
#include <oleauto.h>

#include <string>

namespace OvPlatform {

/// Bytes from where a caller says they are, and to there.
class DocumentBytes {
public:
    /// What a variant holds, with references followed.
    static const VARIANT& Value(const VARIANT& variant) noexcept;

    /// From an array of bytes, from a stream's place to its end, or from a document. E_INVALIDARG for
    /// anything else. Of more bytes than a document may have, only so many that this shows.
    static HRESULT Read(const VARIANT& source, std::string& bytes);
    /// From a stream alone.
    static HRESULT ReadStream(ISequentialStream* stream, std::string& bytes);

    /// The stream that a variant holds, to be read from its place; of a document that is a stream, from its
    /// start. Null with S_OK for what is none; fails where the document does.
    static HRESULT FindStream(const VARIANT& source, CComPtr<ISequentialStream>& stream);

    /// A file by its path, or by a file: address. A failing result with `reason` if there is none; addresses
    /// on the network are refused.
    static HRESULT ReadFile(BSTR path, std::string& bytes, std::string& reason);

    static HRESULT WriteFile(BSTR path, const std::string& bytes);
    static HRESULT WriteStream(IUnknown* stream, const std::string& bytes);
};

} // namespace OvPlatform
