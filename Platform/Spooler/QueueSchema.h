#pragma once

#include "Spooler/QueueDescription.h"
#include "Xml/DocumentBound.h"

// The attributes of queue.xml as tables, for its reader and its writer.

namespace OvPlatform::QueueSchema {

inline constexpr char schemaVersion[] = "1";

// Bounds on what is read.
inline constexpr std::uintmax_t maxDescriptionSize = 4u << 20;
inline constexpr std::uintmax_t maxDocumentSize = mostDocumentBytes;
inline constexpr std::size_t maxProperties = 4096;
inline constexpr std::size_t maxJobs = 10000;
inline constexpr std::size_t maxTextLength = 32767; // UTF-16 units

template <class Record>
struct TextAttribute {
    const char* name;
    std::wstring Record::*field;
    bool required;
};

template <class Record>
struct NumberAttribute {
    const char* name;
    std::uint32_t Record::*field;
    std::uint32_t smallest;
    std::uint32_t largest;
};

inline constexpr std::uint32_t anyNumber = 0xFFFFFFFF;
inline constexpr std::uint32_t lastMinute = 24 * 60 - 1;

inline constexpr TextAttribute<QueueDescription> printerTexts[] = {
    {"name", &QueueDescription::printerName, true},
    {"port", &QueueDescription::portName, true},
    {"driver", &QueueDescription::driverName, true},
    {"comment", &QueueDescription::comment, false},
    {"location", &QueueDescription::location, false},
    {"server", &QueueDescription::serverName, false},
    {"share", &QueueDescription::shareName, false},
    {"separatorFile", &QueueDescription::separatorFile, false},
    {"printProcessor", &QueueDescription::printProcessor, false},
    {"datatype", &QueueDescription::datatype, false},
    {"parameters", &QueueDescription::parameters, false},
};

inline constexpr NumberAttribute<QueueDescription> printerNumbers[] = {
    {"attributes", &QueueDescription::attributes, 0, anyNumber},
    {"status", &QueueDescription::status, 0, anyNumber},
    {"priority", &QueueDescription::priority, 1, 99},
    {"defaultPriority", &QueueDescription::defaultPriority, 0, 99},
    {"startTime", &QueueDescription::startTime, 0, lastMinute},
    {"untilTime", &QueueDescription::untilTime, 0, lastMinute},
    {"pagesPerMinute", &QueueDescription::averagePagesPerMinute, 0, anyNumber},
};

inline constexpr TextAttribute<QueueJob> jobTexts[] = {
    {"document", &QueueJob::document, true},      {"user", &QueueJob::user, true},
    {"machine", &QueueJob::machine, false},       {"notify", &QueueJob::notify, false},
    {"datatype", &QueueJob::datatype, false},     {"parameters", &QueueJob::parameters, false},
    {"statusText", &QueueJob::statusText, false},
};

inline constexpr NumberAttribute<QueueJob> jobNumbers[] = {
    {"id", &QueueJob::id, 1, anyNumber},
    {"status", &QueueJob::status, 0, anyNumber},
    {"priority", &QueueJob::priority, 1, 99},
    {"startTime", &QueueJob::startTime, 0, lastMinute},
    {"untilTime", &QueueJob::untilTime, 0, lastMinute},
    {"pages", &QueueJob::totalPages, 0, anyNumber},
    {"pagesPrinted", &QueueJob::pagesPrinted, 0, anyNumber},
    {"size", &QueueJob::size, 0, anyNumber},
    {"time", &QueueJob::time, 0, anyNumber},
};

/// The elements of the bags, in the order of QueueValue's alternatives.
inline constexpr const char* valueElements[] = {"String", "Bool", "Int32", "Bytes", "Stream"};
static_assert(std::size(valueElements) == std::variant_size_v<QueueValue>);

} // namespace OvPlatform::QueueSchema
