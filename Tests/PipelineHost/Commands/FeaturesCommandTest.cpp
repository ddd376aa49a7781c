// What a job asks for, as the program shows it.
#include "FilterUtilities/FeatureAccess/JobUnderTest.h"
#include "PipelineHost/Commands/CommandRun.h"
#include "Support/InApartment.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"
#include "Support/TicketText.h"

#include <Commands/FeatureReport.h>
#include <Common/Text.h>
#include <Report/JsonText.h>
#include <Spooler/QueueFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

using namespace OvPipeline;
using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string sampleQueue = OV_SOURCE_DIR "/Samples/Queues/ColorOffice";

std::string LineOf(const std::string& table, const std::string& feature) {
    for (const std::string& line : Lines(table))
        if (line.find(" " + feature + " ") != std::string::npos) return line;
    return "no line of " + feature;
}

// The object of a feature, without line breaks.
std::string ObjectOf(const std::string& json, const std::string& feature) {
    const std::size_t name = json.find("\"feature\": \"" + feature + "\"");
    if (name == std::string::npos) return "no object of " + feature;
    const std::size_t start = json.rfind('{', name);
    return std::regex_replace(json.substr(start, json.find('}', name) + 1 - start), std::regex("\n *"), " ");
}

class FeaturesCommandTest : public InOwnFolder {
protected:
    void SetUp() override {
        std::filesystem::copy(sampleQueue, "queue");
        for (const auto& file : std::filesystem::directory_iterator("queue"))
            std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }

    std::string Run(std::vector<std::string> arguments, int code = ExitOk) {
        arguments.insert(arguments.begin(), {"features", "job.xps", "--queue", "queue"});
        const CommandRun run(arguments);
        EXPECT_EQ(run.code, code) << run.errors;
        EXPECT_EQ(code == ExitOk, run.errors.empty());
        return code == ExitOk ? run.out : run.errors;
    }
};

TEST_F(FeaturesCommandTest, ShowsEachPlaceDecidingSomething) {
    SampleJob job;
    job.jobTicket = SampleTicket("PageOrientation", "Landscape");
    job.pageTicket = SampleTicket("PageOrientation", "Portrait");
    job.Write("job.xps");
    const std::string table = Run({});
    // pattern: what the device says, then what the job asks for, then who decided
    const Rows<const char*, const char*> cases{
        {"FEAT_MS_ORIENTATION",
         "yes +no +yes +5011 VAL_MS_ORIENTATION_LANDSCAPE +ticket +odrv-ms-orientation +"},
        {"FEAT_PRINT_QUALITY_LEVEL", "yes +yes +yes +[0-9]+ VAL_QUALITY_[A-Z_]+ +document settings +"},
        {"FEAT_MEDIA_WEIGHT", "yes +no +yes +[0-9]+ +attribute bytes +"},
        {"FEAT_JOB_TYPE", "yes +yes +yes +7890 VAL_JOB_TYPE_NORMAL_PRINT +factory default +"},
        {"FEAT_AL_HANDLER", "no +no +no +odrv-al-handler +AdaptiveLe\\S+ +_odrvalhandler_"},
    };
    for (const auto& [feature, pattern] : cases)
        EXPECT_THAT(LineOf(table, feature), ContainsRegex(std::string(feature) + " +" + pattern));
    EXPECT_THAT(table, ContainsRegex("\norientation +yes +5011 VAL_MS_ORIENTATION_LANDSCAPE +ticket\n"));
    // As the queue's administrator wants.
    EXPECT_THAT(table, ContainsRegex("FEAT_SIDES_IMAGED .* VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE +ticket"));
    EXPECT_THAT(table, ContainsRegex("\njob name +yes +job.xps +rule\n"));
    EXPECT_THAT(LineOf(Run({"--page", "1"}), "FEAT_MS_ORIENTATION"),
                HasSubstr("VAL_MS_ORIENTATION_PORTRAIT"));
}

TEST_F(FeaturesCommandTest, TellsProgramsTheSameAndNobodyPasswords) {
    const std::string ticket = TicketText(Choice("pskv11:JobPasscode", "psk:On") +
                                          "<psf:ParameterInit name=\"pskv11:JobPasscodeString\"><psf:Value "
                                          "xsi:type=\"xsd:string\">2718</psf:Value></psf:ParameterInit>");
    SampleJob job;
    job.jobTicket = ticket;
    job.Write("job.xps");
    const std::string table = Run({});
    for (const char* const feature : {"FEAT_MS_PIN_PRINTING_STRING", "FEAT_JOB_PASSWORD"})
        EXPECT_THAT(LineOf(table, feature), ContainsRegex("\\(hidden\\) +ticket"));
    EXPECT_THAT(table, Not(HasSubstr("2718")));
    const std::string json = Run({"--json"});
    EXPECT_THAT(ObjectOf(json, "FEAT_JOB_PASSWORD"), HasSubstr("\"specified\": true, \"value\": null"));
    EXPECT_THAT(
        ObjectOf(json, "FEAT_PRINT_QUALITY_LEVEL"),
        AllOf(ContainsRegex("\"cpssName\": \"[a-z-]+\","),
              ContainsRegex("\"supported\": true, \"required\": true, \"specified\": true, \"value\": "
                            "[0-9]+, \"valueName\": \"VAL_QUALITY_[A-Z_]+\", \"source\": \"document "
                            "settings\"")));
    EXPECT_THAT(json, HasSubstr("\"name\": \"job name\""));
    EXPECT_THAT(json, Not(HasSubstr("2718")));
}

TEST_F(FeaturesCommandTest, RefusesWhatItCannotRead) {
    SampleJob().Write("job.xps");
    const std::regex bytes("(JobOrvelCompleteDocSettings\">[^>]*>)([A-Za-z0-9+/=\\s]{12})");
    const std::string ticket = TemporaryFolder::Read("queue/default-ticket.xml");
    ASSERT_TRUE(std::regex_search(ticket, bytes));
    for (const char* const damaged : {"$1AAAAAAAAAAAA", "$1-$2"}) { // another store; no Base64
        std::ofstream("queue/default-ticket.xml") << std::regex_replace(ticket, bytes, damaged);
        EXPECT_THAT(Run({}, ExitInputRefused),
                    HasSubstr("the driver's settings in the ticket cannot be read"));
    }
    std::ofstream("queue/default-ticket.xml") << ticket;
    std::ofstream("queue/device-capabilities.xml") << "<Capabilities/>";
    EXPECT_THAT(Run({}, ExitInputRefused),
                HasSubstr(": queue/device-capabilities.xml: device capabilities, line"));
}

// Of the sample queue's documents, on a device with these features.
class FeatureReportTest : public InApartment<> {
protected:
    JobSettings& Settings(const std::string& device = {}) {
        const std::string document = "<DeviceCapabilities version='1.0'>" + device + "</DeviceCapabilities>";
        const auto queue = OvPlatform::QueueFolder::Load(sampleQueue);
        return m_settings.emplace(CXString(Wide(queue->DefaultTicket())),
                                  CXString(Wide(queue->Capabilities())),
                                  OvlSharedPtr<SimpleOcapParser>::make(CPString(document.c_str())));
    }

private:
    std::optional<JobSettings> m_settings;
};

TEST_F(FeatureReportTest, KeepsTextsOfTheJobFromSpoilingItsForm) {
    JobSettings& settings = Settings();
    settings.Features().SetStringValue(DataModelIds::FEAT_CURRENT_USER_NAME, L"Anna \"A\" \\ \tB\nC \u20AC",
                                       true);
    const FeatureReport report(settings);
    EXPECT_THAT(LineOf(report.AsTable(), "FEAT_CURRENT_USER_NAME"),
                HasSubstr(" Anna \"A\" \\ \\tB\\nC \xE2\x82\xAC  "));
    EXPECT_THAT(ObjectOf(report.AsJson().Result(), "FEAT_CURRENT_USER_NAME"),
                HasSubstr("\"value\": \"Anna \\\"A\\\" \\\\ \\u0009B\\u000aC \xE2\x82\xAC\""));
}

TEST_F(FeatureReportTest, ShowsLengthsInTheUnitOfTheDeviceAndInWords) {
    using namespace DataModelIds;
    std::vector<OfferedFeature> device;
    for (const char* const name : {"x-side1-image-shift", "y-side1-image-shift", "x-side2-image-shift"}) {
        device.push_back({name, {}, true, "350"});
        device.back().isInteger = true;
    }
    device[2].isRequired = false;
    JobSettings& settings = Settings(DeviceDocument(device));
    settings.AttributeBytes().GetAttributeBytesIndexedListRef().AddAttributeBytes(
        AttributeBytes(AttributeBytesFeatureId(FEAT_X1_IMAGE_SHIFT),
                       AttributeBytesValue::FromDimension(Dimension(-2500, Dimension::Micron))));
    const FeatureReport report(settings);
    EXPECT_THAT(LineOf(report.AsTable(), "FEAT_X1_IMAGE_SHIFT"),
                testing::ContainsRegex(" yes +-250 -2.5 mm +attribute bytes "));
    EXPECT_THAT(LineOf(report.AsTable(), "FEAT_Y1_IMAGE_SHIFT"),
                testing::ContainsRegex(" yes +350 3.5 mm +factory default "));
    EXPECT_THAT(ObjectOf(report.AsJson().Result(), "FEAT_X2_IMAGE_SHIFT"),
                HasSubstr("\"specified\": false, \"value\": null, \"valueName\": null, \"source\": null"));
}

} // namespace
