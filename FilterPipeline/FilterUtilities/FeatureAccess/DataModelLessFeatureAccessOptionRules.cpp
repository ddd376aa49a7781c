#include "DataModelLessFeatureAccess.h"
#include "FeatureOptionRuleTable.h"

#include <DataModel/NativeXmlConfigCpssOptionValueDictionary.h>
#include <DataModel/NativeXmlConfigFeatureDictionary.h>
#include <DataModel/NativeXmlConfigOptionValueDictionary.h>
#include <DeviceDescription/IPrintTicketAccess.h>
#include <Finishing/OcptImportAndExport.h>

#include <algorithm>
#include <optional>

using namespace DataModelIds;
using FeatureKeywordTables::FindKeyword;

namespace {

struct Answer {
    SimpleOptionValue value;
    FeatureValueSource source = FeatureValueSource::None;
};

} // namespace

class DataModelLessFeatureAccess::OptionRules {
public:
    OptionRules(const DataModelLessFeatureAccess& access, const FeatureOptionRule& rule)
        : m_access(access), m_feature(rule.feature), m_rule(rule),
          m_entry(access.m_featureDictionary->GetEntry(rule.feature)) {}

    Answer Find() const {
        switch (m_rule.kind) {
        case FeatureOptionRule::Kind::Ticket:
            return IsSupported() ? FromTicket(TicketOption()) : Answer{};
        case FeatureOptionRule::Kind::Document:
            return m_rule.keywords.empty() ? FromDocumentOption() : FromDocument(ReadDocument());
        case FeatureOptionRule::Kind::AttributeBytes:
            return Enforced(FromAttributeBytes());
        case FeatureOptionRule::Kind::DocumentThenAttributeBytes:
            return Enforced(FromDocumentThenAttributeBytes({}));
        case FeatureOptionRule::Kind::TicketThenAttributeBytes:
            return TicketThenAttributeBytes();
        case FeatureOptionRule::Kind::CoverOptions:
            return CoverOptions();
        case FeatureOptionRule::Kind::Fold:
            return Fold();
        case FeatureOptionRule::Kind::HolePunch:
            return HolePunch();
        case FeatureOptionRule::Kind::JobType:
            return JobType();
        case FeatureOptionRule::Kind::PageLayout:
            return PageLayout();
        case FeatureOptionRule::Kind::Sides:
            return Sides();
        case FeatureOptionRule::Kind::Staple:
            return Staple();
        }
        return {};
    }

private:
    /// An element of the public document settings.
    struct DocumentElement {
        bool isPresent = false;
        bool isSpecified = false;
        CXString text;
    };

    // ---- The places

    bool IsSupported() const { return m_access.IsSupportedFeature(m_feature); }

    CXString TicketOption(const CXString& ticketFeature) const {
        CXString option;
        m_access.m_ticket.GetCurrentValueOptionFeature(ticketFeature, option);
        return option;
    }
    CXString TicketOption() const { return TicketOption(m_entry.printTicketFeatureName); }

    std::optional<tagValueEnum> DictionaryValueOfTicketOption(tagFeatureEnum feature,
                                                              const CXString& option) const {
        const NativeXmlConfigOptionValueDictionary& dictionary = *m_access.m_optionValueDictionary;
        if (option.IsEmpty() || !dictionary.IsPrintTicketNamePresent(feature, option.View())) return {};
        return dictionary.GetEntryByPrintTicketName(feature, option.View()).value;
    }

    /// Unspecified, by the ticket, for an option without a meaning here.
    Answer FromTicket(const CXString& option) const {
        if (option.IsEmpty()) return {};
        Answer answer{{}, FeatureValueSource::PrintTicket};
        if (m_rule.keywords.empty()) {
            if (const auto value = DictionaryValueOfTicketOption(m_feature, option)) answer.value = *value;
        } else if (const auto* const row = FindKeyword(m_rule.keywords, option.View())) {
            answer.value = row->value;
        }
        return answer;
    }

    DocumentElement ReadDocument() const {
        DocumentElement element;
        element.isPresent = m_access.GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(
                                m_entry.wideCpssFeatureName, element.isSpecified, element.text) == S_OK;
        return element;
    }

    Answer FromDocument(const DocumentElement& element) const {
        if (!element.isPresent) return {};
        Answer answer{{}, FeatureValueSource::PublicDocumentSettings};
        if (const auto* const row = FindKeyword(m_rule.keywords, element.text.View()))
            answer.value = SimpleOptionValue(element.isSpecified, row->value);
        return answer;
    }
    Answer FromDocumentOption() const {
        Answer answer;
        if (m_access.TryGetOptionValueFromOrvelPublicDocSettings(m_feature, answer.value))
            answer.source = FeatureValueSource::PublicDocumentSettings;
        return answer;
    }

    Answer FromAttributeBytes() const {
        const SimpleOptionValue value = m_access.TryGetOptionValueFromAttributeBytesIfExists(m_feature);
        const bool isThere = value.IsSpecified() || value.GetValue() != VAL_UNSPECIFIED;
        return {value, isThere ? FeatureValueSource::AttributeBytes : FeatureValueSource::None};
    }

    /// An element hides the attribute bytes, also if its text is no option: then the value stays as it is.
    Answer FromDocumentThenAttributeBytes(SimpleOptionValue value) const {
        const bool isThere = m_access.TryGetOptionValueFromOrvelPublicDocSettings(m_feature, value);
        return isThere ? Answer{value, FeatureValueSource::PublicDocumentSettings} : FromAttributeBytes();
    }

    Answer Enforced(Answer answer) const {
        const bool hadValue = answer.value.GetValue() != VAL_UNSPECIFIED;
        if (!m_access.EnforceRequiredOptionFeatureIfNecessary(m_feature, answer.value) || hadValue)
            return answer;
        answer.source = answer.value.GetValue() != VAL_UNSPECIFIED ? FeatureValueSource::FactoryDefault
                                                                   : FeatureValueSource::Rule;
        return answer;
    }

    // ---- The rules

    Answer TicketThenAttributeBytes() const {
        if (!IsSupported()) return {};
        if (const auto value = DictionaryValueOfTicketOption(m_feature, TicketOption()))
            return {*value, FeatureValueSource::PrintTicket};
        return Enforced(FromAttributeBytes());
    }

    Answer CoverOptions() const {
        Answer answer = Enforced(FromDocumentThenAttributeBytes({}));
        if (answer.value.GetValuePlusSpecifiedState() != VAL_UNSPECIFIED) return answer;
        return {VAL_COVER_OPTION_NONE, FeatureValueSource::Rule};
    }

    /// An option that says that there is no fold decides, too.
    Answer Fold() const {
        if (!IsSupported()) return {};
        if (const auto value = DictionaryValueOfTicketOption(m_feature, TicketOption()))
            return {*value, FeatureValueSource::PrintTicket};
        return Enforced(FromDocumentThenAttributeBytes({}));
    }

    /// One feature of the ticket says how many holes there are and where; the driver has a feature for counts
    /// and one for the positions of each count.
    Answer HolePunch() const {
        if (!IsSupported()) return {};
        const auto inTicket = HolePunchOfTicket();
        return Enforced(inTicket ? *inTicket : FromDocumentThenAttributeBytes({}));
    }

    std::optional<Answer> HolePunchOfTicket() const {
        if (!m_access.IsSupportedFeature(FEAT_MS_JOB_HOLE_PUNCH)) return {};
        const auto inTicket = DictionaryValueOfTicketOption(
            FEAT_MS_JOB_HOLE_PUNCH,
            TicketOption(
                m_access.m_featureDictionary->GetEntry(FEAT_MS_JOB_HOLE_PUNCH).printTicketFeatureName));
        if (!inTicket) return {};
        tagValueEnum count = VAL_UNSPECIFIED;
        tagValueEnum twoHoles = VAL_UNSPECIFIED;
        tagValueEnum threeHoles = VAL_UNSPECIFIED;
        tagValueEnum fourHoles = VAL_UNSPECIFIED;
        OcptImportAndExport::DetermineDataModelHolePunchValuesFromPrintTicketValue(
            *inTicket, m_access.m_holePunchOnOnly, m_access.m_holeCountsOnly,
            m_access.m_anyHolePositionsSupported, m_access.m_twoHoleSupported, m_access.m_threeHoleSupported,
            m_access.m_fourHoleSupported, m_access.m_twoHolePositionsSupported,
            m_access.m_threeHolePositionsSupported, m_access.m_fourHolePositionsSupported, count, twoHoles,
            threeHoles, fourHoles);
        const tagValueEnum value = m_feature == FEAT_FINISHING_2_HOLE_PUNCH   ? twoHoles
                                   : m_feature == FEAT_FINISHING_3_HOLE_PUNCH ? threeHoles
                                   : m_feature == FEAT_FINISHING_4_HOLE_PUNCH ? fourHoles
                                                                              : count;
        return Answer{value, FeatureValueSource::PrintTicket};
    }

    /// The ticket's passcode makes a job a secure one, or keeps it from being one. No job is without a type.
    Answer JobType() const {
        bool isPinOff = false;
        if (m_access.IsSupportedFeature(FEAT_MS_PIN_PRINTING)) {
            const CXString pin = TicketOption(
                m_access.m_featureDictionary->GetEntry(FEAT_MS_PIN_PRINTING).printTicketFeatureName);
            if (pin.CompareNoCase(L"on") == 0)
                return {VAL_JOB_TYPE_SECURE_PRINT, FeatureValueSource::PrintTicket};
            isPinOff = pin.CompareNoCase(L"off") == 0;
        }
        Answer answer =
            Enforced(FromDocumentThenAttributeBytes(SimpleOptionValue(false, VAL_JOB_TYPE_NORMAL_PRINT)));
        if (!answer.value.IsSpecified() || answer.value.GetValue() == VAL_JOB_TYPE_NONE)
            return {VAL_JOB_TYPE_NORMAL_PRINT, FeatureValueSource::Rule};
        if (isPinOff && answer.value.GetValue() == VAL_JOB_TYPE_SECURE_PRINT)
            return {VAL_JOB_TYPE_NORMAL_PRINT, FeatureValueSource::PrintTicket};
        return answer;
    }

    /// The one answer that has a value without being specified: one page, where the ticket knows no layout.
    Answer PageLayout() const {
        const wchar_t* const ticketFeature = m_access.SupportedPageLayoutFeature();
        if (ticketFeature == nullptr) return {SimpleOptionValue(false, VAL_PAGE_LAYOUT_NUP_1)};
        if (const auto value = DictionaryValueOfTicketOption(m_feature, TicketOption(ticketFeature)))
            return {*value, FeatureValueSource::PrintTicket};
        return {VAL_PAGE_LAYOUT_NUP_1, FeatureValueSource::Rule};
    }

    /// The document settings can say that nobody chose, whatever the ticket holds; what they choose counts
    /// only where the ticket is silent.
    Answer Sides() const {
        if (!IsSupported()) return {};
        const DocumentElement element = ReadDocument();
        if (element.isPresent && !element.isSpecified)
            return {{}, FeatureValueSource::PublicDocumentSettings};
        const CXString option = TicketOption();
        if (option.IsEmpty()) return FromDocument(element);
        Answer answer{{}, FeatureValueSource::PrintTicket};
        const auto value = DictionaryValueOfTicketOption(m_feature, option);
        if (value && FeatureKeywordTables::FindValue(m_rule.keywords, *value) != nullptr)
            answer.value = *value;
        return answer;
    }

    /// Of a device whose ticket says where the staples go, the features for one and for two staples answer.
    Answer Staple() const {
        if (!IsSupported()) return {};
        std::vector<IPrintTicketAccess::OptionCapability> options;
        m_access.m_ticket.GetCapabilitiesOptionFeature(m_entry.printTicketFeatureName, options);
        const bool hasPositions = std::any_of(options.begin(), options.end(), [](const auto& option) {
            return std::get<0>(option) == L"StapleTopRight";
        });
        return hasPositions ? Answer{} : FromTicket(TicketOption());
    }

    const DataModelLessFeatureAccess& m_access;
    tagFeatureEnum m_feature;
    const FeatureOptionRule& m_rule;
    const NativeXmlConfigFeatureEntry& m_entry;
};

SimpleOptionValue DataModelLessFeatureAccess::GetOptionValue(tagFeatureEnum feature) const {
    FeatureValueSource source{};
    return GetOptionValue(feature, source);
}

SimpleOptionValue DataModelLessFeatureAccess::GetOptionValue(tagFeatureEnum feature,
                                                             FeatureValueSource& source) const {
    source = FeatureValueSource::None;
    const FeatureOptionRule* const rule = FindFeatureOptionRule(feature);
    if (rule == nullptr) return {};
    const Answer answer = OptionRules(*this, *rule).Find();
    source = answer.source;
    return answer.value;
}
