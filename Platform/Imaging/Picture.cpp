#include "Imaging/Picture.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wincodec.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <string>
#include <utility>

namespace OvPlatform {
namespace {

using Loader = std::unique_ptr<GdkPixbufLoader, ObjectRelease>;

struct ErrorRelease {
    void operator()(GError* error) const noexcept { g_error_free(error); }
};
using Error = std::unique_ptr<GError, ErrorRelease>;

/// The library's name of a kind.
const char* TypeName(PictureKind kind) {
    switch (kind) {
    case PictureKind::Png:
        return "png";
    case PictureKind::Jpeg:
        return "jpeg";
    case PictureKind::Gif:
        return "gif";
    case PictureKind::Bmp:
        return "bmp";
    case PictureKind::Tiff:
        return "tiff";
    }
    return "";
}

HRESULT ResultOf(const GError* error) {
    if (error == nullptr || error->domain != GDK_PIXBUF_ERROR) return WINCODEC_ERR_BADIMAGE;
    switch (error->code) {
    case GDK_PIXBUF_ERROR_INSUFFICIENT_MEMORY:
        return E_OUTOFMEMORY;
    case GDK_PIXBUF_ERROR_UNKNOWN_TYPE:
    case GDK_PIXBUF_ERROR_UNSUPPORTED_OPERATION:
        return WINCODEC_ERR_COMPONENTNOTFOUND; // the system has no module for the kind
    default:
        return WINCODEC_ERR_BADIMAGE;
    }
}

/// What is seen of a picture while it is decoded.
struct Progress {
    std::uint32_t width;
    std::uint32_t height;
    bool isOtherSize = false;
    std::uint32_t rows = 0;
};

/// A size that is not that of the header has not been checked: the loader gives up on one of 0.
void OnSize(GdkPixbufLoader* loader, int width, int height, gpointer data) {
    auto& progress = *static_cast<Progress*>(data);
    progress.isOtherSize = static_cast<std::uint32_t>(width) != progress.width ||
                           static_cast<std::uint32_t>(height) != progress.height;
    if (progress.isOtherSize) gdk_pixbuf_loader_set_size(loader, 0, 0);
}

void OnArea(GdkPixbufLoader*, int, int y, int, int height, gpointer data) {
    auto& progress = *static_cast<Progress*>(data);
    progress.rows = (std::max)(progress.rows, static_cast<std::uint32_t>(y + height));
}

/// A file in memory, to be found by its path as long as this lives.
class MemoryFile {
public:
    MemoryFile() noexcept : m_descriptor(memfd_create("picture", MFD_CLOEXEC)) {}
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() {
        if (m_descriptor >= 0) close(m_descriptor);
    }

    bool Append(PictureBytes bytes) const noexcept {
        while (m_descriptor >= 0 && !bytes.empty()) {
            const ssize_t written = write(m_descriptor, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) return false;
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        }
        return m_descriptor >= 0;
    }
    std::string Path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

private:
    int m_descriptor;
};

/// By way of a file, since the library takes the square of the size for a GIF file that comes piece by piece;
/// and of several pictures the first alone, with an end of its own.
HRESULT DecodeGif(PictureBytes bytes, const PictureHeader& header, Pixels& pixels) noexcept {
    constexpr BYTE endOfGif[] = {';'};
    const MemoryFile file;
    if (!file.Append(bytes.first(header.firstPictureEnd)) || !file.Append(endOfGif)) return E_OUTOFMEMORY;
    GError* failure = nullptr;
    pixels.reset(gdk_pixbuf_new_from_file(file.Path().c_str(), &failure));
    const Error error(failure);
    return pixels ? S_OK : ResultOf(failure);
}

HRESULT DecodeByPieces(PictureBytes bytes, const PictureHeader& header, Pixels& pixels) noexcept {
    GError* failure = nullptr;
    const Loader loader(gdk_pixbuf_loader_new_with_type(TypeName(header.kind), &failure));
    const Error noLoader(failure);
    if (!loader) return ResultOf(failure);
    Progress progress{header.width, header.height};
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(OnSize), &progress);
    g_signal_connect(loader.get(), "area-updated", G_CALLBACK(OnArea), &progress);

    failure = nullptr;
    const bool isWritten =
        gdk_pixbuf_loader_write(loader.get(), bytes.data(), bytes.size(), &failure) != FALSE;
    const Error writeError(failure);
    failure = nullptr;
    const bool isClosed = gdk_pixbuf_loader_close(loader.get(), &failure) != FALSE;
    const Error closeError(failure);
    if (!isWritten) return ResultOf(writeError.get());
    if (!isClosed) return ResultOf(closeError.get());
    GdkPixbuf* const decoded = gdk_pixbuf_loader_get_pixbuf(loader.get());
    if (decoded == nullptr || progress.isOtherSize || progress.rows < header.height)
        return WINCODEC_ERR_BADIMAGE;
    pixels.reset(GDK_PIXBUF(g_object_ref(decoded)));
    return S_OK;
}

} // namespace

HRESULT ReadPictureStream(IStream* stream, std::vector<BYTE>& bytes) {
    bytes.clear();
    if (const HRESULT result = stream->Seek({}, STREAM_SEEK_SET, nullptr); FAILED(result)) return result;
    constexpr std::size_t leastRoom = 0x10000;
    std::size_t size = 0;
    for (;;) {
        if (size == bytes.size())
            bytes.resize((std::min)((std::max)(leastRoom, size * 2), mostPictureBytes + 1));
        ULONG got = 0;
        const auto room = static_cast<ULONG>(bytes.size() - size);
        const HRESULT result = stream->Read(bytes.data() + size, room, &got);
        if (FAILED(result)) return result;
        size += (std::min)(got, room);
        if (size > mostPictureBytes) return WINCODEC_ERR_IMAGESIZEOUTOFRANGE;
        if (got == 0) break;
    }
    bytes.resize(size);
    return S_OK;
}

HRESULT CheckPicture(PictureBytes bytes, PictureHeader& header) noexcept {
    if (!FindPictureKind(bytes)) return WINCODEC_ERR_COMPONENTNOTFOUND;
    const auto found = ReadPictureHeader(bytes);
    if (!found) return WINCODEC_ERR_BADHEADER;
    if (std::uint64_t{found->width} * found->height > mostPicturePixels)
        return WINCODEC_ERR_IMAGESIZEOUTOFRANGE;
    header = *found;
    return S_OK;
}

HRESULT DecodePicture(PictureBytes bytes, const PictureHeader& header, Pixels& pixels) noexcept {
    Pixels decoded;
    const HRESULT result = header.kind == PictureKind::Gif ? DecodeGif(bytes, header, decoded)
                                                           : DecodeByPieces(bytes, header, decoded);
    if (FAILED(result)) return result;
    if (gdk_pixbuf_get_width(decoded.get()) != static_cast<int>(header.width) ||
        gdk_pixbuf_get_height(decoded.get()) != static_cast<int>(header.height))
        return WINCODEC_ERR_BADIMAGE;
    pixels = std::move(decoded);
    return S_OK;
}

Pixels NewPixels(std::uint32_t width, std::uint32_t height, bool hasAlpha) noexcept {
    constexpr int bitsPerColour = 8;
    return Pixels(gdk_pixbuf_new(GDK_COLORSPACE_RGB, hasAlpha ? TRUE : FALSE, bitsPerColour,
                                 static_cast<int>(width), static_cast<int>(height)));
}

namespace {

struct Target {
    IStream* stream;
    HRESULT result = S_OK;
};

gboolean WriteOut(const gchar* bytes, gsize count, GError** error, gpointer data) {
    auto& target = *static_cast<Target*>(data);
    while (count > 0 && SUCCEEDED(target.result)) {
        ULONG written = 0;
        const auto most = static_cast<ULONG>((std::min)(count, gsize{0x40000000}));
        target.result = target.stream->Write(bytes, most, &written);
        if (SUCCEEDED(target.result) && (written == 0 || written > most))
            target.result = WINCODEC_ERR_STREAMWRITE;
        if (FAILED(target.result)) break;
        bytes += written;
        count -= written;
    }
    if (SUCCEEDED(target.result)) return TRUE;
    g_set_error_literal(error, GDK_PIXBUF_ERROR, GDK_PIXBUF_ERROR_FAILED, "the stream does not take it");
    return FALSE;
}

/// As the library wants it; empty for none.
std::string WholeDots(double dpi) {
    constexpr double most = 1e6;
    return dpi >= 0.5 && dpi <= most ? std::to_string(std::lround(dpi)) : std::string();
}

} // namespace

HRESULT EncodePng(GdkPixbuf* pixels, double dpiX, double dpiY, IStream* target) noexcept {
    std::string x = WholeDots(dpiX);
    std::string y = WholeDots(dpiY);
    std::string names[] = {"x-dpi", "y-dpi"};
    const bool hasResolution = !x.empty() && !y.empty();
    char* keys[] = {hasResolution ? names[0].data() : nullptr, names[1].data(), nullptr};
    char* values[] = {hasResolution ? x.data() : nullptr, y.data(), nullptr};
    Target written{target};
    GError* failure = nullptr;
    const bool isSaved =
        gdk_pixbuf_save_to_callbackv(pixels, WriteOut, &written, "png", keys, values, &failure) != FALSE;
    const Error error(failure);
    if (isSaved) return S_OK;
    return FAILED(written.result) ? written.result : ResultOf(failure);
}

} // namespace OvPlatform
