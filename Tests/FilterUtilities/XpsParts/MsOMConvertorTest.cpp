#include "Support/FakeParts.h"

#include <ComSupport/MsSafeCoinit.h>
#include <LowLevelFacilities/CPComException.h>
#include <XpsParts/MsOMConvertor.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

HRESULT ResultOf(const std::function<void()>& body) {
    try {
        body();
        return S_OK;
    } catch (const CPComException& failure) {
        return failure.GetHresult();
    }
}

ULONGLONG PositionOf(IStream* stream) {
    ULARGE_INTEGER position{};
    stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_CUR, &position);
    return position.QuadPart;
}

TEST(CreateIStreamFromIPrintReadStream, CopiesTheWholeStreamWhereverItStood) {
    const std::string bytes = std::string(100000, 'x') + "end";
    for (const ULONG chunk : {1u, 7u, 4096u, 0xFFFFFFFFu}) {
        for (const bool tellsEndOfFile : {true, false}) {
            const auto reader = MakeFake<MemoryReadStream>(chunk == 1 ? "few bytes" : bytes);
            reader->mostBytesAtATime = chunk;
            reader->tellsEndOfFile = tellsEndOfFile;
            reader->Seek(5, STREAM_SEEK_SET, nullptr);
            const CComPtr<IStream> copy =
                CreateIStreamFromIPrintReadStream(CComPtr<IPrintReadStream>(reader));
            ASSERT_TRUE(copy);
            EXPECT_EQ(PositionOf(copy), 0u);
            EXPECT_EQ(ReadAll(copy), chunk == 1 ? "few bytes" : bytes) << chunk;
        }
    }
}

TEST(CreateIStreamFromIPrintReadStream, EmptyStreamGivesAnEmptyCopy) {
    for (const bool tellsEndOfFile : {true, false}) {
        const auto reader = MakeFake<MemoryReadStream>("");
        reader->tellsEndOfFile = tellsEndOfFile;
        const CComPtr<IStream> copy = CreateIStreamFromIPrintReadStream(CComPtr<IPrintReadStream>(reader));
        ASSERT_TRUE(copy);
        EXPECT_EQ(PositionOf(copy), 0u);
        EXPECT_EQ(ReadAll(copy), "");
    }
}

TEST(CreateIStreamFromIPrintReadStream, FailuresAreThrown) {
    const auto reader = MakeFake<MemoryReadStream>("bytes");
    reader->readResult = E_ACCESSDENIED;
    EXPECT_EQ(ResultOf([&] { CreateIStreamFromIPrintReadStream(CComPtr<IPrintReadStream>(reader)); }),
              E_ACCESSDENIED);
    reader->seekResult = E_PENDING;
    EXPECT_EQ(ResultOf([&] { CreateIStreamFromIPrintReadStream(CComPtr<IPrintReadStream>(reader)); }),
              E_PENDING);
    EXPECT_EQ(reader->References(), 1u);
    EXPECT_EQ(ResultOf([] { CreateIStreamFromIPrintReadStream(nullptr); }), E_INVALIDARG);
}

TEST(GetIStreamFromPart, CopiesThePartAndRefusesNone) {
    const auto part = MakeFake<FakeImagePart>(L"/Resources/1.png", "image bytes");
    EXPECT_EQ(ReadAll(GetIStreamFromPart(CComPtr<IPartBase>(part))), "image bytes");
    part->streamResult = E_PENDING;
    EXPECT_EQ(ResultOf([&] { GetIStreamFromPart(CComPtr<IPartBase>(part)); }), E_PENDING);
    EXPECT_EQ(ResultOf([] { GetIStreamFromPart(nullptr); }), E_INVALIDARG);
}

TEST(CreateOpcPartUriFromPart, NamesThePart) {
    const MsSafeCoInit apartment;
    CComPtr<IOpcFactory> factory;
    ASSERT_EQ(factory.CoCreateInstance(__uuidof(OpcFactory)), S_OK);
    const auto part = MakeFake<FakeImagePart>(L"/Resources/1.png");
    const CComPtr<IOpcPartUri> uri = CreateOpcPartUriFromPart(CComPtr<IPartBase>(part), factory);
    ASSERT_TRUE(uri);
    CComPtr<IOpcPartUri> same;
    ASSERT_EQ(factory->CreatePartUri(L"/resources/1.PNG", &same), S_OK);
    INT32 order = 1;
    EXPECT_EQ(uri->ComparePartUri(same, &order), S_OK);
    EXPECT_EQ(order, 0);

    EXPECT_EQ(ResultOf([&] { CreateOpcPartUriFromPart(nullptr, factory); }), E_INVALIDARG);
    EXPECT_EQ(ResultOf([&] { CreateOpcPartUriFromPart(CComPtr<IPartBase>(part), nullptr); }), E_INVALIDARG);
    part->uri = L"http://elsewhere/1.png";
    EXPECT_TRUE(FAILED(ResultOf([&] { CreateOpcPartUriFromPart(CComPtr<IPartBase>(part), factory); })));
    part->uriResult = E_PENDING;
    EXPECT_EQ(ResultOf([&] { CreateOpcPartUriFromPart(CComPtr<IPartBase>(part), factory); }), E_PENDING);
}

} // namespace
