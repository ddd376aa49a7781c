#include "Job/PrivateFolder.h"

#include <cerrno>
#include <cstdlib>

namespace OvPrintServer {

PrivateFolder::PrivateFolder() {
    // The server names its own, which it clears when it starts.
    std::string name = (std::filesystem::temp_directory_path() / "ovtoprinter.XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        throw std::filesystem::filesystem_error("a folder for temporary files cannot be made", name,
                                                std::error_code(errno, std::generic_category()));
    m_path = name;
}

PrivateFolder::~PrivateFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

} // namespace OvPrintServer
