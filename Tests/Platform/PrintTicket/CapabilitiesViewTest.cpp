#include "Platform/PrintTicket/TicketFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
    EXPECT_THAT(transparency, HasSubstr(Marked("TwoSidedShortEdge", "PrintTicketSettings")));
    EXPECT_THAT(transparency, Not(HasSubstr(Marked("Transparency", "PrintTicketSettings"))));

    const std::string none = View("");
    EXPECT_THAT(none, Not(HasSubstr("PrintTicketSettings")));
    EXPECT_THAT(none, Not(HasSubstr("Constraint"))); // our own elements are not for the printer's clients
}

std::string Imageable(const std::string& view) {
    const std::size_t at = view.find("<psf:Property name=\"psk:PageImageableSize\">");
    std::string numbers;
    bool inNumber = false;
    for (const char c : view.substr(at)) {
        const bool digit = c >= '0' && c <= '9';
        if (digit) numbers += c;
        if (inNumber && !digit) numbers += ' ';
        inNumber = digit;
    }
    return numbers;
}

TEST(PrintCapabilities, GivesTheImageableSizeOfTheTicketsPaper) {
    // Width and height of the sheet, origin and extent of what can be printed on: the margins stay.
    EXPECT_EQ(Imageable(View("")), "210000 297000 4000 5000 202000 287000 ");
    EXPECT_EQ(Imageable(View(Ticket(Feature("PageMediaSize", "ISOA5")))),
              "148000 210000 4000 5000 140000 200000 ");
    EXPECT_EQ(Imageable(View(Ticket(Feature("PageMediaSize", "CustomMediaSize") +
                                    Parameter("PageMediaSizeMediaSizeWidth", "100000") +
                                    Parameter("PageMediaSizeMediaSizeHeight", "400000")))),
              "100000 400000 4000 5000 92000 390000 ");
}

TEST(PrintCapabilities, CanBeReadAgain) {
    const std::string view = View(Ticket(Feature("PageMediaType", "Transparency")));
    EXPECT_NO_THROW(PrintTicketMerge merge(Queue(view)));
}

} // namespace
