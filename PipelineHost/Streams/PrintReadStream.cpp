#include "Streams/PrintReadStream.h"

#include "Common/HostError.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string>

namespace OvPipeline {

namespace {

class MemoryReader final : public ByteReader {
public:
    explicit MemoryReader(std::shared_ptr<const std::string> bytes) : m_bytes(std::move(bytes)) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        if (m_position >= m_bytes->size()) return 0;
        size = std::min<std::size_t>(size, m_bytes->size() - static_cast<std::size_t>(m_position));
        std::memcpy(buffer, m_bytes->data() + m_position, size);
        m_position += size;
        return size;
    }
    void Seek(std::uint64_t position) override { m_position = position; }
    std::uint64_t Position() const override { return m_position; }
    std::uint64_t Size() override { return m_bytes->size(); }
    bool AtEnd() override { return m_position >= m_bytes->size(); }

private:
    std::shared_ptr<const std::string> m_bytes;
    std::uint64_t m_position = 0;
};

} // namespace

HRESULT PrintReadStream::Seek(LONGLONG offset, DWORD origin, ULONGLONG* newPosition) {
    return Guarded([&] {
        std::uint64_t start = 0;
        if (origin == STREAM_SEEK_CUR)
            start = m_reader->Position();
        else if (origin == STREAM_SEEK_END)
            start = m_reader->Size();
        else if (origin != STREAM_SEEK_SET)
            return E_INVALIDARG;
        const std::uint64_t distance = offset < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(offset)
                                                  : static_cast<std::uint64_t>(offset);
        if (offset < 0 ? distance > start : distance > std::numeric_limits<std::uint64_t>::max() - start)
            return E_INVALIDARG;
        const std::uint64_t target = offset < 0 ? start - distance : start + distance;
        if (target != m_reader->Position()) m_reader->Seek(target);
        if (newPosition != nullptr) *newPosition = target;
        return S_OK;
    });
}

HRESULT PrintReadStream::ReadBytes(void* bytes, ULONG wanted, ULONG* read, BOOL* endOfFile) {
    if (read == nullptr || endOfFile == nullptr || (!bytes && wanted > 0)) return E_POINTER;
    *read = 0;
    *endOfFile = FALSE;
    return Guarded([&] {
        const std::size_t count = wanted > 0 ? m_reader->Read(bytes, wanted) : 0;
        *read = static_cast<ULONG>(count);
        *endOfFile = (wanted > 0 && count == 0) || m_reader->AtEnd();
        return S_OK;
    });
}

HRESULT ContentStreamFactory::GetStream(IPrintReadStream** stream) {
    if (stream == nullptr) return E_POINTER;
    *stream = nullptr;
    return Guarded([&] {
        *stream = new PrintReadStream(m_content->Open());
        return S_OK;
    });
}

std::unique_ptr<ByteReader> MemoryContent::Open() const { return std::make_unique<MemoryReader>(m_bytes); }

} // namespace OvPipeline
