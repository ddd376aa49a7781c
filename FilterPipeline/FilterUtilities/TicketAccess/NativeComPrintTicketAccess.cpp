#include "TicketAccess/NativeComPrintTicketAccess.h"

#include "ComSupport/FailureBarrier.h"
#include "ComSupport/ThrowHresult.h"
#include "DataModel/PrintSchemaKeywordLiterals.h"
#include "PrintSchema/Bstr.h"
#include "PrintSchema/PrintSchemaKeywords.h"
#include "PrintSchema/TreeChange.h"
#include "TicketAccess/PrintTicketFeatureTable.h"

#include <LowLevelFacilities/Failures/CPComException.h>
#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <LowLevelFacilities/Failures/ThrowFailure.h>

#include <algorithm>
#include <iterator>
#include <string_view>

using namespace PrintSchemaText;

namespace {

using This = NativeComPrintTicketAccess;
using Row = PrintTicketFeatureInformation;
namespace Keywords = PrintSchema::Keywords;

struct PrefixUri {
    std::wstring_view prefix;
    const wchar_t* uri;
};
// Deliberate: what a prefix stands for does not depend on the document, and some prefixes that documents use
// are missing.
constexpr PrefixUri prefixUris[] = {
    {Keywords::USER_KEYWORDS_NS_PREFIX, Keywords::USER_KEYWORDS_URI},
    {L"ovl:", Keywords::USER_KEYWORDS_URI},
    {Keywords::BASE_DRIVER_DEFAULT_USER_KEYWORDS_NS_PREFIX, Keywords::USER_KEYWORDS_URI},
    {Keywords::SCHEMA_INST_NS_PREFIX, Keywords::SCHEMA_INST_URI},
    {Keywords::SCHEMA_DEF_NS_PREFIX, Keywords::SCHEMA_DEF_URI},
    {Keywords::KEYWORDS_NS_PREFIX, Keywords::KEYWORDS_URI},
    {Keywords::KEYWORDSV11_NS_PREFIX, Keywords::KEYWORDSV11_URI},
    {Keywords::FRAMEWORK_NS_PREFIX, Keywords::FRAMEWORK_URI},
    {Keywords::KEYWORDSV12_NS_PREFIX, Keywords::KEYWORDSV12_URI},
    {Keywords::FRAMEWORK2_NS_PREFIX, Keywords::FRAMEWORK_URI2},
};

struct NamespaceUri {
    This::PrintTicketNamespace ns;
    const wchar_t* uri;
};
constexpr NamespaceUri namespaceUris[] = {
    {This::KeywordsNamespace, Keywords::KEYWORDS_URI},
    {This::UserKeywordsNamespace, Keywords::USER_KEYWORDS_URI},
    {This::XsiNamespace, Keywords::SCHEMA_INST_URI},
    {This::XsdNamespace, Keywords::SCHEMA_DEF_URI},
    {This::FrameworkNamespace, Keywords::FRAMEWORK_URI},
    {This::KeywordsV11Namespace, Keywords::KEYWORDSV11_URI},
};

struct ConstraintName {
    std::wstring_view name; // a constant, with its end
    This::PrintSchemaConstrainedSettingNativeEnum constrained;
};
constexpr ConstraintName constraintNames[] = {
    {Keywords::constrained::None, This::ConstrainedNone},
    {Keywords::constrained::PrintTicketSettings, This::ConstrainedPrintTicketSettings},
    {Keywords::constrained::AdminSettings, This::ConstrainedAdminSettings},
    {Keywords::constrained::DeviceSettings, This::ConstrainedDeviceSettings},
};

// Features whose option always has a public name.
constexpr const wchar_t* publicOptionFeatures[] = {
    Keywords::PageResolution::FEATURE,
    Keywords::PageOutputColor::FEATURE,
    Keywords::JobDuplexAllDocumentsContiguously::FEATURE,
};

/// A failure of a document is reported, and leaves what the operation has reached so far.
template <typename Operation>
void WithoutFailures(Operation&& operation) {
    try {
        operation();
    } catch (const CPComException&) {
        ReportCaughtException();
    }
}

CXString ToCXString(const CComBSTR& text) { return CXString(text.m_str, static_cast<int>(text.Length())); }

CPString ToUtf8(const CComBSTR& text) {
    return CPString(CPStringUtils::narrowToStdString(text.m_str, text.Length()));
}

/// A failure is reported, and the text empty.
CPString XmlOf(const PrintSchemaXmlDocument& document) {
    CComBSTR xml;
    WithoutFailures([&] { ThrowIfFailed(document.get_xml(&xml)); });
    return ToUtf8(xml);
}

CComPtr<IXMLDOMNode> FirstChild(IXMLDOMNode* node) {
    CComPtr<IXMLDOMNode> child;
    ThrowIfFailed(node->get_firstChild(&child));
    return child;
}

CComPtr<IXMLDOMNode> NextSibling(IXMLDOMNode* node) {
    CComPtr<IXMLDOMNode> sibling;
    ThrowIfFailed(node->get_nextSibling(&sibling));
    return sibling;
}

/// Empty for nodes that have no name.
CComBSTR BaseName(IXMLDOMNode* node) {
    CComBSTR name;
    ThrowIfFailed(node->get_baseName(&name));
    return name;
}

bool HasBaseName(IXMLDOMNode* node, const wchar_t* name) { return View(BaseName(node)) == name; }

CComPtr<IXMLDOMNode> FindChild(IXMLDOMNode* parent, const wchar_t* baseName) {
    for (auto child = FirstChild(parent); child; child = NextSibling(child))
        if (HasBaseName(child, baseName)) return child;
    return nullptr;
}

Dimension Microns(const Number& value) {
    Dimension dimension;
    dimension.SetValue(value, Dimension::Micron);
    return dimension;
}

bool HasPublicOption(const CXString& feature) {
    return std::any_of(std::begin(publicOptionFeatures), std::end(publicOptionFeatures),
                       [&](const wchar_t* name) { return feature == name; });
}

/// What has no namespace of its own is written as a private name.
std::wstring_view WrittenUri(This::PrintTicketNamespace ns) {
    const auto* const found = std::find_if(std::begin(namespaceUris), std::end(namespaceUris),
                                           [ns](const NamespaceUri& row) { return row.ns == ns; });
    return found == std::end(namespaceUris) ? PrintSchema::USER_KEYWORDS_URI : found->uri;
}

/// The lengths of a size, unlike its offsets, are never 0.
int LeastOf(const CXString& property) {
    using namespace PrintSchema::PageMediaSize;
    const std::wstring_view lengths[] = {MEDIASIZEWIDTH_PROP, MEDIASIZEHEIGHT_PROP, MEDIASIZE_PSWIDTH_PROP,
                                         MEDIASIZE_PSHEIGHT_PROP};
    return std::find(std::begin(lengths), std::end(lengths), property.View()) == std::end(lengths) ? 0 : 1;
}

int WholeMicrons(const Dimension& dimension) {
    return dimension.GetValue(Dimension::Micron).GetNearestIntValue();
}

} // namespace

// ---- Construction

This::NativeComPrintTicketAccess(PrintTicketXmlDocument& ticket, PrintCapabilitiesXmlDocument& capabilities)
    : m_ticket(&ticket), m_capabilities(&capabilities) {
    Initialization();
}

This::NativeComPrintTicketAccess(const CXString& ticketXml, const CXString& capabilitiesXml)
    : m_ownedTicket(std::make_unique<PrintTicketXmlDocument>(ticketXml)),
      m_ownedCapabilities(std::make_unique<PrintCapabilitiesXmlDocument>(capabilitiesXml)),
      m_ticket(m_ownedTicket.get()), m_capabilities(m_ownedCapabilities.get()) {
    Initialization();
}

This::~NativeComPrintTicketAccess() = default;

void This::Initialization() {
    const OperationScope operation("NativeComPrintTicketAccess::Initialization");
    for (const PrintTicketFeatureTable::Row& row : PrintTicketFeatureTable::rows)
        m_features.push_back({row.name, row.element, row.ns, row.check});
    m_isInCapabilities.resize(m_features.size());
    m_ticketPrefixes = ReadPrefixes(*m_ticket);
    m_capabilitiesPrefixes = ReadPrefixes(*m_capabilities);
}

This::Prefixes This::ReadPrefixes(const PrintSchemaXmlDocument& document) {
    const std::pair<PrintTicketNamespace, CComBSTR> known[] = {
        {KeywordsNamespace, document.GetKeywordsNsPrefix()},
        {UserKeywordsNamespace, document.GetUserKeywordsNsPrefix()},
        {XsiNamespace, Make(Keywords::SCHEMA_INST_NS_PREFIX)},
        {XsdNamespace, Make(Keywords::SCHEMA_DEF_NS_PREFIX)},
        {FrameworkNamespace, document.GetFrameworkNsPrefix()},
        {KeywordsV11Namespace, document.GetKeywordsV11NsPrefix()},
    };
    Prefixes prefixes;
    const auto add = [&prefixes](const CXString& prefix, PrintTicketNamespace ns) {
        if (prefixes.Find(prefix.View()) == nullptr)
            prefixes.ofNames.push_back({prefix, ns, GetNamespaceURIFromPrefixWithColon(prefix)});
    };
    for (const auto& [ns, prefix] : known) {
        // An empty prefix would fit every name.
        if (prefix.Length() == 0) continue;
        prefixes.prefixes.emplace(ns, Copy(prefix));
        add(ToCXString(prefix), ns);
    }
    // What is written may get this prefix where the other one is somebody else's.
    add(PrintSchema::USER_KEYWORDS_NS_PREFIX, UserKeywordsNamespace);
    std::sort(prefixes.ofNames.begin(), prefixes.ofNames.end(),
              [](const NamePrefix& left, const NamePrefix& right) { return left.prefix < right.prefix; });
    return prefixes;
}

const PrintSchemaXmlDocument& This::Document(bool ofCapabilities) const {
    if (ofCapabilities) return *m_capabilities;
    return *m_ticket;
}

// ---- Names and prefixes

const wchar_t* This::GetNamespaceURIFromPrefixWithColon(const CXString& prefix) {
    const auto* const found = std::find_if(std::begin(prefixUris), std::end(prefixUris),
                                           [&](const PrefixUri& row) { return row.prefix == prefix.View(); });
    return found == std::end(prefixUris) ? L"" : found->uri;
}

const This::NamePrefix* This::FindPrefixOf(std::wstring_view name, bool ofCapabilities) const {
    const std::vector<NamePrefix>& prefixes = PrefixesOf(ofCapabilities).ofNames;
    const auto found = std::ranges::find_if(
        prefixes, [=](const NamePrefix& row) { return name.starts_with(row.prefix.View()); });
    return found == prefixes.end() ? nullptr : &*found;
}

std::wstring_view This::LocalOf(std::wstring_view name, bool ofCapabilities) const {
    const NamePrefix* const prefix = FindPrefixOf(name, ofCapabilities);
    return prefix == nullptr ? name : name.substr(prefix->prefix.View().size());
}

CXString This::GetValueWithoutNamespace(std::wstring_view value, bool ofCapabilities,
                                        PrintTicketNamespace& ns, CXString& uri) const {
    const NamePrefix* const prefix = FindPrefixOf(value, ofCapabilities);
    ns = prefix == nullptr ? NoNamespace : prefix->ns;
    if (prefix != nullptr) {
        uri = prefix->uri;
        value.remove_prefix(prefix->prefix.View().size());
    }
    return CXString(value.data(), static_cast<int>(value.size()));
}

const CComBSTR& This::GetNamespaceComString(PrintTicketNamespace ns, bool forCapabilities) const {
    static const CComBSTR none;
    const auto& prefixes = PrefixesOf(forCapabilities).prefixes;
    const auto found = prefixes.find(ns);
    return found == prefixes.end() ? none : found->second;
}

This::PrintTicketNamespace This::GetNamespaceEnum(const CXString& uriOrPrefix) const {
    if (const NamePrefix* const prefix = m_ticketPrefixes.Find(uriOrPrefix.View())) return prefix->ns;
    const auto* const row = std::find_if(std::begin(namespaceUris), std::end(namespaceUris),
                                         [&](const NamespaceUri& each) { return uriOrPrefix == each.uri; });
    return row == std::end(namespaceUris) ? NoNamespace : row->ns;
}

CComBSTR This::NameOf(IXMLDOMNode* node) const {
    CComBSTR name;
    m_ticket->GetAttributeValue(node, PrintSchema::NAME_ATTRIBUTE_NAME, &name); // a node of either document
    return name;
}

CXString This::TryToGetNameAttributeFromNode(IXMLDOMNode* node, bool ofCapabilities, PrintTicketNamespace& ns,
                                             CXString& uri) const {
    ns = NoNamespace;
    const CComBSTR name = NameOf(node);
    return name.m_str == nullptr ? CXString() : GetValueWithoutNamespace(View(name), ofCapabilities, ns, uri);
}

This::PrintSchemaConstrainedSettingNativeEnum
This::TryToGetConstrainedAttributeFromNode(IXMLDOMNode* node) const {
    CComBSTR text;
    if (m_capabilities->GetAttributeValue(node, PrintSchema::CONSTRAINED_ATTRIBUTE_NAME, &text) != S_OK)
        return ConstrainedNone;
    const std::wstring_view local = LocalOf(View(text), true);
    const auto* found = std::ranges::find(constraintNames, local, &ConstraintName::name);
    if (found == std::end(constraintNames)) {
        const CXString name(local.data(), static_cast<int>(local.size()));
        found = std::ranges::find_if(constraintNames, [&](const ConstraintName& row) {
            return name.CompareNoCase(row.name.data()) == 0;
        });
    }
    return found == std::end(constraintNames) ? ConstrainedNone : found->constrained;
}

CXString This::GetNodeValue(IXMLDOMNode* node) {
    const OperationScope operation("NativeComPrintTicketAccess::GetNodeValue");
    if (node == nullptr) return {};
    CComVariant value;
    ThrowIfFailed(node->get_nodeTypedValue(&value));
    if (value.vt != VT_BSTR) {
        if (value.vt == VT_NULL || value.vt == VT_EMPTY) return {};
        ThrowIfFailed(value.ChangeType(VT_BSTR));
    }
    return CXString(value.bstrVal, static_cast<int>(SysStringLen(value.bstrVal)));
}

// ---- Finding a feature

const PrintTicketFeatureInformation* This::GetFeatureInformation(const CXString& feature) const {
    const auto found = std::find_if(m_features.begin(), m_features.end(),
                                    [&](const Row& row) { return row.name == feature; });
    return found == m_features.end() ? nullptr : &*found;
}

const PrintTicketFeatureInformation* This::GetWritableFeature(const CXString& feature) const {
    const Row* const row = GetFeatureInformation(feature);
    return row == nullptr || GetNamespaceComString(row->ns, false).Length() == 0 ? nullptr : row;
}

DocumentQuery This::GetPrintTicketQueryForFeature(const CXString& feature, bool forCapabilities) const {
    DocumentQuery query(Document(forCapabilities));
    const Row* const row = GetFeatureInformation(feature);
    if (row == nullptr) return query;
    const CComBSTR& prefix = GetNamespaceComString(row->ns, forCapabilities);
    if (prefix.Length() == 0) return query;
    if (row->element == Row::Feature) query.AddFeature(prefix, feature);
    if (row->element == Row::Parameter) query.AddParameterDef(prefix, feature);
    return query;
}

CComPtr<IXMLDOMNode> This::FindFeature(const CXString& feature, bool inCapabilities) const {
    const OperationScope operation("NativeComPrintTicketAccess::FindFeature");
    const DocumentQuery query = GetPrintTicketQueryForFeature(feature, inCapabilities);
    if (query.Text().Length() == 0) return nullptr;
    return query.FindFirst();
}

// ---- The capabilities

bool This::IsSupportedPrintTicketFeature(const CXString& feature) const {
    const OperationScope operation("NativeComPrintTicketAccess::IsSupportedPrintTicketFeature");
    const Row* const row = GetFeatureInformation(feature);
    if (row == nullptr) return false;
    bool isSupported = false;
    WithoutFailures([&] {
        // The passcode must stand in the ticket, too: that answer changes with the ticket.
        if (row->name == PrintSchema::JobPasscode::FEATURE && !FindFeature(feature, false)) return;
        std::optional<bool>& known = m_isInCapabilities[static_cast<std::size_t>(row - m_features.data())];
        if (!known) known = IsInCapabilities(*row);
        isSupported = *known;
    });
    return isSupported;
}

bool This::IsInCapabilities(const PrintTicketFeatureInformation& row) const {
    if (row.check == Row::SecurePrintDefinition) return IsSecurePrintSupported();
    if (row.check == Row::Range && row.name == PrintSchema::JobCopiesAllDocuments::PARAMETERNAME)
        return GetJobCopiesMaximumValue() >= 1;
    // A ticket that cannot spell the feature cannot ask for it.
    if (row.ns == KeywordsV11Namespace && GetNamespaceComString(row.ns, false).Length() == 0) return false;
    if (!FindFeature(row.name, true)) return false;
    return !(row.name == PrintSchema::JobPasscode::FEATURE) || IsPasscodeSelectable();
}

bool This::IsPasscodeSelectable() const {
    const std::vector<CapabilitiesOption> options =
        ReadCapabilitiesOptions(PrintSchema::JobPasscode::FEATURE, OptionExtent::Name);
    return std::none_of(options.begin(), options.end(), [](const CapabilitiesOption& option) {
        return option.name == PrintSchema::JobPasscode::On && option.constrained == ConstrainedDeviceSettings;
    });
}

bool This::IsSecurePrintSupported() const {
    const OperationScope operation("NativeComPrintTicketAccess::IsSecurePrintSupported");
    const CComPtr<IXMLDOMNode> node = FindFeature(PrintSchema::JobSimpleSecurePrint::PARAMETERNAME, true);
    if (!node) return false;
    VARIANT_BOOL hasChildren = VARIANT_FALSE;
    ThrowIfFailed(node->hasChildNodes(&hasChildren));
    return hasChildren == VARIANT_TRUE;
}

void This::GetFeatureDisplayName(const CXString& feature, CXString& out) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetFeatureDisplayName");
    out.Empty();
    WithoutFailures([&] {
        DocumentQuery query = GetPrintTicketQueryForFeature(feature, true);
        if (query.Text().Length() == 0) return;
        // Its own name, not that of an option.
        query.AddChildProperty(GetNamespaceComString(KeywordsNamespace, true),
                               PrintSchema::DISPLAYNAME_VALUE_NAME);
        CComBSTR name;
        m_capabilities->QueryNodeValue(query, &name);
        out = ToCXString(name);
    });
}

void This::GetRangeCapability(const CXString& feature, std::pair<int, int>& minMax) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetRangeCapability");
    WithoutFailures([&] {
        if (feature == PrintSchema::JobCopiesAllDocuments::PARAMETERNAME)
            minMax = {1, GetJobCopiesMaximumValue()};
        else if (feature == PrintSchema::JobSimpleSecurePrint::PARAMETERNAME)
            GetJobSimpleSecurePrintAllowableRange(minMax.first, minMax.second);
        else if (feature == PrintSchema::JobPasscodeString::PARAMETERNAME)
            GetJobPasscodeStringAllowableRange(minMax.first, minMax.second);
    });
}

int This::GetJobCopiesMaximumValue() const {
    DocumentQuery query =
        GetPrintTicketQueryForFeature(PrintSchema::JobCopiesAllDocuments::PARAMETERNAME, true);
    int maximum = 0;
    if (query.Text().Length() == 0) return maximum;
    query.AddProperty(GetNamespaceComString(FrameworkNamespace, true), PrintSchema::MAX_VALUE_NAME);
    m_capabilities->QueryNodeValue(query, &maximum);
    return maximum;
}

void This::GetJobSimpleSecurePrintAllowableRange(int& min, int& max) const {
    GetAllowableLengths(PrintSchema::JobSimpleSecurePrint::PARAMETERNAME, min, max);
}

void This::GetJobPasscodeStringAllowableRange(int& min, int& max) const {
    GetAllowableLengths(PrintSchema::JobPasscodeString::PARAMETERNAME, min, max);
}

void This::GetAllowableLengths(const CXString& parameter, int& min, int& max) const {
    const auto read = [&](const wchar_t* property, int& value) {
        DocumentQuery query = GetPrintTicketQueryForFeature(parameter, true);
        if (query.Text().Length() == 0) return false;
        query.AddProperty(GetNamespaceComString(FrameworkNamespace, true), property);
        return m_capabilities->QueryNodeValue(query, &value) == S_OK;
    };
    int newMin = 0;
    int newMax = 0;
    if (!read(Keywords::MIN_LENGTH_NAME, newMin) || !read(Keywords::MAX_LENGTH_NAME, newMax)) return;
    min = newMin;
    max = newMax;
}

std::vector<This::CapabilitiesOption> This::ReadCapabilitiesOptions(const CXString& feature,
                                                                    OptionExtent extent) const {
    std::vector<CapabilitiesOption> options;
    const CComPtr<IXMLDOMNode> node = FindFeature(feature, true);
    if (!node) return options;
    for (auto child = FirstChild(node); child; child = NextSibling(child))
        if (HasBaseName(child, PrintSchema::OPTION_ELEMENT_NAME))
            options.push_back(ReadCapabilitiesOption(child, extent));
    return options;
}

This::CapabilitiesOption This::ReadCapabilitiesOption(IXMLDOMNode* node, OptionExtent extent) const {
    CapabilitiesOption option;
    option.name = TryToGetNameAttributeFromNode(node, true, option.ns, option.namespaceUri);
    option.constrained = TryToGetConstrainedAttributeFromNode(node);
    const auto isComplete = [&] {
        return !option.name.IsEmpty() && !(extent != OptionExtent::Name && option.displayName.IsEmpty()) &&
               !(extent == OptionExtent::Size && (option.width.IsEmpty() || option.height.IsEmpty()));
    };
    for (auto child = FirstChild(node); child && !isComplete(); child = NextSibling(child)) {
        const CComBSTR element = BaseName(child);
        const bool isScored = View(element) == PrintSchema::SCORED_PROP_ELEMENT_NAME;
        if (!isScored && View(element) != PrintSchema::PROPERTY_ELEMENT_NAME) continue;
        const CComBSTR name = NameOf(child);
        const std::wstring_view property = LocalOf(View(name), true);
        if (!isScored) {
            if (property == PrintSchema::DISPLAYNAME_VALUE_NAME) option.displayName = GetNodeValue(child);
            continue;
        }
        const CXString value = GetNodeValue(child);
        if (option.name.IsEmpty())
            option.name = GetValueWithoutNamespace(value.View(), true, option.ns, option.namespaceUri);
        if (property == PrintSchema::PageMediaSize::MEDIASIZEWIDTH_PROP) option.width = value;
        if (property == PrintSchema::PageMediaSize::MEDIASIZEHEIGHT_PROP) option.height = value;
    }
    return option;
}

void This::GetCapabilitiesOptionFeature(const CXString& feature, std::vector<OptionCapability>& out) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetCapabilitiesOptionFeature");
    out.clear();
    if (const auto known = m_offered.find(feature); known != m_offered.end()) {
        out = known->second;
        return;
    }
    WithoutFailures([&] {
        std::vector<OptionCapability> offered;
        for (CapabilitiesOption& each : ReadCapabilitiesOptions(feature, OptionExtent::DisplayName))
            offered.emplace_back(std::move(each.name), std::move(each.displayName), each.ns,
                                 std::move(each.namespaceUri), each.constrained);
        out = m_offered.emplace(feature, std::move(offered)).first->second;
    });
}

std::vector<This::MediaSizeCapability> This::ReadMediaSizes(const CXString& feature) const {
    std::vector<MediaSizeCapability> sizes;
    for (const CapabilitiesOption& each : ReadCapabilitiesOptions(feature, OptionExtent::Size)) {
        // A text that is no number is a size that is missing.
        sizes.emplace_back(
            each.name, each.displayName, each.ns, each.namespaceUri, each.constrained,
            std::pair(Microns(Number(each.width, false)), Microns(Number(each.height, false))));
    }
    return sizes;
}

void This::GetCapabilitiesMediaSizeFeature(const CXString& feature,
                                           std::vector<MediaSizeCapability>& out) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetCapabilitiesMediaSizeFeature");
    out.clear();
    WithoutFailures([&] { out = ReadMediaSizes(feature); });
}

// ---- The ticket

void This::GetCurrentValueOptionFeature(const CXString& feature, CXString& value) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetCurrentValueOptionFeature");
    value.Empty();
    const Row* const row = GetFeatureInformation(feature);
    if (row == nullptr) return;
    const CComBSTR& prefix = GetNamespaceComString(row->ns, false);
    if (row->name == PrintSchema::JobPasscode::FEATURE &&
        (prefix.Length() == 0 || GetNamespaceComString(row->ns, true).Length() == 0)) {
        value = PrintSchema::JobPasscode::Off;
        return;
    }
    if (prefix.Length() == 0) return;
    WithoutFailures([&] {
        CComBSTR option;
        if (m_ticket->GetFeatureOption(prefix, feature, &option, nullptr) != S_OK) return;
        value = option.Length() != 0 ? ToCXString(option) : ReadValueOfNamelessOption(feature);
    });
}

CXString This::ReadValueOfNamelessOption(const CXString& feature) const {
    const CComPtr<IXMLDOMNode> node = FindFeature(feature, false);
    if (!node) return {};
    const CComPtr<IXMLDOMNode> option = FindChild(node, PrintSchema::OPTION_ELEMENT_NAME);
    if (!option) return {};
    for (auto child = FirstChild(option); child; child = NextSibling(child)) {
        if (!HasBaseName(child, PrintSchema::SCORED_PROP_ELEMENT_NAME)) continue;
        PrintTicketNamespace ns = NoNamespace;
        CXString uri;
        CXString value = GetValueWithoutNamespace(GetNodeValue(child).View(), false, ns, uri);
        if (!value.IsEmpty()) return value;
    }
    return {};
}

void This::GetCurrentValueMediaSizeFeature(const CXString& feature, CXString& option, Dimension& width,
                                           Dimension& height) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetCurrentValueMediaSizeFeature");
    option.Empty();
    width = height = Microns(0);
    const Row* const row = GetFeatureInformation(feature);
    if (row == nullptr) return;
    HRESULT found = S_FALSE;
    WithoutFailures([&] {
        const CComBSTR& prefix = GetNamespaceComString(row->ns, false);
        CComBSTR name;
        if (prefix.Length() != 0) found = m_ticket->GetFeatureOption(prefix, feature, &name, nullptr);
        option = ToCXString(name);
    });
    if (found != S_OK) return;
    const auto read = [&](const wchar_t* property) {
        int size = 0;
        const HRESULT hr =
            m_ticket->GetScoredPropertyValue(feature, row->ns == KeywordsNamespace, property, &size);
        ThrowIfFailed(hr);
        return Microns(size);
    };
    const Dimension newWidth = read(PrintSchema::PageMediaSize::MEDIASIZEWIDTH_PROP);
    height = read(PrintSchema::PageMediaSize::MEDIASIZEHEIGHT_PROP);
    width = newWidth;
}

CComPtr<IXMLDOMNode> This::FindParameterValue(const CXString& feature) const {
    CComPtr<IXMLDOMNode> node;
    const Row* const row = GetFeatureInformation(feature);
    if (row == nullptr) return node;
    const CComBSTR& prefix = GetNamespaceComString(row->ns, false);
    if (prefix.Length() != 0) m_ticket->GetParameterInitValueNodeIfExists(prefix, feature, &node);
    return node;
}

int This::GetCurrentValueIntegerFeature(const CXString& feature) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetCurrentValueIntegerFeature");
    int value = 0;
    WithoutFailures([&] { value = GetNodeValue(FindParameterValue(feature)).GetAsInt(); });
    return value;
}

CXString This::ReadParameterText(const CXString& feature) const {
    const CComPtr<IXMLDOMNode> node = FindParameterValue(feature);
    if (!node) return {};
    CComBSTR text;
    ThrowIfFailed(node->get_text(&text));
    return ToCXString(text);
}

void This::GetCurrentValueStringFeature(const CXString& feature, CXString& value) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetCurrentValueStringFeature");
    value.Empty();
    WithoutFailures([&] { value = ReadParameterText(feature); });
}

void This::GetCurrentValueJobSimpleSecurePrintPassword(CXString& password) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetCurrentValueJobSimpleSecurePrintPassword");
    CXString encoded;
    GetCurrentValueStringFeature(PrintSchema::JobSimpleSecurePrint::PARAMETERNAME, encoded);
    password = encoded.Base64DecodeAsUnicodeString();
    // A job that is to be held for a password must not go on without one.
    if (password.IsEmpty() && !encoded.IsBlank()) {
        ThrowFailure<CPExceptionInvalidArgument>([] { return "The password in the ticket is damaged"; });
    }
}

void This::GetCurrentValueBase64EncodedCompleteDocSettings(CXString& text) const {
    GetCurrentValueStringFeature(PrintSchema::JobOrvelCompleteDocSettings::PARAMETERNAME, text);
}

void This::GetJobOrvelPublicDocSettingsXml(CPString& xml) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetJobOrvelPublicDocSettingsXml");
    xml.clear();
    xml = CPString(ReadParameterText(PrintSchema::JobOrvelPublicDocSettings::PARAMETERNAME));
}

// ---- Editing. A failure leaves the ticket as it was.

void This::ReplaceParameter(const CXString& feature, const ParameterMaker& make) {
    const Row* const row = GetWritableFeature(feature);
    if (row == nullptr) return;
    const CComBSTR& prefix = GetNamespaceComString(row->ns, false);
    WithoutFailures([&] {
        TreeChange change(m_ticket->GetRootNode());
        CComPtr<IXMLDOMElement> init;
        make(prefix, &init);
        change.Replace(m_ticket->ParameterInitQuery(prefix, feature), init);
        change.Keep();
    });
}

void This::SetJobOrvelPublicDocSettingsXml(const CPString& xml) {
    SetCurrentValueStringFeature(PrintSchema::JobOrvelPublicDocSettings::PARAMETERNAME, CXString(xml));
}

void This::SetCurrentValueBase64EncodedCompleteDocSettings(const CXString& text) {
    SetCurrentValueStringFeature(PrintSchema::JobOrvelCompleteDocSettings::PARAMETERNAME, text);
}

void This::SetCurrentValueStringFeature(const CXString& feature, const CXString& value) {
    const OperationScope operation("NativeComPrintTicketAccess::SetCurrentValueStringFeature");
    ReplaceParameter(feature, [&](const CComBSTR& prefix, IXMLDOMElement** init) {
        // A ticket holds no empty text: the parameter goes.
        if (!value.IsEmpty()) m_ticket->CreateStringParameterInit(prefix, feature, value, init);
    });
}

void This::SetCurrentValueIntegerFeature(const CXString& feature, int value) {
    const OperationScope operation("NativeComPrintTicketAccess::SetCurrentValueIntegerFeature");
    ReplaceParameter(feature, [&](const CComBSTR& prefix, IXMLDOMElement** init) {
        m_ticket->CreateIntegerParameterInit(prefix, feature, value, init);
    });
}

void This::ReplaceFeature(const PrintTicketFeatureInformation& row, const CXString& optionName,
                          PrintTicketNamespace optionNamespace) {
    const CComBSTR& prefix = GetNamespaceComString(row.ns, false);
    TreeChange change(m_ticket->GetRootNode());
    CComPtr<IXMLDOMElement> feature;
    CComPtr<IXMLDOMElement> option;
    const auto isPrivate = [](PrintTicketNamespace ns) {
        return ns == UserKeywordsNamespace || ns == NoNamespace;
    };
    // A name of somebody else, with their prefix, would become one of ours.
    if (optionNamespace == NoNamespace && optionName.Find(L':') >= 0) ThrowComException(E_FAIL);
    m_ticket->CreateFeatureOptionPair(row.name, !isPrivate(row.ns), optionName, !isPrivate(optionNamespace),
                                      &feature, &option);
    // The ticket itself makes names with two prefixes only.
    const auto rename = [&](IXMLDOMElement* element, const CXString& name) {
        const CComBSTR fullName =
            Join({View(GetNamespaceComString(KeywordsV11Namespace, false)), name.View()});
        const CComBSTR attribute = Make(PrintSchema::NAME_ATTRIBUTE_NAME);
        ThrowIfFailed(element->setAttribute(attribute, Borrowed(fullName)));
    };
    if (row.ns == KeywordsV11Namespace) rename(feature, row.name);
    if (optionNamespace == KeywordsV11Namespace) rename(option, optionName);
    change.Replace(m_ticket->FeatureQuery(prefix, row.name), feature);
    change.Keep();
}

void This::SetCurrentValueOptionFeature(const CXString& feature, const CXString& value) {
    const OperationScope operation("NativeComPrintTicketAccess::SetCurrentValueOptionFeature");
    const Row* const row = GetWritableFeature(feature);
    if (row == nullptr || row->element != Row::Feature) return;
    CXString current;
    GetCurrentValueOptionFeature(feature, current);
    WithoutFailures([&] {
        if (current == value && IsOptionOfMeantNamespace(*row, value) &&
            !IsCustomSizeWithoutNumbers(*row, value))
            return;
        if (HasPublicOption(feature))
            ReplaceFeature(*row, value, KeywordsNamespace);
        else if (feature == PrintSchema::PageMediaSize::FEATURE)
            SetMediaSizeOption(*row, value);
        else if (feature == PrintSchema::NUp::NUP_FEATURES[0] || feature == PrintSchema::NUp::NUP_FEATURES[1])
            SetPagesPerSheet(feature, value);
        else
            SetOfferedOption(*row, value);
    });
}

void This::SetMediaSizeOption(const PrintTicketFeatureInformation& row, const CXString& value) {
    const std::vector<MediaSizeCapability> sizes = ReadMediaSizes(row.name);
    const auto found = std::find_if(sizes.begin(), sizes.end(), [&](const MediaSizeCapability& size) {
        return std::get<0>(size) == value;
    });
    const bool isPublic = found == sizes.end() || std::get<2>(*found) == KeywordsNamespace;
    std::vector<CustomNumber> numbers = CustomNumbers(row, value);
    if (!numbers.empty()) {
        for (CustomNumber& number : numbers)
            number.value = ReadCustomNumber(number);
        PageMediaSizePtPcHelper::AddOrReplaceCustomSize(*m_ticket, value, isPublic, numbers);
        return;
    }
    const std::pair<Dimension, Dimension> none;
    const auto& [width, height] = found == sizes.end() ? none : std::get<5>(*found);
    PcFormInfo form{WholeMicrons(width), WholeMicrons(height), value, PrintSchema::KeywordsNs};
    if (form.width == 0 || form.height == 0) {
        SetOfferedOption(row, value); // there is no size to write
        return;
    }
    // In a form, the numbers of the namespaces stand crosswise.
    if (isPublic) form.nameSpace = PrintSchema::UserKeywordsNs;
    PageMediaSizePtPcHelper::AddOrReplacePageMediaSize(*m_ticket, form);
}

bool This::IsOptionOfMeantNamespace(const PrintTicketFeatureInformation& row, const CXString& option) const {
    DocumentQuery query = GetPrintTicketQueryForFeature(row.name, false);
    query.AddOption();
    CComPtr<IXMLDOMNode> node = query.FindFirst();
    CComBSTR name;
    // One without name has a value, which is compared.
    if (!node || m_ticket->GetAttributeValue(node, PrintSchema::NAME_ATTRIBUTE_NAME, &name) != S_OK)
        return true;
    const std::wstring_view prefix = View(name).substr(0, View(name).find(L':'));
    const CComBSTR declaration = Join({L"xmlns:", prefix});
    CComBSTR bound;
    while (node && m_ticket->GetAttributeValue(node, declaration, &bound) != S_OK) {
        CComPtr<IXMLDOMNode> parent;
        ThrowIfFailed(node->get_parentNode(&parent));
        node = std::move(parent);
    }
    const CComBSTR own = m_ticket->GetUserKeywordsNsPrefix();
    const bool isUndeclared = !node && View(own) == View(Join({prefix, L":"}));
    const std::wstring_view uri = isUndeclared ? PrintSchema::USER_KEYWORDS_URI : View(bound);

    const std::vector<CapabilitiesOption> options = ReadCapabilitiesOptions(row.name, OptionExtent::Name);
    bool isOffered = false;
    for (const CapabilitiesOption& each : options) {
        if (!(each.name == option)) continue;
        if (WrittenUri(each.ns) == uri) return true;
        isOffered = true;
    }
    if (isOffered) return HasPublicOption(row.name) && uri == PrintSchema::KEYWORDS_URI;
    return std::any_of(std::begin(prefixUris), std::end(prefixUris),
                       [uri](const PrefixUri& known) { return uri == known.uri; });
}

std::vector<This::CustomNumber> This::CustomNumbers(const PrintTicketFeatureInformation& row,
                                                    const CXString& option) const {
    using namespace PrintSchema::PageMediaSize;
    if (!(row.name == FEATURE)) return {};
    std::vector<CustomNumber> numbers;
    bool hasOwnNumbers = false;
    PrintTicketNamespace ns = NoNamespace;
    CXString uri;
    const CComPtr<IXMLDOMNode> feature = FindFeature(row.name, true);
    for (auto each = feature ? FirstChild(feature) : nullptr; each; each = NextSibling(each)) {
        if (!HasBaseName(each, PrintSchema::OPTION_ELEMENT_NAME) ||
            !(TryToGetNameAttributeFromNode(each, true, ns, uri) == option))
            continue;
        for (auto child = FirstChild(each); child; child = NextSibling(child)) {
            if (!HasBaseName(child, PrintSchema::SCORED_PROP_ELEMENT_NAME)) continue;
            const CXString property = TryToGetNameAttributeFromNode(child, true, ns, uri);
            const CComPtr<IXMLDOMNode> reference = FindChild(child, PrintSchema::PARAM_REF_ELEMENT_NAME);
            if (!reference) {
                hasOwnNumbers = true;
                continue;
            }
            if (ns != KeywordsNamespace) continue;
            const CXString parameter = TryToGetNameAttributeFromNode(reference, true, ns, uri);
            if (ns == KeywordsNamespace) numbers.push_back({property, parameter, 0});
        }
        break;
    }
    const bool isNamedCustom = option == CustomMediaSize || (option == PSCustomMediaSize && !hasOwnNumbers);
    if (numbers.empty() && isNamedCustom)
        numbers = {{MEDIASIZEWIDTH_PROP, MEDIASIZEWIDTH_PARAM, 0},
                   {MEDIASIZEHEIGHT_PROP, MEDIASIZEHEIGHT_PARAM, 0}};
    return numbers;
}

bool This::IsCustomSizeWithoutNumbers(const PrintTicketFeatureInformation& row,
                                      const CXString& option) const {
    const std::vector<CustomNumber> numbers = CustomNumbers(row, option);
    return std::any_of(numbers.begin(), numbers.end(), [&](const CustomNumber& number) {
        int value = 0;
        return m_ticket->GetScoredPropertyValue(row.name, true, number.property, &value) != S_OK ||
               value < LeastOf(number.property);
    });
}

int This::ReadCustomNumber(const CustomNumber& number) const {
    const int least = LeastOf(number.property);
    CXString text;
    m_ticket->GetStringParameterInitValue(GetNamespaceComString(KeywordsNamespace, false), number.parameter,
                                          text);
    int value = text.GetAsInt();
    if (!text.IsBlank() && value >= least) return value;
    value = least - 1;
    const CComBSTR& keywords = GetNamespaceComString(KeywordsNamespace, true);
    if (keywords.Length() != 0) {
        DocumentQuery query(*m_capabilities);
        query.AddParameterDef(keywords, number.parameter);
        query.AddProperty(GetNamespaceComString(FrameworkNamespace, true),
                          PrintSchema::DEFAULTVAL_VALUE_NAME);
        m_capabilities->QueryNodeValue(query, &value);
    }
    if (value < least) ThrowComException(E_FAIL);
    return value;
}

void This::SetPagesPerSheet(const CXString& feature, const CXString& value) {
    const int pages = Number(value, false).GetNearestIntValue();
    if (pages > 0) m_ticket->SetScoredPropertyValue(feature, true, PrintSchema::NUp::NUP_PROP, pages);
}

void This::SetOfferedOption(const PrintTicketFeatureInformation& row, const CXString& value) {
    const std::vector<CapabilitiesOption> options = ReadCapabilitiesOptions(row.name, OptionExtent::Name);
    const auto found = std::find_if(options.begin(), options.end(),
                                    [&](const CapabilitiesOption& option) { return option.name == value; });
    ReplaceFeature(row, value, found == options.end() ? row.ns : found->ns);
}

void This::SetCurrentValueMediaSizeFeature(const CXString& feature, const CXString& option, int width,
                                           int height) {
    const OperationScope operation("NativeComPrintTicketAccess::SetCurrentValueMediaSizeFeature");
    if (GetWritableFeature(feature) == nullptr) return;
    if (width == 0 || height == 0) {
        SetCurrentValueOptionFeature(feature, option);
        return;
    }
    WithoutFailures([&] {
        PageMediaSizePtPcHelper().AddOrReplacePageMediaSize(*m_capabilities, *m_ticket, width, height);
    });
}

void This::CommitPrintTicketChanges() {}

void This::RemoveSecurePrintFeature() {
    SetCurrentValueStringFeature(PrintSchema::JobSimpleSecurePrint::PARAMETERNAME, L"");
}

// ---- The documents as a whole

CPString This::GetPrintTicketImplementationNameForDebug() const { return "NativeComPrintTicketAccess"; }

void This::GetPrintTicketAsXmlString(CPString& out, bool) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetPrintTicketAsXmlString");
    out.clear();
    out = XmlOf(*m_ticket);
}

void This::GetPrintCapabilitiesAsXmlString(CPString& out, bool) const {
    const OperationScope operation("NativeComPrintTicketAccess::GetPrintCapabilitiesAsXmlString");
    out.clear();
    out = XmlOf(*m_capabilities);
}
