#pragma once

#include "PrintTicket/PrintTicketMerge.h"
#include "PrintTicket/SchemaModel.h"
#include "Xml/TextMemory.h"

#include <memory>
#include <string>
#include <string_view>

namespace OvPlatform {

/// The merges that were made for one queue, and the tickets that they began with: the pages of a job have few
/// different tickets, and all the same base. Little more than a MB. Threads may share it.
class MergeMemory {
public:
    using Ticket = TextMemory<SchemaDocument>::Pointer;
    using Merged = TextMemory<PrintTicketMerge::Result>::Pointer;

    /// What `read` makes of a base's text, or made of it before. A text that it throws for is not kept.
    template <typename Read>
    Ticket BaseOf(std::string_view text, Read read) {
        if (Ticket known = m_bases.Find(text)) return known;
        auto ticket = std::make_shared<const SchemaDocument>(read());
        m_bases.Keep(std::string(text), ticket, sizeOfModel * text.size());
        return ticket;
    }

    /// What `merge` makes of two texts, or made of them before.
    template <typename Merge>
    Merged MergeOf(std::string_view base, const std::string_view* delta, EPrintTicketScope scope,
                   Merge merge) {
        std::string key = KeyOf(base, delta, scope);
        if (Merged known = m_merges.Find(key)) return known;
        auto merged = std::make_shared<const PrintTicketMerge::Result>(merge());
        m_merges.Keep(std::move(key), merged, merged->ticket.size());
        return merged;
    }

private:
    static constexpr std::size_t mostOfMerges = std::size_t{1} << 20;
    static constexpr std::size_t mostOfBases = std::size_t{1}
                                               << 17; // those of a job, its document and its pages
    static constexpr std::size_t sizeOfModel = 4;     // as often the bytes of its text, about

    // Two texts in one; where the first ends stands before both.
    static std::string KeyOf(std::string_view base, const std::string_view* delta, EPrintTicketScope scope) {
        std::string key =
            std::to_string(scope) + (delta != nullptr ? '+' : '-') + std::to_string(base.size()) + ':';
        key.reserve(key.size() + base.size() + (delta != nullptr ? delta->size() : 0));
        key.append(base);
        if (delta != nullptr) key.append(*delta);
        return key;
    }

    TextMemory<SchemaDocument> m_bases{mostOfBases};
    TextMemory<PrintTicketMerge::Result> m_merges{mostOfMerges};
};

} // namespace OvPlatform
