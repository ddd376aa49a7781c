#include "Platform/PrintTicket/TicketFixture.h"
#include "Support/Rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace OvPlatform;
using namespace TicketFixture;
using testing::HasSubstr;
using testing::Not;

namespace {

PrintTicketMerge::Result Merge(const std::string& base, const std::string& delta, EPrintTicketScope scope,
                               MergeReport* report = nullptr) {
    static const PrintTicketMerge merge(Queue());
    const std::string_view view = delta;
    PrintTicketMerge::Result result = merge.Merge(base, delta.empty() ? nullptr : &view, scope, report);
    // Whatever a test is about, what comes out is what goes in again.
    const PrintTicketMerge::Result again = merge.Merge(result.ticket, nullptr, scope);
    EXPECT_EQ(again.ticket, result.ticket);
    EXPECT_FALSE(again.conflictResolved);
    return result;
}

// Settings of a ticket with nothing in it.
constexpr const char* pageDefaults =
    "PageOrientation=Portrait PageMediaSize=ISOA4 PageResolution=t:R600 PageMediaType=Plain";
constexpr const char* documentDefaults =
    "DocumentCollate=Uncollated DocumentNUp=- PresentationDirection=RightBottom";
constexpr const char* jobDefaults = "JobDuplexAllDocumentsContiguously=OneSided t:JobFinish=t:None";

TEST(TicketMerge, FillsUpWithTheDefaultsOfItsScope) {
    const std::string page = pageDefaults, document = documentDefaults, job = jobDefaults;
    EXPECT_EQ(Effective(Merge(Ticket(""), "", kPTPageScope).ticket), page);
    EXPECT_EQ(Effective(Merge(Ticket(""), "", kPTDocumentScope).ticket), page + " " + document);
    EXPECT_EQ(Effective(Merge(Ticket(""), "", kPTJobScope).ticket),
              "JobCopiesAllDocuments=1 " + page + " " + document + " " + job);
}

struct Case {
    const char* what;
    EPrintTicketScope scope;
    std::string base;     // what is in it
    std::string expected; // settings with their values
    bool conflict = false;
    std::string delta = {};
};

void ExpectAll(const std::vector<Case>& cases) {
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        const auto result = Merge(Ticket(one.base), one.delta.empty() ? "" : Ticket(one.delta), one.scope);
        std::istringstream expected(one.expected);
        for (std::string setting; expected >> setting;) {
            const std::string name = setting.substr(0, setting.find('='));
            EXPECT_EQ(name + "=" + EffectiveOf(result.ticket, name), setting);
        }
        EXPECT_EQ(result.conflictResolved, one.conflict);
    }
}

TEST(TicketMerge, LaysTheDeltaOverTheBase) {
    ExpectAll({
        {"the delta's feature wins", kPTPageScope,
         Feature("PageOrientation", "Portrait") + Feature("PageMediaSize", "ISOA5"),
         "PageOrientation=Landscape PageMediaSize=ISOA5", false, Feature("PageOrientation", "Landscape")},
        {"a feature is replaced whole, nested ones included", kPTDocumentScope,
         Feature("DocumentNUp", "", Scored("PagesPerSheet", 4),
                 Feature("PresentationDirection", "BottomRight")),
         "PresentationDirection=RightBottom", false, Feature("DocumentNUp", "", Scored("PagesPerSheet", 4))},
        {"what lies above the scope is ignored and goes, private names too", kPTPageScope,
         Parameter("JobCopiesAllDocuments", "2") + Parameter("t:JobNote", "n", "xsd:string") +
             Feature("DocumentCollate", "Collated"),
         "JobCopiesAllDocuments=(none) t:JobNote=(none) DocumentCollate=(none) "
         "JobDuplexAllDocumentsContiguously=(none) PageOrientation=Landscape",
         false,
         Feature("JobDuplexAllDocumentsContiguously", "TwoSidedLongEdge") +
             Feature("PageOrientation", "Landscape")},
        {"a broken setting above the scope is no conflict", kPTDocumentScope, "",
         "JobCopiesAllDocuments=(none)", false, Parameter("JobCopiesAllDocuments", "many")},
        {"of repeated settings the first counts", kPTJobScope,
         Feature("PageOrientation", "Landscape") + Feature("PageOrientation", "Portrait") +
             Parameter("JobCopiesAllDocuments", "4") + Parameter("JobCopiesAllDocuments", "5"),
         "PageOrientation=Landscape JobCopiesAllDocuments=4"},
    });
}

TEST(TicketMerge, ChoosesOptionsByNameThenByScore) {
    const auto size = [](int width, int height) {
        return Scored("MediaSizeWidth", width) + Scored("MediaSizeHeight", height);
    };
    ExpectAll({
        {"the name counts, whatever else the option says", kPTPageScope,
         Feature("PageMediaSize", "ISOA5", size(1, 2)), "PageMediaSize=ISOA5"},
        {"a nameless option by its properties", kPTPageScope,
         Feature("PageMediaSize", "", size(215900, 279400)), "PageMediaSize=NorthAmericaLetter"},
        {"a name of another printer by its properties", kPTPageScope,
         Feature("PageResolution", "o:High", Scored("ResolutionX", 300) + Scored("ResolutionY", 300)),
         "PageResolution=t:R300"},
        {"more matches before fewer", kPTPageScope,
         Feature("PageResolution", "", Scored("ResolutionX", 590) + Scored("ResolutionY", 600)),
         "PageResolution=t:R600", true},
        {"fixed properties before parameters", kPTPageScope,
         Feature("PageMediaSize", "", size(148000, 210000)),
         "PageMediaSize=ISOA5 PageMediaSizeMediaSizeWidth=(none)"},
        {"fixed values become parameters", kPTPageScope, Feature("PageMediaSize", "", size(100000, 200000)),
         "PageMediaSize=CustomMediaSize PageMediaSizeMediaSizeWidth=100000 "
         "PageMediaSizeMediaSizeHeight=200000"},
        {"nothing in common gives the queue's default", kPTDocumentScope,
         Feature("PageResolution", "", Scored("ResolutionX", 1) + Scored("ResolutionY", 2)) +
             Feature("DocumentCollate", "t:Never"),
         "PageResolution=t:R600 DocumentCollate=Uncollated", true},
        {"only one option where one may be picked", kPTPageScope,
         Feature("PageOrientation", "Landscape", "", "<psf:Option name=\"psk:Portrait\"/>"),
         "PageOrientation=Landscape", true},
        {"several where many may be picked, in the printer's order", kPTJobScope,
         Feature("t:JobFinish", "t:Staple", "",
                 "<psf:Option name=\"t:Punch\"/><psf:Option name=\"t:Staple\"/>"),
         "t:JobFinish=t:Punch+t:Staple"},
        {"nested features", kPTDocumentScope,
         Feature("DocumentNUp", "", Scored("PagesPerSheet", 4),
                 Feature("PresentationDirection", "BottomRight")),
         "PresentationDirection=BottomRight"},
        {"the identity option stands alone", kPTJobScope,
         Feature("t:JobFinish", "t:Staple", "", "<psf:Option name=\"t:None\"/>"), "t:JobFinish=t:None", true},
    });
}

TEST(TicketMerge, HoldsParametersToTheirDefinitions) {
    const std::string custom = Feature("PageMediaSize", "CustomMediaSize");
    ExpectAll({
        {"good", kPTJobScope, Parameter("JobCopiesAllDocuments", "99"), "JobCopiesAllDocuments=99"},
        {"the text counts, not its type", kPTJobScope,
         Parameter("JobCopiesAllDocuments", " 7 ", "xsd:string"), "JobCopiesAllDocuments=7"},
        {"too large", kPTJobScope, Parameter("JobCopiesAllDocuments", "100"), "JobCopiesAllDocuments=1",
         true},
        {"beyond any integer", kPTJobScope, Parameter("JobCopiesAllDocuments", "99999999999999999999"),
         "JobCopiesAllDocuments=1", true},
        {"too small", kPTJobScope, Parameter("JobCopiesAllDocuments", "-1"), "JobCopiesAllDocuments=1", true},
        {"no number", kPTJobScope, Parameter("JobCopiesAllDocuments", "0x2"), "JobCopiesAllDocuments=1",
         true},
        {"length in characters, not in bytes", kPTJobScope,
         Parameter("t:JobNote", "\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F\xE2\x82\xAC", "xsd:string"),
         "t:JobNote=\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F\xE2\x82\xAC"},
        {"too long", kPTJobScope, Parameter("t:JobNote", "123456", "xsd:string"), "t:JobNote=", true},
        {"steps", kPTPageScope, custom + Parameter("PageMediaSizeMediaSizeWidth", "100005"),
         "PageMediaSizeMediaSizeWidth=210000", true},
        {"conditional, added with its option", kPTPageScope, custom,
         "PageMediaSizeMediaSizeWidth=210000 PageMediaSizeMediaSizeHeight=297000"},
        {"conditional, gone with its option", kPTPageScope,
         custom + Parameter("PageMediaSizeMediaSizeWidth", "100000") +
             Parameter("PageMediaSizeMediaSizeHeight", "200000"),
         "PageMediaSizeMediaSizeWidth=(none) PageMediaSizeMediaSizeHeight=(none)", false,
         Feature("PageMediaSize", "ISOA4")},
        {"a name where a text is wanted", kPTJobScope, Parameter("t:JobNote", "psk:None", "xsd:QName"),
         "t:JobNote=", true},
        {"a name that the printer does not know", kPTJobScope, Parameter("t:JobBin", "o:Upper", "xsd:QName"),
         "t:JobBin=t:Lower", true},
        {"not defined", kPTPageScope, Parameter("PageNonsense", "1"), "PageNonsense=(none)", true},
    });
}

TEST(TicketMerge, LetsExcludedCombinationsGiveWay) {
    const std::string twoSided = Feature("JobDuplexAllDocumentsContiguously", "TwoSidedLongEdge");
    const std::string transparency = Feature("PageMediaType", "Transparency");
    ExpectAll({
        {"in one ticket the choice named last gives way", kPTJobScope, twoSided + transparency,
         "JobDuplexAllDocumentsContiguously=OneSided PageMediaType=Transparency", true},
        {"the base gives way to the delta", kPTJobScope, transparency,
         "JobDuplexAllDocumentsContiguously=TwoSidedLongEdge PageMediaType=Plain", true, twoSided},
        {"the base gives way where it is named last, too", kPTJobScope, Feature("PageMediaSize", "ISOA5"),
         "t:JobFinish=t:Staple PageMediaSize=ISOA4", true, Feature("t:JobFinish", "t:Staple")},
        {"out of scope there is nothing to exclude", kPTPageScope, twoSided + transparency,
         "PageMediaType=Transparency"},
    });
}

TEST(TicketMerge, ComparesNamesByNamespaceAndWritesThePrintersPrefixes) {
    // The prefixes of base and delta clash with each other and with the printer's.
    const std::string base =
        R"(<PrintTicket xmlns="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework" version="1.0")"
        R"( xmlns:t="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords" xmlns:psk="urn:test:printer">)"
        R"(<Feature name="t:PageOrientation"><Option name="t:Landscape"/></Feature>)"
        R"(<Feature name="psk:JobFinish"><Option name="psk:Staple"/></Feature></PrintTicket>)";
    const std::string delta =
        R"(<a:PrintTicket xmlns:a="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework" version="1" )"
        R"(xmlns:b="urn:test:printer" xmlns:c="urn:somebody:else" xmlns:i="http://www.w3.org/2001/XMLSchema-instance" )"
        R"(xmlns:s="http://www.w3.org/2001/XMLSchema">)"
        R"(<a:Property name="b:JobTag"><a:Value i:type="s:QName">b:Blue</a:Value></a:Property>)"
        R"(<a:Property name="c:JobTag"><a:Value i:type="s:string">gone</a:Value></a:Property>)"
        R"(<a:Feature name="b:JobFinish" xmlns:d="urn:test:printer"><a:Option name="d:Punch"/></a:Feature>)"
        R"(<c:Feature name="b:JobFinish"/></a:PrintTicket>)";
    const auto result = Merge(base, delta, kPTJobScope);
    EXPECT_EQ(EffectiveOf(result.ticket, "PageOrientation"), "Landscape");
    EXPECT_EQ(EffectiveOf(result.ticket, "t:JobFinish"), "t:Punch");
    EXPECT_THAT(result.ticket,
                HasSubstr(R"(name="t:JobTag"><psf:Value xsi:type="xsd:QName">t:Blue</psf:Value>)"));
    EXPECT_THAT(result.ticket, Not(HasSubstr("somebody")));
    EXPECT_FALSE(result.conflictResolved);

    // The order of the settings and the way they are written make no difference.
    const std::string one = Feature("PageOrientation", "Landscape"), other = Feature("PageMediaType", "Bond");
    EXPECT_EQ(Merge(Ticket("\n  " + one + "<!-- note -->\r\n" + other), "", kPTJobScope).ticket,
              Merge(Ticket(other), Ticket(one), kPTJobScope).ticket);
}

TEST(TicketMerge, KeepsTextAndPropertiesThatThePrinterKnows) {
    const std::string property = Property("t:Hint", "string", "a &amp; b");
    const auto result = Merge(Ticket(Parameter("t:JobNote", "<![CDATA[<&]]>&#13;]", "xsd:string") +
                                     Feature("PageOrientation", "Landscape", property) +
                                     Feature("PageMediaType", "Label", property)),
                              "", kPTJobScope);
    EXPECT_THAT(result.ticket, HasSubstr("&lt;&amp;&#13;]</psf:Value>"));
    EXPECT_THAT(result.ticket,
                HasSubstr("<psf:Option name=\"psk:Landscape\">" + property));  // a perfect match
    EXPECT_THAT(result.ticket, HasSubstr("<psf:Option name=\"psk:Plain\"/>")); // none

    // A property goes whole if there is anything in it that the printer does not know.
    const std::string tree = R"(<psf:Property name="t:Tree"><psf:Property name="o:Leaf"/>)"
                             R"(<psf:Property name="t:Leaf"/></psf:Property>)";
    EXPECT_THAT(Merge(Ticket(Feature("PageOrientation", "Landscape", tree)), "", kPTPageScope).ticket,
                Not(HasSubstr("Leaf")));

    // An option that is not the printer's in every detail loses them: they may not hold for the printer's.
    const auto changed = Merge(
        Ticket(Feature("PageMediaSize", "ISOA5", Scored("MediaSizeWidth", 1) + property)), "", kPTPageScope);
    EXPECT_EQ(EffectiveOf(changed.ticket, "PageMediaSize"), "ISOA5");
    EXPECT_THAT(changed.ticket, Not(HasSubstr("t:Hint")));
}

TEST(TicketMerge, ReportsWhereValuesComeFromAndWhyTheyChanged) {
    MergeReport report;
    const auto result =
        Merge(Ticket(Feature("PageOrientation", "Landscape") + Parameter("JobCopiesAllDocuments", "5") +
                     Parameter("PageMediaSizeMediaSizeWidth", "300000")),
              Ticket(Parameter("JobCopiesAllDocuments", "500") + Feature("JobNonsense", "On") +
                     Feature("PageMediaSize", "CustomMediaSize",
                             Scored("MediaSizeWidth", 100000) + Scored("MediaSizeHeight", 200000)) +
                     "<psf:Feature name=\"psk:PageMediaType\"/>" +
                     Feature("DocumentNUp", "", Scored("PagesPerSheet", 4),
                             Feature("PresentationDirection", "Sideways"))),
              kPTJobScope, &report);
    EXPECT_TRUE(report.conflictResolved);

    const Rows<const char*, const char*, SettingOrigin, const char*, const char*> rows{
        {"psk:PageOrientation", "psk:Landscape", SettingOrigin::Base, "", ""},
        {"psk:PageMediaSize", "psk:CustomMediaSize", SettingOrigin::Delta, "", ""},
        {"psk:PageMediaSizeMediaSizeWidth", "100000", SettingOrigin::Delta, "", ""},
        {"psk:PageResolution", "t:R600", SettingOrigin::Queue, "", ""},
        {"psk:PageMediaType", "psk:Plain", SettingOrigin::Queue, "", ""},
        {"psk:DocumentNUp", "(psk:PagesPerSheet=4)", SettingOrigin::Delta, "", ""},
        {"psk:DocumentNUp/psk:PresentationDirection", "psk:RightBottom", SettingOrigin::Delta, "psk:Sideways",
         "the printer does not have this option"},
        {"psk:JobCopiesAllDocuments", "1", SettingOrigin::Delta, "500", "the value is too large"},
        {"psk:JobNonsense", "", SettingOrigin::Delta, "psk:On", "the printer does not have this feature"},
    };
    for (const auto& [name, value, origin, requested, reason] : rows) {
        const SettingReport* setting = report.Find(name);
        ASSERT_NE(setting, nullptr) << name;
        EXPECT_EQ(setting->value, value) << name;
        EXPECT_EQ(setting->origin, origin) << name;
        EXPECT_EQ(setting->requested, requested) << name;
        EXPECT_EQ(setting->reason, reason) << name;
    }
}

TEST(TicketMerge, HoldsForCapabilitiesOfUnusualShape) {
    const auto validate = [](const std::string& capabilities, const std::string& ticket,
                             EPrintTicketScope scope = kPTJobScope) {
        const PrintTicketMerge merge(Queue(Capabilities(capabilities), Ticket("")));
        const std::string once = merge.Merge(ticket, nullptr, scope).ticket;
        const auto twice = merge.Merge(once, nullptr, scope);
        EXPECT_EQ(twice.ticket, once);
        EXPECT_FALSE(twice.conflictResolved);
        return Effective(once);
    };
    // Namespaces that are declared below the root, one of them under a prefix that is taken.
    EXPECT_EQ(
        validate(R"(<psf:Feature name="v:JobA" xmlns:v="urn:v"><psf:Option name="w:On" xmlns:w="urn:w"/>)"
                 R"(<psf:Option name="v:Off"/></psf:Feature>)"
                 R"(<psf:Feature name="v:JobB" xmlns:v="urn:v2"><psf:Option name="v:On"/></psf:Feature>)",
                 Ticket("")),
        "v:JobA=w:On ns0000:JobB=ns0000:On");
    // A printer that allows no option at all.
    const std::string none = R"(<psf:Feature name="psk:JobInputBin"><psf:Option name="psk:Auto" )"
                             R"(constrained="psk:DeviceSettings"/><psf:Option name="psk:Manual" )"
                             R"(constrained="psk:AdminSettings"/></psf:Feature>)";
    EXPECT_EQ(validate(none, Ticket(Feature("JobInputBin", "Manual"))), "JobInputBin=Auto");
    // As many properties agree: the nearest numbers. The option of the ticket's name is ruled out: no other
    // is meant, however much it has in common with it.
    const auto quality = [](const char* name, int y, const char* attributes = "") {
        return std::string("<psf:Option name=\"t:") + name + "\"" + attributes + ">" +
               Scored("ResolutionX", 600) + Scored("ResolutionY", y) + "</psf:Option>";
    };
    const std::string qualities = "<psf:Feature name=\"psk:PageResolution\">" + quality("Low", 300) +
                                  quality("High", 1200) + quality("Middle", 600) +
                                  quality("Fast", 600, " constrained=\"psk:DeviceSettings\"") +
                                  "</psf:Feature>";
    const auto asked = [](const char* name, int y) {
        return Ticket(Feature("PageResolution", name, Scored("ResolutionX", 600) + Scored("ResolutionY", y)));
    };
    EXPECT_EQ(validate(qualities, asked("", 1000)), "PageResolution=t:High");
    EXPECT_EQ(validate(qualities, asked("t:Fast", 600)), "PageResolution=t:Low"); // the default
    // Of options that fit as well, the one that refers to the same parameter, then the one that has a name
    // or none as the ticket's has.
    const auto definition = [](const char* name) {
        return std::string("<psf:ParameterDef name=\"psk:") + name + "\">" +
               Property("psf:DataType", "QName", "xsd:integer") +
               Property("psf:Mandatory", "QName", "psk:Conditional") + "</psf:ParameterDef>";
    };
    const std::string alike =
        definition("PageP1") + definition("PageP2") + "<psf:Feature name=\"psk:PageNUp\"><psf:Option>" +
        Reference("Pages", "PageP1") + "</psf:Option><psf:Option>" + Reference("Pages", "PageP2") +
        "</psf:Option><psf:Option name=\"t:Two\">" + Scored("Pages", 2) + "</psf:Option><psf:Option>" +
        Scored("Pages", 2) + "</psf:Option></psf:Feature>";
    EXPECT_EQ(validate(alike, Ticket(Feature("PageNUp", "", Reference("Pages", "PageP2")) +
                                     Parameter("PageP2", "23"))),
              "PageP2=23 PageNUp=-");
    EXPECT_EQ(validate(alike, Ticket(Feature("PageNUp", "", Reference("Pages", "PageP1")) +
                                     Parameter("PageP1", "2"))),
              "PageP1=2 PageNUp=-");
    EXPECT_EQ(validate(alike, Ticket(Feature("PageNUp", "", Scored("Pages", 2)))), "PageNUp=-");
    EXPECT_EQ(validate(alike, Ticket(Feature("PageNUp", "t:Two"))), "PageNUp=t:Two");
    // A parameter whose name has no level belongs to that of the feature that uses it.
    const std::string lead =
        "<psf:ParameterDef name=\"t:Lead\">" + Property("psf:DataType", "QName", "xsd:integer") +
        R"(</psf:ParameterDef><psf:Feature name="t:PageEdge"><psf:Option name="t:A"><psf:ScoredProperty )"
        R"(name="t:Lead"><psf:ParameterRef name="t:Lead"/></psf:ScoredProperty></psf:Option></psf:Feature>)";
    EXPECT_EQ(validate(lead, Ticket(Parameter("t:Lead", "7")), kPTPageScope), "t:Lead=7 t:PageEdge=t:A");
    // Names as scored properties: the namespace decides.
    const auto place = [](const std::string& name) {
        return "<psf:ScoredProperty name=\"psk:Place\"><psf:Value xsi:type=\"xsd:QName\">" + name +
               "</psf:Value></psf:ScoredProperty>";
    };
    const std::string places = "<psf:Feature name=\"psk:JobPlace\"><psf:Option name=\"t:A\">" +
                               place("psk:Right") + "</psf:Option><psf:Option name=\"t:B\">" +
                               place("psk:Left") + "</psf:Option></psf:Feature>";
    EXPECT_EQ(validate(places, Ticket(Feature("JobPlace", "", place("psk:Left")))), "JobPlace=t:B");
    EXPECT_EQ(validate(places, Ticket(Feature("JobPlace", "", place("t:Left")))), "JobPlace=t:A");
    // A feature of nothing but nested ones.
    EXPECT_EQ(validate(R"(<psf:Feature name="psk:JobA"><psf:Feature name="psk:B"><psf:Option name="psk:C"/>)"
                       R"(<psf:Option name="psk:D"/></psf:Feature></psf:Feature>)",
                       Ticket("<psf:Feature name=\"psk:JobA\">" + Feature("B", "D") + "</psf:Feature>")),
              "JobA= B=D");
}

} // namespace
