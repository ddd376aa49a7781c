#include "Platform/PrintTicket/TicketFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OvPlatform;
using namespace TicketFixture;

namespace {

std::shared_ptr<const QueueFolder> Sample(const char* name) {
    return QueueFolder::Load(std::string(OV_SOURCE_DIR) + "/Samples/Queues/" + name);
}

class SampleQueue : public testing::TestWithParam<const char*> {};

TEST_P(SampleQueue, HasADefaultTicketThatValidationLeavesAlone) {
    const auto queue = Sample(GetParam());
    MergeReport report;
    const auto result = PrintTicketMerge(queue).Merge(queue->DefaultTicket(), nullptr, kPTJobScope, &report);
    EXPECT_FALSE(result.conflictResolved);
    for (const SettingReport& setting : report.settings) {
        EXPECT_EQ(setting.reason, "") << setting.name;
        EXPECT_EQ(setting.origin, SettingOrigin::Base) << setting.name << " is not in the default ticket";
    }
}

// The library keeps its own data in tickets under the private namespace.
TEST_P(SampleQueue, KeepsWhatTheDriverPutsIntoTickets) {
    const auto queue = Sample(GetParam());
    std::string settings;
    const char* const names[] = {
        "JobOrvelDriverData",    "JobOrvelPublicDocSettings",        "JobOrvelCompleteDocSettings",
        "JobOrvelOpifJobTicket", "JobOrvelClientJobData2Parameters", "PageDevmodeSnapshot"};
    for (const char* name : names)
        settings += Parameter(std::string("t:") + name, "QUJD", "xsd:string");
    settings += Feature("t:JobIdentification", "t:JobIdBannerOn");
    std::string ticket = Ticket(settings);
    ticket.replace(
        ticket.find("urn:test:printer"), 16,
        "http://schemas.orvel.example/enterprise/print/driver/native/printSchemaPrivateKeywords/2006/11");
    const std::string_view delta = ticket;
    const auto result = PrintTicketMerge(queue).Merge(queue->DefaultTicket(), &delta, kPTJobScope);
    EXPECT_FALSE(result.conflictResolved);
    for (const char* name : names)
        EXPECT_EQ(EffectiveOf(result.ticket, std::string("ok:") + name), "QUJD");
    EXPECT_EQ(EffectiveOf(result.ticket, "ok:JobIdentification"), "ok:JobIdBannerOn");
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleQueue, testing::Values("ColorOffice", "MonoOffice"),
                         [](const auto& one) { return std::string(one.param); });

} // namespace
