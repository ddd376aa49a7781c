#pragma once

#include "Dom/Dispatch.h"

#include <msxml6.h>

#include <string>

namespace OvPlatform {

class DomDocument;

/// A document as a stream. Reading gives its text, in the encoding that its declaration names, as it is when
/// reading begins at the start. What is written is a new text for the document: it is parsed when the writer
/// seeks, commits or releases the stream, or when the document is used. An interface of the document: its
/// identity is the document's, and while it is held every query gives the same stream.
class DomStream final : public IStream {
public:
    explicit DomStream(DomDocument& document) noexcept;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return m_count.Increment(); }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE Read(void* target, ULONG count, ULONG* read) override;
    HRESULT STDMETHODCALLTYPE Write(const void* source, ULONG count, ULONG* written) override;
    /// E_FAIL if what was written is no document.
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) override;
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
    HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                                     ULARGE_INTEGER* written) override;
    HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Revert() override;
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return STG_E_INVALIDFUNCTION;
    }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return STG_E_INVALIDFUNCTION;
    }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* stat, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override;

    /// Parses what was written, if anything was. S_FALSE if it is no document; the document is then empty.
    HRESULT TakeWritten();
    /// The document has another content.
    void Forget() noexcept { m_isCurrent = false; }

private:
    ~DomStream();
    HRESULT EnsureText();
    HRESULT SeekTo(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition);

    ReferenceCount m_count;
    DomDocument& m_document;
    std::string m_text;
    std::uint64_t m_version = 0;
    bool m_isCurrent = false;
    bool m_isWritten = false;
    std::size_t m_position = 0;
};

} // namespace OvPlatform
