// Any bytes as a package: opened, every part read, as it is packed and unpacked, every relationship followed.
// Only PackageError may come of it, and what can be taken over packed can be read.

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

template <class Stream>
std::uint64_t Drain(Stream& stream) {
    char buffer[4096];
    std::uint64_t size = 0;
    while (const std::size_t count = stream.Read(buffer, sizeof buffer))
        size += count;
    return size;
}

// Whether it is there in one piece and undamaged.
bool IsSoundPacked(const PackageReader& package, const std::string& part) {
    try {
        const auto packed = package.OpenPacked(part);
        if (!packed) return false;
        if (Drain(*packed) != packed->Form().storedSize) std::abort();
        return true;
    } catch (const PackageError&) {
        return false;
    }
}

void ReadAll(const std::string& file) {
    PackageLimits limits;
    limits.maxPartSize = limits.maxPackageSize = 8 << 20;
    const auto package = PackageReader::Open(file, limits);
    std::vector<std::string> sources{"/"};
    for (const PackagePart& part : package->Parts())
        sources.push_back(part.name);
    for (const std::string& source : sources) {
        const bool isSound = source != "/" && IsSoundPacked(*package, source);
        bool isRead = source == "/";
        try {
            if (!isRead) {
                const auto stream = package->OpenPart(source);
                if (Drain(*stream) != stream->Size()) std::abort();
                isRead = true;
            }
            for (const PackageRelationship& relationship : package->Relationships(source))
                RequireTarget(*package, source, relationship);
        } catch (const PackageError&) {
        }
        if (isSound && !isRead) std::abort();
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
