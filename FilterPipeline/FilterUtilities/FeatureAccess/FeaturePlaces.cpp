#include "FeatureAccess/FeaturePlaces.h"

#include "DataModel/NativeXmlConfigFeatureDictionary.h"

#include <algorithm>

using namespace DataModelIds;

namespace {

constexpr wchar_t keywordSyntax[] = L"keyword";
constexpr wchar_t nameSyntax[] = L"name";

} // namespace

FeaturePlaces::FeaturePlaces(Places places, bool enforcesRequired)
    : m_places(std::move(places)), m_features(NativeXmlConfigFeatureDictionary::Instance()),
      m_enforcesRequired(enforcesRequired) {}

WantedFeature FeaturePlaces::Wanted(const FeaturePath& path, const FeatureWords& words) const {
    WantedFeature wanted{.path = path, .words = words};
    if (m_features->IsFeaturePresent(path.Feature())) {
        wanted.names = &m_features->GetEntry(path.Feature());
        wanted.ticketName = &wanted.names->printTicketFeatureName;
    }
    return wanted;
}

WantedFeature FeaturePlaces::Wanted(const FeatureRule& rule, const FeaturePath& path) const {
    WantedFeature wanted = Wanted(path, rule.words);
    if (!rule.reading.isNamedAlone)
        std::ranges::transform(
            path.Collections(), wanted.collectionNames.begin(),
            [this](tagFeatureEnum collection) { return &Wanted(collection).DocumentName(); });
    return wanted;
}

bool FeaturePlaces::IsSupported(const FeaturePath& path) const {
    return path.Collections().empty() ? FindSupportedName(path) != nullptr : IsSupportedInCollection(path);
}

const CXString* FeaturePlaces::FindSupportedName(const FeaturePath& path) const {
    const NativeXmlConfigFeatureEntry& names = m_features->GetEntry(path.Feature());
    if (names.ticketKind == NativeXmlConfigFeatureEntry::TICKET_KIND)
        return Ticket().FindSupportedName(names);
    return Device().IsSupported(names.cpssFeatureName) ? &names.printTicketFeatureName : nullptr;
}

bool FeaturePlaces::IsSupportedInCollection(const FeaturePath& path) const {
    if (IsSupportedAnywhere(path)) return true;
    if (IsFeatureOfTicket(path)) return FindSupportedName(path) != nullptr;
    const auto name = [&](std::size_t at) -> const CPString& {
        return Wanted(path.Features()[at]).DeviceName();
    };
    return path.Features().size() == 2 ? Device().IsSupported(name(0), name(1))
                                       : Device().IsSupported(name(0), name(1), name(2));
}

bool FeaturePlaces::MustEnforce(const WantedFeature& wanted, bool isSpecified) const {
    return m_enforcesRequired && !isSpecified && Device().IsRequired(wanted.DeviceName());
}

void FeaturePlaces::SetOption(const FeaturePath& path, const SimpleOptionValue& value) const {
    const FeatureRule* const rule = FindFeatureRule(FeatureQuestionKind::Option, path);
    if (rule == nullptr) return;
    const WantedFeature wanted = Wanted(path, rule->words);
    if (rule->writing == FeatureRule::Writing::TicketOption) Ticket().SetOption(wanted, value.GetValue());
    if (rule->writing == FeatureRule::Writing::KeywordElement) {
        const FeatureWords::Row* const word = rule->words.FindWritten(value.GetValue());
        Document().SetText(wanted.DocumentName(), keywordSyntax, value.IsSpecified(),
                           word != nullptr ? TextOf(*word) : CXString());
    }
}

void FeaturePlaces::SetText(const FeaturePath& path, const CXString& text, bool isSpecified) const {
    const FeatureRule* const rule = FindFeatureRule(FeatureQuestionKind::Text, path);
    if (rule == nullptr || rule->writing == FeatureRule::Writing::None) return;
    CXString syntax;
    if (rule->writing == FeatureRule::Writing::NameElement)
        syntax = rule->words.Find(text.View()) != VAL_UNSPECIFIED ? keywordSyntax : nameSyntax;
    Document().SetText(Wanted(path).DocumentName(), syntax, isSpecified, text);
}
