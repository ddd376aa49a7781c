#include "Queue/QueueOffer.h"

#include <Spooler/QueueFolderError.h>
#include <Xml/StrictXml.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <sstream>

namespace OvPrintServer {

namespace {

constexpr std::string_view framework =
    "http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";
constexpr std::string_view constraints = "urn:ov-platform:queue-constraints:1";
constexpr const wchar_t* settingsOfDevice = L"DeviceCapabilities";

std::optional<long> ToNumber(std::string_view text) {
    long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return {};
    return number;
}

std::string NameOf(const xmlNode* node) {
    std::string name;
    OvPlatform::GetAttribute(node, "name", name);
    return name;
}

bool Is(const xmlNode* node, std::string_view ns, std::string_view name) {
    return node->type == XML_ELEMENT_NODE && OvPlatform::LocalName(node) == name && node->ns != nullptr &&
           reinterpret_cast<const char*>(node->ns->href) == ns;
}

template <class Visit>
void ForEach(const xmlNode* parent, std::string_view name, Visit&& visit) {
    for (const xmlNode* child = parent->children; child != nullptr; child = child->next)
        if (Is(child, framework, name)) visit(child);
}

std::string TextOf(const xmlNode* node) {
    xmlChar* const text = xmlNodeGetContent(node);
    std::string result = text != nullptr ? reinterpret_cast<const char*>(text) : "";
    xmlFree(text);
    return result;
}

// The value of a property, or of a parameter of a ticket.
std::string ValueOf(const xmlNode* node, std::string* type = nullptr) {
    std::string value;
    ForEach(node, "Value", [&](const xmlNode* child) {
        value = TextOf(child);
        for (const xmlAttr* attribute = child->properties; type != nullptr && attribute != nullptr;
             attribute = attribute->next)
            if (std::string_view(reinterpret_cast<const char*>(attribute->name)) == "type")
                *type = TextOf(attribute->children);
    });
    return value;
}

std::string PropertyOf(const xmlNode* node, std::string_view localName) {
    std::string value;
    ForEach(node, "Property", [&](const xmlNode* child) {
        if (value.empty() && LocalPart(NameOf(child)) == localName) value = ValueOf(child);
    });
    return value;
}

OfferedOption OptionOf(const xmlNode* node) {
    OfferedOption option;
    option.name = NameOf(node);
    option.localName = LocalPart(option.name);
    option.displayName = PropertyOf(node, "DisplayName");
    ForEach(node, "ScoredProperty", [&](const xmlNode* child) {
        OfferedScore score;
        score.name = NameOf(child);
        score.localName = LocalPart(score.name);
        score.value = ValueOf(child, &score.valueType);
        ForEach(child, "ParameterRef",
                [&](const xmlNode* reference) { score.parameter = NameOf(reference); });
        option.scores.push_back(std::move(score));
    });
    return option;
}

bool IsRuledOut(const xmlNode* option) {
    std::string constrained;
    return OvPlatform::GetAttribute(option, "constrained", constrained) && LocalPart(constrained) != "None";
}

bool SayTheSame(const OfferedOption& offered, const OfferedOption& chosen) {
    if (!chosen.localName.empty() || !offered.localName.empty()) return offered.localName == chosen.localName;
    return std::ranges::all_of(chosen.scores, [&](const OfferedScore& score) {
        return std::ranges::any_of(offered.scores, [&](const OfferedScore& other) {
            return other.localName == score.localName && other.value == score.value;
        });
    });
}

template <class Read>
void Reading(const OvPlatform::QueueFolder& queue, const char* what, Read&& read) {
    try {
        read();
    } catch (const OvPlatform::StrictXmlError& error) {
        throw OvPlatform::QueueFolderError(queue.Folder(), std::string(what) + " cannot be read: line " +
                                                               std::to_string(error.Line()) + ": " +
                                                               error.what());
    }
}

void ReadFeatures(const xmlNode* parent, const std::string& outer,
                  std::map<std::string, OfferedFeature, std::less<>>& features) {
    ForEach(parent, "Feature", [&](const xmlNode* node) {
        OfferedFeature feature;
        feature.name = NameOf(node);
        feature.localName = LocalPart(feature.name);
        feature.displayName = PropertyOf(node, "DisplayName");
        feature.outer = outer;
        ForEach(node, "Option", [&](const xmlNode* option) {
            if (!IsRuledOut(option)) feature.options.push_back(OptionOf(option));
        });
        const std::string name = outer.empty() ? feature.localName : outer + "/" + feature.localName;
        features.try_emplace(name, std::move(feature));
        ReadFeatures(node, name, features);
    });
}

std::vector<std::string> Words(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.emplace_back(LocalPart(word));
    return words;
}

} // namespace

std::string_view LocalPart(std::string_view name) { return name.substr(name.find(':') + 1); }

bool AreAlike(std::string_view one, std::string_view other) {
    const auto isSign = [](char c) { return c == '-' || c == '_' || c == '.' || c == ' '; };
    auto left = one.begin();
    auto right = other.begin();
    for (;;) {
        while (left != one.end() && isSign(*left))
            ++left;
        while (right != other.end() && isSign(*right))
            ++right;
        if (left == one.end() || right == other.end()) return left == one.end() && right == other.end();
        const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
        if (lower(*left++) != lower(*right++)) return false;
    }
}

std::optional<long> OfferedOption::Number(std::string_view localScore) const {
    for (const OfferedScore& score : scores)
        if (score.localName == localScore) return ToNumber(score.value);
    return {};
}

bool OfferedOption::IsCustom() const {
    return std::ranges::any_of(scores, [](const OfferedScore& score) { return !score.parameter.empty(); });
}

const OfferedOption* OfferedFeature::Find(std::string_view localOption) const {
    const auto exact = std::ranges::find(options, localOption, &OfferedOption::localName);
    if (exact != options.end()) return &*exact;
    const auto alike = std::ranges::find_if(options, [&](const OfferedOption& option) {
        return !option.localName.empty() && AreAlike(option.localName, localOption);
    });
    return alike == options.end() ? nullptr : &*alike;
}

std::string OfferedParameter::ProblemOf(std::string_view value) const {
    const auto bounds = [&] {
        return "from " + std::to_string(min.value_or(0)) + " to " + (max ? std::to_string(*max) : "any");
    };
    const auto isWithin = [&](long number) { return (!min || number >= *min) && (!max || number <= *max); };
    if (!isInteger) {
        const auto characters = std::ranges::count_if(value, [](char c) { return (c & 0xC0) != 0x80; });
        return isWithin(static_cast<long>(characters)) ? std::string()
                                                       : "it has to have " + bounds() + " characters";
    }
    const std::optional<long> number = ToNumber(value);
    if (!number) return "it is no number";
    return isWithin(*number) ? std::string() : "the printer takes numbers " + bounds();
}

QueueOffer::QueueOffer(std::shared_ptr<const OvPlatform::QueueFolder> queue) : m_queue(std::move(queue)) {
    Reading(*m_queue, "its capabilities document", [&] { ReadCapabilities(); });
    Reading(*m_queue, "its default ticket", [&] { ReadDefaults(); });
    Reading(*m_queue, "what its device can do", [&] { ReadSettings(); });
}

void QueueOffer::ReadCapabilities() {
    const auto document = OvPlatform::ParseStrictXml(m_queue->Capabilities());
    const xmlNode* const root = xmlDocGetRootElement(document.get());
    for (const xmlNs* ns = root->nsDef; ns != nullptr; ns = ns->next) {
        const std::string uri = reinterpret_cast<const char*>(ns->href);
        if (ns->prefix != nullptr && uri != constraints)
            m_namespaces.emplace_back(reinterpret_cast<const char*>(ns->prefix), uri);
    }
    ReadFeatures(root, {}, m_features);
    ReadMargins(root);
    ForEach(root, "ParameterDef", [&](const xmlNode* node) {
        OfferedParameter parameter;
        parameter.name = NameOf(node);
        parameter.isInteger = LocalPart(PropertyOf(node, "DataType")) == "integer";
        parameter.min = ToNumber(PropertyOf(node, parameter.isInteger ? "MinValue" : "MinLength"));
        parameter.max = ToNumber(PropertyOf(node, parameter.isInteger ? "MaxValue" : "MaxLength"));
        const std::string localName(LocalPart(parameter.name));
        m_parameters.try_emplace(localName, std::move(parameter));
    });
    for (const xmlNode* child = root->children; child != nullptr; child = child->next) {
        if (!Is(child, constraints, "Constraint")) continue;
        OfferedConstraint constraint;
        for (const xmlNode* choice = child->children; choice != nullptr; choice = choice->next) {
            if (!Is(choice, constraints, "Choice")) continue;
            std::string feature;
            std::string options;
            OvPlatform::GetAttribute(choice, "feature", feature);
            OvPlatform::GetAttribute(choice, "options", options);
            constraint.choices.push_back({std::string(LocalPart(feature)), Words(options)});
        }
        m_constraints.push_back(std::move(constraint));
    }
}

void QueueOffer::ReadMargins(const xmlNode* root) {
    ForEach(root, "Property", [&](const xmlNode* size) {
        if (LocalPart(NameOf(size)) != "PageImageableSize") return;
        const auto number = [](const xmlNode* node, std::string_view name) {
            return ToNumber(PropertyOf(node, name)).value_or(0);
        };
        ForEach(size, "Property", [&](const xmlNode* area) {
            if (LocalPart(NameOf(area)) != "ImageableArea") return;
            m_margins.left = number(area, "OriginWidth");
            m_margins.top = number(area, "OriginHeight");
            m_margins.right =
                number(size, "ImageableSizeWidth") - m_margins.left - number(area, "ExtentWidth");
            m_margins.bottom =
                number(size, "ImageableSizeHeight") - m_margins.top - number(area, "ExtentHeight");
        });
    });
}

void QueueOffer::ReadDefaults() {
    const auto document = OvPlatform::ParseStrictXml(m_queue->DefaultTicket());
    const xmlNode* const root = xmlDocGetRootElement(document.get());
    ForEach(root, "Feature", [&](const xmlNode* node) {
        const auto found = m_features.find(LocalPart(NameOf(node)));
        if (found == m_features.end()) return;
        ForEach(node, "Option", [&](const xmlNode* child) {
            const OfferedOption chosen = OptionOf(child);
            for (const OfferedOption& option : found->second.options)
                if (found->second.byDefault == nullptr && SayTheSame(option, chosen))
                    found->second.byDefault = &option;
        });
    });
    ForEach(root, "ParameterInit", [&](const xmlNode* node) {
        m_defaults.try_emplace(std::string(LocalPart(NameOf(node))), ValueOf(node));
    });
}

void QueueOffer::ReadSettings() {
    const auto found = m_queue->DriverProperties().find(settingsOfDevice);
    if (found == m_queue->DriverProperties().end()) return;
    const auto* const stream = std::get_if<OvPlatform::QueueStream>(&found->second);
    if (stream == nullptr) return;
    const std::string text(stream->bytes.begin(), stream->bytes.end());
    const auto document = OvPlatform::ParseStrictXml(text);
    const xmlNode* const root = xmlDocGetRootElement(document.get());
    for (const xmlNode* child = root->children; child != nullptr; child = child->next) {
        if (child->type != XML_ELEMENT_NODE) continue;
        std::vector<std::string>& values = m_settings[NameOf(child)];
        for (const xmlNode* value = child->children; value != nullptr; value = value->next)
            if (value->type == XML_ELEMENT_NODE && OvPlatform::LocalName(value) == "Value")
                values.push_back(NameOf(value));
    }
}

const OfferedFeature* QueueOffer::Feature(std::string_view localName) const {
    const auto found = m_features.find(localName);
    return found == m_features.end() || found->second.options.empty() ? nullptr : &found->second;
}

const OfferedParameter* QueueOffer::Parameter(std::string_view localName) const {
    const auto found = m_parameters.find(localName);
    return found == m_parameters.end() ? nullptr : &found->second;
}

std::string QueueOffer::DefaultOf(std::string_view localParameter) const {
    const auto found = m_defaults.find(localParameter);
    return found == m_defaults.end() ? std::string() : found->second;
}

bool QueueOffer::HasSetting(std::string_view setting, std::string_view value) const {
    const auto found = m_settings.find(setting);
    return found != m_settings.end() && std::ranges::find(found->second, value) != found->second.end();
}

} // namespace OvPrintServer
