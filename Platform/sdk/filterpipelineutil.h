#pragma once

// The published adapters from the pipeline's streams to ISequentialStream, for both builds.

#include <countedbase.h>
#include <filterpipeline.h>

namespace pfp {

/// Each has one reference at birth, which its maker owns; holds a reference on the stream; answers for
/// IUnknown and ISequentialStream only.
using SequentialStreamBase = OvPlatform::CountedBase<OvPlatform::PlainEntry, ISequentialStream>;

class PrintReadStreamToSeqStream final : public SequentialStreamBase {
public:
    explicit PrintReadStreamToSeqStream(IPrintReadStream* stream) : m_stream(stream) { m_stream->AddRef(); }

    /// S_FALSE where the end came before the wanted count; the count is not optional.
    HRESULT STDMETHODCALLTYPE Read(void* bytes, ULONG wanted, ULONG* read) override {
        if (!read) return E_INVALIDARG;
        *read = 0;
        BOOL atEnd = FALSE;
        while (*read < wanted && !atEnd) {
            ULONG now = 0;
            const HRESULT hr =
                m_stream->ReadBytes(static_cast<unsigned char*>(bytes) + *read, wanted - *read, &now, &atEnd);
            if (FAILED(hr)) return hr;
            *read += now;
        }
        return *read < wanted ? S_FALSE : S_OK;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return E_NOTIMPL; }

private:
    ~PrintReadStreamToSeqStream() override { m_stream->Release(); }

    IPrintReadStream* m_stream;
};

/// Its end closes the stream.
class PrintWriteStreamToSeqStream final : public SequentialStreamBase {
public:
    explicit PrintWriteStreamToSeqStream(IPrintWriteStream* stream) : m_stream(stream) { m_stream->AddRef(); }

    HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG count, ULONG* written) override {
        return m_stream->WriteBytes(bytes, count, written);
    }

private:
    ~PrintWriteStreamToSeqStream() override {
        m_stream->Close();
        m_stream->Release();
    }

    IPrintWriteStream* m_stream;
};

} // namespace pfp
