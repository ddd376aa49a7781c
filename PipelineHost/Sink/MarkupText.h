#pragma once

#include "Parts/FixedPagePart.h"

namespace OvPipeline {

/// The markup of sequences and documents, element by element.
std::string OpenRoot(const char* root, XpsFlavour flavour);
std::string DocumentReferenceElement(const std::string& sequence, const std::string& document);
std::string PageContentElement(const std::string& document, const std::string& page,
                               const PageReference& reference);

/// A reference from one part to another, as short as it gets.
std::string RelativeReference(const std::string& from, const std::string& to);

} // namespace OvPipeline
