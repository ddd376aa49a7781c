#include "Support/Rows.h"
#include "Support/TableFeatureAccess.h"

#include <DeviceControl/CommandSafeFeatureAccess.h>
#include <DeviceControl/CommandSafeText.h>
#include <DeviceControl/DeviceFamily.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace DataModelIds;
using testing::ElementsAre;

namespace {

TEST(CommandSafeText, HasBlanksForWhatEndsACommand) {
    const Rows<const wchar_t*, const wchar_t*> rows{
        {L"", nullptr},
        {L"Br\u00FCcke \u65E5\u672C, it's {all} <fine> 100% \\\\server\\share", nullptr},
        {L"a (b (c) d) e", nullptr},
        {L"\"\r\n\t\x1B\x7F\u0085\u2028\u2029\"", L"          "},
        {L"a) (b) (c (d)", L"a  (b)  c (d)"},
        {L")(", L"  "},
        {L"\\(a\\)\\", L" (a ) "}, // backslashes that would take the meaning from what follows
        {L"\\\\(", L"\\  "},
    };
    for (const auto& [text, expected] : rows) {
        CXString clean(text);
        EXPECT_EQ(CommandSafeText::Clean(clean), expected != nullptr) << text;
        EXPECT_EQ(clean, CXString(expected != nullptr ? expected : text));
        EXPECT_FALSE(CommandSafeText::Clean(clean)) << "once is enough";
    }
}

TEST(CommandSafeFeatureAccess, CleansEveryTextAndTellsOfEachOnce) {
    TableFeatureAccess job;
    const FeaturePath saveName(FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, FEAT_SAVE_NAME);
    const FeaturePath password(FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, FEAT_SAVE_PASSWORD);
    job.user = L"a\nb";
    job.domain = L"plain";
    job.Set(FEAT_JOB_NAME, L"\x1B%x").Set(FEAT_COPIES, 3).Set(saveName, L"(").SetPassword(password, "1\"2");
    std::vector<std::string> told;
    const CommandSafeFeatureAccess access(job, *FindDeviceFamily("Harrier"),
                                          [&](const std::string& what) { told.push_back(what); });

    EXPECT_EQ(access.GetPrintJobUserName(), L"a b");
    EXPECT_EQ(access.GetPrintJobUserDomainName(), L"plain");
    CXString text;
    for (int time = 0; time < 2; ++time)
        EXPECT_TRUE(access.GetStringValue(FEAT_JOB_NAME, text));
    EXPECT_EQ(text, L" %x");
    EXPECT_TRUE(access.GetStringValue(FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, FEAT_SAVE_NAME, text));
    EXPECT_EQ(text, L" ");
    ByteBuffer bytes;
    EXPECT_TRUE(access.GetUnencodedPassword(bytes, FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, FEAT_SAVE_PASSWORD));
    EXPECT_EQ(bytes.getAsCXStringFromUtf8Buffer(), L"1 2");
    const CommandSafeFeatureAccess scrambled(job, *FindDeviceFamily("Kestrel"), {});
    EXPECT_TRUE(scrambled.GetUnencodedPassword(bytes, FEAT_SAVE_COL, FEAT_SAVE_INFO_COL, FEAT_SAVE_PASSWORD));
    EXPECT_EQ(bytes.getAsCXStringFromUtf8Buffer(), L"1\"2") << "what the user types at the device";
    int copies = 0;
    EXPECT_TRUE(access.GetIntegerValue(FEAT_COPIES, copies));
    EXPECT_EQ(copies, 3);
    EXPECT_FALSE(access.GetStringValue(FEAT_CREATOR_NAME_PDL, text));
    EXPECT_THAT(told,
                ElementsAre("the user's name", "FEAT_JOB_NAME", "FEAT_SAVE_NAME", "FEAT_SAVE_PASSWORD"));
}

TEST(DeviceFamilies, AreFoundByNameInAnyCase) {
    for (const DeviceFamily& family : DeviceFamilies())
        EXPECT_EQ(FindDeviceFamily(family.name), &family);
    EXPECT_EQ(FindDeviceFamily("LOWENDpclm")->language, DeviceFamily::PageLanguage::Pclm);
    for (const char* name : {"", "Kestre", "Kestrels", "K\xE9strel"})
        EXPECT_EQ(FindDeviceFamily(name), nullptr) << name;
}

} // namespace
