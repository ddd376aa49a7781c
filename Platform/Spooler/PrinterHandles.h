#pragma once

#include "Spooler/QueueFolder.h"

#include <windows.h>

#include <memory>

namespace OvPlatform {

/// The open printers of the process. Handles are never used again, so that a stale one is always told from a
/// good one.
class PrinterHandles {
public:
    static HANDLE Open(std::shared_ptr<const QueueFolder> queue);
    /// Null where the handle is not open.
    static std::shared_ptr<const QueueFolder> Find(HANDLE handle);
    /// False where the handle is not open.
    static bool Close(HANDLE handle);
};

} // namespace OvPlatform
