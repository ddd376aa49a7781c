#include "Support/FakePrinterPropertyBag.h"
#include "Support/MemoryStreams.h"

#include <Spooler/QueuePropertyBag.h>
#include <SystemServices/WindowsDesktopUtilities.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>
#include <msxml6.h>

#include <string>

namespace {

// A document's text as the document writes it, so that every stream body can hold the same bytes.
const std::string Bytes = "<a>" + std::string(50000, 'x') + "</a>\r\n";

// Takes few bytes at a time, up to a bound.
class SlowTarget : public FakePropertyStream {
public:
    SlowTarget() : SlowTarget(std::make_shared<std::string>()) {}

    ULONG atATime = 1000;
    std::size_t room = Bytes.size();
    HRESULT full = S_OK; // what it says when it has no room any more
    ULONG boast = 0;     // by how much it claims to have taken more

    HRESULT STDMETHODCALLTYPE Write(const void* from, ULONG count, ULONG* written) override {
        count = (std::min)({count, atATime, static_cast<ULONG>(room - taken->size())});
        if (count == 0) {
            *written = 0;
            return full;
        }
        const HRESULT result = FakePropertyStream::Write(from, count, written);
        *written += boast;
        return result;
    }

    std::shared_ptr<std::string> taken;

private:
    explicit SlowTarget(const std::shared_ptr<std::string>& bytes)
        : FakePropertyStream(bytes, Trouble::None), taken(bytes) {}
};

CComPtr<IStream> GlobalMemoryStream() {
    CComPtr<IStream> stream;
    EXPECT_EQ(S_OK, CreateStreamOnHGlobal(nullptr, TRUE, &stream));
    EXPECT_EQ(S_OK, stream->Write(Bytes.data(), static_cast<ULONG>(Bytes.size()), nullptr));
    EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_SET, nullptr));
    return stream;
}

CComPtr<IStream> ReadOnlyStream() {
    CComPtr<IStream> stream;
    EXPECT_EQ(S_OK, WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(
                        &stream, Bytes.data(), static_cast<unsigned>(Bytes.size())));
    return stream;
}

CComPtr<IStream> DocumentStream() {
    CComPtr<IXMLDOMDocument2> document;
    EXPECT_EQ(S_OK, document.CoCreateInstance(__uuidof(DOMDocument60)));
    VARIANT_BOOL loaded = VARIANT_FALSE;
    EXPECT_EQ(S_OK, document->loadXML(CComBSTR(std::wstring(Bytes.begin(), Bytes.end()).c_str()), &loaded));
    CComPtr<IStream> stream;
    EXPECT_EQ(S_OK, document->QueryInterface(&stream));
    return stream;
}

CComPtr<IStream> PropertyStream() {
    CComPtr<IPrinterPropertyBag> bag;
    EXPECT_EQ(S_OK, OvPlatform::QueuePropertyBag::Create({}, OvPlatform::QueuePropertyBag::Access::ReadWrite,
                                                         &bag));
    CComPtr<IStream> stream;
    EXPECT_EQ(S_OK, bag->GetWriteStream(CComBSTR(L"Flow"), &stream));
    EXPECT_EQ(S_OK, stream->Write(Bytes.data(), static_cast<ULONG>(Bytes.size()), nullptr));
    EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_SET, nullptr));
    return stream;
}

struct Moved {
    HRESULT result;
    ULONGLONG read;
    ULONGLONG written;
    bool operator==(const Moved&) const = default;
};

Moved Copy(IStream* source, IStream* target, ULONGLONG count) {
    ULARGE_INTEGER asked{}, read{}, written{};
    asked.QuadPart = count;
    read.QuadPart = written.QuadPart = 77;
    const HRESULT result = source->CopyTo(target, asked, &read, &written);
    return {result, read.QuadPart, written.QuadPart};
}

} // namespace

class StreamCopy : public testing::Test {
protected:
    StreamCopy() { EXPECT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_MULTITHREADED)); }
    ~StreamCopy() override { CoUninitialize(); }
};

TEST_F(StreamCopy, EveryStreamGoesOnUntilTheTargetHasAllOrFails) {
    struct Body {
        const char* name;
        CComPtr<IStream> (*make)();
    };
    constexpr Body bodies[] = {{"global memory", GlobalMemoryStream},
                               {"read-only", ReadOnlyStream},
                               {"document", DocumentStream},
                               {"property", PropertyStream}};
    for (const Body& body : bodies) {
        SCOPED_TRACE(body.name);
        const CComPtr<IStream> source = body.make();
        const auto slow = MakeFake<SlowTarget>();
        const auto first = Copy(source, slow, 12345);
        EXPECT_EQ(first, (Moved{S_OK, 12345, 12345}));
        const auto rest = Copy(source, slow, ~ULONGLONG{0});
        EXPECT_EQ(rest, (Moved{S_OK, Bytes.size() - 12345, Bytes.size() - 12345}));
        EXPECT_EQ(*slow->taken, Bytes) << "nothing is lost";
        EXPECT_EQ(Copy(source, slow, 1), (Moved{S_OK, 0, 0})) << "at the end";

        for (const HRESULT said : {S_OK, S_FALSE, HRESULT{STG_E_ACCESSDENIED}}) {
            const auto full = MakeFake<SlowTarget>();
            full->room = 1234;
            full->full = said;
            EXPECT_EQ(S_OK, source->Seek({}, STREAM_SEEK_SET, nullptr));
            const Moved moved = Copy(source, full, 5000);
            EXPECT_EQ(moved.result, FAILED(said) ? said : STG_E_MEDIUMFULL) << "must not try for ever";
            EXPECT_EQ(moved.read, 5000u);
            EXPECT_EQ(moved.written, 1234u);
        }
        const auto boaster = MakeFake<SlowTarget>();
        boaster->atATime = 5000;
        boaster->boast = 1;
        EXPECT_EQ(S_OK, source->Seek({}, STREAM_SEEK_SET, nullptr));
        EXPECT_EQ(Copy(source, boaster, 5000), (Moved{STG_E_WRITEFAULT, 5000, 5000}));
        EXPECT_EQ(source->CopyTo(nullptr, {}, nullptr, nullptr), STG_E_INVALIDPOINTER);
    }
}

TEST_F(StreamCopy, EndsWhereTheTargetMakesTheSourceGrow) {
    const CComPtr<IStream> source = GlobalMemoryStream();
    CComPtr<IStream> clone;
    ASSERT_EQ(S_OK, source->Clone(&clone));
    ASSERT_EQ(S_OK, clone->Seek({}, STREAM_SEEK_END, nullptr));
    EXPECT_EQ(Copy(source, clone, ~ULONGLONG{0}), (Moved{S_OK, Bytes.size(), Bytes.size()}));
    EXPECT_EQ(ReadAll(source), Bytes + Bytes);
}
