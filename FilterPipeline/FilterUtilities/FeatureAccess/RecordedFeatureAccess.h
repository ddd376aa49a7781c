#pragma once

#include "ComSupport/FilterUtilitiesExport.h"
#include "FeatureAccess/ForwardedFeatureAccess.h"
#include "FeatureAccess/RecordedAnswer.h"

#include <functional>
#include <optional>
#include <vector>

/// Answers as another access does, and remembers what it was asked: so that who writes a line for the device
/// can say why it stands. Recorded are the questions about the job; support, factory defaults, names and what
/// is set pass through. A question that throws is not recorded, and a secret's value never is.
class OV_FILTER_UTILITIES_API RecordedFeatureAccess final : public ForwardedFeatureAccess {
public:
    /// Tells which place decided, by asking again.
    using SourceOf = std::function<FeatureValueSource(const FeatureQuestion&)>;

    /// The access must outlive this object. Without the function, no source is known.
    explicit RecordedFeatureAccess(IFilterFeatureAccess& access, SourceOf sourceOf = {});
    ~RecordedFeatureAccess() override;

    /// In the order of the questions.
    [[nodiscard]] const std::vector<RecordedAnswer>& Answers() const { return m_answers; }
    void Forget() { m_answers.clear(); }

    /// From now on this question is answered as if nobody had said anything; it is recorded as such. So that
    /// who asks again finds what depends on it.
    void Withhold(const FeatureQuestion& question) { m_withheld = question; }

    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum grandparent, tagFeatureEnum parent,
                              tagFeatureEnum feature) const override;
    bool GetUnencodedPassword(ByteBuffer& password, tagFeatureEnum feature) const override;
    bool GetDimensionValue(tagFeatureEnum feature, Dimension& value) const override;
    bool GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent, unsigned int index,
                         tagFeatureEnum feature, int& value) const override;
    bool GetIntegerValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                         int& value) const override;
    bool GetIntegerValue(tagFeatureEnum parent, tagFeatureEnum feature, int& value) const override;
    bool GetIntegerValue(tagFeatureEnum feature, int& value) const override;
    bool GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent, unsigned int index,
                        tagFeatureEnum feature, CXString& value) const override;
    bool GetStringValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                        CXString& value) const override;
    bool GetStringValue(tagFeatureEnum parent, tagFeatureEnum feature, CXString& value) const override;
    bool GetStringValue(tagFeatureEnum parent, unsigned int index, tagFeatureEnum feature,
                        CXString& value) const override;
    bool GetStringValue(tagFeatureEnum feature, CXString& value) const override;
    [[nodiscard]] SimpleOptionValue GetOptionValue(tagFeatureEnum feature) const override;
    [[nodiscard]] SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum grandparent,
                                                              tagFeatureEnum parent,
                                                              tagFeatureEnum feature) const override;
    [[nodiscard]] SimpleOptionValue GetOptionValueWithContext(tagFeatureEnum parent,
                                                              tagFeatureEnum feature) const override;
    bool GetBooleanValue(tagFeatureEnum feature, bool& value) const override;
    bool GetDateTimeValue(tagFeatureEnum parent, tagFeatureEnum feature, UtcTime& value) const override;
    bool GetDateTimeValue(tagFeatureEnum feature, UtcTime& value) const override;
    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum grandparent, tagFeatureEnum parent,
                                             tagFeatureEnum feature) const override;
    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum parent, tagFeatureEnum feature) const override;
    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum feature) const override;
    bool GetBytesValue(tagFeatureEnum grandparent, tagFeatureEnum parent, tagFeatureEnum feature,
                       ByteBuffer& value) const override;
    bool GetBytesValue(tagFeatureEnum parent, tagFeatureEnum feature, ByteBuffer& value) const override;
    bool GetBytesValue(tagFeatureEnum feature, ByteBuffer& value) const override;
    [[nodiscard]] DataModelIds::tagValueEnum GetEffectiveOrientation() const override;
    bool GetOutputSize(tagFeatureEnum feature, unsigned int index, Dimension& first,
                       Dimension& second) const override;
    bool GetOutputSize(tagFeatureEnum feature, Dimension& first, Dimension& second) const override;
    bool GetOutputSize(Dimension& first, Dimension& second) const override;
    [[nodiscard]] unsigned int
    GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum parent, tagFeatureEnum feature) const override;
    [[nodiscard]] unsigned int
    GetCountOfSpecified1SetOfCollectionElements(tagFeatureEnum feature) const override;

private:
    [[nodiscard]] bool IsWithheld(const FeatureQuestion& question) const { return m_withheld == question; }
    /// Gives back whether the value is specified.
    bool Record(FeatureQuestionKind kind, const FeaturePath& path, RecordedAnswer::Value value,
                bool isSpecified) const;
    SimpleOptionValue Record(const FeaturePath& path, const SimpleOptionValue& option) const;

    SourceOf m_sourceOf;
    std::optional<FeatureQuestion> m_withheld;
    mutable std::vector<RecordedAnswer> m_answers;
};
