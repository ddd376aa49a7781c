#include "Ppd/QueuePpd.h"

#include <cups/ppd.h>

#include <memory>

namespace OvPrintServer {

namespace {

std::filesystem::path PathOf(ppd_file_t* ppd, const char* keyword) {
    const ppd_attr_t* const attribute = ppdFindAttr(ppd, keyword, nullptr);
    return attribute == nullptr || attribute->value == nullptr ? "" : attribute->value;
}

} // namespace

QueuePpd QueuePpd::Read(const std::filesystem::path& file) {
    const std::unique_ptr<ppd_file_t, decltype(&ppdClose)> ppd(ppdOpenFile(file.c_str()), &ppdClose);
    if (!ppd) {
        int line = 0;
        const ppd_status_t status = ppdLastError(&line);
        const std::string place = line > 0 ? file.string() + " line " + std::to_string(line) : file.string();
        throw PpdError(place + ": the queue's PPD cannot be read: " + ppdErrorString(status));
    }
    QueuePpd found{PathOf(ppd.get(), "ovQueue"), PathOf(ppd.get(), "ovPipeline")};
    if (found.queue.empty())
        throw PpdError(file.string() +
                       ": the queue's PPD names no queue folder: *ovQueue is missing (make it "
                       "with ovppd)");
    if (!found.queue.is_absolute()) throw PpdError(file.string() + ": *ovQueue is no absolute path");
    return found;
}

} // namespace OvPrintServer
