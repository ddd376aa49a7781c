#include "System/Waiting.h"

#include "Com/FaultInjection.h"
#include "System/MessageQueue.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <optional>
#include <vector>

namespace OvPlatform {

WaitBoard& WaitBoard::Instance() {
    static WaitBoard& board = *new WaitBoard; // threads may wait until the very end of the process
    return board;
}

namespace {

DWORD Fail(DWORD error) {
    SetLastError(error);
    return WAIT_FAILED;
}

class Wait {
public:
    Wait(std::vector<std::shared_ptr<Waitable>> objects, bool forAll, std::shared_ptr<MessageQueue> messages)
        : m_objects(std::move(objects)), m_forAll(forAll), m_messages(std::move(messages)) {}

    DWORD Run(DWORD milliseconds) {
        std::unique_lock lock(WaitBoard::Instance().lock);
        std::condition_variable& changed = WaitBoard::Instance().changed;
        std::optional<DWORD> end;
        const auto isOver = [&] { return (end = End()).has_value(); };
        if (milliseconds == INFINITE)
            changed.wait(lock, isOver);
        else
            changed.wait_for(lock, std::chrono::milliseconds(milliseconds), isOver);
        return end.value_or(WAIT_TIMEOUT);
    }

private:
    std::optional<DWORD> End() {
        const auto isSignaled = [](const auto& object) { return object->IsSignaled(); };
        const bool hasInput = m_messages && m_messages->HasNewInput();
        if (m_forAll) {
            if (!hasInput || !std::all_of(m_objects.begin(), m_objects.end(), isSignaled)) return {};
            for (const auto& object : m_objects)
                object->EndWait();
            return WAIT_OBJECT_0;
        }
        const auto found = std::find_if(m_objects.begin(), m_objects.end(), isSignaled);
        if (found != m_objects.end())
            (*found)->EndWait();
        else if (!hasInput)
            return {};
        return WAIT_OBJECT_0 + static_cast<DWORD>(found - m_objects.begin());
    }

    const std::vector<std::shared_ptr<Waitable>> m_objects;
    const bool m_forAll;
    const std::shared_ptr<MessageQueue> m_messages; // null where messages do not count
};

} // namespace

} // namespace OvPlatform

using namespace OvPlatform;

DWORD MsgWaitForMultipleObjects(DWORD nCount, const HANDLE* pHandles, BOOL fWaitAll, DWORD dwMilliseconds,
                                DWORD dwWakeMask) {
    if (FaultPointHit()) return WAIT_FAILED;
    // One place is the messages'.
    if (nCount >= MAXIMUM_WAIT_OBJECTS || (pHandles == nullptr && nCount != 0))
        return Fail(ERROR_INVALID_PARAMETER);
    try {
        std::vector<std::shared_ptr<Waitable>> objects;
        for (DWORD i = 0; i < nCount; ++i) {
            objects.push_back(HandleTable::FindAs<Waitable>(pHandles[i]));
            if (!objects.back()) return Fail(ERROR_INVALID_HANDLE);
        }
        const bool hearsPosts = (dwWakeMask & (QS_POSTMESSAGE | QS_ALLPOSTMESSAGE)) != 0;
        return Wait(std::move(objects), fWaitAll != FALSE, hearsPosts ? MessageQueue::OfThread() : nullptr)
            .Run(dwMilliseconds);
    } catch (const std::bad_alloc&) {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
}
