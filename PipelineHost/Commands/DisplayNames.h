#pragma once

#include <AttributeStore/IAttributeBytesDebugDisplayHelper.h>

namespace OvPipeline {

/// The data model's names of features and values.
class DisplayNames : public IAttributeBytesDebugDisplayHelper {
public:
    std::unique_ptr<IAttributeBytesDebugDisplayHelper> Clone() const override;
    CPString GetFeatureName(AttributeBytesFeatureId feature) const override;
    CPString GetOptionName(AttributeBytesFeatureId feature, LONG option) const override;
};

} // namespace OvPipeline
