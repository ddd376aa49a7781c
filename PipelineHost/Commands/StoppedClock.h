#pragma once

#include <DeviceControl/HeldJobPasscode.h>

namespace OvPipeline {

/// While it lives, no time passes for the passcode of a held job, which depends on the second in which it is
/// made: so that what a device is told for two questions differs by the questions alone. One at a time.
class StoppedClock {
public:
    StoppedClock() : m_before(HeldJobPasscode::SetClock([] { return UtcTime(); })) {}
    StoppedClock(const StoppedClock&) = delete;
    StoppedClock& operator=(const StoppedClock&) = delete;
    ~StoppedClock() { HeldJobPasscode::SetClock(m_before); }

private:
    HeldJobPasscode::Clock m_before;
};

} // namespace OvPipeline
