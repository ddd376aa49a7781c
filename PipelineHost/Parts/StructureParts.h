#pragma once

#include "Parts/PartSlot.h"
#include "Parts/SimpleParts.h"

#include <thread>
#include <unordered_set>

namespace OvPipeline {

using TicketSlot = PartSlot<IPartPrintTicket, PrintTicketPart>;
using ThumbnailSlot = PartSlot<IPartThumbnail, ThumbnailPart>;

/// The package.
class XpsDocumentPart final : public ComObject<IXpsDocument> {
public:
    explicit XpsDocumentPart(ThumbnailSlot thumbnail) : m_thumbnail(std::move(thumbnail)) {}

    HRESULT STDMETHODCALLTYPE GetThumbnail(IPartThumbnail** thumbnail) override {
        return m_thumbnail.Get(thumbnail, PartKind::Image);
    }
    HRESULT STDMETHODCALLTYPE SetThumbnail(IPartThumbnail* thumbnail) override {
        return m_thumbnail.Set(thumbnail);
    }

private:
    ~XpsDocumentPart() override = default;

    ThumbnailSlot m_thumbnail;
};

/// By which the host has a ticket of its own sequences and documents without being counted as one who asks.
/// clang-format off
MIDL_INTERFACE("7c0d5b0a-52b8-4d0e-9d4b-6f1a0c6e2f04")
IHostTicketed : public IUnknown {
public:
    virtual TicketSlot& STDMETHODCALLTYPE Ticket() = 0;

protected:
    ~IHostTicketed() = default;
};
// clang-format on

/// Counts the filters that ask for a part's ticket, each once: every filter has its own thread.
class TicketCount {
public:
    void Asked(const PartContext& context) {
        if (m_lastAsker == std::this_thread::get_id()) return;
        m_lastAsker = std::this_thread::get_id();
        ++context.job->Counters().ticketsAsked;
    }

private:
    std::thread::id m_lastAsker;
};

} // namespace OvPipeline

__CRT_UUID_DECL(OvPipeline::IHostTicketed, 0x7c0d5b0a, 0x52b8, 0x4d0e, 0x9d, 0x4b, 0x6f, 0x1a, 0x0c, 0x6e,
                0x2f, 0x04)

namespace OvPipeline {

/// A sequence or a document: a name and a ticket.
template <class Interface, class... Others>
class TicketedPart : public ComObject<Interface, IHostTicketed, Others...> {
public:
    TicketedPart(SharedContext context, std::string name, TicketSlot ticket)
        : m_context(std::move(context)), m_name(std::move(name)), m_ticket(std::move(ticket)) {}

    HRESULT STDMETHODCALLTYPE GetUri(BSTR* uri) override {
        if (uri == nullptr) return E_POINTER;
        *uri = nullptr;
        return Guarded([&] {
            *uri = NewBstr(m_name);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE GetPrintTicket(IPartPrintTicket** ticket) override {
        const HRESULT hr = m_ticket.Get(ticket, PartKind::PrintTicket);
        if (SUCCEEDED(hr)) m_ticketCount.Asked(*m_context);
        return hr;
    }
    HRESULT STDMETHODCALLTYPE SetPrintTicket(IPartPrintTicket* ticket) override {
        return m_ticket.Set(ticket);
    }
    TicketSlot& STDMETHODCALLTYPE Ticket() override { return m_ticket; }

protected:
    ~TicketedPart() override = default;

private:
    SharedContext m_context;
    std::string m_name;
    TicketSlot m_ticket;
    TicketCount m_ticketCount;
};

class FixedDocumentSequencePart final : public TicketedPart<IFixedDocumentSequence> {
public:
    using TicketedPart::TicketedPart;

private:
    ~FixedDocumentSequencePart() override = default;
};

/// By which the host knows its own documents again.
/// clang-format off
MIDL_INTERFACE("7c0d5b0a-52b8-4d0e-9d4b-6f1a0c6e2f02")
IHostDocument : public IUnknown {
public:
    virtual const std::unordered_set<std::string>& STDMETHODCALLTYPE
    RestrictedFonts() = 0; // names in lower case

protected:
    ~IHostDocument() = default;
};
// clang-format on

} // namespace OvPipeline

__CRT_UUID_DECL(OvPipeline::IHostDocument, 0x7c0d5b0a, 0x52b8, 0x4d0e, 0x9d, 0x4b, 0x6f, 0x1a, 0x0c, 0x6e,
                0x2f, 0x02)

namespace OvPipeline {

class FixedDocumentPart final : public TicketedPart<IFixedDocument, IHostDocument> {
public:
    FixedDocumentPart(SharedContext context, std::string name, TicketSlot ticket,
                      std::unordered_set<std::string> restrictedFonts = {})
        : TicketedPart(std::move(context), std::move(name), std::move(ticket)),
          m_restrictedFonts(std::move(restrictedFonts)) {}

    const std::unordered_set<std::string>& STDMETHODCALLTYPE RestrictedFonts() override {
        return m_restrictedFonts;
    }

private:
    ~FixedDocumentPart() override = default;

    std::unordered_set<std::string> m_restrictedFonts;
};

} // namespace OvPipeline
