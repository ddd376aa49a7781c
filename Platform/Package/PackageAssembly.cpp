#include "Package/PackageAssembly.h"

#include "Package/PackageError.h"

#include <msopc.h>
#include <zip.h>

#include <algorithm>
#include <limits>
#include <new>

namespace OvPlatform {

namespace {

// The first moment that a zip archive can name: packages do not differ by when they were made.
constexpr zip_uint16_t fixedTime = 0;
constexpr zip_uint16_t fixedDate = 1 << 5 | 1; // 1 January 1980
constexpr zip_uint8_t versionForDeflate = 20;

} // namespace

// Where libzip reads: it has one item open at a time.
class PackageAssembly::Cursor {
public:
    explicit Cursor(const SpoolFile& spool) : m_spool(spool) { zip_error_init(&error); }
    ~Cursor() { zip_error_fini(&error); }

    void Open(const SpooledPart& part) {
        m_part = &part;
        m_extent = 0;
        m_offset = 0;
    }

    zip_int64_t Read(void* buffer, zip_uint64_t length) {
        auto* next = static_cast<char*>(buffer);
        zip_uint64_t done = 0;
        while (done != length && m_extent != m_part->ExtentCount()) {
            const SpooledPart::Extent& extent = m_part->ExtentAt(m_extent);
            const zip_uint64_t step = (std::min)(length - done, extent.size - m_offset);
            if (!m_spool.Read(extent.offset + m_offset, next + done, static_cast<std::size_t>(step))) {
                zip_error_set(&error, ZIP_ER_READ, 0);
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

    zip_error_t error;

private:
    const SpoolFile& m_spool;
    const SpooledPart* m_part = nullptr;
    std::size_t m_extent = 0;
    std::uint64_t m_offset = 0;
};

// Gives libzip the compressed bytes of one item as they are.
class PackageAssembly::Source {
public:
    Source(Cursor& cursor, const SpooledPart& part) : m_cursor(cursor), m_part(part) {}

    static zip_int64_t Call(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
        const auto& self = *static_cast<const Source*>(state);
        switch (command) {
        case ZIP_SOURCE_OPEN:
            self.m_cursor.Open(self.m_part);
            return 0;
        case ZIP_SOURCE_READ:
            return self.m_cursor.Read(data, length);
        case ZIP_SOURCE_STAT:
            return self.Stat(static_cast<zip_stat_t*>(data));
        case ZIP_SOURCE_GET_FILE_ATTRIBUTES:
            return self.Attributes(static_cast<zip_file_attributes_t*>(data));
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&self.m_cursor.error, data, length);
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_FREE:
            return 0; // the assembly owns its sources
        case ZIP_SOURCE_SUPPORTS:
            return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                                  ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE,
                                                  ZIP_SOURCE_GET_FILE_ATTRIBUTES, -1);
        default:
            zip_error_set(&self.m_cursor.error, ZIP_ER_OPNOTSUPP, 0);
            return -1;
        }
    }

private:
    bool Deflated() const { return m_part.compression != PackageCompression::None; }

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
            attributes->version_needed = versionForDeflate;
        }
        return sizeof *attributes;
    }

    Cursor& m_cursor;
    const SpooledPart& m_part;
};

// Where libzip writes: the output file, which is empty when it begins.
class PackageAssembly::Archive {
public:
    explicit Archive(OutputFile& file) : m_file(file) { zip_error_init(&error); }
    ~Archive() { zip_error_fini(&error); }

    static zip_int64_t Call(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
        auto& self = *static_cast<Archive*>(state);
        switch (command) {
        case ZIP_SOURCE_SUPPORTS:
            return ZIP_SOURCE_SUPPORTS_WRITABLE;
        case ZIP_SOURCE_STAT:
            zip_stat_init(static_cast<zip_stat_t*>(data));
            static_cast<zip_stat_t*>(data)->valid = ZIP_STAT_SIZE;
            return sizeof(zip_stat_t);
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&self.error, data, length);
        case ZIP_SOURCE_WRITE:
            return self.Guarded([&] { return self.Write(data, length); });
        case ZIP_SOURCE_SEEK_WRITE:
            return self.Guarded([&] { return self.Seek(data, length); });
        case ZIP_SOURCE_TELL_WRITE:
            return static_cast<zip_int64_t>(self.m_file.Position());
        case ZIP_SOURCE_COMMIT_WRITE:
            return self.Guarded([&] { return self.m_file.Finish(), 0; });
        case ZIP_SOURCE_OPEN:
        case ZIP_SOURCE_READ: // of an empty file
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_BEGIN_WRITE:
        case ZIP_SOURCE_ROLLBACK_WRITE: // whoever owns the file drops it
        case ZIP_SOURCE_FREE:
            return 0;
        default:
            zip_error_set(&self.error, ZIP_ER_OPNOTSUPP, 0);
            return -1;
        }
    }

    // What kept the file from being written, which libzip has no words for.
    std::exception_ptr failure;
    zip_error_t error;

private:
    zip_int64_t Write(const void* bytes, zip_uint64_t size) {
        m_file.Write(bytes, static_cast<std::size_t>(size));
        return static_cast<zip_int64_t>(size);
    }

    zip_int64_t Seek(void* data, zip_uint64_t length) {
        // From the end is never asked for: libzip remembers where it was.
        const zip_int64_t place = zip_source_seek_compute_offset(
            m_file.Position(), std::numeric_limits<zip_int64_t>::max(), data, length, &error);
        if (place < 0) return -1;
        m_file.Seek(static_cast<std::uint64_t>(place));
        return 0;
    }

    template <class Step>
    zip_int64_t Guarded(Step&& step) {
        try {
            return step();
        } catch (...) {
            failure = std::current_exception();
            zip_error_set(&error, ZIP_ER_WRITE, 0);
            return -1;
        }
    }

    OutputFile& m_file;
};

void PackageAssembly::Discard::operator()(zip* archive) const { zip_discard(archive); }

PackageAssembly::PackageAssembly(OutputFile& file, std::filesystem::path target, const SpoolFile& spool)
    : m_target(std::move(target)), m_cursor(std::make_unique<Cursor>(spool)),
      m_output(std::make_unique<Archive>(file)) {
    zip_source_t* output = zip_source_function_create(Archive::Call, m_output.get(), &m_output->error);
    if (output == nullptr) Throw(&m_output->error);
    m_archive.reset(zip_open_from_source(output, ZIP_CREATE | ZIP_TRUNCATE, &m_output->error));
    if (m_archive) return;
    zip_source_free(output);
    Throw(&m_output->error);
}

PackageAssembly::~PackageAssembly() = default;

void PackageAssembly::Add(const std::string& zipName, const SpooledPart& part) {
    zip_t* archive = m_archive.get();
    zip_source_t* source =
        zip_source_function(archive, Source::Call, &m_sources.emplace_back(*m_cursor, part));
    if (source == nullptr) Throw(zip_get_error(archive));
    const zip_int64_t index = zip_file_add(archive, zipName.c_str(), source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
        zip_source_free(source);
        Throw(zip_get_error(archive));
    }
    const auto at = static_cast<zip_uint64_t>(index);
    const bool stored = part.compression == PackageCompression::None;
    if (zip_file_set_dostime(archive, at, fixedTime, fixedDate, 0) != 0 ||
        (stored && zip_set_file_compression(archive, at, ZIP_CM_STORE, 0) != 0))
        Throw(zip_get_error(archive));
}

void PackageAssembly::Finish(const std::function<bool()>& isStopped) {
    const auto ask = [](zip_t*, void* question) -> int {
        return (*static_cast<const std::function<bool()>*>(question))();
    };
    if (isStopped)
        zip_register_cancel_callback_with_state(m_archive.get(), ask, nullptr,
                                                const_cast<std::function<bool()>*>(&isStopped));
    if (zip_close(m_archive.get()) != 0) Throw(zip_get_error(m_archive.get()));
    static_cast<void>(m_archive.release()); // closed is freed
}

void PackageAssembly::Throw(zip_error_t* error) const {
    if (m_output->failure) std::rethrow_exception(m_output->failure);
    if (zip_error_code_zip(error) == ZIP_ER_MEMORY) throw std::bad_alloc();
    if (zip_error_code_zip(error) == ZIP_ER_CANCELLED)
        throw PackageError(E_ABORT, m_target.string(), "it is given up");
    throw PackageError(OPC_E_ZIP_COMPRESSION_FAILED, m_target.string(),
                       std::string("cannot be written: ") + zip_error_strerror(error));
}

} // namespace OvPlatform
