#include "Chain/TicketDiagnosis.h"

#include <PrintTicket/PrintTicketMerge.h>
#include <Xml/DocumentBound.h>

namespace OvPipeline {

namespace {

// Empty where nothing is wrong.
std::string ProblemOf(const std::shared_ptr<const OvPlatform::QueueFolder>& queue, const PartContext& context,
                      const std::string& partName) noexcept {
    try {
        const std::string ticket = context.package->ReadPart(partName, OvPlatform::mostDocumentBytes);
        const std::string_view delta = ticket;
        OvPlatform::PrintTicketMerge(queue).Merge(queue->DefaultTicket(), &delta, kPTJobScope);
    } catch (const std::exception& error) {
        try {
            return error.what();
        } catch (...) {
        }
    } catch (...) {
    }
    return {};
}

bool IsTicket(const PartContext& context, const std::string& name) {
    const OvPlatform::PackagePart* part = context.package ? context.package->Find(name) : nullptr;
    return part != nullptr && KindOf(part->contentType, part->name) == PartKind::PrintTicket;
}

} // namespace

void DiagnoseTicket(JobFailure& failure, const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                    const PartContext& context, const std::string& taken) {
    if (failure.fromInput || !IsTicket(context, failure.part)) return;
    const std::string problem = ProblemOf(queue, context, failure.part);
    if (!problem.empty())
        failure.problem = problem;
    else
        failure.part = taken;
}

} // namespace OvPipeline
