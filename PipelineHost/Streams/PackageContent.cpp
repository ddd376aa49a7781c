#include "Streams/PackageContent.h"

namespace OvPipeline {

namespace {

class PackageByteReader final : public ByteReader {
public:
    PackageByteReader(std::shared_ptr<const OvPlatform::PackageReader> package, const std::string& name)
        : m_package(std::move(package)), m_stream(m_package->OpenPart(name)) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        const std::uint64_t end = m_stream->Size();
        if (m_position >= end) {
            // A stream that holds more than it declares is told apart only by reading on.
            if (m_position > end || size == 0) return 0;
        }
        const std::size_t read = m_stream->Read(buffer, size);
        m_position += read;
        return read;
    }
    void Seek(std::uint64_t position) override {
        if (position <= m_stream->Size()) m_stream->Seek(position);
        m_position = position;
    }
    std::uint64_t Position() const override { return m_position; }
    std::uint64_t Size() override { return m_stream->Size(); }
    bool AtEnd() override { return m_position >= m_stream->Size(); }

private:
    std::shared_ptr<const OvPlatform::PackageReader> m_package;
    std::unique_ptr<OvPlatform::PackagePartStream> m_stream;
    std::uint64_t m_position = 0;
};

} // namespace

std::unique_ptr<ByteReader> PackageContent::Open() const {
    return std::make_unique<PackageByteReader>(m_package, m_part.name);
}

std::uint64_t PackageContent::Identity() const {
    return static_cast<std::uint64_t>(&m_part - m_package->Parts().data());
}

} // namespace OvPipeline
