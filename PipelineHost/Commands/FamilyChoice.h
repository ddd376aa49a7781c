#pragma once

#include <DeviceControl/DeviceFamily.h>
#include <Spooler/QueueFolder.h>

#include <string>

namespace OvPipeline {

/// All of them, for messages.
std::string FamilyNames();

/// The one that --family names. Throws UsageError.
const DeviceFamily& NamedFamily(const std::string& name);

/// The one that the queue's driver properties name; null where they name none. Throws
/// OvPlatform::QueueFolderError for a name that no family has.
const DeviceFamily* FamilyOfQueue(const OvPlatform::QueueFolder& queue);

} // namespace OvPipeline
