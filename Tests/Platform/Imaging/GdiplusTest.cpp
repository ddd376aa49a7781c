#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestPictures.h"

#include <windows.h>
#include <atlcomcli.h>
#include <gdiplus.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace TestPictures;

class GdiplusTest : public testing::Test {
protected:
    GdiplusTest() {
        const Gdiplus::GdiplusStartupInput input;
        EXPECT_EQ(Gdiplus::Ok, Gdiplus::GdiplusStartup(&m_token, &input, nullptr));
    }
    ~GdiplusTest() override { Gdiplus::GdiplusShutdown(m_token); }

    ULONG_PTR m_token = 0;
};

TEST_F(GdiplusTest, TellsSizeAndResolution) {
    const TemporaryFolder folder;
    const Rows<std::string, unsigned, float> cases{
        {Bmp(3, 2, 11811), 3u, 300.0f},
        {Png(5, 2, 8, false, PngResolution(5906)), 5u, 150.0f},
        {Jpeg(9, 2, 3, JfifDensity(1, 200)), 9u, 200.0f},
    };
    for (const auto& [bytes, width, dpi] : cases) {
        const std::wstring path = folder.Write("picture", bytes).wstring();
        Gdiplus::Bitmap picture(path.c_str());
        EXPECT_EQ(Gdiplus::Ok, picture.GetLastStatus());
        EXPECT_EQ(width, picture.GetWidth());
        EXPECT_EQ(2u, picture.GetHeight());
        EXPECT_NEAR(dpi, picture.GetHorizontalResolution(), 0.02);
        EXPECT_NEAR(dpi, picture.GetVerticalResolution(), 0.02);
    }
    CComPtr<IStream> stream;
    ASSERT_EQ(S_OK, CreateStreamOnHGlobal(nullptr, TRUE, &stream));
    const std::string bytes = Png(5, 2);
    ASSERT_EQ(S_OK, stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr));
    ASSERT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_SET, nullptr));
    Gdiplus::Bitmap picture(stream);
    EXPECT_EQ(Gdiplus::Ok, picture.GetLastStatus());
    EXPECT_EQ(5u, picture.GetWidth());
    SkipOnWindows("it takes the screen's resolution for that of a picture without one");
    EXPECT_EQ(0, picture.GetHorizontalResolution());
}

TEST_F(GdiplusTest, SaysWhyThereIsNoPicture) {
    const TemporaryFolder folder;
    const std::string png = Png(3, 2);
    const auto statusOf = [&](const std::string& bytes) {
        const std::wstring path = folder.Write("picture.png", bytes).wstring();
        Gdiplus::Bitmap picture(path.c_str());
        EXPECT_EQ(0u, picture.GetWidth());
        return picture.GetLastStatus();
    };
    EXPECT_NE(Gdiplus::Ok, statusOf("This is a letter."));
    const std::wstring missing = (folder.Path() / "none.png").wstring();
    EXPECT_NE(Gdiplus::Ok, Gdiplus::Bitmap(missing.c_str()).GetLastStatus());
    SkipOnWindows("it says so by other numbers, and reads what is cut as far as it goes");
    EXPECT_EQ(Gdiplus::UnknownImageFormat, statusOf("This is a letter."));
    EXPECT_EQ(Gdiplus::GenericError, statusOf(png.substr(0, png.size() - 20)));
    EXPECT_EQ(Gdiplus::GenericError,
              statusOf(png.substr(0, png.size() - 14) + "????" + png.substr(png.size() - 12)))
        << "a wrong check, which the header does not show";
    EXPECT_EQ(Gdiplus::OutOfMemory, statusOf(Jpeg(65535, 65535, 1)));
    EXPECT_EQ(Gdiplus::FileNotFound, Gdiplus::Bitmap(missing.c_str()).GetLastStatus());
    const Gdiplus::Bitmap none(static_cast<IStream*>(nullptr));
    EXPECT_EQ(Gdiplus::InvalidParameter, none.GetLastStatus());
    EXPECT_EQ(Gdiplus::Ok, none.GetLastStatus()) << "it is told once";
}

TEST(GdiplusStart, CountsUntilTheLastShutdown) {
    SkipOnWindows("a call of a library that was not started is not for tests");
    const TemporaryFolder folder;
    const std::wstring path = folder.Write("picture", Png(3, 2)).wstring();
    const auto status = [&] { return Gdiplus::Bitmap(path.c_str()).GetLastStatus(); };
    EXPECT_EQ(Gdiplus::GdiplusNotInitialized, status());
    Gdiplus::GdiplusStartupInput input;
    ULONG_PTR first = 0, second = 0;
    EXPECT_EQ(Gdiplus::Ok, Gdiplus::GdiplusStartup(&first, &input, nullptr));
    EXPECT_EQ(Gdiplus::Ok, Gdiplus::GdiplusStartup(&second, &input, nullptr));
    Gdiplus::GdiplusShutdown(first);
    Gdiplus::GdiplusShutdown(first);
    EXPECT_EQ(Gdiplus::Ok, status());
    Gdiplus::GdiplusShutdown(second);
    EXPECT_EQ(Gdiplus::GdiplusNotInitialized, status());
    input.GdiplusVersion = 3;
    EXPECT_EQ(Gdiplus::UnsupportedGdiplusVersion, Gdiplus::GdiplusStartup(&first, &input, nullptr));
    EXPECT_EQ(Gdiplus::InvalidParameter, Gdiplus::GdiplusStartup(nullptr, &input, nullptr));
}

} // namespace
