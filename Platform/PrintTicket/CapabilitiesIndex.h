#pragma once

#include "PrintTicket/ConstraintRules.h"
#include "PrintTicket/NamespacePrefixes.h"
#include "PrintTicket/ParameterRules.h"
#include "PrintTicket/SchemaModel.h"
#include "PrintTicket/SchemaXml.h"

#include <string_view>
#include <vector>

namespace OvPlatform {

struct CapabilitiesOption {
    const SchemaOption* schema;
    bool constrained; // by the device or its administrator
    bool viable;      // may be chosen: not constrained, or the first where all are, and unlike all before it
    bool identity;    // means "none of the others" where several may be picked
};

struct CapabilitiesFeature {
    const SchemaFeature* schema;
    SettingLevel level; // of a nested feature, that of the outermost
    bool pickMany;
    std::vector<CapabilitiesOption> options;
    KeywordMap<std::size_t> optionByName;
    std::vector<CapabilitiesFeature> features;
    KeywordMap<std::size_t> featureByName;

    const KeywordName& Name() const { return schema->name; }
};

/// A queue's capabilities document, read once and arranged for validation. Never changes afterwards, so it
/// may be shared between threads. Of elements with the same name the first counts.
class CapabilitiesIndex {
public:
    /// Throws SchemaFormatError.
    explicit CapabilitiesIndex(std::string_view bytes);
    CapabilitiesIndex(const CapabilitiesIndex&) = delete;
    CapabilitiesIndex& operator=(const CapabilitiesIndex&) = delete;

    const xmlDoc* Xml() const { return m_xml.get(); }
    const SchemaDocument& Schema() const { return m_schema; }

    const std::vector<CapabilitiesFeature>& Features() const { return m_features; }
    const std::vector<ParameterRules>& Parameters() const { return m_parameters; }
    const ConstraintRules& Constraints() const { return m_constraints; }
    /// The namespaces that this printer has settings in, and their prefixes.
    const NamespacePrefixes& Prefixes() const { return m_prefixes; }

    static constexpr std::size_t notFound = static_cast<std::size_t>(-1);
    std::size_t FindFeature(const KeywordName& name) const { return Find(m_featureByName, name); }
    std::size_t FindParameter(const KeywordName& name) const { return Find(m_parameterByName, name); }
    static std::size_t Find(const KeywordMap<std::size_t>& names, const KeywordName& name) {
        const auto found = names.find(name);
        return found == names.end() ? notFound : found->second;
    }

    SettingLevel LevelOfParameter(const KeywordName& name) const;
    /// As ParameterRules::Problem; a name in a namespace that the printer does not have is none that it
    /// knows.
    const char* ProblemOf(std::size_t parameter, const SchemaValue& value) const;

private:
    void ReachParameters(const CapabilitiesFeature& feature);
    void ReachParameters(const std::vector<SchemaProperty>& scored, SettingLevel level);

    XmlDocument m_xml;
    SchemaDocument m_schema;
    NamespacePrefixes m_prefixes;
    KeywordMap<std::size_t> m_featureByName; // filled along with m_features
    std::vector<CapabilitiesFeature> m_features;
    std::vector<ParameterRules> m_parameters;
    KeywordMap<std::size_t> m_parameterByName;
    ConstraintRules m_constraints;
};

} // namespace OvPlatform
