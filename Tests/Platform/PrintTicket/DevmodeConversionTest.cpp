#include "Platform/PrintTicket/TicketFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

using namespace OvPlatform;
using namespace TicketFixture;
using testing::HasSubstr;

namespace {

DEVMODEW Devmode(DWORD fields) {
    DEVMODEW mode{};
    std::wcsncpy(mode.dmDeviceName, L"Ticket Test", CCHDEVICENAME);
    mode.dmSpecVersion = DM_SPECVERSION;
    mode.dmSize = sizeof(mode);
    mode.dmFields = fields;
    return mode;
}

std::string Convert(const DEVMODEW& mode, EPrintTicketScope scope = kPTJobScope,
                    std::size_t size = sizeof(DEVMODEW)) {
    static const PrintTicketMerge merge(Queue());
    return merge.ConvertDevmode(&mode, size, scope);
}

TEST(DevmodeConversion, TurnsThePublicFieldsIntoSettings) {
    DEVMODEW mode =
        Devmode(DM_ORIENTATION | DM_PAPERSIZE | DM_COPIES | DM_DUPLEX | DM_COLLATE | DM_PRINTQUALITY);
    mode.dmOrientation = DMORIENT_LANDSCAPE;
    mode.dmPaperSize = DMPAPER_LETTER;
    mode.dmCopies = 12;
    mode.dmDuplex = DMDUP_HORIZONTAL;
    mode.dmCollate = DMCOLLATE_TRUE;
    mode.dmPrintQuality = 300;
    const std::string ticket = Effective(Convert(mode));
    for (const char* setting :
         {"PageOrientation=Landscape", "PageMediaSize=NorthAmericaLetter", "JobCopiesAllDocuments=12",
          "JobDuplexAllDocumentsContiguously=TwoSidedShortEdge", "DocumentCollate=Collated",
          "PageResolution=t:R300"})
        EXPECT_THAT(ticket, HasSubstr(setting));
    EXPECT_EQ(EffectiveOf(Convert(mode, kPTPageScope), "JobCopiesAllDocuments"), "(none)");

    mode.dmFields = 0; // the members are there, but do not count
    EXPECT_EQ(EffectiveOf(Convert(mode), "PageOrientation"), "Portrait");

    // Lengths count where paper has no number.
    mode.dmFields = DM_PAPERSIZE | DM_PAPERWIDTH | DM_PAPERLENGTH;
    mode.dmPaperSize = DMPAPER_USER;
    mode.dmPaperWidth = 1000;
    mode.dmPaperLength = 1500;
    const std::string custom = Effective(Convert(mode));
    EXPECT_THAT(custom, HasSubstr("PageMediaSizeMediaSizeWidth=100000 PageMediaSizeMediaSizeHeight=150000"));
    EXPECT_THAT(custom, HasSubstr("PageMediaSize=CustomMediaSize"));
}

TEST(DevmodeConversion, KeepsTheRecordAsTheSnapshot) {
    struct {
        DEVMODEW mode = Devmode(DM_ORIENTATION);
        unsigned char extra[3] = {0xFA, 0xCE, 0x0F};
    } record;
    record.mode.dmOrientation = DMORIENT_LANDSCAPE;
    record.mode.dmDriverExtra = sizeof(record.extra);
    const std::string snapshot = EffectiveOf(
        Convert(record.mode, kPTPageScope, sizeof(DEVMODEW) + sizeof(record.extra)), "t:PageDevmodeSnapshot");
    // As the platform stores it: 220 bytes with 16-bit text, then the driver's own.
    EXPECT_EQ(snapshot.size(), (220 + 3 + 2) / 3 * 4u);
    EXPECT_TRUE(snapshot.starts_with("VABpAGMAawBlAHQA")) << snapshot; // "Ticket"
    EXPECT_TRUE(snapshot.ends_with("APrODw==")) << snapshot;           // 00 FA CE 0F

    // A shorter record is filled up with zeros before the driver's bytes.
    record.mode.dmSize = offsetof(DEVMODEW, dmICMMethod);
    std::memcpy(reinterpret_cast<unsigned char*>(&record) + record.mode.dmSize, record.extra, 3);
    record.extra[0] = 0;
    const std::string ticket = Convert(record.mode, kPTPageScope, record.mode.dmSize + std::size_t{3});
    EXPECT_EQ(EffectiveOf(ticket, "PageOrientation"), "Landscape");
    EXPECT_TRUE(EffectiveOf(ticket, "t:PageDevmodeSnapshot").ends_with("AAAAPrODw==")); // zeros, FA CE 0F
}

TEST(DevmodeConversion, IgnoresTheRecordOfAnotherPrinter) {
    DEVMODEW mode = Devmode(DM_ORIENTATION);
    mode.dmOrientation = DMORIENT_LANDSCAPE;
    std::wcsncpy(mode.dmDeviceName, L"Elsewhere", CCHDEVICENAME);
    const std::string ticket = Convert(mode);
    EXPECT_EQ(EffectiveOf(ticket, "PageOrientation"), "Portrait");
    EXPECT_EQ(EffectiveOf(ticket, "t:PageDevmodeSnapshot"), "(none)");
}

TEST(DevmodeConversion, RefusesARecordLongerThanItsBytes) {
    DEVMODEW mode = Devmode(DM_ORIENTATION);
    EXPECT_THROW(Convert(mode, kPTJobScope, sizeof(mode) - 1), std::invalid_argument);
    mode.dmDriverExtra = 1;
    EXPECT_THROW(Convert(mode), std::invalid_argument);
    mode.dmDriverExtra = 0;
    mode.dmSize = 8;
    EXPECT_THROW(Convert(mode), std::invalid_argument);
}

} // namespace
