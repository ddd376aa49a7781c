#pragma once

#include "System/HandleTable.h"

#include <condition_variable>
#include <mutex>

namespace OvPlatform {

/// What every wait of the process goes by: one lock for all that can be waited for, so that several objects
/// are seen at one moment, and one bell that whoever changes something of it rings.
struct WaitBoard {
    std::mutex lock;
    std::condition_variable changed;

    static WaitBoard& Instance();
};

/// A handle's object that threads can wait for. Both operations are called under the board's lock.
class Waitable : public HandleObject {
public:
    virtual bool IsSignaled() const noexcept = 0;
    /// A wait has ended by it.
    virtual void EndWait() noexcept {}
};

} // namespace OvPlatform
