#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/Growth.h"
#include "Support/NoDisplayHelp.h"

#include <JobContext/XpsFilterPrintTicket.h>

namespace {

// A snapshot of a job's ticket of n items, and questions that look through it.
GrowthMaker Asked(std::string (*content)(std::size_t)) {
    return [=](std::size_t n) {
        const auto ticket = std::make_shared<OpenTicket>(
            static_cast<IStream*>(StreamOf(Ticket(content(n), Declare("ns0000", PrivateUri())))));
        return [ticket] {
            XpsFilterPrintTicket asked(nullptr, NoDisplayHelp());
            CXString printer;
            asked.Initialize(kPTJobScope, nullptr, ticket->GetDomDocPtr(), nullptr, nullptr, printer,
                             nullptr);
            PrintSchema::JobIdentification::EJobIdentificationOption option;
            EXPECT_EQ(asked.GetJobIdSetting(option), S_FALSE);
            EXPECT_FALSE(asked.IsSidesImagedSpecified());
        };
    };
}

const GrowthCase cases[] = {
    // Of somebody else, who uses the same prefix.
    {"ForeignFeatures", Asked([](std::size_t n) {
         return "<psf:Feature" + Declare("ns0000", "urn:foreign") + ">" +
                Times(n, [](std::size_t) { return Feature("ns0000:JobIdentification", "ns0000:JobIdOff"); }) +
                "</psf:Feature>";
     })},
    {"PublicSettings", Asked([](std::size_t n) {
         return "<psf:ParameterInit name='ns0000:JobOrvelPublicDocSettings'><psf:Value><![CDATA[<s>" +
                Times(n, [](std::size_t) { return std::string("<e><f>v</f></e>"); }) +
                "</s>]]></psf:Value></psf:ParameterInit>";
     })}};

class JobContextGrowth : public testing::TestWithParam<GrowthCase> {};

TEST_P(JobContextGrowth, IsLinear) { ExpectLinearGrowth(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Snapshots, JobContextGrowth, testing::ValuesIn(cases), GrowthName);

} // namespace
