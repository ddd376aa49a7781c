// Any bytes as a device stream, as markup of a part and as a ticket: nothing is different from itself, a
// stream does not lose bytes of its pages, and only the exceptions that each reader promises come of it.

#include <Comparison/MarkupComparison.h>
#include <Comparison/StreamComparison.h>
#include <Comparison/TicketComparison.h>
#include <Package/PackageError.h>
#include <PrintTicket/SchemaFormatError.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <sstream>
#include <string>

using namespace OvPipeline;

namespace {

void Require(bool condition) {
    if (!condition) std::abort();
}

void CompareAsStreams(const std::string& bytes) {
    try {
        std::istringstream once(bytes), again(bytes);
        const DeviceStream stream = DeviceStreamReader::Read(once);
        DifferenceReport report("device stream");
        CompareStreams(stream, DeviceStreamReader::Read(again), report);
        Require(report.IsEmpty());
        std::uint64_t size = 0;
        for (const auto* pages : {&stream.pages, &stream.data})
            for (const DeviceStream::Page& page : *pages)
                size += page.size;
        Require(size <= bytes.size());
    } catch (const DeviceStreamError&) {
    }
}

OvPlatform::PartMarkup::ReadBytes From(const std::string& bytes) {
    return [&bytes, at = std::size_t{0}](void* buffer, std::size_t size) mutable {
        size = (std::min)(size, bytes.size() - at);
        std::memcpy(buffer, bytes.data() + at, size);
        at += size;
        return size;
    };
}

void CompareAsMarkup(const std::string& bytes) {
    const auto resolve = [](const std::string& reference) { return std::optional(reference + "!"); };
    try {
        MarkupReader one("/1.fpage", From(bytes), resolve);
        MarkupReader other("/2.fpage", From(bytes), resolve);
        Require(!FindDifference(one, other));
    } catch (const OvPlatform::PackageError&) {
    }
}

void CompareAsTickets(const std::string& bytes) {
    try {
        const ComparedTicket ticket = ComparedTicket::Read(bytes);
        DifferenceReport report("print ticket");
        CompareTickets(ticket, ticket, report);
        Require(report.IsEmpty());
    } catch (const OvPlatform::SchemaFormatError&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    CompareAsStreams(bytes);
    CompareAsMarkup(bytes);
    CompareAsTickets(bytes);
    return 0;
}
