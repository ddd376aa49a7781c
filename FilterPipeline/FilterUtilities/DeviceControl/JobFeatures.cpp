#include "DeviceControl/JobFeatures.h"

#include "Finishing/OcptImportAndExport.h"

#include <Encryption/DataEncrypter.h>

using namespace DataModelIds;

DataModelIds::tagValueEnum JobFeatures::Choice(const FeaturePath& path) const {
    const auto names = path.Features();
    switch (names.size()) {
    case 1:
        return m_features.GetOptionValue(names[0]).GetValuePlusSpecifiedState();
    case 2:
        return m_features.GetOptionValueWithContext(names[0], names[1]).GetValuePlusSpecifiedState();
    default:
        return m_features.GetOptionValueWithContext(names[0], names[1], names[2])
            .GetValuePlusSpecifiedState();
    }
}

std::optional<int> JobFeatures::Integer(const FeaturePath& path) const {
    const auto names = path.Features();
    int value = 0;
    const bool isThere =
        path.Index()        ? m_features.GetIntegerValue(names[0], names[1], *path.Index(), names[2], value)
        : names.size() == 1 ? m_features.GetIntegerValue(names[0], value)
        : names.size() == 2 ? m_features.GetIntegerValue(names[0], names[1], value)
                            : m_features.GetIntegerValue(names[0], names[1], names[2], value);
    return isThere ? std::optional(value) : std::nullopt;
}

std::optional<CXString> JobFeatures::Text(const FeaturePath& path) const {
    const auto names = path.Features();
    CXString text;
    const bool isThere = path.Index()
                             ? m_features.GetStringValue(names[0], names[1], *path.Index(), names[2], text)
                         : names.size() == 1 ? m_features.GetStringValue(names[0], text)
                         : names.size() == 2 ? m_features.GetStringValue(names[0], names[1], text)
                                             : m_features.GetStringValue(names[0], names[1], names[2], text);
    return isThere ? std::optional(std::move(text)) : std::nullopt;
}

std::optional<CXString> JobFeatures::Password(const FeaturePath& path) const {
    const auto names = path.Features();
    ByteBuffer password;
    const bool isThere = names.size() == 1
                             ? m_features.GetUnencodedPassword(password, names[0])
                             : m_features.GetUnencodedPassword(password, names[0], names[1], names[2]);
    return isThere ? std::optional(password.getAsCXStringFromUtf8Buffer()) : std::nullopt;
}

CXString JobFeatures::ScrambledPassword(const FeaturePath& path) const {
    return DataEncrypter::EncryptStringWithOrvelSimple1(Password(path).value_or(CXString()))
        .getAsCXStringFromUtf8Buffer();
}

std::optional<UtcTime> JobFeatures::Time(const FeaturePath& path) const {
    const auto names = path.Features();
    UtcTime time;
    const bool isThere = names.size() == 1 ? m_features.GetDateTimeValue(names[0], time)
                                           : m_features.GetDateTimeValue(names[0], names[1], time);
    return isThere ? std::optional(time) : std::nullopt;
}

bool JobFeatures::Flag(tagFeatureEnum feature) const {
    bool value = false;
    return m_features.GetBooleanValue(feature, value) && value;
}

bool JobFeatures::IsCollectionSpecified(tagFeatureEnum feature) const {
    return m_features.IsCollectionSpecified(feature);
}

bool JobFeatures::IsPortrait() const {
    return m_features.GetEffectiveOrientation() == VAL_MS_ORIENTATION_PORTRAIT;
}

bool JobFeatures::IsBackCoverSuppressed() const {
    return OcptImportAndExport::BackCoverShouldBeSuppressedDueToFinishingAndLayout(
        Choice(FEAT_FINISHING_FOLD), Choice(FEAT_FINISHING_BOOKLET), Choice(FEAT_BOOKLET),
        Choice({FEAT_FINISHINGS_COLLECTION, FEAT_BOOKLET_MAKING, FEAT_BOOKLET_MAKING_TYPE}));
}
