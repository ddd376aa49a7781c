#pragma once

#include "Report/JsonText.h"

#include <DataModel/ValueIds.h>
#include <Spooler/QueueFolder.h>

#include <atlcomcli.h>
#include <printerextension.h>

#include <string>
#include <vector>

namespace OvPipeline {

/// A queue at a glance: its printer, its bags and the user's, the installable options, and what programs that
/// run beside a job hear when they ask. The thread must be in a COM apartment.
class QueueReport {
public:
    /// Throws OvPlatform::QueueFolderError where the device's description, or the user's file, is damaged.
    explicit QueueReport(const OvPlatform::QueueFolder& queue);

    /// width: as AlignedTable takes it.
    std::string AsText(std::size_t width = 0) const;
    JsonText AsJson() const;

private:
    struct Fact {
        const char* name;
        std::string value;
    };
    struct Bag {
        const char* name;
        OvPlatform::QueueValues values;
    };
    struct Option {
        std::string name;
        std::string value; // empty where the bag has none
        bool isOfDevice;
    };
    struct Answer {
        const char* question;
        std::string value; // a flag's as yes or no; empty where nobody says
        bool isFlag = false;
    };

    void AddPrinter(const OvPlatform::QueueDescription& queue);
    void AddOptions(const OvPlatform::QueueFolder& queue);
    void AddAnswers(IPrinterPropertyBag* queueBag, IPrinterPropertyBag& userBag);

    std::vector<Fact> m_printer;
    std::size_t m_jobs = 0;
    std::vector<Bag> m_bags;
    std::vector<Option> m_options;
    std::vector<Answer> m_answers;
};

} // namespace OvPipeline
