#include "Support/ReportRecorder.h"

#include <ComSupport/FilterUtilitiesLibraryHost.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

struct FilterUtilitiesLibraryHostTest : testing::Test {
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("ov-registry-" + std::to_string(getpid()));

    const ReportRecorder recorder;

    void SetUp() override { setenv("OV_REGISTRY", file.c_str(), 1); }
    void TearDown() override {
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

TEST_F(FilterUtilitiesLibraryHostTest, AsksTheRegistryAndShowsThatThereIsNoKeyToAsk) {
    EXPECT_TRUE(Answer("\"ShowParseErrors\"=dword:1"));
    EXPECT_FALSE(Answer("\"ShowParseErrors\"=dword:0"));
    EXPECT_FALSE(Answer("\"SomethingElse\"=dword:1"));
    EXPECT_TRUE(ReportRecorder::reports().empty());

    std::filesystem::remove(file);
    EXPECT_FALSE(
        FilterUtilitiesLibraryHost::ShouldNativeXmlConfigurationFeatureSetPopMessageBoxOnException());
    ASSERT_EQ(ReportRecorder::reports().size(), 1u);
    EXPECT_EQ(ReportRecorder::reports()[0].caption, "XML Configuration Error");
    EXPECT_TRUE(ReportRecorder::reports()[0].text.starts_with(
        "Failed to retrieve value of ShowParseErrors in HKLM subkey "
        "SOFTWARE\\Orvel\\PrinterDriver\\V5.0\\Configuration: "));
}

} // namespace
