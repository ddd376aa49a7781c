#include "Support/InApartment.h"
#include "Support/Rows.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestPictures.h"

#include <windows.h>
#include <atlcomcli.h>
#include <gtest/gtest.h>
#include <wincodec.h>

#include <string>
#include <vector>

namespace {

using namespace TestPictures;

constexpr CLSID factoryClass = {0x317d06e8, 0x5f24, 0x433d, {0xbd, 0xf7, 0x79, 0xce, 0x68, 0xd8, 0xab, 0xc2}};

class PictureTest : public InApartment<> {
protected:
    PictureTest() { EXPECT_EQ(S_OK, m_factory.CoCreateInstance(factoryClass)); }

    /// The bytes stay as long as the test's.
    HRESULT Open(const std::string& bytes, CComPtr<IWICBitmapDecoder>& decoder) {
        CComPtr<IWICStream> stream;
        EXPECT_EQ(S_OK, m_factory->CreateStream(&stream));
        EXPECT_EQ(S_OK, stream->InitializeFromMemory(reinterpret_cast<BYTE*>(const_cast<char*>(bytes.data())),
                                                     static_cast<DWORD>(bytes.size())));
        decoder.Release();
        return m_factory->CreateDecoderFromStream(stream, nullptr, WICDecodeMetadataCacheOnDemand, &decoder);
    }

    HRESULT Decode(const std::string& bytes, CComPtr<IWICBitmapFrameDecode>& frame) {
        CComPtr<IWICBitmapDecoder> decoder;
        frame.Release();
        const HRESULT result = Open(bytes, decoder);
        return FAILED(result) ? result : decoder->GetFrame(0, &frame);
    }

    CComPtr<IWICImagingFactory> m_factory;
};

std::string PixelsOf(IWICBitmapSource* source, const WICRect& part, UINT pixelBytes) {
    std::string pixels(
        static_cast<std::size_t>(part.Width) * static_cast<std::size_t>(part.Height) * pixelBytes, '?');
    EXPECT_EQ(S_OK,
              source->CopyPixels(&part, static_cast<UINT>(part.Width) * pixelBytes,
                                 static_cast<UINT>(pixels.size()), reinterpret_cast<BYTE*>(pixels.data())));
    return pixels;
}

std::string WithSize(std::string bytes, std::size_t place, const std::string& size) {
    return bytes.replace(place, size.size(), size);
}

TEST_F(PictureTest, TellsKindSizeResolutionAndPixelsOfEachKind) {
    const std::string camera("Exif\0\0", 6);
    const auto exif = [&](std::uint32_t divisor) {
        return Segment(0xe1, camera + TiffResolution(600, divisor, 2));
    };
    const std::string withoutUnit =
        Segment(0xe1, camera + TiffFile({{282, 5, TiffData(2)}, {283, 5, TiffData(2)}},
                                        Little(150, 4) + Little(1, 4)));
    const std::string noDensity = JfifDensity(0, 1);
    std::string arithmetic = Jpeg(3, 2, 3);
    arithmetic.insert(arithmetic.find("\xff\xda"), Segment(0xcc, std::string("\0\x10", 2)));
    const std::string grey = "\x80\x80\x80", red("\xff\0\0", 3);
    const std::string alpha = Colour(1, 1) + "\x80";
    const Rows<const char*, std::string, GUID, double, std::string> cases{
        {"BMP", Bmp(3, 2, 11811), GUID_ContainerFormatBmp, 300, Colour(1, 1)},
        {"BMP without a resolution", Bmp(3, 2), GUID_ContainerFormatBmp, 96, Colour(1, 1)},
        {"BMP whose first row is the uppermost", WithSize(Bmp(3, 2), 22, Little(0U - 2, 4)),
         GUID_ContainerFormatBmp, 96, Colour(1, 0)},
        {"GIF", Gif(3, 2, GifImage(3, 2, 0)), GUID_ContainerFormatGif, 96, red + "\xff"},
        {"animation", Gif(3, 2, GifImage(3, 2, 0) + GifImage(3, 2, 1)), GUID_ContainerFormatGif, 96,
         red + "\xff"},
        {"PNG", Png(3, 2, 8, false, PngResolution(5906)), GUID_ContainerFormatPng, 150, Colour(1, 1)},
        {"PNG with a proportion", Png(3, 2, 8, false, PngResolution(5906, 0)), GUID_ContainerFormatPng, 96,
         Colour(1, 1)},
        {"PNG with alpha", Png(3, 2, 8, true), GUID_ContainerFormatPng, 96, alpha},
        {"PNG of 16 bits", Png(3, 2, 16, true), GUID_ContainerFormatPng, 96, alpha},
        {"JPEG", Jpeg(3, 2, 3, JfifDensity(1, 200)), GUID_ContainerFormatJpeg, 200, grey},
        {"JPEG with markers that say nothing", Jpeg(3, 2, 3).insert(2, "\xff\xff\x01"),
         GUID_ContainerFormatJpeg, 96, grey},
        {"JPEG with tables of the other coder", arithmetic, GUID_ContainerFormatJpeg, 96, grey},
        {"JPEG of which a camera says otherwise", Jpeg(3, 2, 3, JfifDensity(1, 200) + exif(2)),
         GUID_ContainerFormatJpeg, 200, grey},
        {"JPEG by the centimetre", Jpeg(3, 2, 3, JfifDensity(2, 100)), GUID_ContainerFormatJpeg, 254, grey},
        {"JPEG of a resolution of 0", Jpeg(3, 2, 1, JfifDensity(1, 0)), GUID_ContainerFormatJpeg, 96, grey},
        {"JPEG of a camera", Jpeg(3, 2, 3, noDensity + exif(2)), GUID_ContainerFormatJpeg, 300, grey},
        {"JPEG of a camera without a unit", Jpeg(3, 2, 3, noDensity + withoutUnit), GUID_ContainerFormatJpeg,
         150, grey},
        {"JPEG that divides by nothing", Jpeg(3, 2, 3, noDensity + exif(0)), GUID_ContainerFormatJpeg, 96,
         grey},
        {"TIFF", Tiff(3, 2, 118, 3), GUID_ContainerFormatTiff, 299.72, grey + "\xff"},
        {"TIFF without a unit", Tiff(3, 2, 118, 1), GUID_ContainerFormatTiff, 96, grey + "\xff"},
    };
    for (const auto& [what, bytes, format, dpi, pixel] : cases) {
        CComPtr<IWICBitmapDecoder> decoder;
        CComPtr<IWICBitmapFrameDecode> frame;
        ASSERT_EQ(S_OK, Open(bytes, decoder)) << what;
        GUID found{};
        EXPECT_EQ(S_OK, decoder->GetContainerFormat(&found));
        EXPECT_TRUE(found == format) << what;
        UINT count = 0, width = 0, height = 0;
        EXPECT_EQ(S_OK, decoder->GetFrameCount(&count));
        EXPECT_EQ(1u, count) << what;
        EXPECT_EQ(WINCODEC_ERR_FRAMEMISSING, decoder->GetFrame(1, &frame));
        ASSERT_EQ(S_OK, decoder->GetFrame(0, &frame)) << what;
        EXPECT_EQ(S_OK, frame->GetSize(&width, &height));
        EXPECT_TRUE(width == 3 && height == 2) << what;
        double dpiX = 0, dpiY = 0;
        EXPECT_EQ(S_OK, frame->GetResolution(&dpiX, &dpiY));
        EXPECT_NEAR(dpi, dpiX, 0.02) << what;
        EXPECT_NEAR(dpi, dpiY, 0.02) << what;
        GUID pixels{};
        EXPECT_EQ(S_OK, frame->GetPixelFormat(&pixels));
        EXPECT_TRUE(pixels ==
                    (pixel.size() == 4 ? GUID_WICPixelFormat32bppRGBA : GUID_WICPixelFormat24bppRGB))
            << what;
        EXPECT_EQ(pixel, PixelsOf(frame, {1, 1, 1, 1}, static_cast<UINT>(pixel.size()))) << what;
    }
}

TEST_F(PictureTest, ShowsInksAsColours) {
    CComPtr<IWICBitmapFrameDecode> frame;
    ASSERT_EQ(S_OK, Decode(Jpeg(8, 8, 4), frame));
    GUID format{};
    EXPECT_EQ(S_OK, frame->GetPixelFormat(&format));
    EXPECT_TRUE(format == GUID_WICPixelFormat32bppRGBA);
    const std::string pixel = PixelsOf(frame, {7, 7, 1, 1}, 4);
    for (std::size_t colour = 0; colour < 3; ++colour)
        EXPECT_NEAR(64, static_cast<unsigned char>(pixel[colour]), 2) << "half of an ink on half of black";
    EXPECT_EQ('\xff', pixel[3]);
}

std::string Times(int count, const std::string& text) {
    std::string all;
    for (int index = 0; index < count; ++index)
        all += text;
    return all;
}

std::string WithScans(std::string jpeg, int count) {
    return jpeg.insert(jpeg.size() - 2, Times(count, Segment(0xda, std::string(7, '\1'))));
}

TEST_F(PictureTest, RefusesWhatIsNoPictureAheadOfDecoding) {
    const std::string png = Png(3, 2), jpeg = Jpeg(16, 16, 3), bmp = Bmp(3, 2),
                      gif = Gif(3, 2, GifImage(3, 2, 0));
    const std::string hugeHeader =
        Chunk("IHDR", Big(65535, 4) + Big(65535, 4) + std::string("\x08\x02\0\0\0", 5));
    const std::string tiff = Tiff(3, 2, 300, 2);
    const Rows<const char*, std::string, HRESULT> cases{
        {"nothing", "", WINCODEC_ERR_COMPONENTNOTFOUND},
        {"text", "This is a letter, and no picture at all.", WINCODEC_ERR_COMPONENTNOTFOUND},
        {"PNG of 65,535 by 65,535", WithSize(png, 8, hugeHeader), WINCODEC_ERR_IMAGESIZEOUTOFRANGE},
        {"JPEG of 65,535 by 65,535", Jpeg(65535, 65535, 1), WINCODEC_ERR_IMAGESIZEOUTOFRANGE},
        {"GIF of 65,535 by 65,535", WithSize(gif, 6, Big(0xffffffff, 4)), WINCODEC_ERR_IMAGESIZEOUTOFRANGE},
        {"TIFF of 65,535 by 65,535", TiffFile({{256, 3, 65535}, {257, 3, 65535}}, ""),
         WINCODEC_ERR_IMAGESIZEOUTOFRANGE},
        {"BMP with packed rows of 65,535 by 65,535",
         WithSize(WithSize(bmp, 30, Little(1, 4)), 18, Little(65535, 4) + Little(65535, 4)),
         WINCODEC_ERR_IMAGESIZEOUTOFRANGE},
        {"BMP of 65,535 by 65,535", WithSize(bmp, 18, Little(65535, 4) + Little(65535, 4)),
         WINCODEC_ERR_BADHEADER},
        {"BMP upside down, as far as can be", WithSize(bmp, 22, Little(0x80000000, 4)),
         WINCODEC_ERR_BADHEADER},
        {"BMP with a header of gigabytes", WithSize(bmp, 14, Little(0x8d000028, 4)), WINCODEC_ERR_BADHEADER},
        {"BMP with packed rows behind gigabytes",
         WithSize(WithSize(bmp, 30, Little(1, 4)), 10, Little(0x8d000028, 4)), WINCODEC_ERR_BADHEADER},
        {"no width", WithSize(bmp, 18, Little(0, 4)), WINCODEC_ERR_BADHEADER},
        {"no height", WithSize(gif, 8, Little(0, 2)), WINCODEC_ERR_BADHEADER},
        {"PNG cut in the header", png.substr(0, 20), WINCODEC_ERR_BADHEADER},
        {"PNG cut in the pixels", png.substr(0, png.size() - 20), WINCODEC_ERR_BADHEADER},
        {"PNG cut at the end", png.substr(0, png.size() - 1), WINCODEC_ERR_BADHEADER},
        {"JPEG cut in the tables", jpeg.substr(0, 60), WINCODEC_ERR_BADHEADER},
        {"JPEG cut at the end", jpeg.substr(0, jpeg.size() - 1), WINCODEC_ERR_BADHEADER},
        {"JPEG that is none behind its mark", "\xff\xd8\xff\xe0 text", WINCODEC_ERR_BADHEADER},
        {"JPEG of more scans than anybody writes", WithScans(Jpeg(4096, 4096, 1), 100),
         WINCODEC_ERR_BADHEADER},
        {"JPEG of more comments than anybody writes", Jpeg(8, 8, 1, Times(5000, Segment(0xfe, ""))),
         WINCODEC_ERR_BADHEADER},
        {"JPEG of as many behind its pixels",
         Jpeg(8, 8, 1).insert(Jpeg(8, 8, 1).size() - 2, Times(5000, Segment(0xfe, ""))),
         WINCODEC_ERR_BADHEADER},
        {"GIF cut in the pixels", gif.substr(0, gif.size() - 2), WINCODEC_ERR_BADHEADER},
        {"GIF without a picture", Gif(3, 2, ""), WINCODEC_ERR_BADHEADER},
        {"BMP cut in the header", bmp.substr(0, 50), WINCODEC_ERR_BADHEADER},
        {"BMP cut in the pixels", bmp.substr(0, bmp.size() - 1), WINCODEC_ERR_BADHEADER},
        {"TIFF with a directory behind its end", tiff.substr(0, 30), WINCODEC_ERR_BADHEADER},
        {"TIFF whose directory is its mark", WithSize(tiff, 4, Little(0, 4)), WINCODEC_ERR_BADHEADER},
    };
    for (const auto& [what, bytes, result] : cases) {
        CComPtr<IWICBitmapDecoder> decoder;
        EXPECT_EQ(result, Open(bytes, decoder)) << what;
        EXPECT_FALSE(decoder) << what;
    }
}

TEST_F(PictureTest, RefusesDamagedPixels) {
    const std::string png = Png(3, 2), tiff = Tiff(3, 2, 300, 2);
    std::string wrongCheck = png;
    wrongCheck[wrongCheck.size() - 14] ^= 1;
    const std::pair<const char*, std::string> cases[] = {
        {"PNG with a wrong check", wrongCheck},
        {"PNG with rows left out",
         WithSize(png, 8, Chunk("IHDR", Big(3, 4) + Big(9, 4) + png.substr(24, 5)))},
        {"TIFF cut short", tiff.substr(0, tiff.size() - 4)},
    };
    for (const auto& [what, bytes] : cases) {
        CComPtr<IWICBitmapFrameDecode> frame;
        EXPECT_EQ(WINCODEC_ERR_BADIMAGE, Decode(bytes, frame)) << what;
        EXPECT_FALSE(frame) << what;
    }
}

TEST_F(PictureTest, CopiesPartsIntoTheRoomThatThereIs) {
    CComPtr<IWICBitmapFrameDecode> frame;
    ASSERT_EQ(S_OK, Decode(Bmp(3, 2), frame));
    EXPECT_EQ(Colour(1, 0) + Colour(2, 0) + Colour(1, 1) + Colour(2, 1), PixelsOf(frame, {1, 0, 2, 2}, 3));
    BYTE room[20] = {};
    EXPECT_EQ(S_OK, frame->CopyPixels(nullptr, 10, 19, room)) << "the last row needs no way to another";
    EXPECT_EQ(WINCODEC_ERR_INSUFFICIENTBUFFER, frame->CopyPixels(nullptr, 10, 18, room));
    EXPECT_EQ(E_INVALIDARG, frame->CopyPixels(nullptr, 8, 20, room));
    for (const WICRect& outside :
         {WICRect{2, 0, 2, 1}, WICRect{0, -1, 1, 1}, WICRect{0, 0, 0, 1}, WICRect{1, 0, 0x7fffffff, 1}})
        EXPECT_EQ(E_INVALIDARG, frame->CopyPixels(&outside, 10, 20, room));
}

TEST_F(PictureTest, ReadsFilesAndStreamsFromTheirBeginning) {
    const TemporaryFolder folder;
    folder.Write("picture.dat", Bmp(3, 2));
    folder.Write("letter.png", "This is a letter.");
    const auto open = [&](const char* name) {
        CComPtr<IWICBitmapDecoder> decoder;
        const std::wstring path = (folder.Path() / name).wstring();
        return m_factory->CreateDecoderFromFilename(path.c_str(), nullptr, GENERIC_READ,
                                                    WICDecodeMetadataCacheOnLoad, &decoder);
    };
    EXPECT_EQ(S_OK, open("picture.dat")) << "the name does not count";
    EXPECT_EQ(WINCODEC_ERR_COMPONENTNOTFOUND, open("letter.png"));
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), open("none.png"));
    EXPECT_TRUE(FAILED(open(""))) << "a folder";

    CComPtr<IStream> memory;
    ASSERT_EQ(S_OK, CreateStreamOnHGlobal(nullptr, TRUE, &memory));
    const std::string bytes = Bmp(3, 2);
    ASSERT_EQ(S_OK, memory->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr));
    CComPtr<IWICStream> stream;
    ASSERT_EQ(S_OK, m_factory->CreateStream(&stream));
    CComPtr<IWICBitmapDecoder> decoder;
    EXPECT_EQ(WINCODEC_ERR_NOTINITIALIZED, stream->Seek({}, STREAM_SEEK_SET, nullptr));
    ASSERT_EQ(S_OK, stream->InitializeFromIStream(memory));
    EXPECT_EQ(WINCODEC_ERR_WRONGSTATE, stream->InitializeFromIStream(memory));
    CComPtr<IWICStream> file;
    CComPtr<IStream> clone;
    BYTE some[] = {1, 2};
    ASSERT_EQ(S_OK, m_factory->CreateStream(&file));
    ASSERT_EQ(S_OK,
              file->InitializeFromFilename((folder.Path() / "picture.dat").wstring().c_str(), GENERIC_READ));
    EXPECT_EQ(S_OK, file->Read(some, 1, nullptr));
    EXPECT_EQ(S_OK, file->Clone(&clone));
    EXPECT_EQ(S_OK, clone->Read(some + 1, 1, nullptr));
    EXPECT_EQ("BM", std::string(some, some + 2)) << "a clone begins where the stream stands";
    CComPtr<IWICStream> shortStream;
    ASSERT_EQ(S_OK, m_factory->CreateStream(&shortStream));
    ASSERT_EQ(S_OK, shortStream->InitializeFromMemory(some, 2));
    LARGE_INTEGER behind = {};
    behind.QuadPart = 5;
    ULONG got = 7;
    EXPECT_EQ(S_OK, shortStream->Seek(behind, STREAM_SEEK_SET, nullptr));
    EXPECT_EQ(S_FALSE, shortStream->Read(some, 2, &got)) << "nothing is there";
    EXPECT_EQ(0U, got);
    EXPECT_EQ(S_OK,
              m_factory->CreateDecoderFromStream(stream, nullptr, WICDecodeMetadataCacheOnLoad, &decoder));
}

} // namespace
