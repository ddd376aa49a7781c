#include "Streams/ByteReader.h"

#include <array>

namespace OvPipeline {

void Drain(ByteReader& from, const std::function<void(const void* bytes, std::size_t size)>& take) {
    std::array<unsigned char, std::size_t{64} * 1024> chunk;
    while (const std::size_t size = from.Read(chunk.data(), chunk.size()))
        take(chunk.data(), size);
}

} // namespace OvPipeline
