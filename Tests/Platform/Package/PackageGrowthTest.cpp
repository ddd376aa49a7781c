#include "Platform/Package/ZipBuilder.h"
#include "Support/Growth.h"
#include "Support/TemporaryFolder.h"

#include <Package/ContentTypes.h>
#include <Package/PackageReader.h>
#include <Package/PackageWriter.h>
#include <Package/PartName.h>
#include <Package/Relationships.h>

using namespace OvPlatform;

namespace {

std::string Number(std::size_t n) { return std::to_string(n); }

// A name of that many segments.
std::string DeepName(std::size_t segments, const std::string& last = "x") {
    return Times(segments - 1, [](std::size_t) { return "/a"; }) + "/" + last;
}

std::shared_ptr<TemporaryFolder> PackageOf(const std::vector<ZipEntry>& entries) {
    auto folder = std::make_shared<TemporaryFolder>();
    folder->Write("in.xps", BuildZip(entries));
    return folder;
}

std::function<void()> Opening(const std::vector<ZipEntry>& entries) {
    return [folder = PackageOf(entries)] { PackageReader::Open(*folder / "in.xps"); };
}

struct Written {
    TemporaryFolder folder;
    std::unique_ptr<PackageWriter> writer = PackageWriter::Create(folder / "out.xps");

    void Add(const std::string& name) { writer->AddPart(name, "t", PackageCompression::None)->Close(); }
};

// One part in n pieces of a byte.
std::vector<ZipEntry> Pieces(std::size_t n) {
    std::vector<ZipEntry> entries;
    for (std::size_t i = 0; i < n; ++i)
        entries.push_back({"p.xml/[" + Number(i) + (i + 1 == n ? "].last.piece" : "].piece"), "x"});
    return entries;
}

// Put together, one of each pair, they meet in a table of some thousand names by FNV-1a.
const std::array<std::array<const char*, 2>, 13> meetingEnds{{
    {{"jo5ahooov5", "fv4x2wftm5"}},
    {{"yy5x2n4uok", "ueruwsqpz0"}},
    {{"auyrluqgwb", "c2zsqjzano"}},
    {{"mhtam4qurr", "lgnfdqiepk"}},
    {{"zlcums13hi", "vylcokykm2"}},
    {{"i24td0f41y", "ttz0tncge0"}},
    {{"54jdo0ruj4", "xmzidkg3hr"}},
    {{"opmieb4nok", "eh30hwiitq"}},
    {{"2skb5g2rb0", "qajn3rjn5v"}},
    {{"lsil5jdnhb", "swmtvc34oq"}},
    {{"bsjvp5pnrw", "eeg4hv3vsx"}},
    {{"hdxx3qz0b4", "cnhjnlrjof"}},
    {{"ufbcwuicw1", "hhqjvbbya1"}},
}};

std::string MeetingName(std::size_t n) {
    std::string name = "r/";
    for (const auto& ends : meetingEnds) {
        name += ends[n & 1];
        n >>= 1;
    }
    return name + ".xml";
}

const GrowthCase cases[] = {
    {"OpensNamesMadeToMeetInATable",
     [](std::size_t n) {
         std::vector<ZipEntry> entries;
         for (std::size_t i = 0; i < n; ++i)
             entries.push_back({MeetingName(i), ""});
         return Opening(WithTypes(entries));
     },
     2'048},
    {"OpensNamesOfManySegments",
     [](std::size_t n) {
         return Opening(WithTypes({{DeepName(n, "x.xml").substr(1), ""}}));
     },
     8'000},
    {"ReadsPartsInManyPieces",
     [](std::size_t n) {
         auto folder = PackageOf(WithTypes(Pieces(n)));
         return [folder, n] {
             EXPECT_EQ(PackageReader::Open(*folder / "in.xps")->ReadPart("/p.xml", n).size(), n);
         };
     },
     10'000},
    {"ReadsContentTypes",
     [](std::size_t n) {
         const auto both = [](std::size_t i) {
             return "<Override PartName=\"/p" + Number(i) + "\" ContentType=\"t\"/><Default Extension=\"e" +
                    Number(i) + "\" ContentType=\"t\"/>";
         };
         return [xml = typesHead + Times(n, both) + "</Types>"] { ContentTypes::Parse(xml); };
     }},
    {"ReadsRelationships",
     [](std::size_t n) {
         const auto one = [](std::size_t i) {
             return "<Relationship Id=\"R" + Number(i) + "\" Type=\"urn:t\" Target=\"/p/" + Number(i) +
                    "\"/>";
         };
         return [xml = relsHead + Times(n, one) + "</Relationships>"] { ParseRelationships(xml, "/"); };
     }},
    {"ResolvesLongReferences",
     [](std::size_t n) { return [reference = DeepName(n)] { ResolvePartName("/", reference); }; }},
    {"WritesRelationshipsOfOneSourceWhoseIdsAreTaken",
     [](std::size_t n) {
         auto written = std::make_shared<Written>();
         return [written, n] {
             const auto add = [&](const std::string& kind, std::size_t i, const std::string& id) {
                 written->writer->AddRelationship("/", "urn:" + kind, "http://x/" + Number(i), true, id);
             };
             for (std::size_t i = 0; i < n; ++i)
                 add("given", i, "R" + Number(n + i));
             for (int again = 0; again < 2; ++again)
                 for (std::size_t i = 0; i < n; ++i)
                     add("free", i, "");
             written->writer->Finish();
         };
     }},
    {"WritesNamesOfManySegments",
     [](std::size_t n) {
         auto written = std::make_shared<Written>();
         return [written, n] {
             for (const char* last : {"x", "y", "z"})
                 written->Add(DeepName(n, last));
         };
     },
     8'000}, // of a package that can hold them
    {"AbandonsManyParts",
     [](std::size_t n) {
         auto written = std::make_shared<Written>();
         return [written, n] {
             // Each leaves its folder behind, which the next one is to be named after.
             for (std::size_t i = 0; i < n; ++i) {
                 written->writer->AddPart("/a" + Number(i) + "/b", "t", PackageCompression::None);
                 written->Add("/a" + Number(i));
             }
         };
     },
     20'000},
};

class PackageGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(PackageGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, PackageGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
