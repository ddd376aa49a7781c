#pragma once

#include "ObjectModel/MarkupWriter.h"
#include "ObjectModel/ReferenceList.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace OvPlatform {

/// A reference of a document to a page, or of a sequence to a document, as it is to be written.
struct StructureItem {
    std::string target;                       // the part's name
    const PageReference* reference = nullptr; // null for a document
    bool isReferenceChanged = false;          // its size
    // The element that says the rest; null for one that is new.
    std::shared_ptr<const PageSource> source;
    std::uint32_t element = noElement;
    std::string storedTarget; // what that element refers to
};

/// A reference that was read.
struct StructureReference {
    std::uint32_t element;
    std::string source; // as written
};

/// Writes the markup of a document or a sequence: what it was read with stays, but for references that are
/// gone, new, elsewhere or to other names. Once.
class StructureWriter {
public:
    /// `own`: as it was read; null for a new one.
    StructureWriter(MarkupWriter& out, std::string partName, ElementKind root,
                    std::shared_ptr<const PageSource> own);

    void Write(const std::vector<StructureItem>& items);

    /// The references that were read, in their order.
    static std::vector<StructureReference> ReferencesOf(const PageSource& source);

private:
    void WriteNew(const std::vector<StructureItem>& items);
    void WriteItem(const StructureItem& item);
    void WriteNewItem(const StructureItem& item);
    void WriteSize(const PageReference& reference);
    /// Copies what was read up to there, without its references.
    void CopyTo(std::size_t end);

    MarkupWriter& m_out;
    const std::string m_partName;
    const ElementKind m_root;
    const std::shared_ptr<const PageSource> m_own;
    std::size_t m_at = 0;             // where the copying stands
    std::uint32_t m_next = noElement; // the first child that does not stand before that
};

} // namespace OvPlatform
