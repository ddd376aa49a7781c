#pragma once

#include "LowLevelFacilities/InternalOrvelCPFormatStringBuffer.h"

#include <ostream>
#include <streambuf>

namespace InternalOrvelCP {

/// A stream over a destination, which lets any value with operator<< be formatted. Holds no text of its own:
/// what is written stands in the destination at once. The destination must outlive it.
class TemporaryFormatStringBufferStream final : private std::streambuf, public std::ostream {
public:
    explicit TemporaryFormatStringBufferStream(IFormatStringStreamDestination& destination)
        : std::ostream(static_cast<std::streambuf*>(this)), m_destination(destination) {
        // A failing destination is the formatter's business, not the stream's.
        exceptions(std::ios_base::badbit);
    }

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

} // namespace InternalOrvelCP
