// Bytes as a merge: the scope, then the base ticket, then, behind a null character, the delta. What comes out
// has to go in again and come out the same.

#include <PrintTicket/PrintTicketMerge.h>

#include <cstdlib>

using namespace OvPlatform;

namespace {

const PrintTicketMerge& SampleQueue() {
    static const PrintTicketMerge merge(
        QueueFolder::Load(std::string(OV_SOURCE_DIR) + "/Samples/Queues/ColorOffice"));
    return merge;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    if (size == 0) return 0;
    const auto scope = static_cast<EPrintTicketScope>(data[0] % 3);
    const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t split = input.find('\0');
    const std::string_view base = input.substr(0, split);
    const std::string_view delta =
        split == std::string_view::npos ? std::string_view() : input.substr(split + 1);

    const PrintTicketMerge& queue = SampleQueue();
    MergeReport report;
    PrintTicketMerge::Result result;
    try {
        result = queue.Merge(base, split == std::string_view::npos ? nullptr : &delta, scope, &report);
    } catch (const PrintTicketError&) {
        return 0;
    }
    const std::string_view ticket = result.ticket;
    const PrintTicketMerge::Result again = queue.Merge(ticket, nullptr, scope);
    if (again.ticket != result.ticket || again.conflictResolved) std::abort();
    queue.Capabilities(&ticket);
    return 0;
}
