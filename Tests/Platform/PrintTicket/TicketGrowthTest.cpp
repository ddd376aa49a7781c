#include "Platform/PrintTicket/TicketFixture.h"
#include "Support/Growth.h"

#include <PrintTicket/PrintTicketMerge.h>
#include <Spooler/QueueFolder.h>

using namespace OvPlatform;

namespace {

std::string Number(std::size_t n) { return std::to_string(n); }

// A ticket of n items, merged into the default of a small printer.
GrowthMaker Merging(Item item) {
    return [=](std::size_t n) {
        auto merge = std::make_shared<PrintTicketMerge>(TicketFixture::Queue());
        return [merge, ticket = TicketFixture::Ticket(Times(n, item))] {
            const std::string_view delta = ticket;
            MergeReport report;
            merge->Merge(TicketFixture::DefaultTicket(), &delta, kPTJobScope, &report);
            merge->Capabilities(&delta);
        };
    };
}

// A printer of n items, and a ticket that asks for each of them.
GrowthMaker Printer(Item capability, Item setting) {
    return [=](std::size_t n) {
        const std::string capabilities = TicketFixture::Capabilities(Times(n, capability));
        const std::string ticket = TicketFixture::Ticket(Times(n, setting));
        return [queue = TicketFixture::Queue(capabilities, TicketFixture::Ticket("")), ticket] {
            const std::string_view delta = ticket;
            const PrintTicketMerge merge(queue);
            merge.Merge(TicketFixture::Ticket(""), &delta, kPTJobScope);
            merge.Capabilities(nullptr);
        };
    };
}

std::string OneFeature(std::size_t i) {
    return "<psf:Feature name=\"t:Job" + Number(i) +
           "\"><psf:Option name=\"t:O0\"/><psf:Option name=\"t:O1\" constrained=\"psk:None\"/></psf:Feature>";
}
std::string Asking(std::size_t i) { return TicketFixture::Feature("t:Job" + Number(i), "t:O1"); }

// Of one feature n options; as many questions for the last of them would be a ticket that asks twice.
GrowthMaker Options(bool named) {
    return [=](std::size_t n) {
        const std::string capabilities = TicketFixture::Capabilities(
            "<psf:Feature name=\"t:JobO\">" +
            Times(n,
                  [&](std::size_t i) {
                      return (named ? "<psf:Option name=\"t:O" + Number(i) + "\">" : "<psf:Option>") +
                             TicketFixture::Scored("S", static_cast<int>(i)) + "</psf:Option>";
                  }) +
            "</psf:Feature>");
        const std::string ticket = TicketFixture::Ticket("<psf:Feature name=\"t:JobO\"><psf:Option>" +
                                                         TicketFixture::Scored("S", static_cast<int>(n - 1)) +
                                                         "</psf:Option></psf:Feature>");
        return [queue = TicketFixture::Queue(capabilities, TicketFixture::Ticket("")), ticket] {
            const std::string_view delta = ticket;
            PrintTicketMerge(queue).Merge(TicketFixture::Ticket(""), &delta, kPTJobScope);
        };
    };
}

const GrowthCase cases[] = {
    {"MergesManyFeatures", Merging(Asking)},
    {"MergesOneFeatureOftenRepeated", Merging([](std::size_t) { return Asking(0); })},
    {"MergesManyParameters",
     Merging([](std::size_t i) { return TicketFixture::Parameter("t:JobP" + Number(i), "1"); })},
    {"MergesManyProperties",
     Merging([](std::size_t i) { return TicketFixture::Property("t:JobX" + Number(i), "integer", "1"); })},
    {"MergesForeignElements", Merging([](std::size_t) { return "<t:Foreign/>\n"; })},
    {"ReadsManyFeaturesOfAPrinter", Printer(OneFeature, Asking)},
    {"ReadsManyNamedOptions", Options(true)},
    {"ReadsManyNamelessOptions", Options(false)},
};

class TicketGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(TicketGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(, TicketGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
