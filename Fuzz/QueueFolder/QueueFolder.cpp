// Any bytes as a queue's description. What loads must be written and load again unchanged; only
// QueueFolderError may come of the rest.

#include <Spooler/QueueFolder.h>
#include <Spooler/QueueFolderWriter.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

using namespace OvPlatform;

namespace {

// Lives in memory where the system has a file system there.
const std::filesystem::path& Folder() {
    static const std::filesystem::path folder = [] {
        std::string name =
            std::filesystem::exists("/dev/shm") ? "/dev/shm/queue-XXXXXX" : "/tmp/queue-XXXXXX";
        if (!mkdtemp(name.data())) std::abort();
        std::atexit([] { std::filesystem::remove_all(Folder()); });
        std::ofstream(std::filesystem::path(name) / "t.xml") << "<t/>";
        return std::filesystem::path(name);
    }();
    return folder;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::ofstream(Folder() / QueueFolder::descriptionFile, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    std::shared_ptr<const QueueFolder> queue;
    try {
        queue = QueueFolder::Load(Folder());
    } catch (const QueueFolderError&) {
        return 0;
    }
    const std::filesystem::path copy = Folder() / "copy";
    WriteQueueFolder(queue->Description(), copy);
    if (QueueFolder::Load(copy)->Description() != queue->Description()) std::abort();
    return 0;
}
