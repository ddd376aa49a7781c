#pragma once

#include "ObjectModel/ReferenceList.h"
#include "ObjectModel/XpsVocabulary.h"

#include <string>

namespace OvPlatform {

/// A reference from one part to another, as short as it gets without climbing.
std::string ReferenceWithin(const std::string& from, const std::string& to);

/// The markup of sequences and documents, element by element.
OV_PLATFORM_API std::string OpenRoot(const char* root, XpsFlavour flavour);
OV_PLATFORM_API std::string DocumentReferenceElement(const std::string& sequence,
                                                     const std::string& document);
OV_PLATFORM_API std::string PageContentElement(const std::string& document, const std::string& page,
                                               const PageReference& reference);

} // namespace OvPlatform
