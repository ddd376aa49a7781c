#pragma once

#include "Spooler/QueueDescription.h"
#include "Xml/DocumentBound.h"

// The attributes of queue.xml as tables, for its reader and its writer.

namespace OvPlatform::QueueSchema {

inline constexpr char Version[] = "1";

// Bounds on what is read.
inline constexpr std::uintmax_t MaxDescriptionSize = 4u << 20;
inline constexpr std::uintmax_t MaxDocumentSize = MostDocumentBytes;
inline constexpr std::size_t MaxProperties = 4096;
inline constexpr std::size_t MaxJobs = 10000;
inline constexpr std::size_t MaxTextLength = 32767; // UTF-16 units

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

inline constexpr std::uint32_t AnyNumber = 0xFFFFFFFF;
inline constexpr std::uint32_t LastMinute = 24 * 60 - 1;

inline constexpr TextAttribute<QueueDescription> PrinterTexts[] = {
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

inline constexpr NumberAttribute<QueueDescription> PrinterNumbers[] = {
    {"attributes", &QueueDescription::attributes, 0, AnyNumber},
    {"status", &QueueDescription::status, 0, AnyNumber},
    {"priority", &QueueDescription::priority, 1, 99},
    {"defaultPriority", &QueueDescription::defaultPriority, 0, 99},
    {"startTime", &QueueDescription::startTime, 0, LastMinute},
    {"untilTime", &QueueDescription::untilTime, 0, LastMinute},
    {"pagesPerMinute", &QueueDescription::averagePagesPerMinute, 0, AnyNumber},
};

inline constexpr TextAttribute<QueueJob> JobTexts[] = {
    {"document", &QueueJob::document, true},      {"user", &QueueJob::user, true},
    {"machine", &QueueJob::machine, false},       {"notify", &QueueJob::notify, false},
    {"datatype", &QueueJob::datatype, false},     {"parameters", &QueueJob::parameters, false},
    {"statusText", &QueueJob::statusText, false},
};

inline constexpr NumberAttribute<QueueJob> JobNumbers[] = {
    {"id", &QueueJob::id, 1, AnyNumber},
    {"status", &QueueJob::status, 0, AnyNumber},
    {"priority", &QueueJob::priority, 1, 99},
    {"startTime", &QueueJob::startTime, 0, LastMinute},
    {"untilTime", &QueueJob::untilTime, 0, LastMinute},
    {"pages", &QueueJob::totalPages, 0, AnyNumber},
    {"pagesPrinted", &QueueJob::pagesPrinted, 0, AnyNumber},
    {"size", &QueueJob::size, 0, AnyNumber},
    {"time", &QueueJob::time, 0, AnyNumber},
};

// The elements of the bags, in the order of QueueValue's alternatives.
inline constexpr const char* ValueElements[] = {"String", "Bool", "Int32", "Bytes", "Stream"};
static_assert(std::size(ValueElements) == std::variant_size_v<QueueValue>);

} // namespace OvPlatform::QueueSchema
