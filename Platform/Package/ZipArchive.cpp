#include "Package/ZipArchive.h"

#include "Package/PackageError.h"

#include <msopc.h>
#include <zip.h>

#include <algorithm>
#include <fstream>
#include <new>

namespace OvPlatform {

namespace {

// What a failure of libzip means for whoever reads a package.
struct ZipFailure {
    int zipError;
    HRESULT result;
    const char* problem;
};
constexpr ZipFailure failures[] = {
    {ZIP_ER_CRC, OPC_E_ZIP_CORRUPTED_ARCHIVE, "its data is damaged (wrong checksum)"},
    {ZIP_ER_ZLIB, OPC_E_ZIP_DECOMPRESSION_FAILED, "its compressed data is damaged"},
    {ZIP_ER_COMPRESSED_DATA, OPC_E_ZIP_DECOMPRESSION_FAILED, "its compressed data is damaged"},
    {ZIP_ER_EOF, OPC_E_ZIP_CORRUPTED_ARCHIVE, "its data ends too early"},
    {ZIP_ER_INCONS, OPC_E_ZIP_INCONSISTENT_DIRECTORY, "the zip directory contradicts itself"},
    {ZIP_ER_MULTIDISK, OPC_E_ZIP_UNSUPPORTEDARCHIVE, "the zip archive is spread over several files"},
    {ZIP_ER_COMPNOTSUPP, OPC_E_ZIP_UNSUPPORTEDARCHIVE, "its compression method is not supported"},
    {ZIP_ER_ENCRNOTSUPP, OPC_E_ZIP_UNSUPPORTEDARCHIVE, "it is encrypted"},
    {ZIP_ER_NOPASSWD, OPC_E_ZIP_UNSUPPORTEDARCHIVE, "it is encrypted"},
};

[[noreturn]] void Throw(int zipError, const std::string& subject, const std::string& text) {
    if (zipError == ZIP_ER_MEMORY) throw std::bad_alloc();
    for (const ZipFailure& row : failures)
        if (row.zipError == zipError) throw PackageError(row.result, subject, row.problem);
    throw PackageError(OPC_E_ZIP_CORRUPTED_ARCHIVE, subject, "it cannot be read: " + text);
}

// libzip says of a truncated archive only that it is none; whoever has one wants to know which it is.
[[noreturn]] void ThrowNoArchive(const std::filesystem::path& file) {
    char start[4] = {};
    std::ifstream(file, std::ios::binary).read(start, sizeof start);
    if (std::string_view(start, 4) == std::string_view("PK\3\4", 4))
        throw PackageError(OPC_E_ZIP_MISSING_END_OF_CENTRAL_DIRECTORY, file.string(),
                           "the package is cut short: its zip directory is missing");
    throw PackageError(OPC_E_ZIP_CORRUPTED_ARCHIVE, file.string(),
                       "this is no package: it is not a zip archive");
}

} // namespace

ZipArchive::ZipArchive(const std::filesystem::path& file) : m_path(file) {
    std::error_code failure;
    const auto status = std::filesystem::status(file, failure);
    if (!std::filesystem::exists(status))
        throw PackageError(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), file.string(), "there is no such file");
    if (!std::filesystem::is_regular_file(status))
        throw PackageError(HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED), file.string(), "this is not a file");
    if (std::filesystem::file_size(file, failure) == 0)
        throw PackageError(OPC_E_ZIP_CORRUPTED_ARCHIVE, file.string(), "the file is empty");

    int code = 0;
    m_archive = zip_open(file.c_str(), ZIP_RDONLY, &code);
    if (m_archive) return;
    if (code == ZIP_ER_NOZIP) ThrowNoArchive(file);
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    const std::string text = zip_error_strerror(&error);
    zip_error_fini(&error);
    Throw(code, file.string(), text);
}

ZipArchive::~ZipArchive() { zip_discard(m_archive); }

std::size_t ZipArchive::Count() const {
    const std::lock_guard guard(m_lock);
    return static_cast<std::size_t>(zip_get_num_entries(m_archive, 0));
}

ZipItem ZipArchive::Item(std::size_t index) const {
    const std::lock_guard guard(m_lock);
    zip_stat_t stat;
    const char* name = zip_get_name(m_archive, index, ZIP_FL_ENC_GUESS);
    if (name == nullptr || zip_stat_index(m_archive, index, 0, &stat) != 0) {
        const zip_error_t* error = zip_get_error(m_archive);
        Throw(zip_error_code_zip(error), m_path.string(), zip_error_strerror(zip_get_error(m_archive)));
    }
    ZipItem item;
    item.name = name;
    item.size = stat.size;
    item.storedSize = stat.comp_size;
    item.encrypted = stat.encryption_method != ZIP_EM_NONE;
    item.supported = stat.comp_method == ZIP_CM_STORE || stat.comp_method == ZIP_CM_DEFLATE;
    item.compressed = stat.comp_method != ZIP_CM_STORE;
    return item;
}

ZipItemReader::ZipItemReader(std::shared_ptr<const ZipArchive> archive, std::size_t index,
                             std::uint64_t declaredSize, std::string part)
    : m_archive(std::move(archive)), m_part(std::move(part)), m_left(declaredSize) {
    const std::lock_guard guard(m_archive->m_lock);
    m_file = zip_fopen_index(m_archive->m_archive, index, 0);
    if (m_file != nullptr) return;
    zip_error_t* error = zip_get_error(m_archive->m_archive);
    Fail(zip_error_code_zip(error), zip_error_strerror(error));
}

ZipItemReader::~ZipItemReader() {
    const std::lock_guard guard(m_archive->m_lock);
    zip_fclose(m_file);
}

void ZipItemReader::Fail(int zipError, const std::string& text) const { Throw(zipError, m_part, text); }

std::size_t ZipItemReader::ReadRaw(void* buffer, std::size_t size) {
    const zip_int64_t count = zip_fread(m_file, buffer, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    zip_error_t* error = zip_file_get_error(m_file);
    Fail(zip_error_code_zip(error), zip_error_strerror(error));
}

void ZipItemReader::CheckEnd() {
    m_checked = true;
    char more = 0;
    if (ReadRaw(&more, 1) != 0)
        throw PackageError(OPC_E_ZIP_INCORRECT_DATA_SIZE, m_part,
                           "it inflates to more than the directory declares");
}

std::size_t ZipItemReader::Read(void* buffer, std::size_t size) {
    if (size == 0 || (m_left == 0 && m_checked)) return 0;
    const std::lock_guard guard(m_archive->m_lock);
    const auto wanted = static_cast<std::size_t>((std::min)(std::uint64_t{size}, m_left));
    const std::size_t count = wanted == 0 ? 0 : ReadRaw(buffer, wanted);
    if (wanted != 0 && count == 0)
        throw PackageError(OPC_E_ZIP_INCORRECT_DATA_SIZE, m_part,
                           "it inflates to less than the directory declares");
    m_left -= count;
    // The checksum is known only when the end was seen, and a caller that knows the size would stop before
    // it.
    if (m_left == 0) CheckEnd();
    return count;
}

} // namespace OvPlatform
