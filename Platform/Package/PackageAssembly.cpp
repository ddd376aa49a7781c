#include "Package/PackageAssembly.h"

#include "Package/PackageError.h"

#include <msopc.h>

#include <zip.h>

#include <algorithm>
#include <new>

namespace OvPlatform {

namespace {

// The first moment that a zip archive can name: packages do not differ by when they were made.
constexpr zip_uint16_t FixedTime = 0;
constexpr zip_uint16_t FixedDate = 1 << 5 | 1; // 1 January 1980
constexpr zip_uint8_t VersionForDeflate = 20;

// Gives libzip the compressed bytes of one item as they are.
class ItemSource {
public:
    ItemSource(const SpoolFile& spool, const SpooledPart& part) : m_spool(spool), m_part(part) {
        zip_error_init(&m_error);
    }

    static zip_int64_t Call(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
        auto& self = *static_cast<ItemSource*>(state);
        switch (command) {
        case ZIP_SOURCE_OPEN:
            return self.Open();
        case ZIP_SOURCE_READ:
            return self.Read(data, length);
        case ZIP_SOURCE_STAT:
            return self.Stat(static_cast<zip_stat_t*>(data));
        case ZIP_SOURCE_GET_FILE_ATTRIBUTES:
            return self.Attributes(static_cast<zip_file_attributes_t*>(data));
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&self.m_error, data, length);
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_FREE:
            return 0; // the assembly owns its sources
        case ZIP_SOURCE_SUPPORTS:
            return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                                  ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE,
                                                  ZIP_SOURCE_GET_FILE_ATTRIBUTES, -1);
        default:
            zip_error_set(&self.m_error, ZIP_ER_OPNOTSUPP, 0);
            return -1;
        }
    }

private:
    bool Deflated() const { return m_part.compression != PackageCompression::None; }

    zip_int64_t Open() {
        m_extent = 0;
        m_offset = 0;
        return 0;
    }

    zip_int64_t Read(void* buffer, zip_uint64_t length) {
        auto* next = static_cast<char*>(buffer);
        zip_uint64_t done = 0;
        while (done != length && m_extent != m_part.extents.size()) {
            const SpooledPart::Extent& extent = m_part.extents[m_extent];
            const zip_uint64_t step = (std::min)(length - done, extent.size - m_offset);
            if (!m_spool.Read(extent.offset + m_offset, next + done, static_cast<std::size_t>(step))) {
                zip_error_set(&m_error, ZIP_ER_READ, 0);
                return -1;
            }
            done += step;
            m_offset += step;
            if (m_offset == extent.size) {
                ++m_extent;
                m_offset = 0;
            }
        }
        return static_cast<zip_int64_t>(done);
    }

    zip_int64_t Stat(zip_stat_t* stat) const {
        zip_stat_init(stat);
        stat->size = m_part.size;
        stat->comp_size = m_part.storedSize;
        stat->crc = m_part.checksum;
        stat->comp_method = Deflated() ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
        stat->encryption_method = ZIP_EM_NONE;
        stat->valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD |
                      ZIP_STAT_ENCRYPTION_METHOD;
        return sizeof *stat;
    }

    zip_int64_t Attributes(zip_file_attributes_t* attributes) const {
        zip_file_attributes_init(attributes);
        if (Deflated()) {
            attributes->valid = ZIP_FILE_ATTRIBUTES_VERSION_NEEDED;
            attributes->version_needed = VersionForDeflate;
        }
        return sizeof *attributes;
    }

    const SpoolFile& m_spool;
    const SpooledPart& m_part;
    std::size_t m_extent = 0;
    std::uint64_t m_offset = 0;
    zip_error_t m_error;
};

struct Discard {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, Discard>;

[[noreturn]] void Throw(const std::filesystem::path& target, zip_error_t* error) {
    const int code = zip_error_code_zip(error);
    if (code == ZIP_ER_MEMORY) throw std::bad_alloc();
    const HRESULT result = code == ZIP_ER_WRITE || code == ZIP_ER_TMPOPEN || code == ZIP_ER_RENAME
                               ? HRESULT_FROM_WIN32(ERROR_WRITE_FAULT)
                               : OPC_E_ZIP_COMPRESSION_FAILED;
    throw PackageError(result, target.string(),
                       std::string("the package cannot be written: ") + zip_error_strerror(error));
}

Archive OpenForWriting(const std::filesystem::path& target) {
    int code = 0;
    Archive archive(zip_open(target.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code));
    if (archive) return archive;
    zip_error_t error;
    zip_error_init_with_code(&error, code);
    struct Fini {
        zip_error_t* error;
        ~Fini() { zip_error_fini(error); }
    } fini{&error};
    Throw(target, &error);
}

} // namespace

void AssemblePackage(const std::filesystem::path& target, const SpoolFile& spool,
                     const std::vector<AssemblyItem>& items) {
    std::vector<ItemSource> sources; // outlive the archive, which calls them
    sources.reserve(items.size());
    Archive archive = OpenForWriting(target);
    for (const AssemblyItem& item : items) {
        sources.emplace_back(spool, *item.part);
        zip_source_t* source = zip_source_function(archive.get(), ItemSource::Call, &sources.back());
        if (!source) Throw(target, zip_get_error(archive.get()));
        const zip_int64_t index = zip_file_add(archive.get(), item.name.c_str(), source, ZIP_FL_ENC_UTF_8);
        if (index < 0) {
            zip_source_free(source);
            Throw(target, zip_get_error(archive.get()));
        }
        const auto at = static_cast<zip_uint64_t>(index);
        const bool stored = item.part->compression == PackageCompression::None;
        if (zip_file_set_dostime(archive.get(), at, FixedTime, FixedDate, 0) != 0 ||
            (stored && zip_set_file_compression(archive.get(), at, ZIP_CM_STORE, 0) != 0))
            Throw(target, zip_get_error(archive.get()));
    }
    if (zip_close(archive.get()) != 0) Throw(target, zip_get_error(archive.get()));
    archive.release(); // closed is freed
}

} // namespace OvPlatform
