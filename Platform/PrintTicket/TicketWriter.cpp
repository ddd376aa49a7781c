#include "PrintTicket/TicketWriter.h"

#include "PrintTicket/SchemaWords.h"
#include "Xml/XmlEscape.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OvPlatform {
namespace {

// Writes a ticket without the blanks between elements that a reader would drop.
class Writer {
public:
    explicit Writer(const CapabilitiesIndex& capabilities)
        : m_capabilities(capabilities), m_prefixes(capabilities.Prefixes()),
          m_framework(m_prefixes.Qualified(SchemaSpace::Framework, {})),
          m_typeAttribute(m_prefixes.Qualified(SchemaSpace::Instance, SchemaAttribute::Type)) {}

    std::string Write(const ValidatedTicket& ticket);

private:
    void Start(const char* element) {
        EndStartTag();
        m_text.append("<").append(m_framework).append(element);
        m_open.push_back(element);
        m_isInStartTag = true;
    }
    void EndStartTag() {
        if (std::exchange(m_isInStartTag, false)) m_text += '>';
    }
    void End() {
        if (std::exchange(m_isInStartTag, false))
            m_text += "/>";
        else
            m_text.append("</").append(m_framework).append(m_open.back()).append(">");
        m_open.pop_back();
    }
    void BeginAttribute(std::string_view name) { m_text.append(" ").append(name).append("=\""); }
    void Attribute(std::string_view name, std::string_view value) {
        BeginAttribute(name);
        AppendXml(m_text, value, XmlPlace::Attribute);
        m_text += '"';
    }
    void Attribute(std::string_view name, const KeywordName& value) {
        BeginAttribute(name);
        Prefix(value.space);
        AppendXml(m_text, value.local, XmlPlace::Attribute);
        m_text += '"';
    }
    void Name(const KeywordName& name) { Attribute(SchemaAttribute::Name, name); }
    // As NamespacePrefixes::Qualified has it.
    void Prefix(const NamespaceUri& space) {
        if (const std::string* prefix = m_prefixes.PrefixOf(space)) m_text.append(*prefix).append(1, ':');
    }
    void Declare(std::size_t at) {
        const auto& [prefix, uri] = m_prefixes.All()[at];
        Attribute("xmlns:" + prefix, uri);
    }

    void Feature(const CapabilitiesFeature& feature, const FeatureChoice& choice);
    void Property(const char* element, const SchemaProperty& property);
    void Value(const SchemaValue& value);

    const CapabilitiesIndex& m_capabilities;
    const NamespacePrefixes& m_prefixes;
    const std::string m_framework; // its prefix with the colon
    const std::string m_typeAttribute;
    std::string m_text;
    std::vector<const char*> m_open;
    bool m_isInStartTag = false;
};

std::string Writer::Write(const ValidatedTicket& ticket) {
    m_text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    Start(SchemaTag::PrintTicket);
    for (std::size_t i = 0; i < NamespacePrefixes::beforeVersion; ++i)
        Declare(i);
    Attribute(SchemaAttribute::Version, "1");
    for (std::size_t i = NamespacePrefixes::beforeVersion; i < m_prefixes.All().size(); ++i)
        Declare(i);

    for (std::size_t i = 0; i < ticket.parameters.size(); ++i) {
        if (!ticket.parameters[i]) continue;
        Start(SchemaTag::ParameterInit);
        Name(m_capabilities.Parameters()[i].Name());
        Value(*ticket.parameters[i]);
        End();
    }
    for (std::size_t i = 0; i < ticket.features.size(); ++i)
        if (ticket.features[i].inScope) Feature(m_capabilities.Features()[i], ticket.features[i]);
    for (const SchemaProperty* property : ticket.properties)
        Property(SchemaTag::Property, *property);
    End();

    return std::move(m_text);
}

void Writer::Feature(const CapabilitiesFeature& feature, const FeatureChoice& choice) {
    Start(SchemaTag::Feature);
    Name(feature.Name());
    for (const SchemaProperty* property : choice.properties)
        Property(SchemaTag::Property, *property);
    for (const FeatureChoice::Chosen& chosen : choice.options) {
        const SchemaOption& option = *feature.options[chosen.option].schema;
        Start(SchemaTag::Option);
        if (!option.name.Empty()) Name(option.name);
        for (const SchemaProperty& scored : option.scored)
            Property(SchemaTag::ScoredProperty, scored);
        for (const SchemaProperty* property : chosen.properties)
            Property(SchemaTag::Property, *property);
        End();
    }
    for (std::size_t i = 0; i < choice.features.size(); ++i)
        Feature(feature.features[i], choice.features[i]);
    End();
}

void Writer::Property(const char* element, const SchemaProperty& property) {
    Start(element);
    Name(property.name);
    if (property.value) Value(*property.value);
    if (!property.parameter.Empty()) {
        Start(SchemaTag::ParameterRef);
        Name(property.parameter);
        End();
    }
    for (const SchemaProperty& scored : property.scored)
        Property(SchemaTag::ScoredProperty, scored);
    for (const SchemaProperty& nested : property.properties)
        Property(SchemaTag::Property, nested);
    End();
}

void Writer::Value(const SchemaValue& value) {
    Start(SchemaTag::Value);
    if (!value.type.Empty()) Attribute(m_typeAttribute, value.type);
    if (!value.text.empty()) {
        EndStartTag();
        Prefix(value.space);
        AppendXml(m_text, value.text, XmlPlace::Content);
    }
    End();
}

} // namespace

std::string WriteTicket(const ValidatedTicket& ticket, const CapabilitiesIndex& capabilities) {
    return Writer(capabilities).Write(ticket);
}

} // namespace OvPlatform
