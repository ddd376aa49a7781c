#pragma once

#include <Spooler/QueueFolder.h>

#include <string>

/// The small sample queue's capabilities and default ticket, with elements more at the end of the
/// capabilities.
inline std::shared_ptr<const OvPlatform::QueueFolder> QueueWith(const std::string& elements) {
    const auto sample = OvPlatform::QueueFolder::Load(OV_SOURCE_DIR "/Samples/Queues/MonoOffice");
    OvPlatform::QueueDescription description;
    description.printerName = sample->PrinterName();
    description.capabilities = sample->Capabilities();
    description.capabilities.insert(description.capabilities.rfind("</"), elements);
    description.defaultTicket = sample->DefaultTicket();
    return std::make_shared<OvPlatform::QueueFolder>(std::move(description));
}

/// A feature of which one option may be chosen.
inline std::string OfferedFeatureText(const std::string& name, const std::string& options) {
    return "<psf:Feature name=\"" + name +
           "\"><psf:Property name=\"psf:SelectionType\"><psf:Value xsi:type=\"xsd:QName\">psk:PickOne"
           "</psf:Value></psf:Property>" +
           options + "</psf:Feature>";
}
inline std::string OfferedOptionText(const std::string& name) {
    return "<psf:Option name=\"" + name + "\" constrained=\"psk:None\"/>";
}
