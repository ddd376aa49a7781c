#include "PipelineHost/Commands/CommandRun.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"
#include "Support/TestPictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace OvPipeline;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class StampCommand : public InOwnFolder {
protected:
    static CommandRun Stamp(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"stamp", "job.xps"});
        return CommandRun(arguments);
    }
    static std::string Page(const std::string& package, int page, int document = 1) {
        return ReadZip(package).at(SampleJob::PageName(document, page).substr(1));
    }
    void Write(const std::string& name, const std::string& bytes) { m_folder.Write(name, bytes); }
};

TEST_F(StampCommand, StampsATextAndSaysWhere) {
    SampleJob job;
    job.documents = 2;
    job.Write("job.xps");
    const CommandRun result = Stamp({"--text", "Draft <1>", "--font", "DejaVu Sans", "--size", "36",
                                     "--color", "#80FF0000", "--at", "72,-9"});
    EXPECT_EQ(ExitOk, result.code) << result.errors;
    EXPECT_EQ("", result.errors);
    EXPECT_THAT(result.out, AllOf(StartsWith("job-stamped.xps: the text \"Draft "),
                                  HasSubstr("in DejaVu Sans, 36 points on 2 pages\n"),
                                  HasSubstr("only the first of 2 documents")));
    EXPECT_THAT(Page("job-stamped.xps", 2),
                AllOf(HasSubstr("FontRenderingEmSize=\"48\""), HasSubstr("OriginX=\"96\" OriginY=\"-12\""),
                      HasSubstr("#80FF0000")));
    EXPECT_THAT(Page("job-stamped.xps", 2, 2), Not(HasSubstr("Glyphs")));
}

TEST_F(StampCommand, StampsAgainOverTheJobItself) {
    SampleJob().Write("job.xps");
    for (const char* text : {"one", "two", "two"}) {
        const CommandRun result = Stamp({"--text", text, "--first-page", "-o", "job.xps"});
        EXPECT_EQ(ExitOk, result.code) << result.errors;
        EXPECT_THAT(result.out, HasSubstr("on 1 of 2 pages"));
    }
    EXPECT_THAT(Page("job.xps", 1), AllOf(HasSubstr("\"one\""), HasSubstr("\"two\"")));
    EXPECT_THAT(Page("job.xps", 2), Not(HasSubstr("Glyphs")));
    EXPECT_THAT(m_folder.Names(), ElementsAre("job.xps"));
}

TEST_F(StampCommand, StampsAPictureAsLargeAsItSays) {
    using namespace TestPictures;
    SampleJob().Write("job.xps");
    Write("a.bmp", Bmp(300, 150)); // which says no resolution
    Write("b.png", Png(8, 8));
    const CommandRun natural = Stamp({"--image", "a.bmp", "--at", "0,0", "-o", "a.xps"});
    EXPECT_EQ(ExitOk, natural.code) << natural.errors;
    EXPECT_EQ("a.xps: the picture a.bmp on 2 pages\n", natural.out);
    EXPECT_THAT(Page("a.xps", 1),
                AllOf(HasSubstr("Viewbox=\"0,0,300,150\""), HasSubstr("Viewport=\"0,0,96,48\"")));
    const CommandRun scaled =
        Stamp({"--image", "a.bmp", "--width", "36", "--opacity", "0.25", "-o", "a.xps"});
    EXPECT_EQ(ExitOk, scaled.code) << scaled.errors;
    EXPECT_THAT(Page("a.xps", 1),
                AllOf(HasSubstr("Viewport=\"48,48,48,24\""), HasSubstr("Opacity=\"0.25\"")));
    EXPECT_EQ(ExitOk, Stamp({"--image", "b.png", "-o", "a.xps"}).code);
    EXPECT_EQ(ReadZip("a.xps").at("Resources/Images/Stamp1.png"), TestPictures::Png(8, 8));
}

TEST_F(StampCommand, RefusesWithOneLineAndLeavesNoOutput) {
    ZipItems faulty = SampleJob().Items();
    faulty["Documents/1/Pages/2.fpage"] = "<FixedPage";
    WriteZip("faulty.xps", faulty);
    SampleJob().Write("job.xps");
    Write("words.png", "this is a text");
    Write("wrong.jpg", TestPictures::Png(8, 8));
    Write("cut.png", TestPictures::Png(8, 8).substr(0, 40));
    const Rows<std::vector<std::string>, int, std::string> rows{
        {{"stamp", "job.xps"}, ExitUsage, "wants --text TEXT or --image FILE"},
        {{"stamp", "job.xps", "--text", "a", "--image", "b.png"},
         ExitUsage,
         "wants --text TEXT or --image FILE"},
        {{"stamp", "job.xps", "--text", ""}, ExitUsage, "--text is given an empty value"},
        {{"stamp", "job.xps", "--text", "a\nb"}, ExitUsage, "--text is one line"},
        {{"stamp", "job.xps", "--text", "a\uFFFE"}, ExitUsage, "--text holds what is no character"},
        {{"stamp", "--text", "a"}, ExitUsage, "which job?"},
        {{"stamp", "job.xps", "--text", "a", "-o", "-"}, ExitUsage, "a file, not the output stream"},
        {{"stamp", "job.xps", "--text", "a", "--size", "0"}, ExitUsage, "from 1 to 1000"},
        {{"stamp", "job.xps", "--text", "a", "--color", "red"}, ExitUsage, "RRGGBB or AARRGGBB, not \"red\""},
        {{"stamp", "job.xps", "--text", "a", "--at", "1;2"}, ExitUsage, "X,Y in points"},
        {{"stamp", "job.xps", "--text", "a", "--width", "3"}, ExitUsage, "--width goes with --image"},
        {{"stamp", "job.xps", "--image", "words.png", "--size", "9"}, ExitUsage, "--size goes with --text"},
        {{"stamp", "job.xps", "--image", "a.tif"}, ExitInputRefused, "a.tif cannot be read: 0x80070002"},
        {{"stamp", "job.xps", "--image", "."}, ExitInputRefused, ". cannot be read: 0x80070005"},
        {{"stamp", "job.xps", "--image", "faulty.xps"}, ExitUsage, "ends in .jpg, .png, .gif or .bmp"},
        {{"stamp", "job.xps", "--image", "words.png"},
         ExitInputRefused,
         "words.png is not what its name says"},
        {{"stamp", "job.xps", "--image", "wrong.jpg"},
         ExitInputRefused,
         "wrong.jpg is not what its name says"},
        {{"stamp", "job.xps", "--image", "cut.png"}, ExitInputRefused, "cut.png is damaged"},
        {{"stamp", "missing.xps", "--text", "a"}, ExitInputRefused, "missing.xps"},
        {{"stamp", "words.png", "--text", "a"}, ExitInputRefused, "not a zip archive"},
        {{"stamp", "faulty.xps", "--text", "a"}, ExitInputRefused, "/Documents/1/Pages/2.fpage"},
        {{"stamp", "job.xps", "--text", "a", "-o", "missing/out.xps"},
         ExitJobFailed,
         "job.xps: missing/out.xps: "},
        {{"stamp", "job.xps", "--image", "cut.png", "-o", "cut.png"}, ExitUsage, "of the picture cut.png"},
    };
    const auto before = m_folder.Names();
    for (const auto& [arguments, code, words] : rows) {
        const CommandRun result(arguments);
        EXPECT_EQ(code, result.code) << result.errors;
        EXPECT_EQ("", result.out);
        EXPECT_THAT(Lines(result.errors), ElementsAre(StartsWith("ov-pipeline: ")));
        EXPECT_THAT(result.errors, HasSubstr(words));
    }
    EXPECT_EQ(m_folder.Names(), before);
}

TEST_F(StampCommand, WarnsWhereAStampBreaksASignatureOrAFontLacksCharacters) {
    ZipItems items = SampleJob().Items();
    items["Signatures/origin.xml"] = "<o/>";
    items["_rels/.rels"].insert(items["_rels/.rels"].find("</Relationships>"),
                                "<Relationship Id=\"S\" Target=\"/Signatures/origin.xml\" Type=\"" +
                                    SampleJob::package + "/digital-signature/origin\"/>");
    WriteZip("job.xps", items);
    const CommandRun result = Stamp({"--text", "\xE2\xA0\x81\xE9\xBE\x98", "--font", "DejaVu Sans"});
    EXPECT_EQ(ExitOk, result.code) << result.errors;
    EXPECT_THAT(
        Lines(result.errors),
        ElementsAre("ov-pipeline: job.xps: warning: the font DejaVu Sans may lack characters of the text",
                    "ov-pipeline: job.xps: warning: its digital signatures do not hold for what is written"));
}

} // namespace
