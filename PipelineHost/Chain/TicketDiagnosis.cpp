#include "Chain/TicketDiagnosis.h"

#include <PrintTicket/PrintTicketError.h>
#include <PrintTicket/PrintTicketMerge.h>
#include <Xml/DocumentBound.h>

namespace OvPipeline {

namespace {

// Sets result and words where something is wrong.
bool FindProblem(JobFailure& failure, const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                 const PartContext& context) noexcept {
    try {
        try {
            const std::string ticket = context.package->ReadPart(failure.part, OvPlatform::mostDocumentBytes);
            const std::string_view delta = ticket;
            OvPlatform::PrintTicketMerge(queue).Merge(queue->DefaultTicket(), &delta, kPTJobScope);
            return false;
        } catch (const OvPlatform::PrintTicketError& error) {
            failure.problem = error.what();
            failure.result = error.Result(); // the filter may have gone on without a ticket for a while
        } catch (const std::exception& error) {
            failure.problem = error.what();
        }
        return !failure.problem.empty();
    } catch (...) {
        return false;
    }
}

bool IsTicket(const PartContext& context, const std::string& name) {
    const OvPlatform::PackagePart* part = context.package ? context.package->Find(name) : nullptr;
    return part != nullptr && KindOf(part->contentType, part->name) == PartKind::PrintTicket;
}

} // namespace

void DiagnoseTicket(JobFailure& failure, const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                    const PartContext& context, const std::string& taken) {
    if (failure.fromInput || !IsTicket(context, failure.part)) return;
    if (!FindProblem(failure, queue, context)) failure.part = taken;
}

} // namespace OvPipeline
