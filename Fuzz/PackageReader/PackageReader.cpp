// Any bytes as a package: opened, every part read, every relationship followed. Only PackageError may come of
// it.

#include <Package/PackageReader.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using namespace OvPlatform;

namespace {

void ReadAll(const std::string& file) {
    PackageLimits limits;
    limits.maxPartSize = limits.maxPackageSize = 8 << 20;
    const auto package = PackageReader::Open(file, limits);
    std::vector<std::string> sources{"/"};
    for (const PackagePart& part : package->Parts())
        sources.push_back(part.name);
    for (const std::string& source : sources) {
        try {
            for (const PackageRelationship& relationship : package->Relationships(source))
                RequireTarget(*package, source, relationship);
            if (source == "/") continue;
            const auto stream = package->OpenPart(source);
            char buffer[4096];
            std::uint64_t size = 0;
            while (const std::size_t count = stream->Read(buffer, sizeof buffer))
                size += count;
            if (size != stream->Size()) std::abort();
        } catch (const PackageError&) {
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const int file = memfd_create("package", 0);
    if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size)) std::abort();
    try {
        ReadAll("/proc/self/fd/" + std::to_string(file));
    } catch (const PackageError&) {
    }
    return 0;
}
