#include "Support/EnvironmentVariable.h"
#include "Support/TemporaryFolder.h"

#include <System/RegistryFile.h>

#include <windows.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace {

using namespace OvPlatform;

constexpr const char* head = "OvRegistry 1\n";

class Registry : public testing::Test {
protected:
    void WriteFile(const std::string& contents) const { m_folder.Write("deep/registry", contents); }
    std::string FileContents() const { return TemporaryFolder::Read(m_file); }

    TemporaryFolder m_folder;
    const std::filesystem::path m_file = m_folder / "deep/registry";
    EnvironmentVariable m_variable{"OV_REGISTRY", m_file.string()};
};

TEST_F(Registry, KeepsValuesOfAllTypesInItsFile) {
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software", 0, KEY_READ, &key));
    EXPECT_EQ(ERROR_INVALID_HANDLE, RegCloseKey(key));
    DWORD disposition = 0;
    ASSERT_EQ(ERROR_SUCCESS, RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"Software\\Example", 0, nullptr, 0,
                                             KEY_ALL_ACCESS, nullptr, &key, &disposition));
    EXPECT_EQ(static_cast<DWORD>(REG_CREATED_NEW_KEY), disposition);
    const DWORD number = 0x12345678;
    const std::wstring text = L"quote \" back \\ line \n end";
    const BYTE odd[] = {1, 2, 3};
    const auto set = [&](const wchar_t* name, DWORD type, const void* data, std::size_t size) {
        EXPECT_EQ(ERROR_SUCCESS, RegSetValueExW(key, name, 0, type, static_cast<const BYTE*>(data),
                                                static_cast<DWORD>(size)));
    };
    set(L"Number", REG_DWORD, &number, sizeof(number));
    set(nullptr, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(WCHAR));
    set(L"Odd \"name\"", 77, odd, sizeof(odd));
    EXPECT_EQ(ERROR_SUCCESS, RegCloseKey(key));
    EXPECT_NE(std::string::npos, FileContents().find("\"Number\"=dword:12345678"));

    // What another process would read: the file's text, parsed again.
    WriteFile(FileContents() + "; touched\n");
    ASSERT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"\\SOFTWARE\\example\\", 0, KEY_READ, &key));
    DWORD type = 0, read = 0, size = sizeof(read);
    const auto query = [&](const wchar_t* name, void* buffer) {
        return RegQueryValueExW(key, name, nullptr, &type, static_cast<BYTE*>(buffer), &size);
    };
    EXPECT_EQ(ERROR_SUCCESS, query(L"NUMBER", &read));
    EXPECT_EQ(static_cast<DWORD>(REG_DWORD), type);
    EXPECT_EQ(number, read);

    EXPECT_EQ(ERROR_SUCCESS, query(L"", nullptr));
    EXPECT_EQ((text.size() + 1) * sizeof(WCHAR), size);
    std::wstring buffer(text.size() + 1, L'?');
    size -= 1;
    EXPECT_EQ(ERROR_MORE_DATA, query(L"", buffer.data()));
    EXPECT_EQ(ERROR_SUCCESS, query(L"", buffer.data()));
    EXPECT_STREQ(text.c_str(), buffer.c_str());
    EXPECT_EQ(ERROR_SUCCESS, query(L"odd \"NAME\"", nullptr));
    EXPECT_EQ(77u, type);
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, query(L"missing", nullptr));
    EXPECT_EQ(ERROR_ACCESS_DENIED, RegSetValueExW(key, L"x", 0, REG_BINARY, odd, 1)) << "opened for reading";
    RegCloseKey(key);
}

TEST_F(Registry, IsNotUsedAndNotOverwrittenWhenItIsMalformed) {
    const std::string malformed = std::string(head) + "[HKEY_LOCAL_MACHINE\\Software]\n\"a\"=dword:xyz\n";
    WriteFile(malformed);
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_BADDB, RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software", 0, KEY_READ, &key));
    const BYTE byte = 1;
    EXPECT_EQ(ERROR_BADDB, RegSetValueExW(HKEY_LOCAL_MACHINE, L"x", 0, REG_BINARY, &byte, 1));
    EXPECT_EQ(malformed, FileContents());
    WriteFile(std::string(head) + "[HKEY_LOCAL_MACHINE\\Software]\n");
    EXPECT_EQ(ERROR_SUCCESS, RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software", 0, KEY_READ, &key)) << "mended";
    RegCloseKey(key);

    std::filesystem::remove(m_file);
    ASSERT_EQ(0, mkfifo(m_file.c_str(), 0600)); // nobody is going to write there
    EXPECT_EQ(ERROR_BADDB, RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"Software", 0, KEY_READ, &key));
}

TEST_F(Registry, ForgetsAValueThatCouldNotBeWritten) {
    // A folder stands where the file should.
    std::filesystem::create_directories(m_file / "in the way");
    const BYTE byte = 1;
    EXPECT_NE(ERROR_SUCCESS, RegSetValueExW(HKEY_CURRENT_USER, L"x", 0, REG_BINARY, &byte, 1));
    std::filesystem::remove_all(m_file);
    EXPECT_EQ(ERROR_FILE_NOT_FOUND,
              RegQueryValueExW(HKEY_CURRENT_USER, L"x", nullptr, nullptr, nullptr, nullptr));
    EXPECT_TRUE(std::filesystem::is_empty(m_file.parent_path())) << "no half-written file is left";
}

TEST(RegistryFile, RefusesWhatIsNotOfItsForm) {
    const std::string key = "[HKEY_CURRENT_USER\\a]\n";
    const std::string malformed[] = {
        "",
        "OvRegistry 2\n",
        std::string("OvRegistry 1\0", 13),
        head + std::string("\"a\"=\"b\"\n"),
        head + std::string("[Software\\a]\n"),
        head + std::string("[HKEY_CURRENT_USER\\]\n"),
        head + std::string("[HKEY_CURRENT_USER\\a\\\\b]\n"),
        head + std::string("[HKEY_CURRENT_USER\\") + std::string(maximumRegistryPathUnits, 'a') + "]\n",
        head + key + "\"a\"=\n",
        head + key + "\"a\"=\"b\n",
        head + key + "\"a\"=\"b\" c\n",
        head + key + "\"a\"=\"\\u12\"\n",
        head + key + "\"a\"=\"\\",
        head + key + "\"a\"=dword:123456789\n",
        head + key + "\"a\"=hex:1,\n",
        head + key + "\"a\"=hex:123\n",
        head + key + "\"a\"=hex(:01\n",
        head + key + "\"a\"=hex(1):01\n",
        head + key + "\"a\"=\"1\"\n\"A\"=\"2\"\n",
        head + std::string(maximumRegistryFileBytes, ' '),
    };
    for (const std::string& contents : malformed)
        EXPECT_THROW(ParseRegistryFile(contents), RegistryFileError) << contents.substr(0, 80);
}

TEST(RegistryFile, IsReadAsItWasWritten) {
    RegistryContents contents;
    RegistryKey& key = contents.Create(L"HKEY_CURRENT_USER\\\u00C4 key\\b");
    std::wstring text = L"\u20AC\t";
    for (const int unit : {0xD83D, 0xDE00, 0xD800, 0})
        text += static_cast<wchar_t>(unit);
    key.values[FoldRegistryName(L"Text")] = {L"Text", REG_EXPAND_SZ, text, {}};
    key.values[FoldRegistryName(L"Short")] = {L"Short", REG_DWORD, {}, {1, 2}};

    const std::string printed = PrintRegistryFile(contents);
    RegistryContents again = ParseRegistryFile(printed);
    EXPECT_EQ(printed, PrintRegistryFile(again));
    RegistryKey* read = again.Find(L"hkey_current_user\\\u00E4 KEY\\B");
    ASSERT_NE(nullptr, read);
    EXPECT_EQ(text, read->values.at(L"TEXT").text);
    EXPECT_EQ((std::vector<BYTE>{1, 2}), read->values.at(L"SHORT").bytes);
    EXPECT_EQ(static_cast<DWORD>(REG_DWORD), read->values.at(L"SHORT").type);
    EXPECT_NE(nullptr, again.Find(L"HKEY_CURRENT_USER\\\u00C4 key")) << "parents are there";
}

} // namespace
