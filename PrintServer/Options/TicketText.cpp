#include "Options/TicketText.h"

#include <Xml/XmlEscape.h>

namespace OvPrintServer {

namespace {

constexpr std::string_view frameworkUri =
    "http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework";
constexpr std::string_view schemaUri = "http://www.w3.org/2001/XMLSchema";
constexpr std::string_view instanceUri = "http://www.w3.org/2001/XMLSchema-instance";

std::string Escaped(std::string_view text) {
    std::string escaped;
    OvPlatform::AppendXml(escaped, text, OvPlatform::XmlPlace::Attribute);
    return escaped;
}

std::string Value(std::string_view type, std::string_view text) {
    return "<psf:Value xsi:type=\"" + Escaped(type) + "\">" + Escaped(text) + "</psf:Value>";
}

std::string Option(const OfferedOption& option) {
    std::string xml = "<psf:Option";
    if (!option.name.empty()) xml += " name=\"" + Escaped(option.name) + "\"";
    xml += ">";
    for (const OfferedScore& score : option.scores)
        xml += "<psf:ScoredProperty name=\"" + Escaped(score.name) + "\">" +
               (score.parameter.empty() ? Value(score.valueType, score.value)
                                        : "<psf:ParameterRef name=\"" + Escaped(score.parameter) + "\"/>") +
               "</psf:ScoredProperty>";
    return xml + "</psf:Option>";
}

} // namespace

std::string TicketText::Feature(const std::string& path) const {
    const OfferedFeature* const feature = m_offer.Feature(path);
    if (feature == nullptr) return {};
    std::string xml = "<psf:Feature name=\"" + Escaped(feature->name) + "\">";
    if (const auto chosen = m_options.find(path); chosen != m_options.end()) xml += Option(*chosen->second);
    const std::string inner = path + "/";
    for (auto at = m_options.lower_bound(inner); at != m_options.end() && at->first.starts_with(inner); ++at)
        xml += Feature(at->first);
    return xml + "</psf:Feature>";
}

std::string TicketText::Xml() const {
    std::string xml =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<psf:PrintTicket version=\"1\" xmlns:psf=\"" +
        std::string(frameworkUri) + "\" xmlns:xsi=\"" + std::string(instanceUri) + "\" xmlns:xsd=\"" +
        std::string(schemaUri) + "\"";
    for (const auto& [prefix, uri] : m_offer.Namespaces())
        if (prefix != "psf" && prefix != "xsi" && prefix != "xsd")
            xml += " xmlns:" + prefix + "=\"" + Escaped(uri) + "\"";
    xml += ">";
    std::string last;
    for (const auto& [path, option] : m_options) {
        const std::string outermost = path.substr(0, path.find('/'));
        if (outermost != last) xml += Feature(outermost);
        last = outermost;
    }
    for (const auto& [name, value] : m_parameters)
        if (const OfferedParameter* const parameter = m_offer.Parameter(name))
            xml += "<psf:ParameterInit name=\"" + Escaped(parameter->name) + "\">" +
                   Value(parameter->isInteger ? "xsd:integer" : "xsd:string", value) + "</psf:ParameterInit>";
    return xml + "</psf:PrintTicket>\n";
}

} // namespace OvPrintServer
