#pragma once

#include "LowLevelFacilities/Strings/CPString.h"
#include "LowLevelFacilities/UtilitiesExport.h"
#include "Xml/XmlOutputCallback.h"

/// Serialises into a string.
class OV_UTILITIES_API XmlOutputUtf8StringCallback : public XmlOutputCallback {
public:
    /// Empties the target, which must outlive this object.
    XmlOutputUtf8StringCallback(CPString& target, EnhanceXmlLegibilityEnum enhance);
    ~XmlOutputUtf8StringCallback() override;

    void write(const char* utf8, std::size_t length) override;

private:
    CPString& m_target;
};
