#pragma once

#include "DeviceControl/JobFeatures.h"

class OrvelDriverPropertyBag;

/// What a job asks for, and what its device does by other ways.
class JobQuestions : public JobFeatures {
public:
    /// Both must outlive this object.
    JobQuestions(const IFilterFeatureAccess& features, const OrvelDriverPropertyBag& device)
        : JobFeatures(features), m_device(device) {}

    /// Whether the device gets its covers in the ticket, so that no command may ask for them.
    [[nodiscard]] bool AreCoversInTicket() const;
    /// Whether the device has the feature and gets it in the ticket.
    [[nodiscard]] bool IsInTicket(const char* cpssFeature) const;

private:
    const OrvelDriverPropertyBag& m_device;
};
