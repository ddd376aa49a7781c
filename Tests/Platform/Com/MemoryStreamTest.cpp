#include "Support/MemoryStreams.h"

#include <Com/FaultInjection.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

CComPtr<IStream> NewStream(HGLOBAL memory = nullptr, BOOL owned = TRUE) {
    CComPtr<IStream> stream;
    EXPECT_EQ(S_OK, CreateStreamOnHGlobal(memory, owned, &stream));
    return stream;
}

HRESULT Seek(IStream* stream, LONGLONG move, DWORD origin, ULARGE_INTEGER* position = nullptr) {
    LARGE_INTEGER distance;
    distance.QuadPart = move;
    return stream->Seek(distance, origin, position);
}

void Write(IStream* stream, const std::string& bytes) {
    EXPECT_EQ(S_OK, stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr));
}

std::string Read(IStream* stream, ULONG count) {
    std::string bytes(count, '?');
    ULONG got = 0;
    EXPECT_EQ(S_OK, stream->Read(bytes.data(), count, &got));
    bytes.resize(got);
    return bytes;
}

ULONGLONG SizeOf(IStream* stream) {
    STATSTG statistics;
    EXPECT_EQ(S_OK, stream->Stat(&statistics, STATFLAG_NONAME));
    return statistics.cbSize.QuadPart;
}

TEST(GlobalMemory, CountsLocksAndKnowsItsBlocks) {
    HGLOBAL movable = GlobalAlloc(GHND, 10);
    static_cast<BYTE*>(GlobalLock(movable))[9] = 7;
    GlobalLock(movable);
    EXPECT_EQ(2u, GlobalFlags(movable) & GMEM_LOCKCOUNT);
    EXPECT_EQ(nullptr, GlobalReAlloc(movable, 1000, 0)) << "locked memory does not move";
    EXPECT_TRUE(GlobalUnlock(movable));
    EXPECT_FALSE(GlobalUnlock(movable));
    EXPECT_EQ(static_cast<DWORD>(NO_ERROR), GetLastError());
    EXPECT_FALSE(GlobalUnlock(movable));
    EXPECT_EQ(static_cast<DWORD>(ERROR_NOT_LOCKED), GetLastError());
    EXPECT_EQ(movable, GlobalReAlloc(movable, 1000, GMEM_ZEROINIT));
    const auto* bytes = static_cast<BYTE*>(GlobalLock(movable));
    EXPECT_EQ(7, bytes[9]);
    EXPECT_EQ(0, bytes[999]);
    GlobalUnlock(movable);
    EXPECT_EQ(nullptr, GlobalFree(movable));
    EXPECT_EQ(movable, GlobalFree(movable)) << "freed twice";
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_HANDLE), GetLastError());
}

TEST(MemoryStream, ReadsWritesAndSeeks) {
    const auto stream = NewStream();
    Write(stream, "hello world");
    ULARGE_INTEGER position{};
    EXPECT_EQ(S_OK, Seek(stream, -5, STREAM_SEEK_END, &position));
    EXPECT_EQ(6u, position.QuadPart);
    EXPECT_EQ("world", Read(stream, 100));
    EXPECT_EQ("", Read(stream, 100));
    EXPECT_EQ(STG_E_SEEKERROR, Seek(stream, -12, STREAM_SEEK_CUR, &position));
    EXPECT_EQ(11u, position.QuadPart) << "a refused move leaves the position";
    EXPECT_EQ(STG_E_SEEKERROR, Seek(stream, 0, 3));

    ULARGE_INTEGER size;
    size.QuadPart = 4;
    EXPECT_EQ(S_OK, stream->SetSize(size));
    size.QuadPart = 5;
    EXPECT_EQ(S_OK, stream->SetSize(size));
    EXPECT_EQ(S_OK, Seek(stream, 6, STREAM_SEEK_SET));
    EXPECT_EQ("", Read(stream, 1));
    Write(stream, "!");
    EXPECT_EQ(std::string("hell\0\0!", 7), ReadAll(stream)) << "what was cut off does not come back";
    EXPECT_EQ(STG_E_INVALIDPOINTER, stream->Read(nullptr, 1, nullptr));
    EXPECT_EQ(STG_E_INVALIDPOINTER, stream->Write(nullptr, 1, nullptr));
}

TEST(MemoryStream, SharesBytesWithItsClonesButNotThePosition) {
    auto stream = NewStream();
    Write(stream, "abc");
    CComPtr<IStream> clone;
    ASSERT_EQ(S_OK, stream->Clone(&clone));
    EXPECT_EQ(S_OK, Seek(stream, 0, STREAM_SEEK_SET));
    Write(clone, "def");
    EXPECT_EQ("abcdef", Read(stream, 10));
    stream.Release();
    EXPECT_EQ("abcdef", ReadAll(clone)) << "the bytes live as long as a clone";
}

TEST(MemoryStream, CopiesWhatThereIs) {
    const auto source = NewStream(), target = NewStream();
    Write(source, std::string(100'000, 'x'));
    EXPECT_EQ(S_OK, Seek(source, 1, STREAM_SEEK_SET));
    ULARGE_INTEGER count, read{}, written{};
    count.QuadPart = static_cast<ULONGLONG>(-1);
    EXPECT_EQ(S_OK, source->CopyTo(target, count, &read, &written));
    EXPECT_EQ(99'999u, read.QuadPart);
    EXPECT_EQ(99'999u, SizeOf(target));
    // The second write into the target fails: what was moved before is reported.
    EXPECT_EQ(S_OK, Seek(source, 0, STREAM_SEEK_SET));
    OvPlatform::FaultInjectionScope fault(4, STG_E_MEDIUMFULL);
    EXPECT_EQ(STG_E_MEDIUMFULL, source->CopyTo(target, count, &read, &written));
    EXPECT_GT(read.QuadPart, written.QuadPart);
    EXPECT_GT(written.QuadPart, 0u);
}

TEST(MemoryStream, WorksOnTheCallersMemoryAndGivesItBack) {
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, 4);
    std::memcpy(GlobalLock(memory), "1234", 4);
    GlobalUnlock(memory);
    {
        const auto stream = NewStream(memory, FALSE);
        EXPECT_EQ(4u, SizeOf(stream));
        EXPECT_EQ(S_OK, Seek(stream, 0, STREAM_SEEK_END));
        for (int count = 0; count < 1000; ++count)
            Write(stream, "5");
        HGLOBAL held = nullptr;
        EXPECT_EQ(S_OK, GetHGlobalFromStream(stream, &held));
        EXPECT_EQ(memory, held);
    }
    EXPECT_EQ(1004u, GlobalSize(memory)) << "not freed by the stream, and no slack is left over";
    CComPtr<IStream> refused;
    {
        OvPlatform::FaultInjectionScope fault(1);
        EXPECT_EQ(E_OUTOFMEMORY, CreateStreamOnHGlobal(memory, TRUE, &refused));
    }
    EXPECT_EQ(1004u, GlobalSize(memory)) << "still the caller's after a failure";
    NewStream(memory, TRUE).Release();
    EXPECT_EQ(0u, GlobalSize(memory));
    EXPECT_EQ(E_INVALIDARG, CreateStreamOnHGlobal(memory, TRUE, &refused));
}

} // namespace
