// What a filter hears of a job, and what a device mode gives, as the program shows it.
#include "PipelineHost/Commands/CommandRun.h"
#include "Support/AttributeLists.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"

#include <Com/FaultInjection.h>
#include <Spooler/DevmodeLayout.h>
#include <SystemServices/OrvelUtilities.h>

#include <windows.h>
#include <gmock/gmock.h>

#include <cstring>
#include <fstream>

using namespace OvPipeline;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string sampleQueue = OV_SOURCE_DIR "/Samples/Queues/ColorOffice";

// A device mode as it is stored: landscape, with so many bytes of a driver that nobody knows.
std::string StoredMode(const wchar_t* printer, WORD extra) {
    std::vector<std::uint8_t> record(sizeof(DEVMODEW) + extra, 0xEE);
    DEVMODEW mode{};
    std::wcsncpy(mode.dmDeviceName, printer, CCHDEVICENAME);
    mode.dmSize = sizeof mode;
    mode.dmDriverExtra = extra;
    mode.dmFields = DM_ORIENTATION;
    mode.dmOrientation = DMORIENT_LANDSCAPE;
    std::memcpy(record.data(), &mode, sizeof mode);
    const std::vector<std::uint8_t> stored = OvPlatform::StoreDevmode(record);
    return {stored.begin(), stored.end()};
}

class SettingsCommandTest : public InOwnFolder {
protected:
    void SetUp() override {
        std::filesystem::copy(sampleQueue, "queue");
        for (const auto& file : std::filesystem::directory_iterator("queue"))
            std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }
    static void Replace(const std::string& what, const std::string& by) {
        std::ifstream in("queue/default-ticket.xml");
        std::string text((std::istreambuf_iterator<char>(in)), {});
        const std::size_t at = text.find(what);
        ASSERT_NE(at, std::string::npos);
        std::ofstream("queue/default-ticket.xml") << text.replace(at, what.size(), by);
    }
};

TEST_F(SettingsCommandTest, ATicketThatIsGivenLiesOverTheJobsOwn) {
    SampleJob job;
    job.jobTicket = SampleTicket("PageOrientation", "Landscape");
    job.pageTicket = SampleTicket("PageOrientation", "ReversePortrait");
    job.Write("job.xps");
    std::ofstream("over.xml") << SampleTicket("PageOrientation", "Portrait");
    for (const char* const page : {"", "1"}) {
        std::vector<std::string> arguments{"settings", "--ticket", "over.xml", "job.xps"};
        if (*page != '\0') arguments.insert(arguments.end(), {"--page", page});
        const CommandRun result(arguments);
        EXPECT_EQ(ExitOk, result.code) << result.errors;
        EXPECT_THAT(result.out, ContainsRegex("\norientation +Portrait "));
    }
}

TEST_F(SettingsCommandTest, TellsTheAnswersOfALevelAndWhoGaveThem) {
    SampleJob job;
    job.jobTicket = SampleTicket("PageOrientation", "Landscape");
    job.pageTicket = SampleTicket("PageOrientation", "ReversePortrait");
    job.Write("job.xps");
    Replace("outlines-on", "outlines-off");
    const CommandRun ofJob({"settings", "job.xps", "--queue", "queue"});
    EXPECT_EQ(ofJob.code, ExitOk) << ofJob.errors;
    for (const char* const line :
         {"orientation +Landscape +ticket", "job identification +JobIdPrintFirstPage +ticket",
          "page width +210000 +micron +ticket", "page width +793.71 +1/96 inch +ticket",
          "output paper height +297000 +micron +the page", "outlines +no +default",
          "pages per sheet +1 +page +ticket, JobNUpAllDocumentsContiguously"})
        EXPECT_THAT(ofJob.out, ContainsRegex(std::string("(^|\n)") + line + "\n"));
    const CommandRun ofPage({"settings", "job.xps", "--queue", "queue", "--page", "2", "--json"});
    EXPECT_THAT(ofPage.out, AllOf(HasSubstr("\"value\": \"ReversePortrait\""), HasSubstr("\"value\": 210000"),
                                  HasSubstr("\"value\": 793.71"), HasSubstr("\"unit\": null")));

    Replace("T0EBARhuMgoS", "T0EBARhuMgoT");
    const CommandRun damaged({"settings", "job.xps", "--queue", "queue"});
    EXPECT_EQ(damaged.code, ExitInputRefused);
    EXPECT_THAT(damaged.errors, HasSubstr("the driver's settings in the ticket cannot be read"));
}

TEST_F(SettingsCommandTest, NoFailureOfThePlatformChangesAnAnswerWithoutAWord) {
    SampleJob job;
    job.jobTicket = SampleTicket("PageOrientation", "Landscape");
    job.pageTicket = SampleTicket("PageOrientation", "ReversePortrait");
    job.Write("job.xps");
    const std::vector<std::string> settings = {"settings", "job.xps", "--queue", "queue", "--page", "1"};
    for (const auto& [command, step] :
         Rows<std::string, LONG>{{"settings", 37}, {"ticket", 17}, {"features", 97}}) {
        std::vector<std::string> arguments = settings;
        arguments.front() = command;
        OvPlatform::FaultInjection::CountCalls();
        const CommandRun whole(arguments);
        OvPlatform::FaultInjection::Reset();
        EXPECT_EQ(whole.errors, "");
        const LONG calls = OvPlatform::FaultInjection::CallCount();
        ASSERT_GT(calls, 15 * step) << command;
        for (LONG call = 1; call <= calls; call += step) { // each would take too long
            const OvPlatform::FaultInjectionScope fault(call, E_ABORT);
            const CommandRun run(arguments);
            EXPECT_TRUE(run.out == whole.out || !run.errors.empty()) << command << ' ' << call << run.out;
        }
    }
}

TEST_F(SettingsCommandTest, ReadsAStoredDeviceMode) {
    const std::string own = StoredMode(L"color office", 65'535);
    const Rows<std::string, int, const char*> cases{
        {own, ExitOk, "<psf:Option name=\"psk:Landscape\"/>"},
        {own, ExitOk, "\n  163 (FEAT_MEDIA_WEIGHT): integer 80\n"},
        {StoredMode(L"Else\n-->", 0), ExitOk,
         "The device mode is of the printer \"Else\\n- ->\": these are the defaults of \"Color Office\""},
        {own.substr(0, own.size() - 1), ExitInputRefused, "not a stored device mode: 64 KB are less"},
        {"", ExitInputRefused, "not a stored device mode: 0 bytes are less"},
        {own + std::string(200'000, 'x'), ExitInputRefused, "larger than any device mode (128 KB)"}};
    for (const auto& [bytes, code, words] : cases) {
        std::ofstream("mode.bin", std::ios::binary) << bytes;
        const CommandRun run({"ticket", "--devmode", "mode.bin", "--queue", "queue"});
        EXPECT_EQ(run.code, code) << run.errors;
        EXPECT_THAT(run.out + run.errors, HasSubstr(words));
        EXPECT_EQ(run.out.empty(), code != ExitOk);
        EXPECT_EQ(Lines(run.errors).size(), code == ExitOk ? 0u : 1u);
    }
    for (const auto& arguments : {std::vector<std::string>{"ticket", "--devmode", "mode.bin", "job.xps"},
                                  {"ticket", "--devmode", "mode.bin", "--explain"},
                                  {"features", "job.xps", "--devmode", "mode.bin"}})
        EXPECT_EQ(CommandRun(arguments).code, ExitUsage);
}

// What a driver stores of passwords is not for everybody who may read its other settings.
TEST_F(SettingsCommandTest, HidesPasswordsAmongTheAttributeBytes) {
    const AttributeBytesRawList list =
        Attributes<AttributeBytesRawList>({{502, AttributeBytesValue::FromString(L"geheim")},
                                           {68, AttributeBytesValue::FromString(L"Report")}});
    const ByteBuffer bytes = StoreOf(list);
    std::string text(200, ' ');
    int length = static_cast<int>(text.size());
    ASSERT_TRUE(OrvelUtilities::Base64Encode(bytes.getLpbyte(), static_cast<int>(bytes.size()), text.data(),
                                             &length, OrvelUtilities::base64WithoutLineBreaks));
    Replace("T0EBARhuMgoSUfsxP7WjAVKgAa8BUdoxowFRry++VDWx", text.substr(0, static_cast<std::size_t>(length)));
    std::ofstream("mode.bin", std::ios::binary) << StoredMode(L"", 0);
    const CommandRun run({"ticket", "--devmode", "mode.bin", "--queue", "queue"});
    EXPECT_THAT(run.out, AllOf(HasSubstr("502 (FEAT_JOB_PASSWORD): string \"(hidden)\""),
                               HasSubstr("68 (FEAT_JOB_NAME): string \"Report\""), Not(HasSubstr("geheim"))));
}

} // namespace
