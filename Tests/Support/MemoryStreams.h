#pragma once

#include "Support/ComFake.h"

#include <filterpipeline.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

/// The pipeline's stream over a text. Can be told to give few bytes at a time, or to fail.
class MemoryReadStream : public ComFake<IPrintReadStream> {
public:
    explicit MemoryReadStream(std::string bytes) : m_bytes(std::move(bytes)) {}

    ULONG mostBytesAtATime = (std::numeric_limits<ULONG>::max)();
    HRESULT seekResult = S_OK;
    HRESULT readResult = S_OK;
    /// Whether the end is told together with the last bytes, or only by a read that gives none.
    bool tellsEndOfFile = true;
    /// How many bytes more, or fewer, it claims to have when it is asked for its end.
    LONGLONG claimedMore = 0;

    HRESULT STDMETHODCALLTYPE Seek(LONGLONG offset, DWORD origin, ULONGLONG* newPosition) override {
        if (FAILED(seekResult)) return seekResult;
        const auto size = static_cast<LONGLONG>(m_bytes.size());
        const LONGLONG from = origin == STREAM_SEEK_END   ? size
                              : origin == STREAM_SEEK_CUR ? static_cast<LONGLONG>(m_position)
                                                          : 0;
        if (from + offset < 0 || from + offset > size) return E_INVALIDARG;
        m_position = static_cast<std::size_t>(from + offset);
        if (newPosition) *newPosition = m_position;
        if (newPosition && origin == STREAM_SEEK_END)
            *newPosition = static_cast<ULONGLONG>(from + offset + claimedMore);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ReadBytes(void* bytes, ULONG wanted, ULONG* read, BOOL* endOfFile) override {
        if (FAILED(readResult)) return readResult;
        const std::size_t count =
            (std::min)(std::size_t{(std::min)(wanted, mostBytesAtATime)}, m_bytes.size() - m_position);
        if (count) std::memcpy(bytes, m_bytes.data() + m_position, count);
        m_position += count;
        *read = static_cast<ULONG>(count);
        *endOfFile = tellsEndOfFile && m_position == m_bytes.size();
        return S_OK;
    }

private:
    std::string m_bytes;
    std::size_t m_position = 0;
};

/// Keeps what is written to it. Can be told to take few bytes at a time, or to fail.
class MemoryWriteStream : public ComFake<IPrintWriteStream> {
public:
    std::string bytes;
    int timesClosed = 0;
    HRESULT writeResult = S_OK;
    ULONG mostBytesAtATime = (std::numeric_limits<ULONG>::max)();

    HRESULT STDMETHODCALLTYPE WriteBytes(const void* data, ULONG count, ULONG* written) override {
        if (FAILED(writeResult)) return writeResult;
        count = (std::min)(count, mostBytesAtATime);
        bytes.append(static_cast<const char*>(data), count);
        if (written) *written = count;
        return S_OK;
    }
    void STDMETHODCALLTYPE Close() override { ++timesClosed; }
};

/// Gives a new stream over the text with each call.
class MemoryStreamFactory : public ComFake<IPrintReadStreamFactory> {
public:
    explicit MemoryStreamFactory(std::string bytes) : m_bytes(std::move(bytes)) {}

    HRESULT result = S_OK;

    HRESULT STDMETHODCALLTYPE GetStream(IPrintReadStream** stream) override {
        if (FAILED(result)) return result;
        return MakeFake<MemoryReadStream>(m_bytes).CopyTo(reinterpret_cast<MemoryReadStream**>(stream));
    }

private:
    std::string m_bytes;
};

/// All bytes of a stream from its start.
inline std::string ReadAll(IStream* stream) {
    std::string bytes;
    stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr);
    char chunk[4096];
    ULONG count = 0;
    while (SUCCEEDED(stream->Read(chunk, sizeof chunk, &count)) && count)
        bytes.append(chunk, count);
    return bytes;
}
