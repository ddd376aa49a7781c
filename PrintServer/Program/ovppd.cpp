// Describes a queue folder to the print server: writes its PPD.
#include "Ppd/PpdText.h"

#include <Locale/ShownText.h>
#include <PrintTicket/PrintTicketMerge.h>
#include <Spooler/QueueFolderError.h>

#include <signal.h>

#include <iostream>
#include <stdexcept>
#include <vector>

namespace {

constexpr const char* help = R"(ovppd QUEUE_DIR [--pipeline FILE]

Writes to standard output the PPD of a queue folder: the options that its printer offers, the choices of its default
ticket, and where ovtoprinter finds the folder.

  --pipeline FILE   the pipeline configuration that its jobs go through; without it, DeviceStream alone
)";

std::filesystem::path WholePath(const std::string& path) {
    std::error_code error;
    auto whole = std::filesystem::canonical(path, error);
    if (error) throw std::invalid_argument(path + ": " + error.message());
    return whole;
}

OvPrintServer::PpdWishes Read(const std::vector<std::string>& arguments) {
    OvPrintServer::PpdWishes wishes;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--pipeline") {
            if (++i == arguments.size()) throw std::invalid_argument("--pipeline needs a file");
            wishes.pipeline = WholePath(arguments[i]);
        } else if (arguments[i].starts_with('-') || !wishes.queue.empty()) {
            throw std::invalid_argument("what is " + arguments[i] + "? (see ovppd --help)");
        } else {
            wishes.queue = WholePath(arguments[i]);
        }
    }
    if (wishes.queue.empty()) throw std::invalid_argument("no queue folder is named (see ovppd --help)");
    return wishes;
}

int Finish() {
    if (!std::cout.flush()) throw std::runtime_error("the output stream cannot be written");
    return 0;
}

} // namespace

int main(int count, char** arguments) {
    signal(SIGPIPE, SIG_IGN); // a reader that goes away is a failed write
    try {
        const std::vector<std::string> given(arguments + 1, arguments + count);
        if (!given.empty() && (given[0] == "--help" || given[0] == "-h")) {
            std::cout << help;
            return Finish();
        }
        const OvPrintServer::PpdWishes wishes = Read(given);
        const auto queue = OvPlatform::QueueFolder::Load(wishes.queue);
        const OvPlatform::PrintTicketMerge readsBoth(queue); // as each job does
        const OvPrintServer::QueueOffer offer(queue);
        std::cout << OvPrintServer::PpdText(offer, wishes);
        return Finish();
    } catch (const std::exception& error) {
        std::cerr << "ovppd: " << OvPlatform::Shown(error.what()) << "\n";
        return 1;
    }
}
