#include "Encryption/DataEncrypter.h"

#include "Encryption/SipHash.h"
#include "LowLevelFacilities/Failures/CPExceptionInvalidArgument.h"
#include "LowLevelFacilities/Failures/ThrowFailure.h"
#include "LowLevelFacilities/Strings/Base64.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

namespace {

using Bytes = std::span<const unsigned char>;

// Before scrambling, the form is: version, tag, text. The tag is a keyed hash of the text and starts the
// stream of bytes that covers it, so that texts which differ anywhere are covered by different streams.
constexpr unsigned char version = 1;
constexpr std::size_t tagLength = 8;
constexpr std::size_t headLength = 1 + tagLength;

constexpr SipHash::Key driverKey{0x3E1F9B62C7A4D805u, 0xB06D5C93E2F81A47u};

enum class Purpose : unsigned char { Tag = 1, Stream = 2 };

std::array<unsigned char, 8> bytesOf(std::uint64_t word) noexcept {
    std::array<unsigned char, 8> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(word >> (8 * i));
    return bytes;
}

SipHash::Key keyFor(Purpose purpose, int mode) noexcept {
    const std::uint64_t use =
        std::uint64_t{static_cast<std::uint32_t>(mode)} << 8 | static_cast<unsigned char>(purpose);
    SipHash::Key key{};
    for (std::uint64_t half = 0; half < key.size(); ++half)
        key[half] = SipHash::hash(driverKey, bytesOf(use << 8 | half));
    return key;
}

std::array<unsigned char, tagLength> tagOf(Bytes text, int mode) noexcept {
    return bytesOf(SipHash::hash(keyFor(Purpose::Tag, mode), text));
}

/// Covers the text, or uncovers it.
void applyStream(std::span<unsigned char> text, Bytes tag, int mode) noexcept {
    SipHash::Key key = keyFor(Purpose::Stream, mode);
    for (std::size_t i = 0; i < tagLength; ++i)
        key[1] ^= std::uint64_t{tag[i]} << (8 * i);
    for (std::size_t start = 0; start < text.size(); start += 8) {
        const auto stream = bytesOf(SipHash::hash(key, bytesOf(start / 8)));
        for (std::size_t i = 0; i < stream.size() && start + i < text.size(); ++i)
            text[start + i] ^= stream[i];
    }
}

} // namespace

ByteBuffer DataEncrypter::EncryptStringWithOrvelSimple1(const CXString& text, int mode) {
    if (text.IsEmpty()) return {};
    ByteBuffer form(headLength);
    form.appendAsUtf8(text);
    const std::span<unsigned char> covered = std::span(form).subspan(headLength);
    const auto tag = tagOf(covered, mode);
    form[0] = version;
    std::copy(tag.begin(), tag.end(), form.begin() + 1);
    applyStream(covered, tag, mode);
    ByteBuffer encoded(Base64::encodedLength(form.size()));
    Base64::encode(form.data(), form.size(), encoded.data());
    return encoded;
}

ByteBuffer DataEncrypter::DecryptStringWithOrvelSimple1(const CXString& scrambled, int mode) {
    const OperationScope operation("DataEncrypter::DecryptStringWithOrvelSimple1");
    if (scrambled.IsEmpty()) return {};
    ByteBuffer form;
    bool isGood = Base64::decode(scrambled.View().data(), scrambled.View().size(), form) &&
                  form.size() > headLength && form[0] == version;
    ByteBuffer text;
    if (isGood) {
        const Bytes tag = Bytes(form).subspan(1, tagLength);
        text.assign(form.begin() + headLength, form.end());
        applyStream(text, tag, mode);
        const auto expected = tagOf(text, mode);
        isGood = std::equal(expected.begin(), expected.end(), tag.begin());
    }
    // The text itself stays out of the message: it may be a password that was never scrambled.
    if (!isGood) {
        ThrowFailure<CPExceptionInvalidArgument>(
            [] { return "A scrambled password was made with another key or has been changed"; });
    }
    return text;
}
