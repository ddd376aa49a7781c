// What is different between two packages.
#include "Support/Rows.h"
#include "Support/SampleJob.h"

#include <Common/HostError.h>
#include <Comparison/PackageComparison.h>

#include <gmock/gmock.h>

#include <functional>

using namespace OvPipeline;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class PackageComparisonTest : public testing::Test {
protected:
    using Edit = std::function<void(ZipItems&)>;

    // Each as "group | what: a -> b".
    std::vector<std::string> Differences(const ZipItems& a, const ZipItems& b, bool ignoresTimes = false) {
        WriteZip(m_folder / "a.xps", a);
        WriteZip(m_folder / "b.xps", b);
        DifferenceReport report("package", ignoresTimes);
        PackageComparison(m_folder / "a.xps", m_folder / "b.xps", report).Run();
        std::vector<std::string> lines;
        for (const auto& group : report.Groups())
            for (const auto& each : group.differences)
                lines.push_back(group.Title() + " | " + each.what + ": " + each.a + " -> " + each.b);
        return lines;
    }
    std::vector<std::string> AfterEdit(const Edit& edit) {
        ZipItems items = m_job.Items();
        edit(items);
        return Differences(m_job.Items(), items);
    }

    static void Replace(std::string& text, const std::string& from, const std::string& to) {
        for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
    }
    static void Rename(ZipItems& items, const std::string& from, const std::string& to) {
        items[to] = items.extract(from).mapped();
        for (auto& [name, text] : items)
            if (name.ends_with(".rels") || name.ends_with("page")) Replace(text, from, to);
    }
    // A page of a job that uses its picture and its font.
    static std::string Page(const std::string& content) {
        return "<FixedPage xmlns=\"http://schemas.microsoft.com/xps/2005/06\" Width=\"816\" "
               "Height=\"1056\">" +
               content + "</FixedPage>";
    }
    static std::string Nested(int levels) {
        return levels == 0 ? std::string() : "<a>" + Nested(levels - 1) + "</a>";
    }
    static constexpr const char* firstPage = "Documents/1/Pages/1.fpage";

    TemporaryFolder m_folder;
    PackageComparisonTest() {
        m_job.jobTicket = SampleTicket("PageMediaSize", "ISOA4");
        m_job.pageTicket = SampleTicket("PageOrientation", "Portrait");
    }

    SampleJob m_job;
};

TEST_F(PackageComparisonTest, HowItIsWrittenMakesNoDifference) {
    ZipItems a = m_job.Items();
    a[firstPage] = Page("<Canvas Clip=\"a\" Name=\"b\"/>");
    ZipItems b = a;
    b[firstPage] = "<?xml version=\"1.0\"?><x:FixedPage xmlns:x=\"http://schemas.microsoft.com/xps/2005/06\" "
                   "Height=\"1056\" Width='816'><!-- -->\n  <x:Canvas\n Name=\"b\" Clip=\"a\">\n</x:Canvas>"
                   "</x:FixedPage>";
    Replace(b["Documents/1/Pages/_rels/1.fpage.rels"], "Id=\"R", "Id=\"Other");
    Replace(b["Metadata/Job_PT.xml"], "psk:", "k:");
    Replace(b["Metadata/Job_PT.xml"], "xmlns:psk", "xmlns:k");
    Replace(b["[Content_Types].xml"], "<Default Extension=\"png\" ContentType=\"image/png\"/>",
            "<Override PartName=\"/Resources/Picture.png\" ContentType=\"image/PNG\"/>");
    EXPECT_THAT(Differences(a, b), IsEmpty());
}

TEST_F(PackageComparisonTest, TheOtherVocabularyIsOneDifference) {
    SampleJob other = m_job;
    other.isOpenXps = true;
    EXPECT_THAT(Differences(m_job.Items(), other.Items()),
                ElementsAre("package | vocabulary: XPS -> OpenXPS"));
}

TEST_F(PackageComparisonTest, TellsWhereMarkupDiffersFirst) {
    const Rows<const char*, const char*, const char*> rows{
        {"<Canvas/><Path Fill=\"a\"/>", "<Canvas/><Path Fill=\"b\"/>",
         "markup, first at FixedPage/Path 2, Fill: a -> b"},
        {"<Path/>", "<Path Fill=\"b\"/>", "markup, first at FixedPage/Path 1, Fill:  -> b"},
        {"<Path/>", "<Canvas/>", "markup, first at FixedPage/Path 1: <Path> -> <Canvas>"},
        {"<Canvas><Path/></Canvas>", "<Canvas/>", ": <Path> -> </Canvas>"},
        {"<Canvas>a</Canvas>", "<Canvas>b</Canvas>", ": \"a\" -> \"b\""},
        {"<Canvas xmlns:m=\"http://schemas.openxmlformats.org/markup-compatibility/2006\" xmlns:p=\"urn:1\" "
         "m:Ignorable=\"p\"/>",
         "<Canvas xmlns:m=\"http://schemas.openxmlformats.org/markup-compatibility/2006\" xmlns:p=\"urn:2\" "
         "m:Ignorable=\"p\"/>",
         "Ignorable: p -> p"},
    };
    for (const auto& [a, b, line] : rows) {
        ZipItems left = m_job.Items(), right = m_job.Items();
        left[firstPage] = Page(a);
        right[firstPage] = Page(b);
        EXPECT_THAT(Differences(left, right), ElementsAre(HasSubstr(line))) << a;
    }
}

TEST_F(PackageComparisonTest, RenamedPartsAreKnownAgain) {
    ZipItems a = m_job.Items();
    a[firstPage] = Page("<Glyphs FontUri=\"" + std::string(SampleJob::fontName) +
                        "#1\"/><ImageBrush ImageSource=\"../../../Resources/Picture.png\"/>");
    ZipItems b = a;
    Rename(b, "Resources/Picture.png", "Resources/New.png");
    // Under another name, an obfuscated font has other bytes.
    const std::string font = "Resources/FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF.odttf";
    Rename(b, std::string(SampleJob::fontName).substr(1), font);
    for (std::size_t i = 0; i < 32; ++i)
        b[font][i] = '\xff';
    EXPECT_THAT(Differences(a, b),
                testing::UnorderedElementsAre(
                    "other parts | image: /Resources/Picture.png -> /Resources/New.png",
                    HasSubstr("other parts | font: " + std::string(SampleJob::fontName) + " -> /" + font)));
}

TEST_F(PackageComparisonTest, TellsPartsByTheirRoles) {
    const Rows<Edit, std::vector<std::string>> rows{
        {[](ZipItems& items) { items["Resources/Picture.png"] += "+"; },
         {"other parts | image /Resources/Picture.png: 12 bytes -> 13 bytes"}},
        {[](ZipItems& items) { items["Resources/Picture.png"][0] = '+'; },
         {"other parts | image /Resources/Picture.png: content -> other content"}},
        {[](ZipItems& items) { items["Resources/Extra.png"] = "new"; },
         {"other parts | image /Resources/Extra.png:  -> 3 bytes"}},
        {[](ZipItems& items) { Replace(items["[Content_Types].xml"], "\"image/png\"", "\"image/tiff\""); },
         {"other parts | content type of /Resources/Picture.png: image/png -> image/tiff"}},
        {[](ZipItems& items) { items["Metadata/Job_PT.xml"] = SampleTicket("PageMediaSize", "ISOA3"); },
         {"job ticket | psk:PageMediaSize: psk:ISOA4 -> psk:ISOA3"}},
        {[](ZipItems& items) {
             items["Metadata/Page_PT.xml"] = SampleTicket("PageOrientation", "Landscape");
         },
         {"document 1, page 1, ticket | psk:PageOrientation: psk:Portrait -> psk:Landscape",
          "document 1, page 2, ticket | psk:PageOrientation: psk:Portrait -> psk:Landscape"}},
        {[](ZipItems& items) {
             Replace(items["Documents/1/FixedDoc.fdoc"], "1.fpage\" Width=\"816\"",
                     "1.fpage\" Width=\"800\"");
         },
         {"document 1, page 1 | size in the document: 816 x 1056 -> 800 x 1056"}},
        {[](ZipItems& items) {
             Replace(items["Documents/1/Pages/_rels/1.fpage.rels"], "../../../Resources/Picture.png",
                     "../../../Resources/Pattern.jpg");
         },
         {"document 1, page 1 | relationship: required-resource /Resources/Picture.png -> ",
          "document 1, page 1 | relationship:  -> required-resource /Resources/Pattern.jpg"}},
    };
    for (const auto& [edit, lines] : rows)
        EXPECT_EQ(lines, AfterEdit(edit));
}

TEST_F(PackageComparisonTest, PagesAreComparedInTheirOrder) {
    m_job.pages = 4;
    m_job.hasExtras = false;
    ZipItems a = m_job.Items();
    for (int page = 1; page <= 4; ++page)
        a["Documents/1/Pages/" + std::to_string(page) + ".fpage"] =
            Page("<Path Fill=\"" + std::to_string(page) + "\"/>");
    ZipItems b = a;
    Replace(b["Documents/1/FixedDoc.fdoc"],
            "<PageContent Source=\"Pages/2.fpage\" Width=\"816\" Height=\"1056\"/>", "");
    const auto lines = Differences(a, b);
    EXPECT_THAT(lines, Contains("document 1 | length: 4 pages -> 3 pages"));
    EXPECT_THAT(lines, Contains("document 1, page 2 | page: /Documents/1/Pages/2.fpage -> "));
    EXPECT_THAT(lines, Not(Contains(HasSubstr("markup")))) << "the others are found behind it";

    SampleJob longer = m_job;
    longer.documents = 2;
    EXPECT_THAT(Differences(m_job.Items(), longer.Items()),
                Contains("document 2 | document:  -> /Documents/2/FixedDoc.fdoc, 4 pages"));
}

TEST_F(PackageComparisonTest, TimesAreToldAsSuch) {
    const auto properties = [](const char* title, const char* created) {
        return std::string("<p xmlns:d=\"urn:d\"><d:title>") + title + "</d:title><d:created>" + created +
               "</d:created></p>";
    };
    ZipItems a = m_job.Items(), b = m_job.Items();
    a["docProps/core.xml"] = properties("One", "2026-01-01");
    b["docProps/core.xml"] = properties("Two", "2026-01-02");
    EXPECT_THAT(Differences(a, b), ElementsAre("core properties | created: 2026-01-01 -> 2026-01-02",
                                               "core properties | title: One -> Two"));
    EXPECT_THAT(Differences(a, b, true), ElementsAre("core properties | title: One -> Two"));
}

TEST_F(PackageComparisonTest, RefusesTheFileThatIsDamaged) {
    const Rows<const char*, std::string, const char*> rows{
        {firstPage, "<FixedPage", "/Documents/1/Pages/1.fpage"},
        {firstPage, "<!DOCTYPE FixedPage><FixedPage/>", "document type"},
        {firstPage, Nested(300), "nested too deeply"},
        {"Metadata/Job_PT.xml", "<PrintTicket/>", "/Metadata/Job_PT.xml: "},
        {"FixedDocSeq.fdseq", "<x/>", "/FixedDocSeq.fdseq"},
    };
    for (const auto& [item, bytes, words] : rows) {
        ZipItems damaged = m_job.Items();
        damaged[item] = bytes;
        try {
            Differences(m_job.Items(), damaged);
            ADD_FAILURE() << words;
        } catch (const HostError& error) {
            EXPECT_TRUE(error.FromInput());
            EXPECT_THAT(error.Subject(), EndsWith("b.xps"));
            EXPECT_THAT(error.what(), HasSubstr(words));
        }
    }
}

} // namespace
