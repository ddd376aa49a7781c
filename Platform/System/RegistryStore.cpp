#include "System/RegistryStore.h"

#include "System/HandleTable.h"
#include "System/InputFile.h"
#include "System/UserFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <memory>
#include <string>

namespace OvPlatform {

namespace {

/// None with errno where the file cannot be read. One that grows meanwhile is read so far as it may go.
std::optional<std::string> ReadBytes(const std::filesystem::path& file) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> input(OpenInputFile(file), &std::fclose);
    if (!input) return std::nullopt;
    std::string bytes;
    char block[16384];
    while (const std::size_t count = std::fread(block, 1, sizeof(block), input.get())) {
        bytes.append(block, count);
        if (bytes.size() > maximumRegistryFileBytes) break;
    }
    if (std::ferror(input.get())) return std::nullopt;
    return bytes;
}

} // namespace

RegistryStore& RegistryStore::Instance() {
    static RegistryStore& store = *new RegistryStore;
    return store;
}

std::optional<RegistryStore::Mark> RegistryStore::MarkOf(const std::filesystem::path& file) {
    std::error_code error;
    struct stat facts;
    if (stat(file.c_str(), &facts) != 0) return std::nullopt;
    return Mark{file, std::filesystem::last_write_time(file, error),
                static_cast<std::uintmax_t>(facts.st_size), static_cast<ULONGLONG>(facts.st_ino)};
}

LSTATUS RegistryStore::Refresh() {
    const std::filesystem::path file = PlaceOfUser("OV_REGISTRY", "registry");
    const std::optional<Mark> mark = file.empty() ? std::nullopt : MarkOf(file);
    if (m_loaded && file == m_file && mark == m_mark) return m_state;
    if (file != m_file) m_createdKeys.clear();
    m_file = file;
    m_mark = mark;
    m_loaded = true;
    m_state = ERROR_SUCCESS;
    m_contents = {};
    if (mark) {
        try {
            if (mark->size > maximumRegistryFileBytes)
                throw RegistryFileError(1, "the file is larger than 4 MB");
            const auto bytes = ReadBytes(file);
            if (!bytes) return m_state = errno == EISDIR ? ERROR_BADDB : ERROR_CANTREAD;
            m_contents = ParseRegistryFile(*bytes);
        } catch (const RegistryFileError& error) {
            OutputDebugStringA(("Registry file " + file.string() + ", " + error.what() + "\n").c_str());
            return m_state = ERROR_BADDB;
        }
    }
    for (const std::wstring& path : m_createdKeys)
        m_contents.Create(path);
    return m_state;
}

void RegistryStore::CreateKey(std::wstring_view path) {
    m_contents.Create(path);
    m_createdKeys.emplace(path);
}

LSTATUS RegistryStore::Save() {
    const LSTATUS status = Write();
    // What did not reach the file must not be read back from memory.
    if (status != ERROR_SUCCESS) m_loaded = false;
    return status;
}

LSTATUS RegistryStore::Write() {
    if (m_file.empty()) return ERROR_CANTWRITE;
    const std::string text = PrintRegistryFile(m_contents);
    if (text.size() > maximumRegistryFileBytes) return ERROR_DISK_FULL;
    std::error_code error;
    if (m_file.has_parent_path()) std::filesystem::create_directories(m_file.parent_path(), error);
    std::filesystem::path fresh = m_file;
    fresh += "." + std::to_string(getpid()) + ".new";
    std::ofstream output(fresh, std::ios::binary | std::ios::trunc);
    if (!output) return static_cast<LSTATUS>(ErrorFromErrno(errno));
    output << text;
    output.close();
    if (!output) {
        std::filesystem::remove(fresh, error);
        return ERROR_CANTWRITE;
    }
    std::filesystem::rename(fresh, m_file, error);
    if (error) {
        const DWORD result = ErrorFromErrno(error.value());
        std::filesystem::remove(fresh, error);
        return static_cast<LSTATUS>(result);
    }
    m_mark = MarkOf(m_file);
    return ERROR_SUCCESS;
}

} // namespace OvPlatform
