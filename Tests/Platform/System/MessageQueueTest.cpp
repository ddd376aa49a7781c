#include "Support/Rows.h"

#include <System/MessageQueue.h>

#include <windows.h>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>

using OvPlatform::MessageQueue;

namespace {

class EventHandle {
public:
    explicit EventHandle(bool isManual = false, bool isSet = false)
        : m_handle(CreateEventW(nullptr, isManual, isSet, nullptr)) {}
    EventHandle(const EventHandle&) = delete;
    EventHandle& operator=(const EventHandle&) = delete;
    ~EventHandle() { CloseHandle(m_handle); }
    operator HANDLE() const { return m_handle; }

private:
    HANDLE m_handle;
};

DWORD WaitFor(std::initializer_list<HANDLE> handles, DWORD milliseconds, bool all = false,
              DWORD mask = QS_ALLINPUT) {
    return MsgWaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.begin(), all, milliseconds,
                                     mask);
}

bool Peek(MSG& message, UINT remove = PM_REMOVE, UINT first = 0, UINT last = 0) {
    return PeekMessageW(&message, nullptr, first, last, remove) != FALSE;
}

int Pump() {
    int count = 0;
    for (MSG message; Peek(message); ++count) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return count;
}

TEST(Events, EndOneWaitOrAllOfThem) {
    const EventHandle automatic(false, true), manual(true, true), unset;
    EXPECT_EQ(WAIT_OBJECT_0 + 1, WaitFor({unset, automatic, manual}, 0));
    EXPECT_EQ(WAIT_OBJECT_0 + 2, WaitFor({unset, automatic, manual}, 0)) << "a wait has used it up";
    EXPECT_EQ(WAIT_OBJECT_0 + 2, WaitFor({unset, automatic, manual}, 0)) << "this one stays set";
    SetEvent(automatic);
    EXPECT_EQ(WAIT_OBJECT_0, WaitFor({automatic, manual}, 0)) << "the first one, the others untouched";

    SetEvent(automatic);
    EXPECT_EQ(WAIT_TIMEOUT, WaitFor({automatic, manual}, 0, true)) << "all waits for a message as well";
    EXPECT_EQ(WAIT_OBJECT_0, WaitFor({automatic}, 0)) << "a wait that ends without them leaves them";
    MessageQueue::OfThread()->Post([] {});
    EXPECT_EQ(WAIT_TIMEOUT, WaitFor({automatic, manual}, 0, true));
    SetEvent(automatic);
    EXPECT_EQ(WAIT_OBJECT_0, WaitFor({automatic, manual}, 0, true));
    Pump();
}

TEST(Events, RefuseWhatIsNone) {
    const EventHandle event;
    const EventHandle closed;
    CloseHandle(closed);
    const std::vector<HANDLE> stale{event, closed}, many(MAXIMUM_WAIT_OBJECTS, event);
    const Rows<const char*, const HANDLE*, std::size_t, DWORD> rows{
        {"closed", stale.data(), stale.size(), ERROR_INVALID_HANDLE},
        {"no list", nullptr, 1, ERROR_INVALID_PARAMETER},
        {"too many", many.data(), many.size(), ERROR_INVALID_PARAMETER},
    };
    for (const auto& [what, handles, count, error] : rows) {
        EXPECT_EQ(WAIT_FAILED,
                  MsgWaitForMultipleObjects(static_cast<DWORD>(count), handles, FALSE, 0, QS_ALLINPUT))
            << what;
        EXPECT_EQ(error, GetLastError()) << what;
    }
    EXPECT_FALSE(SetEvent(closed));
    EXPECT_EQ(nullptr, CreateEventW(nullptr, FALSE, FALSE, L"named"));
}

TEST(MessageQueue, TellsOfAMessageUntilTheThreadLooks) {
    const EventHandle never;
    const auto queue = MessageQueue::OfThread();
    int done = 0;
    queue->Post([&] { ++done; });
    queue->Post([&] { done += 10; });
    EXPECT_EQ(WAIT_TIMEOUT, WaitFor({never}, 0, false, QS_KEY | QS_SENDMESSAGE)) << "not what is waited for";
    EXPECT_EQ(WAIT_OBJECT_0 + 1, WaitFor({never}, 0));
    EXPECT_EQ(WAIT_OBJECT_0 + 1, WaitFor({never}, 0)) << "waiting is not looking";

    MSG message;
    EXPECT_FALSE(Peek(message, PM_REMOVE, 1, WM_APP - 1)) << "of other numbers";
    EXPECT_EQ(WAIT_TIMEOUT, WaitFor({never}, 0)) << "what was there is old now";
    EXPECT_TRUE(Peek(message, PM_NOREMOVE));
    DispatchMessageW(&message);
    EXPECT_EQ(0, done) << "it is still in the queue";
    ASSERT_TRUE(Peek(message));
    DispatchMessageW(&message);
    DispatchMessageW(&message);
    EXPECT_EQ(1, done) << "once";
    EXPECT_EQ(1, Pump());
    EXPECT_EQ(11, done);
}

TEST(MessageQueue, DoesWorkThatPostsAndPumpsItself) {
    std::string order;
    const auto queue = MessageQueue::OfThread();
    queue->Post([&] {
        queue->Post([&] { order += 'c'; });
        order += 'a';
        Pump();
        order += 'd';
    });
    queue->Post([&] { order += 'b'; });
    Pump();
    EXPECT_EQ("abcd", order);
}

// Runs work on another thread once this one has begun to wait.
std::future<void> Soon(std::function<void()> work) {
    return std::async(std::launch::async, [work = std::move(work)] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        work();
    });
}

TEST(MessageQueue, WakesAWaitingThreadAtOnce) {
    const EventHandle event;
    const auto queue = MessageQueue::OfThread();
    std::thread::id doneBy;
    const auto begin = std::chrono::steady_clock::now();

    auto other = Soon([&] { queue->Post([&] { doneBy = std::this_thread::get_id(); }); });
    EXPECT_EQ(WAIT_OBJECT_0 + 1, WaitFor({event}, 30000));
    EXPECT_EQ(1, Pump());
    EXPECT_EQ(std::this_thread::get_id(), doneBy);
    other.get();

    other = Soon([&] { SetEvent(event); });
    EXPECT_EQ(WAIT_OBJECT_0, WaitFor({event}, INFINITE));
    other.get();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(15));

    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(WAIT_TIMEOUT, WaitFor({event}, 50));
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(50));
}

TEST(MessageQueue, TakesFromManyThreads) {
    constexpr int threads = 4, each = 500;
    const EventHandle never;
    const auto queue = MessageQueue::OfThread();
    int sum = 0; // only ever touched here
    std::vector<std::thread> posting;
    posting.reserve(threads);
    for (int i = 0; i < threads; ++i)
        posting.emplace_back([&] {
            for (int k = 0; k < each; ++k)
                queue->Post([&] { ++sum; });
        });
    while (sum < threads * each && WaitFor({never}, 30000) == WAIT_OBJECT_0 + 1)
        Pump();
    EXPECT_EQ(threads * each, sum);
    for (std::thread& thread : posting)
        thread.join();
}

TEST(MessageQueue, EndsWithItsThread) {
    std::shared_ptr<MessageQueue> queue;
    const auto held = std::make_shared<int>();
    std::thread([&] {
        queue = MessageQueue::OfThread();
        queue->Post([held] {});
        queue->Post([held, queue] {});
        MSG message;
        Peek(message); // and never dispatches it
    }).join();
    EXPECT_EQ(1, held.use_count()) << "what nobody did is dropped";
    EXPECT_FALSE(queue->Post([held] {}));
    EXPECT_NE(queue, MessageQueue::OfThread());
}

} // namespace
