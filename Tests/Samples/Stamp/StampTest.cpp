// The stamp filter as a user runs it, judged by what outside readers draw and extract.
#include "PipelineHost/Commands/CommandRun.h"
#include "Samples/Stamp/DrawnPage.h"
#include "Support/Rows.h"
#include "Support/SampleJob.h"
#include "Support/TestPictures.h"
#include "Support/TicketText.h"

#include <Xml/StrictXml.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <numbers>
#include <regex>

using namespace OvPipeline;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const std::string sampleQueue = OV_SOURCE_DIR "/Samples/Queues/ColorOffice";
const std::string module = OV_BINARY_DIR "/lib/libStamp.so";
const std::string pageNamespace = "http://schemas.microsoft.com/xps/2005/06";

/// A job's ticket with these annotations in its document settings.
std::string TicketWith(const std::string& elements) {
    const std::string settings = "<OrvelPublicDocSettings><annotation-col-api><annotation-element-col-api>" +
                                 elements +
                                 "</annotation-element-col-api></annotation-col-api>"
                                 "</OrvelPublicDocSettings>";
    return TicketText("<psf:ParameterInit name=\"ok:JobOrvelPublicDocSettings\" xmlns:ok=\"http://schemas."
                      "orvel.example/enterprise/print/driver/native/printSchemaPrivateKeywords/2006/11\">"
                      "<psf:Value xsi:type=\"xsd:string\"><![CDATA[" +
                      settings + "]]></psf:Value></psf:ParameterInit>");
}

std::string Page(const std::string& content, const std::string& attributes = "Width=\"600\" Height=\"400\"") {
    return "<FixedPage xmlns=\"" + pageNamespace + "\" xml:lang=\"en\" " + attributes + ">" + content +
           "</FixedPage>";
}
const std::string content = "<Path Fill=\"#FF3366CC\" Data=\"M 20,20 L 580,20 580,60 20,60 z\"/>";

class StampTest : public InOwnFolder {
protected:
    void SetUp() override {
        // Without what the administrator of the sample queue has put on every job.
        std::filesystem::copy(sampleQueue, "queue");
        std::filesystem::permissions("queue/queue-properties.xml", std::filesystem::perms::owner_all);
        std::ofstream("queue/queue-properties.xml") << "<p/>";
    }

    /// Writes in.xps.
    static void WriteJob(const std::string& elements, const std::vector<std::string>& pages) {
        SampleJob job;
        job.jobTicket = TicketWith(elements);
        job.pages = static_cast<int>(pages.size());
        job.hasExtras = false;
        ZipItems items = job.Items();
        for (std::size_t page = 0; page < pages.size(); ++page)
            items.at(PageItem(static_cast<int>(page) + 1)) = pages[page];
        WriteZip("in.xps", items);
    }
    static std::string PageItem(int page) { return SampleJob::PageName(1, page).substr(1); }

    /// in.xps becomes out.xps.
    static CommandRun Stamp() {
        return CommandRun({"run", "--queue", "queue", "--filter", module, "-o", "out.xps", "in.xps"});
    }
    static CommandRun Stamp(const std::string& elements, const std::vector<std::string>& pages) {
        WriteJob(elements, pages);
        return Stamp();
    }
    static std::string PageOf(const std::string& package, int page) {
        return ReadZip(package).at(PageItem(page));
    }

    /// What the report says of the place of a page's first annotation, as pixels.
    static DrawnPage::Box ReportedBox(const std::string& page) {
        const CommandRun report({"annotations", "in.xps", "--queue", "queue", "--page", page, "--json"});
        EXPECT_EQ(report.code, ExitOk) << report.errors;
        const auto number = [&](const std::string& name) {
            std::smatch found;
            const std::string text = report.out.substr(report.out.find("\"annotations\""));
            return std::regex_search(text, found, std::regex('"' + name + "\": (-?[0-9.]+)"))
                       ? std::stof(found[1])
                       : NAN;
        };
        const float width = number("width"), height = number("height");
        const float x = number("left") + width / 2, y = number("top") + height / 2;
        const float angle = number("angle") * std::numbers::pi_v<float> / 180;
        const float halfWidth = (std::abs(width * std::cos(angle)) + std::abs(height * std::sin(angle))) / 2;
        const float halfHeight = (std::abs(width * std::sin(angle)) + std::abs(height * std::cos(angle))) / 2;
        const float scale = DrawnPage::pixelsPerUnit;
        return {(x - halfWidth) * scale, (y - halfHeight) * scale, (x + halfWidth) * scale,
                (y + halfHeight) * scale};
    }

    static std::string ExtractedText(const std::string& job, int page) {
        const std::string command = "mutool draw -q -F txt -o text.txt " + job + " " + std::to_string(page);
        EXPECT_EQ(std::system((command + " 2>reader.log").c_str()), 0);
        return TemporaryFolder::Read("text.txt");
    }
};

struct Drawn {
    const char* name;
    std::string element;
    /// How much of its box it fills in each direction at least; a picture fills all of it.
    float fill;
};
void PrintTo(const Drawn& drawn, std::ostream* out) { *out << drawn.name; }

const std::string textFont = "<font-name-api>DejaVu Sans</font-name-api><rgb-api>#800000</rgb-api>";
std::string TextElement(const std::string& type, const std::string& text, const std::string& more) {
    return "<e><type-api>type-" + type + "</type-api><text-api xml:space=\"preserve\">" + text +
           "</text-api>" + textFont + more + "</e>";
}

class StampedElement : public StampTest, public testing::WithParamInterface<Drawn> {};

TEST_P(StampedElement, IsWhereTheReportSaysAndNothingElseChanges) {
    std::ofstream("picture.bmp", std::ios::binary) << TestPictures::Bmp(12, 8, 3937); // 100 dots to the inch
    const CommandRun run = Stamp(GetParam().element, {Page(content)});
    ASSERT_EQ(run.code, ExitOk) << run.errors;
    EXPECT_EQ(run.errors, "");
    const DrawnPage::Box box = ReportedBox("1");
    for (const auto draw : {&DrawnPage::ByMutool, &DrawnPage::ByGxps}) {
        const DrawnPage::Box ink = draw("out.xps", 1).DifferenceFrom(draw("in.xps", 1));
        ASSERT_FALSE(ink.IsEmpty());
        constexpr float point = 3; // two pixels, and one that is inked in part
        EXPECT_GE(ink.left, box.left - point);
        EXPECT_GE(ink.top, box.top - point);
        EXPECT_LE(ink.right, box.right + point);
        EXPECT_LE(ink.bottom, box.bottom + point);
        EXPECT_GE(ink.right - ink.left, GetParam().fill * (box.right - box.left) - 2 * point);
        EXPECT_GE(ink.bottom - ink.top, GetParam().fill * (box.bottom - box.top) - 2 * point);
    }
}

INSTANTIATE_TEST_SUITE_P(
    EachKind, StampedElement,
    testing::Values(
        Drawn{"Text", TextElement("text", "Wj Kp", "<transparency-api>0</transparency-api>"), 0.7F},
        Drawn{"TextAtTheLowerRight",
              TextElement("text", "Ägypten",
                          "<justify-api>10</justify-api><font-size-api>30</font-size-api>"
                          "<x-offset-inches-api>5000</x-offset-inches-api>"),
              0.6F},
        Drawn{"TimeStamp",
              TextElement("timestamp", "2026-11-22 10:00",
                          "<justify-api>5</justify-api><font-size-api>12</font-size-api>"
                          "<y-offset-inches-api>10000</y-offset-inches-api>"),
              0.5F},
        Drawn{"Picture",
              "<e><type-api>type-picture</type-api><text-api>picture.bmp</text-api><x-offset-api>1500</"
              "x-offset-api>"
              "<y-offset-api>-500</y-offset-api><angle-api>0</angle-api><picture-scale-api>400</"
              "picture-scale-api></e>",
              1},
        Drawn{"TurnedPicture",
              "<e><type-api>type-picture</type-api><text-api>picture.bmp</text-api><angle-api>30</angle-api>"
              "<picture-scale-api>400</picture-scale-api></e>",
              0.95F},
        Drawn{"BatesNumber",
              TextElement("bates-stamp", "A-9",
                          "<justify-api>4</justify-api><font-size-api>20</font-size-api>"
                          "<y-offset-inches-api>20000</y-offset-inches-api>"),
              0.5F},
        Drawn{"TextFromTheRight",
              TextElement(
                  "text",
                  "\xD8\xA8\xD9\x8E\xD8\xB3\xD9\x92\xD9\x85 ab \xD9\x85\xD8\xB1\xD8\xAD\xD8\xA8\xD8\xA7",
                  "<justify-api>5</justify-api><font-size-api>60</font-size-api>"
                  "<y-offset-inches-api>10000</y-offset-inches-api>"),
              0.5F},
        Drawn{"TwoLines",
              TextElement("text", "Wide&#10;xy",
                          "<justify-api>5</justify-api><font-size-api>60</font-size-api>"),
              0.6F},
        Drawn{
            "PageNumber",
            TextElement("page-numbers", "", "<justify-api>8</justify-api><font-size-api>60</font-size-api>"),
            0.5F}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(StampTest, CountsOverTheJobAndStampsTheFirstPageOnceOnly) {
    const std::string elements = TextElement("bates-stamp", "OV-0998/x", "<justify-api>5</justify-api>") +
                                 TextElement("page-numbers", "Sheet ", "<angle-api>0</angle-api>") +
                                 TextElement("text", "Cover {0}",
                                             "<justify-api>8</justify-api>"
                                             "<firstpage-api>pages-first-only</firstpage-api>");
    ASSERT_EQ(Stamp(elements, {Page(""), Page(content), Page("")}).code, ExitOk);
    EXPECT_THAT(ExtractedText("out.xps", 1),
                AllOf(HasSubstr("OV-0998/x"), HasSubstr("Sheet 1"), HasSubstr("Cover {0}")));
    EXPECT_THAT(ExtractedText("out.xps", 2),
                AllOf(HasSubstr("OV-0999/x"), HasSubstr("Sheet 2"), Not(HasSubstr("Cover"))));
    EXPECT_THAT(ExtractedText("out.xps", 3), AllOf(HasSubstr("OV-1000/x"), HasSubstr("Sheet 3")));
}

TEST_F(StampTest, LeavesAloneWhatItDoesNotStamp) {
    const std::string odd = Page("\n<!-- kept -->" + content);
    ASSERT_EQ(Stamp(TextElement("text", "x", "<firstpage-api>pages-first-only</firstpage-api>"),
                    {Page(content), odd})
                  .code,
              ExitOk);
    const ZipItems in = ReadZip("in.xps");
    ZipItems out = ReadZip("out.xps");
    EXPECT_EQ(out.at(PageItem(2)), odd);
    int fonts = 0;
    for (const auto& [name, bytes] : out)
        if (name.starts_with("Resources/Annotations/Fonts/")) ++fonts;
    EXPECT_EQ(fonts, 1);
    for (const auto& [name, bytes] : in)
        if (name.starts_with("Resources/") && !name.ends_with(".rels")) {
            EXPECT_EQ(out.at(name), bytes) << name;
        }

    ASSERT_EQ(Stamp("", {odd}).code, ExitOk);
    EXPECT_EQ(PageOf("out.xps", 1), odd) << "a job without annotations";
}

TEST_F(StampTest, StandsBehindTheContentButNotBehindThePagesResources) {
    const std::string resources = "<FixedPage.Resources><ResourceDictionary/></FixedPage.Resources>";
    const std::string compatibility =
        "<mc:AlternateContent xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\">"
        "<mc:Choice Requires=\"z\" xmlns:z=\"urn:z\"><z:New a=\"&#10;&quot;\"/></mc:Choice><mc:Fallback>" +
        content + "</mc:Fallback></mc:AlternateContent>";
    const std::string elements =
        TextElement("text", "Over", "") +
        TextElement("text", "Last", "<render-order-api>post-imposition</render-order-api>") +
        TextElement("text", "Under", "<drawmode-api>print-in-background</drawmode-api>") +
        TextElement("text", "Next", "");
    const auto order = [](const std::string& markup) {
        std::string found;
        const std::regex words("Under|Over|Next|Last|<[a-z:]*(Resources|Path |AlternateContent)");
        for (std::sregex_iterator at(markup.begin(), markup.end(), words), end; at != end; ++at)
            found += at->str().substr(0, 1) == "<" ? at->str(1).substr(0, 4) + " " : at->str() + " ";
        return found;
    };
    std::string prefixed = Page("", "xmlns:p=\"" + pageNamespace + "\" Width=\"600\" Height=\"400\"");
    prefixed = "<p:FixedPage xmlns:p=\"" + pageNamespace + "\" Width=\"600\" Height=\"400\"/>";
    ASSERT_EQ(
        Stamp(elements, {Page(resources + content), Page(compatibility), Page(""), prefixed, Page(resources)})
            .code,
        ExitOk);
    EXPECT_EQ(order(PageOf("out.xps", 1)), "Under Path Over Next Last ");
    EXPECT_EQ(order(PageOf("out.xps", 2)), "Under Alte Path Over Next Last ");
    EXPECT_THAT(PageOf("out.xps", 2), HasSubstr("<z:New a=\"&#10;&quot;\"/>"));
    EXPECT_EQ(order(PageOf("out.xps", 3)), "Under Over Next Last ");
    EXPECT_THAT(PageOf("out.xps", 1), HasSubstr("</FixedPage.Resources><Canvas"));
    EXPECT_THAT(PageOf("out.xps", 5), HasSubstr("</FixedPage.Resources><Canvas"));
    EXPECT_THAT(PageOf("out.xps", 4),
                AllOf(HasSubstr("<p:Canvas"), HasSubstr("<p:Glyphs"), Not(HasSubstr("<Canvas"))));
    for (int page = 1; page <= 5; ++page) {
        EXPECT_NO_THROW(OvPlatform::ParseStrictXml(PageOf("out.xps", page)));
        EXPECT_THAT(ExtractedText("out.xps", page), HasSubstr("Last"));
    }
}

TEST_F(StampTest, ReadsPagesInUtf16) {
    std::string wide = "\xFF\xFE";
    for (const char c : "<?xml version=\"1.0\" encoding=\"utf-16\"?>" + Page(content))
        wide += {c, '\0'};
    ASSERT_EQ(Stamp(TextElement("text", "W", ""), {wide}).code, ExitOk);
    EXPECT_THAT(PageOf("out.xps", 1), AllOf(StartsWith("<?xml version=\"1.0\" encoding=\"utf-8\"?>"),
                                            HasSubstr("UnicodeString=\"W\"")));
    EXPECT_THAT(ExtractedText("out.xps", 1), HasSubstr("W"));
}

TEST_F(StampTest, NothingThatAClientWritesBreaksOutOfItsPlace) {
    const std::string breakout = "&quot;/>&lt;Path Data=&quot;M 0,0 L 9,9 9,0&quot; Fill=&quot;Red&quot;/>";
    const std::string elements = "<e><type-api>type-text</type-api><text-api>" + breakout +
                                 "&amp;#0;\x01\xED\xA0\x80</text-api><rgb-api>" + breakout +
                                 "</rgb-api><font-name-api>" + breakout +
                                 "</font-name-api><transparency-api>900</transparency-api>"
                                 "<font-size-api>12</font-size-api><x-offset-api>2147483647</"
                                 "x-offset-api><angle-api>-2147483648</angle-api></e>";
    WriteJob("", {Page("")});
    ZipItems items = ReadZip("in.xps");
    // The two that XML cannot hold go, and are tried by the layout's own tests.
    const std::string valid = std::regex_replace(elements, std::regex("\x01\xED\xA0\x80"), "");
    ASSERT_EQ(Stamp(valid, {Page("")}).code, ExitOk);
    const std::string page = PageOf("out.xps", 1);
    EXPECT_NO_THROW(OvPlatform::ParseStrictXml(page));
    EXPECT_THAT(page,
                AllOf(Not(HasSubstr("<Path")), HasSubstr("Fill=\"#808080\""), HasSubstr("Opacity=\"0\"")));
}

TEST_F(StampTest, ScriptsOfTheWorldAreDrawnWithTheirOwnGlyphs) {
    const std::string place = "<justify-api>1</justify-api><font-size-api>40</font-size-api>";
    const Rows<std::string, std::string, const char*> cases{
        {"日本語の透かし", "DejaVu Sans", "日本語の透かし"}, // in another face
        {"مرحبا", "DejaVu Sans", "مرحبا"},                   // joined, from right to left
        {"\xF0\x9D\x94\xB8 x", "DejaVu Sans", " x"},         // beyond the first plane
    };
    for (const auto& [text, face, extracted] : cases) {
        const CommandRun run =
            Stamp("<e><type-api>type-text</type-api><text-api>" + text + "</text-api><font-name-api>" + face +
                      "</font-name-api>" + place + "</e>",
                  {Page("")});
        ASSERT_EQ(run.code, ExitOk) << run.errors;
        const std::string page = PageOf("out.xps", 1);
        std::smatch indices;
        ASSERT_TRUE(std::regex_search(page, indices, std::regex("Indices=\"([^\"]*)\"")));
        EXPECT_FALSE(std::regex_search(indices.str(1), std::regex("(^|;|\\))0,")))
            << "a glyph is missing: " << text;
        EXPECT_THAT(ExtractedText("out.xps", 1), HasSubstr(extracted));
        for (const auto draw : {&DrawnPage::ByMutool, &DrawnPage::ByGxps})
            EXPECT_FALSE(draw("out.xps", 1).DifferenceFrom(draw("in.xps", 1)).IsEmpty()) << text;
    }
}

TEST_F(StampTest, PicturesThatPagesCanHoldStayAsTheyAre) {
    using namespace TestPictures;
    std::ofstream("a.gif", std::ios::binary) << Gif(16, 8, GifImage(16, 8, 1));
    std::ofstream("b.bin", std::ios::binary) << Png(16, 8); // which says no resolution, and has another name
    std::string elements;
    for (const char* const file : {"a.gif", "b.bin", "a.gif"})
        elements += "<e><type-api>type-picture</type-api><text-api>" + std::string(file) + "</text-api></e>";
    const CommandRun run = Stamp(elements, {Page("")});
    ASSERT_EQ(run.code, ExitOk) << run.errors;
    int pictures = 0;
    bool isKept = false;
    for (const auto& [name, bytes] : ReadZip("out.xps")) {
        if (!name.starts_with("Resources/Annotations/Bitmaps/")) continue;
        ++pictures;
        EXPECT_TRUE(name.ends_with(".png")) << name;
        EXPECT_TRUE(bytes.starts_with("\x89PNG"));
        isKept |= bytes == Png(16, 8);
    }
    EXPECT_EQ(pictures, 2);
    EXPECT_TRUE(isKept);
    // 300 dots to the inch as it is printed, 96 as its reader takes it.
    EXPECT_THAT(PageOf("out.xps", 1), AllOf(HasSubstr("Viewbox=\"0,0,16,8\""), HasSubstr(",5.12,2.56\"")));
}

TEST_F(StampTest, StandsByTheSizeOfEachPageAndKeepsAFontForEachFace) {
    const std::string elements =
        TextElement("text", "Sans", "<justify-api>10</justify-api><font-size-api>30</font-size-api>") +
        "<e><type-api>type-text</type-api><text-api>Fallback</text-api><font-name-api>No Such "
        "Face</font-name-api>"
        "<font-char-set-api>128</font-char-set-api><font-size-api>-5</font-size-api></e>"
        "<e><type-api>type-text</type-api><text-api>Other</text-api><font-name-api>No Such "
        "Face</font-name-api></e>";
    std::vector<std::string> pages;
    const auto widthOf = [](int page) { return 500 + 100 * ((page - 1) % 18); };
    for (int page = 1; page <= 20; ++page)
        pages.push_back(Page("", "Width=\" +" + std::to_string(widthOf(page)) + " \" Height=\"400\""));
    const CommandRun run = Stamp(elements, pages);
    ASSERT_EQ(run.code, ExitOk) << run.errors;
    EXPECT_THAT(run.errors, HasSubstr("An annotation of -5 points gets 72"));
    for (const int page : {1, 2, 17, 20}) {
        const DrawnPage::Box box = ReportedBox(std::to_string(page));
        EXPECT_NEAR(box.right, DrawnPage::pixelsPerUnit * static_cast<float>(widthOf(page)), 2);
        std::smatch origin;
        const std::string markup = PageOf("out.xps", page);
        ASSERT_TRUE(std::regex_search(markup, origin, std::regex("OriginX=\"([0-9.]+)\"")));
        EXPECT_NEAR(std::stof(origin[1]) * DrawnPage::pixelsPerUnit, box.left, 0.1);
    }
    EXPECT_THAT(ExtractedText("out.xps", 1),
                AllOf(HasSubstr("Sans"), HasSubstr("allback"), HasSubstr("Other")));
    int fonts = 0;
    for (const auto& [name, bytes] : ReadZip("out.xps"))
        if (name.starts_with("Resources/Annotations/Fonts/")) ++fonts;
    EXPECT_EQ(fonts, 2);
}

TEST_F(StampTest, AJobThatCannotBeStampedLeavesNoOutput) {
    std::ofstream("text.png") << "no picture";
    ASSERT_EQ(mkfifo("pipe.png", 0600), 0); // nobody will ever write into it
    const std::string text = TextElement("text", "x", "");
    const auto picture = [](const std::string& file) {
        return "<e><type-api>type-picture</type-api><text-api>" + file + "</text-api></e>";
    };
    const Rows<std::string, std::string, const char*> cases{
        {text, "<FixedPage xmlns=\"" + pageNamespace + "\" Width=\"600\" Height=\"400\">" + content,
         "The markup of a page cannot be read"},
        {text, Page(content, "Width=\"600\""), "The page has no valid size"},
        {text, "<FixedPage Width=\"600\" Height=\"400\"/>", "The markup of a page is not that of one"},
        {picture("nowhere.png"), Page(""), "The picture of an annotation cannot be read: nowhere.png"},
        {picture("pipe.png"), Page(""), "The picture of an annotation cannot be read: pipe.png"},
        {picture("text.png"), Page(""), "The picture of an annotation is none: text.png"},
    };
    for (const auto& [elements, page, words] : cases) {
        const CommandRun run = Stamp(elements, {page});
        EXPECT_EQ(run.code, ExitJobFailed);
        // Of the page, not of the font that has just been written for it.
        EXPECT_THAT(run.errors, AllOf(HasSubstr("filter Stamp at /" + PageItem(1)), HasSubstr(words)));
        EXPECT_EQ(Lines(run.errors).size(), 1u) << run.errors;
        EXPECT_FALSE(std::filesystem::exists("out.xps"));
    }
}

TEST_F(StampTest, ASystemWithoutFontsIsTold) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // fonts are looked for once in a process
    WriteJob(TextElement("text", "x", ""), {Page("")});
    std::ofstream("none.conf") << "<fontconfig/>";
    const auto run = [](const std::vector<std::string>& arguments) {
        setenv("FONTCONFIG_FILE", std::filesystem::absolute("none.conf").c_str(), 1);
        const CommandRun command(arguments);
        std::cerr << command.errors << std::flush;
        _exit(command.code);
    };
    const auto isFailure = testing::ExitedWithCode(ExitJobFailed);
    const std::string wanted =
        "^ov-pipeline: in.xps: [^\n]*the font DejaVu Sans cannot be had: 0x80070490[^\n]*\n$";
    EXPECT_EXIT(run({"run", "--queue", "queue", "--filter", module, "-o", "out.xps", "in.xps"}), isFailure,
                wanted);
    EXPECT_EXIT(run({"annotations", "in.xps", "--queue", "queue"}), isFailure, wanted);
    EXPECT_EXIT(run({"stamp", "in.xps", "--text", "a"}), testing::ExitedWithCode(ExitInputRefused),
                "^ov-pipeline: in.xps: the text cannot be put on its pages: [^\n]*\n$");
}

} // namespace
