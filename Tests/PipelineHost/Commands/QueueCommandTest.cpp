// A queue at a glance, as the program shows it.
#include "PipelineHost/Commands/CommandRun.h"
#include "Platform/Spooler/SampleQueue.h"
#include "Support/EnvironmentVariable.h"
#include "Support/Rows.h"

#include <Spooler/QueueFolderWriter.h>

#include <gmock/gmock.h>

using namespace OvPipeline;
using testing::AllOf;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string colorOffice = OV_SOURCE_DIR "/Samples/Queues/ColorOffice";

class QueueCommandTest : public InOwnFolder {
protected:
    // A queue folder named "queue", with bags of its own.
    static void Write(const OvPlatform::QueueValues& queueProperties,
                      const std::wstring& printer = L"Lobby") {
        OvPlatform::QueueDescription queue = SampleQueue();
        queue.printerName = printer;
        queue.defaultTicket =
            "<f:PrintTicket version='1' "
            "xmlns:f='http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework'/>";
        queue.capabilities =
            "<f:PrintCapabilities version='1' "
            "xmlns:f='http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework'/>";
        queue.queueProperties = queueProperties;
        OvPlatform::WriteQueueFolder(queue, "queue");
    }

    EnvironmentVariable m_users{"OV_USER_PROPERTIES", (m_folder / "users").string()};
};

TEST_F(QueueCommandTest, ShowsPrinterBagsOptionsAndAnswers) {
    m_folder.Write("users/color office.xml", R"(<UserProperties version="1">
        <String name="Notify For Completed Jobs">notify-completed-jobs-off</String>
        <String name="Notify For Completed But Altered Jobs">notify-completed-but-altered-jobs-off</String>
        <String name="Notify For Failed or Canceled Jobs">notify-failed-or-canceled-jobs-off</String>
        </UserProperties>)");
    const CommandRun run({"queue", colorOffice});
    EXPECT_EQ(ExitOk, run.code) << run.errors;
    for (const char* line : {
             "name +Color Office",
             "ProductData +stream +[0-9.]+ KB",
             "TrayCount +number +4",
             "OrvelQueueProperties +text +[0-9]+ characters",
             "Notify For Completed Jobs +text +notify-completed-jobs-off",
             "installable-hole-punch-unit-actual +punch-2-and-4-hole-stack\n",
             "installable-fax-out-actual +not-installed +not of this device",
             "accounting prompt +VAL_ACCT_PROMPT_FOR_COLOR",
             "its address set by hand +192.0.2.40",
             "secure print by login +yes",
             "black and white only +no",
             "job tracker of the user +no",
         })
        EXPECT_THAT(run.out, ContainsRegex(line));

    EXPECT_THAT(run.out, Not(ContainsRegex("punch-unit-actual[^\n]+not of")))
        << "those of the device stand once";

    const CommandRun json({"queue", "--json", colorOffice});
    EXPECT_EQ(ExitOk, json.code);
    EXPECT_THAT(json.out,
                AllOf(HasSubstr("\"jobs\": 2"), ContainsRegex("\"TrayCount\",[^}]*\"value\": 4\n"),
                      ContainsRegex("\"fax\",\n *\"answer\": false"),
                      ContainsRegex("\"OrvelQueueProperties\",[^}]*odrv-device-secure-print-only")));
}

TEST_F(QueueCommandTest, ShowsWhatComesFromOutsideSafely) {
    const std::wstring evil = L"\x009b\x202e"; // acts on a terminal, and turns the line round
    Write({{L"A" + evil, evil + L"text"},
           {L"Config:Evil_DOT_Name" + evil, std::wstring(L"Two\x2028Lines")},
           {L"Long", std::wstring(200, L'l')},
           {L"Lines", std::wstring(L"a\nb")},
           {L"Config:NoText", true}},
          L"Lobby\x202e");
    for (const auto& arguments : {std::vector<std::string>{"queue", "queue"}, {"queue", "queue", "--json"}}) {
        const CommandRun run(arguments);
        EXPECT_EQ(ExitOk, run.code) << run.errors;
        EXPECT_THAT(run.out,
                    AllOf(Not(HasSubstr("\xc2\x9b")), Not(HasSubstr("\u202e")), Not(HasSubstr("\u2028"))));
        EXPECT_THAT(run.out, HasSubstr("evil.-name"));
    }
    const CommandRun run({"queue", "queue"});
    EXPECT_THAT(run.out, AllOf(ContainsRegex("Long +text +200 characters"),
                               ContainsRegex("Lines +text +3 characters"), Not(HasSubstr("no-text"))));
}

TEST_F(QueueCommandTest, RefusesInOneLine) {
    Write({{L"OrvelQueueProperties", std::wstring(L"<q><OrvelDeviceSettings>")}});
    m_folder.Write("queue2/queue.xml", "<Queue");
    const Rows<std::vector<std::string>, int, const char*> rows{
        {{"queue"}, ExitUsage, "which queue?"},
        {{"queue", "a", "b"}, ExitUsage, "one queue at a time: a or b?"},
        {{"queue", "--queue", "a"}, ExitUsage, "has no option --queue"},
        {{"queue", "nowhere"}, ExitInputRefused, "nowhere/queue.xml: the file is missing"},
        {{"queue", "queue2"}, ExitInputRefused, "queue2/queue.xml:1"},
        {{"queue", "queue"}, ExitJobFailed, "queue: the queue's settings cannot be read: "},
    };
    for (const auto& [arguments, code, words] : rows) {
        const CommandRun run(arguments);
        EXPECT_EQ(code, run.code) << words;
        EXPECT_THAT(run.errors, HasSubstr(words));
        EXPECT_EQ(1u, Lines(run.errors).size()) << run.errors;
        EXPECT_EQ(code == ExitJobFailed, !run.out.empty()) << "what can be read is shown";
    }
    Write({});
    m_folder.Write("users/lobby.xml", "<UserProperties version=\"9\"/>");
    const CommandRun run({"queue", "queue"});
    EXPECT_EQ(ExitInputRefused, run.code);
    EXPECT_THAT(run.errors, EndsWith("lobby.xml:1: version '9' is not known, only '1'\n"));
}

} // namespace
