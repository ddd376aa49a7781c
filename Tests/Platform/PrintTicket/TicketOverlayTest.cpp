#include "Platform/PrintTicket/TicketFixture.h"

#include <PrintTicket/TicketOverlay.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OvPlatform;
using namespace TicketFixture;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

// What a printer that knows all of it makes of the ticket.
std::string Merged(const std::string& ticket) {
    static const PrintTicketMerge merge(Queue());
    return Effective(merge.Merge(ticket, nullptr, kPTJobScope).ticket);
}

const std::string wanted =
    Ticket(Feature("PageOrientation", "Landscape") + Parameter("JobCopiesAllDocuments", "7"));

TEST(TicketOverlay, TakesThePlaceOfWhatItNamesAndLeavesTheRest) {
    const std::string base =
        Ticket(Feature("PageOrientation", "Portrait") + Feature("PageMediaType", "Plain") +
               Parameter("JobCopiesAllDocuments", "2"));
    const TicketOverlay overlay(wanted);
    EXPECT_THAT(Merged(overlay.Over(base)),
                AllOf(HasSubstr("JobCopiesAllDocuments=7"), HasSubstr("PageOrientation=Landscape"),
                      HasSubstr("PageMediaType=Plain")));
    EXPECT_THAT(overlay.GivingWay(base),
                AllOf(Not(HasSubstr("PageOrientation")), Not(HasSubstr("JobCopiesAllDocuments")),
                      HasSubstr("PageMediaType")));
    // What has the name and is of another kind is another setting.
    const std::string property =
        R"(<psf:Property name="psk:PageOrientation"><psf:Value xsi:type="xsd:string">kept</psf:Value></psf:Property>)";
    EXPECT_THAT(overlay.Over(Ticket(property)), HasSubstr("kept"));
    const std::string other = Ticket(Feature("PageMediaType", "Plain"));
    EXPECT_EQ(other, overlay.GivingWay(other)); // byte by byte, where nothing gives way
}

TEST(TicketOverlay, KnowsNamesByTheirNamespacesAndLeavesForeignMarkup) {
    // The same prefixes for other namespaces, the same namespaces under other prefixes, and none for the
    // framework's own.
    const std::string base =
        R"(<PrintTicket xmlns="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework")"
        R"( xmlns:words="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords")"
        R"( xmlns:psk="urn:others" xmlns:psf="urn:more" version="1"><!-- kept --><psf:Thing name="psk:PageOrientation"/>)"
        R"(<Feature name="words:PageOrientation"><Option name="words:Portrait"/></Feature>)"
        R"(<Feature name="psk:PageOrientation"><Option name="psk:Portrait"/></Feature></PrintTicket>)";
    const std::string over = TicketOverlay(wanted).Over(base);
    EXPECT_THAT(Merged(over),
                AllOf(HasSubstr("PageOrientation=Landscape"), HasSubstr("JobCopiesAllDocuments=7")));
    EXPECT_THAT(over, AllOf(HasSubstr("<!-- kept -->"), HasSubstr("psf:Thing"),
                            Not(HasSubstr("words:Portrait")), HasSubstr("psk:Portrait")));
}

// Some readers look for a prefix at the root alone.
TEST(TicketOverlay, GivesTheRootThePrefixesThatItLacks) {
    const std::string over = TicketOverlay(wanted).Over(
        R"(<a:PrintTicket xmlns:a="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework" version="1"/>)");
    EXPECT_THAT(over.substr(0, over.find("Feature")), AllOf(HasSubstr("xmlns:psk="), HasSubstr("xmlns:a=")));
}

TEST(TicketOverlay, RefusesWhatIsNoTicketOnEitherSide) {
    for (const char* const text : {"", "<a/>", "no markup", "<!DOCTYPE a><a/>"}) {
        EXPECT_THROW(TicketOverlay{text}, PrintTicketError) << text;
        const TicketOverlay overlay(wanted);
        EXPECT_THROW(overlay.Over(text), PrintTicketError) << text;
        EXPECT_THROW(overlay.GivingWay(text), PrintTicketError) << text;
    }
}

} // namespace
