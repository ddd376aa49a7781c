#pragma once

#include "EmbeddedSettings/PublicDocSettingsDocument.h"
#include "FeatureAccess/FeatureAnswer.h"
#include "FeatureAccess/WantedFeature.h"

#include <functional>

class NativeXmlConfigCpssOptionValueDictionary;

/// A job's features in its public document settings: elements by CPSS name, at any depth unless an operation
/// says otherwise. An element is an answer whatever its text; it hides the places after it.
class DocumentSettings {
public:
    /// Gives the parsed settings; null if there are none. What it throws passes through.
    using Source = std::function<const MicrosoftXmlParser*()>;

    explicit DocumentSettings(Source source);

    /// The option is unspecified if the text is none.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<DataModelIds::tagValueEnum>& answer) const;
    /// Rounded to the nearest; 0 for an element that is not specified, and for a text that is no number.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<int>& answer) const;
    bool Ask(const WantedFeature& wanted, FeatureAnswer<CXString>& answer) const;
    /// Deliberate: an element that is there is specified, whatever it says itself.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<bool>& answer) const;
    /// The elements in a collection; none in one that is not specified.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<unsigned int>& answer) const;
    /// Settings have no values of other kinds.
    template <typename Value>
    bool Ask(const WantedFeature&, FeatureAnswer<Value>&) const {
        return false;
    }

    [[nodiscard]] FeatureAnswer<DataModelIds::tagValueEnum>
    ToOption(const WantedFeature& wanted, const FeatureAnswer<CXString>& element) const;

    // Codes as those of PublicDocSettingsDocument.
    HRESULT GetText(const CXString& cpssName, FeatureAnswer<CXString>& answer) const;
    HRESULT GetNumberOfChildren(const CXString& cpssName, FeatureAnswer<unsigned int>& answer) const;
    HRESULT SetText(const CXString& cpssName, const CXString& syntax, bool isSpecified,
                    const CXString& text) const;
    /// Failures of the platform's DOM are thrown.
    [[nodiscard]] bool
    IsPresent(const CXString& cpssName,
              PublicDocSettingsDocument::Depth depth = PublicDocSettingsDocument::Depth::Any) const;

private:
    [[nodiscard]] PublicDocSettingsDocument Document() const { return PublicDocSettingsDocument(m_source()); }

    Source m_source;
    const NativeXmlConfigCpssOptionValueDictionary* m_options;
};
