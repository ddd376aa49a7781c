#pragma once

#include "PrintTicket/PrintTicketMerge.h"

#include <prntvpt.h>

#include <memory>
#include <optional>

namespace OvPlatform {

/// What stands behind an HPTPROVIDER. A handle is known only to the thread that opened it, and ends with it
/// at the latest.
class PrintTicketProvider {
public:
    /// The handle of a new provider for the queue, which the current thread owns.
    static HPTPROVIDER Open(const std::shared_ptr<const QueueFolder>& queue);

    /// Null if the handle is not one that the current thread opened.
    static std::shared_ptr<const PrintTicketProvider> Find(HPTPROVIDER handle);

    /// False if the handle is not one that the current thread opened. Its owner can go on with it then, but
    /// whoever closes it has let go of it: it ends when its owner opens the next.
    static bool Close(HPTPROVIDER handle);

    explicit PrintTicketProvider(const std::shared_ptr<const QueueFolder>& queue);

    /// Throws PrintTicketError if the queue's own documents are wrong: the first call that needs them says
    /// so, since only those have an error text to say it in.
    const PrintTicketMerge& Merge() const;

private:
    std::optional<PrintTicketMerge> m_merge;
    std::optional<PrintTicketError> m_error;
};

} // namespace OvPlatform
