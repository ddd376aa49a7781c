#include "Dom/DomNodeFactory.h"

#include "Dom/DomAttribute.h"
#include "Dom/DomCharacterData.h"
#include "Dom/DomDocument.h"
#include "Dom/DomElement.h"
#include "Dom/DomFragment.h"
#include "Dom/DomProcessingInstruction.h"
#include "Dom/XmlDeclaration.h"

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

bool DomNodeFactory::MayHold(xmlElementType type, std::string_view name, std::string_view content) {
    switch (type) {
    case XML_COMMENT_NODE:
        return content.find("--") == std::string_view::npos && !content.ends_with('-');
    case XML_PI_NODE:
        if (name == "xml") return XmlDeclaration::FromData(content).has_value();
        return content.find("?>") == std::string_view::npos;
    default:
        return true;
    }
}

} // namespace OvPlatform
