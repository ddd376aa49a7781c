#include "DeviceControl/JobQuestions.h"

#include <DeviceDescription/OrvelDriverPropertyBag.h>

bool JobQuestions::AreCoversInTicket() const { return m_device.AreCoversSupportedAndOutputInOpif(); }

bool JobQuestions::IsInTicket(const char* cpssFeature) const {
    return m_device.IsCpssFeatureSupportedAndOutputInOpif(cpssFeature);
}
