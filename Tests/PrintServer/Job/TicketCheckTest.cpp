#include "PrintServer/SampleQueues.h"
#include "Support/InApartment.h"

#include <Job/TicketCheck.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OvPrintServer;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class TicketCheckTest : public InApartment<> {
protected:
    // Of the queue whose administrator has both sides printed.
    std::vector<std::string> Overruled(const std::string& options) const {
        const JobTicket ticket = TicketOf(m_offer, options);
        OvPipeline::TicketExplanation merged(m_offer.SharedQueue());
        merged.Add("job", kPTJobScope, &ticket.xml);
        std::vector<std::string> overruled;
        for (const LeftOption& option : FindOverruled(merged, ticket))
            overruled.push_back(option.option + ": " + option.reason);
        return overruled;
    }

    const QueueOffer m_offer{SampleQueue("MonoOffice")};
};

TEST_F(TicketCheckTest, WhatTheAdministratorDecidesOtherwiseIsFound) {
    EXPECT_THAT(Overruled("sides=one-sided media=iso_a5_148x210mm"),
                ElementsAre(testing::StartsWith("sides=one-sided: ")));
    EXPECT_THAT(Overruled("sides=two-sided-long-edge media=iso_a5_148x210mm"), IsEmpty());
}

} // namespace
