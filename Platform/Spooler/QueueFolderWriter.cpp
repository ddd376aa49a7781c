#include "Spooler/QueueFolderWriter.h"

#include "Locale/Utf16.h"
#include "Spooler/PropertiesWriter.h"
#include "Spooler/QueueFolder.h"
#include "Spooler/QueueSchema.h"
#include "Xml/XmlOutput.h"

#include <cstdio>
#include <fstream>

namespace OvPlatform {

namespace {

using namespace QueueSchema;

const char ticketFile[] = "default-ticket.xml";
const char capabilitiesFile[] = "capabilities.xml";
const char devmodeFile[] = "devmode.bin";

template <class Bytes>
void WriteFile(const std::filesystem::path& file, const Bytes& bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) throw QueueFolderError(file, "the file cannot be written");
}

std::string FormatTime(std::chrono::sys_time<std::chrono::milliseconds> time) {
    const auto day = std::chrono::floor<std::chrono::days>(time);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(time - day);
    char text[40];
    std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", int(date.year()),
                  unsigned(date.month()), unsigned(date.day()), int(clock.hours().count()),
                  int(clock.minutes().count()), int(clock.seconds().count()),
                  int(clock.subseconds().count()));
    return text;
}

// Attributes that differ from what stands there without them.
template <class Record, std::size_t Texts, std::size_t Numbers>
void WriteFields(XmlOutput& xml, const Record& record, const TextAttribute<Record> (&texts)[Texts],
                 const NumberAttribute<Record> (&numbers)[Numbers]) {
    const Record standard;
    for (const auto& row : texts)
        if (row.required || record.*row.field != standard.*row.field)
            xml.Attribute(row.name, ToUtf8(record.*row.field));
    for (const auto& row : numbers)
        if (record.*row.field != standard.*row.field)
            xml.Attribute(row.name, std::to_string(record.*row.field));
}

void WriteNamedFile(XmlOutput& xml, const char* element, const char* file) {
    xml.Start(element);
    xml.Attribute("file", file);
    xml.End();
}

std::string JobDevmodeFile(const QueueJob& job) { return "job-" + std::to_string(job.id) + ".devmode.bin"; }

void WriteJobs(XmlOutput& xml, const std::vector<QueueJob>& jobs) {
    if (jobs.empty()) return;
    xml.Start("Jobs");
    for (const QueueJob& job : jobs) {
        xml.Start("Job");
        WriteFields(xml, job, jobTexts, jobNumbers);
        if (job.submitted != QueueJob().submitted) xml.Attribute("submitted", FormatTime(job.submitted));
        if (!job.devmode.empty()) xml.Attribute("devmode", JobDevmodeFile(job));
        xml.End();
    }
    xml.End();
}

std::string FormatDescription(const QueueDescription& queue) {
    XmlOutput xml(true);
    xml.Start("Queue");
    xml.Attribute("version", schemaVersion);
    xml.Start("Printer");
    WriteFields(xml, queue, printerTexts, printerNumbers);
    xml.End();
    WriteNamedFile(xml, "DefaultTicket", ticketFile);
    WriteNamedFile(xml, "Capabilities", capabilitiesFile);
    if (!queue.devmode.empty()) WriteNamedFile(xml, "Devmode", devmodeFile);
    WriteProperties(xml, "DriverProperties", queue.driverProperties);
    WriteProperties(xml, "QueueProperties", queue.queueProperties);
    WriteJobs(xml, queue.jobs);
    return xml.Finish();
}

} // namespace

void WriteQueueFolder(const QueueDescription& description, const std::filesystem::path& folder) {
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (failure) throw QueueFolderError(folder, "the folder cannot be made: " + failure.message());
    std::string text;
    try {
        text = FormatDescription(description);
    } catch (const std::runtime_error& error) {
        throw QueueFolderError(folder / QueueFolder::descriptionFile, error.what());
    }
    WriteFile(folder / ticketFile, description.defaultTicket);
    WriteFile(folder / capabilitiesFile, description.capabilities);
    if (!description.devmode.empty()) WriteFile(folder / devmodeFile, description.devmode);
    for (const QueueJob& job : description.jobs)
        if (!job.devmode.empty()) WriteFile(folder / JobDevmodeFile(job), job.devmode);
    // Last, so that a folder with a description is whole.
    WriteFile(folder / QueueFolder::descriptionFile, text);
}

} // namespace OvPlatform
