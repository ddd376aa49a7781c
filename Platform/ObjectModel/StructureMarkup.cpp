#include "ObjectModel/StructureMarkup.h"

#include "ObjectModel/MarkupText.h"

namespace OvPlatform {

namespace {

void AddAttribute(std::string& element, const char* name, std::string_view value) {
    if (!value.empty()) element += std::string(" ") + name + "=\"" + EscapeAttribute(value) + "\"";
}

} // namespace

std::string ReferenceWithin(const std::string& from, const std::string& to) {
    const std::size_t folder = from.rfind('/') + 1;
    const std::string_view base(from.data(), folder);
    // A first segment with a colon would read as a scheme.
    if (!to.starts_with(base) || to.find(':', folder) != std::string::npos) return to;
    return to.substr(folder);
}

std::string OpenRoot(const char* root, XpsFlavour flavour) {
    return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<") + root + " xmlns=\"" +
           MarkupNamespace(flavour) + "\">\n";
}

std::string DocumentReferenceElement(const std::string& sequence, const std::string& document) {
    std::string element = "<DocumentReference";
    AddAttribute(element, "Source", ReferenceWithin(sequence, document));
    return element + "/>\n";
}

std::string PageContentElement(const std::string& document, const std::string& page,
                               const PageReference& reference) {
    std::string element = "<PageContent";
    AddAttribute(element, "Source", ReferenceWithin(document, page));
    AddAttribute(element, "Width", reference.width);
    AddAttribute(element, "Height", reference.height);
    if (reference.linkTargets.empty()) return element + "/>\n";
    element += "><PageContent.LinkTargets>";
    for (const std::string& target : reference.linkTargets) {
        element += "<LinkTarget";
        AddAttribute(element, "Name", target);
        element += "/>";
    }
    return element + "</PageContent.LinkTargets></PageContent>\n";
}

} // namespace OvPlatform
