// What a formatted message costs in allocations, counted at operator new of the whole program.

#include <LowLevelFacilities/CPFormat.h>
#include <LowLevelFacilities/CXString.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

thread_local int allocations = 0;

void* allocate(std::size_t size) {
    ++allocations;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

template <typename Action>
int allocationsOf(Action action) {
    const int before = allocations;
    action();
    return allocations - before;
}

} // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

TEST(FormatterAllocation, AMessageOfLessThan1024BytesCostsAtMostItsResult) {
    const std::string narrow(300, 'n');
    const CXString wide(std::wstring(300, L'w'));
    const CPString utf8("some text in UTF-8 that is longer than a small string");
    for (const int width : {1, 100, 200, 255, 300, 339, 340}) {
        std::string specification = "%s %S %s %x %.3f %" + std::to_string(width) + "d";
        std::string result;
        EXPECT_EQ(1, allocationsOf([&] {
                      result = FormatStdString(specification.c_str(), narrow, wide, utf8, 0xBEEF, 2.5, 7);
                  }))
            << result.size();
        EXPECT_GT(1024u, result.size());
    }
    EXPECT_EQ(0, allocationsOf([] { (void)FormatStdString("%d of %d", 1, 2); })); // a small string needs none
    std::string longest;
    EXPECT_EQ(1, allocationsOf([&] { longest = FormatStdString("%1023d", 1); }));
    EXPECT_EQ(1023u, longest.size());
    const std::string longText(2000, 'n');
    const CXString longWideText(std::wstring(2000, L'w'));
    EXPECT_EQ(1, allocationsOf([&] { longest = FormatStdString("%.99s %.99S", longText, longWideText); }));
    EXPECT_EQ(199u, longest.size());
    CXString wideResult;
    EXPECT_EQ(1, allocationsOf([&] { wideResult.Format(L"%s: %d (%08x)", wide, 12, 0xABC); }));
}

} // namespace
