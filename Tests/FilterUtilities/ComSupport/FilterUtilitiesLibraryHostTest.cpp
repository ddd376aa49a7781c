#include "Support/ReportRecorder.h"
#include "Support/ScratchRegistry.h"

#include <ComSupport/FilterUtilitiesLibraryHost.h>

#include <gtest/gtest.h>

namespace {

bool AnswerFor(const wchar_t* name, DWORD value) {
    const ScratchRegistry registry;
    HKEY key = nullptr;
    EXPECT_EQ(ERROR_SUCCESS,
              RegCreateKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Orvel\\PrinterDriver\\V5.0\\Configuration", 0,
                              nullptr, 0, KEY_WRITE, nullptr, &key, nullptr));
    EXPECT_EQ(ERROR_SUCCESS,
              RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value));
    RegCloseKey(key);
    return FilterUtilitiesLibraryHost::ShouldNativeXmlConfigurationFeatureSetPopMessageBoxOnException();
}

TEST(FilterUtilitiesLibraryHost, AsksTheRegistryAndShowsThatThereIsNoKeyToAsk) {
    const ReportRecorder recorder;
    EXPECT_TRUE(AnswerFor(L"ShowParseErrors", 1));
    EXPECT_FALSE(AnswerFor(L"ShowParseErrors", 0));
    EXPECT_FALSE(AnswerFor(L"SomethingElse", 1));
    EXPECT_TRUE(ReportRecorder::reports().empty());

    const ScratchRegistry registry;
    EXPECT_FALSE(
        FilterUtilitiesLibraryHost::ShouldNativeXmlConfigurationFeatureSetPopMessageBoxOnException());
    ASSERT_EQ(ReportRecorder::reports().size(), 1u);
    EXPECT_EQ(ReportRecorder::reports()[0].caption, "XML Configuration Error");
    EXPECT_TRUE(ReportRecorder::reports()[0].text.starts_with(
        "Failed to retrieve value of ShowParseErrors in HKLM subkey "
        "SOFTWARE\\Orvel\\PrinterDriver\\V5.0\\Configuration: "));
}

} // namespace
