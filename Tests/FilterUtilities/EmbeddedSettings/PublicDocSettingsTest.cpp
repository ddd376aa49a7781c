#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/Growth.h"
#include "Support/Rows.h"
#include "Support/VirtualSlots.h"

#include <EmbeddedSettings/PrintTicketOrvelPublicDocSettingsReaderWriter.h>

namespace {

using Settings = PrintTicketOrvelPublicDocSettingsReaderWriter;

constexpr char root[] = "<OrvelPublicDocSettings>";
constexpr char rootEnd[] = "</OrvelPublicDocSettings>";

std::string EscapeXml(const std::string& text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char c : text) {
        if (c == '<' || c == '&')
            escaped += c == '<' ? "&lt;" : "&amp;";
        else
            escaped += c;
    }
    return escaped;
}

std::string TicketWith(const std::string& settings) {
    return Ticket(
        "<psf:Feature name='psk:PageMediaSize'/><psf:ParameterInit name='ok:JobOrvelPublicDocSettings'>"
        "<psf:Value xsi:type='xsd:string'>" +
            EscapeXml(settings) + "</psf:Value></psf:ParameterInit>",
        Declare("ok", PrivateUri()));
}

std::string TicketWithout() {
    return Ticket("<psf:Feature name='psk:PageMediaSize'/>", Declare("ok", PrivateUri()));
}

// The settings' text as an outside reader sees it in the ticket.
std::string Embedded(const PrintSchemaXmlDocument& ticket) {
    xmlResetLastError(); // of what a test gave to the platform to refuse
    return OutsideView(ticket,
                       "/psf:PrintTicket/psf:ParameterInit[@name='ok:JobOrvelPublicDocSettings']/psf:Value");
}

// What one element of the committed settings is, by an expression.
std::string InSettings(const PrintSchemaXmlDocument& ticket, const std::string& xpath) {
    return OutsideView(Embedded(ticket), xpath);
}

struct Answer {
    LONG code = -1;
    bool specified = true; // so that it shows what is not cleared
    CXString value = L"stale";

    friend bool operator==(const Answer& left, const Answer& right) {
        return left.code == right.code && left.specified == right.specified && left.value == right.value;
    }
    friend std::ostream& operator<<(std::ostream& stream, const Answer& answer) {
        return stream << answer.code << (answer.specified ? " specified '" : " not specified '")
                      << answer.value << "'";
    }
};

Answer Read(Settings& settings, const CXString& name) {
    Answer answer;
    answer.code = settings.GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(name, answer.specified,
                                                                                   answer.value);
    return answer;
}

Answer ReadMember(Settings& settings, const CXString& name, unsigned int index, const CXString& member) {
    Answer answer;
    answer.code = settings.GetCurrentValueAsStringForOrvelPublicDocSettingsFeature(
        name, index, member, answer.specified, answer.value);
    return answer;
}

LONG Set(Settings& settings, const CXString& name, const CXString& value, const wchar_t* syntax = L"",
         bool isSpecified = true) {
    return settings.SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(name, syntax, isSpecified, value);
}

LONG SetMember(Settings& settings, const CXString& name, unsigned int index, const CXString& member,
               const CXString& value) {
    return settings.SetCurrentValueAsStringForOrvelPublicDocSettingsFeature(name, index, member, L"name",
                                                                            true, value);
}

const Answer nothing{S_FALSE, false, L""};

constexpr char collections[] =
    "<annotations syntax='1setOf collection'>\n"
    "  <!-- entries -->\n"
    "  <annotation><text>first</text><size>12</size></annotation>\n"
    "  <annotation><text specified='false'>second</text><box><size>  </size></box></annotation>\n"
    "</annotations>"
    "<hidden specified='false'><entry><text>never</text></entry></hidden>";

} // namespace

TEST(PublicDocSettings, VirtualOperationsStandInTheirSlots) {
    EXPECT_EQ(SlotOf(&Settings::Dump), 2U);
    EXPECT_EQ(SlotOf(&OneMore<Settings>::Next), 3U);
}

TEST(PublicDocSettings, TheFirstQuestionGivesTheTicketAnEmptyDocument) {
    for (const std::string& text : {TicketWithout(), TicketWith("  ")}) {
        OpenTicket ticket(text);
        Settings settings(&ticket);
        EXPECT_FALSE(settings.HasOrvelPublicDocSettings());
        EXPECT_EQ(settings.CommitChangesToPrintTicket(), S_FALSE) << "nothing was read";
        EXPECT_EQ(XmlOf(ticket).find("cpss-version"), std::string::npos);
        EXPECT_EQ(Read(settings, L"sides"), nothing);
        EXPECT_TRUE(settings.HasOrvelPublicDocSettings());
        EXPECT_EQ(Embedded(ticket),
                  "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                  "<OrvelPublicDocSettings cpss-version=\"2.07\" version=\"2.0\" xml:lang=\"en-US\""
                  " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"> </OrvelPublicDocSettings>");
        EXPECT_EQ(OutsideView(ticket, "name(/psf:PrintTicket/*[1])"), "psf:ParameterInit");
        EXPECT_EQ(OutsideView(ticket, "count(//psf:ParameterInit)"), "1");
    }
}

TEST(PublicDocSettings, ReadsTextAndWhetherItIsSpecified) {
    OpenTicket ticket(TicketWith(std::string(root) +
                                 "<group><nested>deep</nested></group><a specified='false'>x</a>"
                                 "<b specified='False'>x</b><e/>"
                                 "<k xml:space='preserve'> \xC3\xA9 &amp; \xF0\x9F\x98\x80 </k>" +
                                 rootEnd));
    Settings settings(&ticket);
    const Rows<const wchar_t*, Answer, bool> rows{
        {L"nested", {S_OK, true, L"deep"}, false},
        {L"a", {S_OK, false, L"x"}, true},
        {L"b", {S_OK, true, L"x"}, true},
        {L"e", {S_OK, true, L""}, true},
        {L"k", {S_OK, true, CXString(" \xC3\xA9 & \xF0\x9F\x98\x80 ")}, true},
        {L"Nested", nothing, false},
        {L"", nothing, false},
        {L"OrvelPublicDocSettings", nothing, false}, // the root is no setting
    };
    for (const auto& [name, expected, isAtJobLevel] : rows) {
        SCOPED_TRACE(Narrow(name));
        EXPECT_EQ(Read(settings, name), expected);
        EXPECT_EQ(settings.IsOrvelPublicDocSettingsFeaturePresent(name), expected.code == S_OK);
        EXPECT_EQ(settings.IsOrvelPublicDocSettingsFeaturePresentAtJobLevel(name), isAtJobLevel);
        Answer atJobLevel;
        atJobLevel.code = settings.GetCurrentValueAsStringForJobLevelOrvelPublicDocSettingsFeature(
            name, atJobLevel.specified, atJobLevel.value);
        EXPECT_EQ(atJobLevel, isAtJobLevel ? expected : nothing);
    }
}

TEST(PublicDocSettings, ReadsIntegersOrTheDefault) {
    OpenTicket ticket(TicketWith(std::string(root) +
                                 "<n>-42</n><blank> \t</blank><off specified='false'>7</off><t>12 pt</t>" +
                                 collections + rootEnd));
    Settings settings(&ticket);
    // index: -1: no member
    const Rows<const wchar_t*, int, LONG, int> rows{{L"n", -1, S_OK, -42},
                                                    {L"blank", -1, S_FALSE, 99},
                                                    {L"off", -1, S_FALSE, 99},
                                                    {L"t", -1, S_OK, 12},
                                                    {L"missing", -1, S_FALSE, 99},
                                                    {L"annotations", 0, S_OK, 12},
                                                    {L"annotations", 1, S_FALSE, 99},
                                                    {L"hidden", 0, E_INVALIDARG, 99}};
    for (const auto& [name, index, code, wantedValue] : rows) {
        SCOPED_TRACE(Narrow(name));
        bool specified = false;
        int value = 0;
        const LONG result =
            index < 0
                ? settings.GetCurrentValueAsIntForOrvelPublicDocSettingsFeature(name, specified, value, 99)
                : settings.GetCurrentValueAsIntForOrvelPublicDocSettingsFeature(
                      name, static_cast<unsigned int>(index), L"size", specified, value, 99);
        EXPECT_EQ(result, code);
        EXPECT_EQ(value, wantedValue);
    }
}

TEST(PublicDocSettings, ReadsMembersOfEntriesByPosition) {
    OpenTicket ticket(TicketWith(root + std::string(collections) + rootEnd));
    Settings settings(&ticket);
    bool specified = false;
    unsigned int count = 99;
    EXPECT_EQ(settings.GetNumberOfChildrenForOrvelPublicDocSettingsFeature(L"annotations", specified, count),
              S_OK);
    EXPECT_TRUE(specified);
    EXPECT_EQ(count, 2U) << "neither blanks nor comments are entries";
    EXPECT_EQ(settings.GetNumberOfChildrenForOrvelPublicDocSettingsFeature(L"missing", specified, count),
              S_FALSE);
    EXPECT_FALSE(specified);
    EXPECT_EQ(count, 0U);

    EXPECT_EQ(ReadMember(settings, L"annotations", 0, L"text"), (Answer{S_OK, true, L"first"}));
    EXPECT_EQ(ReadMember(settings, L"annotations", 1, L"text"), nothing) << "not specified";
    EXPECT_EQ(ReadMember(settings, L"annotations", 0, L"box"), nothing) << "that of the next entry";
    EXPECT_EQ(ReadMember(settings, L"annotations", 2, L"text"), nothing);
    EXPECT_EQ(ReadMember(settings, L"annotations", 0xFFFFFFFFU, L"text"), nothing);
    EXPECT_EQ(ReadMember(settings, L"missing", 0, L"text"), nothing);
    EXPECT_EQ(ReadMember(settings, L"hidden", 0, L"text"), (Answer{E_INVALIDARG, false, L""}));
}

TEST(PublicDocSettings, WhatIsWrittenReadsBackThroughAFreshTicket) {
    OpenTicket ticket(TicketWith(std::string(root) +
                                 "<group><old syntax='keyword' specified='false'>x</old></group>"
                                 "<kept specified='true'>y</kept>" +
                                 collections + "<other vendor='1'>stays</other>" + rootEnd));
    Settings settings(&ticket);
    Set(settings, L"old", L"new <&> text", L"text");
    Set(settings, L"kept", L"z", L"", false);
    Set(settings, L"title", L"  blanks  ", L"text", false);
    Set(settings, L"who", CXString("\xF0\x9F\x98\x80"), L"name");
    Set(settings, L"word", L"a", L"keyword");
    Set(settings, L"word", L"b", L"text", false);
    Set(settings, L"bare", L"d");
    EXPECT_EQ(settings.SetCurrentValueAsIntForOrvelPublicDocSettingsFeature(L"number", L"integer", true, -5),
              S_OK);
    // Members: an existing one, a new one, and those that have no place.
    EXPECT_EQ(SetMember(settings, L"annotations", 1, L"text", L"2nd"), S_OK);
    EXPECT_EQ(settings.SetCurrentValueAsInitForOrvelPublicDocSettingsFeature(L"annotations", 0, L"angle",
                                                                             L"integer", false, 90),
              S_OK);
    EXPECT_EQ(SetMember(settings, L"annotations", 2, L"text", L"3rd"), S_OK);
    EXPECT_EQ(SetMember(settings, L"nowhere", 0, L"text", L"x"), S_OK);
    EXPECT_EQ(SetMember(settings, L"hidden", 0, L"text", L"x"), E_INVALIDARG);
    EXPECT_EQ(Embedded(ticket).find("title"), std::string::npos) << "not yet committed";
    ASSERT_EQ(settings.CommitChangesToPrintTicket(), S_OK);

    OpenTicket fresh(XmlOf(ticket));
    Settings reread(&fresh);
    EXPECT_EQ(Read(reread, L"old"), (Answer{S_OK, true, L"new <&> text"}));
    EXPECT_EQ(Read(reread, L"title"), (Answer{S_OK, false, L"  blanks  "}));
    EXPECT_EQ(Read(reread, L"who"), (Answer{S_OK, true, CXString("\xF0\x9F\x98\x80")}));
    EXPECT_EQ(ReadMember(reread, L"annotations", 1, L"text"), (Answer{S_OK, true, L"2nd"}));

    const Rows<const char*, const char*> rows{
        {"//group/old/@syntax", "keyword"}, // that of an element that exists stays
        {"count(//old/@specified)", "0"},
        {"//kept/@specified", "true"}, // so it still counts as specified
        {"//other/@vendor", "1"},
        {"concat(name(//title/@*[1]), ' ', name(//title/@*[2]), ' ', name(//title/@*[3]))",
         "syntax xml:space specified"},
        {"//who/@xml:space", "preserve"},
        {"//word[@syntax='keyword' and @specified='false' and not(@xml:space)]", "b"},
        {"count(//bare/@*)", "0"},
        {"/*/number[@syntax='integer']", "-5"},
        {"//annotation[2]/text[not(@specified)]/@syntax", "name"},
        {"//annotation[1]/angle[@specified='false']", "90"},
        {"count(//word) + count(//annotation) + count(//nowhere)", "3"},
        {"//hidden/entry/text", "never"},
    };
    for (const auto& [xpath, expected] : rows)
        EXPECT_EQ(InSettings(ticket, xpath), expected) << xpath;
}

TEST(PublicDocSettings, DeletesAndReplacesElements) {
    OpenTicket ticket(TicketWith(std::string(root) + "<a/><g><a>1</a></g><b>2</b>" + rootEnd));
    Settings settings(&ticket);
    EXPECT_EQ(settings.DeleteOrvelPublicDocSettingsFeature(L"a"), S_OK);
    EXPECT_EQ(Read(settings, L"a"), (Answer{S_OK, true, L"1"})) << "the next one of that name";
    EXPECT_EQ(settings.DeleteOrvelPublicDocSettingsFeature(L"a"), S_OK);
    EXPECT_EQ(settings.DeleteOrvelPublicDocSettingsFeature(L"a"), S_FALSE);

    MicrosoftXmlParser source(L"source", false);
    source.parse(CPString("<b syntax='collection'><c>3</c></b>"));
    const XmlDomNode::Pointer node = source.getDocument().GetDocumentElement();
    EXPECT_EQ(settings.SetCurrentValueForOrvelPublicDocSettingsFeatureWithXmlDomNode(L"b", node.get()), S_OK);
    EXPECT_EQ(settings.SetCurrentValueForOrvelPublicDocSettingsFeatureWithXmlDomNode(L"b", nullptr),
              E_INVALIDARG);
    ASSERT_EQ(settings.CommitChangesToPrintTicket(), S_OK);
    EXPECT_EQ(InSettings(ticket, "concat(count(//b), //b/@syntax, /*/b/c, count(//g/*))"), "1collection30");
}

TEST(PublicDocSettings, CommitsNoMoreThanItsLimit) {
    OpenTicket ticket(TicketWithout());
    Settings settings(&ticket);
    const auto fill = [&](std::size_t length, wchar_t unit = L'x') {
        Set(settings, L"filler", std::wstring(length, unit).c_str());
    };
    fill(1);
    ASSERT_EQ(settings.CommitChangesToPrintTicket(), S_OK);
    const std::size_t rest = Settings::maxCommittedBytes - Embedded(ticket).size();
    fill(1 + rest);
    EXPECT_EQ(settings.CommitChangesToPrintTicket(), S_OK);
    EXPECT_EQ(Embedded(ticket).size(), 10240U);
    const std::string before = XmlOf(ticket);
    fill(2 + rest);
    EXPECT_EQ(settings.CommitChangesToPrintTicket(), E_FAIL);
    EXPECT_EQ(XmlOf(ticket), before);
    // The limit is one of bytes, not of characters.
    fill(rest / 2 + 8, L'\u00E9');
    EXPECT_EQ(settings.CommitChangesToPrintTicket(), E_FAIL);
    EXPECT_EQ(XmlOf(ticket), before);
}

TEST(PublicDocSettings, SettingsThatAreNotWellFormedCountAsMissingAndStay) {
    const std::string deep = Times(20'000, [](std::size_t) { return std::string("<a>"); }) +
                             Times(20'000, [](std::size_t) { return std::string("</a>"); });
    for (const std::string& text :
         {std::string("not XML"), std::string("<a><b></a>"), deep,
          std::string("<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"), std::string("<x:a/>")}) {
        SCOPED_TRACE(text.substr(0, 40));
        OpenTicket ticket(TicketWith(text));
        const std::string before = XmlOf(ticket);
        Settings settings(&ticket);
        EXPECT_TRUE(settings.HasOrvelPublicDocSettings());
        for (int time = 0; time < 2; ++time)
            EXPECT_EQ(Read(settings, L"a"), nothing);
        EXPECT_EQ(ReadMember(settings, L"a", 0, L"b"), nothing);
        EXPECT_EQ(Set(settings, L"a", L"x"), S_FALSE);
        EXPECT_EQ(SetMember(settings, L"a", 0, L"b", L"x"), S_FALSE);
        EXPECT_EQ(settings.DeleteOrvelPublicDocSettingsFeature(L"a"), S_FALSE);
        EXPECT_EQ(settings.CommitChangesToPrintTicket(), S_FALSE);
        EXPECT_EQ(XmlOf(ticket), before);
    }
}

TEST(PublicDocSettings, LargeAndForeignDocumentsAreReadAndNeverCut) {
    std::string large = root;
    while (large.size() < 10'000'000)
        large += "<filler>" + std::string(1000, 'x') + "</filler>";
    OpenTicket ticket(TicketWith(large + "<sides>one-sided</sides>" + rootEnd));
    Settings settings(&ticket);
    EXPECT_EQ(Read(settings, L"sides"), (Answer{S_OK, true, L"one-sided"}));
    EXPECT_EQ(settings.CommitChangesToPrintTicket(), E_FAIL);
    EXPECT_GT(Embedded(ticket).size(), 10'000'000U);
}

TEST(PublicDocSettings, ReadingAndWritingGrowWithTheDocument) {
    ExpectLinearGrowth({"", [](std::size_t n) {
                            const std::string entries = Times(
                                n, [](std::size_t) { return std::string("<entry><name>x</name></entry>"); });
                            const auto ticket = std::make_shared<OpenTicket>(
                                TicketWith(root + ("<list>" + entries) + "</list>" + rootEnd));
                            return [ticket] {
                                Settings settings(ticket.get());
                                EXPECT_FALSE(Read(settings, L"sides").specified);
                                Set(settings, L"sides", L"one-sided");
                                settings.CommitChangesToPrintTicket();
                            };
                        }});
}

TEST(PublicDocSettings, NamesThatAreNoneAreRefusedWithoutHarm) {
    OpenTicket ticket(TicketWith(std::string(root) + "<list><entry/></list>" + rootEnd));
    Settings settings(&ticket);
    for (const wchar_t* name : {L"", L"1st", L"<x>", L"p:q"}) {
        EXPECT_LT(Set(settings, name, L"x"), 0) << Narrow(name);
        EXPECT_LT(SetMember(settings, L"list", 0, name, L"x"), 0);
    }
    ASSERT_EQ(settings.CommitChangesToPrintTicket(), S_OK);
    EXPECT_EQ(InSettings(ticket, "count(//*)"), "3");
}
