#include "Parts/FontObfuscation.h"

namespace OvPipeline {

namespace {

class ObfuscatingReader final : public ByteReader {
public:
    ObfuscatingReader(std::unique_ptr<ByteReader> reader, const ObfuscationKey& key)
        : m_reader(std::move(reader)), m_key(key) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        const std::uint64_t position = m_reader->Position();
        const std::size_t read = m_reader->Read(buffer, size);
        OvPlatform::Obfuscate(m_key, position, buffer, read);
        return read;
    }
    void Seek(std::uint64_t position) override { m_reader->Seek(position); }
    std::uint64_t Position() const override { return m_reader->Position(); }
    std::uint64_t Size() override { return m_reader->Size(); }
    bool AtEnd() override { return m_reader->AtEnd(); }

private:
    std::unique_ptr<ByteReader> m_reader;
    ObfuscationKey m_key;
};

} // namespace

std::unique_ptr<ByteReader> Obfuscate(std::unique_ptr<ByteReader> reader, const ObfuscationKey& key) {
    return std::make_unique<ObfuscatingReader>(std::move(reader), key);
}

} // namespace OvPipeline
