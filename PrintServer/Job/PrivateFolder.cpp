#include "Job/PrivateFolder.h"

#include <Common/TemporaryFiles.h>

#include <cstdlib>

namespace OvPrintServer {

PrivateFolder::PrivateFolder() {
    // The server names its own, which it clears when it starts.
    const std::filesystem::path folder = OvPipeline::FolderForTemporaryFiles();
    std::string name = (folder / "ovtoprinter.XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) OvPipeline::ThrowNoTemporary(folder);
    m_path = name;
}

PrivateFolder::~PrivateFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

} // namespace OvPrintServer
