#include <System/RegistryFile.h>

#include <cstdint>
#include <cstdlib>

// A file that is taken is written in a form that is taken again and written the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace OvPlatform;
    try {
        const std::string printed =
            PrintRegistryFile(ParseRegistryFile(std::string_view(reinterpret_cast<const char*>(data), size)));
        try {
            if (PrintRegistryFile(ParseRegistryFile(printed)) != printed) std::abort();
        } catch (const RegistryFileError&) {
            std::abort();
        }
    } catch (const RegistryFileError&) {
    }
    return 0;
}
