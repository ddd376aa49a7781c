#pragma once

#include "Spooler/QueueDescription.h"
#include "Xml/XmlOutput.h"

namespace OvPlatform {

/// The values of a bag as children of the element that is open. Throws what XmlOutput does.
void WriteValues(XmlOutput& xml, const QueueValues& values);

/// The same in an element of their own, which is left out where there are none.
void WriteProperties(XmlOutput& xml, const char* element, const QueueValues& values);

} // namespace OvPlatform
