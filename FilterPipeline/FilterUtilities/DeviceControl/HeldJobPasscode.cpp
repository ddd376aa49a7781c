#include "DeviceControl/HeldJobPasscode.h"

#include "DeviceControl/InstructionText.h"

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<HeldJobPasscode::Clock> chosenClock = nullptr;

UtcTime Now() {
    const HeldJobPasscode::Clock clock = chosenClock;
    return clock == nullptr ? UtcTime() : clock();
}

} // namespace

CXString HeldJobPasscode::Make() {
    const std::tm now = Now().GetTimeInUtc();
    std::srand(static_cast<unsigned>(now.tm_hour * 3600 + now.tm_min * 60 + now.tm_sec));
    CXString digits;
    InstructionText::Append(digits, InstructionText::Decimal(1000 + std::rand() % 9000));
    return digits;
}

HeldJobPasscode::Clock HeldJobPasscode::SetClock(Clock clock) noexcept { return chosenClock.exchange(clock); }
