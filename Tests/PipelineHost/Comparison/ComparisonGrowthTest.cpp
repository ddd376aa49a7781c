// How the work of comparing grows with what is compared.
#include "Support/Growth.h"
#include "Support/SampleJob.h"

#include <Comparison/FileComparison.h>

using namespace OvPipeline;

namespace {

std::string Ticket(const std::string& content) {
    std::string ticket = SampleTicket("A", "B");
    return ticket.insert(ticket.find("<psf:Feature"), content);
}

// Compares two files, made of n and of n with something else at their end.
GrowthMaker Comparing(ComparedKind kind,
                      const std::function<std::string(std::size_t, const std::string&)>& make) {
    return [=](std::size_t n) {
        auto folder = std::make_shared<TemporaryFolder>();
        folder->Write("a", make(n, "a"));
        folder->Write("b", make(n, "b"));
        return [=] { EXPECT_FALSE(CompareFiles(kind, *folder / "a", *folder / "b", false).IsEmpty()); };
    };
}

GrowthMaker ComparingPackages(const std::function<void(ZipItems&, std::size_t, bool)>& change) {
    return [=](std::size_t n) {
        auto folder = std::make_shared<TemporaryFolder>();
        for (const bool isB : {false, true}) {
            SampleJob sample;
            sample.pages = 1;
            sample.hasExtras = false;
            ZipItems items = sample.Items();
            change(items, n, isB);
            WriteZip(*folder / (isB ? "b" : "a"), items);
        }
        return [=] {
            EXPECT_FALSE(CompareFiles(ComparedKind::Package, *folder / "a", *folder / "b", false).IsEmpty());
        };
    };
}

std::string Name(const char* kind, std::size_t i) { return kind + std::to_string(i); }

const GrowthCase cases[] = {
    {"Features", Comparing(ComparedKind::Ticket,
                           [](std::size_t n, const std::string& end) {
                               return Ticket(Times(n, [&](std::size_t i) {
                                   return "<psf:Feature name=\"psk:" + Name("F", i) +
                                          "\"><psf:Option name=\"psk:" + end + "\"/></psf:Feature>";
                               }));
                           })},
    {"Options", Comparing(ComparedKind::Ticket,
                          [](std::size_t n, const std::string& end) {
                              return Ticket("<psf:Feature name=\"psk:F\">" +
                                            Times(n,
                                                  [&](std::size_t i) {
                                                      return "<psf:Option name=\"psk:" + Name("O", i) + end +
                                                             "\"/>";
                                                  }) +
                                            "</psf:Feature>");
                          })},
    {"PjlLines",
     Comparing(ComparedKind::Stream,
               [](std::size_t n, const std::string& end) {
                   return Times(n,
                                [&](std::size_t i) { return "@PJL COMMENT " + Name("x", i) + end + "\n"; });
               }),
     15'000},
    {"Pages", Comparing(ComparedKind::Stream,
                        [](std::size_t n, const std::string& end) {
                            return "%!\n" +
                                   Times(n,
                                         [](std::size_t i) {
                                             return "%%Page: 1 1\n" + std::to_string(i) + " show\n";
                                         }) +
                                   end;
                        })},
    {"NestedDictionaries",
     Comparing(ComparedKind::Stream,
               [](std::size_t n, const std::string& end) {
                   return "%!\n" + Times(n, [](std::size_t) { return "<</A "; }) + end +
                          Times(n, [](std::size_t) { return ">>setpagedevice "; });
               }),
     100'000},
    {"OpenStrings",
     Comparing(ComparedKind::Stream,
               [](std::size_t n, const std::string& end) {
                   return "%!\n" + Times(n, [](std::size_t) { return "[(<"; }) + end;
               }),
     600'000},
    {"Resources", ComparingPackages([](ZipItems& items, std::size_t n, bool isB) {
         for (std::size_t i = 0; i < n; ++i)
             items["Resources/" + Name(isB ? "B" : "A", i) + ".png"] = std::to_string(i);
     })},
    {"Relationships", ComparingPackages([](ZipItems& items, std::size_t n, bool isB) {
         SampleJob::Links links;
         for (std::size_t i = 0; i < n; ++i)
             links.emplace_back("urn:x", Name(isB ? "B" : "A", i));
         items["Documents/1/Pages/_rels/1.fpage.rels"] = SampleJob::Relationships(links);
     })},
    {"Elements", ComparingPackages([](ZipItems& items, std::size_t n, bool isB) {
         items["Documents/1/Pages/1.fpage"] =
             "<FixedPage xmlns=\"http://schemas.microsoft.com/xps/2005/06\">" +
             Times(n, [](std::size_t) { return "<Path Fill=\"a\"/>text"; }) + (isB ? "b" : "a") +
             "</FixedPage>";
     })},
};

class ComparisonGrowth : public testing::TestWithParam<GrowthCase> {};
INSTANTIATE_TEST_SUITE_P(Inputs, ComparisonGrowth, testing::ValuesIn(cases), GrowthName);
TEST_P(ComparisonGrowth, IsInProportion) { ExpectLinearGrowth(GetParam()); }

} // namespace
