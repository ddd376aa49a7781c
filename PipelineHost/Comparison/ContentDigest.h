#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct _GChecksum;

namespace OvPipeline {

/// A fingerprint (SHA-256) of bytes that come in pieces: equal where the bytes are, whatever the pieces.
class ContentDigest {
public:
    ContentDigest();

    ContentDigest& Add(const void* bytes, std::size_t size);
    /// A text with its length, so that texts that follow one another are told apart.
    ContentDigest& AddText(std::string_view text);

    /// 64 hexadecimal digits. Nothing can be added any more.
    std::string Result();

private:
    struct Release {
        void operator()(_GChecksum* checksum) const noexcept;
    };
    std::unique_ptr<_GChecksum, Release> m_checksum;
};

} // namespace OvPipeline
