#include "DataModelLessFeatureAccess.h"

#include "MediaKeywordTables.h"

#include <DeviceDescription/IPrintTicketAccess.h>
#include <Media/MediaUtilities.h>
#include <Xml/MicrosoftXmlParser.h>

using namespace DataModelIds;

namespace {

using FindValue = tagValueEnum (*)(std::wstring_view keyword) noexcept;

/// How the members of the media collection read the ticket.
struct MediaMember {
    tagFeatureEnum feature;
    FindValue findValue;
};
constexpr MediaMember mediaMembers[] = {
    {FEAT_MEDIA_COLOR, MediaKeywordTables::FindColor},
    {FEAT_EFFECTIVE_MEDIA_TYPE, MediaKeywordTables::FindType},
    {FEAT_INPUT_TRAY, MediaKeywordTables::FindInputTray},
};

FindValue FindMember(tagFeatureEnum feature) {
    for (const MediaMember& member : mediaMembers)
        if (member.feature == feature) return member.findValue;
    return nullptr;
}

SimpleOptionValue FromTicket(const IPrintTicketAccess& ticket, const CXString& feature, FindValue findValue,
                             FeatureValueSource& source) {
    CXString option;
    ticket.GetCurrentValueOptionFeature(feature, option);
    if (!option.IsEmpty()) source = FeatureValueSource::PrintTicket;
    return findValue(option.View());
}

tagValueEnum ValueIfSpecified(const SimpleOptionValue& option, tagValueEnum otherwise) {
    const tagValueEnum value = option.GetValuePlusSpecifiedState();
    return value != VAL_UNSPECIFIED ? value : otherwise;
}

int InMicrons(const Dimension& dimension) {
    return dimension.GetValue(Dimension::Micron).GetIntValue(0.499999); // to nearest
}

} // namespace

// ---- The media collection

SimpleOptionValue DataModelLessFeatureAccess::GetOptionValueWithContext(tagFeatureEnum, tagFeatureEnum,
                                                                        tagFeatureEnum) const {
    return {};
}

SimpleOptionValue DataModelLessFeatureAccess::GetOptionValueWithContext(tagFeatureEnum parent,
                                                                        tagFeatureEnum feature) const {
    FeatureValueSource source{};
    return GetOptionValueWithContext(parent, feature, source);
}

SimpleOptionValue DataModelLessFeatureAccess::GetOptionValueWithContext(tagFeatureEnum parent,
                                                                        tagFeatureEnum feature,
                                                                        FeatureValueSource& source) const {
    source = FeatureValueSource::None;
    const FindValue findValue = FindMember(feature);
    if (parent != FEAT_MEDIA_COL || findValue == nullptr) return {};
    if (feature == FEAT_INPUT_TRAY) {
        const wchar_t* const name = SupportedInputTrayFeature();
        return name != nullptr ? FromTicket(m_ticket, name, findValue, source) : SimpleOptionValue();
    }
    if (!IsSupportedFeature(feature)) return {};
    return FromTicket(m_ticket, GetFeaturePrintTicketName(feature), findValue, source);
}

SimpleOptionValue DataModelLessFeatureAccess::GetEffectiveJobLevelMediaSize() const {
    FeatureValueSource source{};
    return GetEffectiveJobLevelMediaSize(source);
}

SimpleOptionValue
DataModelLessFeatureAccess::GetEffectiveJobLevelMediaSize(FeatureValueSource& source) const {
    source = FeatureValueSource::None;
    bool isFittedToNewSize = false;
    CXString keyword; // The new size is not taken from it, but from the attribute bytes.
    GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(
        GetFeatureCpssName(FEAT_FIT_TO_NEW_SIZE_PRINT_TICKET_KEYWORD), isFittedToNewSize, keyword);
    if (!isFittedToNewSize)
        return FromTicket(m_ticket, GetFeaturePrintTicketName(FEAT_APPLICATION_MEDIA_SIZE_OPTION),
                          MediaKeywordTables::FindSize, source);
    const SimpleOptionValue size =
        TryGetOptionValueFromAttributeBytesIfExists(FEAT_MEDIA_COL, FEAT_MEDIA_SIZE_OPTION);
    if (size != SimpleOptionValue()) source = FeatureValueSource::AttributeBytes;
    return size;
}

// ---- The sheet

DataModelLessFeatureAccess::tagValueEnum DataModelLessFeatureAccess::GetEffectiveOrientation() const {
    return MediaUtilities::GetEffectiveOrientation(
        ValueIfSpecified(GetOptionValue(FEAT_MS_ORIENTATION), VAL_MS_ORIENTATION_PORTRAIT),
        ValueIfSpecified(GetOptionValue(FEAT_PAGE_LAYOUT), VAL_UNSPECIFIED),
        ValueIfSpecified(GetOptionValue(FEAT_BOOKLET), VAL_UNSPECIFIED), InMicrons(m_firstOutputSize),
        InMicrons(m_secondOutputSize));
}

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
