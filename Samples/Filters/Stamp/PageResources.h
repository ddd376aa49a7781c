#pragma once

#include "AnnotationMarkup.h"

#include <FontsAndImages/GdiDeviceContext.h>
#include <XpsParts/IResWriter.h>

#include <filterpipeline.h>

#include <string>

/// The font for texts in one face: a subset with the characters that they need, cut when it is written.
class FontResource final : public IResWriter {
public:
    FontResource(GdiDeviceContext& context, const PageAnnotation& annotation);

    /// Throws CPExceptionInvalidArgument, with words, for a font that may not be embedded or cannot be cut.
    HRESULT WriteResource(IUnknown* newPart, IPrintWriteStream* stream) override;
    HRESULT GetKey(BSTR* key) override;
    HRESULT GetUri(BSTR* uri) override;
    IID GetPartIid() override;

private:
    GdiDeviceContext& m_context;
    const PageAnnotation& m_annotation;
};

/// A picture out of a file, in a form that pages can hold: JPEG, PNG and TIFF as they are, all others as PNG.
class PictureResource final : public IResWriter {
public:
    /// Reads the file, as a whole: it becomes a part. Throws CPExceptionInvalidArgument, with words, for one
    /// that is no picture or cannot be read.
    PictureResource(const CXString& file, const CXString& partNameWithoutExtension);

    HRESULT WriteResource(IUnknown* newPart, IPrintWriteStream* stream) override;
    HRESULT GetKey(BSTR* key) override;
    HRESULT GetUri(BSTR* uri) override;
    IID GetPartIid() override;

    const AnnotationMarkup::Picture& Picture() const { return m_picture; }

private:
    void ReadSize(const CXString& file);

    std::string m_bytes;
    const wchar_t* m_contentType = nullptr;
    AnnotationMarkup::Picture m_picture;
};
