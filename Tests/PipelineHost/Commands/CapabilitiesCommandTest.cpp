// What a queue offers, as the program shows it.
#include "PipelineHost/Commands/CommandRun.h"
#include "Platform/Spooler/SampleQueue.h"
#include "Support/Rows.h"

#include <Spooler/QueueFolderWriter.h>

#include <gmock/gmock.h>

using namespace OvPipeline;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* spaces =
    R"( version="1" xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework")"
    R"( xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords")"
    R"( xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xmlns:xsd="http://www.w3.org/2001/XMLSchema")"
    R"( xmlns:qc="urn:ov-platform:queue-constraints:1">)";

std::string Property(const std::string& name, const std::string& type, const std::string& value) {
    return "<psf:Property name=\"" + name + "\"><psf:Value xsi:type=\"xsd:" + type + "\">" + value +
           "</psf:Value></psf:Property>";
}
std::string Scored(const std::string& name, const std::string& value) {
    return "<psf:ScoredProperty name=\"" + name + "\"><psf:Value xsi:type=\"xsd:integer\">" + value +
           "</psf:Value></psf:ScoredProperty>";
}

class CapabilitiesCommandTest : public InOwnFolder {
protected:
    static void Write(const std::string& capabilities, const std::string& defaults = {},
                      const OvPlatform::QueueValues& queueProperties = {}) {
        OvPlatform::QueueDescription queue = SampleQueue();
        queue.printerName = L"Lobby";
        queue.defaultTicket = std::string("<psf:PrintTicket") + spaces + defaults + "</psf:PrintTicket>";
        queue.capabilities =
            std::string("<psf:PrintCapabilities") + spaces + capabilities + "</psf:PrintCapabilities>";
        queue.queueProperties = queueProperties;
        OvPlatform::WriteQueueFolder(queue, "queue");
    }

    const std::string m_sizes =
        "<psf:Feature name=\"psk:PageMediaSize\">" + Property("psk:DisplayName", "string", "Paper, size") +
        "<psf:Option name=\"psk:NorthAmericaLetter\">" + Property("psk:DisplayName", "string", "Letter, US") +
        Scored("psk:MediaSizeWidth", "215900") + Scored("psk:MediaSizeHeight", "279400") +
        Scored("psk:Weight", "80") + "</psf:Option>" +
        "<psf:Option name=\"psk:ISOA4\" constrained=\"psk:DeviceSettings\">" +
        Scored("psk:MediaSizeWidth", "210000") + Scored("psk:MediaSizeHeight", "297000") +
        "</psf:Option></psf:Feature>";
    const std::string m_duplex =
        "<psf:Feature name=\"psk:JobDuplexAllDocumentsContiguously\">" +
        Property("psf:SelectionType", "QName", "psk:PickMany") +
        "<psf:Option name=\"psk:OneSided\"/><psf:Option name=\"psk:TwoSidedLongEdge\"/>"
        "<psf:Feature name=\"psk:Inner\"><psf:Option name=\"psk:Yes\"/><psf:Option "
        "name=\"psk:No\"/></psf:Feature>"
        "</psf:Feature>";
    const std::string m_copies =
        "<psf:ParameterDef name=\"psk:JobCopies\">" + Property("psf:DataType", "QName", "xsd:integer") +
        Property("psf:UnitType", "string", "microns") + Property("psf:DefaultValue", "integer", "2000") +
        Property("psf:MinValue", "integer", "1000") + Property("psf:MaxValue", "integer", "25400") +
        Property("psf:Multiple", "integer", "5") + Property("psf:Mandatory", "QName", "psk:Unconditional") +
        "</psf:ParameterDef>";
    const std::string m_rule =
        "<qc:Constraint><qc:Choice feature=\"psk:PageMediaSize\" options=\"psk:ISOA4 "
        "psk:NorthAmericaLetter\"/><qc:Choice feature=\"psk:JobDuplexAllDocumentsContiguously\" "
        "options=\"psk:OneSided\"/></qc:Constraint>";
};

TEST_F(CapabilitiesCommandTest, ShowsFeaturesParametersAndRules) {
    Write(m_sizes + m_duplex + m_copies + m_rule + Property("psk:Speed", "integer", "45"),
          "<psf:Feature name=\"psk:JobDuplexAllDocumentsContiguously\"><psf:Option "
          "name=\"psk:TwoSidedLongEdge\"/>"
          "</psf:Feature><psf:ParameterInit name=\"psk:JobCopies\"><psf:Value xsi:type=\"xsd:integer\">3000"
          "</psf:Value></psf:ParameterInit>");
    const CommandRun run({"capabilities", "--queue", "queue"});
    EXPECT_EQ(ExitOk, run.code) << run.errors;
    for (const char* line : {
             "Lobby: 2 features, 1 parameter, 1 rule",
             "Paper, size +psk:PageMediaSize +\\(page, one of 2\\)\n",
             "  \\* +Letter, US +psk:NorthAmericaLetter +215.9 x 279.4 mm \\(8.5 x 11 in\\), Weight 80\n",
             "    psk:ISOA4 +210 x 297 mm \\(8.27 x 11.69 in\\) +not available: psk:DeviceSettings\n",
             "\npsk:JobDuplexAllDocumentsContiguously +\\(job, any of 2\\)\n +psk:OneSided\n +\\* "
             "+psk:TwoSided",
             "\n    psk:Inner +\\(job, one of 2\\)\n      \\* +psk:Yes\n +psk:No\n",
             "psk:JobCopies +integer +1000 to 25400 microns \\(1 to 25.4 mm\\), in steps of 5 +job, in every "
             "ticket +default 3000\n",
             "Paper, size \"Letter, US\", \"psk:ISOA4\" not with psk:JobDuplexAllDocumentsContiguously "
             "\"psk:OneSided\"\n +of choices made alike, psk:JobDuplexAllDocumentsContiguously gives "
             "way\n",
             "psk:Speed +45\n",
         })
        EXPECT_THAT(run.out, ContainsRegex(line));

    const CommandRun json({"capabilities", "--queue", "queue", "--json"});
    EXPECT_EQ(ExitOk, json.code);
    for (const char* member : {
             "\"name\": \"psk:NorthAmericaLetter\",\n *\"displayName\": \"Letter, US\",\n *\"isDefault\": "
             "true,\n "
             "*\"constrained\": null,\n *\"sizeInMicrons\": \\{\n *\"width\": 215900,\n *\"height\": "
             "279400\n",
             "\"constrained\": \"psk:DeviceSettings\"",
             "\"level\": \"job\",\n *\"pick\": \"many\"",
             "\"need\": \"always\",\n *\"type\": \"integer\",\n *\"unit\": \"microns\",\n *\"minimum\": "
             "\"1000\"",
             "\"default\": \"3000\"",
             "\"givesWay\": \"psk:JobDuplexAllDocumentsContiguously\"",
         })
        EXPECT_THAT(json.out, ContainsRegex(member));
}

TEST_F(CapabilitiesCommandTest, ShowsOneFeatureByAnyOfItsNames) {
    Write(m_sizes + m_duplex + m_copies + m_rule);
    const Rows<const char*, const char*, const char*> rows{
        {"pagemediasize", "psk:PageMediaSize +\\(page", "JobCopies"},
        {"PSK:PageMediaSize", "not with", "JobCopies"},
        {"paper, SIZE", "Letter", "JobCopies"},
        {"Inner", "psk:Inner +\\(job", "not with"},
        {"jobcopies", "^parameters\n +psk:JobCopies", "Paper"},
    };
    for (const auto& [name, shown, left] : rows) {
        const CommandRun run({"capabilities", "--queue", "queue", "--feature", name});
        EXPECT_EQ(ExitOk, run.code) << name;
        EXPECT_THAT(run.out, AllOf(ContainsRegex(shown), Not(HasSubstr(left)), Not(HasSubstr("Lobby"))))
            << name;
    }
    const CommandRun none({"capabilities", "--queue", "queue", "--feature", "Page"});
    EXPECT_EQ(ExitJobFailed, none.code);
    EXPECT_EQ("ov-pipeline: the queue has no feature and no parameter \"Page\"\n", none.errors);
}

TEST_F(CapabilitiesCommandTest, ShowsWhatTheAdministratorMakesOfFeatures) {
    const CommandRun run({"capabilities", "--queue", OV_SOURCE_DIR "/Samples/Queues/ColorOffice", "--feature",
                          "JobIdentification"});
    EXPECT_EQ(ExitOk, run.code) << run.errors;
    EXPECT_THAT(run.out,
                HasSubstr("policy (EnforcedSetting): tickets: option of ok:JobIdentification becomes "));

    Write(m_sizes, {}, {{L"OrvelQueueProperties", std::wstring(L"<q><OrvelQueuePrePostConfiguration>")}});
    const CommandRun damaged({"capabilities", "--queue", "queue"});
    EXPECT_EQ(ExitJobFailed, damaged.code);
    EXPECT_THAT(damaged.out, HasSubstr("psk:PageMediaSize")) << "what can be read is shown";
    EXPECT_THAT(damaged.errors, HasSubstr("ov-pipeline: the queue's configuration: "));
    EXPECT_EQ(1u, Lines(damaged.errors).size());
}

TEST_F(CapabilitiesCommandTest, ShowsWhatComesFromOutsideSafelyAndRefusesInOneLine) {
    Write("<psf:Feature name=\"psk:Page\">" + Property("psk:DisplayName", "string", "a\u202e&#xA;b\xc2\x9b") +
          "</psf:Feature>");
    for (const auto& arguments : {std::vector<std::string>{"capabilities", "--queue", "queue"},
                                  {"capabilities", "--queue", "queue", "--json"}}) {
        const CommandRun run(arguments);
        EXPECT_EQ(ExitOk, run.code) << run.errors;
        EXPECT_THAT(run.out,
                    AllOf(Not(HasSubstr("\u202e")), Not(HasSubstr("\xc2\x9b")), Not(HasSubstr("\nb"))));
    }
    Write("<psf:Option name=\"psk:X\"/>");
    const Rows<std::vector<std::string>, int, const char*> rows{
        {{"capabilities", "queue"}, ExitUsage, "ov-pipeline capabilities takes no queue"},
        {{"capabilities", "--queue", "nowhere"}, ExitInputRefused, "nowhere/queue.xml: the file is missing"},
        {{"capabilities", "--queue", "queue"}, ExitInputRefused, "queue: "},
    };
    for (const auto& [arguments, code, words] : rows) {
        const CommandRun run(arguments);
        EXPECT_EQ(code, run.code) << words;
        EXPECT_EQ("", run.out);
        EXPECT_THAT(run.errors, HasSubstr(words));
        EXPECT_EQ(1u, Lines(run.errors).size()) << run.errors;
    }
}

} // namespace
