#include <windows.h>
#include <fibersapi.h>
#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace {

std::multiset<int> ended;

void WINAPI End(void* value) { ended.insert(*static_cast<int*>(value)); }

TEST(ThreadSlots, HoldAValueForEachThreadAndEndItWithTheThread) {
    const DWORD slot = FlsAlloc(&End);
    ASSERT_NE(FLS_OUT_OF_INDEXES, slot);
    EXPECT_EQ(nullptr, FlsGetValue(slot));
    int ours = 1;
    EXPECT_TRUE(FlsSetValue(slot, &ours));
    std::thread([slot] {
        EXPECT_EQ(nullptr, FlsGetValue(slot));
        static int theirs = 2;
        EXPECT_TRUE(FlsSetValue(slot, &theirs));
    }).join();
    EXPECT_EQ(&ours, FlsGetValue(slot));
    EXPECT_EQ((std::multiset<int>{2}), ended);

    EXPECT_TRUE(FlsFree(slot));
    EXPECT_EQ((std::multiset<int>{1, 2}), ended);
    EXPECT_FALSE(FlsSetValue(slot, &ours));
    EXPECT_EQ(static_cast<DWORD>(ERROR_INVALID_PARAMETER), GetLastError());
    EXPECT_FALSE(FlsFree(FLS_OUT_OF_INDEXES));
}

} // namespace
