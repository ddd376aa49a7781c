#include "PipelineHost/Commands/CommandRun.h"
#include "Support/EnvironmentVariable.h"
#include "Support/SampleJob.h"
#include "Support/TicketText.h"

#include <gmock/gmock.h>
#include <libxml/HTMLparser.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <map>
#include <regex>
#include <set>

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* hostile = "</style></script><script>x()</script><img src=x onerror=x()>\" ' ]]> &amp;";

/// The elements and attributes of a report, as a parser finds them.
struct ParsedReport {
    explicit ParsedReport(const std::string& html) {
        htmlDocPtr const document =
            htmlReadMemory(html.data(), static_cast<int>(html.size()), nullptr, "UTF-8",
                           HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET);
        Walk(xmlDocGetRootElement(document));
        xmlFreeDoc(document);
    }

    std::map<std::string, int> elements;
    std::set<std::string> attributes;
    std::string text;

private:
    static std::string Text(const xmlChar* text) { return reinterpret_cast<const char*>(text); }
    void Walk(const xmlNode* node) {
        for (; node != nullptr; node = node->next) {
            if (node->type == XML_TEXT_NODE) text += Text(node->content);
            if (node->type != XML_ELEMENT_NODE) continue;
            ++elements[Text(node->name)];
            for (const xmlAttr* attribute = node->properties; attribute != nullptr;
                 attribute = attribute->next)
                attributes.insert(Text(attribute->name));
            Walk(node->children);
        }
    }
};

std::string Parameter(const std::string& name, const std::string& text) {
    return "<psf:ParameterInit name=\"ok:" + name +
           "\" xmlns:ok=\"http://schemas.orvel.example/enterprise/print/driver/native/"
           "printSchemaPrivateKeywords/2006/11\"><psf:Value xsi:type=\"xsd:string\"><![CDATA[" +
           text + "]]></psf:Value></psf:ParameterInit>";
}

/// The settings of an annotation with a text, which stands in XML.
std::string Annotation(const std::string& text, const std::string& type = "type-text") {
    return Parameter("JobOrvelPublicDocSettings",
                     "<OrvelPublicDocSettings><annotation-col-api><annotation-element-col-api><e><type-api>" +
                         type + "</type-api><text-api>" + text +
                         "</text-api></e></annotation-element-col-api></annotation-col-api>"
                         "</OrvelPublicDocSettings>");
}

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text)
        escaped += c == '<' ? "&lt;" : c == '&' ? "&amp;" : c == '>' ? "&gt;" : std::string(1, c);
    return escaped;
}

std::size_t CountOf(const std::string& text, const std::string& what) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++count;
    return count;
}

class ReportCommandTest : public InOwnFolder {
protected:
    /// The report's text. Pictures are drawn elsewhere.
    std::string Report(const SampleJob& job, std::vector<std::string> more = {}) {
        job.Write("job.xps");
        std::vector<std::string> arguments{"report", "job.xps", "--no-pictures", "-o", "report.html"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const CommandRun run(arguments);
        EXPECT_EQ(0, run.code) << run.errors;
        m_errors = run.errors;
        return TemporaryFolder::Read("report.html");
    }

    std::string m_errors;
};

TEST_F(ReportCommandTest, TextFromTheJobNeverBecomesMarkup) {
    SampleJob job;
    job.jobTicket = TicketText(Annotation(Escaped(hostile) + " \u202e"));
    job.pageTicket =
        TicketText("<psf:Feature name=\"psk:PageMediaType\"><psf:Option name=\"psk:Plain\"/></psf:Feature>"
                   "<psf:ParameterInit name=\"ok:JobOrvelClientData\" xmlns:ok=\"http://x/\"><psf:Value "
                   "xsi:type=\"xsd:string\">" +
                   Escaped(hostile) + "</psf:Value></psf:ParameterInit>");
    job.Write("plain.xps");
    ZipItems items = ReadZip("plain.xps");
    // Apostrophes and ampersands may stand in names of parts.
    items["Resources/a&b'c.png"] = "\x89PNG";
    items["Documents/1/Pages/_rels/1.fpage.rels"] =
        SampleJob::Relationships({{job.Base() + "/required-resource", "/Resources/a&amp;b'c.png"},
                                  {job.Base() + "/printticket", "/Metadata/Page_PT.xml"}});
    const std::string name = "<b onclick=x()>&\"'\u202e\xff.xps";
    WriteZip(name, items);
    const CommandRun run({"report", name, "--no-pictures", "-o", "report.html"});
    ASSERT_EQ(0, run.code) << run.errors;
    const std::string html = TemporaryFolder::Read("report.html");

    const ParsedReport parsed(html);
    const std::set<std::string> known{
        "html",    "head",  "meta",  "title", "style", "body", "header", "h1",   "h2",     "h3",
        "h4",      "p",     "div",   "nav",   "ul",    "li",   "a",      "main", "button", "section",
        "article", "table", "thead", "tbody", "tr",    "th",   "td",     "dl",   "dt",     "dd",
        "span",    "b",     "pre",   "svg",   "rect",  "text", "script"};
    for (const auto& [element, count] : parsed.elements)
        EXPECT_TRUE(known.contains(element)) << element;
    EXPECT_EQ(1, parsed.elements.at("script"));
    EXPECT_EQ(1, parsed.elements.at("style"));
    for (const std::string& attribute : parsed.attributes)
        EXPECT_THAT(attribute, AllOf(Not(StartsWith("on")), Not("src"), Not("style")));
    EXPECT_THAT(parsed.text, AllOf(HasSubstr(hostile), HasSubstr("/Resources/a&b'c.png"),
                                   HasSubstr("<b onclick=x()>&\"'\\u202e\\xff.xps")));
    EXPECT_THAT(html, AllOf(Not(HasSubstr("\u202e")), Not(HasSubstr("\xff"))));
    EXPECT_EQ(std::string::npos, html.find_first_of(std::string("\0\x1b\r\t", 4)));
}

TEST_F(ReportCommandTest, NothingOutsideIsReferredTo) {
    const std::string html = Report({});
    EXPECT_FALSE(std::regex_search(html, std::regex(R"((href|src)=\"(?!#)|@import|url\()")));
    EXPECT_THAT(html, HasSubstr("content=\"default-src &#39;none&#39;;"));
}

TEST_F(ReportCommandTest, LevelsOfTheSameTicketsShareATable) {
    SampleJob job;
    job.pages = 3;
    job.documents = 2;
    job.jobTicket = TicketText(Choice("psk:PageOrientation", "psk:Landscape"));
    const std::string same = Report(job);
    EXPECT_EQ(1u, CountOf(same, "<article id=\"settings-"));
    EXPECT_THAT(same, HasSubstr(" on page 1</h3>")); // the queue's mark of whose the job is
    job.pageTicket = TicketText(Choice("psk:PageOrientation", "psk:Portrait"));
    const std::string html = Report(job);
    EXPECT_EQ(2u, CountOf(html, "<article id=\"settings-"));
    EXPECT_THAT(html,
                AllOf(HasSubstr("Settings of the job, documents 1-2<"), HasSubstr("Settings of pages 1-6<")));
    // Another text that says the same gives the same table.
    ZipItems items = job.Items();
    items["Metadata/Other_PT.xml"] = job.pageTicket + "<!-- other -->";
    items["Documents/1/Pages/_rels/2.fpage.rels"] =
        SampleJob::Relationships({{job.Base() + "/printticket", "/Metadata/Other_PT.xml"}});
    WriteZip("job.xps", items);
    EXPECT_EQ("report.html: 6 pages of job.xps\n",
              CommandRun({"report", "job.xps", "--no-pictures", "-o", "report.html"}).out);
    EXPECT_EQ(2u, CountOf(TemporaryFolder::Read("report.html"), "<article id=\"settings-"));
    // Pages without a ticket of their own are under that of their document.
    job.pageTicket.clear();
    job.documentTicket = TicketText(Choice("psk:PageOrientation", "psk:Landscape"));
    items = job.Items();
    items["Documents/2/Metadata/Doc_PT.xml"] = TicketText(Choice("psk:PageMediaType", "psk:Bond"));
    WriteZip("job.xps", items);
    EXPECT_EQ("", CommandRun({"report", "job.xps", "--no-pictures", "-q", "-o", "report.html"}).out);
    EXPECT_THAT(TemporaryFolder::Read("report.html"),
                AllOf(HasSubstr("document 1, pages 1-3<"), HasSubstr("document 2, pages 4-6<")));
}

TEST_F(ReportCommandTest, SettingsSayWhereTheyCameFrom) {
    SampleJob job;
    job.jobTicket =
        TicketText(Choice("psk:PageMediaType", "psk:Glossy") + Choice("psk:PageOutputColor", "psk:Blue"));
    job.pageTicket = TicketText(Choice("psk:PageOrientation", "psk:Landscape"));
    const std::string html = Report(job);
    EXPECT_THAT(html, HasSubstr("psk:PageOrientation</th><td>psk:Landscape</td><td class=\"own\">page</td>"));
    EXPECT_THAT(html, HasSubstr("<td class=\"changed\">policy</td>"));
    EXPECT_THAT(html, HasSubstr("<td class=\"changed\">changed by validation</td>"));
    EXPECT_THAT(html, HasSubstr("<td class=\"quiet\">default</td>"));
}

// Jobs are printed with such a queue, and so the report has all else, and says it once.
TEST_F(ReportCommandTest, ConfigurationThatCannotBeReadIsSaidInItsPlace) {
    std::filesystem::copy(OV_SOURCE_DIR "/Samples/Queues/ColorOffice", "queue");
    std::filesystem::permissions("queue/queue-properties.xml", std::filesystem::perms::owner_all);
    m_folder.Write("queue/queue-properties.xml", "<OrvelQueueProperties><a");
    SampleJob().Write("job.xps");
    const CommandRun result({"report", "job.xps", "--queue", "queue", "--no-pictures", "-o", "report.html"});
    EXPECT_EQ(0, result.code) << result.errors;
    EXPECT_THAT(Lines(result.errors), ElementsAre(HasSubstr("warning: a filter went on without something")));
    EXPECT_THAT(TemporaryFolder::Read("report.html"),
                AllOf(HasSubstr("<article id=\"settings-"), HasSubstr("no configuration is enforced</p>")));
}

TEST_F(ReportCommandTest, HundredPagesOfTheirOwnStayBelowTwoMegabytes) {
    SampleJob job;
    job.pages = 100;
    job.jobTicket = TicketText(Annotation("Bates", "type-bates-stamp"));
    job.Write("plain.xps");
    ZipItems items = ReadZip("plain.xps");
    for (int page = 1; page <= 100; ++page) {
        const std::string number = std::to_string(page);
        items["Metadata/" + number + ".xml"] =
            TicketText(Choice("psk:PageOrientation", page % 2 != 0 ? "psk:Landscape" : "psk:Portrait")) +
            "<!--" + number + "-->";
        items["Documents/1/Pages/_rels/" + number + ".fpage.rels"] =
            SampleJob::Relationships({{job.Base() + "/printticket", "/Metadata/" + number + ".xml"},
                                      {job.Base() + "/required-resource", "/Resources/Picture.png"}});
    }
    WriteZip("job.xps", items);
    ASSERT_EQ(0, CommandRun({"report", "job.xps", "--no-pictures", "-o", "report.html"}).code);
    const std::string html = TemporaryFolder::Read("report.html");
    EXPECT_EQ(102u, CountOf(html, "<article id=\"level-"));
    EXPECT_LT(html.size(), 2u << 20);
    EXPECT_EQ(101u, CountOf(html, "<article id=\"annotation-")); // a number for each page, and the job's mark
    EXPECT_EQ(3u, CountOf(html, "<article id=\"settings-"));
    EXPECT_THAT(html, HasSubstr("Settings of pages 1,3,5,7,"));
    EXPECT_EQ(99u, CountOf(html, "<td class=\"quiet\">shown before<")); // the picture
}

TEST_F(ReportCommandTest, OnlyThePagesThatAreWanted) {
    SampleJob job;
    job.documents = 2;
    job.pages = 3;
    const std::string html = Report(job, {"--pages", "5"});
    EXPECT_THAT(
        html, AllOf(HasSubstr(">Document 2</a>"), HasSubstr(">Page 5</a>"), HasSubstr("1 document, 1 page")));
    EXPECT_THAT(html, AllOf(Not(HasSubstr(">Document 1</a>")), Not(HasSubstr(">Page 4</a>"))));
}

TEST_F(ReportCommandTest, TimesAreThoseOfTheChain) {
    const std::string html = Report({}, {"--filter", "PassThrough", "PageList"});
    EXPECT_TRUE(std::regex_search(
        html, std::regex(R"(<tr><th scope="row">PassThrough</th><td class="number">\d+\.\d ms</td>)")));
    EXPECT_THAT(html, HasSubstr("<th scope=\"row\">PageList</th>"));
    EXPECT_THAT(html,
                AllOf(HasSubstr("<th scope=\"row\">the whole job</th>"), HasSubstr("saved by the cache")));
    // A job that does not get through is reported all the same.
    const std::string failed = Report({}, {"--filter", "Nowhere"});
    EXPECT_THAT(failed, HasSubstr("The job did not come to its end"));
    EXPECT_THAT(Lines(m_errors), ElementsAre(HasSubstr("warning: it does not get through the filters")));
}

TEST_F(ReportCommandTest, FamilyIsTheChosenOne) {
    const std::string html = Report({}, {"--family", "LowEndPCLm"});
    EXPECT_THAT(html, HasSubstr("<b>LowEndPCLm</b>"));
    EXPECT_EQ(2u, CountOf(html, "<table class=\"pieces\"")); // it has no comments
    EXPECT_EQ(2, CommandRun({"report", "job.xps", "--family", "None", "-o", "x.html"}).code);
}

TEST_F(ReportCommandTest, WhatCannotBeWrittenLeavesNothingBehind) {
    SampleJob().Write("job.xps");
    SampleJob broken;
    ZipItems items = broken.Items();
    items.erase("Documents/1/Pages/2.fpage");
    WriteZip("broken.xps", items);
    m_folder.Write("file", "");
    std::filesystem::create_directory("temporary");
    const EnvironmentVariable temporary("TMPDIR", (m_folder / "temporary").string());
    const struct {
        std::vector<std::string> arguments;
        int code;
        const char* said;
    } rows[] = {
        {{"report", "job.xps", "-o", "nowhere/report.html"}, 1, "nowhere/report.html"},
        {{"report", "job.xps", "-o", "file/report.html"}, 1, "file/report.html"},
        {{"report", "job.xps", "-o", "/proc/report.html"}, 1, "/proc/report.html"},
        {{"report", "job.xps", "-o", "temporary"}, 1, "temporary"},
        {{"report", "job.xps", "-o", "job.xps"}, 2, "take the place of the job"},
        {{"report", "-"}, 2, "-o names the output"},
        {{"report", "broken.xps", "-o", "report.html"}, 3, "names the page Pages/2.fpage"},
        {{"report", "none.xps", "-o", "report.html"}, 3, "none.xps"},
    };
    std::vector<std::string> before = m_folder.Names();
    for (const auto& [arguments, code, said] : rows) {
        const CommandRun run(arguments);
        EXPECT_EQ(code, run.code) << said;
        EXPECT_THAT(Lines(run.errors), ElementsAre(HasSubstr(said)));
        EXPECT_EQ(before, m_folder.Names()) << said;
        EXPECT_TRUE(std::filesystem::is_empty("temporary")) << said;
    }
    const EnvironmentVariable none("TMPDIR", "/none");
    const CommandRun run({"report", "job.xps", "-o", "report.html"});
    EXPECT_EQ(1, run.code);
    EXPECT_THAT(Lines(run.errors), ElementsAre(HasSubstr("no folder for temporary files: /none: ")));
    EXPECT_EQ(before, m_folder.Names());
}

// Also behind the run through the filters, whose output stands then.
TEST_F(ReportCommandTest, SignalLeavesNeitherReportNorTemporaryFiles) {
    SampleJob().Write("job.xps");
    for (const char* const folder : {"temporary", "programs"})
        std::filesystem::create_directory(folder);
    const auto started = m_folder / "started";
    const auto program =
        m_folder.Write("programs/mutool", "#!/bin/sh\n: > " + started.string() + "\nexec /bin/sleep 100\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    const pid_t child = fork();
    if (child == 0) {
        setenv("PATH", (m_folder / "programs").c_str(), 1);
        setenv("TMPDIR", (m_folder / "temporary").c_str(), 1);
        execl(OV_BINARY_DIR "/bin/ov-pipeline", "ov-pipeline", "report", "job.xps", "-o", "report.html",
              nullptr);
        _exit(1);
    }
    const auto comes = [](auto&& is) {
        for (int wait = 0; wait < 3000 && !is(); ++wait)
            usleep(10000);
        return is();
    };
    EXPECT_TRUE(comes([&] { return std::filesystem::exists(started); }));
    kill(child, SIGTERM);
    int status = 0;
    ASSERT_EQ(child, waitpid(child, &status, 0));
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 130) << status;
    EXPECT_TRUE(comes([] { return std::filesystem::is_empty("temporary"); }));
    EXPECT_FALSE(std::filesystem::exists("report.html"));
}

} // namespace
