#include "FilterUtilities/PrintSchema/CapabilitiesSupport.h"
#include "Support/Rows.h"
#include "Support/VirtualSlots.h"

#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <TicketAccess/NativeComPrintTicketAccess.h>
#include <TicketAccess/PrintTicketFeatureTable.h>

#include <array>
#include <fstream>
#include <sstream>

namespace {

using Access = NativeComPrintTicketAccess;

constexpr char v11[] = "pskv11";

std::string PrivateNames() { return Declare("ok", PrivateUri()); }
std::string AllNames() { return PrivateNames() + Declare(v11, keywordsV11Uri); }

std::string Offering(const std::string& content, const std::string& declarations = AllNames()) {
    return CapabilitiesText(content, declarations);
}

std::string Offer(const std::string& name, const std::string& content = {},
                  const std::string& constraint = {}) {
    return "<psf:Option" + (name.empty() ? "" : " name='" + name + "'") +
           (constraint.empty() ? "" : " constrained='" + constraint + "'") + ">" + content + "</psf:Option>";
}

std::string Size(const std::string& name, int width, int height) {
    return SizeOption(name, std::to_string(width), std::to_string(height));
}

Access AccessTo(const std::string& ticket, const std::string& capabilities) {
    return Access(CXString(ticket.c_str()), CXString(capabilities.c_str()));
}

std::string OptionOf(const Access& access, const char* feature) {
    CXString value = L"stale";
    access.GetCurrentValueOptionFeature(feature, value);
    return Narrow(value);
}

std::string TextOf(const Access& access, const char* feature) {
    CXString value = L"stale";
    access.GetCurrentValueStringFeature(feature, value);
    return Narrow(value);
}

std::string XmlOf(const Access& access) {
    CPString xml;
    access.GetPrintTicketAsXmlString(xml, false);
    return std::string(xml.view());
}

std::string NamesOf(const Access& access, const char* feature) {
    std::vector<Access::OptionCapability> options(1);
    access.GetCapabilitiesOptionFeature(feature, options);
    std::ostringstream text;
    for (const auto& [name, displayName, ns, uri, constrained] : options)
        text << name << "|" << displayName << "|" << ns << "|"
             << (uri.IsEmpty()                      ? "-"
                 : uri == PrintSchema::KEYWORDS_URI ? "psk"
                                                    : "other")
             << "|" << constrained << "\n";
    return text.str();
}

std::string FileText(const std::string& path) {
    std::ifstream file(OV_SOURCE_DIR "/" + path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

TEST(TicketAccess, VirtualOperationsStandInTheirSlots) {
    EXPECT_EQ(SlotOf(&Access::IsSupportedPrintTicketFeature), 2U);
    EXPECT_EQ(SlotOf(&Access::GetCurrentValueOptionFeature), 7U);
    EXPECT_EQ(SlotOf(&Access::SetCurrentValueOptionFeature), 17U);
    EXPECT_EQ(SlotOf(&Access::GetPrintCapabilitiesAsXmlString), 24U);
    EXPECT_EQ(SlotOf(&OneMore<Access>::Next), 25U);
}

TEST(TicketAccess, SupportAndRangesAreReadFromTheCapabilities) {
    const std::string capabilities =
        Offering(Named("ParameterDef", "ok:JobSimpleSecurePrint",
                       Property("psf:MinLength", "4") + Property("psf:MaxLength", "8")) +
                 Named("Feature", "psk:PageBorderless", "") + Named("Feature", "ok:JobIdentification", "") +
                 Named("ParameterDef", "psk:PageOrientation", "") +
                 Named("Feature", "psk:PageMediaSize", Named("Feature", "psk:JobHolePunch", "")) +
                 Named("ParameterDef", "psk:JobCopiesAllDocuments", Property("psf:MaxValue", "1")) +
                 Named("Feature", "psk:PageScaling", "") +
                 Named("ParameterDef", "pskv11:JobPasscodeString", Property("psf:MinLength", "6")));
    const Access access = AccessTo(Ticket("", AllNames()), capabilities);
    const Rows<const char*, bool> rows{
        {"JobSimpleSecurePrint", true},  {"PageBorderless", false},  // private, here public
        {"JobIdentification", true},     {"PageOrientation", false}, // a feature, here a parameter
        {"JobHolePunch", true},                                      // nested
        {"JobCopiesAllDocuments", true}, {"JobOrvelCompleteDocSettings", false},
        {"PageScaling", false}, // not one that is known
        {"JobPasscodeString", true},
    };
    for (int time = 0; time < 2; ++time) // the second time from memory
        for (const auto& [feature, isSupported] : rows)
            EXPECT_EQ(access.IsSupportedPrintTicketFeature(feature), isSupported) << feature;

    const Access without =
        AccessTo(Ticket("", AllNames()),
                 Offering("<psf:ParameterDef name='ok:JobSimpleSecurePrint'/>" +
                          Named("ParameterDef", "psk:JobCopiesAllDocuments", Property("psf:MaxValue", "0"))));
    EXPECT_FALSE(without.IsSupportedPrintTicketFeature(L"JobSimpleSecurePrint"));
    EXPECT_FALSE(without.IsSupportedPrintTicketFeature(L"JobCopiesAllDocuments"));

    const Rows<const char*, std::pair<int, int>> ranges{{"JobCopiesAllDocuments", {1, 1}},
                                                        {"JobSimpleSecurePrint", {4, 8}},
                                                        {"JobPasscodeString", {-1, -2}}, // not complete
                                                        {"PageMediaSize", {-1, -2}}};
    for (const auto& [feature, expected] : ranges) {
        std::pair<int, int> range(-1, -2);
        access.GetRangeCapability(feature, range);
        EXPECT_EQ(range, expected) << feature;
    }
}

TEST(TicketAccess, ThePasscodeNeedsTicketCapabilitiesAndAnOptionThatMayBeChosen) {
    const std::string passcode = Feature("pskv11:JobPasscode", "psk:On");
    const auto offered = [](const char* constraint) {
        return Named("Feature", "pskv11:JobPasscode", Offer("psk:Off") + Offer("psk:On", "", constraint));
    };
    const Rows<std::string, std::string, bool, const char*> rows{
        {Ticket(passcode, AllNames()), Offering(offered("psk:AdminSettings")), true, "On"},
        {Ticket(passcode, AllNames()), Offering(offered("psk:devicesettings")), false, "On"},
        {Ticket("", AllNames()), Offering(offered("psk:None")), false, ""},
        {Ticket(passcode, AllNames()), Offering(""), false, "On"},
        {Ticket(passcode, AllNames()), Offering("", PrivateNames()), false, "Off"},
        // Each document has its own prefix.
        {Ticket(passcode, AllNames()),
         Offering(Named("Feature", "n:JobPasscode", Offer("psk:On")),
                  PrivateNames() + Declare("n", keywordsV11Uri)),
         true, "On"},
    };
    for (const auto& [ticket, capabilities, isSupported, value] : rows) {
        SCOPED_TRACE(ticket + capabilities);
        const Access access = AccessTo(ticket, capabilities);
        EXPECT_EQ(access.IsSupportedPrintTicketFeature(L"JobPasscode"), isSupported);
        EXPECT_EQ(OptionOf(access, "JobPasscode"), value);
    }
    // What the ticket has may change.
    Access access = AccessTo(Ticket("", AllNames()), Offering(offered("")));
    EXPECT_FALSE(access.IsSupportedPrintTicketFeature(L"JobPasscode"));
    access.SetCurrentValueOptionFeature(L"JobPasscode", L"On");
    EXPECT_TRUE(access.IsSupportedPrintTicketFeature(L"JobPasscode"));
}

TEST(TicketAccess, OptionsComeWithNamesNamespacesAndConstraints) {
    const std::string offers =
        Property("psk:DisplayName", "Trays") +
        Offer("psk:AutoSelect", Property("psk:DisplayName", "Automatic"), "psk:None") + "<!-- -->" +
        Offer("ok:tray-1",
              ScoredProperty("psk:MediaSheetCapacity", Value("500")) + Property("psk:DisplayName", "Tray 1"),
              "psk:DeviceSettings") +
        Offer("ok:tray-1", "", "psk:ADMINSETTINGS") +
        Offer("",
              Property("psk:Other", "x") + ScoredProperty("psk:FeedType", Value("psk:Manual")) +
                  ScoredProperty("psk:BinType", Value("psk:Sheet")),
              "psk:PrintTicketSettings") +
        Offer("zz:foreign", "", "psk:Sometimes") + Offer("bare") + Offer("pskv11:newer") +
        "<psf:Feature name='psk:Nested'>" + Offer("psk:inner") + "</psf:Feature>";
    const std::string expected = "AutoSelect|Automatic|0|psk|0\n"
                                 "tray-1|Tray 1|1|other|3\n"
                                 "tray-1||1|other|2\n"
                                 "Manual||0|psk|1\n"
                                 "zz:foreign||8|-|0\n"
                                 "bare||8|-|0\n"
                                 "newer||6|-|0\n";
    const Access access = AccessTo(Ticket(""), Offering(Named("Feature", "psk:PageInputBin", offers)));
    EXPECT_EQ(NamesOf(access, "PageInputBin"), expected);
    EXPECT_EQ(NamesOf(access, "Nested"), "");
    CXString displayName;
    access.GetFeatureDisplayName(L"PageInputBin", displayName);
    EXPECT_EQ(displayName, L"Trays");
}

TEST(TicketAccess, MediaSizesComeWithTheirSizesInMicrons) {
    const Access access = AccessTo(
        Ticket(""),
        Offering(Named("Feature", "psk:PageMediaSize",
                       Size("psk:ISOA4", 210000, 297000) +
                           Offer("ok:half", ScoredProperty("psk:MediaSizeWidth", Value("1000")) +
                                                Property("psk:DisplayName", "Half")) +
                           Offer("ok:words", ScoredProperty("psk:MediaSizeWidth", Value("wide")) +
                                                 ScoredProperty("psk:MediaSizeHeight",
                                                                "<psf:ParameterRef name='psk:X'/>")))));
    std::vector<Access::MediaSizeCapability> sizes(1);
    access.GetCapabilitiesMediaSizeFeature(L"PageMediaSize", sizes);
    std::ostringstream text;
    for (const auto& size : sizes) {
        EXPECT_EQ(std::get<5>(size).first.GetUnits(), Dimension::Micron);
        text << std::get<0>(size) << "|" << std::get<1>(size) << "|"
             << std::get<5>(size).first.GetValue().GetIntValue(0) << "|"
             << std::get<5>(size).second.GetValue().GetIntValue(0) << "\n";
    }
    EXPECT_EQ(text.str(), "ISOA4||210000|297000\nhalf|Half|1000|0\nwords||0|0\n");
}

TEST(TicketAccess, ReadsWhatTheTicketSays) {
    const Access access = AccessTo(
        Ticket(Feature("psk:PageMediaType", "ok:cardstock") +
                   Feature("psk:DocumentNUp", "", ScoredProperty("psk:PagesPerSheet", Value("4"))) +
                   Feature("psk:PageResolution", "",
                           ScoredProperty("psk:ResolutionX", "<psf:ParameterRef name='psk:R'/>") +
                               ScoredProperty("psk:Q", Value("psk:High"))) +
                   Feature("psk:PageScaling", "psk:None") + Feature("psk:PageOutputColor", "unqualified") +
                   Named("ParameterInit", "psk:JobCopiesAllDocuments", Value(" 12 ")) +
                   Named("ParameterInit", "pskv11:JobPasscodeString", Value("1234")) +
                   Named("ParameterInit", "ok:JobOrvelCompleteDocSettings", Value("QUJD")) +
                   Named("ParameterInit", "ok:JobOrvelPublicDocSettings", Value("&lt;a>\xC3\xA9&lt;/a>")),
               AllNames()),
        Offering(""));
    EXPECT_EQ(OptionOf(access, "PageMediaType"), "cardstock");
    EXPECT_EQ(OptionOf(access, "DocumentNUp"), "4");
    EXPECT_EQ(OptionOf(access, "PageResolution"), "High");
    EXPECT_EQ(OptionOf(access, "PageOutputColor"), "");
    EXPECT_EQ(OptionOf(access, "PageScaling"), "");
    EXPECT_EQ(access.GetCurrentValueIntegerFeature(L"JobCopiesAllDocuments"), 12);
    EXPECT_EQ(access.GetCurrentValueIntegerFeature(L"JobOrvelCompleteDocSettings"), 0);
    EXPECT_EQ(TextOf(access, "JobPasscodeString"), "1234");
    EXPECT_EQ(TextOf(access, "PageMediaType"), "");
    CXString text;
    access.GetCurrentValueBase64EncodedCompleteDocSettings(text);
    EXPECT_EQ(text, L"QUJD");
    CPString xml;
    access.GetJobOrvelPublicDocSettingsXml(xml);
    EXPECT_EQ(xml, "<a>\xC3\xA9</a>");
}

TEST(TicketAccess, ADamagedPasswordIsNotAnEmptyOne) {
    const auto password = [](const std::string& encoded) {
        const Access access =
            AccessTo(Ticket(Named("ParameterInit", "ok:JobSimpleSecurePrint", Value(encoded)), AllNames()),
                     Offering(""));
        CXString text(L"stale");
        access.GetCurrentValueJobSimpleSecurePrintPassword(text);
        return text;
    };
    EXPECT_EQ(password(" "), L"");
    EXPECT_EQ(password("cABhAHMAcwA="), L"pass");
    for (const char* damaged : {"cA*=", "cABhAHMAcwA=x", "cA=="})
        EXPECT_THROW(password(damaged), CPExceptionInvalidArgument) << damaged;
}

TEST(TicketAccess, TheSizeOfTheTicketIsItsOwnOrThatOfItsParameters) {
    const std::string byParameters =
        Feature("psk:PageMediaSize", "psk:CustomMediaSize",
                ScoredProperty("psk:MediaSizeWidth",
                               "<psf:ParameterRef name='psk:PageMediaSizeMediaSizeWidth'/>") +
                    ScoredProperty("psk:MediaSizeHeight", Value("222000"))) +
        Named("ParameterInit", "psk:PageMediaSizeMediaSizeWidth", Value("111000"));
    const Rows<std::string, std::string, int, int, bool> rows{
        {byParameters, "CustomMediaSize", 111000, 222000, false},
        {Feature("psk:PageMediaSize", "unqualified"), "", 0, 0, false},
        // the capabilities are not asked
        {Feature("psk:PageMediaSize", "psk:ISOA4", ScoredProperty("psk:MediaSizeWidth", Value("1"))), "ISOA4",
         0, 0, true},
    };
    for (const auto& [ticket, wantedOption, wantedWidth, wantedHeight, isThrown] : rows) {
        SCOPED_TRACE(ticket);
        const Access access =
            AccessTo(Ticket(ticket),
                     Offering(Named("Feature", "psk:PageMediaSize", Size("psk:ISOA4", 210000, 297000))));
        CXString option = L"stale";
        Dimension width(7, Dimension::Inch);
        Dimension height = width;
        const HRESULT result = ResultOf([&] {
            access.GetCurrentValueMediaSizeFeature(L"PageMediaSize", option, width, height);
            return S_OK;
        });
        EXPECT_EQ(result, isThrown ? E_ELEMENT_NOT_FOUND : S_OK);
        EXPECT_EQ(Narrow(option), wantedOption);
        EXPECT_EQ(width.GetUnits(), Dimension::Micron);
        EXPECT_EQ(width.GetValue().GetIntValue(0), wantedWidth);
        EXPECT_EQ(height.GetValue().GetIntValue(0), wantedHeight);
    }
}

TEST(TicketAccess, EveryOfferedOptionOfTheSampleQueuesReadsBackAfterItIsSet) {
    for (const std::string queue : {"ColorOffice", "MonoOffice"}) {
        PrintCapabilitiesXmlDocument capabilities(
            CXString(FileText("Samples/Queues/" + queue + "/capabilities.xml").c_str()));
        OpenTicket ticket(FileText("Samples/Queues/" + queue + "/default-ticket.xml"));
        Access access(ticket, capabilities);
        int count = 0;
        for (const PrintTicketFeatureTable::Row& row : PrintTicketFeatureTable::rows) {
            const std::string feature = Narrow(row.name);
            std::vector<Access::OptionCapability> options;
            access.GetCapabilitiesOptionFeature(row.name, options);
            for (const auto& option : options) {
                const CXString& name = std::get<0>(option);
                SCOPED_TRACE(queue + " " + feature + " " + Narrow(name));
                access.SetCurrentValueOptionFeature(row.name, name);
                const std::string written = XmlOf(access);
                OpenTicket fresh(written);
                EXPECT_EQ(OptionOf(Access(fresh, capabilities), feature.c_str()), Narrow(name));
                access.SetCurrentValueOptionFeature(row.name, name);
                EXPECT_EQ(XmlOf(access), written) << "a value that stands is not written again";
                ++count;
            }
        }
        EXPECT_GT(count, 20);
    }
}

TEST(TicketAccess, PrivateNamesReadBackAlsoFromATicketThatDeclaredNone) {
    const CXString capabilities = Offering(Named("Feature", "psk:PageMediaSize", Size("ok:Own", 1, 2)) +
                                           Named("Feature", "ok:PageBorderless", Offer("psk:Borderless")))
                                      .c_str();
    const std::pair<const char*, const char*> size = {"PageMediaSize", "Own"};
    const std::pair<const char*, const char*> borderless = {"PageBorderless", "Borderless"};
    const std::string foreign = Feature("ns0000:PageBorderless", "ns0000:None");
    for (const std::string& ticket : {Ticket(""), Ticket(foreign, Declare("ns0000", "urn:other")),
                                      Ticket("", Declare("ok", "urn:other"))}) {
        // The size declares the namespace, before the other name or after it.
        for (const auto& rows : {std::array{size, borderless}, std::array{borderless, size}}) {
            Access access(ticket.c_str(), capabilities);
            for (const auto& [feature, value] : rows)
                access.SetCurrentValueOptionFeature(feature, value);
            const Access fresh(XmlOf(access).c_str(), capabilities);
            for (const auto& [feature, value] : rows) {
                EXPECT_EQ(OptionOf(access, feature), value);
                EXPECT_EQ(OptionOf(fresh, feature), value);
            }
        }
    }
}

TEST(TicketAccess, OptionsAreWrittenUnderTheirOwnNamespace) {
    const std::string capabilities =
        Offering(Named("Feature", "psk:PageMediaType", Offer("psk:Plain") + Offer("ok:Own")) +
                 Named("Feature", "psk:PageMediaSize", Size("ok:Post", 1, 2)) +
                 Named("Feature", "ok:JobIdentification", Offer("ok:on") + Offer("psk:None")) +
                 Named("Feature", "pskv11:JobPasscode", Offer("psk:On") + Offer("pskv11:Later")));
    // standing: the option that the ticket has, none if it has no such feature
    const Rows<const char*, std::string, const char*, const char*> rows{
        {"psk:PageMediaType", "", "Plain", "psk:Plain"},
        {"psk:PageMediaType", "", "Own", "ok:Own"},
        {"psk:PageMediaType", "", "unheard-of", "psk:unheard-of"},
        {"ok:JobIdentification", "", "None", "psk:None"},
        {"ok:JobIdentification", "", "unheard-of", "ok:unheard-of"},
        {"pskv11:JobPasscode", "", "On", "psk:On"},
        {"pskv11:JobPasscode", "", "Later", "pskv11:Later"},
        {"pskv11:JobPasscode", "", "Off", "pskv11:Off"},
        // A value stands only in its namespace.
        {"psk:PageMediaType", "x:Plain", "Plain", "psk:Plain"},
        {"psk:PageMediaType", "x:Own", "Own", "ok:Own"},
        {"psk:PageMediaType", "ok:Plain", "Plain", "psk:Plain"},
        {"psk:PageMediaType", "x:Else", "Else", "psk:Else"},
        {"psk:PageMediaType", "ok:Else", "Else", "ok:Else"}, // not offered: nobody says which is meant
        {"psk:PageMediaSize", "x:Post", "Post", "ok:Post"},
    };
    for (const auto& [name, standing, value, expected] : rows) {
        SCOPED_TRACE(std::string(name) + " " + value);
        const std::string feature = std::string(name).substr(std::string(name).find(':') + 1);
        OpenTicket ticket(
            Ticket(standing.empty() ? "" : Feature(name, standing), AllNames() + Declare("x", "urn:other")));
        PrintCapabilitiesXmlDocument document(CXString(capabilities.c_str()));
        Access access(ticket, document);
        access.SetCurrentValueOptionFeature(feature.c_str(), value);
        EXPECT_EQ(OutsideView(ticket, "//psf:Feature/@name"), name);
        EXPECT_EQ(OutsideView(ticket, "//psf:Option/@name"), expected);
        EXPECT_EQ(OptionOf(access, feature.c_str()), value);
    }
}

TEST(TicketAccess, WritingReplacesWhatStoodBefore) {
    const auto twice = [](const std::string& text) { return text + text; };
    OpenTicket ticket(
        Ticket(twice(Feature("psk:PageMediaType", "psk:Plain")) +
                   Feature("psk:DocumentNUp", "", ScoredProperty("psk:PagesPerSheet", Value("1"))) +
                   twice(Named("ParameterInit", "psk:JobCopiesAllDocuments", Value("1"))) +
                   twice(Named("ParameterInit", "ok:JobSimpleSecurePrint", Value("x"))),
               AllNames()));
    PrintCapabilitiesXmlDocument capabilities(CXString(Offering("").c_str()));
    Access access(ticket, capabilities);
    access.SetCurrentValueOptionFeature(L"PageMediaType", L"Label");
    access.SetCurrentValueOptionFeature(L"DocumentNUp", L"2.4");
    access.SetCurrentValueOptionFeature(L"JobNUpAllDocumentsContiguously",
                                        L"2"); // the ticket has no place for it
    access.SetCurrentValueIntegerFeature(L"JobCopiesAllDocuments", 7);
    access.SetCurrentValueStringFeature(L"JobPasscodeString", L"1 & 2");
    const std::string unchanged = XmlOf(access);
    access.SetCurrentValueStringFeature(L"JobOrvelPublicDocSettings", L"gone again");
    access.SetCurrentValueStringFeature(L"JobOrvelPublicDocSettings", L"");
    EXPECT_EQ(XmlOf(access), unchanged);
    access.SetJobOrvelPublicDocSettingsXml("<a/>");
    access.SetJobOrvelPublicDocSettingsXml("<b/>");
    access.SetCurrentValueBase64EncodedCompleteDocSettings(L"QUJD");
    access.RemoveSecurePrintFeature();

    const Access fresh = AccessTo(XmlOf(access), Offering(""));
    const Rows<const char*, const char*> texts{{"JobPasscodeString", "1 & 2"},
                                               {"JobOrvelPublicDocSettings", "<b/>"},
                                               {"JobOrvelCompleteDocSettings", "QUJD"},
                                               {"JobSimpleSecurePrint", ""}};
    for (const auto& [feature, text] : texts)
        EXPECT_EQ(TextOf(fresh, feature), text);
    EXPECT_EQ(OptionOf(fresh, "PageMediaType") + OptionOf(fresh, "DocumentNUp"), "Label2");
    EXPECT_EQ(fresh.GetCurrentValueIntegerFeature(L"JobCopiesAllDocuments"), 7);
    EXPECT_EQ(OutsideView(ticket, "concat(count(//psf:Feature), count(//psf:ParameterInit))"), "24");
}

TEST(TicketAccess, SizesAreWrittenAsTheCapabilitiesOfferThem) {
    const std::string capabilities = Offering(
        Named("Feature", "psk:PageMediaSize",
              Size("psk:ISOA4", 210000, 297000) + Size("ok:Post", 152400, 228600) +
                  Size("ok:Envelope", 152400, 228600) + Offer("psk:CustomMediaSize") + Offer("ok:NoSize")));
    // width: 0: set by name alone
    const Rows<const char*, int, int, const char*> rows{
        {"ISOA4", 0, 0, "psk:ISOA4 210000 297000"},
        {"Post", 0, 0, "ok:Post 152400 228600"},
        {"Envelope", 0, 0, "ok:Envelope 152400 228600"}, // also where another has the same size
        {"CustomMediaSize", 0, 0, "psk:JISB5  "},        // nobody knows its numbers
        {"NoSize", 5, 0, "ok:NoSize  "},
        {"unheard-of", 0, 0, "psk:unheard-of  "},
        {"whatever", 210000, 297000, "psk:ISOA4 210000 297000"},
        {"ISOA4", 100000, 200000, "psk:CustomMediaSize  "},
    };
    for (const auto& [option, width, height, expected] : rows) {
        SCOPED_TRACE(option);
        OpenTicket ticket(Ticket(Feature("psk:PageMediaSize", "psk:JISB5"), AllNames()));
        PrintCapabilitiesXmlDocument document(CXString(capabilities.c_str()));
        Access access(ticket, document);
        if (width == 0)
            access.SetCurrentValueOptionFeature(L"PageMediaSize", option);
        else
            access.SetCurrentValueMediaSizeFeature(L"PageMediaSize", option, width, height);
        EXPECT_EQ(OutsideView(ticket, "concat(//psf:Option/@name, ' ', //psf:ScoredProperty[1]/psf:Value, ' "
                                      "', //psf:ScoredProperty[2]/psf:Value)"),
                  expected);
        EXPECT_EQ(OutsideView(ticket, "count(//psf:Feature)"), "1");
    }
}

// Those that the ticket holds already, or else those that the printer gives it.
TEST(TicketAccess, ACustomSizeThatIsSetByNameHasItsNumbers) {
    const std::string width = "psk:PageMediaSizeMediaSizeWidth";
    const std::string height = "psk:PageMediaSizeMediaSizeHeight";
    const auto byDefault = [](const std::string& name, int microns) {
        return Named("ParameterDef", name, Property("psf:DefaultValue", std::to_string(microns)));
    };
    const auto reference = [](const std::string& property, const std::string& parameter) {
        return ScoredProperty(property, "<psf:ParameterRef name='" + parameter + "'/>");
    };
    // Also one that only its references tell.
    const std::string offer =
        Named("Feature", "psk:PageMediaSize",
              Offer("psk:CustomMediaSize") + Offer("ok:Roll", reference("psk:MediaSizeWidth", width) +
                                                                  reference("psk:MediaSizeHeight", height)));
    const std::string inits =
        Named("ParameterInit", width, Value("1000")) + Named("ParameterInit", height, Value("2000"));
    const std::string defaults = byDefault(width, 300000) + byDefault(height, 400000);
    const std::string broken = Named("ParameterInit", width, Value("x"));
    const Rows<std::string, std::string, std::string, std::string> rows{
        {"psk:JISB5", "", defaults, "300000 400000"},
        {"", inits, defaults, "1000 2000"},
        {"", broken, defaults, "300000 400000"},
        {"", "", byDefault(width, 300000) + byDefault(height, 0), ""},
    };
    for (const auto& [standing, inTicket, capabilities, expected] : rows) {
        for (const std::string name : {"psk:CustomMediaSize", "psk:PSCustomMediaSize", "ok:Roll"}) {
            SCOPED_TRACE(name + inTicket);
            OpenTicket ticket(Ticket(
                Feature("psk:PageMediaSize", standing.empty() ? name : standing) + inTicket, AllNames()));
            PrintCapabilitiesXmlDocument document(CXString(Offering(offer + capabilities).c_str()));
            Access access(ticket, document);
            const std::string before = XmlOf(ticket);
            access.SetCurrentValueOptionFeature(L"PageMediaSize", name.substr(name.find(':') + 1).c_str());
            if (expected.empty()) {
                EXPECT_EQ(XmlOf(ticket), before);
                continue;
            }
            EXPECT_EQ(OutsideView(ticket, "concat(//psf:Option/@name, ' ', //psf:ParameterInit[@name='" +
                                              width + "']/psf:Value, ' ', //psf:ParameterInit[@name='" +
                                              height + "']/psf:Value)"),
                      name + " " + expected);
            EXPECT_EQ(OutsideView(ticket, "count(//psf:ParameterRef)"), "2");
        }
    }
}

// One that the printer describes with other parameters, of which some may be 0.
TEST(TicketAccess, ACustomSizeHasTheNumbersThatItsOptionRefersTo) {
    std::string option;
    std::string defaults;
    const Rows<std::string, const char*> parameters{{"PSWidth", "100"}, {"PSOrientation", "0"}};
    for (const auto& [property, value] : parameters) {
        const std::string parameter = "psk:PageMediaSize" + property;
        option += ScoredProperty("psk:" + property, "<psf:ParameterRef name='" + parameter + "'/>");
        defaults += Named("ParameterDef", parameter, Property("psf:DefaultValue", value));
    }
    const std::string capabilities =
        Offering(Named("Feature", "psk:PageMediaSize", Offer("psk:PSCustomMediaSize", option)) + defaults);
    Access access = AccessTo(Ticket(Feature("psk:PageMediaSize", "psk:ISOA4"), AllNames()), capabilities);
    access.SetCurrentValueOptionFeature(L"PageMediaSize", L"PSCustomMediaSize");
    const std::string written = XmlOf(access);
    for (const auto& [property, value] : parameters)
        EXPECT_EQ(
            OutsideView(written, "//psf:ParameterInit[@name='psk:PageMediaSize" + property + "']/psf:Value"),
            value);
    access.SetCurrentValueOptionFeature(L"PageMediaSize", L"PSCustomMediaSize");
    EXPECT_EQ(XmlOf(access), written);
}

TEST(TicketAccess, WhatIsNotKnownOrNotDeclaredIsNoFailure) {
    const std::string bare = Ticket(Feature("psk:PageScaling", "psk:None"));
    Access access = AccessTo(bare, Offering(Named("Feature", "psk:PageScaling", Offer("psk:None")), ""));
    const std::string before = XmlOf(access);
    for (const char* feature : {"PageScaling", "psk:PageMediaSize", "JobPasscodeString"}) {
        EXPECT_EQ(OptionOf(access, feature), "");
        EXPECT_EQ(NamesOf(access, feature), "");
        access.SetCurrentValueOptionFeature(feature, L"x");
        access.SetCurrentValueIntegerFeature(feature, 3);
        access.SetCurrentValueStringFeature(feature, L"x");
    }
    access.SetCurrentValueMediaSizeFeature(L"PageScaling", L"x", 1, 1);
    access.SetCurrentValueOptionFeature(L"JobPasscode", L"On");
    access.SetCurrentValueOptionFeature(L"PageMediaType", L"");          // no name of an option
    access.SetCurrentValueOptionFeature(L"JobCopiesAllDocuments", L"2"); // no feature with options
    EXPECT_EQ(XmlOf(access), before);
    Access keywordless = AccessTo("<psf:PrintTicket" + Declare("psf", frameworkUri) + "/>",
                                  Offering(Named("Feature", "psk:PageMediaSize", Size("psk:A", 1, 2))));
    const std::string empty = XmlOf(keywordless);
    keywordless.SetCurrentValueOptionFeature(L"PageMediaSize", L"A");
    keywordless.SetCurrentValueMediaSizeFeature(L"PageMediaSize", L"A", 1, 2);
    keywordless.SetCurrentValueIntegerFeature(L"JobCopiesAllDocuments", 2);
    EXPECT_EQ(XmlOf(keywordless), empty);
    EXPECT_THROW(AccessTo("<a/>", Offering("")), CPComException);
    EXPECT_THROW(AccessTo(Ticket(""), "no XML"), CPComException);
}
