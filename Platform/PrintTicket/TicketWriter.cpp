#include "PrintTicket/TicketWriter.h"

#include "PrintTicket/SchemaWords.h"
#include "PrintTicket/SchemaXml.h"

#include <libxml/xmlwriter.h>

#include <memory>
#include <new>

namespace OvPlatform {
namespace {

class Writer {
public:
    explicit Writer(const CapabilitiesIndex& capabilities)
        : m_capabilities(capabilities), m_prefixes(capabilities.Prefixes()), m_buffer(xmlBufferCreate()),
          m_writer(m_buffer ? xmlNewTextWriterMemory(m_buffer.get(), 0) : nullptr) {
        if (!m_writer) throw std::bad_alloc();
    }

    std::string Write(const ValidatedTicket& ticket);

private:
    void Start(const char* element) {
        Check(xmlTextWriterStartElement(
            m_writer.get(), AsXml(m_prefixes.Qualified(SchemaSpace::Framework, element).c_str())));
    }
    void End() { Check(xmlTextWriterEndElement(m_writer.get())); }
    void Attribute(const std::string& name, const std::string& value) {
        Check(xmlTextWriterWriteAttribute(m_writer.get(), AsXml(name.c_str()), AsXml(value.c_str())));
    }
    void Name(const KeywordName& name) { Attribute(SchemaAttribute::Name, m_prefixes.Qualified(name)); }
    void Declare(std::size_t at) {
        Attribute("xmlns:" + m_prefixes.All()[at].first, m_prefixes.All()[at].second);
    }

    void Feature(const CapabilitiesFeature& feature, const FeatureChoice& choice);
    void Property(const char* element, const SchemaProperty& property);
    void Value(const SchemaValue& value);

    static void Check(int result) {
        if (result < 0) throw std::bad_alloc();
    }

    const CapabilitiesIndex& m_capabilities;
    const NamespacePrefixes& m_prefixes;
    XmlPointer<xmlBuffer> m_buffer;
    XmlPointer<xmlTextWriter> m_writer; // writes into m_buffer, so it goes first
};

std::string Writer::Write(const ValidatedTicket& ticket) {
    Check(xmlTextWriterStartDocument(m_writer.get(), "1.0", "UTF-8", nullptr));
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

    Check(xmlTextWriterFlush(m_writer.get()));
    return {reinterpret_cast<const char*>(xmlBufferContent(m_buffer.get())),
            static_cast<std::size_t>(xmlBufferLength(m_buffer.get()))};
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
    if (!value.type.Empty())
        Attribute(m_prefixes.Qualified(SchemaSpace::Instance, SchemaAttribute::Type),
                  m_prefixes.Qualified(value.type));
    if (!value.text.empty())
        Check(xmlTextWriterWriteString(
            m_writer.get(),
            AsXml(
                (value.space.empty() ? value.text : m_prefixes.Qualified(value.space, value.text)).c_str())));
    End();
}

} // namespace

std::string WriteTicket(const ValidatedTicket& ticket, const CapabilitiesIndex& capabilities) {
    return Writer(capabilities).Write(ticket);
}

} // namespace OvPlatform
