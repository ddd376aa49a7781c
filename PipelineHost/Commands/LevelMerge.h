#pragma once

#include "Commands/JobLevel.h"

#include <Configuration/NativeXmlConfigurationFeatureSet.h>

namespace OvPipeline {

/// Merges the tickets of a job's levels, each on the one above it and the first on the queue's default, by
/// the same class as filters do it, with what the queue's administrator enforces. The thread must be in a COM
/// apartment, and the queue known to the spooler.
class LevelMerge {
public:
    /// The manager must live as long. Throws HostError.
    LevelMerge(PrintTicketManager& manager, std::shared_ptr<const OvPlatform::QueueFolder> queue);

    // Tell which level it is. Throw InputError, with words, for a ticket that is to blame, else HostError.
    EPrintTicketScope Merge(const CComPtr<IFixedDocumentSequence>& sequence);
    EPrintTicketScope Merge(const CComPtr<IFixedDocument>& document);
    EPrintTicketScope Merge(const CComPtr<IFixedPage>& page);
    /// All levels from the job down.
    EPrintTicketScope Merge(const LevelParts& parts);

    /// Of the level that was merged last.
    const LevelParts& Parts() const { return m_parts; }
    PrintTicketManager& Manager() { return m_manager; }

private:
    template <class Part> // of the three
    EPrintTicketScope MergePart(Part* part, EPrintTicketScope level, const char* name);
    void Require(HRESULT hr, const char* level) const;

    PrintTicketManager& m_manager;
    std::shared_ptr<const OvPlatform::QueueFolder> m_queue;
    NativeXmlConfigurationFeatureSet m_configuration;
    LevelParts m_parts;
};

} // namespace OvPipeline
