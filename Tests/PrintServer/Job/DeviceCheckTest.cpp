#include "PrintServer/SampleQueues.h"
#include "Support/InApartment.h"
#include "Support/Rows.h"

#include <Commands/TicketExplanation.h>
#include <Common/Text.h>
#include <DeviceControl/HeldJobPasscode.h>
#include <Job/DeviceCheck.h>
#include <Spooler/QueueFolderError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

using namespace OvPrintServer;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DeviceCheckTest : public InApartment<> {
protected:
    static std::vector<std::string> Untold(const OvPlatform::QueueDescription& description,
                                           const std::string& options) {
        const QueueOffer offer(std::make_shared<OvPlatform::QueueFolder>(description));
        std::vector<std::string> untold;
        for (const LeftOption& option : Untold(offer, TicketOf(offer, options)))
            untold.push_back(option.option);
        return untold;
    }

    static std::vector<LeftOption> Untold(const QueueOffer& offer, const JobTicket& ticket) {
        OvPipeline::TicketExplanation merged(offer.SharedQueue());
        merged.Add("job", kPTJobScope, &ticket.xml);
        return FindUntold(offer, ticket, merged.Ticket());
    }

    OvPlatform::QueueDescription m_color = SampleQueue("ColorOffice")->Description();
};

// Kestrel staples and punches by counts, and a queue that offers corners and edges has none.
TEST_F(DeviceCheckTest, WhatTheDeviceGetsNoCommandForIsFound) {
    EXPECT_THAT(Untold(m_color, "finishings=20,74,100"), ElementsAre("finishings=20", "finishings=74"));
    EXPECT_THAT(Untold(m_color, "Stapling=StapleTopRight Fold=FoldZ"),
                ElementsAre("Stapling=StapleTopRight"));
    EXPECT_THAT(
        Untold(m_color, "mirror printer-resolution=1200dpi print-scaling=fit orientation-requested=6"),
        ElementsAre("printer-resolution=1200dpi", "orientation-requested=6", "print-scaling=fit",
                    "mirror=true"));
    // One of two settings is enough, by the family or by the device's own.
    EXPECT_THAT(Untold(m_color, "print-color-mode=monochrome orientation-requested=4 print-quality=3"),
                IsEmpty());
    // As the queue has it, or told with the pages.
    EXPECT_THAT(Untold(m_color, "Stapling=None Punch=None sides=one-sided media=a5,tray-2 number-up=2 "
                                "print-rendering-intent=perceptual printer-resolution=600dpi"),
                IsEmpty());
}

TEST_F(DeviceCheckTest, OneCopyNeedsNoCollating) {
    const QueueOffer offer(std::make_shared<OvPlatform::QueueFolder>(m_color));
    const std::string handling = "multiple-document-handling=separate-documents-uncollated-copies";
    EXPECT_THAT(Untold(offer, TicketOf(offer, handling)), IsEmpty());
    EXPECT_THAT(Untold(offer, TicketOf(offer, handling, 3)), testing::SizeIs(1));
}

TEST_F(DeviceCheckTest, ItDependsOnQueueAndFamily) {
    auto byCounts = m_color;
    const std::regex corner("<psf:Option name=\"psk:StapleTopRight\"[^]*?</psf:Option>|psk:StapleTopRight ");
    byCounts.capabilities = std::regex_replace(byCounts.capabilities, corner, "");
    EXPECT_THAT(Untold(byCounts, "finishings=20"), IsEmpty());
    EXPECT_THAT(Untold(byCounts, "finishings=21,28"), ElementsAre("finishings=21"));
    auto stapling = byCounts; // whose default is the staple
    const std::string none =
        "<psf:Feature name=\"psk:JobStapleAllDocuments\">\n    <psf:Option name=\"psk:None\"/>";
    const std::size_t at = stapling.defaultTicket.find(none);
    ASSERT_NE(std::string::npos, at);
    stapling.defaultTicket.replace(stapling.defaultTicket.find("None", at), 4, "StapleTopLeft");
    EXPECT_THAT(Untold(stapling, "Stapling=None"), IsEmpty());
    EXPECT_THAT(Untold(stapling, "Stapling=StapleBottomLeft"), IsEmpty());
    for (const auto& [family, untold] : Rows<const wchar_t*, std::size_t>{
             {L"Osprey", 0}, {L"kestrel", 0}, {L"Harrier", 1}, {L"LowEndPS", 1}, {L"", 0}}) {
        auto other = byCounts;
        other.driverProperties[L"DeviceFamily"] = std::wstring(family);
        EXPECT_EQ(untold, Untold(other, "finishings=20").size()) << OvPipeline::Utf8(family);
    }
    byCounts.driverProperties[L"DeviceFamily"] = std::wstring(L"None");
    EXPECT_THROW(Untold(byCounts, "finishings=20"), OvPlatform::QueueFolderError);
}

// The passcode of a job that is held for a card is another one in each second.
TEST_F(DeviceCheckTest, TimeMakesNoDifference) {
    const HeldJobPasscode::Clock clock = HeldJobPasscode::SetClock([] {
        static int minutes = 0;
        std::tm time{};
        time.tm_year = 126;
        time.tm_mday = 1;
        time.tm_min = ++minutes % 60;
        return UtcTime(time);
    });
    m_color.driverProperties[L"DeviceFamily"] = std::wstring(L"Osprey");
    const std::string hold = "&lt;hold-for-authentication syntax=\"keyword\"&gt;";
    const std::size_t at = m_color.defaultTicket.find(hold + "none");
    ASSERT_NE(std::string::npos, at);
    m_color.defaultTicket.replace(at + hold.size(), 4, "user-id");
    EXPECT_THAT(Untold(m_color, "job-password=80731942 finishings=20"), ElementsAre("finishings=20"));
    HeldJobPasscode::SetClock(clock);
}

} // namespace
