#include "Parts/FontObfuscation.h"

namespace OvPipeline {

namespace {

constexpr std::size_t obfuscatedBytes = 32;

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

class ObfuscatingReader final : public ByteReader {
public:
    ObfuscatingReader(std::unique_ptr<ByteReader> reader, const ObfuscationKey& key)
        : m_reader(std::move(reader)), m_key(key) {}

    std::size_t Read(void* buffer, std::size_t size) override {
        const std::uint64_t position = m_reader->Position();
        const std::size_t read = m_reader->Read(buffer, size);
        auto* bytes = static_cast<std::uint8_t*>(buffer);
        for (std::size_t i = 0; i < read && position + i < obfuscatedBytes; ++i) {
            const std::uint8_t mask = m_key[15 - (position + i) % 16];
            bytes[i] = static_cast<std::uint8_t>(bytes[i] ^ mask);
        }
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

std::optional<ObfuscationKey> ObfuscationKeyOf(std::string_view partName) {
    partName.remove_prefix(partName.rfind('/') + 1);
    const std::string_view guid = partName.substr(0, partName.rfind('.'));
    if (guid.size() != 36) return {};
    ObfuscationKey key{};
    std::size_t digits = 0;
    for (std::size_t i = 0; i < guid.size(); ++i) {
        const bool isHyphen = i == 8 || i == 13 || i == 18 || i == 23;
        if (isHyphen != (guid[i] == '-')) return {};
        if (isHyphen) continue;
        const int digit = HexDigit(guid[i]);
        if (digit < 0) return {};
        key[digits / 2] = static_cast<std::uint8_t>(key[digits / 2] * 16 + digit);
        ++digits;
    }
    return key;
}

std::unique_ptr<ByteReader> Obfuscate(std::unique_ptr<ByteReader> reader, const ObfuscationKey& key) {
    return std::make_unique<ObfuscatingReader>(std::move(reader), key);
}

} // namespace OvPipeline
