#pragma once

#include "Com/PlatformExport.h"
#include "Spooler/QueueFolder.h"

#include <memory>
#include <vector>

namespace OvPlatform {

/// The printers that this process knows, by name; names are compared without regard to case. May be called
/// from any thread.
class OV_PLATFORM_API QueueRegistry {
public:
    /// The environment variable that names folders of queue folders, separated by colons. A printer that was
    /// not added is looked for there, and kept once found.
    static constexpr const char* searchVariable = "OV_QUEUES";

    /// A queue of the same name takes the place of the one before; handles that are open keep theirs.
    static void Add(std::shared_ptr<const QueueFolder> queue);

    /// Null where no printer has that name, or the name is null or empty.
    static std::shared_ptr<const QueueFolder> Find(const wchar_t* printerName);

    /// The added ones and those of the search variable, by name. Throws std::bad_alloc.
    static std::vector<std::shared_ptr<const QueueFolder>> All();

    static void Clear();
};

} // namespace OvPlatform
