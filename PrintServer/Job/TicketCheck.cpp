#include "Job/TicketCheck.h"

namespace OvPrintServer {

namespace {

// "psk:JobNUp/psk:PresentationDirection" without the prefixes.
std::string LocalPath(std::string_view setting) {
    std::string path;
    for (bool isMore = true; isMore;) {
        const std::size_t slash = setting.find('/');
        isMore = slash != std::string_view::npos;
        path += std::string(LocalPart(setting.substr(0, slash))) + (isMore ? "/" : "");
        if (isMore) setting.remove_prefix(slash + 1);
    }
    return path;
}

} // namespace

std::vector<LeftOption> FindOverruled(const OvPipeline::TicketExplanation& merged, const JobTicket& ticket) {
    std::vector<LeftOption> overruled;
    const auto rows = merged.Rows();
    for (const AskedSetting& asked : ticket.asked)
        for (const auto& row : rows) {
            if (LocalPath(row.setting) != asked.setting) continue;
            if (row.origin != "job" && !row.remark.empty() && LocalPart(row.value) != asked.value)
                overruled.push_back({asked.option, asked.name, row.remark});
        }
    return overruled;
}

} // namespace OvPrintServer
