#pragma once

#include <BinaryForms/PackedBytes.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/WideStrings/ByteBuffer.h>

#include <functional>
#include <initializer_list>
#include <string>

/// A content in its envelope, with a check that fits whatever the content is.
inline ByteBuffer Packed(const char (&mark)[3], const ByteBuffer& content) {
    ByteBuffer bytes = PackedBytes::beginEnvelope(mark);
    bytes.insert(bytes.end(), content.begin(), content.end());
    PackedBytes::endEnvelope(bytes);
    return bytes;
}

inline ByteBuffer BytesOf(std::initializer_list<int> values) {
    ByteBuffer bytes;
    for (const int value : values)
        bytes.push_back(static_cast<unsigned char>(value));
    return bytes;
}

/// The message with which a call is refused; empty if it is not.
inline std::string RefusalOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const CPExceptionInvalidArgument& failure) {
        return failure.getExceptionMessage();
    }
    return {};
}

/// Calls back with what becomes of bytes when they are cut anywhere, or a bit of any one byte changes.
inline void ForEachDamage(const ByteBuffer& bytes, const std::function<void(const ByteBuffer&)>& use) {
    for (std::size_t length = 1; length < bytes.size(); ++length)
        use(ByteBuffer(bytes.data(), length));
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        ByteBuffer changed = bytes;
        changed[i] = static_cast<unsigned char>(changed[i] ^ (1u << (i % 8)));
        use(changed);
    }
}
