#pragma once

#include "Report/JsonText.h"
#include "Report/LeftOutParts.h"

#include <cstdint>
#include <string>
#include <vector>

namespace OvPipeline {

/// What there is to say of a job that has run, or has not come to its end.
struct RunSummary {
    std::string job;
    int exitCode = 0;
    std::string trouble; // one line; empty where the job is done
    std::string output;
    std::string queue;
    std::vector<std::string> filters;
    bool isPackage = true; // the output is a package, not a byte stream
    std::uint64_t partsRead = 0;
    std::uint64_t partsWritten = 0;
    std::uint64_t pagesRead = 0;
    std::uint64_t pagesWritten = 0;
    LeftOutParts leftOut;
    std::uint64_t ticketsAsked = 0;
    std::uint64_t merges = 0;
    std::uint64_t conflictsResolved = 0;
    std::uint64_t bytesIn = 0; // of the files
    std::uint64_t bytesOut = 0;
    double seconds = 0;
    double processorSeconds = 0; // of all threads
    /// Of a filter's work, by the clock with its waits for others, and on a processor by its own thread.
    struct FilterTime {
        std::string filter;
        double seconds = 0;
        double processorSeconds = 0;
    };
    std::vector<FilterTime> times; // of the filters that were started, also of a job that failed
    std::vector<std::string> warnings;

    /// "done", "failed", "refused", "cancelled" or "not started".
    std::string State() const;
    /// Of a job that is done.
    std::vector<std::string> Lines() const;
    JsonText AsJson() const;
    /// Tickets that were taken and came from the cache of merged ones.
    std::uint64_t SavedMerges() const;
};

} // namespace OvPipeline
