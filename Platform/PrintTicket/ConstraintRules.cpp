#include "PrintTicket/ConstraintRules.h"

#include "PrintTicket/CapabilitiesIndex.h"
#include "PrintTicket/NamespaceScope.h"
#include "PrintTicket/SchemaFormatError.h"
#include "PrintTicket/SchemaXml.h"
#include "PrintTicket/ValidatedTicket.h"

#include <algorithm>

namespace OvPlatform {
namespace {

[[noreturn]] void Refuse(const xmlNode* element, const std::string& problem) {
    throw SchemaFormatError("line " + std::to_string(xmlGetLineNo(element)) + ", constraint: " + problem);
}

std::string Attribute(const xmlNode* element, const char* name) {
    const xmlAttr* attribute = xmlHasNsProp(element, AsXml(name), nullptr);
    if (!attribute || !attribute->children)
        Refuse(element, std::string("the attribute ") + name + " is missing");
    return std::string(View(attribute->children->content));
}

std::size_t FindFeature(const xmlNode* choice, const NamespaceScope& scope, const CapabilitiesIndex& index) {
    const std::string text = Attribute(choice, "feature");
    const auto name = scope.Resolve(choice, text);
    const std::size_t at = name ? index.FindFeature(*name) : CapabilitiesIndex::notFound;
    if (at == CapabilitiesIndex::notFound) Refuse(choice, "there is no feature '" + text + "'");
    return at;
}

std::vector<bool> FindOptions(const xmlNode* choice, const NamespaceScope& scope,
                              const CapabilitiesFeature& feature) {
    std::vector<bool> options(feature.options.size());
    const std::string text = Attribute(choice, "options");
    for (std::string_view rest = Trimmed(text); !rest.empty();) {
        const std::string_view one = rest.substr(0, rest.find_first_of(" \t\r\n"));
        rest = Trimmed(rest.substr(one.size()));
        const auto name = scope.Resolve(choice, one);
        const std::size_t at =
            name ? CapabilitiesIndex::Find(feature.optionByName, *name) : CapabilitiesIndex::notFound;
        if (at == CapabilitiesIndex::notFound)
            Refuse(choice, "the feature has no option '" + std::string(one) + "'");
        options[at] = true;
    }
    for (std::size_t i = 0; i < options.size(); ++i) // whatever else options of one name are made of
        if (const KeywordName& name = feature.options[i].schema->name; !name.Empty())
            options[i] = options[feature.optionByName.at(name)];
    return options;
}

} // namespace

ConstraintRules ConstraintRules::Read(const xmlDoc* capabilities, const CapabilitiesIndex& index) {
    const xmlNode* root = xmlDocGetRootElement(capabilities);
    const NamespaceScope scope(root);
    ConstraintRules rules;
    rules.m_byFeature.resize(index.Features().size());
    for (const xmlNode* element = FirstElement(root, namespaceUri); element;
         element = NextElement(element, namespaceUri)) {
        if (View(element->name) != "Constraint") Refuse(element, "only Constraint elements are allowed here");
        Constraint constraint;
        for (const xmlNode* choice = FirstElement(element, namespaceUri); choice;
             choice = NextElement(choice, namespaceUri)) {
            const std::size_t feature = FindFeature(choice, scope, index);
            constraint.choices.push_back({feature, FindOptions(choice, scope, index.Features()[feature])});
            constraint.givingWay.insert(constraint.givingWay.begin(), feature);
            rules.m_byFeature[feature].push_back(rules.m_constraints.size());
        }
        if (constraint.choices.size() < 2) Refuse(element, "at least two choices are needed");
        rules.m_constraints.push_back(std::move(constraint));
    }
    return rules;
}

bool ConstraintRules::Holds(std::size_t constraint, const std::vector<FeatureChoice>& choices) const {
    const std::vector<Choice>& needed = m_constraints[constraint].choices;
    return std::all_of(needed.begin(), needed.end(), [&](const Choice& choice) {
        const std::vector<FeatureChoice::Chosen>& chosen = choices[choice.feature].options;
        return std::any_of(chosen.begin(), chosen.end(),
                           [&](const FeatureChoice::Chosen& one) { return choice.options[one.option]; });
    });
}

std::size_t ConstraintRules::HoldingFor(std::size_t feature,
                                        const std::vector<FeatureChoice>& choices) const {
    const std::vector<std::size_t>& constraints = m_byFeature[feature];
    return static_cast<std::size_t>(
        std::count_if(constraints.begin(), constraints.end(),
                      [&](std::size_t constraint) { return Holds(constraint, choices); }));
}

} // namespace OvPlatform
