#include <LowLevelFacilities/Ownership/OvlSharedPtr.h>
#include <LowLevelFacilities/Ownership/OvlUniquePtr.h>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

struct Counted {
    explicit Counted(int start = 0) : value(start) { ++alive; }
    Counted(const Counted&) = delete;
    virtual ~Counted() { --alive; }
    int value;
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
    { const OvlSharedPtr<Counted> warm(new Counted); }
    const std::size_t kept = pool.keptBlocks();
    ASSERT_LT(0u, kept);
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
    std::thread([&made] { made = OvlSharedPtr<Counted>::make(5); }).join();
    EXPECT_EQ(5, made->value);
    std::thread([taken = std::move(made)]() mutable { taken.reset(); }).join();
    std::thread([] {
        thread_local OvlSharedPtr<Counted> diesWithTheThread;
        diesWithTheThread = OvlSharedPtr<Counted>(new Counted);
    }).join();
    EXPECT_EQ(0, Counted::alive);
}

TEST(OvlSharedPtr, KeepsABoundedNumberOfBlocks) {
    std::vector<OvlSharedPtr<Counted>> many;
    for (int i = 0; i < 1000; ++i)
        many.emplace_back(new Counted);
    many.clear();
    EXPECT_GE(FixedBlockSizeMemoryPool::maxKeptBlocks,
              UtilitiesDllPerThreadStorage::GetSharedPtrMemoryPool().keptBlocks());
}

TEST(OvlUniquePtr, OwnsAlwaysAndMovesToABase) {
    {
        OvlUniquePtr<Derived, AlwaysOwned, UniquePtrCompare<Derived>> derived(new Derived);
        OvlUniquePtr<Counted> base = std::move(derived);
        EXPECT_TRUE(derived == nullptr && base);
        base.reset(new Counted(3));
        EXPECT_EQ(1, Counted::alive);
        base = nullptr;
        EXPECT_EQ(0, Counted::alive);
        std::set<OvlUniquePtr<Counted>> ordered;
        ordered.insert(OvlUniquePtr<Counted>(new Counted));
        base = OvlUniquePtr<Counted>(std::make_unique<Counted>());
        delete base.release();
    }
    EXPECT_EQ(0, Counted::alive);
}

/// Compares what the pointers point to.
struct ByText {
    static bool equal(const std::string* left, const std::string* right) { return *left == *right; }
    static bool less(const std::string* left, const std::string* right) { return *left < *right; }
};

TEST(OvlPointers, CompareAsTheirPolicySays) {
    EXPECT_TRUE((OvlSharedPtr<std::string, ByText>(new std::string("a")) ==
                 OvlSharedPtr<std::string, ByText>(new std::string("a"))));
    EXPECT_TRUE((OvlUniquePtr<std::string, AlwaysOwned, ByText>(new std::string("a")) <
                 OvlUniquePtr<std::string, AlwaysOwned, ByText>(new std::string("b"))));
}

} // namespace
