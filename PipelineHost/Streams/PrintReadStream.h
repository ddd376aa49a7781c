#pragma once

#include "Common/ComObject.h"
#include "Streams/ByteReader.h"

#include <filterpipeline.h>

namespace OvPipeline {

/// The pipeline's read stream over any bytes. A read that fails is noted for the calling thread.
class PrintReadStream final : public ComObject<IPrintReadStream> {
public:
    explicit PrintReadStream(std::unique_ptr<ByteReader> reader) : m_reader(std::move(reader)) {}

    HRESULT STDMETHODCALLTYPE Seek(LONGLONG offset, DWORD origin, ULONGLONG* newPosition) override;
    HRESULT STDMETHODCALLTYPE ReadBytes(void* bytes, ULONG wanted, ULONG* read, BOOL* endOfFile) override;

private:
    ~PrintReadStream() override = default;

    std::unique_ptr<ByteReader> m_reader;
};

/// A stream anew, at the start of the content, with each call.
class ContentStreamFactory final : public ComObject<IPrintReadStreamFactory> {
public:
    explicit ContentStreamFactory(std::shared_ptr<const Content> content) : m_content(std::move(content)) {}

    HRESULT STDMETHODCALLTYPE GetStream(IPrintReadStream** stream) override;

private:
    ~ContentStreamFactory() override = default;

    std::shared_ptr<const Content> m_content;
};

/// A text or document that is held in memory.
class MemoryContent final : public Content {
public:
    explicit MemoryContent(std::string bytes)
        : m_bytes(std::make_shared<const std::string>(std::move(bytes))) {}

    std::unique_ptr<ByteReader> Open() const override;
    std::uint64_t Identity() const override { return reinterpret_cast<std::uintptr_t>(m_bytes.get()); }

private:
    std::shared_ptr<const std::string> m_bytes;
};

} // namespace OvPipeline
