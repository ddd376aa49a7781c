#include "Support/InApartment.h"
#include "Support/TestPictures.h"

#include <windows.h>
#include <atlcomcli.h>
#include <gtest/gtest.h>
#include <wincodec.h>

#include <string>

namespace {

using namespace TestPictures;

class EncoderTest : public InApartment<> {
protected:
    EncoderTest() {
        constexpr CLSID factoryClass = {
            0x317d06e8, 0x5f24, 0x433d, {0xbd, 0xf7, 0x79, 0xce, 0x68, 0xd8, 0xab, 0xc2}};
        EXPECT_EQ(S_OK, m_factory.CoCreateInstance(factoryClass));
        EXPECT_EQ(S_OK, CreateStreamOnHGlobal(nullptr, TRUE, &m_target));
        EXPECT_EQ(S_OK, m_factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &m_encoder));
    }

    void Begin() {
        ASSERT_EQ(S_OK, m_encoder->Initialize(m_target, WICBitmapEncoderNoCache));
        ASSERT_EQ(S_OK, m_encoder->CreateNewFrame(&m_frame, nullptr));
        ASSERT_EQ(S_OK, m_frame->Initialize(nullptr));
    }

    /// Of a picture whose bytes stay.
    CComPtr<IWICBitmapFrameDecode> Source(std::string& picture) {
        CComPtr<IWICStream> stream;
        CComPtr<IWICBitmapDecoder> decoder;
        CComPtr<IWICBitmapFrameDecode> source;
        EXPECT_EQ(S_OK, m_factory->CreateStream(&stream));
        EXPECT_EQ(S_OK, stream->InitializeFromMemory(reinterpret_cast<BYTE*>(picture.data()),
                                                     static_cast<DWORD>(picture.size())));
        EXPECT_EQ(S_OK, m_factory->CreateDecoderFromStream(stream, nullptr, WICDecodeMetadataCacheOnDemand,
                                                           &decoder));
        if (!decoder || FAILED(decoder->GetFrame(0, &source))) ADD_FAILURE();
        return source;
    }

    CComPtr<IWICBitmapFrameDecode> Written() {
        CComPtr<IWICBitmapDecoder> decoder;
        CComPtr<IWICBitmapFrameDecode> frame;
        EXPECT_EQ(S_OK, m_factory->CreateDecoderFromStream(m_target, nullptr, WICDecodeMetadataCacheOnDemand,
                                                           &decoder));
        if (!decoder || FAILED(decoder->GetFrame(0, &frame))) ADD_FAILURE() << "no picture was written";
        return frame;
    }

    CComPtr<IWICImagingFactory> m_factory;
    CComPtr<IStream> m_target;
    CComPtr<IWICBitmapEncoder> m_encoder;
    CComPtr<IWICBitmapFrameEncode> m_frame;
};

BYTE* Bytes(std::string& rows) { return reinterpret_cast<BYTE*>(rows.data()); }

TEST_F(EncoderTest, WritesRowsAsTheyCome) {
    Begin();
    EXPECT_EQ(S_OK, m_frame->SetSize(2, 3));
    EXPECT_EQ(S_OK, m_frame->SetResolution(300, 150));
    GUID format = GUID_WICPixelFormat32bppBGRA;
    EXPECT_EQ(S_OK, m_frame->SetPixelFormat(&format));
    EXPECT_TRUE(format == GUID_WICPixelFormat32bppRGBA) << "it says what it takes";
    std::string first = "RGBArgba??1234abcd", last = "ABCDefgh";
    EXPECT_EQ(S_OK, m_frame->WritePixels(2, 10, 18, Bytes(first)));
    EXPECT_EQ(WINCODEC_ERR_WRONGSTATE, m_frame->Commit()) << "a row is missing";
    EXPECT_EQ(WINCODEC_ERR_WRONGSTATE, m_encoder->Commit());
    EXPECT_EQ(WINCODEC_ERR_CODECTOOMANYSCANLINES, m_frame->WritePixels(2, 10, 18, Bytes(first)));
    EXPECT_EQ(WINCODEC_ERR_INSUFFICIENTBUFFER, m_frame->WritePixels(1, 8, 7, Bytes(last)));
    EXPECT_EQ(E_INVALIDARG, m_frame->WritePixels(1, 7, 8, Bytes(last)));
    EXPECT_EQ(WINCODEC_ERR_WRONGSTATE, m_frame->SetSize(2, 2));
    EXPECT_EQ(S_OK, m_frame->WritePixels(1, 8, 8, Bytes(last)));
    EXPECT_EQ(S_OK, m_frame->Commit());
    EXPECT_EQ(S_OK, m_encoder->Commit());
    EXPECT_EQ(WINCODEC_ERR_WRONGSTATE, m_encoder->Commit());

    const CComPtr<IWICBitmapFrameDecode> written = Written();
    ASSERT_TRUE(written);
    std::string pixels(24, '?');
    EXPECT_EQ(S_OK, written->CopyPixels(nullptr, 8, 24, Bytes(pixels)));
    EXPECT_EQ("RGBArgba1234abcdABCDefgh", pixels);
    double x = 0, y = 0;
    EXPECT_EQ(S_OK, written->GetResolution(&x, &y));
    EXPECT_NEAR(300, x, 0.02);
    EXPECT_NEAR(150, y, 0.02);
}

TEST_F(EncoderTest, TakesSizeAndFormatOfASourceThatIsTheFirst) {
    Begin();
    std::string png = Png(5, 4, 8, true);
    const CComPtr<IWICBitmapFrameDecode> source = Source(png);
    WICRect part = {1, 0, 2, 2};
    EXPECT_EQ(S_OK, m_frame->WriteSource(source, &part));
    EXPECT_EQ(WINCODEC_ERR_SOURCERECTDOESNOTMATCHDIMENSIONS, m_frame->WriteSource(source, &part))
        << "it is full";
    EXPECT_EQ(S_OK, m_frame->Commit());
    const CComPtr<IWICBitmapFrameDecode> written = Written();
    ASSERT_TRUE(written);
    std::string pixels(16, '?');
    EXPECT_EQ(S_OK, written->CopyPixels(nullptr, 8, 16, Bytes(pixels)));
    EXPECT_EQ(Colour(1, 0) + "\x80" + Colour(2, 0) + "\x80" + Colour(1, 1) + "\x80" + Colour(2, 1) + "\x80",
              pixels);
}

TEST_F(EncoderTest, RefusesWhatAPngFileCannotHold) {
    CComPtr<IWICBitmapEncoder> other;
    EXPECT_EQ(WINCODEC_ERR_COMPONENTNOTFOUND,
              m_factory->CreateEncoder(GUID_ContainerFormatWmp, nullptr, &other));
    EXPECT_EQ(WINCODEC_ERR_NOTINITIALIZED, m_encoder->CreateNewFrame(&m_frame, nullptr));
    Begin();
    EXPECT_EQ(WINCODEC_ERR_WRONGSTATE, m_frame->Initialize(nullptr));
    CComPtr<IWICBitmapFrameEncode> second;
    EXPECT_EQ(WINCODEC_ERR_UNSUPPORTEDOPERATION, m_encoder->CreateNewFrame(&second, nullptr));
    EXPECT_EQ(WINCODEC_ERR_IMAGESIZEOUTOFRANGE, m_frame->SetSize(65535, 65535));
    EXPECT_EQ(E_INVALIDARG, m_frame->SetSize(0, 1));
    EXPECT_EQ(E_INVALIDARG, m_frame->SetResolution(-1, 1));
    BYTE row[8] = {};
    EXPECT_EQ(WINCODEC_ERR_WRONGSTATE, m_frame->WritePixels(1, 8, 8, row)) << "without a size";
    GUID withAlpha = GUID_WICPixelFormat32bppRGBA;
    EXPECT_EQ(S_OK, m_frame->SetPixelFormat(&withAlpha));
    std::string bmp = Bmp(3, 2);
    EXPECT_EQ(WINCODEC_ERR_UNSUPPORTEDPIXELFORMAT, m_frame->WriteSource(Source(bmp), nullptr));
}

TEST_F(EncoderTest, HandsOnTheFailureOfItsStream) {
    Begin();
    CComPtr<IWICStream> readOnly;
    BYTE memory[4] = {};
    ASSERT_EQ(S_OK, m_factory->CreateStream(&readOnly));
    ASSERT_EQ(S_OK, readOnly->InitializeFromMemory(memory, sizeof(memory)));
    m_encoder.Release();
    m_frame.Release();
    ASSERT_EQ(S_OK, m_factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, &m_encoder));
    m_target = readOnly;
    Begin();
    GUID format = GUID_WICPixelFormat24bppRGB;
    BYTE pixel[3] = {};
    EXPECT_EQ(S_OK, m_frame->SetSize(1, 1));
    EXPECT_EQ(S_OK, m_frame->SetPixelFormat(&format));
    EXPECT_EQ(S_OK, m_frame->WritePixels(1, 3, 3, pixel));
    EXPECT_EQ(STG_E_ACCESSDENIED, m_frame->Commit());
}

} // namespace
