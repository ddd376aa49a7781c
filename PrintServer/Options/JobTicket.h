#pragma once

#include "Options/GivenOptions.h"
#include "Queue/QueueOffer.h"

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace OvPrintServer {

/// A job that may not be printed with these options. what() is for the job's owner, and holds no secret.
class RefusedOption : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A setting that an option of the job asks for.
struct AskedSetting {
    std::string option;  // as it was given: "sides=two-sided-long-edge"
    std::string name;    // the option's name
    std::string setting; // the ticket's: "JobDuplexAllDocumentsContiguously"
    std::string value;   // the ticket's, without a prefix
};

/// An option that the ticket cannot say.
struct LeftOption {
    std::string option; // as it was given
    std::string name;
    std::string reason;
};

/// What the options of a job come to.
struct JobTicket {
    std::string xml;   // a print ticket; empty where the options ask for nothing. It may hold a password
    std::string pages; // as the server writes them: "1-3,7"; empty: all
    std::vector<AskedSetting> asked;
    std::vector<LeftOption> left;
    std::vector<std::string> unknown; // names

    /// Whether the job is to fail where this option cannot be had.
    bool MustObey(const std::string& name) const;

    bool obeysAll = false;
    std::set<std::string> obeyed;
};

/// Makes a ticket of the options by the one table of them. copies: 1 where the server has seen to them.
/// Throws RefusedOption where the job must not be printed without what it asks for.
JobTicket MakeJobTicket(const QueueOffer& offer, const GivenOptions& options, unsigned copies);

} // namespace OvPrintServer
