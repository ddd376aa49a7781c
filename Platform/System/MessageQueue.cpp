#include "System/MessageQueue.h"

#include "System/Waiting.h"

#include <algorithm>
#include <new>

namespace OvPlatform {

namespace {

// There are no windows; a message of the queue stands for work by its window, kind and number.
const HWND workWindow = reinterpret_cast<HWND>(static_cast<LONG_PTR>(0x10010));
constexpr UINT workMessage = WM_APP;

} // namespace

struct MessageQueue::OwnedByThread {
    std::shared_ptr<MessageQueue> queue = std::make_shared<MessageQueue>();

    OwnedByThread() = default;
    OwnedByThread(const OwnedByThread&) = delete;
    OwnedByThread& operator=(const OwnedByThread&) = delete;
    ~OwnedByThread() { queue->Close(); }
};

std::shared_ptr<MessageQueue> MessageQueue::OfThread() {
    thread_local const OwnedByThread owned;
    return owned.queue;
}

bool MessageQueue::Post(std::function<void()> work) {
    WaitBoard& board = WaitBoard::Instance();
    const std::lock_guard guard(board.lock);
    if (m_isClosed) return false;
    MSG message{};
    message.hwnd = workWindow;
    message.message = workMessage;
    message.lParam = m_lastNumber + 1;
    message.time = GetTickCount();
    m_posted.push_back({message, std::move(work)});
    ++m_lastNumber;
    m_hasNews = true;
    board.changed.notify_all();
    return true;
}

bool MessageQueue::Peek(MSG& message, HWND window, UINT first, UINT last, bool remove) {
    const std::lock_guard guard(WaitBoard::Instance().lock);
    m_hasNews = false;
    const auto found = std::find_if(m_posted.begin(), m_posted.end(), [&](const Posted& posted) {
        const bool isInRange =
            (first == 0 && last == 0) || (posted.message.message >= first && posted.message.message <= last);
        return isInRange && (window == nullptr || window == posted.message.hwnd);
    });
    if (found == m_posted.end()) return false;
    message = found->message;
    if (!remove) return true;
    m_removed.emplace(message.lParam, std::move(found->work));
    m_posted.erase(found);
    return true;
}

void MessageQueue::Dispatch(const MSG& message) {
    if (message.hwnd != workWindow || message.message != workMessage) return;
    const auto removed = m_removed.extract(message.lParam);
    if (!removed.empty()) removed.mapped()();
}

void MessageQueue::Close() noexcept {
    // Gone outside the lock: what the work holds may end with it, and post.
    std::deque<Posted> dropped;
    std::map<LPARAM, std::function<void()>> removed;
    const std::lock_guard guard(WaitBoard::Instance().lock);
    m_isClosed = true;
    dropped.swap(m_posted);
    removed.swap(m_removed);
}

} // namespace OvPlatform

using namespace OvPlatform;

BOOL PeekMessageW(LPMSG lpMsg, HWND hWnd, UINT wMsgFilterMin, UINT wMsgFilterMax, UINT wRemoveMsg) {
    // No fault point: to find nothing is no failure here, and whoever asks would wait for ever.
    if (lpMsg == nullptr) return FALSE;
    try {
        return MessageQueue::OfThread()->Peek(*lpMsg, hWnd, wMsgFilterMin, wMsgFilterMax,
                                              (wRemoveMsg & PM_REMOVE) != 0);
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

BOOL TranslateMessage(const MSG*) { return FALSE; }

LRESULT DispatchMessageW(const MSG* lpMsg) {
    if (lpMsg != nullptr) MessageQueue::OfThread()->Dispatch(*lpMsg);
    return 0;
}
