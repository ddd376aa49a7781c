#include "FeatureAccess/DocumentSettings.h"

#include "DataModel/NativeXmlConfigCpssOptionValueDictionary.h"

using namespace DataModelIds;

namespace {

/// The names from the outermost collection that is wanted to the feature.
class Way {
public:
    explicit Way(const WantedFeature& wanted) {
        for (const CXString* const name : wanted.collectionNames)
            if (name != nullptr) m_names[m_count++] = name;
        m_names[m_count++] = &wanted.DocumentName();
    }

    [[nodiscard]] std::span<const CXString* const> Names() const { return std::span(m_names).first(m_count); }

private:
    std::array<const CXString*, 3> m_names = {};
    std::size_t m_count = 0;
};

CXString TextOfElement(const XmlDomNode& element) { return element.GetTextValue(); }

} // namespace

DocumentSettings::DocumentSettings(Source source)
    : m_source(std::move(source)), m_options(NativeXmlConfigCpssOptionValueDictionary::Instance()) {}

bool DocumentSettings::Ask(const WantedFeature& wanted, FeatureAnswer<tagValueEnum>& answer) const {
    FeatureAnswer<CXString> element;
    const bool isThere = Ask(wanted, element);
    if (isThere) answer = ToOption(wanted, element);
    return isThere;
}

bool DocumentSettings::Ask(const WantedFeature& wanted, FeatureAnswer<int>& answer) const {
    FeatureAnswer<CXString> element;
    if (!Ask(wanted, element)) return false;
    const int value = element.isSpecified ? Number(element.value, false).GetNearestIntValue() : 0;
    answer = {value, element.isSpecified, element.source};
    return true;
}

bool DocumentSettings::Ask(const WantedFeature& wanted, FeatureAnswer<CXString>& answer) const {
    const Way way(wanted);
    return AskElement(way.Names(), wanted.path.Index(), answer, TextOfElement) == S_OK;
}

bool DocumentSettings::Ask(const WantedFeature& wanted, FeatureAnswer<CollectionState>& answer) const {
    const Way way(wanted);
    if (!Find(Document(), way.Names(), wanted.path.Index()).node) return false;
    answer = {CollectionState::Specified, true, FeatureValueSource::PublicDocumentSettings};
    return true;
}

bool DocumentSettings::Ask(const WantedFeature& wanted, FeatureAnswer<unsigned int>& answer) const {
    const Way way(wanted);
    const HRESULT result =
        AskElement(way.Names(), wanted.path.Index(), answer, PublicDocSettingsDocument::CountEntries);
    if (!answer.isSpecified) answer.value = 0;
    return result == S_OK;
}

FeatureAnswer<tagValueEnum> DocumentSettings::ToOption(const WantedFeature& wanted,
                                                       const FeatureAnswer<CXString>& element) const {
    const std::wstring_view text = element.value.View();
    tagValueEnum value = VAL_UNSPECIFIED;
    bool isOption = false;
    if (!wanted.words.AreOfDictionary()) {
        value = wanted.words.Find(text);
        isOption = value != VAL_UNSPECIFIED;
    } else if (m_options->IsCpssNamePresent(wanted.Feature(), text)) {
        value = m_options->GetEntryByCpssName(wanted.Feature(), text).value;
        isOption = true;
    }
    return {value, isOption && element.isSpecified, element.source};
}

HRESULT DocumentSettings::GetText(const CXString& cpssName, FeatureAnswer<CXString>& answer) const {
    const CXString* const names[] = {&cpssName};
    return AskElement(names, {}, answer, TextOfElement);
}

HRESULT DocumentSettings::GetNumberOfChildren(const CXString& cpssName,
                                              FeatureAnswer<unsigned int>& answer) const {
    const CXString* const names[] = {&cpssName};
    return AskElement(names, {}, answer, PublicDocSettingsDocument::CountEntries);
}

bool DocumentSettings::Element::Enter(XmlDomNode::Pointer next) {
    node = std::move(next);
    isSpecified = isSpecified && node && PublicDocSettingsDocument::IsSpecified(*node);
    return node != nullptr;
}

DocumentSettings::Element DocumentSettings::Find(const PublicDocSettingsDocument& document, Names names,
                                                 Index index) {
    Element element;
    for (std::size_t at = 0; at < names.size(); ++at) {
        const bool isMember = at != 0 && at + 1 == names.size();
        if (isMember && index && !element.Enter(PublicDocSettingsDocument::FindEntry(*element.node, *index)))
            break;
        if (!element.Enter(at == 0 ? document.Find(*names[at])
                                   : element.node->FindNamedChildElementNodeRecursive(*names[at], 0)))
            break;
    }
    return element;
}

template <typename Value, typename Read>
HRESULT DocumentSettings::AskElement(Names names, Index index, FeatureAnswer<Value>& answer,
                                     Read read) const {
    const PublicDocSettingsDocument document = Document();
    answer = {};
    const HRESULT result = PublicDocSettingsDocument::Guarded(*names.back(), [&] {
        const Element element = Find(document, names, index);
        if (!element.node) return S_FALSE;
        answer = {read(*element.node), element.isSpecified, FeatureValueSource::PublicDocumentSettings};
        return S_OK;
    });
    if (result != S_OK) answer = {};
    return result;
}

HRESULT DocumentSettings::SetText(const CXString& cpssName, const CXString& syntax, bool isSpecified,
                                  const CXString& text) const {
    const PublicDocSettingsDocument document = Document();
    return PublicDocSettingsDocument::Guarded(
        cpssName, [&] { return document.SetString(cpssName, syntax, isSpecified, text); });
}

bool DocumentSettings::IsPresent(const CXString& cpssName, PublicDocSettingsDocument::Depth depth) const {
    return Document().Find(cpssName, depth) != nullptr;
}
