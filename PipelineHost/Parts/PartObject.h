#pragma once

#include "Common/ComObject.h"
#include "Common/HostError.h"
#include "Common/Text.h"
#include "Parts/XpsVocabulary.h"
#include "Report/JobState.h"
#include "Streams/ByteReader.h"
#include "Streams/PrintReadStream.h"
#include "Streams/StreamMaker.h"

#include <Package/PackageReader.h>

#include <filterpipeline.h>

#include <memory>
#include <optional>
#include <string>

namespace OvPipeline {

/// What all parts of a job share.
struct PartContext {
    std::shared_ptr<const OvPlatform::PackageReader> package; // null where the job is no package
    std::shared_ptr<JobState> job;
    XpsFlavour flavour = XpsFlavour::Xps;
};
using SharedContext = std::shared_ptr<const PartContext>;

/// Where a part hangs that no published interface relates to anything.
struct Anchor {
    std::string source; // a part's name, or "/" for the package
    std::string type;   // of the relationship
};

/// The host's own view of a part.
struct PartCore {
    SharedContext context;
    PartKind kind = PartKind::Unknown;
    std::string name;
    std::string contentType;
    std::shared_ptr<const Content> content;
    EXpsCompressionOptions compression = Compression_Normal;
    const OvPlatform::PackagePart* stored = nullptr; // where it is a part of the job's package
    std::optional<Anchor> anchor;
    std::shared_ptr<const StreamMaker> holder; // the filter that took or made it last; null for the host

    /// A part of the package.
    static PartCore Of(const SharedContext& context, const OvPlatform::PackagePart& part, PartKind kind);
};

/// By which the host knows its own objects again.
/// clang-format off
MIDL_INTERFACE("7c0d5b0a-52b8-4d0e-9d4b-6f1a0c6e2f01")
IHostPart : public IUnknown {
public:
    virtual PartCore& STDMETHODCALLTYPE Core() = 0;

protected:
    ~IHostPart() = default;
};
// clang-format on

} // namespace OvPipeline

__CRT_UUID_DECL(OvPipeline::IHostPart, 0x7c0d5b0a, 0x52b8, 0x4d0e, 0x9d, 0x4b, 0x6f, 0x1a, 0x0c, 0x6e, 0x2f,
                0x01)

namespace OvPipeline {

/// What every part with bytes does. Belongs to one filter's thread at a time.
template <class Interface>
class PartObject : public ComObject<Interface, IHostPart> {
public:
    explicit PartObject(PartCore core) : m_core(std::move(core)) {}

    HRESULT STDMETHODCALLTYPE GetUri(BSTR* uri) override {
        if (uri == nullptr) return E_POINTER;
        *uri = nullptr;
        return Guarded([&] {
            *uri = NewBstr(m_core.name);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetStream(IPrintReadStream** stream) override {
        if (stream == nullptr) return E_POINTER;
        *stream = nullptr;
        return Guarded([&] {
            ThreadPart() = m_core.name;
            if (m_core.context->job->Log().IsOn()) m_core.context->job->Log().Step("reads", m_core.name);
            *stream = new PrintReadStream(OpenForFilter());
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetPartCompression(EXpsCompressionOptions* compression) override {
        if (compression == nullptr) return E_POINTER;
        return Guarded([&] {
            *compression = m_core.compression;
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE SetPartCompression(EXpsCompressionOptions compression) override {
        return Guarded([&] {
            if (compression < Compression_NotCompressed || compression > Compression_Fast)
                return E_INVALIDARG;
            m_core.compression = compression;
            return S_OK;
        });
    }
    PartCore& STDMETHODCALLTYPE Core() override { return m_core; }

protected:
    ~PartObject() override = default;

    /// The bytes as filters see them.
    virtual std::unique_ptr<ByteReader> OpenForFilter() { return m_core.content->Open(); }

    // Both content types and the calls that give and set them have one form.
    HRESULT GetContentType(BSTR* contentType) {
        if (contentType == nullptr) return E_POINTER;
        *contentType = nullptr;
        return Guarded([&] {
            *contentType = NewBstr(m_core.contentType);
            return S_OK;
        });
    }
    HRESULT SetContentType(PCWSTR contentType) {
        if (contentType == nullptr) return E_POINTER;
        return Guarded([&] {
            std::string text = Utf8(contentType);
            if (text.find('/') == std::string::npos) return E_INVALIDARG;
            m_core.contentType = std::move(text);
            return S_OK;
        });
    }

    PartCore m_core;
};

} // namespace OvPipeline
