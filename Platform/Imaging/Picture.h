#pragma once

#include "Imaging/PictureHeader.h"

#include <gdk-pixbuf/gdk-pixbuf.h>
#include <objidl.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace OvPlatform {

/// No picture of more pixels is decoded or encoded: at 4 bytes for each it would take 256 MB.
inline constexpr std::uint64_t mostPicturePixels = std::uint64_t{64} << 20;
/// No larger file is read.
inline constexpr std::size_t mostPictureBytes = std::size_t{256} << 20;

struct ObjectRelease {
    void operator()(gpointer object) const noexcept { g_object_unref(object); }
};
/// 8 bits a colour, with alpha or without.
using Pixels = std::unique_ptr<GdkPixbuf, ObjectRelease>;

/// A decoded picture, shared by whoever hands it out.
struct Picture {
    PictureHeader header;
    Pixels pixels;

    bool HasAlpha() const { return gdk_pixbuf_get_has_alpha(pixels.get()) != FALSE; }
};

/// All bytes of a stream, from its beginning. WINCODEC_ERR_IMAGESIZEOUTOFRANGE beyond the bound.
HRESULT ReadPictureStream(IStream* stream, std::vector<BYTE>& bytes);

/// What a file says of its picture. WINCODEC_ERR_COMPONENTNOTFOUND for none of the kinds,
/// WINCODEC_ERR_BADHEADER for a damaged one, WINCODEC_ERR_IMAGESIZEOUTOFRANGE beyond the bound.
HRESULT CheckPicture(PictureBytes bytes, PictureHeader& header) noexcept;

/// The picture of checked bytes, of several the first. WINCODEC_ERR_BADIMAGE for a damaged one.
HRESULT DecodePicture(PictureBytes bytes, const PictureHeader& header, Pixels& pixels) noexcept;

/// Pixels that nothing has been written to; null where memory is out.
Pixels NewPixels(std::uint32_t width, std::uint32_t height, bool hasAlpha) noexcept;

/// Writes pixels as PNG. A resolution of 0 is left out; others are kept in whole dots per inch.
HRESULT EncodePng(GdkPixbuf* pixels, double dpiX, double dpiY, IStream* target) noexcept;

} // namespace OvPlatform
