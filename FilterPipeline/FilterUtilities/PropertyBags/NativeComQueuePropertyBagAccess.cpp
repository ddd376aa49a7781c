#include "PropertyBags/NativeComQueuePropertyBagAccess.h"

#include "ComSupport/ThrowHresult.h"
#include "PropertyBags/NativeComPrinterPropertyBagAccess.h"

#include <LowLevelFacilities/Strings/CPStringUtils.h>
#include <Xml/MicrosoftXmlParser.h>
#include <Xml/UtilitiesLibraryHost.h>
#include <Xml/XmlOutputUtf8StringCallback.h>

#include <algorithm>
#include <string>
#include <utility>

namespace {

constexpr auto queuePropertiesName = L"OrvelQueueProperties";
constexpr auto deviceSettingsName = L"OrvelDeviceSettings";

// Of the reports; the second is also that of operations which read no capabilities.
constexpr auto whileParsingBag = "while parsing the Queue Property Bag";
constexpr auto whileParsingOptions = "while parsing OCAP for installable options";

bool IsLower(char c) { return c >= 'a' && c <= 'z'; }
bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
char ToUpper(char c) { return IsLower(c) ? static_cast<char>(c - 'a' + 'A') : c; }
char ToLower(char c) { return IsUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }

std::string BytesOf(const CXString& text) {
    return CPStringUtils::narrowToStdString(text, static_cast<std::size_t>(text.GetLength()));
}

CXString OptionKey(const CXString& mangledName) { return L"Config:" + mangledName; }

DOMNodeType TypeOf(const XmlDomNode& node) {
    DOMNodeType type = NODE_INVALID;
    ThrowIfFailed(node.GetInterface()->get_nodeType(&type));
    return type;
}

// The text of all children: one CDATA section cannot hold the end of another.
CXString ValueOf(const XmlDomNode& element) {
    CXString value;
    for (auto child = element.GetFirstChild(); child; child = child->GetNextSibling()) {
        const DOMNodeType type = TypeOf(*child);
        if (type != NODE_COMMENT && type != NODE_PROCESSING_INSTRUCTION) value += child->GetTextValue();
    }
    return value;
}

// In as many sections as it takes: the characters that end one are told apart between two.
void AppendCDataSections(const XmlDomDocument& document, XmlDomNode& element, const CXString& text) {
    constexpr std::wstring_view sectionEnd = L"]]>";
    constexpr std::size_t atEnd = std::wstring_view::npos;
    std::wstring_view rest = text.View();
    for (std::size_t found = rest.find(sectionEnd); found != atEnd; found = rest.find(sectionEnd)) {
        const std::size_t length = found + sectionEnd.size() - 1;
        element.AppendChild(*document.CreateCDataSection(CXString(std::wstring(rest.substr(0, length)))));
        rest.remove_prefix(length);
    }
    element.AppendChild(*document.CreateCDataSection(CXString(std::wstring(rest))));
}

CPString ToXml(const MicrosoftXmlParser& parser) {
    CPString xml;
    XmlOutputUtf8StringCallback output(xml, XmlOutputCallback::DoNotEnhanceXmlLegibility);
    parser.convertToXmlStream(output, false);
    return xml;
}

void RemoveChildren(XmlDomNode& parent, const wchar_t* name) {
    for (auto child = parent.GetFirstChild(); child;) {
        auto next = child->GetNextSibling();
        if (child->IsElement() && child->GetNodeName() == name) parent.RemoveChild(*child);
        child = std::move(next);
    }
}

// White space is kept, so that the other items stay as they are.
CPString WithDeviceSettings(const CXString& queueProperties, const CPString& settings) {
    MicrosoftXmlParser parser(queuePropertiesName, true);
    parser.parse(queueProperties);
    const XmlDomDocument& document = parser.getDocument();
    const XmlDomNode::Pointer root = document.GetDocumentElement();
    // All of them: one that is left would be read in place of the new one.
    RemoveChildren(*root, deviceSettingsName);
    const XmlDomNode::Pointer element = document.CreateElement(deviceSettingsName);
    AppendCDataSections(document, *element, CXString(settings));
    root->AppendChild(*element);
    return ToXml(parser);
}

} // namespace

NativeComQueuePropertyBagAccess::NativeComQueuePropertyBagAccess(
    const CXString& printerName, const std::vector<CXString>& installableFeatures,
    IPrinterPropertyBagAccess& bag)
    : m_printerName(printerName), m_installableFeatures(installableFeatures), m_bag(bag) {}

NativeComQueuePropertyBagAccess::~NativeComQueuePropertyBagAccess() = default;

CXString NativeComQueuePropertyBagAccess::TryGetInstallableOption(IPrinterPropertyBag* bag,
                                                                  const CXString& cpssFeatureName) {
    if (bag == nullptr) return {};
    const NativeComPrinterPropertyBagAccess access(
        *bag, NativeComPrinterPropertyBagAccess::AssertionPolicyBagIsHeldElsewhere);
    CXString value;
    access.GetPrinterPropertyBagString(OptionKey(ConvertCpssToModifiedCamelCase(cpssFeatureName)), value);
    return ConvertModifiedCamelCaseToCpss(value);
}

void NativeComQueuePropertyBagAccess::GetPrinterName(CXString& out) const { out = m_printerName; }

bool NativeComQueuePropertyBagAccess::GetInstallableOptions(InstallableOptions& out) const {
    out.clear();
    bool hasAll = true;
    for (const CXString& feature : m_installableFeatures) {
        CXString value;
        m_bag.GetPrinterPropertyBagString(OptionKey(ConvertCpssToModifiedCamelCase(feature)), value);
        if (value.IsEmpty())
            hasAll = false;
        else
            out.emplace_back(feature, ConvertModifiedCamelCaseToCpss(value));
    }
    return hasAll;
}

void NativeComQueuePropertyBagAccess::SetInstallableOptions(const InstallableOptions& options) {
    std::vector<CXString> unset = m_installableFeatures;
    for (const auto& [feature, value] : options) {
        const auto found = std::ranges::find(unset, feature);
        if (found == unset.end()) continue;
        unset.erase(found);
        m_bag.SetPrinterPropertyBagString(OptionKey(ConvertCpssToModifiedCamelCase(feature)),
                                          ConvertCpssToModifiedCamelCase(value));
    }
    for (const CXString& feature : unset)
        m_bag.SetPrinterPropertyBagString(ConvertCpssToModifiedCamelCase(feature), {});
}

void NativeComQueuePropertyBagAccess::GetOrvelDeviceSettings(CPString& out) const {
    GetXmlFromCdataSection(deviceSettingsName, out);
}

void NativeComQueuePropertyBagAccess::SetOrvelDeviceSettings(const CPString& xml) {
    const OperationScope operation("NativeComQueuePropertyBagAccess::SetOrvelDeviceSettings");
    try {
        const CPString changed = WithDeviceSettings(GetQueueProperties(), xml);
        // A text that no XML can hold would take all other items with it: none could be read any more.
        MicrosoftXmlParser(queuePropertiesName, true).parse(changed);
        m_bag.SetPrinterPropertyBagString(queuePropertiesName, CXString(changed));
    } catch (...) {
        UtilitiesLibraryHost::CatchPossibleComErrorExceptionAndAssertUnreachable(whileParsingOptions);
    }
}

void NativeComQueuePropertyBagAccess::GetOrvelQueuePrePostConfiguration(CPString& out) const {
    GetXmlFromCdataSection(L"OrvelQueuePrePostConfiguration", out);
}

void NativeComQueuePropertyBagAccess::GetRawIpOrHostName(CXString& out) { GetText(L"IpOrHostName", out); }

void NativeComQueuePropertyBagAccess::GetFullyQualifiedDomainName(CXString& out) {
    GetText(L"FullyQualifiedDomainName", out);
}

void NativeComQueuePropertyBagAccess::GetDeviceSerialNumber(CXString& out) {
    GetText(L"DeviceSerialNumber", out);
}

void NativeComQueuePropertyBagAccess::GetAutoConfigRegData(CXString& out) {
    GetText(L"DeviceSerialNumber", out);
}

void NativeComQueuePropertyBagAccess::GetJobAccountingRequiredFromUiValue(CXString& out) {
    GetText(L"ObdsPrintTimePromptValue", out);
}

void NativeComQueuePropertyBagAccess::GetJobAccountingRequiredFromObdsValue(CXString& out) {
    GetText(L"ObdsPrintTimePromptResponse", out);
}

void NativeComQueuePropertyBagAccess::GetPrintServerResidentTtfFonts(CXString& out) const {
    GetText(L"PrintServerResidentTtfFonts", out);
}

void NativeComQueuePropertyBagAccess::SetRawIpOrHostNameAndDoSimpleCleanupOfStaleData(const CXString&) {}
void NativeComQueuePropertyBagAccess::SetRawIpOrHostNameManuallyOverridden(bool) {}
void NativeComQueuePropertyBagAccess::SetFullyQualifiedDomainName(const CXString&) {}
void NativeComQueuePropertyBagAccess::SetDeviceSerialNumber(const CXString&) {}
void NativeComQueuePropertyBagAccess::SetSnmpReadCommunityName(const CXString&) {}
void NativeComQueuePropertyBagAccess::SetSnmpReadCommunityNameManuallyOverridden(bool) {}
void NativeComQueuePropertyBagAccess::SetSnmpWriteCommunityName(const CXString&) {}
void NativeComQueuePropertyBagAccess::SetJobAccountingRequiredFromUiValue(const CXString&) {}
void NativeComQueuePropertyBagAccess::SetobAccountingRequiredFromObdsValue(const CXString&) {}
void NativeComQueuePropertyBagAccess::SetPrintServerResidentTtfFonts(const CXString&) {}

void NativeComQueuePropertyBagAccess::GetXmlFromCdataSection(const wchar_t* name, CPString& out) const {
    const OperationScope operation("NativeComQueuePropertyBagAccess::GetXmlFromCdataSection");
    out.clear();
    try {
        out = CPString(GetQueueProperty(name));
    } catch (...) {
        UtilitiesLibraryHost::CatchPossibleComErrorExceptionAndAssertUnreachable(whileParsingBag);
    }
}

void NativeComQueuePropertyBagAccess::GetText(const wchar_t* name, CXString& out) const {
    const OperationScope operation("NativeComQueuePropertyBagAccess::GetText");
    out.Empty();
    try {
        out = GetQueueProperty(name);
    } catch (...) {
        UtilitiesLibraryHost::CatchPossibleComErrorExceptionAndAssertUnreachable(whileParsingOptions);
    }
}

CXString NativeComQueuePropertyBagAccess::GetQueueProperties() const {
    CXString xml;
    m_bag.GetPrinterPropertyBagString(queuePropertiesName, xml);
    return xml.Trim();
}

CXString NativeComQueuePropertyBagAccess::GetQueueProperty(const wchar_t* name) const {
    const CXString xml = GetQueueProperties();
    if (xml.IsEmpty()) return {};
    MicrosoftXmlParser parser(queuePropertiesName, false);
    parser.parse(xml);
    const XmlDomNode::Pointer root = parser.getDocument().GetDocumentElement();
    const XmlDomNode::Pointer element = root ? root->FindNamedChildElementNode(name) : nullptr;
    return element ? ValueOf(*element) : CXString();
}

CXString NativeComQueuePropertyBagAccess::ConvertCpssToModifiedCamelCase(const CXString& name) {
    CXString lower = name;
    lower.MakeLower();
    lower.Replace(L"_", L"_UNS_");
    lower.Replace(L".", L"_DOT_");
    const std::string bytes = BytesOf(lower);
    std::string mangled;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char next = i + 1 < bytes.size() ? bytes[i + 1] : '\0';
        if (bytes[i] != '-')
            mangled += bytes[i];
        else if (IsLower(next))
            mangled += ToUpper(bytes[++i]);
        else
            mangled += '_';
    }
    if (!mangled.empty()) mangled.front() = ToUpper(mangled.front());
    return CXString(CPString(std::move(mangled)));
}

CXString NativeComQueuePropertyBagAccess::ConvertModifiedCamelCaseToCpss(const CXString& name) {
    CXString marked = name;
    marked.Replace(L"_UNS_", L"@UNS@");
    marked.Replace(L"_DOT_", L"@DOT@");
    marked.Replace(L"_", L"-");
    marked.Replace(L"@UNS@", L"_");
    marked.Replace(L"@DOT@", L".");
    std::string bytes = BytesOf(marked);
    if (!bytes.empty()) bytes.front() = ToLower(bytes.front());
    std::string cpss;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (IsUpper(bytes[i]) && (i == 0 || bytes[i - 1] != '-')) cpss += '-';
        cpss += ToLower(bytes[i]);
    }
    return CXString(CPString(std::move(cpss)));
}
