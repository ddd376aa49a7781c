#include "FeatureAccess/TicketSettings.h"

#include "DataModel/NativeXmlConfigOptionValueDictionary.h"
#include "DataModel/PrintSchemaKeywordLiterals.h"

#include <algorithm>

using namespace DataModelIds;

namespace {

/// A feature that stands in tickets under one of several names.
struct SeveralNames {
    tagFeatureEnum feature;
    CXString names[2]; // the better one first
};

const SeveralNames* FindSeveralNames(tagFeatureEnum feature) {
    using namespace PrintSchema::Keywords;
    static const SeveralNames rows[] = {
        {FEAT_PAGE_LAYOUT, {NUp::JobNUpAllDocumentsContiguously, NUp::DocumentNUp}},
        {FEAT_INPUT_TRAY, {PageInputBin::FEATURE, JobInputBin::FEATURE}},
    };
    const auto found = std::ranges::find(rows, feature, &SeveralNames::feature);
    return found == std::end(rows) ? nullptr : found;
}

} // namespace

TicketSettings::TicketSettings(IPrintTicketAccess* access)
    : m_access(access), m_options(NativeXmlConfigOptionValueDictionary::Instance()) {}

const CXString* TicketSettings::FindSupportedName(const NativeXmlConfigFeatureEntry& names) const {
    if (m_access == nullptr) return nullptr;
    const auto isSupported = [&](const CXString& name) {
        return m_access->IsSupportedPrintTicketFeature(name);
    };
    if (const SeveralNames* const several = FindSeveralNames(names.feature)) {
        const auto found = std::ranges::find_if(several->names, isSupported);
        return found == std::end(several->names) ? nullptr : found;
    }
    return isSupported(names.printTicketFeatureName) ? &names.printTicketFeatureName : nullptr;
}

bool TicketSettings::Ask(const WantedFeature& wanted, FeatureAnswer<tagValueEnum>& answer) const {
    const CXString option = GetOption(wanted.TicketName());
    if (option.IsEmpty()) return false;
    if (!wanted.words.AreOfDictionary()) {
        answer = ChosenOption(wanted.words.Find(option.View()), FeatureValueSource::PrintTicket);
        return answer.isSpecified;
    }
    const bool isKnown = m_options->IsPrintTicketNamePresent(wanted.Feature(), option.View());
    answer =
        ChosenOption(isKnown ? m_options->GetEntryByPrintTicketName(wanted.Feature(), option.View()).value
                             : VAL_UNSPECIFIED,
                     FeatureValueSource::PrintTicket);
    return isKnown;
}

bool TicketSettings::Ask(const WantedFeature& wanted, FeatureAnswer<int>& answer) const {
    if (m_access == nullptr) return false;
    answer = {m_access->GetCurrentValueIntegerFeature(wanted.TicketName()), true,
              FeatureValueSource::PrintTicket};
    return true;
}

bool TicketSettings::Ask(const WantedFeature& wanted, FeatureAnswer<CXString>& answer) const {
    if (m_access == nullptr) return false;
    m_access->GetCurrentValueStringFeature(wanted.TicketName(), answer.value);
    if (answer.value.IsEmpty()) return false;
    answer.isSpecified = true;
    answer.source = FeatureValueSource::PrintTicket;
    return true;
}

CXString TicketSettings::GetOption(const CXString& ticketName) const {
    CXString option;
    if (m_access != nullptr) m_access->GetCurrentValueOptionFeature(ticketName, option);
    return option;
}

bool TicketSettings::IsOffered(const CXString& ticketName, std::wstring_view option) const {
    std::vector<IPrintTicketAccess::OptionCapability> options;
    if (m_access != nullptr) m_access->GetCapabilitiesOptionFeature(ticketName, options);
    return std::ranges::any_of(
        options, [option](const auto& offered) { return std::get<0>(offered).View() == option; });
}

void TicketSettings::SetOption(const WantedFeature& wanted, tagValueEnum value) const {
    const FeatureWords::Row* const row = wanted.words.FindWritten(value);
    if (m_access == nullptr || row == nullptr) return;
    // Rows can tell the words of another place: the ticket's own are in the dictionary then.
    const CXString option = m_options->IsValuePresent(value)
                                ? CXString(m_options->GetEntry(value).printTicketOptionName)
                                : TextOf(*row);
    m_access->SetCurrentValueOptionFeature(wanted.TicketName(), option);
}
