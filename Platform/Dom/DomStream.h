#pragma once

#include "Com/CountedObject.h"
#include "Dom/SharedTree.h"

#include <msxml6.h>
#include <streambase.h>

#include <limits>
#include <string>

namespace OvPlatform {

class DomDocument;

/// A document as a stream. Reading gives its text, in the encoding that its declaration names, as it is when
/// reading begins at the start. What is written is a new text for the document: it is parsed when the writer
/// seeks, commits or releases the stream, or when the document is used. An interface of the document: its
/// identity is the document's, and while it is held every query gives the same stream.
class DomStream final : public StreamBase<FaultEntry> {
public:
    explicit DomStream(DomDocument& document) noexcept;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override;

    HRESULT STDMETHODCALLTYPE Read(void* target, ULONG count, ULONG* read) override;
    HRESULT STDMETHODCALLTYPE Write(const void* source, ULONG count, ULONG* written) override;
    /// E_FAIL if what was written is no document.
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) override;
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
    HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
    HRESULT STDMETHODCALLTYPE Revert() override;
    HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override;

    /// Parses what was written, if anything was. S_FALSE if it is no document; the document is then empty.
    HRESULT TakeWritten();
    /// The document has another content.
    void Forget() noexcept { m_isCurrent = false; }

    /// Whether a reader would get the document's text as it is now, from its beginning.
    bool IsAtStart() const noexcept { return !m_isWritten && !m_passedOver && m_position == 0; }
    /// Moves to the end as if the text had been read, which is that of `text`.
    void PassOver(const TreeShare& text) noexcept;

private:
    ~DomStream() override;
    HRESULT EnsureText();
    HRESULT EnsurePlace();
    HRESULT Size(std::size_t& size) override;
    /// All: the target may be this very stream.
    ULONG MostAtOnce() const override { return std::numeric_limits<ULONG>::max(); }

    DomDocument& m_document;
    TreeShare m_passedOver; ///< the stream stands at the end of its text, which was not written yet
    std::string m_text;
    std::uint64_t m_version = 0;
    bool m_isCurrent = false;
    bool m_isWritten = false;
};

} // namespace OvPlatform
