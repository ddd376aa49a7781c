#pragma once

#include "ObjectModel/PartMarkup.h"

#include <optional>
#include <string>
#include <vector>

namespace OvPlatform {

/// What a document says of a page beside its name, and a sequence of a document.
struct PageReference {
    std::string source; // the page's name
    std::string width;  // as written; may be empty
    std::string height;
    std::vector<std::string> linkTargets;
};

/// The references of a sequence to its documents, or of a document to its pages, one after another: memory
/// does not grow with their number. Throws PackageError (with the line) for markup that cannot be read, a
/// DTD, another root, a reference without a source, and for what the package's bytes throw.
class OV_PLATFORM_API ReferenceList {
public:
    enum class Of { Sequence, Document };

    ReferenceList(Of kind, std::string partName, PartMarkup::ReadBytes bytes);
    ReferenceList(const ReferenceList&) = delete;
    ReferenceList& operator=(const ReferenceList&) = delete;

    /// Nothing at the end. The source is as written.
    std::optional<PageReference> Next();

private:
    void CheckRoot();
    PageReference TakeReference();
    void TakeLinkTargets(PageReference& reference);
    std::string Attribute(const char* name) const;
    bool IsElement(const char* name) const;

    Of m_kind;
    PartMarkup m_markup;
    bool m_started = false;
    bool m_ended = false;
};

} // namespace OvPlatform
