#pragma once

#include "FeatureAccess/FeatureQuestion.h"
#include "FeatureAccess/IFilterFeatureAccess.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <optional>

/// What a job asks for, in the form in which the instruction generators' tables want it. Asks the feature
/// access each time; a path with an index must have two collections.
class JobFeatures {
public:
    using tagFeatureEnum = DataModelIds::tagFeatureEnum;
    using tagValueEnum = DataModelIds::tagValueEnum;

    /// The access must outlive this object.
    explicit JobFeatures(const IFilterFeatureAccess& features) : m_features(features) {}

    /// VAL_UNSPECIFIED where nothing is chosen.
    [[nodiscard]] tagValueEnum Choice(const FeaturePath& path) const;
    [[nodiscard]] std::optional<int> Integer(const FeaturePath& path) const;
    [[nodiscard]] std::optional<CXString> Text(const FeaturePath& path) const;
    /// Empty where there is none.
    [[nodiscard]] CXString TextOrEmpty(const FeaturePath& path) const {
        return Text(path).value_or(CXString());
    }
    [[nodiscard]] std::optional<CXString> Password(const FeaturePath& path) const;
    /// The form that may travel in a comment for the printer; empty where there is no password.
    [[nodiscard]] CXString ScrambledPassword(const FeaturePath& path) const;
    [[nodiscard]] std::optional<UtcTime> Time(const FeaturePath& path) const;
    /// False where it is not stated.
    [[nodiscard]] bool Flag(tagFeatureEnum feature) const;
    [[nodiscard]] bool IsCollectionSpecified(tagFeatureEnum feature) const;

    [[nodiscard]] CXString JobName() const { return TextOrEmpty(DataModelIds::FEAT_JOB_NAME); }
    [[nodiscard]] CXString UserName() const { return m_features.GetPrintJobUserName(); }
    [[nodiscard]] CXString UserDomainName() const { return m_features.GetPrintJobUserDomainName(); }
    /// Whether the sheets are upright.
    [[nodiscard]] bool IsPortrait() const;
    /// Whether the device needs no back cover of its own, since it folds or binds the sheets.
    [[nodiscard]] bool IsBackCoverSuppressed() const;

    [[nodiscard]] const IFilterFeatureAccess& Features() const { return m_features; }

private:
    const IFilterFeatureAccess& m_features;
};
