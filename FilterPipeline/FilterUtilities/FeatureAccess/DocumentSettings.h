#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "EmbeddedSettings/PublicDocSettingsDocument.h"
#include "FeatureAccess/FeatureAnswer.h"
#include "FeatureAccess/WantedFeature.h"

#include <functional>
#include <optional>
#include <span>

class NativeXmlConfigCpssOptionValueDictionary;

/// A job's features in its public document settings: elements by CPSS name, at any depth unless an operation
/// says otherwise, or in the collections that are wanted: there in the entry of the last one that the path's
/// position chooses. An element is an answer whatever its text; it hides the places after it. What stands in
/// a collection or an entry that is not specified is not specified either.
class OV_FILTER_UTILITIES_API DocumentSettings {
public:
    /// Gives the parsed settings; null if there are none. What it throws passes through.
    using Source = std::function<const MicrosoftXmlParser*()>;

    explicit DocumentSettings(Source source);

    /// The option is unspecified if the text is not one of the feature.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<DataModelIds::tagValueEnum>& answer) const;
    /// Rounded to the nearest; 0 for an element that is not specified, and for a text that is no number.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<int>& answer) const;
    bool Ask(const WantedFeature& wanted, FeatureAnswer<CXString>& answer) const;
    /// Deliberate: an element that is there is specified, whatever it says itself.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<CollectionState>& answer) const;
    /// The elements in a collection; none in one that is not specified.
    bool Ask(const WantedFeature& wanted, FeatureAnswer<unsigned int>& answer) const;

    [[nodiscard]] FeatureAnswer<DataModelIds::tagValueEnum>
    ToOption(const WantedFeature& wanted, const FeatureAnswer<CXString>& element) const;

    /// Codes as those of PublicDocSettingsDocument.
    HRESULT GetText(const CXString& cpssName, FeatureAnswer<CXString>& answer) const;
    HRESULT GetNumberOfChildren(const CXString& cpssName, FeatureAnswer<unsigned int>& answer) const;
    HRESULT SetText(const CXString& cpssName, const CXString& syntax, bool isSpecified,
                    const CXString& text) const;
    /// Failures of the platform's DOM are thrown.
    [[nodiscard]] bool
    IsPresent(const CXString& cpssName,
              PublicDocSettingsDocument::Depth depth = PublicDocSettingsDocument::Depth::Any) const;

private:
    /// The names on the way to an element, its own last.
    using Names = std::span<const CXString* const>;
    using Index = std::optional<unsigned int>;
    /// Null if there is none.
    struct OV_FILTER_UTILITIES_API Element {
        XmlDomNode::Pointer node = {};
        bool isSpecified = true;

        bool Enter(XmlDomNode::Pointer next);
    };

    [[nodiscard]] static Element Find(const PublicDocSettingsDocument& document, Names names, Index index);
    template <typename Value, typename Read>
    HRESULT AskElement(Names names, Index index, FeatureAnswer<Value>& answer, Read read) const;
    [[nodiscard]] PublicDocSettingsDocument Document() const { return PublicDocSettingsDocument(m_source()); }

    Source m_source;
    const NativeXmlConfigCpssOptionValueDictionary* m_options;
};
