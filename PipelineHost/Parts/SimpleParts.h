#pragma once

#include "Parts/PartObject.h"

namespace OvPipeline {

class ImagePart final : public PartObject<IPartImage> {
public:
    using PartObject::PartObject;
    HRESULT STDMETHODCALLTYPE GetImageProperties(BSTR* contentType) override {
        return GetContentType(contentType);
    }
    HRESULT STDMETHODCALLTYPE SetImageContent(PCWSTR contentType) override {
        return SetContentType(contentType);
    }

private:
    ~ImagePart() override = default;
};

class ThumbnailPart final : public PartObject<IPartThumbnail> {
public:
    using PartObject::PartObject;
    HRESULT STDMETHODCALLTYPE GetThumbnailProperties(BSTR* contentType) override {
        return GetContentType(contentType);
    }
    HRESULT STDMETHODCALLTYPE SetThumbnailContent(PCWSTR contentType) override {
        return SetContentType(contentType);
    }

private:
    ~ThumbnailPart() override = default;
};

class PrintTicketPart final : public PartObject<IPartPrintTicket> {
public:
    using PartObject::PartObject;

private:
    ~PrintTicketPart() override = default;
};

class ColorProfilePart final : public PartObject<IPartColorProfile> {
public:
    using PartObject::PartObject;

private:
    ~ColorProfilePart() override = default;
};

class ResourceDictionaryPart final : public PartObject<IPartResourceDictionary> {
public:
    using PartObject::PartObject;

private:
    ~ResourceDictionaryPart() override = default;
};

/// A part that the published interfaces have no name for; it goes from filter to filter untouched.
class UnknownPart final : public PartObject<IPartBase> {
public:
    using PartObject::PartObject;

private:
    ~UnknownPart() override = default;
};

} // namespace OvPipeline
