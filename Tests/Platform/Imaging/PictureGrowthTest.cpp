#include "Support/Growth.h"
#include "Support/InApartment.h"
#include "Support/TestPictures.h"

#include <windows.h>
#include <atlcomcli.h>
#include <wincodec.h>

namespace {

using namespace TestPictures;

/// A picture with n pieces in it, read and decoded.
GrowthMaker Decoding(std::string (*make)(const std::string& pieces), std::string piece) {
    return [=](std::size_t n) {
        return [bytes = make(Times(n, [&](std::size_t) { return piece; }))] {
            CComPtr<IWICImagingFactory> factory;
            CComPtr<IWICStream> stream;
            CComPtr<IWICBitmapDecoder> decoder;
            CComPtr<IWICBitmapFrameDecode> frame;
            ASSERT_EQ(S_OK, factory.CoCreateInstance(CLSID_WICImagingFactory2));
            ASSERT_EQ(S_OK, factory->CreateStream(&stream));
            ASSERT_EQ(S_OK,
                      stream->InitializeFromMemory(reinterpret_cast<BYTE*>(const_cast<char*>(bytes.data())),
                                                   static_cast<DWORD>(bytes.size())));
            ASSERT_EQ(S_OK, factory->CreateDecoderFromStream(stream, nullptr, WICDecodeMetadataCacheOnDemand,
                                                             &decoder));
            ASSERT_EQ(S_OK, decoder->GetFrame(0, &frame));
        };
    };
}

std::string AnimationOf(const std::string& images) { return Gif(64, 64, images); }
std::string PngWith(const std::string& chunks) { return Png(3, 2, 8, false, chunks); }
std::string JpegWith(const std::string& segments) { return Jpeg(8, 8, 3, segments); }

const GrowthCase cases[] = {
    {"PicturesOfAnAnimation", Decoding(AnimationOf, GifImage(1, 1, 0)), 100'000},
    {"ChunksOfPng", Decoding(PngWith, Chunk("teXt", std::string(20, 'x'))), 1'000'000},
    {"SegmentsOfJpeg", Decoding(JpegWith, Segment(0xfe, std::string(20, 'x'))), 1'000},
};

class PictureGrowth : public InApartment<testing::TestWithParam<GrowthCase>> {};
TEST_P(PictureGrowth, IsInProportionToTheFile) { ExpectLinearGrowth(GetParam()); }
INSTANTIATE_TEST_SUITE_P(, PictureGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
