#include "Support/Growth.h"
#include "Support/InApartment.h"
#include "Support/TestPictures.h"

#include <windows.h>
#include <atlcomcli.h>
#include <wincodec.h>

namespace {

using namespace TestPictures;

void Decode(const std::string& bytes) {
    CComPtr<IWICImagingFactory> factory;
    CComPtr<IWICStream> stream;
    CComPtr<IWICBitmapDecoder> decoder;
    CComPtr<IWICBitmapFrameDecode> frame;
    ASSERT_EQ(S_OK, factory.CoCreateInstance(CLSID_WICImagingFactory2));
    ASSERT_EQ(S_OK, factory->CreateStream(&stream));
    ASSERT_EQ(S_OK, stream->InitializeFromMemory(reinterpret_cast<BYTE*>(const_cast<char*>(bytes.data())),
                                                 static_cast<DWORD>(bytes.size())));
    ASSERT_EQ(S_OK,
              factory->CreateDecoderFromStream(stream, nullptr, WICDecodeMetadataCacheOnDemand, &decoder));
    ASSERT_EQ(S_OK, decoder->GetFrame(0, &frame));
}

/// A picture that grows with n.
GrowthMaker Decoding(std::string (*make)(std::size_t n)) {
    return [=](std::size_t n) { return [bytes = make(n)] { Decode(bytes); }; };
}

std::string Rows(std::size_t n) {
    const auto height = static_cast<std::uint32_t>(n);
    return Gif(200, height, GifImage(200, height, 0));
}
std::string Animation(std::size_t n) {
    return Gif(64, 64, Times(n, [](std::size_t) { return GifImage(1, 1, 0); }));
}
std::string Chunks(std::size_t n) {
    return Png(3, 2, 8, false, Times(n, [](std::size_t) { return Chunk("teXt", std::string(20, 'x')); }));
}
std::string Segments(std::size_t n) {
    return Jpeg(8, 8, 3, Times(n, [](std::size_t) { return Segment(0xfe, std::string(20, 'x')); }));
}

const GrowthCase cases[] = {
    {"RowsOfGif", Decoding(Rows), 16'000},
    {"PicturesOfAnAnimation", Decoding(Animation), 100'000},
    {"ChunksOfPng", Decoding(Chunks), 1'000'000},
    {"SegmentsOfJpeg", Decoding(Segments), 1'000},
};

class PictureGrowth : public InApartment<testing::TestWithParam<GrowthCase>> {};
TEST_P(PictureGrowth, IsInProportionToTheFile) { ExpectLinearGrowth(GetParam()); }
INSTANTIATE_TEST_SUITE_P(, PictureGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
