// Annotations in the public document settings of a ticket, and definitions that a client names.

#include "FilterUtilities/Annotation/TicketWithSettings.h"
#include "Support/Rows.h"

#include <AnnotationStore/AnnotationStore.h>
#include <ClientJobData/ClientJobData2ReaderWriter.h>

namespace {

std::vector<std::string> ElementsOf(const std::string& content,
                                    const AttributeBytesIndexedList& attributes = {}) {
    TicketAndSettings ticket(content);
    OpenAnnotations annotations;
    annotations.Read(ticket.settings, attributes);
    return ShowAll(annotations);
}

std::string OnlyElementOf(std::initializer_list<std::pair<std::string, std::string>> members) {
    const auto elements = ElementsOf(SettingsElements(SettingsElement(members)));
    return elements.size() == 1 ? elements[0] : "not one element";
}

const AttributeBytesIndexedList textInAttributes =
    JobWith({Attributes({{FEAT_ANNOTATION_TYPE, Option(VAL_ANNOTATION_TYPE_TEXT)}})});

constexpr char afterType[] = " draw 5001 opacity 0.5 angle 315 at 0,0 edges 0 0,0 order 10896";
constexpr char font[] = " 'Segoe UI' 1 72 '#808080'";

TEST(AnnotationSettings, GiveEachValueByItsKeyword) {
    const auto element = [](const std::string& type) {
        return SettingsElement({{"type", type},
                                {"firstpage", "pages-first-only"},
                                {"drawmode", "print-in-background"},
                                {"transparency", "30"},
                                {"text", "Caf&#xE9; &#x1F600;\n&lt;&amp;"},
                                {"angle", "-45"},
                                {"x-offset", "2500"},
                                {"y-offset", "-500"},
                                {"justify", "9"},
                                {"x-offset-inches", "250"},
                                {"y-offset-inches", "-5099"},
                                {"render-order", "post-imposition"},
                                {"font-name", "DejaVu Sans"},
                                {"font-char-set", "128"},
                                {"font-size", "11"},
                                {"rgb", "#FF0000"},
                                {"time-stamp-format-fields", "day-date,ymd,hm-zone,hour-24"},
                                {"picture-scale", "40"}});
    };
    const std::string place = " first draw 10854 opacity 0.7 angle -45 at 2.5,-0.5 edges 9 2,-48 order 10897"
                              " 'Caf\u00E9 \U0001F600\n<&'";
    const std::string fonts = " 'DejaVu Sans' 128 11 '#FF0000'";
    const ProcessSeparators separators(L".", L":");
    EXPECT_EQ(ElementsOf(SettingsElements("<!-- of any name -->" + element("type-text") +
                                          element("type-timestamp") + element("type-picture") +
                                          element("type-bates-stamp") + element("type-page-numbers"))),
              (std::vector<std::string>{
                  "7203" + place + fonts, "7204" + place + fonts + " stamp 10839 10847 10849 10851",
                  "7205" + place + " scale 40", "7206" + place + fonts, "7207" + place + fonts}));
}

TEST(AnnotationSettings, KeepTheDefaultsForWhatIsMissingOrMeaningless) {
    const std::string defaults = afterType + std::string(" ''") + font;
    EXPECT_EQ(OnlyElementOf({}), "5001" + defaults);
    EXPECT_EQ(OnlyElementOf({{"type", "type-hologram"}, {"drawmode", "sideways"}, {"render-order", ""}}),
              "5001" + defaults);
    EXPECT_EQ(OnlyElementOf({{"type", "type-text"},
                             {"firstpage", "pages-all"},
                             {"transparency", " "},
                             {"font-size", ""},
                             {"font-name", "\n"},
                             {"rgb", ""}}),
              "7203" + defaults);
    EXPECT_EQ(
        OnlyElementOf({{"type", "type-text"}, {"angle", "9x"}, {"font-size", "12 pt"}, {"justify", "no"}}),
        "7203 draw 5001 opacity 0.5 angle 9 at 0,0 edges 0 0,0 order 10896 '' 'Segoe UI' 1 12 '#808080'");
    EXPECT_EQ(ElementsOf(SettingsElements("<e><type-api specified='false'>type-text</type-api></e>")),
              std::vector<std::string>{"5001" + defaults});
}

TEST(AnnotationSettings, NameTheFieldsOfATimeStampInAnyOrder) {
    const ProcessSeparators separators(L".", L":");
    const Rows<const char*, const char*> cases{
        {"hour-12,hm,dmy,time", " stamp 10837 10846 10848 10850"},
        {" date-time-zone , mdy ,,never, hm-zone", " stamp 10841 10845 10849 0"},
        {"date,day-date-time-zone", " stamp 10840 0 0 0"}, // the last one counts
        {"Date;ymd", ""},
        {"", ""},
    };
    for (const auto& [fields, stamp] : cases)
        EXPECT_EQ(OnlyElementOf({{"type", "type-timestamp"}, {"time-stamp-format-fields", fields}}),
                  "7204" + std::string(afterType) + " ''" + font + stamp);
}

TEST(AnnotationSettings, ComeBeforeTheAttributesOfAJobThatIsNoCoverSheet) {
    const std::string oneElement = SettingsElements(SettingsElement({{"type", "type-picture"}}));
    const Rows<std::string, std::string> cases{
        {oneElement, "7205"},
        {"<job><deeper>" + oneElement + "</deeper></job>", "7205"},
        {SettingsElements("<e><type-api>type-picture</type-api></e>", " specified='false'"), "7203"},
        {"<other/>", "7203"},
        {"<annotation-col-api/>", "5001"}, // annotations are specified: there are none
        {SettingsElements(""), "5001"},
    };
    for (const auto& [content, type] : cases) {
        const auto elements = ElementsOf(content, textInAttributes);
        ASSERT_EQ(elements.size(), 1U) << content;
        EXPECT_EQ(elements[0].substr(0, 4), type) << content;
    }
    OpenTicket noSettings(Ticket("<psf:ParameterInit name='ok:JobOrvelPublicDocSettings'><psf:Value"
                                 " xsi:type='xsd:string'>&lt;no end</psf:Value></psf:ParameterInit>",
                                 Declare("ok", PrivateUri())));
    Settings broken(&noSettings);
    OpenAnnotations annotations;
    EXPECT_EQ(annotations.Read(broken, textInAttributes), S_OK);
    EXPECT_EQ(annotations.GetType(), VAL_ANNOTATION_TYPE_TEXT);

    TicketAndSettings ticket(oneElement);
    annotations.SetFaxAnnotationSettings(true);
    EXPECT_EQ(annotations.Read(ticket.settings), S_FALSE);
    annotations.SetFaxAnnotationSettings(false);
    EXPECT_EQ(annotations.Read(ticket.settings,
                               Attributes({{FEAT_FAX_OUT_COL,
                                            AttributeValue::FromCollection(AttributeBytesIndexedList())}})),
              S_OK);
    EXPECT_TRUE(annotations.GetFirstPageOnly()) << "a job that is faxed";
}

// ---- Definitions that a client names

std::string Definition(const std::string& text) {
    return SettingsElements(SettingsElement({{"type", "type-text"}, {"text", text}}));
}

AnnotationStore StoreWith(const wchar_t* name, const std::string& definition) {
    AnnotationStore store;
    store.AddOrReplaceAnnotationDefinition(name, CPString(std::string(definition)));
    return store;
}

TEST(AnnotationDefinitions, AreNamedInTheSettingsOrTheAttributes) {
    const auto named = Attributes({{FEAT_ANNOTATION_NAME, Text(L"of the attributes")}});
    const Rows<std::string, AttributeBytesIndexedList, std::string> cases{
        {"<annotation-name-api>Draft</annotation-name-api>", named, "Draft"},
        {"<annotation-name-api/>", named, ""},
        {"<annotation-name-api specified='false'>Draft</annotation-name-api>", named, "of the attributes"},
        {"<deeper><annotation-name-api>Draft</annotation-name-api></deeper>", named, "of the attributes"},
        {"", {}, ""},
    };
    for (const auto& [content, list, name] : cases) {
        TicketAndSettings ticket(content);
        AttributeBytesIndexedList attributes = list;
        EXPECT_EQ(Utf8(AnnotationPrintTicketSettings().GetAnnotationDefinitionNameFromPrintTicket(
                      ticket.settings, attributes)),
                  name)
            << content;
    }
}

TEST(AnnotationDefinitions, TakeThePlaceOfTheirNameInTheTicket) {
    TicketAndSettings ticket("<annotation-name-api>Draft</annotation-name-api>" + Definition("old") +
                             "<kept>1</kept>");
    AnnotationStore store = StoreWith(L"Draft", Definition("new"));
    OpenAnnotations annotations;
    EXPECT_EQ(annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicket(L"Final", &store, ticket.settings),
              S_OK);
    EXPECT_FALSE(annotations.WasNameOnlyDefinitionExpandedInPrintTicket());
    EXPECT_EQ(ticket.Committed("count(//annotation-name-api)"), "1");
    for (int time = 0; time < 2; ++time) { // the store still has it
        EXPECT_EQ(
            annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicket(L"Draft", &store, ticket.settings),
            S_OK);
        EXPECT_TRUE(annotations.WasNameOnlyDefinitionExpandedInPrintTicket());
        EXPECT_EQ(ticket.Committed("count(/*/annotation-name-api)"), "0");
        EXPECT_EQ(ticket.Committed("count(/*/annotation-col-api)"), "1");
        EXPECT_EQ(ticket.Committed("/*/annotation-col-api//text-api"), "new");
        EXPECT_EQ(ticket.Committed("/*/kept"), "1");
        EXPECT_EQ(ticket.Committed("/*/date-separator-api[@xml:space='preserve']"),
                  Utf8(AnnotationPrintTicketSettings::GetDateSeparatorByReverseEngineering()));
        EXPECT_EQ(ticket.Committed("/*/time-separator-api"),
                  Utf8(AnnotationPrintTicketSettings::GetTimeSeparatorByReverseEngineering()));
    }
    EXPECT_EQ(annotations.Read(ticket.settings), S_OK);
    EXPECT_EQ(annotations.GetText(), L"new");
}

TEST(AnnotationDefinitions, LeaveTicketAndSettingsAsTheyWereWhereTheyCannotBeExpanded) {
    const std::string content = "<annotation-name-api>Draft</annotation-name-api>";
    AnnotationStore store = StoreWith(L"Draft", Definition("new"));
    AnnotationStore large = StoreWith(L"Draft", Definition(std::string(10'240, 'x')));
    const auto expand = [](const wchar_t* name, AnnotationStore* from) {
        return [=](AnnotationPrintTicketSettings& annotations, Settings& settings) {
            return annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicket(name, from, settings);
        };
    };
    const auto expandSent = [](const char* sent) {
        return [=](AnnotationPrintTicketSettings& annotations, Settings& settings) {
            ClientJobData2ReaderWriter data;
            if (*sent != 0) data.AddOrReplaceInParameterList(203, CXString(sent));
            return annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2(L"Draft", &data,
                                                                                        settings);
        };
    };
    using Expansion = std::function<HRESULT(AnnotationPrintTicketSettings&, Settings&)>;
    const Rows<const char*, Expansion, HRESULT> cases{
        {"no store", expand(L"Draft", nullptr), E_FAIL},
        {"a blank name", expand(L" \t", &store), E_FAIL},
        {"more than a ticket takes", expand(L"Draft", &large), E_FAIL},
        {"a name that is not there", expand(L"draft", &store), S_OK},
        {"nothing sent", expandSent(""), E_FAIL},
        {"a store that is none", expandSent("<annotation-col-api/>"), E_FAIL},
        {"no XML", expandSent("<AnnotationStore version='1.0'>"), E_FAIL},
        {"a store without it", expandSent("<AnnotationStore version='1.0'/>"), S_OK},
    };
    for (const auto& [name, operation, expected] : cases) {
        TicketAndSettings ticket(content);
        const std::string before = ticket.Committed();
        OpenAnnotations annotations;
        EXPECT_EQ(operation(annotations, ticket.settings), expected) << name;
        EXPECT_FALSE(annotations.WasNameOnlyDefinitionExpandedInPrintTicket()) << name;
        EXPECT_EQ(ticket.Setting(L"annotation-name-api"), "Draft") << name;
        EXPECT_EQ(ticket.Setting(L"annotation-col-api"), "(none)") << name;
        EXPECT_EQ(ticket.Committed(), before) << name;
    }
    Settings none(nullptr);
    OpenAnnotations annotations;
    EXPECT_EQ(annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicket(L"Draft", &store, none), S_FALSE);
    EXPECT_FALSE(annotations.WasNameOnlyDefinitionExpandedInPrintTicket());
    EXPECT_EQ(annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2(L"Draft", nullptr, none),
              E_FAIL);
}

TEST(AnnotationDefinitions, TravelAloneWithTheJob) {
    AnnotationStore store = StoreWith(L"Caf\u00E9 <1>", Definition("&#x65E5;&amp;"));
    store.AddOrReplaceAnnotationDefinition(L"private", CPString(Definition("secret")));
    ClientJobData2ReaderWriter data;
    data.AddOrReplaceInParameterList(203, CXString(L"what another job left"));
    OpenAnnotations client;
    EXPECT_EQ(client.SetAnnotationDefinitionInClientJobData2(L"Caf\u00E9 <1>", &store, &data), S_OK);
    ClientJobData2ReaderWriter received(data.GetClientJobData2());
    CXString sent;
    EXPECT_TRUE(received.GetStringFromParameterList(203, sent));
    EXPECT_EQ(sent.Find(L"secret"), -1);

    TicketAndSettings ticket("");
    OpenAnnotations printer;
    EXPECT_EQ(printer.ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2(L"Caf\u00E9 <1>", &received,
                                                                               ticket.settings),
              S_OK);
    EXPECT_EQ(printer.Read(ticket.settings), S_OK);
    EXPECT_EQ(printer.GetText(), L"\u65E5&");

    EXPECT_EQ(client.SetAnnotationDefinitionInClientJobData2(L"", &store, &data), E_FAIL);
    EXPECT_EQ(client.SetAnnotationDefinitionInClientJobData2(L"private", nullptr, &data), E_FAIL);
    EXPECT_EQ(client.SetAnnotationDefinitionInClientJobData2(L"private", &store, nullptr), E_FAIL);
    EXPECT_EQ(client.SetAnnotationDefinitionInClientJobData2(L"gone", &store, &data), E_FAIL);
    CXString kept;
    data.GetStringFromParameterList(203, kept);
    EXPECT_EQ(kept, sent);
}

} // namespace
