#include "PrintTicket/CapabilitiesView.h"

#include "PrintTicket/ImageableSize.h"
#include "PrintTicket/NamespaceScope.h"
#include "PrintTicket/SchemaWords.h"
#include "PrintTicket/SchemaXml.h"

#include <new>

namespace OvPlatform {
namespace {

void RemoveConstraintElements(xmlNode* root) {
    for (xmlNode* element = FirstElement(root, ConstraintRules::namespaceUri); element;) {
        xmlNode* next = NextElement(element, ConstraintRules::namespaceUri);
        xmlUnlinkNode(element);
        xmlFreeNode(element);
        element = next;
    }
}

// Walks the features of a copy of the document beside those of the index, which stand in the same order.
class ConstrainedMarks {
public:
    ConstrainedMarks(const CapabilitiesIndex& capabilities, const ValidatedTicket& settings, xmlNode* root)
        : m_capabilities(capabilities), m_choices(settings.features), m_root(root), m_scope(root) {}

    void Set() {
        std::vector<bool> seen(m_capabilities.Features().size());
        for (xmlNode* element = FirstElement(m_root, SchemaSpace::Framework); element;
             element = NextElement(element, SchemaSpace::Framework)) {
            if (View(element->name) != SchemaTag::Feature) continue;
            const std::size_t at = m_capabilities.FindFeature(NameOf(element));
            if (at == CapabilitiesIndex::notFound || seen[at]) continue;
            seen[at] = true;
            SetFeature(element, at);
        }
    }

private:
    KeywordName NameOf(const xmlNode* element) const {
        const xmlAttr* name = xmlHasNsProp(element, AsXml(SchemaAttribute::Name), nullptr);
        return name && name->children
                   ? m_scope.Resolve(element, View(name->children->content)).value_or(KeywordName())
                   : KeywordName();
    }

    void SetFeature(xmlNode* element, std::size_t at) {
        const CapabilitiesFeature& feature = m_capabilities.Features()[at];
        std::size_t option = 0;
        for (xmlNode* child = FirstElement(element, SchemaSpace::Framework); child;
             child = NextElement(child, SchemaSpace::Framework)) {
            if (View(child->name) != SchemaTag::Option) continue;
            // What the device or its administrator rules out stays ruled out for that reason, the stricter
            // one.
            if (!feature.options[option].constrained) SetOption(child, IsExcluded(at, option));
            ++option;
        }
    }

    bool IsExcluded(std::size_t at, std::size_t option) {
        const ConstraintRules& rules = m_capabilities.Constraints();
        if (rules.Empty() || m_choices[at].Has(option)) return false;
        std::vector<FeatureChoice::Chosen> kept = std::move(m_choices[at].options);
        m_choices[at].options = {{option, {}}};
        const bool excluded = rules.HoldingFor(at, m_choices) > 0;
        m_choices[at].options = std::move(kept);
        return excluded;
    }

    void SetOption(xmlNode* element, bool excluded) {
        if (!excluded && !xmlHasNsProp(element, AsXml(SchemaAttribute::Constrained), nullptr)) return;
        const xmlNs* keywords = xmlSearchNsByHref(element->doc, element, AsXml(SchemaSpace::Keywords));
        if (!keywords || !keywords->prefix)
            keywords = xmlNewNs(m_root, AsXml(SchemaSpace::Keywords), AsXml(SchemaSpace::KeywordsPrefix));
        if (!keywords) throw std::bad_alloc();
        const std::string value =
            std::string(View(keywords->prefix)) + (excluded ? ":PrintTicketSettings" : ":None");
        if (!xmlSetProp(element, AsXml(SchemaAttribute::Constrained), AsXml(value.c_str())))
            throw std::bad_alloc();
    }

    const CapabilitiesIndex& m_capabilities;
    std::vector<FeatureChoice> m_choices;
    xmlNode* m_root;
    NamespaceScope m_scope;
};

} // namespace

std::string WriteCapabilities(const CapabilitiesIndex& capabilities, const ValidatedTicket& settings) {
    const XmlDocument copy(xmlCopyDoc(const_cast<xmlDoc*>(capabilities.Xml()), 1));
    if (!copy) throw std::bad_alloc();
    xmlNode* root = xmlDocGetRootElement(copy.get());
    RemoveConstraintElements(root);
    ConstrainedMarks(capabilities, settings, root).Set();
    SetImageableSize(root, capabilities, settings);

    xmlChar* dumped = nullptr;
    int length = 0;
    xmlDocDumpMemoryEnc(copy.get(), &dumped, &length, "UTF-8");
    const XmlPointer<xmlChar> text(dumped);
    if (!text) throw std::bad_alloc();
    return std::string(View(text.get(), length));
}

} // namespace OvPlatform
