#include "FilterUtilities/PrintSchema/CapabilitiesSupport.h"
#include "Support/Rows.h"

#include <Com/FaultInjection.h>
#include <Media/PageMediaSizePtPcHelper.h>

#include <set>

namespace {

const std::string declarePrivate = Declare("ok", PrivateUri());

std::string ListOf(const std::vector<PcFormInfo>& sizes) {
    std::string text;
    for (const PcFormInfo& size : sizes)
        text += Narrow(size.optionName) + "/" + std::to_string(size.nameSpace) + " " +
                std::to_string(size.width) + "x" + std::to_string(size.height) + "; ";
    return text;
}

TEST(PageMediaSizePtPcHelper, ListsTheCompleteSizesOfADocument) {
    const auto size = [](const std::string& width) {
        return ScoredProperty("psk:MediaSizeWidth", width) +
               ScoredProperty("psk:MediaSizeHeight", Value("1"));
    };
    PrintCapabilitiesXmlDocument capabilities = Capabilities(
        SizeFeature(SizeOption("psk:ISOA4", "210000", "297000") + SizeOption("psk:NoHeight", "210000", "") +
                    SizeOption("psk:NoWidth", "", "297000") + SizeOption("psk:Words", "wide", "tall") +
                    SizeOption("psk:Nothing", "0", "297000") + SizeOption("psk:CustomMediaSize", "1", "2") +
                    SizeOption("ok:Own", "\n 100 ", "200") + SizeOption("PSK:Loud", "101", "201") +
                    SizeOption("Bare", "103", "203") + SizeOption("psk:a:b", "104", "204") + "<psf:Option>" +
                    size(Value("105")) + "</psf:Option><psf:Option name='psk:Refers'>" +
                    size("<psf:ParameterRef name='psk:X'/>") + "</psf:Option>") +
            "<psf:Feature name='psk:PageOther'>" + SizeOption("psk:Elsewhere", "9", "9") + "</psf:Feature>",
        declarePrivate);
    const std::string expected = "ISOA4/3 210000x297000; Own/1 100x200; Loud/3 101x201; Bare/1 103x203; "
                                 "a:b/3 104x204; ";
    PageMediaSizePtPcHelper helper;
    EXPECT_EQ(ListOf(helper.GetSupportedPageMediaSizes(capabilities)), expected);

    // Once there is a list, no document is read.
    PrintCapabilitiesXmlDocument empty = Capabilities("");
    EXPECT_EQ(ListOf(helper.GetSupportedPageMediaSizes(empty)), expected);

    CXString keyword = L"before";
    auto nameSpace = PrintSchema::FrameworkNs;
    EXPECT_EQ(helper.GetPageMediaSizeOptionKeyword(capabilities, 101, 201, keyword, nameSpace), S_OK);
    EXPECT_EQ(Narrow(keyword), "Loud");
    EXPECT_EQ(static_cast<int>(nameSpace), 3);
    EXPECT_EQ(helper.GetPageMediaSizeOptionKeyword(capabilities, 101, 202, keyword, nameSpace), S_FALSE);
    EXPECT_TRUE(keyword.IsEmpty());
}

TEST(PageMediaSizePtPcHelper, KeepsWhatCameBeforeAFailure) {
    const std::string text = SizeFeature(SizeOption("psk:A", "1", "2") + SizeOption("psk:B", "3", "4"));
    PrintCapabilitiesXmlDocument capabilities = Capabilities(text);
    std::set<std::size_t> lengths;
    for (LONG number = 1;; ++number) {
        const OvPlatform::FaultInjectionScope scope(number, E_ACCESSDENIED);
        PageMediaSizePtPcHelper helper;
        lengths.insert(helper.GetSupportedPageMediaSizes(capabilities).size());
        if (!OvPlatform::FaultInjection::HasFailed()) break;
    }
    EXPECT_EQ(lengths, (std::set<std::size_t>{0, 1, 2}));
}

TEST(PageMediaSizePtPcHelper, WritesASizeUnderItsOwnName) {
    PrintCapabilitiesXmlDocument capabilities =
        Capabilities(SizeFeature(SizeOption("psk:ISOA4", "210000", "297000") +
                                 SizeOption("ok:OtherMetric210x900", "210000", "900000")),
                     declarePrivate);
    const std::string old = Feature("psk:PageMediaSize", "psk:CustomMediaSize") +
                            Feature("psk:PageMediaSize", "psk:ISOA5") +
                            "<psf:ParameterInit name='psk:PageMediaSizeMediaSizeWidth'>" + Value("7") +
                            "</psf:ParameterInit>" + Feature("psk:PageOrientation", "psk:Portrait");
    const Rows<int, int, const char*, bool> cases{
        {210000, 297000, "psk:ISOA4", false},
        {210000, 900000, "ok:OtherMetric210x900", false},
        {210001, 297000, "psk:CustomMediaSize", true},
    };
    for (const std::string& declarations : {declarePrivate, std::string(), Declare("own", PrivateUri())}) {
        for (const auto& [wantedWidth, wantedHeight, option, isCustom] : cases) {
            SCOPED_TRACE(option + declarations);
            PageMediaSizePtPcHelper helper;
            PrintTicketXmlDocument written = OpenTicket(Ticket(old, declarations));
            EXPECT_EQ(helper.AddOrReplacePageMediaSize(capabilities, written, wantedWidth, wantedHeight),
                      S_OK);
            const OpenTicket ticket(XmlOf(written));
            EXPECT_EQ(OutsideView(ticket, "count(//psf:Feature)"), "2");
            EXPECT_EQ(OutsideView(ticket, "//psf:Feature[@name='psk:PageMediaSize']/psf:Option/@name"),
                      option);
            EXPECT_EQ(OutsideView(ticket, "concat(count(//psf:ParameterInit), count(//psf:ParameterRef))"),
                      isCustom ? "22" : "00");
            int width = 0;
            int height = 0;
            EXPECT_EQ(ticket.GetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeWidth", &width), S_OK);
            EXPECT_EQ(ticket.GetScoredPropertyValue(L"PageMediaSize", true, L"MediaSizeHeight", &height),
                      S_OK);
            EXPECT_EQ(width, wantedWidth);
            EXPECT_EQ(height, wantedHeight);

            EXPECT_EQ(PageMediaSizePtPcHelper::DeletePageMediaSizeAndItsParameterInitsIfExist(written), S_OK);
            EXPECT_EQ(OutsideView(written, "count(/*/*)"), "1");
            EXPECT_EQ(PageMediaSizePtPcHelper::DeletePageMediaSizeAndItsParameterInitsIfExist(written),
                      S_FALSE);
        }
    }
}

// A ticket that cannot take the size keeps the one it has.
TEST(PageMediaSizePtPcHelper, LeavesATicketAloneThatCannotHoldAPrivateName) {
    PrintCapabilitiesXmlDocument capabilities =
        Capabilities(SizeFeature(SizeOption("ok:Own", "1", "2")), declarePrivate);
    PrintTicketXmlDocument ticket =
        OpenTicket(Ticket(Feature("psk:PageMediaSize", "psk:ISOA5"),
                          Declare("ok", "urn:another") + Declare("ns0000", "urn:third")));
    PageMediaSizePtPcHelper helper;
    EXPECT_EQ(ResultOf([&] { return helper.AddOrReplacePageMediaSize(capabilities, ticket, 1, 2); }), E_FAIL);
    EXPECT_EQ(OutsideView(ticket, "//psf:Option/@name"), "psk:ISOA5");
}

} // namespace
