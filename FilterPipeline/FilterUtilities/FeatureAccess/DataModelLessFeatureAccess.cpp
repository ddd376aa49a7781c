#include "FeatureAccess/DataModelLessFeatureAccess.h"

#include "DataModel/NativeXmlConfigCpssOptionValueDictionary.h"
#include "DataModel/NativeXmlConfigFeatureDictionary.h"
#include "DataModel/NativeXmlConfigOptionValueDictionary.h"
#include "EmbeddedSettings/PrintTicketAttributeBytesReaderWriter.h"
#include "FeatureAccess/FeatureRules.h"
#include "PrintSchema/PrintSchemaKeywords.h"

#include <LowLevelFacilities/WideStrings/ByteBuffer.h>

#include <algorithm>
#include <utility>

using namespace DataModelIds;

namespace {

template <typename Value>
bool Give(FeatureAnswer<Value> answer, Value& value, FeatureValueSource& source) {
    value = std::move(answer.value);
    source = answer.source;
    return answer.isSpecified;
}

template <typename Value>
bool Give(FeatureAnswer<Value> answer, Value& value) {
    value = std::move(answer.value);
    return answer.isSpecified;
}

template <typename Value>
Value Part(FeatureAnswer<Value> answer, bool& isSpecified) {
    isSpecified = answer.isSpecified;
    return std::move(answer.value);
}

SimpleOptionValue Give(const FeatureAnswer<tagValueEnum>& answer, FeatureValueSource& source) {
    source = answer.source;
    return ToOption(answer);
}

/// Of the attribute bytes alone.
template <typename Value>
FeatureAnswer<Value> AskBytes(const FeaturePlaces& places, const FeaturePath& path) {
    FeatureAnswer<Value> answer;
    places.AttributeBytes().Ask(WantedFeature{.path = path}, answer);
    return answer;
}

/// Of the factory. Throws for a feature that has no names.
template <typename Value>
FeatureAnswer<Value> AskFactory(const FeaturePlaces& places, tagFeatureEnum feature) {
    FeatureAnswer<Value> answer;
    static_cast<void>(NativeXmlConfigFeatureDictionary::Instance()->GetEntry(feature));
    places.Device().Ask(places.Wanted(feature), answer);
    return answer;
}

template <typename Value>
bool Enforce(const FeaturePlaces& places, tagFeatureEnum feature, Value& value, bool& isSpecified) {
    FeatureAnswer<Value> answer{value, isSpecified};
    const bool isEnforced = places.Enforce(places.Wanted(feature), answer);
    isSpecified = Give(std::move(answer), value);
    return isEnforced;
}

const wchar_t* TextOrNull(const CXString* text) {
    return text != nullptr ? static_cast<const wchar_t*>(*text) : nullptr;
}

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
      m_attributeBytes(attributeBytes), m_enforceRequiredFeatures(enforceRequiredFeatures),
      m_places(std::make_unique<FeaturePlaces>(
          FeaturePlaces::Places{TicketSettings(&ticket), DocumentSettings([this] {
                                    return InitializeOrvelPublicDocSettingsInitOnFirstUse();
                                }),
                                AttributeBytesSettings(attributeBytes), DeviceSettings(&capabilities)},
          enforceRequiredFeatures)) {
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
    return m_places->IsSupported({grandparent, parent, feature});
}

bool DataModelLessFeatureAccess::IsSupportedFeature(tagFeatureEnum parent, tagFeatureEnum feature) const {
    return m_places->IsSupported({parent, feature});
}

bool DataModelLessFeatureAccess::IsSupportedFeature(tagFeatureEnum feature) const {
    return m_places->IsSupported(feature);
}

const wchar_t* DataModelLessFeatureAccess::FirstSupported(const wchar_t* first, const wchar_t* second) const {
    if (m_ticket.IsSupportedPrintTicketFeature(first)) return first;
    return m_ticket.IsSupportedPrintTicketFeature(second) ? second : nullptr;
}

const wchar_t* DataModelLessFeatureAccess::SupportedPageLayoutFeature() const {
    return TextOrNull(m_places->FindSupportedName(FEAT_PAGE_LAYOUT));
}

const wchar_t* DataModelLessFeatureAccess::SupportedInputTrayFeature() const {
    return TextOrNull(m_places->FindSupportedName(FEAT_INPUT_TRAY));
}

// ---- Names

const CPString& DataModelLessFeatureAccess::CpssName(tagFeatureEnum feature) const {
    return m_places->Wanted(feature).DeviceName();
}

CXString DataModelLessFeatureAccess::GetFeatureCpssName(tagFeatureEnum feature) const {
    return m_places->Wanted(feature).DocumentName();
}

CXString DataModelLessFeatureAccess::GetFeaturePrintTicketName(tagFeatureEnum feature) const {
    return m_places->Wanted(feature).TicketName();
}

CPString DataModelLessFeatureAccess::GetFeatureEnumNameForDisplay(tagFeatureEnum feature) const {
    const NativeXmlConfigFeatureEntry* const names = m_places->Wanted(feature).names;
    return names != nullptr ? names->featureEnumString : CPString();
}

std::vector<tagValueEnum> DataModelLessFeatureAccess::GetSupportedValueEnums(tagFeatureEnum feature,
                                                                             bool wantSubFeatures) const {
    return m_places->Device().GetSupportedValues(m_places->Wanted(feature), wantSubFeatures);
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

// ---- What the caller of the constructor knows

CXString DataModelLessFeatureAccess::GetPrintJobDocumentName() const { return m_documentName; }

CXString DataModelLessFeatureAccess::GetPrintJobUserName() const { return m_userName; }

CXString DataModelLessFeatureAccess::GetPrintJobUserDomainName() const { return m_userDomainName; }

bool DataModelLessFeatureAccess::GetOutputSize(tagFeatureEnum, unsigned int, Dimension&, Dimension&) const {
    return false;
}

bool DataModelLessFeatureAccess::GetOutputSize(tagFeatureEnum feature, Dimension& first,
                                               Dimension& second) const {
    return feature == FEAT_WHOLE_JOB && GetOutputSize(first, second);
}

bool DataModelLessFeatureAccess::GetOutputSize(Dimension& first, Dimension& second) const {
    first = m_firstOutputSize;
    second = m_secondOutputSize;
    return true;
}

// ---- Options

SimpleOptionValue DataModelLessFeatureAccess::GetOptionValue(tagFeatureEnum feature) const {
    return ToOption(FeatureRules(*this).Option(feature));
}

SimpleOptionValue DataModelLessFeatureAccess::GetOptionValue(tagFeatureEnum feature,
                                                             FeatureValueSource& source) const {
    return Give(FeatureRules(*this).Option(feature), source);
}

SimpleOptionValue DataModelLessFeatureAccess::GetOptionValueWithContext(tagFeatureEnum grandparent,
                                                                        tagFeatureEnum parent,
                                                                        tagFeatureEnum feature) const {
    return ToOption(FeatureRules(*this).Option({grandparent, parent, feature}));
}

SimpleOptionValue DataModelLessFeatureAccess::GetOptionValueWithContext(tagFeatureEnum parent,
                                                                        tagFeatureEnum feature) const {
    return ToOption(FeatureRules(*this).Option({parent, feature}));
}

SimpleOptionValue DataModelLessFeatureAccess::GetOptionValueWithContext(tagFeatureEnum parent,
                                                                        tagFeatureEnum feature,
                                                                        FeatureValueSource& source) const {
    return Give(FeatureRules(*this).Option({parent, feature}), source);
}

SimpleOptionValue DataModelLessFeatureAccess::GetEffectiveJobLevelMediaSize() const {
    return ToOption(FeatureRules(*this).MediaSize());
}

SimpleOptionValue
DataModelLessFeatureAccess::GetEffectiveJobLevelMediaSize(FeatureValueSource& source) const {
    return Give(FeatureRules(*this).MediaSize(), source);
}

DataModelLessFeatureAccess::tagValueEnum DataModelLessFeatureAccess::GetEffectiveOrientation() const {
    return FeatureRules(*this).Orientation().value;
}

RecordedAnswer DataModelLessFeatureAccess::Answer(const FeatureQuestion& question) const {
    return FeatureRules(*this).Answer(question);
}

FeatureValueSource DataModelLessFeatureAccess::GetSource(const FeatureQuestion& question) const {
    return FeatureRules(*this).Answer(question).source;
}

// ---- Integers, lengths and flags

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum feature, int& value) const {
    return Give(FeatureRules(*this).Integer(feature), value);
}

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum feature, int& value,
                                                 FeatureValueSource& source) const {
    return Give(FeatureRules(*this).Integer(feature), value, source);
}

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                                 int& value) const {
    return Give(FeatureRules(*this).Integer({parent, feature}), value);
}

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature, int& value,
                                                 FeatureValueSource& source) const {
    return Give(FeatureRules(*this).Integer({parent, feature}), value, source);
}

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                 tagFeatureEnum feature, int& value) const {
    return Give(FeatureRules(*this).Integer({grandparent, parent, feature}), value);
}

bool DataModelLessFeatureAccess::GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                 unsigned int index, tagFeatureEnum feature,
                                                 int& value) const {
    return Give(FeatureRules(*this).Integer(FeaturePath(grandparent, parent, feature).At(index)), value);
}

bool DataModelLessFeatureAccess::GetDimensionValue(tagFeatureEnum feature, Dimension& value) const {
    return Give(FeatureRules(*this).Length(feature), value);
}

bool DataModelLessFeatureAccess::GetDimensionValue(tagFeatureEnum feature, Dimension& value,
                                                   FeatureValueSource& source) const {
    return Give(FeatureRules(*this).Length(feature), value, source);
}

bool DataModelLessFeatureAccess::GetBooleanValue(tagFeatureEnum feature, bool& value) const {
    return Give(FeatureRules(*this).Flag(feature), value);
}

// ---- Texts

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum feature, CXString& value) const {
    return Give(FeatureRules(*this).Text(feature), value);
}

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum feature, CXString& value,
                                                FeatureValueSource& source) const {
    return Give(FeatureRules(*this).Text(feature), value, source);
}

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum parent, tagFeatureEnum feature,
                                                CXString& value) const {
    return Give(FeatureRules(*this).Text({parent, feature}), value);
}

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                tagFeatureEnum feature, CXString& value) const {
    return Give(FeatureRules(*this).Text({grandparent, parent, feature}), value);
}

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum parent, unsigned int index,
                                                tagFeatureEnum feature, CXString& value) const {
    return Give(FeatureRules(*this).Text(FeaturePath(parent, feature).At(index)), value);
}

bool DataModelLessFeatureAccess::GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                unsigned int index, tagFeatureEnum feature,
                                                CXString& value) const {
    return Give(FeatureRules(*this).Text(FeaturePath(grandparent, parent, feature).At(index)), value);
}

bool DataModelLessFeatureAccess::GetStringFromDocumentOrAttributeBytes(const CXString& cpssName,
                                                                       tagFeatureEnum feature,
                                                                       CXString& value,
                                                                       FeatureValueSource& source) const {
    return Give(FeatureRules(*this).TextOfSettingsOrBytes(cpssName, feature), value, source);
}

bool DataModelLessFeatureAccess::GetJobName(CXString& name, FeatureValueSource& source) const {
    return GetStringValue(FEAT_JOB_NAME, name, source);
}

bool DataModelLessFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum grandparent,
                                                      tagFeatureEnum parent, tagFeatureEnum feature) const {
    const FeaturePath path(grandparent, parent, feature);
    return FindFeatureRule(FeatureQuestionKind::Password, path) != nullptr &&
           Give(FeatureRules(*this).Password(path), password);
}

bool DataModelLessFeatureAccess::GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const {
    // Where there can be no password, what the caller has stays.
    return FindFeatureRule(FeatureQuestionKind::Password, feature) != nullptr &&
           Give(FeatureRules(*this).Password(feature), password);
}

// ---- What no feature has

bool DataModelLessFeatureAccess::GetDateTimeValue(tagFeatureEnum, tagFeatureEnum, UtcTime& value) const {
    value = UtcTime();
    return false;
}

bool DataModelLessFeatureAccess::GetDateTimeValue(tagFeatureEnum, UtcTime& value) const {
    value = UtcTime();
    return false;
}

bool DataModelLessFeatureAccess::GetBytesValue(tagFeatureEnum, tagFeatureEnum, tagFeatureEnum,
                                               ByteBuffer&) const {
    return false;
}

bool DataModelLessFeatureAccess::GetBytesValue(tagFeatureEnum, tagFeatureEnum, ByteBuffer&) const {
    return false;
}

bool DataModelLessFeatureAccess::GetBytesValue(tagFeatureEnum, ByteBuffer&) const { return false; }

// ---- Collections

bool DataModelLessFeatureAccess::IsCollectionSpecified(tagFeatureEnum feature) const {
    return FeatureRules(*this).Collection(feature).isSpecified;
}

bool DataModelLessFeatureAccess::IsCollectionSpecified(tagFeatureEnum feature,
                                                       FeatureValueSource& source) const {
    const FeatureAnswer<CollectionState> answer = FeatureRules(*this).Collection(feature);
    source = answer.source;
    return answer.isSpecified;
}

bool DataModelLessFeatureAccess::IsCollectionSpecified(tagFeatureEnum parent, tagFeatureEnum feature) const {
    return FeatureRules(*this).Collection({parent, feature}).isSpecified;
}

bool DataModelLessFeatureAccess::IsCollectionSpecified(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                                       tagFeatureEnum feature) const {
    return FeatureRules(*this).Collection({grandparent, parent, feature}).isSpecified;
}

unsigned int
DataModelLessFeatureAccess::GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum feature) const {
    return FeatureRules(*this).Entries(feature).value;
}

unsigned int
DataModelLessFeatureAccess::GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum parent,
                                                                        tagFeatureEnum feature) const {
    return FeatureRules(*this).Entries({parent, feature}).value;
}

// ---- Required features, and what the factory set

bool DataModelLessFeatureAccess::MustEnforce(tagFeatureEnum feature, bool isSpecified) const {
    return m_places->MustEnforce(m_places->Wanted(feature), isSpecified);
}

bool DataModelLessFeatureAccess::EnforceRequiredOptionFeatureIfNecessary(tagFeatureEnum feature,
                                                                         SimpleOptionValue& value) const {
    FeatureAnswer<tagValueEnum> answer{value.GetValue(), value.IsSpecified()};
    const bool isEnforced = Enforce(*m_places, feature, answer.value, answer.isSpecified);
    value = ToOption(answer);
    return isEnforced;
}

bool DataModelLessFeatureAccess::EnforceRequiredIntegerFeatureIfNecessary(tagFeatureEnum feature, int& value,
                                                                          bool& isSpecified) const {
    return Enforce(*m_places, feature, value, isSpecified);
}

bool DataModelLessFeatureAccess::EnforceRequiredDimensionFeatureIfNecessary(tagFeatureEnum feature,
                                                                            Dimension& value,
                                                                            bool& isSpecified) const {
    return Enforce(*m_places, feature, value, isSpecified);
}

SimpleOptionValue DataModelLessFeatureAccess::GetFactoryDefaultOptionValue(tagFeatureEnum feature) const {
    return ToOption(AskFactory<tagValueEnum>(*m_places, feature));
}

bool DataModelLessFeatureAccess::GetFactoryDefaultIntegerValue(tagFeatureEnum feature, int& value) const {
    return Give(AskFactory<int>(*m_places, feature), value);
}

bool DataModelLessFeatureAccess::GetFactoryDefaultDimensionValue(tagFeatureEnum feature,
                                                                 Dimension& value) const {
    return Give(AskFactory<Dimension>(*m_places, feature), value);
}

// ---- Setters

void DataModelLessFeatureAccess::SetStringValue(tagFeatureEnum feature, const CXString& text,
                                                bool isSpecified) {
    m_places->SetText(feature, text, isSpecified);
}

void DataModelLessFeatureAccess::SetOptionValue(tagFeatureEnum feature, const SimpleOptionValue& value) {
    m_places->SetOption(feature, value);
}

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
    FeatureAnswer<CXString> answer;
    const HRESULT result = m_places->Document().GetText(cpssName, answer);
    isSpecified = Give(std::move(answer), value);
    return result;
}

HRESULT DataModelLessFeatureAccess::SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(
    const CXString& cpssName, const CXString& syntax, bool isSpecified, const CXString& value) {
    return m_places->Document().SetText(cpssName, syntax, isSpecified, value);
}

HRESULT DataModelLessFeatureAccess::GetNumberOfChildrenForOrvelPublicDocSettingsFeature(
    const CXString& cpssName, bool& isSpecified, unsigned int& count) const {
    FeatureAnswer<unsigned int> answer;
    const HRESULT result = m_places->Document().GetNumberOfChildren(cpssName, answer);
    isSpecified = Give(answer, count);
    return result;
}

bool DataModelLessFeatureAccess::IsOrvelPublicDocSettingsFeaturePresent(const CXString& cpssName) const {
    return m_places->Document().IsPresent(cpssName);
}

bool DataModelLessFeatureAccess::IsOrvelPublicDocSettingsFeaturePresentAtJobLevel(
    const CXString& cpssName) const {
    return m_places->Document().IsPresent(cpssName, PublicDocSettingsDocument::Depth::JobLevel);
}

bool DataModelLessFeatureAccess::TryGetOptionValueFromOrvelPublicDocSettings(tagFeatureEnum feature,
                                                                             SimpleOptionValue& value) const {
    FeatureAnswer<tagValueEnum> answer;
    const bool isThere = m_places->Document().Ask(m_places->Wanted(feature), answer);
    if (answer.value != VAL_UNSPECIFIED) value = ToOption(answer);
    return isThere;
}

CXString DataModelLessFeatureAccess::GetAttributeAsString(XmlDomNode* node, const wchar_t* name) const {
    return PublicDocSettingsDocument::GetAttributeAsString(*node, name);
}

bool DataModelLessFeatureAccess::IsSpecified(XmlDomNode* node) const {
    return PublicDocSettingsDocument::IsSpecified(*node);
}

// ---- The attribute bytes

bool DataModelLessFeatureAccess::HasAttributeBytes() const { return m_places->AttributeBytes().HasAny(); }

bool DataModelLessFeatureAccess::TryGetCollection(tagFeatureEnum feature,
                                                  AttributeBytesIndexedList& members) const {
    return m_places->AttributeBytes().GetMembers(feature, members);
}

bool DataModelLessFeatureAccess::TryGetCollection(tagFeatureEnum parent, tagFeatureEnum feature,
                                                  AttributeBytesIndexedList& members) const {
    return m_places->AttributeBytes().GetMembers({parent, feature}, members);
}

SimpleOptionValue
DataModelLessFeatureAccess::TryGetOptionValueFromAttributeBytesIfExists(tagFeatureEnum feature) const {
    return ToOption(AskBytes<tagValueEnum>(*m_places, feature));
}

SimpleOptionValue
DataModelLessFeatureAccess::TryGetOptionValueFromAttributeBytesIfExists(tagFeatureEnum parent,
                                                                        tagFeatureEnum feature) const {
    return ToOption(AskBytes<tagValueEnum>(*m_places, {parent, feature}));
}

int DataModelLessFeatureAccess::TryGetIntegerValueFromAttributeBytesIfExists(tagFeatureEnum feature,
                                                                             bool& isSpecified) const {
    return Part(AskBytes<int>(*m_places, feature), isSpecified);
}

int DataModelLessFeatureAccess::TryGetIntegerValueFromAttributeBytesIfExists(tagFeatureEnum parent,
                                                                             tagFeatureEnum feature,
                                                                             bool& isSpecified) const {
    return Part(AskBytes<int>(*m_places, {parent, feature}), isSpecified);
}

Dimension
DataModelLessFeatureAccess::TryGetDimensionValueFromAttributeBytesIfExists(tagFeatureEnum feature,
                                                                           bool& isSpecified) const {
    return Part(AskBytes<Dimension>(*m_places, feature), isSpecified);
}

Dimension DataModelLessFeatureAccess::TryGetDimensionValueFromAttributeBytesIfExists(
    tagFeatureEnum parent, tagFeatureEnum feature, bool& isSpecified) const {
    return Part(AskBytes<Dimension>(*m_places, {parent, feature}), isSpecified);
}

CXString DataModelLessFeatureAccess::TryGetStringValueFromAttributeBytesIfExists(tagFeatureEnum feature,
                                                                                 bool& isSpecified) const {
    return Part(AskBytes<CXString>(*m_places, feature), isSpecified);
}

bool DataModelLessFeatureAccess::TryGetIsSpecifiedFromAttributeBytesIfExists(tagFeatureEnum feature) const {
    return AskBytes<CollectionState>(*m_places, feature).isSpecified;
}
