#pragma once

#include "Com/PlatformExport.h"
#include "PrintTicket/MergeReport.h"
#include "PrintTicket/PrintTicketError.h"
#include "Spooler/QueueFolder.h"

#include <prntvpt.h>

#include <memory>
#include <string>
#include <string_view>

namespace OvPlatform {

class QueueTickets;

/// How many merges this process has made, and in how many something had to give way.
struct MergeCounts {
    std::uint64_t merges = 0;
    std::uint64_t conflictsResolved = 0;
};

/// The print ticket provider of one queue, on bytes. The functions of prntvpt.h stand on it; tools that want
/// to know why a ticket became what it is use it directly. May be shared between threads.
class OV_PLATFORM_API PrintTicketMerge {
public:
    /// Throws PrintTicketError if the queue's capabilities or its default ticket are not what they have to
    /// be.
    explicit PrintTicketMerge(const std::shared_ptr<const QueueFolder>& queue);
    ~PrintTicketMerge();

    struct Result {
        std::string ticket; // XML in UTF-8
        bool conflictResolved = false;
    };

    /// Lays the delta, null for none, over the base and validates. Throws PrintTicketError for an input that
    /// is no ticket. With a report, tells what became of every setting. Texts that were merged lately for
    /// this queue, by whomever, give the same again at once.
    Result Merge(std::string_view base, const std::string_view* delta, EPrintTicketScope scope,
                 MergeReport* report = nullptr) const;

    /// The capabilities under a ticket; null: under the queue's default ticket. Throws PrintTicketError.
    std::string Capabilities(const std::string_view* ticket) const;

    /// The ticket that a device mode stands for; see PTConvertDevModeToPrintTicket. Throws
    /// std::invalid_argument if the record does not lie within its `size` bytes.
    std::string ConvertDevmode(const DEVMODEW* devmode, std::size_t size, EPrintTicketScope scope) const;

    static MergeCounts Counts();

private:
    Result MergeAnew(std::string_view base, const std::string_view* delta, EPrintTicketScope scope,
                     MergeReport* report) const;

    std::shared_ptr<const QueueTickets> m_queue;
};

} // namespace OvPlatform
