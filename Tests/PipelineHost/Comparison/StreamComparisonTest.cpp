// What device streams say around their pages, and what is different between two.
#include "Support/Growth.h"
#include "Support/Rows.h"

#include <Comparison/PostScriptSetup.h>
#include <Comparison/StreamComparison.h>

#include <gmock/gmock.h>

#include <sstream>

using namespace OvPipeline;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace {

const std::string exitLanguage = "\x1B%-12345X";

std::string Page(const std::string& number, const std::string& setup, const std::string& content) {
    return "%%Page: " + number + " " + number + "\n%%BeginPageSetup\n" + setup + "%%EndPageSetup\n" + content;
}

std::string Stream(const std::string& pjl, const std::string& setup, const std::string& pages) {
    return exitLanguage + pjl +
           "@PJL ENTER LANGUAGE=POSTSCRIPT\n%!PS-Adobe-3.0\n%%Title: (job)\n%%EndComments\n" +
           "%%BeginSetup\n" + setup + "%%EndSetup\n" + pages + "%%Trailer\n%%EOF\n" + exitLanguage;
}

DeviceStream Read(const std::string& bytes) {
    std::istringstream stream(bytes);
    return DeviceStreamReader::Read(stream);
}

// Each as "group | what: a -> b".
std::vector<std::string> Differences(const std::string& a, const std::string& b, bool ignoresTimes = false) {
    DifferenceReport report("device stream", ignoresTimes);
    CompareStreams(Read(a), Read(b), report);
    std::vector<std::string> lines;
    for (const auto& group : report.Groups())
        for (const auto& each : group.differences)
            lines.push_back(group.Title() + " | " + each.what + ": " + each.a + " -> " + each.b);
    return lines;
}

TEST(DeviceStreamReader, TakesCommandsByTheirNames) {
    const DeviceStream stream =
        Read(Stream("@PJL JOB NAME = \"a=b\"\r\n@PJL set lparm : pcl  Font=3\n"
                    "@PJL COMMENT OID_ATT_TYPE \"x\";\n@PJL COMMENT free = text\n@PJL\n",
                    "", "") +
             "@PJL EOJ\n" + exitLanguage);
    EXPECT_THAT(stream.pjl,
                testing::UnorderedElementsAre(
                    Pair("JOB NAME", ElementsAre("\"a=b\"")), Pair("SET LPARM : PCL FONT", ElementsAre("3")),
                    Pair("COMMENT OID_ATT_TYPE", ElementsAre("\"x\";")),
                    Pair("COMMENT", ElementsAre("free = text")), Pair("", ElementsAre("")),
                    Pair("ENTER LANGUAGE", ElementsAre("POSTSCRIPT")), Pair("EOJ", ElementsAre(""))));
}

TEST(DeviceStreamReader, FindsPagesAmongWhatOnlyLooksLikeThem) {
    const std::string inner =
        "%%BeginDocument: x\n%%Page: 1 1\n%%BeginDocument: y\n%%EndDocument\n%%Trailer\n"
        "%%Page: 2 2\n%%EOF\n%%EndDocument\n";
    const std::string binary = "%%BeginData: 10 Binary Bytes\n%%Page:\x1B%\n%%EndData\n";
    const DeviceStream stream = Read(Stream(
        "", "(%%Page: 1 1)\n", Page("1", "", inner) + Page("2", "", binary) + Page("3", "", "showpage\n")));
    EXPECT_EQ(3u, stream.pages.size());
    EXPECT_EQ(inner.size() + std::string("%%BeginPageSetup\n%%EndPageSetup\n").size(), stream.pages[0].size);

    // Bytes of other languages are taken as they come, line ends or none, until the exit.
    const std::string data = std::string(200'000, 'x') + "\r%%Page: 1 1\n";
    const DeviceStream other = Read(exitLanguage + "@PJL ENTER LANGUAGE=PCLXL\n" + data + exitLanguage +
                                    "@PJL EOJ\n" + Stream("", "", Page("1", "", "")));
    ASSERT_EQ(1u, other.data.size());
    EXPECT_EQ(data.size(), other.data[0].size);
    EXPECT_EQ(1u, other.pages.size());
}

TEST(DeviceStreamReader, RefusesWhatItWouldHaveToHold) {
    EXPECT_THROW(Read(Stream("", std::string(DeviceStreamReader::mostHeld, 'x'), "")), DeviceStreamError);
    std::string comments;
    while (comments.size() < DeviceStreamReader::mostHeld / 4)
        comments += "%%X\n"; // small, but each costs its place
    EXPECT_THROW(Read("%!\n" + comments), DeviceStreamError);
}

TEST(PostScriptSetup, TellsThePageDeviceFromTheRest) {
    const PostScriptSetup setup = PostScriptSetup::Read(
        "<< /Staple 0 /PageSize [595 % width\n 842] /Name /Other /S (a) \\) (n(e)st>>) >> setpagedevice\n"
        "featurebegin{\n /Odd << /A 1 >> def  <ab>\n}featurecleanup\n"
        "<< (tray) orvel$Tray >> setpagedevice << /Open (never");
    EXPECT_THAT(setup.device, testing::UnorderedElementsAre(Pair("(computed)", testing::SizeIs(2))));
    const PostScriptSetup plain = PostScriptSetup::Read(
        "<< /Staple 0 /PageSize [595 % width\n 842] /Name /Other /S (n(e)\\)st>>) /D << /E 1 >> >> "
        "setpagedevice\n"
        "featurebegin{\n /Odd << /A 1 >> def  <ab>\n}featurecleanup\n<< /Staple 1 >> setpagedevice");
    EXPECT_THAT(plain.device, testing::UnorderedElementsAre(Pair("/Staple", ElementsAre("0", "1")),
                                                            Pair("/PageSize", ElementsAre("[ 595 842 ]")),
                                                            Pair("/Name", ElementsAre("/Other")),
                                                            Pair("/S", ElementsAre("(n(e)\\)st>>)")),
                                                            Pair("/D", ElementsAre("<< /E 1 >>"))));
    EXPECT_THAT(plain.commands, ElementsAre("/Odd << /A 1 >> def <ab>"));
}

TEST(StreamComparison, TellsDifferencesByWhatTheyAreAbout) {
    const std::string page = Page("1", "<< /Duplex true >> setpagedevice\n", "(one) show\n");
    const auto feature = [](const std::string& option, const std::string& body) {
        return "%%BeginFeature: *Staple " + option + "\n" + body + "\n%%EndFeature\n";
    };
    const std::string a =
        Stream("@PJL SET COPIES=1\n@PJL COMMENT a\n", feature("None", "<< /Staple 0 >> setpagedevice"), page);
    const Rows<std::string, std::vector<std::string>> rows{
        {a, {}},
        // The order of commands, and blanks, mean nothing.
        {Stream("@PJL COMMENT a\r\n@PJL  SET  COPIES = 1\n",
                feature("None", "<<\n/Staple  0 % none\n>>setpagedevice"), page),
         {}},
        {Stream("@PJL SET COPIES=2\n@PJL COMMENT a\n@PJL COMMENT b\n",
                feature("Front", "<< /Staple 1 /Jog 3 >> setpagedevice /x 1 def"), page),
         {"PJL | COMMENT:  -> b", "PJL | SET COPIES: 1 -> 2",
          "comments | BeginFeature *Staple: None -> Front", "page device | /Jog:  -> 3",
          "page device | /Staple: 0 -> 1", "other set-up | command:  -> /x 1 def"}},
        {Stream("@PJL SET COPIES=1\n@PJL COMMENT a\n", feature("None", "<< /Staple 0 >> setpagedevice"),
                Page("1", "<< /Duplex false >> setpagedevice\n", "(one) show\n")),
         {"page 1 | /Duplex: true -> false", "page 1 | content: 76 bytes -> 77 bytes"}},
        {Stream("@PJL SET COPIES=1\n@PJL COMMENT a\n", feature("None", "<< /Staple 0 >> setpagedevice"),
                Page("1", "", "(new) show\n") + page),
         {"pages | number: 1 -> 2", "page 1 of B | page:  -> 43 bytes"}},
    };
    for (const auto& [b, lines] : rows)
        EXPECT_EQ(lines, Differences(a, b)) << b;
    EXPECT_THAT(Differences(Stream("", "<</A 1>>setpagedevice<</A 2>>setpagedevice", ""),
                            Stream("", "<</A 2>>setpagedevice<</A 1>>setpagedevice", "")),
                ElementsAre("page device | order of /A: 1, 2 -> 2, 1"));
    const std::string raster = "\x1B%-12345X@PJL ENTER LANGUAGE=PCLXL\nbytes";
    EXPECT_THAT(Differences(raster, raster), IsEmpty());
    EXPECT_THAT(Differences(raster, raster + "!"), ElementsAre("other job 1 | content: 5 bytes -> 6 bytes"));
}

TEST(StreamComparison, TimesAreToldAsSuch) {
    const auto made = [](const std::string& time) {
        const std::string comment = "%%CreationDate: " + time + "\n";
        return Stream("", "", Page("1", "", "%%BeginDocument: x\n" + comment + "%%EndDocument\n")) + "%!\n" +
               comment;
    };
    EXPECT_THAT(
        Differences(made("Monday"), made("Tuesday")),
        ElementsAre("comments | CreationDate: Monday -> Tuesday", "page 1 | created: Monday -> Tuesday"));
    EXPECT_THAT(Differences(made("Monday"), made("Tuesday"), true), IsEmpty());
}

} // namespace
