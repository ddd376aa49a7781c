#include "Support/SkipOnWindows.h"

#include <LowLevelFacilities/Ownership/OvlSharedPtr.h>
#include <LowLevelFacilities/Ownership/OvlUniquePtr.h>

#include <windows.h>
#include <gtest/gtest.h>

#if defined(_WIN32)
#include <psapi.h>
#else
#include <malloc.h>
#endif

#include <thread>
#include <vector>

namespace {

struct Counted {
    Counted() { ++alive; }
    Counted(const Counted&) = delete;
    virtual ~Counted() { --alive; }
    inline static int alive = 0;
};
struct Derived : Counted {};

TEST(OvlSharedPtr, SharesOneObjectAndDeletesItOnce) {
    {
        OvlSharedPtr<Counted> first(new Derived);
        const OvlSharedPtr<Counted> second = first;
        OvlSharedPtr<Counted> moved = std::move(first);
        const OvlSharedPtr<Counted> made = OvlSharedPtr<Derived>::make();
        EXPECT_TRUE(first == nullptr && !first);
        EXPECT_TRUE(second == moved && !(made == second));
        EXPECT_EQ(2, moved.use_count());
        EXPECT_EQ(2, Counted::alive);
        EXPECT_TRUE(OvlSharedPtr<Counted>(static_cast<Counted*>(nullptr)) == nullptr);
    }
    EXPECT_EQ(0, Counted::alive);
}

TEST(OvlSharedPtr, TakesControlBlocksFromThePoolOfItsThread) {
    FixedBlockSizeMemoryPool& pool = UtilitiesDllPerThreadStorage::GetSharedPtrMemoryPool();
    std::vector<OvlSharedPtr<Counted>> many(1000);
    for (auto& pointer : many)
        pointer = OvlSharedPtr<Counted>(new Counted);
    many.clear();
    const std::size_t kept = pool.keptBlocks();
    EXPECT_EQ(FixedBlockSizeMemoryPool::maxKeptBlocks, kept);
    {
        const OvlSharedPtr<Counted> pointer(new Counted);
        EXPECT_EQ(kept - 1, pool.keptBlocks());
    }
    EXPECT_EQ(kept, pool.keptBlocks());
    std::thread([&pool] {
        EXPECT_NE(&pool, &UtilitiesDllPerThreadStorage::GetSharedPtrMemoryPool());
    }).join();
}

TEST(OvlSharedPtr, MayDieOnAnotherThreadOrAfterItsPool) {
    // The sanitizers judge: a block that goes home to another pool, and one that outlives its thread's.
    OvlSharedPtr<Counted> made;
    std::thread([&made] { made = OvlSharedPtr<Counted>::make(); }).join();
    std::thread([taken = std::move(made)]() mutable { taken.reset(); }).join();
    EXPECT_EQ(0, Counted::alive);
    SkipOnWindows("The compiler's runtime frees the variables of a thread before it destroys them.");
    std::thread([] {
        thread_local OvlSharedPtr<Counted> diesWithTheThread;
        diesWithTheThread = OvlSharedPtr<Counted>(new Counted);
    }).join();
    EXPECT_EQ(0, Counted::alive);
}

// What the process has allocated.
std::size_t AllocatedBytes() {
#if defined(_WIN32)
    PROCESS_MEMORY_COUNTERS counters{};
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
#else
    return mallinfo2().uordblks;
#endif
}

TEST(OvlSharedPtr, LeavesNothingOfThePoolOfAThreadThatEnds) {
    const auto fillPoolsOf = [](int threads) {
        for (int i = 0; i < threads; ++i)
            std::thread([] {
                std::vector<OvlSharedPtr<Counted>> many(FixedBlockSizeMemoryPool::maxKeptBlocks);
                for (auto& pointer : many)
                    pointer = OvlSharedPtr<Counted>(new Counted);
            }).join();
    };
    fillPoolsOf(10); // what the system needs for threads
    const std::size_t before = AllocatedBytes();
    fillPoolsOf(100);
    constexpr std::size_t pool =
        FixedBlockSizeMemoryPool::maxKeptBlocks * FixedBlockSizeMemoryPool::blockSize;
    EXPECT_LT(AllocatedBytes(), before + 20 * pool);
}

TEST(OvlUniquePtr, OwnsAlwaysAndMovesToABase) {
    OvlUniquePtr<Derived, AlwaysOwned, UniquePtrCompare<Derived>> derived(new Derived);
    OvlUniquePtr<Counted> base = std::move(derived);
    EXPECT_TRUE(derived == nullptr && base);
    base.reset(new Counted);
    EXPECT_EQ(1, Counted::alive);
    base = OvlUniquePtr<Counted>(std::make_unique<Counted>());
    delete base.release();
    EXPECT_EQ(0, Counted::alive);
}

} // namespace
