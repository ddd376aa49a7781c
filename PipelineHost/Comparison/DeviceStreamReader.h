#pragma once

#include <cstdint>
#include <istream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace OvPipeline {

/// A device stream that is not one, or holds more around its pages than is read. what() is one line.
class DeviceStreamError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a device stream says around its pages, and fingerprints of the pages. Values that may come again
/// stand in their order.
struct DeviceStream {
    using Values = std::map<std::string, std::vector<std::string>>;

    struct Page {
        std::string digest; // of all but times
        std::uint64_t size = 0;
        Values device;                  // by the keys that its set-up gives the page device
        std::vector<std::string> times; // at which it was made
    };

    Values pjl;                        // commands by name: "SET RESOLUTION", "COMMENT OID_ATT_JOB_NAME"
    Values comments;                   // of PostScript, outside pages: "Title", "BeginFeature *Stapling"
    Values device;                     // as of a page: the job's own
    std::vector<std::string> commands; // of PostScript outside pages that are none of these, line by line
    std::vector<Page> pages;
    std::vector<Page> data; // jobs in other languages, whole

    /// Whether the value of such a comment is a time at which something was made.
    static bool IsTime(std::string_view comment);
};

/// Reads device streams: PJL, and PostScript that keeps to the conventions for documents. A stream is read
/// once, from its start to its end, a piece at a time; what it says outside pages is held.
class DeviceStreamReader {
public:
    static constexpr std::size_t mostHeld = std::size_t{8} << 20; // bytes outside pages
    static constexpr std::size_t mostPages = 1'000'000;

    /// Whether the bytes begin as a device stream does.
    static bool IsStream(std::string_view start);

    /// Throws DeviceStreamError.
    static DeviceStream Read(std::istream& stream);
};

} // namespace OvPipeline
