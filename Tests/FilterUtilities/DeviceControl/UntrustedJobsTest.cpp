#include "FilterUtilities/DeviceControl/UniformJob.h"
#include "Support/DeviceBag.h"
#include "Support/InApartment.h"
#include "Support/Rows.h"

#include <DeviceControl/DeviceFamily.h>
#include <DeviceControl/PrintInstructionGenerator.h>
#include <LowLevelFacilities/Strings/CPStringUtils.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace DataModelIds;
using testing::HasSubstr;

namespace {

std::string Utf8(const CXString& text) { return CPStringUtils::narrowToStdString(text); }

std::size_t CountOf(std::string_view text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos;
         at = text.find(part, at + part.size()))
        ++count;
    return count;
}

class UntrustedJobs : public InApartment<testing::TestWithParam<DeviceFamily>> {
protected:
    /// The three texts one behind the other.
    std::string Generated() {
        OrvelDriverPropertyBag device(m_bag);
        PrintInstructionGenerator generator(m_job, device);
        DeviceInstructions texts;
        GetParam().generate(generator, texts);
        return Utf8(texts.pjlCommands) + Utf8(texts.setupCommands) + Utf8(texts.trailerComments);
    }

    UniformJob m_job;
    DeviceBag m_bag;
};

TEST_P(UntrustedJobs, HaveTheirNamesWholeAndInUtf8) {
    const std::wstring grin = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    std::wstring name = L"\u65E5\u00DF";
    while (name.size() < 10000)
        name += grin + L"x";
    for (const auto& text : {std::wstring(), name}) {
        m_job.text = text;
        const std::string generated = Generated();
        EXPECT_THAT(generated, HasSubstr("\"" + Utf8(text.c_str()) + "\""));
        EXPECT_EQ(CountOf(generated, "\xEF\xBF\xBD") + CountOf(generated, "\xED\xA0"), 0) << "half a pair";
    }
}

TEST_P(UntrustedJobs, MayAnswerAnything) {
    for (const auto& [value, number] :
         Rows<int, int>{{0, 0},
                        {-1, std::numeric_limits<int>::min()},
                        {std::numeric_limits<int>::max(), std::numeric_limits<int>::max()},
                        {VAL_JOB_TYPE_SAVED_PRINT, 7},
                        {VAL_CUSTOM_COLOR_CORRECTION, 7},
                        {VAL_COVER_BOTH_SAME, 7}}) {
        m_job.value = tagValueEnum{value};
        m_job.number = number;
        m_job.isTold = true;
        const std::string generated = Generated();
        EXPECT_EQ(CountOf(generated, "featurebegin{"), CountOf(generated, "}featurecleanup\n"));
        EXPECT_EQ(generated, Generated()) << value;
    }
    m_job.isTold = false;
    EXPECT_EQ(Generated(), Generated());
}

TEST_P(UntrustedJobs, PassOnTheirFailures) {
    m_job.text = L"a";
    static_cast<void>(Generated());
    const int questions = m_job.asked;
    ASSERT_GT(questions, 3);
    for (m_job.failsAt = 0; m_job.failsAt < questions; ++m_job.failsAt) {
        m_job.asked = 0;
        EXPECT_THROW(Generated(), UniformJob::Failure) << m_job.failsAt;
    }
    m_job.failsAt = -1;
    EXPECT_THAT(Generated(), HasSubstr("\"a\""));
}

INSTANTIATE_TEST_SUITE_P(Families, UntrustedJobs,
                         testing::ValuesIn(DeviceFamilies().begin(), DeviceFamilies().end()),
                         [](const auto& test) { return std::string(test.param.name); });

/// What one family does with what it is told.
class UntrustedJob : public InApartment<> {
protected:
    std::string PjlOf(const char* family, IFilterFeatureAccess& job) {
        OrvelDriverPropertyBag device(m_bag);
        PrintInstructionGenerator generator(job, device);
        DeviceInstructions texts;
        FindDeviceFamily(family)->generate(generator, texts);
        return Utf8(texts.pjlCommands);
    }

    DeviceBag m_bag;
};

TEST_F(UntrustedJob, SendsFaxesToNoMoreThanItsRecipients) {
    UniformJob job;
    job.text = L"1";
    job.entries = std::numeric_limits<unsigned int>::max();
    job.number = std::numeric_limits<int>::min();
    EXPECT_EQ(CountOf(PjlOf("Osprey", job), "OID_ATT_FAX_DESTINATION_PHONE \"1,1\""), 10000);
    TableFeatureAccess density;
    density.Set(FEAT_TONER_DENSITY, std::numeric_limits<int>::min());
    EXPECT_THAT(PjlOf("Osprey", density), HasSubstr("DENSITY=2147483652\n"));
}

TEST_F(UntrustedJob, HasItsSaveNameCutBetweenCharacters) {
    const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
    for (const auto& [name, kept] :
         Rows<std::wstring, std::wstring>{{std::wstring(40, L'a'), std::wstring(40, L'a')},
                                          {std::wstring(41, L'a'), std::wstring(40, L'a')},
                                          {std::wstring(38, L'a') + pair, std::wstring(38, L'a') + pair},
                                          {std::wstring(39, L'a') + pair, std::wstring(39, L'a')}}) {
        TableFeatureAccess job;
        job.Choose(FEAT_JOB_TYPE, VAL_JOB_TYPE_SAVED_PRINT).Set(FEAT_JOB_NAME, name.c_str());
        EXPECT_THAT(PjlOf("Kestrel", job), HasSubstr("SAVE_NAME \"" + Utf8(kept.c_str()) + "\";\n"));
    }
}

TEST_F(UntrustedJob, GoesOnWhateverItsProductDataIs) {
    TableFeatureAccess job;
    job.Choose(FEAT_PRINT_QUALITY_LEVEL, VAL_QUALITY_STANDARD);
    const std::string plain = PjlOf("Kestrel", job);
    const std::string section = "<print-quality-level>";
    const std::string end = "</print-quality-level>";
    std::string large;
    large.resize(10'000'000, '<');
    const std::string texts[] = {"not XML",
                                 section,
                                 end + section,
                                 section + "<standard PS=\"x",
                                 section + "<standard" + end,
                                 section + "<standard PS=\"x" + end,
                                 section + "<standard PS='x'/>" + end,
                                 std::string("\0<\0", 3),
                                 "<a b=\"" + section + "\"/>",
                                 large};
    for (const std::string& data : texts) {
        m_bag.productData = std::string(data);
        EXPECT_EQ(PjlOf("Kestrel", job), plain) << data.substr(0, 60);
    }
    // Deliberate: a search does not tell tags from what looks like one.
    m_bag.productData = "<a b=\"" + section + "<standard PS=\"x\\n\"/>\">" + end;
    EXPECT_THAT(PjlOf("Kestrel", job), HasSubstr(";\nx\n@PJL"));
}

} // namespace
