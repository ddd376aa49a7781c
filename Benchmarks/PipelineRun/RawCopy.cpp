#include "RawCopy.h"

#include <zip.h>

#include <stdexcept>
#include <string>

void CopyArchive(const std::filesystem::path& from, const std::filesystem::path& to) {
    int error = 0;
    zip_t* source = zip_open(from.c_str(), ZIP_RDONLY, &error);
    zip_t* target = zip_open(to.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (source == nullptr || target == nullptr)
        throw std::runtime_error("cannot open " + from.string() + " or " + to.string());
    const zip_int64_t entries = zip_get_num_entries(source, 0);
    for (zip_uint64_t index = 0; index < static_cast<zip_uint64_t>(entries); ++index) {
        // With its length named, the bytes come inflated, and closing deflates them; an entry asked for as a
        // whole would be copied as it lies there.
        zip_stat_t entry{};
        if (zip_stat_index(source, index, 0, &entry) != 0) throw std::runtime_error("cannot read an entry");
        zip_source_t* bytes =
            zip_source_zip(target, source, index, 0, 0, static_cast<zip_int64_t>(entry.size));
        const zip_int64_t added =
            bytes != nullptr ? zip_file_add(target, zip_get_name(source, index, 0), bytes, 0) : -1;
        if (added < 0) throw std::runtime_error("cannot copy entry " + std::to_string(index));
        zip_set_file_compression(target, static_cast<zip_uint64_t>(added), ZIP_CM_DEFLATE, 0);
    }
    if (zip_close(target) != 0) throw std::runtime_error("cannot write " + to.string());
    zip_discard(source);
}
