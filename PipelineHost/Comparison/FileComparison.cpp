#include "Comparison/FileComparison.h"

#include "Common/HostError.h"
#include "Comparison/PackageComparison.h"
#include "Comparison/StreamComparison.h"
#include "Comparison/TicketComparison.h"

#include <PrintTicket/SchemaFormatError.h>

#include <fstream>
#include <string>
#include <string_view>

namespace OvPipeline {

namespace {

constexpr std::uintmax_t largestTicket = 64u << 20; // bytes, as in a queue folder
constexpr std::size_t startSize = 4096;

std::ifstream Open(const std::filesystem::path& file) {
    std::error_code failure;
    const auto status = std::filesystem::status(file, failure);
    if (!std::filesystem::exists(status))
        throw InputError(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), file.string(), "there is no such file");
    if (!std::filesystem::is_regular_file(status))
        throw InputError(E_INVALIDARG, file.string(), "this is no file");
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw InputError(HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED), file.string(), "the file cannot be read");
    return stream;
}

std::string ReadStart(std::istream& stream, std::size_t size) {
    std::string bytes(size, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

// In UTF-8 or UTF-16, with a byte order mark or without.
bool IsXml(std::string_view start) {
    for (const std::string_view mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"})
        if (start.starts_with(mark)) start.remove_prefix(mark.size());
    const std::size_t first = start.find_first_not_of(std::string_view(" \t\r\n\0", 5));
    return first != std::string_view::npos && start[first] == '<';
}

ComparedTicket ReadTicket(const std::filesystem::path& file) {
    std::ifstream stream = Open(file);
    const std::string bytes = ReadStart(stream, static_cast<std::size_t>(largestTicket) + 1);
    try {
        if (bytes.size() > largestTicket) throw OvPlatform::SchemaFormatError("it is larger than 64 MiB");
        return ComparedTicket::Read(bytes);
    } catch (const OvPlatform::SchemaFormatError& error) {
        throw InputError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), file.string(), error.what());
    }
}

DeviceStream ReadStream(const std::filesystem::path& file) {
    std::ifstream stream = Open(file);
    try {
        return DeviceStreamReader::Read(stream);
    } catch (const DeviceStreamError& error) {
        throw InputError(HRESULT_FROM_WIN32(ERROR_INVALID_DATA), file.string(), error.what());
    }
}

} // namespace

const char* NameOf(ComparedKind kind) {
    switch (kind) {
    case ComparedKind::Ticket:
        return "print ticket";
    case ComparedKind::Package:
        return "package";
    default:
        return "device stream";
    }
}

ComparedKind KindOfFile(const std::filesystem::path& file) {
    std::ifstream stream = Open(file);
    const std::string start = ReadStart(stream, startSize);
    if (start.starts_with("PK\3\4") || start.starts_with("PK\5\6")) return ComparedKind::Package;
    if (DeviceStreamReader::IsStream(start)) return ComparedKind::Stream;
    if (IsXml(start)) return ComparedKind::Ticket;
    throw InputError(HRESULT_FROM_WIN32(ERROR_BAD_FORMAT), file.string(),
                     "this is no print ticket, no package and no device stream");
}

DifferenceReport CompareFiles(ComparedKind kind, const std::filesystem::path& a,
                              const std::filesystem::path& b, bool ignoresTimes) {
    DifferenceReport report(NameOf(kind), ignoresTimes);
    switch (kind) {
    case ComparedKind::Ticket:
        report.Begin("settings");
        CompareTickets(ReadTicket(a), ReadTicket(b), report);
        break;
    case ComparedKind::Package:
        PackageComparison(a, b, report).Run();
        break;
    case ComparedKind::Stream:
        CompareStreams(ReadStream(a), ReadStream(b), report);
        break;
    }
    return report;
}

} // namespace OvPipeline
