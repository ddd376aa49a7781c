#include "Platform/PrintTicket/TicketFixture.h"
#include "Support/Rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <prntvpt.h>

using namespace OvPlatform;
using namespace TicketFixture;
using testing::HasSubstr;

namespace {

// The problem with a ticket, or "".
std::string ProblemOf(const std::string& ticket) {
    static const PrintTicketMerge merge(Queue());
    try {
        merge.Merge(ticket, nullptr, kPTJobScope);
        return {};
    } catch (const PrintTicketError& error) {
        EXPECT_EQ(error.Result(), static_cast<HRESULT>(E_PRINTTICKET_FORMAT));
        return error.what();
    }
}

std::string Utf16(const std::string& ascii, bool bigEndian, bool mark) {
    std::string text;
    const auto put = [&](int unit) {
        const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
        text += bigEndian ? high : low;
        text += bigEndian ? low : high;
    };
    if (mark) put(0xFEFF);
    for (const char unit : ascii)
        put(unit);
    return text;
}

TEST(FrameworkCheck, SaysWhatIsWrongAndWhere) {
    const std::string root = std::string("<psf:PrintTicket ") + Declarations;
    const Rows<const char*, std::string, const char*> rows{
        {"empty", "", "the document is empty"},
        {"no XML", "ticket", "line 1, column 1: there is no XML here"},
        {"cut off", root.substr(0, 60), "not well-formed"},
        {"two roots", Ticket("") + "<x/>", "not well-formed"},
        {"wrong root", "<psf:PrintCapabilities " + std::string(Declarations) + "/>", "has to be PrintTicket"},
        {"root without namespace", "<PrintTicket version=\"1\"/>", "has to be PrintTicket"},
        {"no version",
         R"(<p:PrintTicket xmlns:p="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework"/>)",
         "version is missing"},
        {"version 2",
         R"(<p:PrintTicket version="2" xmlns:p="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework"/>)",
         "the version is '2'"},
        {"feature without a name", Ticket("\n<psf:Feature/>"),
         "line 2, /psf:PrintTicket/psf:Feature[1]: the attribute name is missing"},
        {"name without a prefix", Ticket("<psf:Feature name=\"PageOrientation\"/>"), "has no prefix"},
        {"prefix not declared", Ticket("<psf:Feature name=\"zz:PageOrientation\"/>"),
         "/psf:Feature[1](zz:PageOrientation): the prefix of the name 'zz:PageOrientation' is not declared"},
        {"prefix of an element not declared", Ticket("<zz:Feature/>"), "not well-formed"},
        {"option at the root", Ticket("<psf:Feature name=\"psk:A\"/><psf:Option/>"),
         "/psf:PrintTicket/psf:Option[1]: not allowed inside PrintTicket"},
        {"definition in a ticket", Ticket("<psf:ParameterDef name=\"psk:A\"/>"),
         "not allowed inside PrintTicket"},
        {"initialiser in a feature",
         Ticket("<psf:Feature name=\"psk:A\">" + Parameter("B", "1") + "</psf:Feature>"),
         "not allowed inside Feature"},
        {"unknown element", Ticket("<psf:Featured name=\"psk:A\"/>"), "has no element of this name"},
        {"two values",
         Ticket("<psf:ParameterInit "
                "name=\"psk:A\"><psf:Value>1</psf:Value><psf:Value>2</psf:Value></psf:ParameterInit>"),
         "(psk:A)/psf:Value[2]: only one Value is allowed"},
        {"no value", Ticket("<psf:ParameterInit name=\"psk:A\"/>"), "Value is missing"},
        {"value and reference",
         Ticket(Feature("A", "B",
                        "<psf:ScoredProperty name=\"psk:C\"><psf:Value/><psf:ParameterRef "
                        "name=\"psk:D\"/></psf:ScoredProperty>")),
         "only one ParameterRef or Value is allowed"},
        {"text between elements", Ticket("Landscape"), "text is not allowed here: 'Landscape'"},
        {"element in a value",
         Ticket("<psf:ParameterInit name=\"psk:A\"><psf:Value><b/></psf:Value></psf:ParameterInit>"),
         "a Value holds nothing but text"},
        {"type not declared", Ticket(Parameter("A", "1", "zz:integer")),
         "the prefix of the type 'zz:integer'"},
        {"QName not declared", Ticket(Parameter("A", "zz:B", "xsd:QName")), "the prefix of the value 'zz:B'"},
        {"document type", "<!DOCTYPE psf:PrintTicket [<!ENTITY n \"2\">]>" + Ticket(Parameter("A", "&n;")),
         "a document type (DTD) is not allowed"},
        {"entity from nowhere", Ticket(Parameter("A", "&n;")), "not well-formed"},
        {"encoding not allowed", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + Ticket(""),
         "only UTF-8 and UTF-16"},
        {"UTF-8 that says UTF-16", "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + Ticket(""), "UTF-16"},
        {"UTF-8 with a mark that says UTF-16",
         "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + Ticket(""), "UTF-16"},
        {"UTF-16 that says UTF-8",
         Utf16("<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + Ticket(""), false, true),
         "the encoding 'UTF-8' is declared, but the text is in UTF-16"},
        {"not UTF-8", Ticket(Parameter("A", "\xC3\x28", "xsd:string")), "not well-formed"},
    };
    for (const auto& [what, ticket, problem] : rows)
        EXPECT_THAT(ProblemOf(ticket), HasSubstr(problem)) << what;
}

TEST(FrameworkCheck, AllowsWhatTheFrameworkAllows) {
    const std::string plain = Ticket(Feature("PageOrientation", "Landscape"));
    const std::string declared = "<?xml version=\"1.0\" encoding=\"utf-16\"?>";
    const Rows<const char*, std::string> rows{
        {"byte-order mark", "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n" + plain},
        {"UTF-16, little end first", Utf16(declared + plain, false, true)},
        {"UTF-16, big end first", Utf16(declared + plain, true, true)},
        {"UTF-16 without a mark", Utf16(declared + plain, false, false)},
        {"foreign elements and attributes",
         Ticket(R"(<x:Note xmlns:x="urn:x" x:by="me">text<psf:Option/></x:Note>)" +
                Feature("PageOrientation", "Landscape"))},
        {"feature without an option",
         Ticket("<psf:Feature name=\"psk:PageMediaType\"/>" + Feature("PageOrientation", "Landscape"))},
        {"scored property without a value",
         Ticket(Feature("PageOrientation", "Landscape", "<psf:ScoredProperty name=\"psk:A\"/>"))},
    };
    for (const auto& [what, ticket] : rows) {
        EXPECT_EQ(ProblemOf(ticket), "") << what;
        EXPECT_EQ(EffectiveOf(PrintTicketMerge(Queue()).Merge(ticket, nullptr, kPTJobScope).ticket,
                              "PageOrientation"),
                  "Landscape")
            << what;
    }
}

std::string Nested(int features) {
    std::string open, close;
    for (int i = 0; i < features; ++i) {
        open += "<psf:Feature name=\"psk:PageA\">";
        close += "</psf:Feature>";
    }
    return Ticket(open + close);
}

TEST(FrameworkCheck, BoundsDepthAttributesAndText) {
    EXPECT_EQ(ProblemOf(Nested(9)), "");
    EXPECT_THAT(ProblemOf(Nested(10)), HasSubstr("more than 10 levels"));
    EXPECT_THAT(ProblemOf(Nested(100000)), HasSubstr("too deeply nested"));

    std::string attributes;
    for (int i = 0; i < 50000; ++i)
        attributes += " a" + std::to_string(i) + "=\">\"";
    EXPECT_THAT(ProblemOf(Ticket("<psf:Feature name=\"psk:A\"" + attributes + "/>")),
                HasSubstr("start tag is too long"));

    EXPECT_EQ(ProblemOf(Ticket(Parameter("JobA", std::string(9'000'000, 'x')))), "");
    EXPECT_THAT(ProblemOf(Ticket(Parameter("JobA", std::string(11'000'000, 'x')))), HasSubstr("huge text"));
}

// Every name looks its prefix up among the declarations in force.
TEST(FrameworkCheck, BoundsNamespaceDeclarations) {
    const auto declare = [](int count) {
        std::string declarations;
        for (int i = 0; i < count; ++i)
            declarations += " xmlns:n" + std::to_string(i) + "=\"urn:" + std::to_string(i) + "\"";
        return declarations;
    };
    const auto nested = [&](int outer, int inner) {
        return Ticket("<psf:Feature name=\"psk:A\"" + declare(outer) + ">" + "<x" + declare(inner) +
                      "/></psf:Feature>");
    };
    EXPECT_EQ(ProblemOf(nested(120, 120)), "");
    EXPECT_THAT(ProblemOf(nested(260, 0)), HasSubstr("line 1: more than 256 namespace declarations"));
    EXPECT_THAT(ProblemOf(nested(120, 140)), HasSubstr("more than 256 namespace declarations"));

    // One after the other they are no trouble.
    std::string features;
    for (int i = 0; i < 1000; ++i)
        features += "<psf:Feature name=\"n1:A\"" + declare(2) + "/>";
    EXPECT_EQ(ProblemOf(Ticket(features)), "");
}

TEST(FrameworkCheck, SaysWhichDocumentIsWrong) {
    const auto failureOf = [](const auto& call) -> std::pair<HRESULT, std::string> {
        try {
            call();
        } catch (const PrintTicketError& error) {
            return {error.Result(), error.what()};
        }
        return {S_OK, {}};
    };
    const std::string good = Ticket(""), bad = "<bad/>";
    const std::string_view badDelta = bad;
    const Rows<HRESULT, const char*, std::function<void()>> rows{
        {static_cast<HRESULT>(E_PRINTTICKET_FORMAT),
         "the base ticket: ", [&] { PrintTicketMerge(Queue()).Merge(bad, &badDelta, kPTJobScope); }},
        {static_cast<HRESULT>(E_DELTA_PRINTTICKET_FORMAT),
         "the delta ticket: ", [&] { PrintTicketMerge(Queue()).Merge(good, &badDelta, kPTJobScope); }},
        {static_cast<HRESULT>(E_PRINTTICKET_FORMAT),
         "the ticket: ", [&] { PrintTicketMerge(Queue()).Capabilities(&badDelta); }},
        {static_cast<HRESULT>(E_PRINTCAPABILITIES_FORMAT),
         "the queue's capabilities: ", [&] { PrintTicketMerge merge(Queue(bad)); }},
        {static_cast<HRESULT>(E_PRINTTICKET_FORMAT),
         "the queue's default ticket: ", [&] { PrintTicketMerge merge(Queue(PrinterCapabilities(), bad)); }},
        {static_cast<HRESULT>(E_PRINTCAPABILITIES_FORMAT), "constraint: there is no feature 'psk:PageColour'",
         [&] {
             PrintTicketMerge merge(Queue(Capabilities("<qc:Constraint><qc:Choice feature=\"psk:PageColour\" "
                                                       "options=\"psk:A\"/></qc:Constraint>")));
         }},
    };
    for (const auto& [wantedResult, name, call] : rows) {
        const auto [result, text] = failureOf(call);
        EXPECT_EQ(result, wantedResult) << name;
        EXPECT_THAT(text, HasSubstr(name));
    }
}

} // namespace
