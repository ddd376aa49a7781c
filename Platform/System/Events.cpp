#include "Com/FaultInjection.h"
#include "System/Waiting.h"

#include <new>

namespace {

using namespace OvPlatform;

class Event final : public Waitable {
public:
    Event(bool isManual, bool isSet) : m_isManual(isManual), m_isSet(isSet) {}

    void Set() {
        const std::lock_guard guard(WaitBoard::Instance().lock);
        m_isSet = true;
        WaitBoard::Instance().changed.notify_all();
    }

    bool IsSignaled() const noexcept override { return m_isSet; }
    void EndWait() noexcept override {
        if (!m_isManual) m_isSet = false;
    }

private:
    const bool m_isManual;
    bool m_isSet;
};

} // namespace

HANDLE CreateEventW(LPSECURITY_ATTRIBUTES, BOOL bManualReset, BOOL bInitialState, LPCWSTR lpName) {
    if (FaultPointHit()) return nullptr;
    if (lpName != nullptr) {
        SetLastError(ERROR_NOT_SUPPORTED);
        return nullptr;
    }
    try {
        return HandleTable::Open(std::make_shared<Event>(bManualReset != FALSE, bInitialState != FALSE));
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
}

BOOL SetEvent(HANDLE hEvent) {
    // No fault point: nobody could tell the threads that wait for it.
    const auto event = HandleTable::FindAs<Event>(hEvent);
    if (event) {
        event->Set();
        return TRUE;
    }
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}
