// Annotations in the public document settings of a ticket, and definitions that a client names.

#include "FilterUtilities/Annotation/TicketWithSettings.h"
#include "FilterUtilities/PrintSchema/TicketSupport.h"
#include "Support/Rows.h"

#include <AnnotationStore/AnnotationStore.h>
#include <ClientJobData/ClientJobData2ReaderWriter.h>

namespace {

Texts ElementsOf(const std::string& content, const AttributeBytesIndexedList& attributes = {}) {
    TicketAndSettings ticket(content);
    OpenAnnotations annotations;
    EXPECT_NE(annotations.Read(ticket.settings, attributes), E_FAIL);
    return ShowAll(annotations);
}

constexpr char place[] = " draw 5001 opacity 0.5 angle 315 at 0,0 edges 0 0,0 order 10896";
constexpr char text[] = " '' 'Segoe UI' 1 72 '#808080'";

TEST(AnnotationSettings, SayTheSameAsAttributesOfEachValue) {
    const Rows<std::string, std::string, LONG, AttributeValue> members{
        {"firstpage", "pages-first-only", 918, Option(10852)},
        {"drawmode", "print-in-background", 917, Option(10854)},
        {"transparency", "30", 907, Number(30)},
        {"text", "Caf&#xE9; &#x1F600;\n&lt;&amp;", 906, Text(CXString("Caf\u00E9 \U0001F600\n<&"))},
        {"angle", "-45", 909, Number(-45)},
        {"x-offset", "2500", 897, Number(2500)},
        {"y-offset", "-500", 898, Number(-500)},
        {"justify", "9", 930, Number(9)},
        {"x-offset-inches", "250", 932, Number(250)},
        {"y-offset-inches", "-5099", 933, Number(-5099)},
        {"render-order", "post-imposition", 939, Option(10897)},
        {"font-name", "DejaVu Sans", 913, Text(L"DejaVu Sans")},
        {"font-char-set", "128", 935, Number(128)},
        {"font-size", "11", 914, Number(11)},
        {"rgb", "#FF0000", 925, Text(L"#FF0000")},
        {"time-stamp-format-fields", "day-date,ymd,hm-zone,hour-24", 902, Option(10839)},
        {"none", "", 903, Option(10847)},
        {"none", "", 904, Option(10849)},
        {"none", "", 905, Option(10851)},
        {"picture-scale", "40", 908, Number(40)},
    };
    std::string inSettings = "<!-- entries of any name -->";
    std::vector<AttributeBytesIndexedList> inAttributes;
    LONG number = VAL_ANNOTATION_TYPE_TEXT;
    for (const char* const type : {"text", "timestamp", "picture", "bates-stamp", "page-numbers"}) {
        std::string element = "<e><type-api>type-" + std::string(type) + "</type-api>";
        auto attributes = Attributes({{896, Option(number++)}});
        for (const auto& [name, value, feature, attribute] : members) {
            element += "<" + name + "-api>" + value + "</" + name + "-api>";
            attributes.AddAttributeBytes(AttributeBytes(AttributeBytesFeatureId(feature), attribute));
        }
        inSettings += element + "</e>";
        inAttributes.push_back(attributes);
    }
    // Of the ten-thousandths of an inch whole hundredths count: 2 of them are 1.92 units, 50 are 48.
    const std::string start = " first draw 10854 opacity 0.7 angle -45 at 2.5,-0.5 edges 9 2,-48 order 10897"
                              " 'Caf\u00E9 \U0001F600\n<&'";
    const std::string font = " 'DejaVu Sans' 128 11 '#FF0000'";
    const Texts expected{"7203" + start + font, "7204" + start + font + " stamp 10839 10847 10849 10851",
                         "7205" + start + " scale 40", "7206" + start + font, "7207" + start + font};
    const ProcessSeparators separators(L".", L":");
    EXPECT_EQ(ElementsOf(SettingsElements(inSettings)), expected);
    OpenAnnotations annotations;
    for (int time = 0; time < 2; ++time) { // a list starts anew
        EXPECT_EQ(annotations.Read(JobWith(inAttributes)), S_OK);
        EXPECT_EQ(ShowAll(annotations), expected);
        EXPECT_EQ(annotations.GetNumberOfAnnotationElements(), 5);
        EXPECT_EQ(annotations.GetCountOfTextBasedElements(), 4);
        EXPECT_EQ(annotations.GetCountOfTimestampElements() + 10 * annotations.GetCountOfBitmapElements(),
                  11);
    }
}

TEST(AnnotationSettings, KeepTheDefaultsForWhatIsMissingOrMeaningless) {
    const Rows<std::string, std::string> cases{
        {"<e/>", "5001" + std::string(place) + text},
        {SettingsElement({{"type", "type-hologram"}, {"drawmode", "sideways"}, {"render-order", ""}}),
         "5001" + std::string(place) + text},
        {SettingsElement({{"type", "type-text"}, {"transparency", " "}, {"font-name", "\n"}, {"rgb", ""}}),
         "7203" + std::string(place) + text},
        {SettingsElement({{"type", "type-text"}, {"angle", "9x"}, {"font-size", "12 pt"}, {"justify", "no"}}),
         "7203 draw 5001 opacity 0.5 angle 9 at 0,0 edges 0 0,0 order 10896 '' 'Segoe UI' 1 12 '#808080'"},
        {"<e><type-api specified='false'>type-text</type-api></e>", "5001" + std::string(place) + text},
    };
    for (const auto& [element, expected] : cases)
        EXPECT_EQ(ElementsOf(SettingsElements(element)), Texts{expected});
}

TEST(AnnotationSettings, NameTheFieldsOfATimeStampInAnyOrder) {
    const ProcessSeparators separators(L".", L":");
    const Rows<const char*, const char*> cases{
        {"hour-12,hm,dmy,time", " stamp 10837 10846 10848 10850"},
        {" date-time-zone , mdy ,,never, hm-zone", " stamp 10841 10845 10849 0"},
        {"date,day-date-time-zone", " stamp 10840 0 0 0"}, // the last one counts
        {"Date;ymd", ""},
    };
    for (const auto& [fields, stamp] : cases)
        EXPECT_EQ(ElementsOf(SettingsElements(
                      SettingsElement({{"type", "type-timestamp"}, {"time-stamp-format-fields", fields}}))),
                  Texts{"7204" + std::string(place) + text + stamp});
}

TEST(AnnotationSettings, ComeBeforeTheAttributesOfAJobThatIsNoCoverSheet) {
    const std::string picture = SettingsElement({{"type", "type-picture"}});
    const Rows<std::string, std::string> cases{
        {SettingsElements(picture), "7205"},
        {"<deeper>" + SettingsElements(picture) + "</deeper>", "7205"},
        {SettingsElements(picture, " specified='false'"), "7203"},
        {"<other/>", "7203"},
        {"<no end", "7203"},
        {"<annotation-col-api/>", "5001"}, // annotations are specified: there are none
    };
    const auto attributes = JobWith({TextElement(L"x")});
    for (const auto& [content, type] : cases)
        EXPECT_EQ(ElementsOf(content, attributes).at(0).substr(0, 4), type) << content;

    TicketAndSettings ticket(SettingsElements(picture));
    OpenAnnotations annotations;
    annotations.SetFaxAnnotationSettings(true);
    EXPECT_EQ(annotations.Read(ticket.settings), S_FALSE);
    annotations.SetFaxAnnotationSettings(false);
    EXPECT_EQ(annotations.Read(ticket.settings, Attributes({{FEAT_FAX_OUT_COL, Members({})}})), S_OK);
    EXPECT_TRUE(annotations.GetFirstPageOnly()) << "a job that is faxed";
}

// ---- Definitions that a client names

std::string Definition(const std::string& words) {
    return SettingsElements(SettingsElement({{"type", "type-text"}, {"text", words}}));
}

AnnotationStore StoreWith(const wchar_t* name, const std::string& words) {
    AnnotationStore store;
    store.AddOrReplaceAnnotationDefinition(name, CPString(Definition(words)));
    return store;
}

TEST(AnnotationDefinitions, AreNamedInTheSettingsOrTheAttributes) {
    const Rows<std::string, std::string> cases{
        {"<annotation-name-api>Draft</annotation-name-api>", "Draft"},
        {"<annotation-name-api/>", ""},
        {"<annotation-name-api specified='false'>Draft</annotation-name-api>", "of the attributes"},
        {"<deeper><annotation-name-api>Draft</annotation-name-api></deeper>", "of the attributes"},
    };
    for (const auto& [content, name] : cases) {
        TicketAndSettings ticket(content);
        auto attributes = Attributes({{FEAT_ANNOTATION_NAME, Text(L"of the attributes")}});
        OpenAnnotations annotations;
        EXPECT_EQ(Utf8(annotations.GetAnnotationDefinitionNameFromPrintTicket(ticket.settings, attributes)),
                  name);
    }
}

constexpr char named[] = "<annotation-name-api>Draft</annotation-name-api><kept>1</kept>";

TEST(AnnotationDefinitions, TakeThePlaceOfTheirNameInTheTicket) {
    TicketAndSettings ticket(named + Definition("old"));
    AnnotationStore store = StoreWith(L"Draft", "new");
    OpenAnnotations annotations;
    for (int time = 0; time < 2; ++time) { // the store still has it
        EXPECT_EQ(
            annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicket(L"Draft", &store, ticket.settings),
            S_OK);
        EXPECT_TRUE(annotations.WasNameOnlyDefinitionExpandedInPrintTicket());
        EXPECT_EQ(ticket.Committed("concat(count(/*/*), /*/kept, /*/annotation-col-api//text-api)"), "41new");
        EXPECT_EQ(ticket.Committed("/*/date-separator-api[@xml:space='preserve']"),
                  Utf8(OpenAnnotations::GetDateSeparatorByReverseEngineering()));
        EXPECT_EQ(ticket.Committed("/*/time-separator-api"),
                  Utf8(OpenAnnotations::GetTimeSeparatorByReverseEngineering()));
    }
    EXPECT_EQ(annotations.Read(ticket.settings), S_OK);
    EXPECT_EQ(annotations.GetText(), L"new");
}

TEST(AnnotationDefinitions, LeaveTicketAndSettingsAsTheyWereWhereTheyCannotBeExpanded) {
    AnnotationStore store = StoreWith(L"Draft", "new");
    AnnotationStore large = StoreWith(L"Draft", std::string(10'240, 'x'));
    const Rows<const wchar_t*, AnnotationStore*, const char*, HRESULT> cases{
        {L"Draft", nullptr, nullptr, E_FAIL}, // nothing sent
        {L" \t", &store, nullptr, E_FAIL},
        {L"Draft", &large, nullptr, E_FAIL},
        {L"draft", &store, nullptr, S_OK},
        {L"Draft", nullptr, "<annotation-col-api/>", E_FAIL},
        {L"Draft", nullptr, "<AnnotationStore version='1.0'>", E_FAIL},
        {L"Draft", nullptr, "<AnnotationStore version='1.0'/>", S_OK},
    };
    for (const auto& [name, from, sent, expected] : cases) {
        TicketAndSettings ticket(named);
        OpenAnnotations annotations;
        ClientJobData2ReaderWriter data;
        if (sent != nullptr) data.AddOrReplaceInParameterList(203, CXString(sent));
        EXPECT_EQ(from != nullptr ? annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicket(
                                        name, from, ticket.settings)
                                  : annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2(
                                        name, &data, ticket.settings),
                  expected);
        EXPECT_FALSE(annotations.WasNameOnlyDefinitionExpandedInPrintTicket());
        EXPECT_EQ(ticket.Committed("count(/*/*)"), "2");
        EXPECT_TRUE(ticket.settings.IsOrvelPublicDocSettingsFeaturePresent(L"annotation-name-api"));
        EXPECT_FALSE(ticket.settings.IsOrvelPublicDocSettingsFeaturePresent(L"annotation-col-api"));
    }
    Settings none(nullptr);
    OpenAnnotations annotations;
    EXPECT_EQ(annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicket(L"Draft", nullptr, none), E_FAIL);
    EXPECT_EQ(annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicket(L"Draft", &store, none), S_FALSE);
}

TEST(AnnotationDefinitions, TravelAloneWithTheJob) {
    constexpr wchar_t name[] = L"Caf\u00E9 <1>";
    AnnotationStore store = StoreWith(name, "&#x65E5;&amp;");
    store.AddOrReplaceAnnotationDefinition(L"private", CPString(Definition("secret")));
    ClientJobData2ReaderWriter data;
    data.AddOrReplaceInParameterList(203, CXString(L"what another job left"));
    OpenAnnotations annotations;
    EXPECT_EQ(annotations.SetAnnotationDefinitionInClientJobData2(name, &store, &data), S_OK);
    EXPECT_EQ(annotations.SetAnnotationDefinitionInClientJobData2(L"", &store, &data), E_FAIL);
    EXPECT_EQ(annotations.SetAnnotationDefinitionInClientJobData2(name, nullptr, &data), E_FAIL);
    EXPECT_EQ(annotations.SetAnnotationDefinitionInClientJobData2(name, &store, nullptr), E_FAIL);
    EXPECT_EQ(annotations.SetAnnotationDefinitionInClientJobData2(L"gone", &store, &data), E_FAIL);
    CXString sent;
    EXPECT_TRUE(data.GetStringFromParameterList(203, sent));
    EXPECT_EQ(sent.Find(L"secret"), -1);

    TicketAndSettings ticket("");
    EXPECT_EQ(
        annotations.ExpandNameOnlyAnnotationDefinitionInPrintTicketUsingCjd2(name, &data, ticket.settings),
        S_OK);
    EXPECT_EQ(annotations.Read(ticket.settings), S_OK);
    EXPECT_EQ(annotations.GetText(), L"\u65E5&");
}

} // namespace
