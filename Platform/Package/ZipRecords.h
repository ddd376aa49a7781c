#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace OvPlatform {

// The records of a zip archive, as reader and writer both need them.

inline constexpr std::uint32_t localHeaderMark = 0x04034B50;
inline constexpr std::uint32_t descriptorMark = 0x08074B50;
inline constexpr std::uint32_t directoryMark = 0x02014B50;
inline constexpr std::uint32_t wideEndMark = 0x06064B50; // of the directory, with numbers of 64 bits
inline constexpr std::uint32_t wideEndLocatorMark = 0x07064B50;
inline constexpr std::uint32_t endMark = 0x06054B50;

inline constexpr std::size_t localHeaderSize = 30;
inline constexpr std::size_t directoryRecordSize = 46;
inline constexpr std::size_t wideEndSize = 56;
inline constexpr std::size_t wideEndLocatorSize = 20;
inline constexpr std::size_t endSize = 22;

inline constexpr std::uint16_t encryptedFlag = 1;
inline constexpr std::uint16_t sizesBehindFlag = 1 << 3;
inline constexpr std::uint16_t utf8Flag = 1 << 11;

inline constexpr std::uint16_t storedMethod = 0;
inline constexpr std::uint16_t deflatedMethod = 8;

inline constexpr std::uint16_t wideField = 1; // an extra field with numbers of 64 bits
// What stands in place of a number that is told there.
inline constexpr std::uint16_t wideCount = 0xFFFF;
inline constexpr std::uint32_t wideNumber = 0xFFFFFFFF;

/// Takes numbers from the start of a record. What lies beyond its end is zero, and noted.
class RecordReader {
public:
    explicit RecordReader(std::string_view bytes) : m_bytes(bytes) {}

    std::uint16_t Take16() { return static_cast<std::uint16_t>(Take(2)); }
    std::uint32_t Take32() { return static_cast<std::uint32_t>(Take(4)); }
    std::uint64_t Take64() { return Take(8); }
    std::string_view TakeBytes(std::size_t size) {
        if (size > m_bytes.size()) {
            m_isShort = true;
            size = m_bytes.size();
        }
        const std::string_view bytes = m_bytes.substr(0, size);
        m_bytes.remove_prefix(size);
        return bytes;
    }
    std::size_t Left() const { return m_bytes.size(); }
    bool IsShort() const { return m_isShort; }

private:
    std::uint64_t Take(std::size_t size) {
        std::uint64_t number = 0;
        unsigned shift = 0;
        for (const char byte : TakeBytes(size)) {
            number |= std::uint64_t{static_cast<unsigned char>(byte)} << shift;
            shift += 8;
        }
        return number;
    }

    std::string_view m_bytes;
    bool m_isShort = false;
};

/// Puts numbers behind one another.
class RecordWriter {
public:
    RecordWriter& Put16(std::uint64_t number) { return Put(number, 2); }
    RecordWriter& Put32(std::uint64_t number) { return Put(number, 4); }
    RecordWriter& Put64(std::uint64_t number) { return Put(number, 8); }
    RecordWriter& PutBytes(std::string_view bytes) {
        m_bytes += bytes;
        return *this;
    }
    const std::string& Bytes() const { return m_bytes; }

private:
    RecordWriter& Put(std::uint64_t number, int size) {
        for (int i = 0; i < size; ++i)
            m_bytes += static_cast<char>(number >> 8 * i & 0xFF);
        return *this;
    }

    std::string m_bytes;
};

} // namespace OvPlatform
