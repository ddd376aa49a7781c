#include "PrintTicket/TicketOverlay.h"

#include "PrintTicket/FrameworkCheck.h"
#include "PrintTicket/SchemaWords.h"
#include "PrintTicket/SchemaXml.h"
#include "PrintTicket/TicketInput.h"

#include <libxml/tree.h>

#include <new>
#include <unordered_set>

namespace OvPlatform {
namespace {

// A ticket with the names of its settings.
class Ticket {
public:
    Ticket(std::string_view text, InputKind kind)
        : m_document(AsInput(kind,
                             [&] {
                                 XmlDocument document = ParseSchemaXml(text);
                                 FrameworkCheck::Check(document.get(), FrameworkCheck::Kind::Ticket);
                                 return document;
                             })),
          m_scope(Root()) {}

    xmlDoc* Document() const { return m_document.get(); }
    xmlNode* Root() const { return xmlDocGetRootElement(m_document.get()); }

    // Features, parameters and properties may have one name.
    KeywordName NameOf(const xmlNode* setting) const {
        const xmlAttr* name = xmlHasNsProp(setting, AsXml(SchemaAttribute::Name), nullptr);
        if (!name || !name->children) return {};
        KeywordName found = m_scope.Resolve(setting, View(name->children->content)).value_or(KeywordName());
        if (!found.Empty()) found.local.append(1, ' ').append(View(setting->name));
        return found;
    }

    std::string Text() const {
        xmlChar* dumped = nullptr;
        int length = 0;
        xmlDocDumpMemoryEnc(m_document.get(), &dumped, &length, "UTF-8");
        const XmlPointer<xmlChar> text(dumped);
        if (!text) throw std::bad_alloc();
        return std::string(View(text.get(), length));
    }

private:
    XmlDocument m_document;
    NamespaceScope m_scope;
};

enum class Prefixes { All, Named };

// The names in the values of attributes mean what they meant where they came from: each prefix that is known
// there is declared at the copy.
void DeclareAllOf(const xmlNode* original, xmlNode* copy, Prefixes which) {
    for (const xmlNode* node = original; node != nullptr && node->type == XML_ELEMENT_NODE;
         node = node->parent)
        for (const xmlNs* declaration = node->nsDef; declaration; declaration = declaration->next) {
            bool isDeclared = which == Prefixes::Named && declaration->prefix == nullptr;
            for (const xmlNs* own = copy->nsDef; own; own = own->next)
                isDeclared = isDeclared || View(own->prefix) == View(declaration->prefix);
            if (!isDeclared && xmlNewNs(copy, declaration->href, declaration->prefix) == nullptr)
                throw std::bad_alloc();
        }
}

void Append(const xmlNode* setting, xmlNode* root) {
    xmlNode* const copy = xmlDocCopyNode(const_cast<xmlNode*>(setting), root->doc, 1);
    if (copy == nullptr) throw std::bad_alloc();
    xmlAddChild(root, copy);
    DeclareAllOf(setting, copy, Prefixes::All);
}

} // namespace

class TicketOverlay::Settings {
public:
    explicit Settings(std::string_view ticket) : m_ticket(ticket, InputKind::Ticket) {
        for (xmlNode* each = FirstElement(m_ticket.Root(), SchemaSpace::Framework); each;
             each = NextElement(each, SchemaSpace::Framework))
            m_names.insert(m_ticket.NameOf(each));
    }

    // True where the base had any of them.
    bool TakeFrom(const Ticket& base) const {
        bool isChanged = false;
        xmlNode* next = nullptr;
        for (xmlNode* each = FirstElement(base.Root(), SchemaSpace::Framework); each; each = next) {
            next = NextElement(each, SchemaSpace::Framework);
            if (!m_names.contains(base.NameOf(each))) continue;
            xmlUnlinkNode(each);
            xmlFreeNode(each);
            isChanged = true;
        }
        return isChanged;
    }

    // Some readers know the prefixes of the root alone, so that it gets those that it has not taken. What has
    // none there stays in no namespace.
    void PutOn(const Ticket& base) const {
        DeclareAllOf(m_ticket.Root(), base.Root(), Prefixes::Named);
        for (xmlNode* each = FirstElement(m_ticket.Root(), SchemaSpace::Framework); each;
             each = NextElement(each, SchemaSpace::Framework))
            Append(each, base.Root());
    }

private:
    Ticket m_ticket;
    std::unordered_set<KeywordName, KeywordNameHash> m_names;
};

TicketOverlay::TicketOverlay(std::string_view ticket) : m_settings(std::make_unique<Settings>(ticket)) {}

TicketOverlay::~TicketOverlay() = default;

std::string TicketOverlay::Over(std::string_view base) const {
    const Ticket ticket(base, InputKind::BaseTicket);
    m_settings->TakeFrom(ticket);
    m_settings->PutOn(ticket);
    return ticket.Text();
}

std::string TicketOverlay::GivingWay(std::string_view base) const {
    const Ticket ticket(base, InputKind::BaseTicket);
    return m_settings->TakeFrom(ticket) ? ticket.Text() : std::string(base);
}

} // namespace OvPlatform
