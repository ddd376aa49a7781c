#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"
#include "Support/TemporaryFolder.h"
#include "Support/TestPictures.h"

#include <Com/FaultInjection.h>
#include <FontsAndImages/GDIPlus.h>
#include <FontsAndImages/WICHelper.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>

namespace {

using namespace TestPictures;

std::string Converted(WICHelper& helper) {
    IStream* stream = nullptr; // the helper's
    EXPECT_TRUE(helper.GetTargetStream(&stream));
    std::string bytes(1 << 20, '\0');
    ULONG got = 0;
    if (stream == nullptr || FAILED(stream->Read(bytes.data(), 1 << 20, &got))) ADD_FAILURE();
    bytes.resize(got);
    return bytes;
}

TEST(WICHelperTest, WritesTheFirstPictureAsPng) {
    const TemporaryFolder folder;
    const Rows<const char*, std::string, GUID> cases{
        {"BMP", Bmp(3, 2, 11811), GUID_ContainerFormatBmp},
        {"GIF", Gif(3, 2, GifImage(3, 2, 0)), GUID_ContainerFormatGif},
        {"animation", Gif(3, 2, GifImage(3, 2, 0) + GifImage(3, 2, 1) + GifImage(3, 2, 1)),
         GUID_ContainerFormatGif},
        {"JPEG", Jpeg(3, 2, 3), GUID_ContainerFormatJpeg},
        {"PNG", Png(3, 2, 8, true), GUID_ContainerFormatPng},
    };
    std::map<std::string, std::string> pngs;
    for (const auto& [what, bytes, format] : cases) {
        WICHelper helper(CXString(folder.Write("picture", bytes).wstring().c_str()));
        EXPECT_FALSE(helper.ConvertImage(GUID_ContainerFormatPng)) << "not initialised";
        EXPECT_FALSE(helper.Initialize()) << "the first time";
        ASSERT_TRUE(helper.IsInitialized()) << what << std::hex << helper.GetLastError();
        EXPECT_TRUE(helper.Initialize());
        EXPECT_EQ(S_OK, helper.GetLastError());
        EXPECT_TRUE(helper.GetDecoderContainerFormatGUID() == format) << what;
        ASSERT_TRUE(helper.ConvertImage(GUID_ContainerFormatPng))
            << what << std::hex << helper.GetLastError();
        const std::string png = pngs[what] = Converted(helper);
        EXPECT_EQ("\x89PNG", png.substr(0, 4)) << what;
        EXPECT_EQ(Big(3, 4) + Big(2, 4), png.substr(16, 8)) << what;
        const std::string resolution = "pHYs" + Big(11811, 4) + Big(11811, 4);
        EXPECT_EQ(png.find(resolution) != std::string::npos, format == GUID_ContainerFormatBmp) << what;
    }
    EXPECT_EQ(pngs.at("animation"), pngs.at("GIF")) << "the first of its pictures";
}

TEST(WICHelperTest, KeepsTheFailureOfWhatIsNoPicture) {
    WICHelper none(CXString(L"/nowhere/picture.gif"));
    EXPECT_FALSE(none.Initialize());
    EXPECT_FALSE(none.IsInitialized());
    EXPECT_TRUE(FAILED(none.GetLastError()));
    EXPECT_FALSE(none.Initialize()) << "not a success either";
    EXPECT_TRUE(none.GetDecoderContainerFormatGUID() == GUID{});

    std::string text = "This is a letter, and no picture at all, although it is long enough.";
    WICHelper helper;
    EXPECT_FALSE(helper.InitializeData(text.data(), static_cast<ULONG>(text.size())));
    EXPECT_FALSE(helper.IsInitialized());
    EXPECT_EQ(WINCODEC_ERR_COMPONENTNOTFOUND, helper.GetLastError());
    std::string picture = Bmp(3, 2);
    EXPECT_FALSE(helper.InitializeData(picture.data(), static_cast<ULONG>(picture.size())));
    EXPECT_TRUE(helper.IsInitialized()) << "another source";
    EXPECT_FALSE(helper.InitializeData(text.data(), static_cast<ULONG>(text.size())));
    EXPECT_FALSE(helper.IsInitialized()) << "not by the one before";
    helper.InitializeData(picture.data(), static_cast<ULONG>(picture.size()));

    IStream* stream = nullptr;
    EXPECT_TRUE(helper.GetTargetStream(&stream));
    EXPECT_EQ(nullptr, stream);
    EXPECT_FALSE(helper.GetTargetStream(nullptr));
    EXPECT_EQ(E_POINTER, helper.GetLastError());
    EXPECT_FALSE(helper.ConvertImage(GUID{}));
    EXPECT_EQ(WINCODEC_ERR_COMPONENTNOTFOUND, helper.GetLastError());
    EXPECT_TRUE(helper.ConvertImage(GUID_ContainerFormatPng)) << "it can be tried again";
}

TEST(WICHelperTest, TellsEachFailureOfThePlatformAndCanBeAskedAgain) {
    const TemporaryFolder folder;
    const CXString file(folder.Write("picture", Gif(3, 2, GifImage(3, 2, 0))).wstring().c_str());
    const auto convert = [](WICHelper& helper) {
        helper.Initialize();
        return helper.ConvertImage(GUID_ContainerFormatPng);
    };
    WICHelper whole(file);
    OvPlatform::FaultInjection::CountCalls();
    EXPECT_TRUE(convert(whole));
    OvPlatform::FaultInjection::Reset();
    const LONG calls = OvPlatform::FaultInjection::CallCount();
    const std::string png = Converted(whole);
    EXPECT_GT(calls, 15);
    for (LONG call = 1; call <= calls; ++call) {
        WICHelper helper(file);
        {
            const OvPlatform::FaultInjectionScope fault(call, E_ACCESSDENIED);
            EXPECT_FALSE(convert(helper)) << call;
        }
        EXPECT_TRUE(FAILED(helper.GetLastError())) << call;
        EXPECT_TRUE(convert(helper)) << call;
        EXPECT_EQ(png, Converted(helper)) << call;
    }
}

TEST(GDIPlusTest, RunsForTheLifeOfEachObject) {
    std::string picture = Png(3, 2);
    const TemporaryFolder folder;
    const std::wstring path = folder.Write("picture", picture).wstring();
    GDIPlus first;
    EXPECT_EQ(Gdiplus::Ok, first.GetGDIPlusStartStatus());
    {
        GDIPlus copy(first);
        GDIPlus other;
        other = first;
        EXPECT_EQ(Gdiplus::Ok, copy.GetGDIPlusStartStatus());
    }
    EXPECT_EQ(Gdiplus::Ok, Gdiplus::Bitmap(path.c_str()).GetLastStatus()) << "the first is still there";
}

} // namespace
