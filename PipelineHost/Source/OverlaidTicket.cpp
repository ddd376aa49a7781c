#include "Source/OverlaidTicket.h"

#include <Xml/DocumentBound.h>

namespace OvPipeline {

namespace {

constexpr const char* emptyTicket =
    R"(<psf:PrintTicket xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework" version="1"/>)";

} // namespace

std::string ReadTicket(const PartCore& core) {
    std::string text;
    Drain(*core.content->Open(), [&](const void* bytes, std::size_t size) {
        if (text.size() + size > OvPlatform::mostDocumentBytes)
            throw InputError(E_OUTOFMEMORY, core.name, core.name + ": a print ticket larger than 64 MB");
        text.append(static_cast<const char*>(bytes), size);
    });
    return text;
}

std::unique_ptr<ByteReader> OverlaidTicket::Open() const {
    std::string text = m_below.content ? ReadTicket(m_below) : std::string(emptyTicket);
    try {
        text = m_place == Place::Over ? m_overlay->Over(text) : m_overlay->GivingWay(text);
    } catch (const OvPlatform::PrintTicketError& error) {
        if (m_place == Place::Over)
            throw InputError(error.Result(), m_below.name, m_below.name + ": " + error.what());
    }
    return MemoryContent(std::move(text)).Open();
}

// The job's own is another one than the same part where a page has it.
std::uint64_t OverlaidTicket::Identity() const {
    return m_place == Place::Over ? reinterpret_cast<std::uintptr_t>(this) : m_below.content->Identity();
}

} // namespace OvPipeline
