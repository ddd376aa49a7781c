#include "Platform/PrintTicket/TicketFixture.h"

#include <regex>
#include <sstream>

namespace TicketFixture {

const char* const usualDeclarations =
    R"(xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework" )"
    R"(xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:xsd="http://www.w3.org/2001/XMLSchema" )"
    R"(xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords" )"
    R"(xmlns:t="urn:test:printer" version="1")";

std::string Property(const std::string& name, const std::string& type, const std::string& value) {
    return "<psf:Property name=\"" + name + "\"><psf:Value xsi:type=\"xsd:" + type + "\">" + value +
           "</psf:Value></psf:Property>";
}

namespace {

std::string Prefixed(const std::string& name) {
    return name.find(':') == std::string::npos ? "psk:" + name : name;
}

std::string Definition(const std::string& name, const std::string& type, const std::string& fallback,
                       const std::string& mandatory, const std::string& bounds) {
    std::string text = "<psf:ParameterDef name=\"" + Prefixed(name) + "\">" +
                       Property("psf:DataType", "QName", "xsd:" + type) +
                       Property("psf:DefaultValue", type, fallback) +
                       Property("psf:Mandatory", "QName", "psk:" + mandatory);
    std::istringstream words(bounds);
    for (std::string key, value; words >> key >> value;)
        text += Property("psf:" + key, "integer", value);
    return text + "</psf:ParameterDef>";
}

std::string Option(const std::string& name, const std::string& inside = {},
                   const std::string& attributes = {}) {
    return "<psf:Option" + (name.empty() ? "" : " name=\"" + Prefixed(name) + "\"") + attributes + ">" +
           inside + "</psf:Option>";
}

std::string Offer(const std::string& name, const std::string& content) {
    return "<psf:Feature name=\"" + Prefixed(name) + "\">" + content + "</psf:Feature>";
}

std::string Size(int width, int height) {
    return Scored("MediaSizeWidth", width) + Scored("MediaSizeHeight", height);
}

} // namespace

std::string Ticket(const std::string& content) {
    return std::string("<psf:PrintTicket xmlns:o=\"urn:other\" ") + usualDeclarations + ">" + content +
           "</psf:PrintTicket>";
}

std::string Capabilities(const std::string& content) {
    return std::string("<psf:PrintCapabilities ") + usualDeclarations +
           " xmlns:qc=\"urn:ov-platform:queue-constraints:1\">" + content + "</psf:PrintCapabilities>";
}

std::string Feature(const std::string& name, const std::string& option, const std::string& insideOption,
                    const std::string& afterOption) {
    return Offer(name, Option(option, insideOption) + afterOption);
}

std::string Scored(const std::string& name, int value) {
    return "<psf:ScoredProperty name=\"psk:" + name + "\"><psf:Value xsi:type=\"xsd:integer\">" +
           std::to_string(value) + "</psf:Value></psf:ScoredProperty>";
}

std::string Reference(const std::string& scored, const std::string& parameter) {
    return "<psf:ScoredProperty name=\"psk:" + scored + "\"><psf:ParameterRef name=\"psk:" + parameter +
           "\"/></psf:ScoredProperty>";
}

std::string Parameter(const std::string& name, const std::string& value, const std::string& type) {
    return "<psf:ParameterInit name=\"" + Prefixed(name) + "\"><psf:Value" +
           (type.empty() ? "" : " xsi:type=\"" + type + "\"") + ">" + value +
           "</psf:Value></psf:ParameterInit>";
}

const std::string& PrinterCapabilities() {
    static const std::string document = Capabilities(
        Definition("JobCopiesAllDocuments", "integer", "1", "Unconditional", "MinValue 1 MaxValue 99") +
        Definition("PageMediaSizeMediaSizeWidth", "integer", "210000", "Conditional",
                   "MinValue 50000 MaxValue 400000 Multiple 10") +
        Definition("PageMediaSizeMediaSizeHeight", "integer", "297000", "Conditional",
                   "MinValue 50000 MaxValue 400000 Multiple 10") +
        Definition("t:JobNote", "string", "", "Optional", "MinLength 0 MaxLength 5") +
        Definition("t:JobBin", "QName", "t:Lower", "Optional", "") +
        Definition("t:PageDevmodeSnapshot", "string", "", "Optional", "MaxLength 174760") +
        Offer("PageOrientation", Option("Portrait") + Option("Landscape")) +
        Offer("PageMediaSize", Option("ISOA4", Size(210000, 297000)) + Option("ISOA5", Size(148000, 210000)) +
                                   Option("NorthAmericaLetter", Size(215900, 279400)) +
                                   Option("CustomMediaSize",
                                          Reference("MediaSizeWidth", "PageMediaSizeMediaSizeWidth") +
                                              Reference("MediaSizeHeight", "PageMediaSizeMediaSizeHeight"))) +
        Offer("PageResolution",
              Option("t:R300", Scored("ResolutionX", 300) + Scored("ResolutionY", 300)) +
                  Option("t:R600", Scored("ResolutionX", 600) + Scored("ResolutionY", 600))) +
        Offer("PageMediaType", Option("Plain") + Option("Transparency") +
                                   Option("Label", {}, " constrained=\"psk:DeviceSettings\"") +
                                   Option("Bond")) +
        Offer("DocumentCollate", Option("Collated") + Option("Uncollated")) +
        Offer("DocumentNUp",
              Option("", Scored("PagesPerSheet", 1)) + Option("", Scored("PagesPerSheet", 4)) +
                  Offer("PresentationDirection", Option("RightBottom") + Option("BottomRight"))) +
        Offer("JobDuplexAllDocumentsContiguously",
              Option("OneSided") + Option("TwoSidedShortEdge") + Option("TwoSidedLongEdge")) +
        Offer("t:JobFinish", Property("psf:SelectionType", "QName", "psk:PickMany") +
                                 Option("t:None", Property("psf:IdentityOption", "string", "True")) +
                                 Option("t:Punch") + Option("t:Staple")) +
        R"(<psf:Property name="psk:PageImageableSize">)" +
        Property("psk:ImageableSizeWidth", "integer", "210000") +
        Property("psk:ImageableSizeHeight", "integer", "297000") +
        R"(<psf:Property name="psk:ImageableArea">)" + Property("psk:OriginWidth", "integer", "4000") +
        Property("psk:OriginHeight", "integer", "5000") + Property("psk:ExtentWidth", "integer", "202000") +
        Property("psk:ExtentHeight", "integer", "287000") +
        R"(</psf:Property></psf:Property>)"
        R"(<qc:Constraint><qc:Choice feature="psk:PageMediaType" options="psk:Transparency"/>)"
        R"(<qc:Choice feature="psk:JobDuplexAllDocumentsContiguously" options="psk:TwoSidedLongEdge psk:TwoSidedShortEdge"/></qc:Constraint>)"
        R"(<qc:Constraint><qc:Choice feature="t:JobFinish" options="t:Staple"/>)"
        R"(<qc:Choice feature="psk:PageMediaSize" options="psk:ISOA5"/></qc:Constraint>)");
    return document;
}

const std::string& DefaultTicket() {
    static const std::string document =
        Ticket(Feature("PageMediaSize", "ISOA4") + Feature("PageResolution", "t:R600") +
               Feature("DocumentCollate", "Uncollated"));
    return document;
}

std::shared_ptr<const OvPlatform::QueueFolder> Queue(const std::string& capabilities,
                                                     const std::string& defaultTicket) {
    OvPlatform::QueueDescription description;
    description.printerName = L"Ticket Test";
    description.capabilities = capabilities;
    description.defaultTicket = defaultTicket;
    return std::make_shared<OvPlatform::QueueFolder>(std::move(description));
}

std::string Effective(const std::string& ticket) {
    static const std::regex pattern(R"rx(<psf:ParameterInit name="([^"]*)"><psf:Value[^>]*>([^<]*))rx"
                                    R"rx(|<psf:ParameterInit name="([^"]*)"><psf:Value[^>]*/>)rx"
                                    R"rx(|<psf:Feature name="([^"]*)">|<psf:Option( name="([^"]*)")?/?>)rx");
    const auto plain = [](std::string name) { return name.starts_with("psk:") ? name.substr(4) : name; };
    std::string text;
    bool first = true;
    for (std::sregex_iterator at(ticket.begin(), ticket.end(), pattern), end; at != end; ++at) {
        const std::smatch& match = *at;
        const std::string space = text.empty() ? "" : " ";
        if (match[1].matched) {
            text += space + plain(match[1]) + "=" + match[2].str();
        } else if (match[3].matched) {
            text += space + plain(match[3]) + "=";
        } else if (match[4].matched) {
            text += space + plain(match[4]) + "=";
            first = true;
        } else {
            text += (first ? "" : "+") + (match[5].matched ? plain(match[6]) : "-");
            first = false;
        }
    }
    return text;
}

std::string EffectiveOf(const std::string& ticket, const std::string& name) {
    std::istringstream settings(Effective(ticket));
    for (std::string setting; settings >> setting;)
        if (setting.starts_with(name + "=")) return setting.substr(name.size() + 1);
    return "(none)";
}

} // namespace TicketFixture
