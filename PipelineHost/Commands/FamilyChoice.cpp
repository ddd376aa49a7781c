#include "Commands/FamilyChoice.h"

#include "Arguments/CommandOptions.h"
#include "Common/Text.h"

#include <Spooler/QueueFolderError.h>

namespace OvPipeline {

std::string FamilyNames() {
    std::string names;
    for (const DeviceFamily& family : DeviceFamilies())
        names += (names.empty() ? "" : ", ") + std::string(family.name);
    return names;
}

const DeviceFamily& NamedFamily(const std::string& name) {
    if (const DeviceFamily* const family = FindDeviceFamily(name)) return *family;
    throw UsageError("--family names \"" + name + "\", which is none of " + FamilyNames());
}

const DeviceFamily* FamilyOfQueue(const OvPlatform::QueueFolder& queue) {
    const auto property = queue.DriverProperties().find(deviceFamilyPropertyName);
    if (property == queue.DriverProperties().end()) return nullptr;
    const auto* const text = std::get_if<std::wstring>(&property->second);
    if (text == nullptr || text->empty()) return nullptr;
    const std::string name = Utf8(*text);
    if (const DeviceFamily* const family = FindDeviceFamily(name)) return family;
    throw OvPlatform::QueueFolderError(queue.Folder(), "the driver property DeviceFamily is \"" + name +
                                                           "\", which is none of " + FamilyNames());
}

} // namespace OvPipeline
