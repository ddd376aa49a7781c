// What is put onto the pages of a job, from all places that may say something of it, as the program shows it.
#include "PipelineHost/Commands/CommandRun.h"
#include "Support/AttributeLists.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"
#include "Support/TicketText.h"

#include <AnnotationStore/AnnotationStore.h>
#include <ClientJobData/ClientJobData2ReaderWriter.h>
#include <ComSupport/MsSafeCoinit.h>
#include <DataModel/FeatureIds.h>
#include <DataModel/ValueIds.h>
#include <SystemServices/OrvelUtilities.h>

#include <windows.h>
#include <gmock/gmock.h>

#include <fstream>
#include <regex>

using namespace DataModelIds;
using namespace OvPipeline;
using testing::AllOf;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Value = AttributeBytesValue;

std::string Base64(const ByteBuffer& bytes) {
    const int count = static_cast<int>(bytes.size());
    constexpr unsigned int oneLine = OrvelUtilities::base64WithoutLineBreaks;
    int length = OrvelUtilities::Base64EncodeGetRequiredLength(count, oneLine);
    std::string text(static_cast<std::size_t>(length), ' ');
    EXPECT_TRUE(OrvelUtilities::Base64Encode(bytes.getLpbyte(), count, text.data(), &length, oneLine));
    return text.substr(0, static_cast<std::size_t>(length));
}

/// A parameter of a ticket in the driver's own namespace.
std::string Parameter(const std::string& name, const std::string& text) {
    return "<psf:ParameterInit name=\"ok:" + name +
           "\" xmlns:ok=\"http://schemas.orvel.example/enterprise/print/driver/native/"
           "printSchemaPrivateKeywords/2006/11\"><psf:Value xsi:type=\"xsd:string\"><![CDATA[" +
           text + "]]></psf:Value></psf:ParameterInit>";
}
std::string Settings(const std::string& content) {
    return Parameter("JobOrvelPublicDocSettings",
                     "<OrvelPublicDocSettings>" + content + "</OrvelPublicDocSettings>");
}
std::string Definition(const std::string& text) {
    return "<annotation-col-api><annotation-element-col-api><e><type-api>type-text</type-api><text-api>" +
           text + "</text-api></e></annotation-element-col-api></annotation-col-api>";
}
std::string Bytes(std::initializer_list<std::pair<LONG, Value>> attributes) {
    return Parameter("JobOrvelCompleteDocSettings",
                     Base64(StoreOf(Attributes<AttributeBytesRawList>(attributes))));
}
Value Members(std::initializer_list<std::pair<LONG, Value>> attributes) {
    return Value::FromCollection(Attributes(attributes));
}
std::string ClientData(const std::string& definitionName, const std::string& text) {
    AnnotationStore store;
    store.AddOrReplaceAnnotationDefinition(CXString(definitionName.c_str()),
                                           CPString(Definition(text).c_str()));
    ClientJobData2ReaderWriter data;
    data.AddOrReplaceInParameterList(203, CXString(store.GetAnnotationStoreXml()));
    return Parameter("JobOrvelClientJobData2Parameters", Base64(data.GetClientJobData2()));
}

class AnnotationsCommandTest : public InOwnFolder {
protected:
    const MsSafeCoInit m_apartment;

    void SetUp() override {
        std::filesystem::copy(OV_SOURCE_DIR "/Samples/Queues/ColorOffice", "queue");
        for (const auto& file : std::filesystem::directory_iterator("queue"))
            std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        std::ofstream("queue/queue-properties.xml") << "<p/>"; // whose administrator enforces something
        AnnotationStore store;
        store.AddOrReplaceAnnotationDefinition(L"Mine", CPString(Definition("the queue's").c_str()));
        store.AddOrReplaceAnnotationDefinition(L"Long",
                                               CPString(Definition(std::string(11'000, 'x')).c_str()));
        std::ofstream("queue/annotation-store.xml") << store.GetAnnotationStoreXml().view();
    }

    static CommandRun Show(const std::string& ticket, const std::vector<std::string>& more = {}) {
        SampleJob job;
        job.jobTicket = TicketText(ticket);
        ZipItems items = job.Items();
        for (const int page : {1, 2})
            items.at(SampleJob::PageName(1, page).substr(1)) =
                "<FixedPage xmlns=\"" + job.Base() + "\" Width=\"800\" Height=\"600\"/>";
        WriteZip("job.xps", items);
        std::vector<std::string> arguments{"annotations", "job.xps", "--queue", "queue"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return CommandRun(arguments);
    }
    /// The values of one name, in their order.
    static std::vector<std::string> Values(const CommandRun& run, const std::string& name) {
        std::vector<std::string> values;
        for (const std::string& line : Lines(run.out))
            if (std::smatch found; std::regex_match(line, found, std::regex("  " + name + " +(.*)")))
                values.push_back(found[1]);
        return values;
    }
};

TEST_F(AnnotationsCommandTest, TellsWhatEachPlaceSaysAndWhoItWas) {
    const auto element = [](const wchar_t* text) {
        AttributeBytesRawList set;
        set.AddAttributeBytes(
            AttributeBytes(AttributeBytesFeatureId(0),
                           Members({{FEAT_ANNOTATION_TYPE, Value::FromOption(VAL_ANNOTATION_TYPE_TEXT)},
                                    {FEAT_ANNOTATION_TEXT, Value::FromString(text)}})));
        return Value::FromCollection(
            Attributes({{FEAT_ANNOTATION_ELEMENT_COL, Value::FromCollectionSet(set)}}));
    };
    const std::string byName = "<annotation-name-api>Mine</annotation-name-api>";
    const std::string bytes = Bytes({{FEAT_ANNOTATION_COL, element(L"the driver's")}});
    const Rows<std::string, std::string, std::string> cases{
        {Settings(Definition("own")), "own", "document settings in the ticket"},
        {Settings(Definition("own")) + bytes, "own", "document settings in the ticket"},
        {bytes, "the driver's", "attribute bytes in the ticket"},
        {Settings(byName), "the queue's", "definition that the queue keeps"},
        {Settings(byName) + ClientData("Mine", "the client's"), "the client's",
         "definition that the client sent along"},
        {Settings(byName) + ClientData("Other", "the client's"), "the queue's",
         "definition that the queue keeps"},
        {Bytes({{FEAT_ANNOTATION_NAME, Value::FromString(L"Mine")}}), "the queue's",
         "definition that the queue keeps"},
    };
    for (const auto& [ticket, text, origin] : cases) {
        const CommandRun run = Show(ticket);
        EXPECT_EQ(run.code, ExitOk);
        EXPECT_EQ(run.errors, "");
        EXPECT_THAT(Values(run, "text"), ElementsAre(text));
        EXPECT_THAT(Values(run, "from"), ElementsAre(origin));
    }
    const CommandRun none = Show("");
    EXPECT_EQ(none.out, "The job has no annotations.\n");
    const CommandRun unknown = Show(Settings("<annotation-name-api>Yours</annotation-name-api>"));
    EXPECT_EQ(unknown.code, ExitOk);
    EXPECT_THAT(unknown.errors,
                AllOf(HasSubstr("job.xps: warning: "), HasSubstr("nobody has a definition of: Yours")));
    const CommandRun tooLong = Show(Settings("<annotation-name-api>Long</annotation-name-api>"));
    EXPECT_EQ(tooLong.out, "");
    EXPECT_THAT(tooLong.errors,
                AllOf(HasSubstr("job.xps: "), HasSubstr("cannot take the annotation definition Long")));
}

TEST_F(AnnotationsCommandTest, AddsTheMarkOfTheJobAndTheLinesOfAFax) {
    const std::string identified =
        "<psf:Feature name=\"ok:JobIdentification\" xmlns:ok=\"http://schemas.orvel."
        "example/enterprise/print/driver/native/printSchemaPrivateKeywords/2006/11\">"
        "<psf:Option name=\"ok:JobIdPrintAllPages\"/></psf:Feature>";
    const CommandRun marked = Show(identified + Settings(Definition("own")));
    EXPECT_THAT(Values(marked, "kind"), ElementsAre("text", "mark of the job"));
    EXPECT_THAT(Values(marked, "from"), ElementsAre("document settings in the ticket", "job identification"));
    EXPECT_THAT(Values(marked, "text").at(1), ContainsRegex("^.+,  .+,  job.xps$"));
    EXPECT_THAT(Values(marked, "pages"), ElementsAre("all", "all"));

    const std::string fax = Bytes({{274, Members({{289, Members({{292, Value::FromString(L"Ada")},
                                                                 {297, Value::FromString(L"Call me")}})}})},
                                   {979, Value::FromString(L"From,To,Notes")}});
    const CommandRun sheet = Show(fax);
    EXPECT_THAT(Values(sheet, "text"), ElementsAre("From", "Ada", "Notes", "Call me"));
    EXPECT_THAT(Values(sheet, "from"), testing::Each("fax cover sheet"));
    EXPECT_THAT(Values(sheet, "pages"), testing::Each("first only"));
    EXPECT_THAT(Values(sheet, "part of the font").at(0),
                HasSubstr("/Resources/FaxCoverSheet/Annotations/Fonts/"));
}

TEST_F(AnnotationsCommandTest, TellsOfPagesFontsAndPictures) {
    const std::string elements =
        "<annotation-col-api><annotation-element-col-api>"
        "<e><type-api>type-page-numbers</type-api><text-api>No. 9</text-api><font-name-api>DejaVu "
        "Sans</font-name-api></e>"
        "<e><type-api>type-text</type-api><text-api>\xE6\x97\xA5</text-api><font-name-api>DejaVu "
        "Sans</font-name-api></e>"
        "<e><type-api>type-text</type-api><text-api>x</text-api><font-name-api>No Such "
        "Face</font-name-api></e>"
        "<e><type-api>type-picture</type-api><text-api>" OV_SOURCE_DIR "/Samples/Jobs/seal.bmp</text-api></e>"
        "<e><type-api>type-picture</type-api><text-api>gone.png</text-api></e>"
        "</annotation-element-col-api></annotation-col-api>";
    const CommandRun run = Show(Settings(elements), {"--page", "2"});
    EXPECT_EQ(run.code, ExitOk);
    EXPECT_THAT(Values(run, "text"), ElementsAre("No. 10", "\xE6\x97\xA5", "x"));
    EXPECT_THAT(Values(run, "characters of the font").at(0), "No. 9012345678");
    const std::vector<std::string> reasons = Values(run, "why this font");
    ASSERT_EQ(reasons.size(), 3u);
    EXPECT_EQ(reasons[0], "as asked for");
    EXPECT_THAT(reasons[1], HasSubstr("the first that has all characters; asked for: DejaVu Sans"));
    EXPECT_THAT(reasons[2], HasSubstr("as asked for; the system lacks it, and takes "));
    EXPECT_THAT(run.out, ContainsRegex("  horizontal resolution +200.00 +dots per inch\n"));
    EXPECT_THAT(run.out, ContainsRegex("  problem +the file cannot be read, or is no picture\n"));
    EXPECT_THAT(run.errors, HasSubstr("warning: An annotation in DejaVu Sans is written in "));

    const CommandRun json = Show(Settings(elements), {"--json"});
    EXPECT_THAT(json.out, AllOf(HasSubstr("\"page\": 1"), HasSubstr("\"width\": 800.00"),
                                HasSubstr("\"text\": \"No. 9\""), HasSubstr("\"fontSize\": 72")));
}

TEST_F(AnnotationsCommandTest, RefusesWhatIsDamagedInOneLine) {
    const std::string own = Settings(Definition("own"));
    EXPECT_EQ(Show(own, {"--page", "3"}).code, ExitUsage);
    EXPECT_EQ(Show(own, {"--document", "1"}).code, ExitUsage);
    const CommandRun client = Show(own + Parameter("JobOrvelClientJobData2Parameters", "T0oB!"));
    EXPECT_THAT(client.errors, HasSubstr("The client's data in the ticket are damaged"));
    const CommandRun bytes = Show(own + Parameter("JobOrvelCompleteDocSettings", "T0EBARhu"));
    EXPECT_THAT(bytes.errors, HasSubstr("the driver's settings in the ticket cannot be read"));
    std::ofstream("queue/annotation-store.xml") << "<AnnotationStore version='9'/>";
    const CommandRun store = Show(own);
    EXPECT_THAT(store.errors, HasSubstr("the queue property AnnotationStore: "));
    for (const CommandRun* const run : {&client, &bytes, &store}) {
        EXPECT_EQ(run->code, ExitInputRefused) << run->errors;
        EXPECT_EQ(Lines(run->errors).size(), 1u) << run->errors;
        EXPECT_EQ(run->out, "");
    }
}

} // namespace
