#include <windows.h>
#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <thread>

namespace {

// The error stream is the program's: libxml2 tells who parses, and nobody else.
TEST(XmlLibraryTest, PrintsNothingByItself) {
    GetLastError(); // so that the platform's library is there
    const auto parse = [] {
        constexpr char text[] = "<a xmlns='relative' b='1' b='2'><c:d>";
        xmlFreeDoc(xmlReadMemory(text, sizeof text - 1, nullptr, nullptr, XML_PARSE_NONET));
    };
    testing::internal::CaptureStderr();
    parse();
    std::thread(parse).join();
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

} // namespace
