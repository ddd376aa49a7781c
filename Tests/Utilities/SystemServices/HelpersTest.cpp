#include "Support/ReportRecorder.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <BinaryForms/Hash32.h>
#include <LowLevelFacilities/WideStrings/ByteBuffer.h>
#include <SystemServices/OrvelUtilities.h>
#include <SystemServices/WindowsDesktopUtilities.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>

#include <string>

namespace {

LARGE_INTEGER move(LONGLONG distance) {
    LARGE_INTEGER result{};
    result.QuadPart = distance;
    return result;
}

TEST(ReadOnlyStream, ReadsACopyAndRefusesToWrite) {
    std::string bytes = "0123456789";
    CComPtr<IStream> stream;
    ASSERT_EQ(S_OK, WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(&stream, bytes.data(), 10));
    bytes.assign(10, 'x');
    char buffer[20] = {};
    ULONG count = 0;
    EXPECT_EQ(S_OK, stream->Read(buffer, 4, &count));
    EXPECT_EQ("0123", std::string(buffer, count));
    EXPECT_EQ(S_OK, stream->Seek(move(-2), STREAM_SEEK_END, nullptr));
    EXPECT_EQ(S_FALSE, stream->Read(buffer, 20, &count));
    EXPECT_EQ("89", std::string(buffer, count));
    EXPECT_EQ(S_OK, stream->Seek(move(100), STREAM_SEEK_SET, nullptr));
    EXPECT_EQ(S_FALSE, stream->Read(buffer, 1, nullptr));
    EXPECT_EQ(STG_E_ACCESSDENIED, stream->Write("a", 1, &count));
    EXPECT_EQ(STG_E_ACCESSDENIED, stream->SetSize(ULARGE_INTEGER{}));
    EXPECT_EQ(S_OK, stream->Seek(move(3), STREAM_SEEK_SET, nullptr));
    CComPtr<IStream> clone;
    ASSERT_EQ(S_OK, stream->Clone(&clone));
    stream.Release();
    EXPECT_EQ(S_FALSE, clone->Read(buffer, 20, &count));
    EXPECT_EQ("3456789", std::string(buffer, count));
}

TEST(ReadOnlyStream, IsNotMadeFromNothing) {
    CComPtr<IStream> stream;
    EXPECT_EQ(E_POINTER, WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(nullptr, "", 0));
    EXPECT_EQ(E_POINTER, WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(&stream, nullptr, 1));
    ASSERT_EQ(S_OK, WindowsDesktopUtilities::CreateReadOnlyIStreamFromBuffer(&stream, nullptr, 0));
    char byte = 0;
    EXPECT_EQ(S_FALSE, stream->Read(&byte, 1, nullptr));
}

TEST(MessageBox, IsReportedAndAnswered) {
    SkipOnWindows("The box waits for a user.");
    const ReportRecorder recorder;
    EXPECT_EQ(IDOK, WindowsDesktopUtilities::noHangDebugMessageBox(nullptr, L"Text \u20AC", L"Caption",
                                                                   MB_TASKMODAL | MB_ICONERROR));
    ASSERT_EQ(1u, recorder.reports().size());
    EXPECT_EQ("Text \xE2\x82\xAC", recorder.reports()[0].text);
    EXPECT_EQ("Caption", recorder.reports()[0].caption);
}

TEST(Hash32, IsStable) {
    // Published values of the function.
    EXPECT_EQ(0x811C9DC5u, Hash32::GetHash32("", 0));
    EXPECT_EQ(0xBF9CF968u, Hash32::GetHash32("foobar", 6));
    EXPECT_EQ(Hash32::GetHash32("a\0\xAC\x20", 4), Hash32::GetHash32(CXString(L"a\u20AC")));
}

TEST(OrvelUtilities, EncodeAndDecodeWithinTheirRoom) {
    for (const int count : {0, 1, 2, 3, 19}) {
        ByteBuffer bytes(static_cast<std::size_t>(count), 0xA5);
        int length = OrvelUtilities::Base64EncodeGetRequiredLength(count, 2);
        std::wstring text(static_cast<std::size_t>(length), L'?');
        int tooShort = length - 1;
        EXPECT_EQ(count == 0,
                  OrvelUtilities::Base64Encode(bytes.getLpbyte(), count, text.data(), &tooShort, 2));
        ASSERT_TRUE(OrvelUtilities::Base64Encode(bytes.getLpbyte(), count, text.data(), &length, 2));
        EXPECT_EQ(static_cast<int>(text.size()), length);

        int decodedLength = OrvelUtilities::Base64DecodeGetRequiredLength(length);
        ByteBuffer decoded(static_cast<std::size_t>(decodedLength));
        ASSERT_TRUE(OrvelUtilities::Base64Decode(text.data(), length, decoded.getLpbyte(), &decodedLength));
        decoded.resize(static_cast<std::size_t>(decodedLength));
        EXPECT_EQ(bytes, decoded);
        int noRoom = count - 1;
        EXPECT_EQ(count == 0,
                  OrvelUtilities::Base64Decode(text.data(), length, decoded.getLpbyte(), &noRoom));
    }
    int length = 8;
    const unsigned char byte = 0;
    char text[8] = "xxxxxxx";
    EXPECT_TRUE(OrvelUtilities::Base64Encode(&byte, 1, text, &length, 2));
    EXPECT_STREQ("AA==", text); // there was room for a terminator
    length = 8;
    EXPECT_FALSE(OrvelUtilities::Base64Encode(&byte, 1, text, &length, 0)); // line breaks are not offered
    EXPECT_EQ(0, length);
}

TEST(OrvelUtilities, SplitPathsAndLists) {
    for (const auto& [path, folder, file] :
         Rows<const wchar_t*, const wchar_t*, const wchar_t*>{{L"C:\\a\\b.txt", L"C:\\a\\", L"b.txt"},
                                                              {L"/usr/lib/x", L"/usr/lib/", L"x"},
                                                              {L"C:x", L"C:", L"x"},
                                                              {L"a/b\\", L"a/b\\", L""},
                                                              {L"", L"", L""}}) {
        EXPECT_EQ(folder, OrvelUtilities::getPathFromFileName(path));
        EXPECT_EQ(file, OrvelUtilities::getFileNameFromFullPath(path));
    }
    std::vector<CXString> pieces;
    OrvelUtilities::parseCharacterSeparatedStrings(pieces, L"a, b ,", L',', false, false);
    OrvelUtilities::parseCharacterSeparatedStrings(pieces, L" c , ,d", L',', true, true);
    EXPECT_EQ((std::vector<CXString>{L"a", L" b ", L"", L"c", L"d"}), pieces);
}

} // namespace
