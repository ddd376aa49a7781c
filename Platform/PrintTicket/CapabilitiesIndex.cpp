#include "PrintTicket/CapabilitiesIndex.h"

#include "PrintTicket/FrameworkCheck.h"
#include "PrintTicket/SchemaFormatError.h"
#include "PrintTicket/SchemaReader.h"
#include "PrintTicket/SchemaWords.h"

#include <algorithm>
#include <tuple>
#include <unordered_set>

namespace OvPlatform {
namespace {

XmlDocument ParseCapabilities(std::string_view bytes) {
    XmlDocument document = ParseSchemaXml(bytes);
    FrameworkCheck::Check(document.get(), FrameworkCheck::Kind::Capabilities);
    return document;
}

// A framework property whose value is a keyword, in whichever type the document writes it.
bool HasKeyword(const std::vector<SchemaProperty>& properties, std::string_view name,
                std::string_view keyword) {
    const SchemaProperty* property = FindProperty(properties, SchemaSpace::Framework, name);
    if (!property || !property->value) return false;
    const std::string_view text = Trimmed(property->value->text);
    const std::size_t colon = text.find(':');
    return (colon == std::string_view::npos ? text : text.substr(colon + 1)) == keyword;
}

CapabilitiesOption IndexOption(const SchemaOption& schema) {
    const bool free =
        schema.constrained.Empty() || schema.constrained.Is(SchemaSpace::Keywords, SchemaKeyword::None);
    return {&schema, !free, free, HasKeyword(schema.properties, "IdentityOption", "True")};
}

// What a ticket can say of an option, apart from the order of its scored properties. The separators cannot
// occur in XML.
void AppendDescription(std::string& text, const std::vector<SchemaProperty>& scored) {
    std::vector<const SchemaProperty*> sorted;
    sorted.reserve(scored.size());
    for (const SchemaProperty& property : scored)
        sorted.push_back(&property);
    std::stable_sort(sorted.begin(), sorted.end(), [](const auto* one, const auto* other) {
        return std::pair(one->name.space.Text(), std::string_view(one->name.local)) <
               std::pair(other->name.space.Text(), std::string_view(other->name.local));
    });
    const auto append = [&](const KeywordName& name) {
        text.append(1, '\1').append(name.space.Text()).append(1, '\2').append(name.local);
    };
    for (const SchemaProperty* property : sorted) {
        append(property->name);
        append(property->parameter);
        if (property->value) {
            append(property->value->type);
            append({property->value->space, property->value->text});
        }
        text += '\3';
        AppendDescription(text, property->scored);
        text += '\4';
    }
}

// A ticket that names or describes one of two options that are described alike would always get the first.
void ForgetRepeatedOptions(std::vector<CapabilitiesOption>& options) {
    std::unordered_set<std::string> seen;
    for (CapabilitiesOption& option : options) {
        if (!option.viable) continue;
        std::string description(option.schema->name.space.Text());
        description.append(1, '\2').append(option.schema->name.local);
        AppendDescription(description, option.schema->scored);
        option.viable = seen.insert(std::move(description)).second;
    }
}

std::vector<CapabilitiesFeature> IndexFeatures(const std::vector<SchemaFeature>& schemas,
                                               KeywordMap<std::size_t>& byName,
                                               const SettingLevel* outermost) {
    std::vector<CapabilitiesFeature> features;
    for (const SchemaFeature& schema : schemas) {
        if (!byName.emplace(schema.name, features.size()).second) continue;
        CapabilitiesFeature& feature = features.emplace_back();
        feature.schema = &schema;
        feature.level = outermost ? *outermost : LevelOf(schema.name.local);
        feature.pickMany = HasKeyword(schema.properties, "SelectionType", "PickMany");
        for (const SchemaOption& option : schema.options) {
            if (!option.name.Empty()) feature.optionByName.emplace(option.name, feature.options.size());
            feature.options.push_back(IndexOption(option));
        }
        // A printer that allows none of its options still needs a ticket that says something.
        if (!feature.options.empty() && std::none_of(feature.options.begin(), feature.options.end(),
                                                     [](const auto& option) { return option.viable; }))
            feature.options.front().viable = true;
        ForgetRepeatedOptions(feature.options);
        const SettingLevel level = feature.level;
        feature.features = IndexFeatures(schema.features, feature.featureByName, &level);
    }
    return features;
}

} // namespace

CapabilitiesIndex::CapabilitiesIndex(std::string_view bytes)
    : m_xml(ParseCapabilities(bytes)), m_schema(ReadSchemaDocument(m_xml.get())),
      m_prefixes(DeclaredNamespaces(m_xml.get()), ConstraintRules::namespaceUri),
      m_features(IndexFeatures(m_schema.features, m_featureByName, nullptr)) {
    // Every ticket declares them all.
    if (m_prefixes.All().size() > std::size_t{maxDeclarations})
        throw SchemaFormatError("more than " + std::to_string(maxDeclarations) + " namespaces are declared");
    for (const SchemaParameterDef& definition : m_schema.definitions)
        if (m_parameterByName.emplace(definition.name, m_parameters.size()).second)
            m_parameters.emplace_back(definition);
    for (const CapabilitiesFeature& feature : m_features)
        ReachParameters(feature);
    m_constraints = ConstraintRules::Read(m_xml.get(), *this);
}

void CapabilitiesIndex::ReachParameters(const CapabilitiesFeature& feature) {
    for (const CapabilitiesOption& option : feature.options)
        ReachParameters(option.schema->scored, feature.level);
    for (const CapabilitiesFeature& nested : feature.features)
        ReachParameters(nested);
}

void CapabilitiesIndex::ReachParameters(const std::vector<SchemaProperty>& scored, SettingLevel level) {
    for (const SchemaProperty& property : scored) {
        if (const std::size_t at = FindParameter(property.parameter); at != notFound)
            m_parameters[at].ReachDownTo(level);
        ReachParameters(property.scored, level);
    }
}

SettingLevel CapabilitiesIndex::LevelOfParameter(const KeywordName& name) const {
    const std::size_t at = FindParameter(name);
    return at == notFound ? LevelOf(name.local) : m_parameters[at].Level();
}

const char* CapabilitiesIndex::ProblemOf(std::size_t parameter, const SchemaValue& value) const {
    if (const char* problem = m_parameters[parameter].Problem(value)) return problem;
    return value.space.Empty() || m_prefixes.Has(value.space) ? nullptr
                                                              : "is a name that the printer does not know";
}

} // namespace OvPlatform
