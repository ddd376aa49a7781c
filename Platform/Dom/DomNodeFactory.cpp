#include "Dom/DomNodeFactory.h"

#include "Dom/DomAttribute.h"
#include "Dom/DomCharacterData.h"
#include "Dom/DomDocument.h"
#include "Dom/DomElement.h"
#include "Dom/DomFragment.h"
#include "Dom/DomProcessingInstruction.h"
#include "Dom/WhiteSpace.h"
#include "Xml/XmlDeclaration.h"

namespace OvPlatform {

IXMLDOMNode* DomNodeFactory::Make(DomTree& tree, xmlNode* node) {
    switch (node->type) {
    case XML_ELEMENT_NODE:
        return new DomElement(tree, node);
    case XML_ATTRIBUTE_NODE:
        return new DomAttribute(tree, node);
    case XML_CDATA_SECTION_NODE:
        return new DomCDataSection(tree, node);
    case XML_COMMENT_NODE:
        return new DomComment(tree, node);
    case XML_PI_NODE:
        return new DomProcessingInstruction(tree, node);
    case XML_DOCUMENT_NODE:
        return static_cast<IXMLDOMDocument3*>(new DomDocument(tree));
    case XML_DOCUMENT_FRAG_NODE:
        return new DomFragment(tree, node);
    default:
        return new DomText(tree, node);
    }
}

std::optional<std::string> DomNodeFactory::Held(xmlElementType type, std::string_view name,
                                                std::string_view content) {
    std::string held(content);
    // Only a text can spell a carriage return.
    if (type != XML_TEXT_NODE) NormalizeLineEnds(held);
    switch (type) {
    case XML_COMMENT_NODE:
        if (held.find("--") != std::string::npos || held.ends_with('-')) return std::nullopt;
        break;
    case XML_PI_NODE:
        if (name == "xml") {
            const auto declaration = XmlDeclaration::FromData(held);
            return declaration ? std::optional(declaration->Data()) : std::nullopt;
        }
        if (held.find("?>") != std::string::npos) return std::nullopt;
        held.erase(0, held.find_first_not_of(xmlBlanks)); // they belong to what parts it from the target
        break;
    default:
        break;
    }
    return held;
}

} // namespace OvPlatform
