// What a formatted message costs in allocations, counted at operator new of the whole program.

#include "Support/AllocationCount.h"

#include <LowLevelFacilities/Formatter/CPFormat.h>
#include <LowLevelFacilities/WideStrings/CXString.h>

#include <gtest/gtest.h>

namespace {

TEST(FormatterAllocation, AMessageOfLessThan1024BytesCostsAtMostItsResult) {
    const std::string narrow(300, 'n');
    const CXString wide(std::wstring(300, L'w'));
    const CPString utf8("some text in UTF-8 that is longer than a small string");
    for (const int width : {1, 100, 200, 255, 300, 339, 340}) {
        std::string specification = "%s %S %s %x %.3f %" + std::to_string(width) + "d";
        std::string result;
        EXPECT_EQ(1u, AllocationCount::Of([&] {
                      result = FormatStdString(specification.c_str(), narrow, wide, utf8, 0xBEEF, 2.5, 7);
                  }))
            << result.size();
        EXPECT_GT(1024u, result.size());
    }
    EXPECT_EQ(0u, AllocationCount::Of(
                      [] { (void)FormatStdString("%d of %d", 1, 2); })); // a small string needs none
    std::string longest;
    EXPECT_EQ(1u, AllocationCount::Of([&] { longest = FormatStdString("%1023d", 1); }));
    EXPECT_EQ(1023u, longest.size());
    const std::string longText(2000, 'n');
    const CXString longWideText(std::wstring(2000, L'w'));
    EXPECT_EQ(1u,
              AllocationCount::Of([&] { longest = FormatStdString("%.99s %.99S", longText, longWideText); }));
    EXPECT_EQ(199u, longest.size());
    CXString wideResult;
    EXPECT_EQ(1u, AllocationCount::Of([&] { wideResult.Format(L"%s: %d (%08x)", wide, 12, 0xABC); }));
}

} // namespace
