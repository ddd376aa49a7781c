#include <ComSupport/FilterUtilitiesLibraryHost.h>
#include <LowLevelFacilities/Failures/DebugUtilities.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

// What was reported last, and under which caption.
std::string reportedText;
std::string reportedCaption;

struct FilterUtilitiesLibraryHostTest : testing::Test {
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("ov-registry-" + std::to_string(getpid()));

    void SetUp() override {
        setenv("OV_REGISTRY", file.c_str(), 1);
        reportedText.clear();
        DebugUtilities::setReportSink([](const char* text, const char* caption) noexcept {
            reportedText = text;
            reportedCaption = caption;
        });
    }
    void TearDown() override {
        DebugUtilities::setReportSink(nullptr);
        std::filesystem::remove(file);
        unsetenv("OV_REGISTRY");
    }
    bool Answer(const std::string& values) const {
        std::ofstream(file)
            << "OvRegistry 1\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvel\\PrinterDriver\\V5.0\\Configuration]\n"
            << values << '\n';
        return FilterUtilitiesLibraryHost::ShouldNativeXmlConfigurationFeatureSetPopMessageBoxOnException();
    }
};

TEST_F(FilterUtilitiesLibraryHostTest, AsksTheRegistry) {
    EXPECT_TRUE(Answer("\"ShowParseErrors\"=dword:1"));
    EXPECT_FALSE(Answer("\"ShowParseErrors\"=dword:0"));
    EXPECT_FALSE(Answer("\"SomethingElse\"=dword:1"));
    EXPECT_EQ(reportedText, "");
}

TEST_F(FilterUtilitiesLibraryHostTest, ShowsThatThereIsNoKeyToAsk) {
    EXPECT_FALSE(
        FilterUtilitiesLibraryHost::ShouldNativeXmlConfigurationFeatureSetPopMessageBoxOnException());
    EXPECT_EQ(reportedCaption, "XML Configuration Error");
    EXPECT_TRUE(reportedText.starts_with("Failed to retrieve value of ShowParseErrors in HKLM subkey "
                                         "SOFTWARE\\Orvel\\PrinterDriver\\V5.0\\Configuration: "))
        << reportedText;
}

} // namespace
