#include "Platform/PrintTicket/TicketFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

using namespace OvPlatform;
using namespace TicketFixture;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string View(const std::string& ticket) {
    static const PrintTicketMerge merge(Queue());
    const std::string_view view = ticket;
    return merge.Capabilities(ticket.empty() ? nullptr : &view);
}

std::string Marked(const std::string& option, const std::string& constrained) {
    return "name=\"psk:" + option + "\" constrained=\"psk:" + constrained + "\"";
}

TEST(PrintCapabilities, MarksWhatTheSettingsExclude) {
    const std::string twoSided =
        View(Ticket(Feature("JobDuplexAllDocumentsContiguously", "TwoSidedLongEdge")));
    EXPECT_THAT(twoSided, HasSubstr(Marked("Transparency", "PrintTicketSettings")));
    EXPECT_THAT(twoSided, HasSubstr(Marked("Label", "DeviceSettings"))); // the stricter reason stays
    EXPECT_THAT(twoSided, Not(HasSubstr(Marked("TwoSidedShortEdge", "PrintTicketSettings"))));

    const std::string transparency = View(Ticket(Feature("PageMediaType", "Transparency")));
    EXPECT_THAT(transparency, HasSubstr(Marked("TwoSidedLongEdge", "PrintTicketSettings")));
    EXPECT_THAT(transparency, Not(HasSubstr(Marked("Transparency", "PrintTicketSettings"))));
    EXPECT_NO_THROW(PrintTicketMerge merge(Queue(transparency))) << "it can be read again";

    EXPECT_THAT(View(""), Not(HasSubstr("PrintTicketSettings")));
    EXPECT_THAT(View(""), Not(HasSubstr("Constraint"))); // our own elements are not for the printer's clients
}

// Width and height of the sheet, and extent of what can be printed on: the margins stay.
void ExpectImageable(const std::string& view, std::array<const char*, 4> numbers) {
    const char* const names[] = {"ImageableSizeWidth", "ImageableSizeHeight", "ExtentWidth", "ExtentHeight"};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_THAT(view, HasSubstr(Property(std::string("psk:") + names[i], "integer", numbers[i])));
    EXPECT_THAT(view, HasSubstr(Property("psk:OriginWidth", "integer", "4000")));
}

TEST(PrintCapabilities, GivesTheImageableSizeOfTheTicketsPaper) {
    ExpectImageable(View(""), {"210000", "297000", "202000", "287000"});
    ExpectImageable(View(Ticket(Feature("PageMediaSize", "ISOA5"))),
                    {"148000", "210000", "140000", "200000"});
    ExpectImageable(View(Ticket(Feature("PageMediaSize", "CustomMediaSize") +
                                Parameter("PageMediaSizeMediaSizeWidth", "100000") +
                                Parameter("PageMediaSizeMediaSizeHeight", "400000"))),
                    {"100000", "400000", "92000", "390000"});
}

} // namespace
