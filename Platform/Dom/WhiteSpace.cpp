#include "Dom/WhiteSpace.h"

#include "Dom/AttributeOrder.h"

namespace OvPlatform {

bool IsText(const xmlNode* node) noexcept {
    return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

SpaceRule SpaceRuleOf(const xmlNode* element) noexcept {
    const xmlAttr* space = element->properties;
    while (space != nullptr && !(space->ns != nullptr && View(space->name) == "space" &&
                                 View(space->ns->href) == View(XML_XML_NAMESPACE)))
        space = space->next;
    if (space == nullptr || space->children == nullptr) return SpaceRule::AsAround;
    const std::string_view value = View(space->children->content);
    return value == "preserve"  ? SpaceRule::Preserve
           : value == "default" ? SpaceRule::Default
                                : SpaceRule::AsAround;
}

bool SpaceIsPreserved(const xmlNode* element) noexcept {
    for (; element != nullptr && element->type == XML_ELEMENT_NODE; element = element->parent) {
        const SpaceRule rule = SpaceRuleOf(element);
        if (rule != SpaceRule::AsAround) return rule == SpaceRule::Preserve;
    }
    return false;
}

void NormalizeLineEnds(std::string& text) {
    std::size_t kept = text.find('\r');
    if (kept == std::string::npos) return;
    for (std::size_t index = kept; index < text.size(); ++index) {
        if (text[index] == '\r' && index + 1 < text.size() && text[index + 1] == '\n') continue;
        text[kept++] = text[index] == '\r' ? '\n' : text[index];
    }
    text.resize(kept);
}

} // namespace OvPlatform
