#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace OvPrintServer {

/// A PPD that does not say where its queue is. what() is one line.
class PpdError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a queue's PPD says to the filter.
struct QueuePpd {
    std::filesystem::path queue;    // the folder
    std::filesystem::path pipeline; // a configuration; empty: the device's stream is all that is made

    /// Throws PpdError.
    static QueuePpd Read(const std::filesystem::path& file);
};

} // namespace OvPrintServer
