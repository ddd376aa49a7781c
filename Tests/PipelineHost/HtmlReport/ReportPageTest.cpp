#include <HtmlReport/AnnotationTable.h>
#include <HtmlReport/HtmlTable.h>
#include <HtmlReport/ReportFiles.h>
#include <HtmlReport/ReportPage.h>
#include <HtmlReport/SettingsTables.h>
#include <HtmlReport/TimesSection.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OvPipeline;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

/// Two documents of a page each. The annotation is on the first page.
class ReportPageTest : public testing::Test {
protected:
    ReportPageTest() {
        using enum OutlineLevel::Kind;
        for (const auto kind : {Job, Document, Page, Document, Page}) {
            OutlineLevel level;
            level.kind = kind;
            level.number = m_job.levels.size() < 3 ? 1 : 2;
            m_job.levels.push_back(level);
        }
        m_job.pages = 2;
        m_job.levels[2].annotations = {0};
        m_annotations.Use(m_annotations.Add("Text on", {}), 2);
    }

    std::string Page(std::vector<std::string> input, std::vector<std::string> output) {
        ReportContents contents;
        contents.outline = &m_job;
        contents.settings = &m_settings;
        contents.annotations = &m_annotations;
        contents.input = {"MuPDF", std::move(input), ""};
        contents.output = {"Ghostscript", std::move(output), ""};
        return ReportPage(contents);
    }

    JobOutline m_job;
    SharedTables m_settings;
    SharedTables m_annotations;
};

TEST_F(ReportPageTest, PicturesStandByTheirPagesOrBehindTheJob) {
    const std::string beside = Page({"one", ""}, {"out", "out"});
    EXPECT_THAT(beside, AllOf(HasSubstr("alt=\"page 1 as it came\" src=\"data:image/png;base64,b25l\""),
                              HasSubstr("page 2 as it came: MuPDF has drawn nothing"),
                              HasSubstr("page 2 as it goes out, drawn by Ghostscript"),
                              Not(HasSubstr("of the output"))));
    const std::string behind = Page({"one", "two"}, {"out"});
    EXPECT_THAT(behind, AllOf(HasSubstr("page 1 of the output, drawn by Ghostscript"),
                              Not(HasSubstr("as it goes out"))));
    EXPECT_THAT(Page({}, {}), AllOf(Not(HasSubstr("<figure>")), Not(HasSubstr("The output<"))));
}

TEST_F(ReportPageTest, TheTreeHasDocumentsBesideEachOtherAndSaysWhatIsShown) {
    const std::string html = Page({}, {});
    EXPECT_THAT(html, HasSubstr("</li></ul></li><li role=\"treeitem\" aria-level=\"2\""));
    for (const char* const shows :
         {"\"level-0 settings-0 all-annotations features policy\"", "\"level-1 settings-0 all-annotations\"",
          "\"level-2 settings-0 annotation-0\"", "\"level-4 settings-0 no-annotation\""})
        EXPECT_THAT(html, HasSubstr(std::string("data-shows=") + shows));
}

TEST(SettingsTables, CountsWhereSettingsCameFrom) {
    const std::string html = SettingsTables({{"psk:A", "psk:One", "default", ""},
                                             {"psk:B", "psk:One", "page", ""},
                                             {"psk:B/psk:Inner", "psk:One", "job", ""},
                                             {"psk:C", "psk:One", "policy", "psk:Two was asked for"},
                                             {"psk:D", "", "changed by validation", "psk:Two was asked for"}},
                                            {})
                                 .Result();
    EXPECT_THAT(html,
                HasSubstr("5 settings, 2 from the job&#39;s tickets, 2 changed by validation or policy"));
    EXPECT_THAT(html, HasSubstr("<th scope=\"row\" class=\"nested\">psk:Inner</th>"));
    EXPECT_THAT(html, HasSubstr("<td class=\"quiet\">left out</td>"));
}

TEST(TimesSection, DrawsEachTimeInProportion) {
    RunSummary run;
    run.seconds = 0.2;
    run.processorSeconds = 0.05;
    run.times = {{"Quick", 0.1, 0}};
    run.leftOut.Add("signature", "/a");
    const std::string html = TimesSection(run).Result();
    EXPECT_THAT(html, AllOf(HasSubstr("class=\"clock\" x=\"190\" y=\"9\" width=\"220\""),
                            HasSubstr("class=\"clock\" x=\"190\" y=\"43\" width=\"440\""),
                            HasSubstr("class=\"processor\" x=\"190\" y=\"43\" width=\"110\""),
                            Not(HasSubstr("class=\"processor\" x=\"190\" y=\"9\"")),
                            HasSubstr("<dt>Left out</dt><dd>1 signature part (/a)</dd>")));
}

TEST(AnnotationTable, TitleSaysWhatItShows) {
    for (const char* const key : {"text", "file"})
        EXPECT_EQ("bitmap \"a & b\" on",
                  AnnotationTitle({{"kind", "kind", "bitmap"}, {"size", "size", "7"}, {key, key, "a & b"}}));
}

} // namespace
