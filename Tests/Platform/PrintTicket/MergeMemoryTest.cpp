#include "Platform/PrintTicket/TicketFixture.h"

#include <Xml/TextMemory.h>

#include <gtest/gtest.h>

#include <optional>
#include <thread>
#include <vector>

using namespace OvPlatform;
using namespace TicketFixture;

namespace {

struct MergeCase {
    std::string base;
    std::optional<std::string> delta;
    EPrintTicketScope scope;
};

PrintTicketMerge::Result MergedBy(const PrintTicketMerge& merge, const MergeCase& asked, bool isAnew) {
    const std::string_view delta = asked.delta ? std::string_view(*asked.delta) : std::string_view();
    MergeReport report;
    return merge.Merge(asked.base, asked.delta ? &delta : nullptr, asked.scope, isAnew ? &report : nullptr);
}

// Texts that come in any order, some the same in another part, and two of which end where others begin.
TEST(MergeMemory, MergesOfKnownTextsAreThoseOfNewOnes) {
    const std::string portrait = Ticket(Feature("PageOrientation", "Portrait"));
    const std::string landscape = Ticket(Feature("PageOrientation", "Landscape"));
    const std::string copies = Ticket(Parameter("JobCopiesAllDocuments", "3"));
    const std::string tooMany = Ticket(Parameter("JobCopiesAllDocuments", "-7"));
    std::vector<MergeCase> cases;
    for (const EPrintTicketScope scope : {kPTJobScope, kPTDocumentScope, kPTPageScope})
        for (const std::string& base : {portrait, landscape, portrait + "\n"}) {
            cases.push_back({base, std::nullopt, scope});
            for (const std::string& delta : {landscape, copies, tooMany, "\n" + landscape})
                cases.push_back({base, delta, scope});
        }
    const PrintTicketMerge merge(Queue());
    for (int round = 0; round < 3; ++round)
        for (std::size_t i = 0; i < cases.size(); ++i) {
            const auto known = MergedBy(merge, cases[i], false);
            const auto fresh = MergedBy(merge, cases[i], true);
            EXPECT_EQ(known.ticket, fresh.ticket) << "case " << i;
            EXPECT_EQ(known.conflictResolved, fresh.conflictResolved) << "case " << i;
        }
    const std::string_view none;
    for (int again = 0; again < 2; ++again) // what is no ticket is not known for one
        EXPECT_THROW(merge.Merge(portrait, &none, kPTJobScope), PrintTicketError);
}

TEST(MergeMemory, ServesThreadsAtOnce) {
    const PrintTicketMerge merge(Queue());
    const std::string base = Ticket(Feature("PageOrientation", "Portrait"));
    std::vector<std::string> expected;
    std::vector<std::string> deltas;
    for (int copies = 1; copies <= 20; ++copies) {
        deltas.push_back(Ticket(Parameter("JobCopiesAllDocuments", std::to_string(copies))));
        expected.push_back(MergedBy(merge, {base, deltas.back(), kPTJobScope}, true).ticket);
    }
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&, thread] {
            for (std::size_t i = 0; i < 100; ++i) {
                const std::size_t at = (i * 7 + static_cast<std::size_t>(thread)) % deltas.size();
                EXPECT_EQ(MergedBy(merge, {base, deltas[at], kPTJobScope}, false).ticket, expected[at]);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

TEST(TextMemory, ForgetsWhatNobodyAskedForLongest) {
    TextMemory<int> memory(30);
    const auto keep = [&](const char* text, int value, std::size_t bytes) {
        memory.Keep(text, std::make_shared<const int>(value), bytes);
    };
    const auto valueOf = [&](const char* text) {
        const auto found = memory.Find(text);
        return found ? *found : 0;
    };
    keep("a", 1, 9);
    keep("b", 2, 9);
    keep("c", 3, 9);
    EXPECT_EQ(valueOf("a"), 1);
    keep("a", 10, 9); // known: the first stays
    keep("d", 4, 9);
    EXPECT_EQ(valueOf("b"), 0);
    EXPECT_EQ(valueOf("a") + valueOf("c") + valueOf("d"), 1 + 3 + 4);
    keep("too large", 5, 30);
    EXPECT_EQ(valueOf("too large"), 0);
    EXPECT_EQ(valueOf("c"), 3);
    keep("all but one", 6, 9); // 20 bytes with its text
    EXPECT_EQ(valueOf("all but one") + valueOf("c"), 6 + 3);
    EXPECT_EQ(valueOf("a") + valueOf("d"), 0);
}

} // namespace
