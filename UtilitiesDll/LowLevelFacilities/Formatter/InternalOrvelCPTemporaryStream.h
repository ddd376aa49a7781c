#pragma once

#include "LowLevelFacilities/Strings/InternalOrvelCPFormatStringBuffer.h"

#include <locale>
#include <ostream>
#include <streambuf>

namespace InternalOrvelCP {

/// Hands what is written to it on at once.
class DestinationStreambuf final : public std::streambuf {
public:
    explicit DestinationStreambuf(IFormatStringStreamDestination& destination) noexcept
        : m_destination(destination) {}

private:
    std::streamsize xsputn(const char* text, std::streamsize length) override {
        m_destination.append(text, static_cast<std::size_t>(length));
        return length;
    }
    int_type overflow(int_type character) override {
        if (character == traits_type::eof()) return traits_type::not_eof(character);
        const char byte = traits_type::to_char_type(character);
        m_destination.append(&byte, 1);
        return character;
    }

    IFormatStringStreamDestination& m_destination;
};

/// The buffer has to stand before the stream that is made over it.
struct DestinationStreambufHolder {
    DestinationStreambuf destinationStreambuf;
};

/// A stream over a destination, which lets any value with operator<< be formatted. Holds no text of its own:
/// what is written stands in the destination at once. The destination must outlive it.
class TemporaryFormatStringBufferStream final : private DestinationStreambufHolder, public std::ostream {
public:
    explicit TemporaryFormatStringBufferStream(IFormatStringStreamDestination& destination)
        : DestinationStreambufHolder{DestinationStreambuf(destination)}, std::ostream(&destinationStreambuf) {
        // What the destination throws is to reach the formatter, not to end in the stream's state.
        exceptions(std::ios_base::badbit);
        // Numbers look alike whatever locale the process has.
        imbue(std::locale::classic());
    }
};

} // namespace InternalOrvelCP
