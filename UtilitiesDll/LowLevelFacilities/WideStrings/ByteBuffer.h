#pragma once

#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "LowLevelFacilities/WideStrings/CXString.h"

#include <cstddef>
#include <vector>

/// A vector of bytes, with conversions from and to text.
class ByteBuffer : public std::vector<unsigned char> {
public:
    using Base = std::vector<unsigned char>;

    ByteBuffer() noexcept = default;
    ByteBuffer(const ByteBuffer&) = default;
    ByteBuffer(ByteBuffer&&) noexcept = default;
    explicit ByteBuffer(const allocator_type& allocator) noexcept : Base(allocator) {}
    /// A null pointer gives an empty buffer.
    OV_UTILITIES_API ByteBuffer(const unsigned char* bytes, size_type length);
    explicit ByteBuffer(size_type count, unsigned char value = 0,
                        const allocator_type& allocator = allocator_type())
        : Base(count, value, allocator) {}
    ~ByteBuffer() = default;

    ByteBuffer& operator=(const ByteBuffer&) = default;
    ByteBuffer& operator=(ByteBuffer&&) noexcept = default;

    /// Replaces the content. The bytes may lie in this buffer.
    OV_UTILITIES_API void setWithLpbyte(const unsigned char* bytes, size_type length);
    OV_UTILITIES_API void appendLpbyte(const unsigned char* bytes, size_type length);
    /// Appends the text's UTF-8 form, without a terminator.
    OV_UTILITIES_API void appendAsUtf8(const CXString& text);

    /// The first byte; may be null if the buffer is empty.
    [[nodiscard]] unsigned char* getLpbyte() noexcept { return data(); }
    [[nodiscard]] const unsigned char* getLpbyte() const noexcept { return data(); }
    /// The length.
    [[nodiscard]] unsigned int getDword() const noexcept { return static_cast<unsigned int>(size()); }

    [[nodiscard]] OV_UTILITIES_API CXString getAsCXStringFromUtf8Buffer() const;
    [[nodiscard]] OV_UTILITIES_API CPString getAsCPStringFromUtf8Buffer() const;

    [[nodiscard]] static OV_UTILITIES_API ByteBuffer
    createByteBufferWithUtf8EncodedStringData(const CPString& text);
    /// Reads pairs of hexadecimal digits. With lenient, white space and hyphens between them are skipped.
    /// False, with an empty buffer, if anything else stands in the text or a pair is incomplete.
    static OV_UTILITIES_API bool ConvertHexBinaryStringToByteBuffer(const CXString& text, ByteBuffer& bytes,
                                                                    bool lenient);
};
