#include "Chain/TicketDiagnosis.h"

#include "Dom/DocumentBound.h"
#include "PrintTicket/PrintTicketMerge.h"

namespace OvPipeline {

std::string DiagnoseTicket(const std::shared_ptr<const OvPlatform::QueueFolder>& queue,
                           const PartContext& context, const std::string& partName) noexcept {
    try {
        const OvPlatform::PackagePart* part = context.package ? context.package->Find(partName) : nullptr;
        if (!part || KindOf(part->contentType, part->name) != PartKind::PrintTicket) return {};
        const std::string ticket = context.package->ReadPart(partName, OvPlatform::MostDocumentBytes);
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

} // namespace OvPipeline
