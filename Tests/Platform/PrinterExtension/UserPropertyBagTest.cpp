#include "Support/EnvironmentVariable.h"
#include "Support/Rows.h"
#include "Support/TemporaryFolder.h"

#include <PrinterExtension/UserPropertyBag.h>

#include <atlcomcli.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>

using namespace OvPlatform;

namespace {

class UserBag : public testing::Test {
protected:
    static CComPtr<IPrinterPropertyBag> Bag(const wchar_t* printer = L"Lobby") {
        CComPtr<IPrinterPropertyBag> bag;
        bag.Attach(new UserPropertyBag(printer));
        return bag;
    }
    static HRESULT Set(const wchar_t* name, std::wstring text) {
        const CComBSTR value(static_cast<int>(text.size()), text.data());
        return Bag()->SetString(CComBSTR(name), value);
    }
    static std::wstring Get(const wchar_t* name) {
        CComBSTR text;
        const HRESULT result = Bag()->GetString(CComBSTR(name), &text);
        return result == S_OK ? std::wstring(text.m_str, text.Length()) : L"failed";
    }

    TemporaryFolder m_folder;
    EnvironmentVariable m_variable{"OV_USER_PROPERTIES", (m_folder / "users").string()};
};

TEST_F(UserBag, KeepsEachKindOfValueForAllWhoAsk) {
    const auto bag = Bag();
    BYTE block[] = {0, 1, 0xFF};
    EXPECT_EQ(S_OK, bag->SetBool(CComBSTR(L"Flag"), TRUE));
    EXPECT_EQ(S_OK, bag->SetInt32(CComBSTR(L"Number"), -5));
    EXPECT_EQ(S_OK, bag->SetBytes(CComBSTR(L"Block"), 3, block));
    EXPECT_EQ(S_OK, bag->SetBytes(CComBSTR(L"NoBlock"), 0, nullptr));
    const std::wstring text = L" <&\"]]> \r\n\t\x00E9 \xD83D\xDDA8 ";
    EXPECT_EQ(S_OK, Set(L"A \"name\" & \x00E9", text));
    EXPECT_EQ(S_OK, Set(L"Empty", L""));

    EXPECT_EQ(text, Get(L"A \"name\" & \x00E9"));
    EXPECT_EQ(L"", Get(L"Empty"));
    BOOL flag = FALSE;
    LONG number = 0;
    DWORD count = 0;
    BYTE* bytes = nullptr;
    const auto other = Bag(L"LOBBY"); // the same printer
    EXPECT_EQ(S_OK, other->GetBool(CComBSTR(L"Flag"), &flag));
    EXPECT_TRUE(flag);
    EXPECT_EQ(S_OK, other->GetInt32(CComBSTR(L"Number"), &number));
    EXPECT_EQ(-5, number);
    ASSERT_EQ(S_OK, other->GetBytes(CComBSTR(L"Block"), &count, &bytes));
    EXPECT_EQ((std::vector<BYTE>{0, 1, 0xFF}), std::vector<BYTE>(bytes, bytes + count));
    CoTaskMemFree(bytes);
    EXPECT_EQ(E_INVALIDARG, other->GetInt32(CComBSTR(L"Flag"), &number)) << "of another kind";
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_NOT_FOUND), Bag(L"Attic")->GetBool(CComBSTR(L"Flag"), &flag));
    EXPECT_EQ((std::vector<std::string>{"users"}), m_folder.Names());
}

TEST_F(UserBag, StandsInAFileNamedForThePrinter) {
    const std::wstring longName = L"A" + std::wstring(100, L'\x4E00');
    std::string longFile = "a";
    for (int i = 0; i < 66; ++i)
        longFile += "\xE4\xB8\x80";
    const Rows<const wchar_t*, const char*> rows{
        {L"Lobby Printer", "lobby printer.xml"},
        {L"\\\\Server\\A/B", "\\\\server\\a%2Fb.xml"},
        {L"..", "%2E..xml"},
        {L"100% \x00DC\n", "100%25 \xC3\xBC%0A.xml"},
    };
    for (const auto& [printer, file] : rows) {
        EXPECT_EQ(S_OK, Bag(printer)->SetBool(CComBSTR(L"Flag"), TRUE));
        EXPECT_TRUE(std::filesystem::exists(m_folder / "users" / file)) << file;
    }
    for (const wchar_t* end : {L"1", L"2"}) // longer than the name of a file may be
        EXPECT_EQ(S_OK, Bag((longName + end).c_str())->SetBool(CComBSTR(L"Flag"), TRUE));
    int longOnes = 0;
    for (const auto& file : std::filesystem::directory_iterator(m_folder / "users"))
        longOnes += file.path().filename().string().starts_with(longFile + "%-");
    EXPECT_EQ(2, longOnes) << "each its own";
    const EnvironmentVariable none("OV_USER_PROPERTIES", "");
    {
        const EnvironmentVariable home("XDG_CONFIG_HOME", (m_folder / "config").string());
        EXPECT_EQ(S_OK, Set(L"Text", L"t"));
        EXPECT_TRUE(std::filesystem::exists(m_folder / "config/ov-platform/printers/lobby.xml"));
    }
    const EnvironmentVariable noConfiguration("XDG_CONFIG_HOME", ""), noHome("HOME", "");
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND), Set(L"Text", L"t")) << "there is no place";
    EXPECT_EQ(L"failed", Get(L"Text"));
}

TEST_F(UserBag, KeepsTheOldValueWhereANewOneCannotBe) {
    ASSERT_EQ(S_OK, Set(L"Text", L"old"));
    const auto bag = Bag();
    const CComBSTR name(L"Text");
    const HRESULT full = HRESULT_FROM_WIN32(ERROR_DISK_FULL);
    std::vector<BYTE> large(5u << 20);
    const Rows<const char*, std::function<HRESULT()>, HRESULT> rows{
        {"no name", [&] { return bag->SetBool(nullptr, TRUE); }, E_INVALIDARG},
        {"no bytes", [&] { return bag->SetBytes(name, 1, nullptr); }, E_INVALIDARG},
        {"zero in a text", [&] { return Set(L"Text", std::wstring(L"a\0b", 3)); }, E_INVALIDARG},
        {"half a character", [&] { return Set(L"Text", L"\xD83D"); }, E_INVALIDARG},
        {"a name no XML holds", [&] { return Set(L"a\x0001", L"t"); }, E_INVALIDARG},
        {"a name too long", [&] { return Set(std::wstring(40000, L'n').c_str(), L"t"); }, E_INVALIDARG},
        {"too much", [&] { return bag->SetBytes(name, 5u << 20, large.data()); }, full},
    };
    for (const auto& [what, call, result] : rows)
        EXPECT_EQ(result, call()) << what;
    EXPECT_EQ(L"old", Get(L"Text"));
}

TEST_F(UserBag, LosesNothingToAnotherProcess) {
    const auto setMany = [](const wchar_t* of) {
        bool isDone = true;
        for (int i = 0; i < 50; ++i)
            isDone &= Set((of + std::to_wstring(i)).c_str(), L"t") == S_OK;
        return isDone;
    };
    const pid_t other = fork();
    ASSERT_NE(-1, other);
    if (other == 0) _exit(setMany(L"theirs") ? 0 : 1);
    EXPECT_TRUE(setMany(L"ours"));
    int status = -1;
    ASSERT_EQ(other, waitpid(other, &status, 0));
    EXPECT_EQ(0, status);
    for (int i = 0; i < 50; ++i)
        for (const wchar_t* of : {L"theirs", L"ours"})
            EXPECT_EQ(L"t", Get((of + std::to_wstring(i)).c_str())) << i;
}

TEST_F(UserBag, LeavesADamagedFileAsItIs) {
    const HRESULT corrupt = HRESULT_FROM_WIN32(ERROR_FILE_CORRUPT);
    const auto file = m_folder / "users/lobby.xml";
    const Rows<const char*, const char*> rows{
        {"no XML", "<UserProperties version=\"1\"><String"},
        {"another version", "<UserProperties version=\"2\"/>"},
        {"a queue's", "<Queue version=\"1\"/>"},
        {"names a file", "<UserProperties version=\"1\"><String name=\"a\" file=\"b\"/></UserProperties>"},
        {"a DTD", "<!DOCTYPE a [<!ENTITY b 'c'>]><UserProperties version=\"1\"/>"},
    };
    for (const auto& [what, content] : rows) {
        m_folder.Write("users/lobby.xml", content);
        CComBSTR text;
        EXPECT_EQ(corrupt, Bag()->GetString(CComBSTR(L"a"), &text)) << what;
        EXPECT_EQ(corrupt, Set(L"a", L"t")) << what;
        EXPECT_EQ(content, TemporaryFolder::Read(file)) << what;
    }
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_EQ(corrupt, Set(L"a", L"t")) << "a folder stands there";
    std::filesystem::remove(file);
    std::filesystem::remove(m_folder / "users");
    m_folder.Write("users", "a file where the folder should be");
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND), Set(L"a", L"t"));
}

TEST_F(UserBag, WritesStreamsThrough) {
    const CComBSTR name(L"Flow");
    CComPtr<IStream> writer, reader, copy;
    ASSERT_EQ(S_OK, Bag()->GetWriteStream(name, &writer));
    EXPECT_EQ(HRESULT_FROM_WIN32(ERROR_NOT_FOUND), Bag()->GetReadStream(name, &reader));
    EXPECT_EQ(S_OK, writer->Write("hello", 5, nullptr));
    ASSERT_EQ(S_OK, Bag()->GetReadStream(name, &reader));
    ASSERT_EQ(S_OK, writer->Clone(&copy));
    EXPECT_EQ(S_OK, copy->Write("!", 1, nullptr)) << "where the first one stood";
    ULARGE_INTEGER size;
    size.QuadPart = 2;
    EXPECT_EQ(S_OK, writer->SetSize(size));
    size.QuadPart = ULONGLONG{1} << 40;
    EXPECT_EQ(STG_E_MEDIUMFULL, writer->SetSize(size));
    char bytes[8] = {};
    ULONG read = 0;
    EXPECT_EQ(S_FALSE, reader->Read(bytes, 8, &read));
    EXPECT_EQ("hello", std::string(bytes, read)) << "as it was when the stream was opened";
    reader.Release();
    ASSERT_EQ(S_OK, Bag()->GetReadStream(name, &reader));
    EXPECT_EQ(S_FALSE, reader->Read(bytes, 8, &read));
    EXPECT_EQ("he", std::string(bytes, read));
    EXPECT_EQ(S_OK, writer->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr));
    EXPECT_EQ(S_OK, writer->Write("w", 1, nullptr));
    reader.Release();
    ASSERT_EQ(S_OK, Bag()->GetReadStream(name, &reader));
    EXPECT_EQ(S_FALSE, reader->Read(bytes, 8, &read));
    EXPECT_EQ("we", std::string(bytes, read)) << "what stands behind stays";
    EXPECT_EQ(S_OK, Set(L"Text", L"t"));
    writer.Release();
    EXPECT_EQ(E_INVALIDARG, Bag()->GetWriteStream(CComBSTR(L"Text"), &writer));
}

} // namespace
