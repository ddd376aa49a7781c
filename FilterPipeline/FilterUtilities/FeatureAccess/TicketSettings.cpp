#include "FeatureAccess/TicketSettings.h"

#include "DataModel/NativeXmlConfigOptionValueDictionary.h"
#include "FeatureAccess/FeatureRuleTable.h"

#include <algorithm>

using namespace DataModelIds;

TicketSettings::TicketSettings(IPrintTicketAccess* access)
    : m_access(access), m_options(NativeXmlConfigOptionValueDictionary::Instance()) {}

const CXString* TicketSettings::FindSupportedName(const NativeXmlConfigFeatureEntry& names) const {
    if (m_access == nullptr) return nullptr;
    const auto isSupported = [&](const CXString& name) {
        return m_access->IsSupportedPrintTicketFeature(name);
    };
    const std::span<const CXString> several = FindTicketNames(names.feature);
    if (several.empty())
        return isSupported(names.printTicketFeatureName) ? &names.printTicketFeatureName : nullptr;
    const auto found = std::ranges::find_if(several, isSupported);
    return found == several.end() ? nullptr : &*found;
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
    // The access answers 0 for a parameter that is not there; its text is empty then.
    CXString text;
    m_access->GetCurrentValueStringFeature(wanted.TicketName(), text);
    if (text.IsEmpty()) return false;
    answer = {GetInteger(wanted.TicketName()), true, FeatureValueSource::PrintTicket};
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

int TicketSettings::GetInteger(const CXString& ticketName) const {
    return m_access != nullptr ? m_access->GetCurrentValueIntegerFeature(ticketName) : 0;
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
    // Words can be those of another place: the ticket's own are in the dictionary then. A value has one row
    // there, which may be of another feature.
    const bool isOfDictionary =
        m_options->IsValuePresent(value) && m_options->GetEntry(value).feature == wanted.Feature();
    const CXString option =
        isOfDictionary ? CXString(m_options->GetEntry(value).printTicketOptionName) : TextOf(*row);
    m_access->SetCurrentValueOptionFeature(wanted.TicketName(), option);
}
