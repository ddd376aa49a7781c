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
    std::string result;
    for (const int width : {1, 255, 340}) {
        const std::string specification = "%s %S %s %x %.3f %" + std::to_string(width) + "d";
        const auto format = [&] {
            result = FormatStdString(specification.c_str(), narrow, wide, utf8, 0xBEEF, 2.5, 7);
        };
        EXPECT_EQ(1u, AllocationCount::Of(format)) << result.size();
    }
    EXPECT_EQ(1u, AllocationCount::Of([&] { result = FormatStdString("%1023d", 1); }));
    EXPECT_EQ(1023u, result.size());
    const auto formatSmall = [] { (void)FormatStdString("%d of %d", 1, 2); };
    EXPECT_EQ(0u, AllocationCount::Of(formatSmall)); // a small string needs none
    const std::string longText(2000, 'n');
    const CXString longWideText(std::wstring(2000, L'w'));
    const auto formatCut = [&] { result = FormatStdString("%.99s %.99S", longText, longWideText); };
    EXPECT_EQ(1u, AllocationCount::Of(formatCut));
    CXString wideResult;
    EXPECT_EQ(1u, AllocationCount::Of([&] { wideResult.Format(L"%s: %d (%08x)", wide, 12, 0xABC); }));
}

} // namespace
