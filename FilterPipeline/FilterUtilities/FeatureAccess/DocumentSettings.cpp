#include "FeatureAccess/DocumentSettings.h"

#include "DataModel/NativeXmlConfigCpssOptionValueDictionary.h"

using namespace DataModelIds;

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
    return GetText(wanted.DocumentName(), answer) == S_OK;
}

bool DocumentSettings::Ask(const WantedFeature& wanted, FeatureAnswer<bool>& answer) const {
    if (!IsPresent(wanted.DocumentName())) return false;
    answer = {true, true, FeatureValueSource::PublicDocumentSettings};
    return true;
}

bool DocumentSettings::Ask(const WantedFeature& wanted, FeatureAnswer<unsigned int>& answer) const {
    const HRESULT result = GetNumberOfChildren(wanted.DocumentName(), answer);
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
    const PublicDocSettingsDocument document = Document();
    answer = {};
    const HRESULT result = PublicDocSettingsDocument::Guarded(cpssName, [&] {
        return document.GetString(cpssName, PublicDocSettingsDocument::Depth::Any, answer.isSpecified,
                                  answer.value);
    });
    if (result != S_OK)
        answer = {};
    else
        answer.source = FeatureValueSource::PublicDocumentSettings;
    return result;
}

HRESULT DocumentSettings::GetNumberOfChildren(const CXString& cpssName,
                                              FeatureAnswer<unsigned int>& answer) const {
    const PublicDocSettingsDocument document = Document();
    answer = {};
    const HRESULT result = PublicDocSettingsDocument::Guarded(
        cpssName, [&] { return document.GetNumberOfChildren(cpssName, answer.isSpecified, answer.value); });
    if (result != S_OK)
        answer = {};
    else
        answer.source = FeatureValueSource::PublicDocumentSettings;
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
