#pragma once

// No published header, but what the stream bodies of both builds have in common. Header only, since the
// library's own streams need it beside the platform's.

#include <countedbase.h>
#include <streamcopy.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <memory>
#include <new>

namespace OvPlatform {

/// A stream over bytes in memory, but for the reading and the writing of them: where it stands, copying, and
/// what it refuses. Where Write is not overridden, it is read-only. Entry: what its operations begin with.
template <class Entry>
class StreamBase : public CountedBase<Entry, IStream> {
public:
    /// STG_E_ACCESSDENIED.
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG* written) override {
        if (written != nullptr) *written = 0;
        return STG_E_ACCESSDENIED;
    }
    /// STG_E_ACCESSDENIED.
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return STG_E_ACCESSDENIED; }

    /// The place may lie behind the end. A refused move tells where the stream stands, and leaves it there.
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) override {
        if (newPosition != nullptr) newPosition->QuadPart = m_position;
        if (const HRESULT refused = Entry::Enter(); FAILED(refused)) return refused;
        const Held held(*this);
        if (origin > STREAM_SEEK_END) return m_seekFailure;
        std::size_t start = origin == STREAM_SEEK_CUR ? m_position : 0;
        if (origin == STREAM_SEEK_END)
            if (const HRESULT result = Size(start); FAILED(result)) return result;
        const bool isBack = move.QuadPart < 0;
        const auto way = static_cast<std::size_t>(move.QuadPart);
        const std::size_t distance = isBack ? 0 - way : way;
        if (distance > (isBack ? start : static_cast<std::size_t>(LLONG_MAX) - start)) return m_seekFailure;
        m_position = start + way;
        if (newPosition != nullptr) newPosition->QuadPart = m_position;
        return S_OK;
    }

    /// No more than there is when it begins: the target may share these bytes, and make them grow.
    HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                                     ULARGE_INTEGER* written) override {
        if (read != nullptr) read->QuadPart = 0;
        if (written != nullptr) written->QuadPart = 0;
        if (target == nullptr) return STG_E_INVALIDPOINTER;
        std::size_t left = 0;
        if (const HRESULT result = Left(left); FAILED(result)) return result;
        count.QuadPart = (std::min)(count.QuadPart, ULONGLONG{left});
        const auto room = static_cast<ULONG>((std::min)(count.QuadPart, ULONGLONG{MostAtOnce()}));
        const std::unique_ptr<BYTE[]> buffer(new (std::nothrow) BYTE[room]);
        if (buffer == nullptr) return E_OUTOFMEMORY;
        // Nothing is held while the target writes: it may call back.
        const auto nextChunk = [&](ULONGLONG most, const void*& bytes, ULONGLONG& size) {
            ULONG got = 0;
            const HRESULT result =
                this->Read(buffer.get(), static_cast<ULONG>((std::min)(most, ULONGLONG{room})), &got);
            bytes = buffer.get();
            size = got;
            return result;
        };
        return CopyStream(nextChunk, target, count, read, written);
    }

    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return Entry::Enter(); }
    HRESULT STDMETHODCALLTYPE Revert() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return STG_E_INVALIDFUNCTION;
    }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return STG_E_INVALIDFUNCTION;
    }

    /// Type, size and mode; there is no name.
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* statistics, DWORD) override {
        if (statistics == nullptr) return STG_E_INVALIDPOINTER;
        if (const HRESULT refused = Entry::Enter(); FAILED(refused)) return refused;
        const Held held(*this);
        std::size_t size = 0;
        if (const HRESULT result = Size(size); FAILED(result)) return result;
        *statistics = STATSTG{};
        statistics->type = STGTY_STREAM;
        statistics->cbSize.QuadPart = size;
        statistics->grfMode = m_mode;
        return S_OK;
    }

protected:
    /// Mode: as Stat tells it.
    explicit StreamBase(DWORD mode, std::size_t position = 0, HRESULT seekFailure = STG_E_INVALIDFUNCTION)
        : m_position(position), m_mode(mode), m_seekFailure(seekFailure) {}

    /// How many bytes there are now. Called while the bytes are held.
    virtual HRESULT Size(std::size_t& size) = 0;
    /// Around what must see the bytes as they are at one moment, where others may change them.
    virtual void Hold() {}
    virtual void LetGo() {}
    /// By how many bytes to copy: all, where the target may write into the very bytes that are to be read.
    virtual ULONG MostAtOnce() const { return 16384; }

    /// From the place to the end.
    HRESULT Left(std::size_t& left) {
        const Held held(*this);
        if (const HRESULT result = Size(left); FAILED(result)) return result;
        left -= (std::min)(left, m_position);
        return S_OK;
    }

    std::size_t m_position;

private:
    class Held {
    public:
        explicit Held(StreamBase& stream) : m_stream(stream) { m_stream.Hold(); }
        ~Held() { m_stream.LetGo(); }
        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;

    private:
        StreamBase& m_stream;
    };

    const DWORD m_mode;
    const HRESULT m_seekFailure;
};

} // namespace OvPlatform
