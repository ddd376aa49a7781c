#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace OvPlatform {

// What a property of a queue's bags may hold. Text is in UTF-16 code units, one to a wchar_t.
// A stream differs from bytes only in the calls that reach it.
struct QueueBytes {
    std::vector<std::uint8_t> bytes;
    bool operator==(const QueueBytes&) const = default;
};
struct QueueStream {
    std::vector<std::uint8_t> bytes;
    std::filesystem::path file = {}; // that they were read from, if any; no part of the value
    bool operator==(const QueueStream& other) const { return bytes == other.bytes; }
};
using QueueValue = std::variant<std::wstring, bool, std::int32_t, QueueBytes, QueueStream>;

/// The values of one bag by name; names are case-sensitive.
using QueueValues = std::map<std::wstring, QueueValue, std::less<>>;

/// One job that waits in the queue.
struct QueueJob {
    std::uint32_t id = 0; // 1 and up, unique in the queue
    std::wstring document;
    std::wstring user;
    std::wstring machine;
    std::wstring notify; // who is told; the user where empty
    std::wstring datatype = L"XPS_PASS";
    std::wstring parameters;
    std::wstring statusText;
    std::uint32_t status = 0;    // JOB_STATUS_...
    std::uint32_t priority = 1;  // 1 (low) to 99
    std::uint32_t startTime = 0; // minutes after midnight UTC between which it may print; both 0: always
    std::uint32_t untilTime = 0;
    std::uint32_t totalPages = 0;
    std::uint32_t pagesPrinted = 0;
    std::uint32_t size = 0;                                       // bytes
    std::uint32_t time = 0;                                       // milliseconds since printing began
    std::chrono::sys_time<std::chrono::milliseconds> submitted{}; // UTC
    std::vector<std::uint8_t> devmode; // DEVMODEW with its private part; empty: none
    bool operator==(const QueueJob&) const = default;
};

/// All that a queue folder says about its printer. Text is UTF-16 in wchar_t; the two documents are kept as
/// the bytes of their files.
struct QueueDescription {
    std::wstring printerName;
    std::wstring portName;
    std::wstring driverName;
    std::wstring comment;
    std::wstring location;
    std::wstring serverName;
    std::wstring shareName;
    std::wstring separatorFile;
    std::wstring printProcessor = L"winprint";
    std::wstring datatype = L"RAW";
    std::wstring parameters;
    std::uint32_t attributes = 0; // PRINTER_ATTRIBUTE_...
    std::uint32_t status = 0;     // PRINTER_STATUS_...
    std::uint32_t priority = 1;
    std::uint32_t defaultPriority = 0;
    std::uint32_t startTime = 0;
    std::uint32_t untilTime = 0;
    std::uint32_t averagePagesPerMinute = 0;
    std::string defaultTicket;
    std::string capabilities;
    std::vector<std::uint8_t> devmode;
    QueueValues driverProperties;
    QueueValues queueProperties;
    std::vector<QueueJob> jobs; // in the order of printing
    bool operator==(const QueueDescription&) const = default;
};

} // namespace OvPlatform
