#include "Commands/StandardInput.h"

#include "Arguments/CommandOptions.h"
#include "Common/HostError.h"
#include "Common/TemporaryFiles.h"

#include <System/NamelessFile.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

namespace OvPipeline {

namespace {

constexpr const char* streamName = "standard input";
constexpr std::size_t chunkSize = std::size_t{256} * 1024;

[[noreturn]] void ThrowFull(const std::filesystem::path& folder) {
    throw HostError(STG_E_MEDIUMFULL, streamName,
                    std::string(streamName) + ": cannot be kept in " + folder.string() + ": " +
                        std::strerror(errno));
}

void Copy(int from, int to, const std::filesystem::path& folder) {
    std::vector<char> chunk(chunkSize);
    for (;;) {
        const ssize_t count = read(from, chunk.data(), chunk.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0)
            throw InputError(E_FAIL, streamName,
                             std::string(streamName) + ": cannot be read: " + std::strerror(errno));
        if (count == 0) return;
        for (ssize_t done = 0; done < count;) {
            const ssize_t written = write(to, chunk.data() + done, static_cast<std::size_t>(count - done));
            if (written < 0 && errno == EINTR) continue;
            if (written <= 0) ThrowFull(folder);
            done += written;
        }
    }
}

} // namespace

StandardInput::StandardInput() : m_file(STDIN_FILENO) {
    if (isatty(STDIN_FILENO)) throw UsageError("the input stream is a terminal: no job can be typed");
    struct stat state {};
    if (fstat(STDIN_FILENO, &state) == 0 && S_ISREG(state.st_mode) && lseek(STDIN_FILENO, 0, SEEK_CUR) == 0)
        return;
    const std::filesystem::path folder = FolderForTemporaryFiles();
    m_file = OvPlatform::OpenNamelessFile(folder);
    if (m_file < 0) ThrowNoTemporary(folder);
    try {
        Copy(STDIN_FILENO, m_file, folder);
    } catch (...) {
        close(m_file);
        throw;
    }
}

StandardInput::~StandardInput() {
    if (m_file != STDIN_FILENO) close(m_file);
}

JobFile StandardInput::File() const { return {"/proc/self/fd/" + std::to_string(m_file), streamName}; }

} // namespace OvPipeline
