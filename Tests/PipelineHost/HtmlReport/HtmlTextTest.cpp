#include <HtmlReport/HtmlTable.h>
#include <HtmlReport/HtmlText.h>
#include <HtmlReport/JobOutline.h>
#include <HtmlReport/SharedTables.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OvPipeline;

TEST(HtmlText, TextAndValuesAreEscapedAndShown) {
    const struct {
        std::string text;
        std::string shown;
    } rows[] = {
        {"plain \u00e4\u6f22", "plain \u00e4\u6f22"},
        {"<script>alert('1')</script>", "&lt;script&gt;alert(&#39;1&#39;)&lt;/script&gt;"},
        {"\" onload=\"x", "&quot; onload=&quot;x"},
        {"&lt; ]]> -->", "&amp;lt; ]]&gt; --&gt;"},
        {"a\u202eb\u2066c\u200bd", "a\\u202eb\\u2066c\\u200bd"},
        {std::string("\0\x1b[2J\r\n\x7f", 8), "\\x00\\x1b[2J\\r\\n\\x7f"},
        {"\xff\xc0\xbc \xed\xa0\x80", "\\xff\\xc0\\xbc \\xed\\xa0\\x80"},
    };
    for (const auto& [text, shown] : rows) {
        HtmlText html;
        html.Open("p", {{"title", text}}).Text(text).Close();
        std::string written = "<p title=\"";
        written.append(shown).append("\">").append(shown).append("</p>");
        EXPECT_EQ(written, html.Result());
    }
}

TEST(HtmlText, LongTextIsShortenedBeforeItIsEscaped) {
    HtmlText html;
    html.Text(std::string(5000, '<'), 30);
    EXPECT_LT(html.Result().size(), 200u);
    EXPECT_THAT(html.Result(), testing::EndsWith("&lt;"));
    HtmlText table;
    HtmlTable(table, "label", {"head"}).Row({std::string(5000, 'x')});
    FactList(table).Add("name", std::string(5000, 'x'));
    EXPECT_LT(table.Result().size(), 3000u);
}

TEST(SharedTables, TableStandsOnceWithTheNamesOfItsLevels) {
    JobOutline job;
    job.levels.resize(7);
    job.levels[1].kind = OutlineLevel::Kind::Document;
    job.levels[1].number = 1;
    for (std::size_t page = 2; page < 7; ++page) {
        job.levels[page].kind = OutlineLevel::Kind::Page;
        job.levels[page].number = page - 1;
    }
    HtmlText one;
    one.Element("p", "one");
    HtmlText other;
    other.Element("p", "other");
    SharedTables tables;
    for (const std::size_t level : {0, 1, 2, 4, 5, 6})
        tables.Use(tables.Add("What holds for", one), level);
    tables.Use(tables.Add("What holds for", other), 3);
    EXPECT_EQ(2u, tables.Count());
    HtmlText html;
    tables.Write(html, job, "t");
    EXPECT_EQ(
        "<article id=\"t-0\"><h3>What holds for the job, document 1, pages 1,3-5</h3><p>one</p></article>"
        "<article id=\"t-1\"><h3>What holds for page 2</h3><p>other</p></article>",
        html.Result());
    EXPECT_NE(tables.Add("What else holds for", one), tables.Add("What holds for", one));
}
