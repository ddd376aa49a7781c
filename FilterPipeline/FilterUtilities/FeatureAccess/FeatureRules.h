#pragma once

#include "FeatureAccess/DataModelLessFeatureAccess.h"
#include "FeatureAccess/FeaturePlaces.h"
#include "FeatureAccess/RecordedAnswer.h"

#include <optional>

/// Answers the questions to a feature access by the table's rules: most by the places alone, the odd ones by
/// a function of their own. A view, made for a question.
class FeatureRules {
public:
    using tagFeatureEnum = DataModelIds::tagFeatureEnum;
    using tagValueEnum = DataModelIds::tagValueEnum;

    explicit FeatureRules(const DataModelLessFeatureAccess& access)
        : m_access(access), m_places(*access.m_places) {}

    [[nodiscard]] FeatureAnswer<tagValueEnum> Option(const FeaturePath& path) const;
    [[nodiscard]] FeatureAnswer<int> Integer(const FeaturePath& path) const;
    [[nodiscard]] FeatureAnswer<Dimension> Length(const FeaturePath& path) const;
    [[nodiscard]] FeatureAnswer<CXString> Text(const FeaturePath& path) const;
    [[nodiscard]] FeatureAnswer<bool> Flag(const FeaturePath& path) const;
    /// As UTF-8.
    [[nodiscard]] FeatureAnswer<ByteBuffer> Password(const FeaturePath& path) const;
    [[nodiscard]] FeatureAnswer<CollectionState> Collection(const FeaturePath& path) const;
    [[nodiscard]] FeatureAnswer<unsigned int> Entries(const FeaturePath& path) const;
    [[nodiscard]] FeatureAnswer<tagValueEnum> MediaSize() const;
    [[nodiscard]] FeatureAnswer<tagValueEnum> Orientation() const;
    [[nodiscard]] FeatureAnswer<RecordedAnswer::Size> OutputSize(const FeaturePath& path) const;

    /// To whatever question; the value of a secret is left out.
    [[nodiscard]] RecordedAnswer Answer(const FeatureQuestion& question) const;

    /// An element of the settings by this name, or the attribute bytes of the feature.
    [[nodiscard]] FeatureAnswer<CXString> TextOfSettingsOrBytes(const CXString& cpssName,
                                                                tagFeatureEnum feature) const;

private:
    [[nodiscard]] RecordedAnswer AnswerTo(const FeatureQuestion& question) const;

    using OptionAnswer = FeatureAnswer<tagValueEnum>;

    template <typename Value>
    [[nodiscard]] FeatureAnswer<Value> Ask(FeatureQuestionKind kind, const FeaturePath& path) const {
        const FeatureRule* const rule = FindFeatureRule(kind, path);
        return rule != nullptr ? m_places.Ask<Value>(*rule, path) : FeatureAnswer<Value>();
    }

    // The odd ones.
    [[nodiscard]] FeatureAnswer<unsigned int> AnnotationElements(const FeatureRule& rule) const;
    [[nodiscard]] FeatureAnswer<int> Copies(const FeatureRule& rule) const;
    [[nodiscard]] OptionAnswer CoverOptions(const FeatureRule& rule) const;
    [[nodiscard]] OptionAnswer HolePunch(const FeatureRule& rule) const;
    [[nodiscard]] std::optional<OptionAnswer> HolePunchOfTicket(tagFeatureEnum feature) const;
    [[nodiscard]] FeatureAnswer<CXString> JobName(const FeatureRule& rule) const;
    [[nodiscard]] FeatureAnswer<ByteBuffer> JobPassword(const FeatureRule& rule) const;
    [[nodiscard]] OptionAnswer JobType(const FeatureRule& rule) const;
    [[nodiscard]] OptionAnswer PageLayout(const FeatureRule& rule) const;
    [[nodiscard]] OptionAnswer Sides(const FeatureRule& rule) const;
    [[nodiscard]] OptionAnswer Staple(const FeatureRule& rule) const;
    [[nodiscard]] FeatureAnswer<bool> StartSheet() const;

    const DataModelLessFeatureAccess& m_access;
    const FeaturePlaces& m_places;
};
