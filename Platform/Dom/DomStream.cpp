#include "Dom/DomStream.h"

#include "Com/Guarded.h"
#include "Dom/DomDocument.h"
#include "Dom/DomSerializer.h"
#include "Xml/DocumentBound.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace OvPlatform {

DomStream::DomStream(DomDocument& document) noexcept : StreamBase(STGM_READWRITE), m_document(document) {
    m_document.AddRef();
    m_isCurrent = m_document.TakeLastText(m_text, m_version);
}

DomStream::~DomStream() {
    try {
        TakeWritten();
    } catch (const std::bad_alloc&) {
        // The document is left as it was: nobody is there to be told.
    }
    m_document.StreamEnded();
    if (m_isCurrent && !m_passedOver) m_document.KeepLastText(std::move(m_text), m_version);
    m_document.Release();
}

HRESULT STDMETHODCALLTYPE DomStream::QueryInterface(REFIID riid, void** object) {
    return m_document.QueryInterface(riid, object);
}

HRESULT DomStream::TakeWritten() {
    if (!m_isWritten) return S_OK;
    m_isWritten = false;
    m_isCurrent = false;
    const std::string written = std::exchange(m_text, {});
    m_position = 0;
    return m_document.LoadWritten(written);
}

void DomStream::PassOver(const TreeShare& text) noexcept {
    m_passedOver = text;
    m_version = m_document.Version();
    m_isCurrent = true;
}

HRESULT DomStream::EnsurePlace() {
    if (!m_passedOver) return S_OK;
    if (!m_passedOver.Write(m_text)) return E_FAIL;
    m_passedOver = {};
    m_position = m_text.size();
    return S_OK;
}

HRESULT DomStream::EnsureText() {
    if (m_isWritten) return S_OK;
    if (const HRESULT result = EnsurePlace(); FAILED(result)) return result;
    // In the middle the reader goes on with the text that he began with.
    const bool isStale = m_version != m_document.Version();
    if (m_isCurrent && (!isStale || m_position != 0)) return S_OK;
    if (!m_document.Write(m_text)) return E_FAIL;
    m_version = m_document.Version();
    m_isCurrent = true;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE DomStream::Read(void* target, ULONG count, ULONG* read) {
    if (read != nullptr) *read = 0;
    return Guarded([&]() -> HRESULT {
        if (target == nullptr) return STG_E_INVALIDPOINTER;
        if (m_isWritten) return S_FALSE; // the writer stands at the end
        if (m_passedOver && m_isCurrent) return count == 0 ? S_OK : S_FALSE;
        if (const HRESULT result = EnsureText(); FAILED(result)) return result;
        const std::size_t left = m_text.size() - std::min(m_position, m_text.size());
        const std::size_t given = std::min<std::size_t>(left, count);
        if (given != 0) std::memcpy(target, m_text.data() + m_position, given);
        m_position += given;
        if (read != nullptr) *read = static_cast<ULONG>(given);
        return given == count ? S_OK : S_FALSE;
    });
}

HRESULT STDMETHODCALLTYPE DomStream::Write(const void* source, ULONG count, ULONG* written) {
    if (written != nullptr) *written = 0;
    return Guarded([&]() -> HRESULT {
        if (source == nullptr && count != 0) return STG_E_INVALIDPOINTER;
        if (count > mostDocumentBytes - (m_isWritten ? m_text.size() : 0)) return STG_E_MEDIUMFULL;
        if (!std::exchange(m_isWritten, true)) {
            m_passedOver = {};
            m_text.clear();
            m_isCurrent = false;
        }
        m_text.append(static_cast<const char*>(source), count);
        m_position = m_text.size();
        if (written != nullptr) *written = count;
        return S_OK;
    });
}

HRESULT DomStream::Size(std::size_t& size) {
    return OrOutOfMemory([&] {
        const HRESULT result = EnsureText();
        size = m_text.size();
        return result;
    });
}

HRESULT STDMETHODCALLTYPE DomStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) {
    // Who only asks where it stands goes on writing.
    const bool isQuestion = origin == STREAM_SEEK_CUR && move.QuadPart == 0;
    if (m_isWritten && !isQuestion && origin <= STREAM_SEEK_END) {
        const std::size_t position = m_position;
        if (const HRESULT result = Commit(STGC_DEFAULT); FAILED(result)) return result;
        m_position = position;
    }
    const bool isToStart = origin == STREAM_SEEK_SET && move.QuadPart == 0;
    if (!isToStart) {
        const HRESULT result = OrOutOfMemory([&] { return EnsurePlace(); });
        if (FAILED(result)) return result;
    }
    const HRESULT result = StreamBase::Seek(move, origin, newPosition);
    if (isToStart && m_passedOver && SUCCEEDED(result)) {
        m_passedOver = {};
        m_isCurrent = false;
    }
    return result;
}

HRESULT STDMETHODCALLTYPE DomStream::SetSize(ULARGE_INTEGER size) {
    return Guarded([&]() -> HRESULT {
        // A text is as long as it is; only a writer can take something back.
        if (m_isWritten && size.QuadPart < m_text.size()) {
            m_text.resize(static_cast<std::size_t>(size.QuadPart));
            m_position = m_text.size();
        }
        return S_OK;
    });
}

HRESULT STDMETHODCALLTYPE DomStream::Commit(DWORD) {
    return Guarded([&]() -> HRESULT {
        const HRESULT result = TakeWritten();
        return result == S_FALSE ? E_FAIL : result;
    });
}

HRESULT STDMETHODCALLTYPE DomStream::Revert() {
    return Guarded([&]() -> HRESULT {
        if (std::exchange(m_isWritten, false)) m_position = 0;
        return S_OK;
    });
}

HRESULT STDMETHODCALLTYPE DomStream::Clone(IStream** clone) {
    if (clone != nullptr) *clone = nullptr;
    return E_NOTIMPL;
}

} // namespace OvPlatform
