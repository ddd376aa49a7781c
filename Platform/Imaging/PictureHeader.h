#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace OvPlatform {

using PictureBytes = std::span<const BYTE>;

enum class PictureKind { Png, Jpeg, Gif, Bmp, Tiff };

/// What a picture's file says of it ahead of its pixels.
struct PictureHeader {
    PictureKind kind{};
    /// In pixels.
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    /// Dots per inch; 0 where the file says nothing, nothing but a proportion, or 0.
    double dpiX = 0;
    double dpiY = 0;
    /// Of a container that holds several, where the first ends; otherwise 0.
    std::size_t firstPictureEnd = 0;
};

/// By the first bytes, whatever the file is called.
std::optional<PictureKind> FindPictureKind(PictureBytes bytes) noexcept;

/// Nothing if the picture is of none of the kinds, its header is damaged, or it plainly ends before its end:
/// the library fills up what is missing, and would show half a picture. Takes time in proportion to the
/// bytes.
std::optional<PictureHeader> ReadPictureHeader(PictureBytes bytes) noexcept;

} // namespace OvPlatform
