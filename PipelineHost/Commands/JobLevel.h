#pragma once

#include "Arguments/CommandOptions.h"
#include "Commands/TicketExplanation.h"
#include "Parts/StructureParts.h"

#include <Spooler/QueueFolder.h>
#include <Ticket/PrintTicketManager.h>

#include <functional>
#include <string>

namespace OvPipeline {

/// The parts whose tickets hold at the level that is asked for, from the job down; the lower ones null where
/// the level lies above them.
struct LevelParts {
    CComPtr<IFixedDocumentSequence> sequence;
    CComPtr<IFixedDocument> document;
    CComPtr<IFixedPage> page;
};

/// Opens the job, or a print ticket in a file of its own, which stands for the ticket of a job, and finds the
/// level that --document and --page choose, with what --ticket and --copies lay over it. Throws UsageError if
/// the job does not go so far, OvPlatform::PackageError and InputError.
LevelParts OpenLevel(const CommandOptions& options);

/// The levels of the pages that --pages names, in the job's order, counted through the job. Throws as
/// OpenLevel does, UsageError also where none of them is there.
void ForEachPage(const CommandOptions& options,
                 const std::function<void(std::uint64_t page, const LevelParts& parts)>& take);

/// Takes the ticket of a part, which may be null, into the account. Throws InputError, with words, for a
/// ticket that cannot be merged, and what its content throws.
void AddToExplanation(TicketExplanation& explanation, const char* level, EPrintTicketScope scope,
                      TicketSlot* slot);

/// An account of the level's tickets. Throws InputError, with words, for a ticket that cannot be merged.
TicketExplanation ExplainLevel(const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                               const LevelParts& parts);

/// Gets, in words, what the answer does without.
using Warner = std::function<void(const std::string& what)>;

/// Merges the tickets of the level on the queue's default, by the same class as filters do it, with what the
/// queue's administrator enforces, and says which level it is. Warns of a fault in the configuration
/// and of whatever else the merge got over. The thread must be in a COM apartment, and the queue known to the
/// spooler. Throws InputError for a ticket that is to blame, else HostError.
EPrintTicketScope MergeLevel(PrintTicketManager& manager,
                             const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                             const LevelParts& parts, const Warner& warn);

} // namespace OvPipeline
