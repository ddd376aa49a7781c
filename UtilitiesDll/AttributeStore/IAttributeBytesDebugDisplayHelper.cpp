#include "AttributeStore/IAttributeBytesDebugDisplayHelper.h"

IAttributeBytesDebugDisplayHelper::~IAttributeBytesDebugDisplayHelper() = default;

CPString IAttributeBytesDebugDisplayHelper::GetFeatureName(AttributeBytesFeatureId) const { return {}; }

CPString IAttributeBytesDebugDisplayHelper::GetOptionName(AttributeBytesFeatureId, LONG) const { return {}; }
