#include "Support/FakePrinterPropertyBag.h"
#include "Support/MemoryStreams.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <SystemServices/WindowsDesktopUtilities.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>

#include <string>

namespace {

const std::string sourceBytes = "<a>" + std::string(50000, 'x') + "</a>";

// Takes few bytes at a time, up to a bound.
class SlowTarget : public FakePropertyStream {
public:
    SlowTarget() : SlowTarget(std::make_shared<std::string>()) {}

    ULONG atATime = 1000;
    std::size_t room = sourceBytes.size();
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
    EXPECT_EQ(S_OK, stream->Write(sourceBytes.data(), static_cast<ULONG>(sourceBytes.size()), nullptr));
    EXPECT_EQ(S_OK, stream->Seek({}, STREAM_SEEK_SET, nullptr));
    return stream;
}

CComPtr<IStream> ReadOnlyStream() {
    CComPtr<IStream> stream;
    EXPECT_EQ(S_OK, WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(
                        &stream, sourceBytes.data(), static_cast<unsigned>(sourceBytes.size())));
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

TEST(StreamCopy, GoesOnUntilTheTargetHasAllOrFails) {
    for (const auto& [name, make] : Rows<const char*, CComPtr<IStream> (*)()>{
             {"global memory", GlobalMemoryStream}, {"read-only", ReadOnlyStream}}) {
        if (IsWine() && make == GlobalMemoryStream) continue; // it does not wait for a slow target
        SCOPED_TRACE(name);
        const CComPtr<IStream> source = make();
        const auto slow = MakeFake<SlowTarget>();
        EXPECT_EQ(Copy(source, slow, 12345), (Moved{S_OK, 12345, 12345}));
        const std::size_t rest = sourceBytes.size() - 12345;
        EXPECT_EQ(Copy(source, slow, ~ULONGLONG{0}), (Moved{S_OK, rest, rest}));
        EXPECT_EQ(*slow->taken, sourceBytes) << "nothing is lost";
        EXPECT_EQ(Copy(source, slow, 1), (Moved{S_OK, 0, 0})) << "at the end";

        for (const HRESULT said : {S_OK, S_FALSE, HRESULT{STG_E_ACCESSDENIED}}) {
            const auto full = MakeFake<SlowTarget>();
            full->room = 1234;
            full->full = said;
            EXPECT_EQ(S_OK, source->Seek({}, STREAM_SEEK_SET, nullptr));
            const HRESULT expected = FAILED(said) ? said : STG_E_MEDIUMFULL; // must not try for ever
            EXPECT_EQ(Copy(source, full, 5000), (Moved{expected, 5000, 1234}));
        }
        const auto boaster = MakeFake<SlowTarget>();
        boaster->atATime = 5000;
        boaster->boast = 1;
        EXPECT_EQ(S_OK, source->Seek({}, STREAM_SEEK_SET, nullptr));
        EXPECT_EQ(Copy(source, boaster, 5000), (Moved{STG_E_WRITEFAULT, 5000, 5000}));
        EXPECT_EQ(source->CopyTo(nullptr, {}, nullptr, nullptr), STG_E_INVALIDPOINTER);
    }
}

TEST(StreamCopy, EndsWhereTheTargetMakesTheSourceGrow) {
    SkipUnderWine("It goes on for ever.");
    const CComPtr<IStream> source = GlobalMemoryStream();
    CComPtr<IStream> clone;
    ASSERT_EQ(S_OK, source->Clone(&clone));
    ASSERT_EQ(S_OK, clone->Seek({}, STREAM_SEEK_END, nullptr));
    EXPECT_EQ(Copy(source, clone, ~ULONGLONG{0}), (Moved{S_OK, sourceBytes.size(), sourceBytes.size()}));
    EXPECT_EQ(ReadAll(source), sourceBytes + sourceBytes);
}

} // namespace
