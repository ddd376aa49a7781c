#include "Comparison/ContentDigest.h"

#include <glib.h>

#include <algorithm>
#include <new>

namespace OvPipeline {

void ContentDigest::Release::operator()(_GChecksum* checksum) const noexcept { g_checksum_free(checksum); }

ContentDigest::ContentDigest() : m_checksum(g_checksum_new(G_CHECKSUM_SHA256)) {
    if (!m_checksum) throw std::bad_alloc();
}

ContentDigest& ContentDigest::Add(const void* bytes, std::size_t size) {
    constexpr std::size_t most = 1u << 30; // what the library counts with takes no more
    const auto* next = static_cast<const guchar*>(bytes);
    while (size > 0) {
        const std::size_t now = (std::min)(size, most);
        g_checksum_update(m_checksum.get(), next, static_cast<gssize>(now));
        next += now;
        size -= now;
    }
    return *this;
}

ContentDigest& ContentDigest::AddText(std::string_view text) {
    const std::uint64_t size = text.size();
    return Add(&size, sizeof size).Add(text.data(), text.size());
}

std::string ContentDigest::Result() { return g_checksum_get_string(m_checksum.get()); }

} // namespace OvPipeline
