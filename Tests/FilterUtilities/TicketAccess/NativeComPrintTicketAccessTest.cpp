#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/Rows.h"
#include "Support/VirtualSlots.h"

#include <LowLevelFacilities/Failures/CPExceptionInvalidArgument.h>
#include <TicketAccess/NativeComPrintTicketAccess.h>
#include <TicketAccess/PrintTicketFeatureTable.h>

#include <fstream>
#include <sstream>

namespace {

using Access = NativeComPrintTicketAccess;

constexpr char v11[] = "pskv11";

std::string PrivateNames() { return Declare("ok", PrivateUri()); }
std::string AllNames() { return PrivateNames() + Declare(v11, keywordsV11Uri); }

// Capabilities with the usual declarations, those given, and content.
std::string Capabilities(const std::string& content, const std::string& declarations = AllNames()) {
    return "<psf:PrintCapabilities" + Declare("psf", frameworkUri) + Declare("psk", keywordsUri) +
           Declare("xsi", "http://www.w3.org/2001/XMLSchema-instance") +
           Declare("xsd", "http://www.w3.org/2001/XMLSchema") + declarations + " version='1'>" + content +
           "</psf:PrintCapabilities>";
}

std::string Property(const std::string& name, const std::string& value) {
    return "<psf:Property name='" + name + "'>" + Value(value) + "</psf:Property>";
}

std::string Named(const std::string& element, const std::string& name, const std::string& content) {
    return "<psf:" + element + " name='" + name + "'>" + content + "</psf:" + element + ">";
}

std::string Offer(const std::string& name, const std::string& content = {},
                  const std::string& constraint = {}) {
    return "<psf:Option" + (name.empty() ? "" : " name='" + name + "'") +
           (constraint.empty() ? "" : " constrained='" + constraint + "'") + ">" + content + "</psf:Option>";
}

std::string Size(const std::string& name, int width, int height) {
    return Offer(name, ScoredProperty("psk:MediaSizeWidth", Value(std::to_string(width))) +
                           ScoredProperty("psk:MediaSizeHeight", Value(std::to_string(height))));
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

TEST(TicketAccess, SupportIsReadFromTheCapabilities) {
    const std::string capabilities = Capabilities(
        Named("ParameterDef", "ok:JobSimpleSecurePrint", Property("psf:MinLength", "4")) +
        Named("Feature", "psk:PageMediaColor", "") + Named("Feature", "psk:PageBorderless", "") +
        Named("Feature", "ok:JobIdentification", "") + Named("ParameterDef", "psk:PageOrientation", "") +
        Named("Feature", "psk:PageMediaSize", Named("Feature", "psk:JobHolePunch", "")) +
        Named("ParameterDef", "psk:JobCopiesAllDocuments", Property("psf:MaxValue", "1")) +
        Named("ParameterDef", "ok:JobOrvelPublicDocSettings", "") + Named("Feature", "psk:PageScaling", "") +
        Named("ParameterDef", "pskv11:JobPasscodeString", ""));
    const Access access = AccessTo(Ticket("", AllNames()), capabilities);
    const Rows<const char*, bool> rows{
        {"JobSimpleSecurePrint", true},
        {"PageMediaColor", true},
        {"PageBorderless", false}, // private, here public
        {"JobIdentification", true},
        {"PageOrientation", false}, // a feature, here a parameter
        {"JobHolePunch", true},     // nested
        {"JobCopiesAllDocuments", true},
        {"JobOrvelPublicDocSettings", true},
        {"JobOrvelCompleteDocSettings", false},
        {"PageScaling", false}, // not one that is known
        {"JobPasscodeString", true},
        {"", false},
    };
    for (int time = 0; time < 2; ++time) // the second time from memory
        for (const auto& [feature, isSupported] : rows)
            EXPECT_EQ(access.IsSupportedPrintTicketFeature(feature), isSupported) << feature;

    for (const char* parameter :
         {"<psf:ParameterDef name='ok:JobSimpleSecurePrint'/>", "",
          "<psf:ParameterDef name='psk:JobCopiesAllDocuments'>"
          "<psf:Property name='psf:MaxValue'><psf:Value>0</psf:Value></psf:Property></psf:ParameterDef>"}) {
        const Access without = AccessTo(Ticket("", AllNames()), Capabilities(parameter));
        EXPECT_FALSE(without.IsSupportedPrintTicketFeature(L"JobSimpleSecurePrint")) << parameter;
        EXPECT_FALSE(without.IsSupportedPrintTicketFeature(L"JobCopiesAllDocuments")) << parameter;
    }
}

TEST(TicketAccess, ThePasscodeNeedsTicketCapabilitiesAndAnOptionThatMayBeChosen) {
    const std::string passcode = Feature("pskv11:JobPasscode", "psk:On");
    const auto offered = [](const char* constraint) {
        return Named("Feature", "pskv11:JobPasscode", Offer("psk:Off") + Offer("psk:On", "", constraint));
    };
    const Rows<std::string, std::string, bool, const char*> rows{
        {Ticket(passcode, AllNames()), Capabilities(offered("psk:None")), true, "On"},
        {Ticket(passcode, AllNames()), Capabilities(offered("psk:AdminSettings")), true, "On"},
        {Ticket(passcode, AllNames()), Capabilities(offered("psk:devicesettings")), false, "On"},
        {Ticket("", AllNames()), Capabilities(offered("psk:None")), false, ""},
        {Ticket(passcode, AllNames()), Capabilities(""), false, "On"},
        {Ticket(passcode, AllNames()), Capabilities("", PrivateNames()), false, "Off"},
        {Ticket("", PrivateNames()), Capabilities(offered("psk:None")), false, "Off"},
        // Each document has its own prefix.
        {Ticket(passcode, AllNames()),
         Capabilities(Named("Feature", "n:JobPasscode", Offer("psk:On")),
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
    Access access = AccessTo(Ticket("", AllNames()), Capabilities(offered("")));
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
    const Access access = AccessTo(Ticket(""), Capabilities(Named("Feature", "psk:PageInputBin", offers)));
    EXPECT_EQ(NamesOf(access, "PageInputBin"), expected);
    EXPECT_EQ(NamesOf(access, "JobInputBin"), "");
    EXPECT_EQ(NamesOf(access, "Nested"), "");
    CXString displayName;
    access.GetFeatureDisplayName(L"PageInputBin", displayName);
    EXPECT_EQ(displayName, L"Trays");

    // A feature has no display name by that of its options; and the prefix is that of the capabilities.
    std::string other = Capabilities(
        Named("Feature", "psk:PageInputBin", Offer("psk:Manual", Property("psk:DisplayName", "Hand"))));
    for (std::size_t at = 0; (at = other.find("psk", at)) != std::string::npos; ++at)
        other.replace(at, 3, "k");
    const Access renamed = AccessTo(Ticket(Feature("psk:PageInputBin", "psk:Manual")), other);
    EXPECT_TRUE(renamed.IsSupportedPrintTicketFeature(L"PageInputBin"));
    EXPECT_EQ(NamesOf(renamed, "PageInputBin"), "Manual|Hand|0|-|0\n");
    EXPECT_EQ(OptionOf(renamed, "PageInputBin"), "Manual");
    renamed.GetFeatureDisplayName(L"PageInputBin", displayName);
    EXPECT_EQ(displayName, L"");
}

TEST(TicketAccess, MediaSizesComeWithTheirSizesInMicrons) {
    const std::string capabilities = Capabilities(
        Named("Feature", "psk:PageMediaSize",
              Size("psk:ISOA4", 210000, 297000) +
                  Offer("ok:half", ScoredProperty("psk:MediaSizeWidth", Value("1000")) +
                                       Property("psk:DisplayName", "Half")) +
                  Offer("ok:words", ScoredProperty("psk:MediaSizeWidth", Value("wide")) +
                                        ScoredProperty("psk:MediaSizeHeight", "")) +
                  Offer("psk:CustomMediaSize",
                        ScoredProperty("psk:MediaSizeWidth",
                                       "<psf:ParameterRef name='psk:PageMediaSizeMediaSizeWidth'/>"))));
    const Access access = AccessTo(Ticket(""), capabilities);
    std::vector<Access::MediaSizeCapability> sizes(1);
    access.GetCapabilitiesMediaSizeFeature(L"PageMediaSize", sizes);
    std::ostringstream text;
    for (const auto& size : sizes) {
        EXPECT_EQ(std::get<5>(size).first.GetUnits(), Dimension::Micron);
        text << std::get<0>(size) << "|" << std::get<1>(size) << "|"
             << std::get<5>(size).first.GetValue().GetIntValue(0) << "|"
             << std::get<5>(size).second.GetValue().GetIntValue(0) << "\n";
    }
    EXPECT_EQ(text.str(), "ISOA4||210000|297000\nhalf|Half|1000|0\nwords||0|0\nCustomMediaSize||0|0\n");
}

TEST(TicketAccess, RangesComeFromTheDefinitions) {
    const std::string lengths = Property("psf:MinLength", "4") + Property("psf:MaxLength", "8");
    const Access access = AccessTo(
        Ticket("", AllNames()),
        Capabilities(Named("ParameterDef", "psk:JobCopiesAllDocuments", Property("psf:MaxValue", "999")) +
                     Named("ParameterDef", "ok:JobSimpleSecurePrint", lengths) +
                     Named("ParameterDef", "pskv11:JobPasscodeString", Property("psf:MinLength", "6"))));
    const Rows<const char*, std::pair<int, int>> rows{{"JobCopiesAllDocuments", {1, 999}},
                                                      {"JobSimpleSecurePrint", {4, 8}},
                                                      {"JobPasscodeString", {-1, -2}}, // not complete
                                                      {"PageMediaSize", {-1, -2}},
                                                      {"PageScaling", {-1, -2}}};
    for (const auto& [feature, expected] : rows) {
        std::pair<int, int> range(-1, -2);
        access.GetRangeCapability(feature, range);
        EXPECT_EQ(range, expected) << feature;
    }
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
                   Named("ParameterInit", "ok:JobSimpleSecurePrint", Value("cABhAHMAcwA=")) +
                   Named("ParameterInit", "ok:JobOrvelCompleteDocSettings", Value("QUJD")) +
                   Named("ParameterInit", "ok:JobOrvelPublicDocSettings", Value("&lt;a>\xC3\xA9&lt;/a>")),
               AllNames()),
        Capabilities(""));
    EXPECT_EQ(OptionOf(access, "PageMediaType"), "cardstock");
    EXPECT_EQ(OptionOf(access, "DocumentNUp"), "4");
    EXPECT_EQ(OptionOf(access, "PageResolution"), "High");
    EXPECT_EQ(OptionOf(access, "PageOutputColor"), "");
    EXPECT_EQ(OptionOf(access, "PageMediaColor"), "");
    EXPECT_EQ(OptionOf(access, "PageScaling"), "");
    EXPECT_EQ(access.GetCurrentValueIntegerFeature(L"JobCopiesAllDocuments"), 12);
    EXPECT_EQ(access.GetCurrentValueIntegerFeature(L"JobOrvelCompleteDocSettings"), 0);
    EXPECT_EQ(TextOf(access, "JobPasscodeString"), "1234");
    EXPECT_EQ(TextOf(access, "PageMediaType"), "");
    CXString text;
    access.GetCurrentValueJobSimpleSecurePrintPassword(text);
    EXPECT_EQ(text, L"pass");
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
                     Capabilities(""));
        CXString text(L"stale");
        access.GetCurrentValueJobSimpleSecurePrintPassword(text);
        return text;
    };
    EXPECT_EQ(password(""), L"");
    EXPECT_EQ(password(" "), L"");
    EXPECT_EQ(password("cAA="), L"p");
    for (const char* damaged : {"cA*=", "cABhAHMAcwA=x", "c", "cA=="})
        EXPECT_THROW(password(damaged), CPExceptionInvalidArgument) << damaged;
}

TEST(TicketAccess, TheSizeOfTheTicketIsItsOwnOrThatOfItsParameters) {
    const std::string byParameters =
        Feature("psk:PageMediaSize", "psk:CustomMediaSize",
                ScoredProperty("psk:MediaSizeWidth",
                               "<psf:ParameterRef name='psk:PageMediaSizeMediaSizeWidth'/>") +
                    ScoredProperty("psk:MediaSizeHeight",
                                   "<psf:ParameterRef name='psk:PageMediaSizeMediaSizeHeight'/>")) +
        Named("ParameterInit", "psk:PageMediaSizeMediaSizeWidth", Value("111000")) +
        Named("ParameterInit", "psk:PageMediaSizeMediaSizeHeight", Value("222000"));
    const Rows<std::string, std::string, int, int, bool> rows{
        {"<psf:Feature name='psk:PageMediaSize'>" + Size("psk:ISOA4", 210000, 297000) + "</psf:Feature>",
         "ISOA4", 210000, 297000, false},
        {byParameters, "CustomMediaSize", 111000, 222000, false},
        {"", "", 0, 0, false},
        {Feature("psk:PageMediaSize", "unqualified"), "", 0, 0, false},
        {Feature("psk:PageMediaSize", "psk:ISOA4"), "ISOA4", 0, 0, true}, // the capabilities are not asked
        {Feature("psk:PageMediaSize", "psk:ISOA4", ScoredProperty("psk:MediaSizeWidth", Value("1"))), "ISOA4",
         0, 0, true},
    };
    for (const auto& [ticket, wantedOption, wantedWidth, wantedHeight, isThrown] : rows) {
        SCOPED_TRACE(ticket);
        const Access access =
            AccessTo(Ticket(ticket),
                     Capabilities(Named("Feature", "psk:PageMediaSize", Size("psk:ISOA4", 210000, 297000))));
        CXString option = L"stale";
        Dimension width(7, Dimension::Inch);
        Dimension height = width;
        const auto read = [&] {
            access.GetCurrentValueMediaSizeFeature(L"PageMediaSize", option, width, height);
        };
        if (isThrown)
            ExpectRaised(read, E_ELEMENT_NOT_FOUND,
                         "NativeComPrintTicketAccess::GetCurrentValueMediaSizeFeature");
        else
            read();
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
    const CXString capabilities = Capabilities(Named("Feature", "psk:PageMediaSize", Size("ok:Own", 1, 2)) +
                                               Named("Feature", "psk:PageMediaType", Offer("ok:special")) +
                                               Named("Feature", "ok:PageBorderless", Offer("psk:Borderless")))
                                      .c_str();
    // The size declares the namespace, before the other names or after them.
    const std::pair<const char*, const char*> rows[] = {{"PageMediaSize", "Own"},
                                                        {"PageBorderless", "Borderless"},
                                                        {"PageMediaType", "special"},
                                                        {"PageMediaSize", "Own"}};
    const std::string foreign = Feature("ns0000:PageBorderless", "ns0000:None");
    const std::string tickets[] = {Ticket(""), Ticket(foreign, Declare("ns0000", "urn:other")),
                                   Ticket("", Declare("ok", "urn:other"))};
    for (const std::size_t index : {0U, 1U, 2U, 3U, 4U, 5U}) {
        const std::size_t first = index % 2;
        Access access(tickets[index / 2].c_str(), capabilities);
        for (std::size_t i = first; i < first + 3; ++i) {
            access.SetCurrentValueOptionFeature(rows[i].first, rows[i].second);
            access.SetCurrentValueStringFeature(L"JobSimpleSecurePrint", L"x");
        }
        const Access fresh(XmlOf(access).c_str(), capabilities);
        for (const Access* const each : {const_cast<const Access*>(&access), &fresh}) {
            for (const auto& [feature, value] : rows)
                EXPECT_EQ(OptionOf(*each, feature), value);
            EXPECT_EQ(TextOf(*each, "JobSimpleSecurePrint"), "x");
        }
    }
}

TEST(TicketAccess, OptionsAreWrittenUnderTheirOwnNamespace) {
    const std::string capabilities =
        Capabilities(Named("Feature", "psk:PageMediaType", Offer("psk:Plain") + Offer("ok:special")) +
                     Named("Feature", "ok:JobIdentification", Offer("ok:on") + Offer("psk:None")) +
                     Named("Feature", "pskv11:JobPasscode", Offer("psk:On") + Offer("pskv11:Later")));
    const Rows<const char*, const char*, const char*> rows{
        {"PageMediaType", "Plain", "psk:PageMediaType psk:Plain"},
        {"PageMediaType", "special", "psk:PageMediaType ok:special"},
        {"PageMediaType", "unheard-of", "psk:PageMediaType psk:unheard-of"},
        {"JobIdentification", "None", "ok:JobIdentification psk:None"},
        {"JobIdentification", "unheard-of", "ok:JobIdentification ok:unheard-of"},
        {"JobPasscode", "On", "pskv11:JobPasscode psk:On"},
        {"JobPasscode", "Later", "pskv11:JobPasscode pskv11:Later"},
        {"JobPasscode", "Off", "pskv11:JobPasscode pskv11:Off"},
        {"JobDuplexAllDocumentsContiguously", "OneSided",
         "psk:JobDuplexAllDocumentsContiguously psk:OneSided"},
    };
    for (const auto& [feature, value, expected] : rows) {
        OpenTicket ticket(Ticket("", AllNames()));
        PrintCapabilitiesXmlDocument document(CXString(capabilities.c_str()));
        Access access(ticket, document);
        access.SetCurrentValueOptionFeature(feature, value);
        EXPECT_EQ(OutsideView(ticket, "concat(//psf:Feature/@name, ' ', //psf:Option/@name)"), expected);
        EXPECT_EQ(OptionOf(access, feature), value);
    }
}

TEST(TicketAccess, WritingReplacesWhatStoodBefore) {
    OpenTicket ticket(
        Ticket(Feature("psk:PageMediaType", "psk:Plain") + Feature("psk:PageMediaType", "psk:Bond") +
                   Feature("psk:DocumentNUp", "", ScoredProperty("psk:PagesPerSheet", Value("1"))) +
                   Named("ParameterInit", "psk:JobCopiesAllDocuments", Value("1")) +
                   Named("ParameterInit", "psk:JobCopiesAllDocuments", Value("2")) +
                   Named("ParameterInit", "ok:JobSimpleSecurePrint", Value("x")) +
                   Named("ParameterInit", "ok:JobSimpleSecurePrint", Value("y")),
               AllNames()));
    PrintCapabilitiesXmlDocument capabilities(CXString(Capabilities("").c_str()));
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
    access.CommitPrintTicketChanges();

    const Access fresh = AccessTo(XmlOf(access), Capabilities(""));
    EXPECT_EQ(OptionOf(fresh, "PageMediaType"), "Label");
    EXPECT_EQ(OptionOf(fresh, "DocumentNUp"), "2");
    EXPECT_EQ(fresh.GetCurrentValueIntegerFeature(L"JobCopiesAllDocuments"), 7);
    EXPECT_EQ(TextOf(fresh, "JobPasscodeString"), "1 & 2");
    EXPECT_EQ(TextOf(fresh, "JobOrvelPublicDocSettings"), "<b/>");
    EXPECT_EQ(TextOf(fresh, "JobOrvelCompleteDocSettings"), "QUJD");
    EXPECT_EQ(TextOf(fresh, "JobSimpleSecurePrint"), "");
    EXPECT_EQ(OutsideView(ticket, "concat(count(//psf:Feature), count(//psf:ParameterInit))"), "24");
}

TEST(TicketAccess, SizesAreWrittenAsTheCapabilitiesOfferThem) {
    const std::string capabilities = Capabilities(
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
        return Named("ParameterDef", name,
                     Named("Property", "psf:DefaultValue", Value(std::to_string(microns))));
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
    const Rows<std::string, std::string, const char*> rows{
        {"", defaults, "300000 400000"},    {inits, defaults, "1000 2000"},
        {inits, "", "1000 2000"},           {broken, defaults, "300000 400000"},
        {"", byDefault(width, 300000), ""}, {"", byDefault(width, 300000) + byDefault(height, 0), ""},
    };
    for (const auto& row : rows) {
        const auto& [givenTicket, capabilities, expected] = row;
        for (const std::string name : {"psk:CustomMediaSize", "psk:PSCustomMediaSize", "ok:Roll"}) {
            const bool isOther =
                &row - rows.data() < 2 && name == "psk:CustomMediaSize"; // another size stands
            OpenTicket ticket(
                Ticket(Feature("psk:PageMediaSize", isOther ? "psk:JISB5" : name) + givenTicket, AllNames()));
            PrintCapabilitiesXmlDocument document(CXString(Capabilities(offer + capabilities).c_str()));
            Access access(ticket, document);
            const std::string before = XmlOf(ticket);
            access.SetCurrentValueMediaSizeFeature(L"PageMediaSize", name.substr(name.find(':') + 1).c_str(),
                                                   0, 0);
            if (*expected == '\0') {
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
    for (const auto& [property, value] :
         {std::pair("PSWidth", "100"), std::pair("PSHeight", "200"), std::pair("PSOrientation", "0")}) {
        const std::string parameter = std::string("psk:PageMediaSize") + property;
        option +=
            ScoredProperty(std::string("psk:") + property, "<psf:ParameterRef name='" + parameter + "'/>");
        defaults += Named("ParameterDef", parameter, Named("Property", "psf:DefaultValue", Value(value)));
    }
    OpenTicket ticket(Ticket(Feature("psk:PageMediaSize", "psk:ISOA4"), AllNames()));
    PrintCapabilitiesXmlDocument document(CXString(
        Capabilities(Named("Feature", "psk:PageMediaSize", Offer("psk:PSCustomMediaSize", option)) + defaults)
            .c_str()));
    Access access(ticket, document);
    access.SetCurrentValueOptionFeature(L"PageMediaSize", L"PSCustomMediaSize");
    const std::string written = XmlOf(access);
    for (const auto& [property, value] : {std::pair(L"PSWidth", 100), std::pair(L"PSOrientation", 0)}) {
        int number = -1;
        EXPECT_EQ(ticket.GetScoredPropertyValue(L"PageMediaSize", true, property, &number), S_OK);
        EXPECT_EQ(number, value);
    }
    access.SetCurrentValueOptionFeature(L"PageMediaSize", L"PSCustomMediaSize");
    EXPECT_EQ(XmlOf(access), written);
}

TEST(TicketAccess, AValueStandsOnlyInItsNamespace) {
    const std::string capabilities =
        Capabilities(Named("Feature", "psk:PageMediaType", Offer("psk:Plain") + Offer("ok:Own")) +
                     Named("Feature", "psk:PageMediaSize", Size("ok:Post", 1, 2)));
    const std::string foreign = Declare("x", "urn:other");
    const Rows<const char*, const char*, const char*, const char*> rows{
        {"PageMediaType", "x:Plain", "Plain", "psk:Plain"},
        {"PageMediaType", "x:Own", "Own", "ok:Own"},
        {"PageMediaType", "ok:Plain", "Plain", "psk:Plain"},
        {"PageMediaType", "x:Else", "Else", "psk:Else"},
        {"PageMediaType", "ok:Else", "Else", "ok:Else"}, // not offered: nobody says which is meant
        {"PageMediaSize", "x:Post", "Post", "ok:Post"},
        {"PageResolution", "x:A", "A", "psk:A"},
        {"PageResolution", "ok:A", "A", "ok:A"},
    };
    for (const auto& [feature, standing, value, expected] : rows) {
        SCOPED_TRACE(standing);
        OpenTicket ticket(Ticket(Feature(std::string("psk:") + feature, standing), AllNames() + foreign));
        PrintCapabilitiesXmlDocument document(CXString(capabilities.c_str()));
        Access access(ticket, document);
        access.SetCurrentValueOptionFeature(feature, value);
        EXPECT_EQ(OutsideView(ticket, "//psf:Option/@name"), expected);
    }
}

TEST(TicketAccess, WhatIsNotKnownOrNotDeclaredIsNoFailure) {
    const std::string bare = Ticket(Feature("psk:PageScaling", "psk:None"));
    Access access = AccessTo(bare, Capabilities(Named("Feature", "psk:PageScaling", Offer("psk:None")), ""));
    const std::string before = XmlOf(access);
    for (const char* feature : {"PageScaling", "", "psk:PageMediaSize", "JobPasscodeString"}) {
        CXString text = L"stale";
        access.GetFeatureDisplayName(feature, text);
        EXPECT_EQ(text, L"");
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
                                  Capabilities(Named("Feature", "psk:PageMediaSize", Size("psk:A", 1, 2))));
    const std::string empty = XmlOf(keywordless);
    keywordless.SetCurrentValueOptionFeature(L"PageMediaSize", L"A");
    keywordless.SetCurrentValueMediaSizeFeature(L"PageMediaSize", L"A", 1, 2);
    keywordless.SetCurrentValueIntegerFeature(L"JobCopiesAllDocuments", 2);
    EXPECT_EQ(XmlOf(keywordless), empty);
    EXPECT_THROW(AccessTo("<a/>", Capabilities("")), CPComException);
    EXPECT_THROW(AccessTo(Ticket(""), "no XML"), CPComException);
}
