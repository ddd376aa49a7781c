#include "Platform/Spooler/SampleQueue.h"
#include "Support/MemoryStreams.h"
#include "Support/Rows.h"

#include <Spooler/QueuePropertyBag.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>

#include <functional>

using namespace OvPlatform;

namespace {

CComPtr<IPrinterPropertyBag> MakeBag(QueuePropertyBag::Access access) {
    CComPtr<IPrinterPropertyBag> bag;
    EXPECT_EQ(QueuePropertyBag::Create(SampleQueue().driverProperties, access, &bag), S_OK);
    return bag;
}

HRESULT Seek(IStream* stream, LONGLONG distance, DWORD origin) {
    LARGE_INTEGER move;
    move.QuadPart = distance;
    return stream->Seek(move, origin, nullptr);
}

} // namespace

TEST(QueuePropertyBag, GivesTypedValues) {
    const auto bag = MakeBag(QueuePropertyBag::Access::ReadOnly);
    BOOL flag = FALSE;
    LONG number = 0;
    CComBSTR text;
    DWORD count = 99;
    BYTE* bytes = nullptr;
    EXPECT_EQ(bag->GetBool(CComBSTR(L"Flag"), &flag), S_OK);
    EXPECT_TRUE(flag);
    EXPECT_EQ(bag->GetInt32(CComBSTR(L"Lowest"), &number), S_OK);
    EXPECT_EQ(number, -2147483647 - 1);
    EXPECT_EQ(bag->GetString(CComBSTR(L"Text"), &text), S_OK);
    EXPECT_EQ(std::wstring(text), L"two\nlines \x00E9");
    EXPECT_EQ(bag->GetBytes(CComBSTR(L"Block"), &count, &bytes), S_OK);
    EXPECT_EQ(std::vector<BYTE>(bytes, bytes + count), (std::vector<BYTE>{0, 1, 0xFF, 0x80}));
    CoTaskMemFree(bytes);
    EXPECT_EQ(bag->GetBytes(CComBSTR(L"NoBlock"), &count, &bytes), S_OK);
    EXPECT_EQ(count, 0u);
    CoTaskMemFree(bytes);
    CComPtr<IStream> stream;
    EXPECT_EQ(bag->GetReadStream(CComBSTR(L"Flow"), &stream), S_OK);
    EXPECT_EQ(ReadAll(stream), "abc");
    EXPECT_EQ(stream->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
}

TEST(QueuePropertyBag, FailsAsPublished) {
    const auto driver = MakeBag(QueuePropertyBag::Access::ReadOnly);
    const auto queue = MakeBag(QueuePropertyBag::Access::ReadWrite);
    const HRESULT absent = HRESULT_FROM_WIN32(ERROR_NOT_FOUND),
                  denied = HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
    const CComBSTR name(L"Flag"), other(L"FLAG"), block(L"Block");
    BOOL flag = TRUE;
    CComBSTR text;
    CComPtr<IStream> stream;
    const Rows<const char*, std::function<HRESULT()>, HRESULT> rows{
        {"names have case", [&] { return driver->GetBool(other, &flag); }, absent},
        {"another type", [&] { return driver->GetString(name, &text); }, E_INVALIDARG},
        {"bytes are no stream to write", [&] { return queue->GetWriteStream(block, &stream); }, E_INVALIDARG},
        {"no name", [&] { return driver->GetBool(nullptr, &flag); }, E_INVALIDARG},
        {"no place", [&] { return driver->GetBool(name, nullptr); }, E_POINTER},
        {"driver bag: bool", [&] { return driver->SetBool(name, FALSE); }, denied},
        {"driver bag: stream", [&] { return driver->GetWriteStream(CComBSTR(L"Flow"), &stream); }, denied},
        {"no bytes", [&] { return queue->SetBytes(block, 2, nullptr); }, E_INVALIDARG},
    };
    for (const auto& [what, call, result] : rows)
        EXPECT_EQ(call(), result) << what;
    EXPECT_EQ(driver->GetBool(name, &flag), S_OK);
    EXPECT_TRUE(flag);
}

TEST(QueuePropertyBag, KeepsWhatIsSet) {
    const auto bag = MakeBag(QueuePropertyBag::Access::ReadWrite);
    const CComBSTR name(L"Flag"), flow(L"Flow");
    EXPECT_EQ(bag->SetString(name, CComBSTR(L"now text")), S_OK);
    CComBSTR text;
    EXPECT_EQ(bag->GetString(name, &text), S_OK);
    EXPECT_EQ(std::wstring(text), L"now text");

    // A shorter value replaces a longer one whole, once its size is set; readers see it at once.
    CComPtr<IStream> reader, writer;
    ASSERT_EQ(bag->GetReadStream(flow, &reader), S_OK);
    ASSERT_EQ(bag->GetWriteStream(flow, &writer), S_OK);
    EXPECT_EQ(writer->Write("xy", 2, nullptr), S_OK);
    ULARGE_INTEGER size;
    size.QuadPart = 2;
    EXPECT_EQ(writer->SetSize(size), S_OK);
    EXPECT_EQ(ReadAll(reader), "xy");

    EXPECT_EQ(Seek(writer, -3, STREAM_SEEK_END), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(Seek(writer, 1, STREAM_SEEK_END), S_OK);
    EXPECT_EQ(writer->Write("z", 1, nullptr), S_OK);
    EXPECT_EQ(ReadAll(reader), std::string("xy\0z", 4)) << "a gap reads as zeros";

    CComPtr<IStream> fresh, copy;
    ASSERT_EQ(bag->GetWriteStream(CComBSTR(L"Fresh"), &fresh), S_OK);
    EXPECT_EQ(Seek(reader, 1, STREAM_SEEK_SET), S_OK);
    size.QuadPart = 100;
    EXPECT_EQ(reader->CopyTo(fresh, size, nullptr, nullptr), S_OK);
    ASSERT_EQ(bag->GetReadStream(CComBSTR(L"Fresh"), &copy), S_OK);
    EXPECT_EQ(ReadAll(copy), std::string("y\0z", 3));
}
