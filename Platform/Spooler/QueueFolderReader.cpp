#include "Spooler/QueueFolderReader.h"

#include "Spooler/DescriptionReader.h"
#include "Spooler/QueueFolder.h"
#include "Spooler/QueueSchema.h"

#include <cstdio>
#include <optional>
#include <set>

namespace OvPlatform {

namespace {

using namespace QueueSchema;

std::vector<std::uint8_t> ToBytes(const std::string& text) { return {text.begin(), text.end()}; }

// "2026-01-31T09:30:00Z", with or without milliseconds.
std::optional<std::chrono::sys_time<std::chrono::milliseconds>> ParseTime(const std::string& text) {
    int year = 0, hour = 0, minute = 0, second = 0, millisecond = 0, length = 0;
    unsigned month = 0, day = 0;
    const int fields = std::sscanf(text.c_str(), "%4d-%2u-%2uT%2d:%2d:%2d%n.%3d%n", &year, &month, &day,
                                   &hour, &minute, &second, &length, &millisecond, &length);
    if (fields < 6 || text.substr(static_cast<std::size_t>(length)) != "Z") return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                           std::chrono::day(day)};
    if (!date.ok() || year < 1601 || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    if (hour < 0 || minute < 0 || second < 0 || millisecond < 0) return std::nullopt;
    return std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           std::chrono::seconds(second) + std::chrono::milliseconds(millisecond);
}

class Reader : public DescriptionReader {
public:
    explicit Reader(const std::filesystem::path& folder)
        : DescriptionReader(folder / QueueFolder::descriptionFile, folder) {}

    QueueDescription Read() {
        const XmlDocument document = Parse(ReadDescriptionFile(File(), maxDescriptionSize));
        ReadQueue(xmlDocGetRootElement(document.get()));
        return std::move(m_queue);
    }

private:
    template <class Record, std::size_t Texts, std::size_t Numbers>
    void ReadFields(const xmlNode* element, Record& record, const TextAttribute<Record> (&texts)[Texts],
                    const NumberAttribute<Record> (&numbers)[Numbers]) const {
        for (const auto& row : texts) {
            std::string value;
            if (row.required) value = RequiredAttribute(element, row.name);
            if (row.required || GetAttribute(element, row.name, value))
                record.*row.field = Widen(element, value);
        }
        for (const auto& row : numbers) {
            std::string value;
            if (!GetAttribute(element, row.name, value)) continue;
            const auto number = ParseNumber<std::uint32_t>(value);
            if (!number || *number < row.smallest || *number > row.largest)
                Refuse(element, QuotedWord(value) + " is no value for the attribute " + QuotedWord(row.name) +
                                    " of " + Name(element));
            record.*row.field = *number;
        }
    }

    std::string ReadDocument(const xmlNode* element) const {
        RefuseOtherAttributes(element, "file");
        ForChildren(element, [&](const xmlNode* child) { Refuse(child, "unknown element " + Name(child)); });
        const std::string name = RequiredAttribute(element, "file");
        std::string bytes = ReadNamedFile(element, name);
        if (bytes.empty()) throw QueueFolderError(Folder() / name, "the file is empty");
        return bytes;
    }

    void ReadQueue(const xmlNode* root) {
        CheckRoot(root, "Queue");
        std::set<std::string_view> seen;
        ForChildren(root, [&](const xmlNode* child) {
            const std::string_view name = LocalName(child);
            if (!seen.insert(name).second) Refuse(child, Name(child) + " stands twice");
            if (name == "Printer")
                ReadPrinter(child);
            else if (name == "DefaultTicket")
                m_queue.defaultTicket = ReadDocument(child);
            else if (name == "Capabilities")
                m_queue.capabilities = ReadDocument(child);
            else if (name == "Devmode")
                m_queue.devmode = ToBytes(ReadDocument(child));
            else if (name == "DriverProperties")
                ReadBag(child, m_queue.driverProperties);
            else if (name == "QueueProperties")
                ReadBag(child, m_queue.queueProperties);
            else if (name == "Jobs")
                ReadJobs(child);
            else
                Refuse(child, "unknown element " + Name(child));
        });
        for (const char* required : {"Printer", "DefaultTicket", "Capabilities"})
            if (!seen.contains(required))
                Refuse(root, std::string("the element <") + required + "> is missing");
    }

    void ReadPrinter(const xmlNode* element) {
        RefuseOtherAttributes(element, printerTexts, printerNumbers);
        ReadFields(element, m_queue, printerTexts, printerNumbers);
        ForChildren(element, [&](const xmlNode* child) { Refuse(child, "unknown element " + Name(child)); });
    }

    void ReadBag(const xmlNode* element, QueueValues& values) const {
        RefuseOtherAttributes(element);
        ReadProperties(element, values);
    }

    void ReadJobs(const xmlNode* element) {
        RefuseOtherAttributes(element);
        std::set<std::uint32_t> ids;
        ForChildren(element, [&](const xmlNode* child) {
            if (LocalName(child) != "Job") Refuse(child, "unknown element " + Name(child));
            if (m_queue.jobs.size() == maxJobs) Refuse(child, "too many jobs");
            m_queue.jobs.push_back(ReadJob(child));
            const std::uint32_t id = m_queue.jobs.back().id;
            if (!ids.insert(id).second) Refuse(child, "two jobs have the id " + std::to_string(id));
        });
    }

    QueueJob ReadJob(const xmlNode* element) const {
        RefuseOtherAttributes(element, jobTexts, jobNumbers, "submitted", "devmode");
        ForChildren(element, [&](const xmlNode* child) { Refuse(child, "unknown element " + Name(child)); });
        QueueJob job;
        ReadFields(element, job, jobTexts, jobNumbers);
        RequiredAttribute(element, "id");
        std::string value;
        if (GetAttribute(element, "submitted", value)) {
            const auto time = ParseTime(value);
            if (!time) Refuse(element, QuotedWord(value) + " is no time of the form 2026-01-31T09:30:00Z");
            job.submitted = *time;
        }
        if (GetAttribute(element, "devmode", value)) job.devmode = ToBytes(ReadNamedFile(element, value));
        return job;
    }

    QueueDescription m_queue;
};

} // namespace

QueueDescription ReadQueueFolder(const std::filesystem::path& folder) { return Reader(folder).Read(); }

} // namespace OvPlatform
