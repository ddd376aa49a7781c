#pragma once

#include <filterpipeline.h>

/// One resource that a filter adds to pages, as the resource cache asks for it. Strings are BSTRs that the
/// caller frees.
class IResWriter {
public:
    virtual ~IResWriter() = default;

    /// Writes the resource's bytes. The stream is closed by the caller.
    virtual HRESULT WriteResource(IUnknown* newPart, IPrintWriteStream* stream) = 0;

    /// What the resource is known by: two writers with one key stand for one resource.
    virtual HRESULT GetKey(BSTR* key) = 0;

    /// The name that the part is to have in the package.
    virtual HRESULT GetUri(BSTR* uri) = 0;

    /// The kind of part to make, such as IPartFont.
    virtual IID GetPartIid() = 0;
};
