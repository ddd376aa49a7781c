#include "PrintServer/SampleQueues.h"
#include "Support/Growth.h"
#include "Support/InApartment.h"
#include "Support/Rows.h"
#include "Support/TemporaryFolder.h"

#include <Options/OptionTable.h>
#include <PrintTicket/TicketOverlay.h>
#include <cups/cups.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <regex>
#include <set>

using namespace OvPrintServer;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class JobTicketTest : public InApartment<> {
protected:
    JobTicket Make(const std::string& options, unsigned copies = 1) {
        return TicketOf(m_color, options, copies);
    }
    std::string Setting(const std::string& options, const std::string& setting) {
        return Merged(m_color, Make(options).xml, setting);
    }

    QueueOffer m_color{SampleQueue("ColorOffice")};
    QueueOffer m_mono{SampleQueue("MonoOffice")};
};

TEST_F(JobTicketTest, OptionsBecomeTheTicketsSettings) {
    for (const auto& [options, setting, value] : Rows<const char*, const char*, const char*>{
             {"sides=two-sided-short-edge", "psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedShortEdge"},
             {"Duplex=DuplexNoTumble", "psk:JobDuplexAllDocumentsContiguously", "psk:TwoSidedLongEdge"},
             {"media=iso_a3_297x420mm", "psk:PageMediaSize", "psk:ISOA3"},
             {"media=a5", "psk:PageMediaSize", "psk:ISOA5"},
             {"media=na-letter", "psk:PageMediaSize", "psk:NorthAmericaLetter"},
             {"media=letter,tray-2,stationery-letterhead", "psk:PageMediaSize", "psk:NorthAmericaLetter"},
             {"media=letter,tray-2,stationery-letterhead", "psk:PageInputBin", "ok:tray-2"},
             {"media=letter,tray-2,stationery-letterhead", "psk:PageMediaType", "psk:Letterhead"},
             {"PageSize=Custom.200x300mm", "psk:PageMediaSize", "psk:CustomMediaSize"},
             {"PageSize=Custom.200x300mm", "psk:PageMediaSizeMediaSizeWidth", "200000"},
             {"PageSize=Env10", "psk:PageMediaSize", "psk:NorthAmericaNumber10Envelope"},
             {"media-col={media-size={x-dimension=21000 y-dimension=29700} media-source=tray-3}",
              "psk:PageInputBin", "ok:tray-3"},
             {"media-col={media-size={x-dimension=14800 y-dimension=21000} media-color=blue}",
              "psk:PageMediaSize", "psk:ISOA5"},
             {"media-col={media-size-name=na_letter_8.5x11in media-type=stationery-letterhead}",
              "psk:PageMediaSize", "psk:NorthAmericaLetter"},
             {"media-col={media-size-name=na_letter_8.5x11in media-type=stationery-letterhead}",
              "psk:PageMediaType", "psk:Letterhead"},
             {"media-type=stationery-recycled", "psk:PageMediaType", "ok:stationery-recycled"},
             {"print-color-mode=monochrome", "psk:PageOutputColor", "psk:Monochrome"},
             {"ColorModel=Gray", "psk:PageOutputColor", "psk:Monochrome"},
             {"print-quality=5", "psk:PageOutputQuality", "psk:High"},
             {"printer-resolution=1200dpi", "psk:PageResolution", "ok:_1200x1200_"},
             {"finishings=20,74", "psk:JobStapleAllDocuments", "psk:StapleTopLeft"},
             {"finishings=20,74", "psk:JobHolePunch", "psk:HolePunchDualLeft"},
             {"finishings=none,fold-half", "psk:JobBindAllDocuments", "psk:FoldHalf"},
             {"number-up=4 number-up-layout=tblr", "psk:JobNUpAllDocumentsContiguously",
              "(psk:PagesPerSheet=4)"},
             {"number-up=4 number-up-layout=tblr",
              "psk:JobNUpAllDocumentsContiguously/psk:PresentationDirection", "psk:BottomRight"},
             {"orientation-requested=4", "psk:PageOrientation", "psk:Landscape"},
             {"orientation-requested=5", "psk:PageOrientation", "psk:ReverseLandscape"},
             {"nolandscape", "psk:PageOrientation", "psk:Portrait"},
             {"Collate=false", "psk:DocumentCollate", "psk:Uncollated"},
             {"output-bin=FinisherTray", "psk:JobOutputBin", "ok:FinisherTray"},
             {"fit-to-page", "psk:PageScaling", "psk:FitApplicationMediaSizeToPageImageableSize"},
             {"fit-to-page=yes", "psk:PageScaling", "psk:FitApplicationMediaSizeToPageImageableSize"},
             {"mirror=On", "psk:PageMirrorImage", "psk:MirrorImageWidth"},
             {"landscape=1", "psk:PageOrientation", "psk:Landscape"},
             {"landscape=2", "psk:PageOrientation", "psk:Portrait"},
             {"job-password=80731942", "pskv11:JobPasscode", "psk:On"},
             {"job-password=\"8&<'31\"", "pskv11:JobPasscodeString", "8&<'31"},
         }) {
        EXPECT_EQ(value, Setting(options, setting)) << options;
        EXPECT_THAT(Make(options).left, IsEmpty()) << options;
    }
    const std::string nUp = Make("number-up=4 number-up-layout=tblr").xml;
    const std::string feature = "\"psk:JobNUpAllDocumentsContiguously\"";
    EXPECT_EQ(nUp.find(feature), nUp.rfind(feature)); // with its direction inside
    EXPECT_THAT(Make("job-password=80731942").xml, HasSubstr("\"xsd:string\">80731942<"));
    EXPECT_EQ("7", Merged(m_color, Make("", 7).xml, "psk:JobCopiesAllDocuments"));
    EXPECT_EQ("1-3,7,9-", Make("page-ranges=1-3,7,9-").pages);
    // A printer's nearest: one without colours, and with a grey of another name.
    EXPECT_EQ("psk:Grayscale", Merged(m_mono, TicketOf(m_mono, "print-color-mode=process-monochrome").xml,
                                      "psk:PageOutputColor"));
}

// The words of both are made by rule.
TEST_F(JobTicketTest, LayoutsAndFinishingsHaveAllTheirWords) {
    const std::pair<std::string, std::string> across[] = {{"lr", "Right"}, {"rl", "Left"}};
    const std::pair<std::string, std::string> along[] = {{"tb", "Bottom"}, {"bt", "Top"}};
    const auto direction = [&](const std::string& word) {
        return Setting("number-up=4 number-up-layout=" + word,
                       "psk:JobNUpAllDocumentsContiguously/psk:PresentationDirection");
    };
    const auto named = [](const std::string& one, const std::string& two) {
        return std::string("psk:").append(one).append(two);
    };
    for (const auto& [row, to] : across)
        for (const auto& [column, then] : along) {
            EXPECT_EQ(named(to, then), direction(row + column));
            EXPECT_EQ(named(then, to), direction(column + row));
        }
    const auto options = [](const std::string& word) {
        std::set<std::string> found;
        for (const FinishingWord& row : GetFinishingWords())
            if (row.word == word) found.emplace(row.option);
        return found;
    };
    for (const auto& [edge, name] :
         {std::pair{"left", "Left"}, {"top", "Top"}, {"right", "Right"}, {"bottom", "Bottom"}}) {
        EXPECT_THAT(options(std::string("staple-dual-") + edge),
                    ElementsAre(std::string("StapleDual") + name));
        EXPECT_THAT(options(std::string("edge-stitch-") + edge),
                    ElementsAre(std::string("StapleDual") + name));
        for (const auto& [holes, count] : {std::pair{"dual", "Dual"}, {"triple", "Triple"}, {"quad", "Quad"}})
            EXPECT_THAT(options(std::string("punch-") + holes + "-" + edge),
                        ElementsAre(std::string("HolePunch") + count + name));
    }
    for (const FinishingWord& row : GetFinishingWords())
        EXPECT_LT(0, ippEnumValue("finishings", std::string(row.word).c_str())) << row.word;
}

TEST_F(JobTicketTest, AttributesWinOverKeywords) {
    EXPECT_EQ("psk:OneSided",
              Setting("Duplex=DuplexTumble sides=one-sided", "psk:JobDuplexAllDocumentsContiguously"));
    EXPECT_EQ("psk:ISOA5", Setting("PageSize=A3 media=iso_a5_148x210mm", "psk:PageMediaSize"));
    EXPECT_THAT(Make("PageSize=Custom.200x300mm media=iso_a5_148x210mm").xml, Not(HasSubstr("200000")));
    EXPECT_EQ("ok:tray-2", Setting("media=a4 InputSlot=tray-2", "psk:PageInputBin"));
    EXPECT_EQ("psk:StapleDualLeft",
              Setting("Stapling=StapleTopRight finishings=28", "psk:JobStapleAllDocuments"));
}

TEST_F(JobTicketTest, WhatTheServerFillsInIsNoWish) {
    EXPECT_EQ("",
              Make("finishings=3 number-up=1 print-color-mode=color print-scaling=auto "
                   "job-hold-until=no-hold job-uuid=urn:uuid:1 "
                   "job-originating-host-name=localhost date-time-at-creation= document-name-supplied=a.xps")
                  .xml);
    EXPECT_THAT(Make("job-uuid=urn:uuid:1 time-at-creation=1 document-name-supplied=a.xps").unknown,
                IsEmpty());
    // Of another queue it is one.
    EXPECT_EQ("psk:Color", Setting("ColorModel=RGB", "psk:PageOutputColor"));
    EXPECT_THAT(TicketOf(m_mono, "print-color-mode=color").left, Not(IsEmpty()));
}

TEST_F(JobTicketTest, SettingsOfTheDeviceStandBesideTheQueuesOwn) {
    const std::string settings =
        Setting("print-quality=draft job-hold-until=indefinite", "ok:JobOrvelPublicDocSettings");
    EXPECT_THAT(settings, HasSubstr("toner-saver</print-quality-level>"));
    EXPECT_THAT(settings, HasSubstr("hold-job</job-type-api>"));
    EXPECT_THAT(settings, HasSubstr("outlines-on")); // the queue's own
    EXPECT_THAT(settings, Not(HasSubstr("enhanced")));
    EXPECT_THAT(Setting("print-quality=normal", "ok:JobOrvelPublicDocSettings"), HasSubstr(">standard<"));
    // A queue without any.
    EXPECT_THAT(Merged(m_mono, TicketOf(m_mono, "print-quality=draft").xml, "ok:JobOrvelPublicDocSettings"),
                HasSubstr(">toner-saver<"));
}

TEST_F(JobTicketTest, WhatCannotBeHadIsLeftAndNamed) {
    for (const auto& [options, left] : Rows<const char*, const char*>{
             {"sides=three-sided", "sides=three-sided"},
             {"media=a4,tray-77", "media=tray-77"},
             {"media=custom_huge_5000x5000mm", "media=custom_huge_5000x5000mm"},
             {"PageSize=Custom.-1x99999999999mm", "PageSize=Custom.-1x99999999999mm"},
             {"media-col={media-size={x-dimension=99999999999999999999 y-dimension=1}}",
              "media-col=media-size"},
             {"number-up=5", "number-up=5"},
             {"number-up=99999999999999999999", "number-up=99999999999999999999"},
             {"finishings=20,78", "finishings=78"},
             {"print-quality=9", "print-quality=9"},
             {"Resolution=600x", "Resolution=600x"},
             {"printer-resolution=600x300dpi", "printer-resolution=600x300dpi"},
             {"page-ranges=0-4", "page-ranges=0-4"},
             {"page-ranges=4-2", "page-ranges=4-2"},
             {"page-ranges=1-4x", "page-ranges=1-4x"},
             {"page-ranges=18446744073709551617", "page-ranges=18446744073709551617"},
             {"job-hold-until=evening", "job-hold-until=evening"},
         }) {
        const JobTicket ticket = Make(options);
        ASSERT_EQ(1U, ticket.left.size()) << options;
        EXPECT_EQ(left, ticket.left[0].option);
        EXPECT_EQ("", ticket.pages);
    }
    EXPECT_THAT(Make("", 10000).left, testing::SizeIs(1)); // copies beyond the printer's
    // Of two settings that an option may be, the printer has one.
    auto description = SampleQueue("ColorOffice")->Description();
    const std::regex ofJobs("psk:JobCollateAllDocuments");
    description.capabilities = std::regex_replace(description.capabilities, ofJobs, "psk:JobCollateNothing");
    const QueueOffer withOne(std::make_shared<OvPlatform::QueueFolder>(description));
    EXPECT_THAT(TicketOf(withOne, "Collate=false").left, IsEmpty());
    // A size of its own, and no bounds of it.
    const std::regex width(
        "<psf:ParameterDef name=\"psk:PageMediaSizeMediaSizeWidth\"[^]*?</psf:ParameterDef>");
    description.capabilities = std::regex_replace(description.capabilities, width, "");
    const QueueOffer unbounded(std::make_shared<OvPlatform::QueueFolder>(description));
    EXPECT_THAT(TicketOf(unbounded, "PageSize=Custom.200x300mm").left, testing::SizeIs(1));
    EXPECT_THAT(Make("nothing=1 NoThing=2 x SIDES=one-sided").unknown, ElementsAre("nothing", "x"));
}

TEST_F(JobTicketTest, WorkIsInProportionToTheOptions) {
    const auto number = [](std::size_t i) { return std::to_string(i) + ","; };
    ExpectLinearGrowth({"Choices", [&](std::size_t n) {
                            const std::string options =
                                "media=" + Times(n, number) + "a4 finishings=" + Times(n, number);
                            return [this, options] { Make(options); };
                        }});
    ExpectLinearGrowth({"Obeyed", [&](std::size_t n) {
                            const auto ticket = std::make_shared<JobTicket>(
                                Make("job-mandatory-attributes=" + Times(n, number) +
                                     Times(n, [](std::size_t i) { return " o" + std::to_string(i); })));
                            return [ticket] {
                                for (const std::string& name : ticket->unknown)
                                    EXPECT_FALSE(ticket->MustObey(name));
                            };
                        }});
}

TEST_F(JobTicketTest, AJobIsNotPrintedWithoutItsPassword) {
    for (const char* const options :
         {"job-password=123", "job-password=12345678901", "job-password='12\t34'", "job-password=12\xff\x34",
          "job-password=80731942 job-password-encryption=sha-256"})
        try {
            Make(options);
            ADD_FAILURE() << options;
        } catch (const RefusedOption& error) {
            EXPECT_THAT(error.what(), HasSubstr("job-password: "));
            EXPECT_THAT(error.what(), Not(HasSubstr("12"))) << "a secret is said";
        }
    auto description = SampleQueue("ColorOffice")->Description();
    const std::regex passcode("<psf:Feature name=\"pskv11:JobPasscode\">[^]*?</psf:Feature>");
    description.capabilities = std::regex_replace(description.capabilities, passcode, "");
    const QueueOffer without(std::make_shared<OvPlatform::QueueFolder>(description));
    EXPECT_THROW(TicketOf(without, "job-password=80731942"), RefusedOption);
}

TEST_F(JobTicketTest, SaysWhatMustBeObeyed) {
    EXPECT_TRUE(Make("ipp-attribute-fidelity=true").MustObey("sides"));
    EXPECT_FALSE(Make("ipp-attribute-fidelity=false").MustObey("sides"));
    const JobTicket some = Make("job-mandatory-attributes=media,sides");
    EXPECT_TRUE(some.MustObey("sides"));
    EXPECT_FALSE(some.MustObey("number-up"));
}

// Whatever stands in them: a ticket that comes out is one.
TEST_F(JobTicketTest, NoValueBreaksTheTicket) {
    const std::vector<std::string> hostile{"",
                                           "'",
                                           "\"\"",
                                           "{}",
                                           "{a={b={c=",
                                           "\x01\x02\x1b[2J",
                                           "\xff\xfe\xc0",
                                           "<x/>&amp;]]>",
                                           "\\",
                                           "-1",
                                           "1,,,,2",
                                           ",",
                                           "\u202e\u009b31m",
                                           std::string(60000, '9'),
                                           std::string(2000, '{'),
                                           "true",
                                           "AutoSelect",
                                           "../../etc",
                                           "%s%n"};
    for (const OptionRow& row : GetOptionRows())
        for (const std::string& value : hostile)
            try {
                const JobTicket ticket = Make(std::string(row.name) + "=" + value);
                EXPECT_NO_THROW(ticket.xml.empty() ? void() : void(OvPlatform::TicketOverlay(ticket.xml)))
                    << ticket.xml;
            } catch (const RefusedOption&) {
                EXPECT_EQ("job-password", row.name);
            }
}

TEST_F(JobTicketTest, AHundredThousandOptionsAreCounted) {
    std::string text;
    for (int i = 0; i < 100'000; ++i)
        text += "o" + std::to_string(i % 9'000) + "=" + std::to_string(i) + " ";
    const JobTicket ticket = Make(text + "sides=two-sided-short-edge");
    EXPECT_EQ(9'000U, ticket.unknown.size());
    EXPECT_EQ(1U, ticket.asked.size());
}

// The page for people lists each option of the table, and no other.
TEST_F(JobTicketTest, TheDocumentationHasTheTable) {
    std::string page = TemporaryFolder::Read(OV_SOURCE_DIR "/docs/print-server.md");
    page.erase(0, page.find("## Options"));
    page.erase(page.find("## What is said"));
    std::set<std::string> documented;
    const std::regex row("\n\\| (`[^|]*`) \\|");
    const std::regex name("`([^`]+)`");
    for (std::sregex_iterator at(page.begin(), page.end(), row), end; at != end; ++at) {
        const std::string cell = (*at)[1];
        for (std::sregex_iterator one(cell.begin(), cell.end(), name); one != end; ++one)
            documented.insert((*one)[1]);
    }
    std::set<std::string> known;
    for (const OptionRow& option : GetOptionRows())
        known.insert(std::string(option.name));
    EXPECT_EQ(known, documented);
}

} // namespace
