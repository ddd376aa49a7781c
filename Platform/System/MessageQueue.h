#pragma once

#include "Com/PlatformExport.h"

#include <windows.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>

namespace OvPlatform {

/// The messages of one thread. All that is posted here is work to be done on that thread, when it dispatches
/// the message that stands for it.
class OV_PLATFORM_API MessageQueue {
public:
    /// The calling thread's, made when first asked for. It takes nothing more once the thread has ended.
    /// Throws std::bad_alloc.
    static std::shared_ptr<MessageQueue> OfThread();

    /// From any thread. The work throws nothing, and is dropped where nobody dispatches it. False if the
    /// queue's thread has ended. Throws std::bad_alloc.
    bool Post(std::function<void()> work);

    // The rest is the owning thread's.

    /// The first message that the window and the range of numbers (0 and 0: any) let through; what is in the
    /// queue is no news after that.
    bool Peek(MSG& message, HWND window, UINT first, UINT last, bool remove);
    /// Does the work of a message that was removed, once.
    void Dispatch(const MSG& message);
    /// Whether something has come since the last look. Called under the lock of the wait board.
    bool HasNewInput() const noexcept { return m_hasNews; }

private:
    struct Posted {
        MSG message;
        std::function<void()> work;
    };
    struct OwnedByThread;

    void Close() noexcept;

    // Under the lock of the wait board.
    std::deque<Posted> m_posted;
    LPARAM m_lastNumber = 0;
    bool m_hasNews = false;
    bool m_isClosed = false;
    // Removed and not dispatched yet, by number.
    std::map<LPARAM, std::function<void()>> m_removed;
};

} // namespace OvPlatform
