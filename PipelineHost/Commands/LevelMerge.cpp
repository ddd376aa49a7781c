#include "Commands/LevelMerge.h"

#include "Commands/QueueConfiguration.h"
#include "Common/HostError.h"
#include "Streams/PrintReadStream.h"

#include <utility>

namespace OvPipeline {

LevelMerge::LevelMerge(PrintTicketManager& manager, std::shared_ptr<const OvPlatform::QueueFolder> queue)
    : m_manager(manager), m_queue(std::move(queue)), m_configuration(ReadConfiguration(*m_queue)) {
    CComPtr<IPrintReadStream> defaultTicket;
    defaultTicket.Attach(new PrintReadStream(MemoryContent(m_queue->DefaultTicket()).Open()));
    std::wstring name = m_queue->PrinterName();
    Require(m_manager.Initialize(defaultTicket, name.data(), nullptr), "queue");
}

void LevelMerge::Require(HRESULT hr, const char* level) const {
    if (SUCCEEDED(hr)) return;
    ExplainLevel(m_queue, m_parts); // Throws, with words, if it is the ticket that is wrong.
    throw HostError(hr, level, std::string("the ticket of the ") + level + " cannot be merged");
}

template <class Part>
EPrintTicketScope LevelMerge::MergePart(Part* part, EPrintTicketScope level, const char* name) {
    NativeXmlConfigurationFeatureSet* enforced = &m_configuration;
    const HRESULT hr =
        m_manager.MergeAndValidatePartPrintTicketAndSanitizeFromXmlConfig(part, enforced, true);
    // The result does not tell of a merge that failed.
    const bool isMerged = m_manager.GetPtrToPrintTicketForReading(level) != nullptr;
    Require(isMerged ? hr : E_FAIL, name);
    return level;
}

EPrintTicketScope LevelMerge::Merge(const LevelParts& parts) {
    EPrintTicketScope level = Merge(parts.sequence);
    if (parts.document) level = Merge(parts.document);
    if (parts.page) level = Merge(parts.page);
    return level;
}

EPrintTicketScope LevelMerge::Merge(const CComPtr<IFixedDocumentSequence>& sequence) {
    m_parts = {sequence, {}, {}};
    return MergePart(sequence.p, kPTJobScope, "job");
}

EPrintTicketScope LevelMerge::Merge(const CComPtr<IFixedDocument>& document) {
    // Merged page tickets are kept by their part, which pages of two documents may share.
    if (m_parts.document) m_manager.ClearPerJobInMemoryDomDocumentCaches();
    m_parts.document = document;
    m_parts.page.Release();
    return MergePart(document.p, kPTDocumentScope, "document");
}

EPrintTicketScope LevelMerge::Merge(const CComPtr<IFixedPage>& page) {
    m_parts.page = page;
    return MergePart(page.p, kPTPageScope, "page");
}

} // namespace OvPipeline
