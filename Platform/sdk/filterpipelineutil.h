#pragma once

// The published adapters from the pipeline's streams to ISequentialStream, for both builds.

#include <filterpipeline.h>
#include <objidl.h>

#include <atomic>

namespace pfp {

// One reference at birth, which its maker owns; holds a reference on the stream; answers for IUnknown and
// ISequentialStream only.
class SequentialStreamBase : public ISequentialStream {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
        if (!object) return E_POINTER;
        if (riid != __uuidof(IUnknown) && riid != __uuidof(ISequentialStream)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<ISequentialStream*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0) delete this;
        return left;
    }

protected:
    SequentialStreamBase() = default;
    virtual ~SequentialStreamBase() = default;

private:
    std::atomic<ULONG> m_references{1};
};

class PrintReadStreamToSeqStream final : public SequentialStreamBase {
public:
    explicit PrintReadStreamToSeqStream(IPrintReadStream* stream) : m_stream(stream) { m_stream->AddRef(); }

    // S_FALSE where the end came before the wanted count; the count is not optional.
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

// Its end closes the stream.
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
