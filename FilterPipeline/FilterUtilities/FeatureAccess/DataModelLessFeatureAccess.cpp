#include "DataModelLessFeatureAccess.h"

#include <DataModel/NativeXmlConfigCpssOptionValueDictionary.h>
#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DataModel/NativeXmlConfigOptionValueDictionary.h>
#include <DeviceDescription/IPrintTicketAccess.h>
#include <DeviceDescription/SimpleOcapParser.h>
#include <EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h>
#include <EmbeddedSettings/PublicDocSettingsDocument.h>
#include <LowLevelFacilities/ByteBuffer.h>
#include <PrintSchema/PrintSchemaKeywords.h>

#include <algorithm>
#include <iterator>

using namespace DataModelIds;

namespace {

constexpr tagFeatureEnum annotationMembers[] = {FEAT_ANNOTATION_NAME, FEAT_ANNOTATION_MEMBER_895,
                                                FEAT_ANNOTATION_ELEMENT_COL};

// Pages per sheet and the input tray each have two features in tickets, of which the first that is supported
// counts.
constexpr const wchar_t* jobInputBin = L"JobInputBin";
constexpr const wchar_t* pageInputBin = L"PageInputBin";
constexpr const wchar_t* jobPagesPerSheet = L"JobNUpAllDocumentsContiguously";
constexpr const wchar_t* documentPagesPerSheet = L"DocumentNUp";

} // namespace

DataModelLessFeatureAccess::DataModelLessFeatureAccess(const CXString& documentName, const CXString& userName,
                                                       const CXString& userDomainName, void* printer,
                                                       const Dimension& firstOutputSize,
                                                       const Dimension& secondOutputSize,
                                                       SimpleOcapParser& capabilities,
                                                       IPrintTicketAccess& ticket)
    : DataModelLessFeatureAccess(
          Job{documentName, userName, userDomainName, printer, firstOutputSize, secondOutputSize},
          capabilities, ticket, nullptr, false) {}

DataModelLessFeatureAccess::DataModelLessFeatureAccess(
    const CXString& documentName, const CXString& userName, const CXString& userDomainName, void* printer,
    const Dimension& firstOutputSize, const Dimension& secondOutputSize, SimpleOcapParser& capabilities,
    IPrintTicketAccess& ticket, PrintTicketAttributeBytesReaderWriter& attributeBytes)
    : DataModelLessFeatureAccess(
          Job{documentName, userName, userDomainName, printer, firstOutputSize, secondOutputSize},
          capabilities, ticket, &attributeBytes, true) {}

DataModelLessFeatureAccess::DataModelLessFeatureAccess(SimpleOcapParser& capabilities,
                                                       IPrintTicketAccess& ticket,
                                                       PrintTicketAttributeBytesReaderWriter* attributeBytes)
    : DataModelLessFeatureAccess(Job{}, capabilities, ticket, attributeBytes, false) {}

DataModelLessFeatureAccess::DataModelLessFeatureAccess(const Job& job, SimpleOcapParser& capabilities,
                                                       IPrintTicketAccess& ticket,
                                                       PrintTicketAttributeBytesReaderWriter* attributeBytes,
                                                       bool enforceRequiredFeatures)
    : m_featureDictionary(NativeXmlConfigFeatureDictionary::Instance()),
      m_optionValueDictionary(NativeXmlConfigOptionValueDictionary::Instance()),
      m_cpssOptionValueDictionary(NativeXmlConfigCpssOptionValueDictionary::Instance()),
      m_documentName(job.documentName), m_userName(job.userName), m_userDomainName(job.userDomainName),
      m_printer(job.printer), m_firstOutputSize(job.firstOutputSize),
      m_secondOutputSize(job.secondOutputSize), m_capabilities(capabilities), m_ticket(ticket),
      m_attributeBytes(attributeBytes), m_enforceRequiredFeatures(enforceRequiredFeatures) {
    InitializeHolePunchCapabilityMembers();
}

DataModelLessFeatureAccess::~DataModelLessFeatureAccess() = default;

void DataModelLessFeatureAccess::InitializeHolePunchCapabilityMembers() {
    m_holePunchFeatureSupported = DataModelLessFeatureAccess::IsSupportedFeature(FEAT_FINISHING_HOLE_PUNCH);
    m_twoHolePositionsSupported = DataModelLessFeatureAccess::IsSupportedFeature(FEAT_FINISHING_2_HOLE_PUNCH);
    m_threeHolePositionsSupported =
        DataModelLessFeatureAccess::IsSupportedFeature(FEAT_FINISHING_3_HOLE_PUNCH);
    m_fourHolePositionsSupported =
        DataModelLessFeatureAccess::IsSupportedFeature(FEAT_FINISHING_4_HOLE_PUNCH);
    m_anyHolePositionsSupported =
        m_twoHolePositionsSupported || m_threeHolePositionsSupported || m_fourHolePositionsSupported;

    std::vector<tagValueEnum> offered;
    if (m_holePunchFeatureSupported) offered = GetSupportedValueEnums(FEAT_FINISHING_HOLE_PUNCH, false);
    const auto isOffered = [&offered](tagValueEnum value) {
        return std::find(offered.begin(), offered.end(), value) != offered.end();
    };
    m_twoHoleSupported = m_twoHolePositionsSupported || isOffered(VAL_FINISHING_2_HOLE_PUNCH);
    m_threeHoleSupported = m_threeHolePositionsSupported || isOffered(VAL_FINISHING_3_HOLE_PUNCH);
    m_fourHoleSupported = m_fourHolePositionsSupported || isOffered(VAL_FINISHING_4_HOLE_PUNCH);

    const bool anyHoleSupported = m_twoHoleSupported || m_threeHoleSupported || m_fourHoleSupported;
    m_holeCountsOnly = !m_anyHolePositionsSupported && anyHoleSupported;
    m_holePunchOnOnly =
        !m_anyHolePositionsSupported && !anyHoleSupported && isOffered(VAL_FINISHING_HOLE_PUNCH_ON);
}

// ---- Support

bool DataModelLessFeatureAccess::IsSupportedFeature(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                    tagFeatureEnum feature) const {
    return m_capabilities.IsCpssFeatureSupported(CpssName(grandparent), CpssName(parent), CpssName(feature));
}

bool DataModelLessFeatureAccess::IsSupportedFeature(tagFeatureEnum parent, tagFeatureEnum feature) const {
    if (parent == FEAT_MEDIA_COL) {
        if (feature == FEAT_INPUT_TRAY) return SupportedInputTrayFeature() != nullptr;
        if (feature == FEAT_MEDIA_COLOR || feature == FEAT_EFFECTIVE_MEDIA_TYPE)
            return m_ticket.IsSupportedPrintTicketFeature(GetFeaturePrintTicketName(feature));
    }
    if (parent == FEAT_ANNOTATION_COL && std::find(std::begin(annotationMembers), std::end(annotationMembers),
                                                   feature) != std::end(annotationMembers))
        return true;
    return m_capabilities.IsCpssFeatureSupported(CpssName(parent), CpssName(feature));
}

bool DataModelLessFeatureAccess::IsSupportedFeature(tagFeatureEnum feature) const {
    if (feature == FEAT_PAGE_LAYOUT) return SupportedPageLayoutFeature() != nullptr;
    if (feature == FEAT_INPUT_TRAY) return SupportedInputTrayFeature() != nullptr;
    const NativeXmlConfigFeatureEntry& entry = m_featureDictionary->GetEntry(feature);
    return entry.ticketKind == NativeXmlConfigFeatureEntry::TICKET_KIND
               ? m_ticket.IsSupportedPrintTicketFeature(entry.printTicketFeatureName)
               : m_capabilities.IsCpssFeatureSupported(entry.cpssFeatureName);
}

const wchar_t* DataModelLessFeatureAccess::FirstSupported(const wchar_t* first, const wchar_t* second) const {
    if (m_ticket.IsSupportedPrintTicketFeature(first)) return first;
    return m_ticket.IsSupportedPrintTicketFeature(second) ? second : nullptr;
}

const wchar_t* DataModelLessFeatureAccess::SupportedPageLayoutFeature() const {
    return FirstSupported(jobPagesPerSheet, documentPagesPerSheet);
}

const wchar_t* DataModelLessFeatureAccess::SupportedInputTrayFeature() const {
    return FirstSupported(pageInputBin, jobInputBin);
}

// ---- Names

const CPString& DataModelLessFeatureAccess::CpssName(tagFeatureEnum feature) const {
    static const CPString none;
    return m_featureDictionary->IsFeaturePresent(feature)
               ? m_featureDictionary->GetEntry(feature).cpssFeatureName
               : none;
}

CXString DataModelLessFeatureAccess::GetFeatureCpssName(tagFeatureEnum feature) const {
    return m_featureDictionary->IsFeaturePresent(feature)
               ? m_featureDictionary->GetEntry(feature).wideCpssFeatureName
               : CXString();
}

CXString DataModelLessFeatureAccess::GetFeaturePrintTicketName(tagFeatureEnum feature) const {
    return m_featureDictionary->IsFeaturePresent(feature)
               ? m_featureDictionary->GetEntry(feature).printTicketFeatureName
               : CXString();
}

CPString DataModelLessFeatureAccess::GetFeatureEnumNameForDisplay(tagFeatureEnum feature) const {
    return m_featureDictionary->IsFeaturePresent(feature)
               ? m_featureDictionary->GetEntry(feature).featureEnumString
               : CPString();
}

std::vector<tagValueEnum> DataModelLessFeatureAccess::GetSupportedValueEnums(tagFeatureEnum feature,
                                                                             bool wantSubFeatures) const {
    std::vector<tagValueEnum> values;
    for (const CPString& name :
         m_capabilities.GetSupportedFeatureOrValuesFromOcap(CpssName(feature), wantSubFeatures)) {
        if (const tagValueEnum value = GetValueEnumFromFeatureAndName(feature, name);
            value != VAL_UNSPECIFIED)
            values.push_back(value);
    }
    return values;
}

CPString DataModelLessFeatureAccess::GetValueCppsNameFromFeatureAndValueEnums(tagFeatureEnum feature,
                                                                              tagValueEnum value) const {
    return m_cpssOptionValueDictionary->IsValuePresent(feature, value)
               ? m_cpssOptionValueDictionary->GetEntry(feature, value).cpssOptionName
               : CPString();
}

tagValueEnum DataModelLessFeatureAccess::GetValueEnumFromFeatureAndName(tagFeatureEnum feature,
                                                                        const CPString& cpssName) const {
    return m_cpssOptionValueDictionary->IsCpssNamePresent(feature, cpssName.view())
               ? m_cpssOptionValueDictionary->GetEntryByCpssName(feature, cpssName.view()).value
               : VAL_UNSPECIFIED;
}

CPString DataModelLessFeatureAccess::GetDumpDisplayString(const SimpleOptionValue&) const { return {}; }

// ---- The public document settings

MicrosoftXmlParser* DataModelLessFeatureAccess::InitializeOrvelPublicDocSettingsInitOnFirstUse() const {
    if (m_publicSettingsParser) return m_publicSettingsParser.get();
    // What the ticket throws passes: settings that cannot be read are not to be taken for none.
    const CPString text = PublicDocSettingsDocument::ReadOrCreate(
        [this] {
            CPString xml;
            m_ticket.GetJobOrvelPublicDocSettingsXml(xml);
            return xml;
        },
        [this](const CPString& xml) { m_ticket.SetJobOrvelPublicDocSettingsXml(xml); });
    // A large text that is no XML is not parsed for each of dozens of questions.
    if (m_unparsableSettings && text.hash() == *m_unparsableSettings) return nullptr;
    PublicDocSettingsDocument::Guarded(PrintSchema::JobOrvelPublicDocSettings::PARAMETERNAME, [&] {
        m_publicSettingsParser = PublicDocSettingsDocument::Parse(text);
        if (!m_publicSettingsParser) m_unparsableSettings = text.hash();
        return S_OK;
    });
    return m_publicSettingsParser.get();
}

HRESULT DataModelLessFeatureAccess::GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(
    const CXString& cpssName, bool& isSpecified, CXString& value) const {
    isSpecified = false;
    value.Empty();
    const PublicDocSettingsDocument document(InitializeOrvelPublicDocSettingsInitOnFirstUse());
    return PublicDocSettingsDocument::Guarded(cpssName, [&] {
        return document.GetString(cpssName, PublicDocSettingsDocument::Depth::Any, isSpecified, value);
    });
}

bool DataModelLessFeatureAccess::TryGetOptionValueFromOrvelPublicDocSettings(tagFeatureEnum feature,
                                                                             SimpleOptionValue& value) const {
    bool isSpecified = false;
    CXString text;
    if (GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(
            m_featureDictionary->GetEntry(feature).wideCpssFeatureName, isSpecified, text) != S_OK)
        return false;
    if (m_cpssOptionValueDictionary->IsCpssNamePresent(feature, text.View()))
        value = SimpleOptionValue(
            isSpecified, m_cpssOptionValueDictionary->GetEntryByCpssName(feature, text.View()).value);
    return true;
}

CXString DataModelLessFeatureAccess::GetAttributeAsString(XmlDomNode* node, const wchar_t* name) const {
    return PublicDocSettingsDocument::GetAttributeAsString(*node, name);
}

bool DataModelLessFeatureAccess::IsSpecified(XmlDomNode* node) const {
    return PublicDocSettingsDocument::IsSpecified(*node);
}

// ---- The attribute bytes

bool DataModelLessFeatureAccess::HasAttributeBytes() const {
    return m_attributeBytes != nullptr && !m_attributeBytes->IsAttributeBytesListEmpty();
}

SimpleOptionValue
DataModelLessFeatureAccess::TryGetOptionValueFromAttributeBytesIfExists(tagFeatureEnum feature) const {
    if (!HasAttributeBytes()) return {};
    bool isSpecified = false;
    const LONG value =
        m_attributeBytes->GetOptionValueFromAttributeBytes(AttributeBytesFeatureId(feature), &isSpecified);
    return {isSpecified, static_cast<tagValueEnum>(value)};
}

// ---- Required features

bool DataModelLessFeatureAccess::MustEnforce(tagFeatureEnum feature, bool isSpecified) const {
    return m_enforceRequiredFeatures && !isSpecified &&
           m_capabilities.IsCpssFeatureRequired(CpssName(feature));
}

bool DataModelLessFeatureAccess::EnforceRequiredOptionFeatureIfNecessary(tagFeatureEnum feature,
                                                                         SimpleOptionValue& value) const {
    if (!MustEnforce(feature, value.IsSpecified())) return false;
    // Deliberate: also a default that is not specified, and also if there is none.
    const tagValueEnum enforced = value.GetValue() == VAL_UNSPECIFIED
                                      ? GetFactoryDefaultOptionValue(feature).GetValue()
                                      : value.GetValue();
    value = SimpleOptionValue(true, enforced);
    return true;
}

SimpleOptionValue DataModelLessFeatureAccess::GetFactoryDefaultOptionValue(tagFeatureEnum feature) const {
    bool isSpecified = false;
    const CPString name = m_capabilities.GetFactoryDefaultValueAsString(
        m_featureDictionary->GetEntry(feature).cpssFeatureName, isSpecified, false);
    if (!m_cpssOptionValueDictionary->IsCpssNamePresent(feature, name.view())) return {};
    return {isSpecified, m_cpssOptionValueDictionary->GetEntryByCpssName(feature, name.view()).value};
}
