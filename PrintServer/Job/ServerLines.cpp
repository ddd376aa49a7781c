#include "Job/ServerLines.h"

#include <Locale/ShownText.h>

#include <unistd.h>

#include <cerrno>

namespace OvPrintServer {

namespace {

// The server cuts its lines at 2,048 bytes; a character may have four.
constexpr std::size_t mostCharacters = 480;

} // namespace

void ServerLines::State(bool isOn, std::string_view reason) {
    Say("STATE: ", (isOn ? "+" : "-") + std::string(reason));
}

void ServerLines::Progress(std::uint64_t percent) {
    Say("ATTR: ", "job-media-progress=" + std::to_string(percent));
}

void ServerLines::Page(unsigned long page, unsigned copies) {
    Say("PAGE: ", std::to_string(page) + " " + std::to_string(copies));
}

void ServerLines::Say(std::string_view word, std::string_view text) {
    const std::string line = std::string(word) + OvPlatform::Shown(text, mostCharacters) + "\n";
    const std::lock_guard lock(m_mutex);
    std::string_view rest = line;
    while (!rest.empty()) {
        const ssize_t written = write(m_descriptor, rest.data(), rest.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return; // nobody reads, and nobody is left to tell
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace OvPrintServer
