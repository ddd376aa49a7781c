#include "Platform/PrintTicket/TicketFixture.h"
#include "Support/Growth.h"
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
    std::string text = !mark ? "" : bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char unit : ascii)
        text += bigEndian ? std::string{'\0', unit} : std::string{unit, '\0'};
    return text;
}

TEST(FrameworkCheck, SaysWhatIsWrongAndWhere) {
    const std::string framework =
        R"(<p:PrintTicket xmlns:p="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework")";
    const Rows<const char*, std::string, const char*> rows{
        {"empty", "", "the document is empty"},
        {"no XML", "ticket", "line 1, column 1: there is no XML here"},
        {"two roots", Ticket("") + "<x/>", "not well-formed"},
        {"wrong root", "<psf:PrintCapabilities " + std::string(usualDeclarations) + "/>",
         "has to be PrintTicket"},
        {"no version", framework + "/>", "version is missing"},
        {"version 2", framework + " version=\"2\"/>", "the version is '2'"},
        {"feature without a name", Ticket("\n<psf:Feature/>"),
         "line 2, /psf:PrintTicket/psf:Feature[1]: the attribute name is missing"},
        {"name without a prefix", Ticket("<psf:Feature name=\"PageOrientation\"/>"), "has no prefix"},
        {"prefix not declared", Ticket("<psf:Feature name=\"zz:PageOrientation\"/>"),
         "/psf:Feature[1](zz:PageOrientation): the prefix of the name 'zz:PageOrientation' is not declared"},
        {"option at the root", Ticket("<psf:Feature name=\"psk:A\"/><psf:Option/>"),
         "/psf:PrintTicket/psf:Option[1]: not allowed inside PrintTicket"},
        {"initialiser in a feature",
         Ticket("<psf:Feature name=\"psk:A\">" + Parameter("B", "1") + "</psf:Feature>"),
         "not allowed inside Feature"},
        {"unknown element", Ticket("<psf:Featured name=\"psk:A\"/>"), "has no element of this name"},
        {"two values", Ticket(Parameter("A", "1</psf:Value><psf:Value>2")),
         "(psk:A)/psf:Value[2]: only one Value is allowed"},
        {"no value", Ticket("<psf:ParameterInit name=\"psk:A\"/>"), "Value is missing"},
        {"value and reference",
         Ticket(Feature("A", "B",
                        "<psf:ScoredProperty name=\"psk:C\"><psf:Value/><psf:ParameterRef "
                        "name=\"psk:D\"/></psf:ScoredProperty>")),
         "only one ParameterRef or Value is allowed"},
        {"text between elements", Ticket("Landscape"), "text is not allowed here: 'Landscape'"},
        {"element in a value", Ticket(Parameter("A", "<b/>")), "a Value holds nothing but text"},
        {"type not declared", Ticket(Parameter("A", "1", "zz:integer")),
         "the prefix of the type 'zz:integer'"},
        {"QName not declared", Ticket(Parameter("A", "zz:B", "xsd:QName")), "the prefix of the value 'zz:B'"},
        {"document type", "<!DOCTYPE psf:PrintTicket [<!ENTITY n \"2\">]>" + Ticket(Parameter("A", "&n;")),
         "a document type (DTD) is not allowed"},
        {"encoding not allowed", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + Ticket(""),
         "only UTF-8 and UTF-16"},
        {"UTF-8 that says UTF-16", "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + Ticket(""), "UTF-16"},
        {"UTF-16 that says UTF-8",
         Utf16("<?xml version=\"1.0\" encoding=\"UTF-8\"?>" + Ticket(""), false, true),
         "the encoding 'UTF-8' is declared, but the text is in UTF-16"},
    };
    for (const auto& [what, ticket, problem] : rows)
        EXPECT_THAT(ProblemOf(ticket), HasSubstr(problem)) << what;
}

TEST(FrameworkCheck, AllowsWhatTheFrameworkAllows) {
    const std::string plain = Ticket(Feature("PageOrientation", "Landscape"));
    const std::string declared = "<?xml version=\"1.0\" encoding=\"utf-16\"?>";
    const Rows<const char*, std::string> rows{
        {"UTF-16, little end first", Utf16(declared + plain, false, true)},
        {"UTF-16, big end first", Utf16(declared + plain, true, true)},
        {"UTF-16 without a mark", Utf16(declared + plain, false, false)},
        {"foreign elements and attributes",
         Ticket(R"(<x:Note xmlns:x="urn:x" x:by="me">text<psf:Option/></x:Note>)" +
                Feature("PageOrientation", "Landscape"))},
        {"feature without an option",
         Ticket("<psf:Feature name=\"psk:PageMediaType\"/>" + Feature("PageOrientation", "Landscape"))},
    };
    for (const auto& [what, ticket] : rows) {
        EXPECT_EQ(ProblemOf(ticket), "") << what;
        EXPECT_EQ(EffectiveOf(PrintTicketMerge(Queue()).Merge(ticket, nullptr, kPTJobScope).ticket,
                              "PageOrientation"),
                  "Landscape")
            << what;
    }
}

std::string Nested(std::size_t features) {
    return Ticket(Times(features, [](std::size_t) { return "<psf:Feature name=\"psk:PageA\">"; }) +
                  Times(features, [](std::size_t) { return "</psf:Feature>"; }));
}

TEST(FrameworkCheck, BoundsDepthAttributesAndText) {
    EXPECT_EQ(ProblemOf(Nested(9)), "");
    EXPECT_THAT(ProblemOf(Nested(10)), HasSubstr("more than 10 levels"));
    EXPECT_THAT(ProblemOf(Nested(100000)), HasSubstr("too deeply nested"));

    const std::string attributes =
        Times(50'000, [](std::size_t i) { return " a" + std::to_string(i) + "=\">\""; });
    EXPECT_THAT(ProblemOf(Ticket("<psf:Feature name=\"psk:A\"" + attributes + "/>")),
                HasSubstr("start tag is too long"));

    EXPECT_EQ(ProblemOf(Ticket(Parameter("JobA", std::string(9'000'000, 'x')))), "");
    EXPECT_EQ(ProblemOf(Ticket(Parameter("JobA", "<![CDATA[" + std::string(900'000, '<') + "]]>"))), "");
    EXPECT_THAT(ProblemOf(Ticket(Parameter("JobA", std::string(11'000'000, 'x')))), HasSubstr("huge text"));
}

// Every name looks its prefix up among the declarations in force.
TEST(FrameworkCheck, BoundsNamespaceDeclarations) {
    const auto declare = [](std::size_t count) {
        return Times(count, [](std::size_t i) { return " xmlns:n" + std::to_string(i) + "=\"urn:x\""; });
    };
    const auto nested = [&](std::size_t outer, std::size_t inner) {
        return Ticket("<psf:Feature name=\"psk:A\"" + declare(outer) + ">" + "<x" + declare(inner) +
                      "/></psf:Feature>");
    };
    EXPECT_EQ(ProblemOf(nested(120, 120)), "");
    EXPECT_THAT(ProblemOf(nested(260, 0)), HasSubstr("line 1: more than 256 namespace declarations"));
    EXPECT_THAT(ProblemOf(nested(120, 140)), HasSubstr("more than 256 namespace declarations"));

    // One after the other they are no trouble.
    const auto feature = [&](std::size_t) { return "<psf:Feature name=\"n1:A\"" + declare(2) + "/>"; };
    EXPECT_EQ(ProblemOf(Ticket(Times(1000, feature))), "");
}

TEST(FrameworkCheck, SaysWhichDocumentOfAQueueIsWrong) {
    const std::string unknown = Capabilities(
        "<qc:Constraint><qc:Choice feature=\"psk:PageColour\" options=\"psk:A\"/></qc:Constraint>");
    const Rows<std::shared_ptr<const QueueFolder>, HRESULT, const char*> rows{
        {Queue("<bad/>"), static_cast<HRESULT>(E_PRINTCAPABILITIES_FORMAT), "the queue's capabilities: "},
        {Queue(PrinterCapabilities(), "<bad/>"), static_cast<HRESULT>(E_PRINTTICKET_FORMAT),
         "the queue's default ticket: "},
        {Queue(unknown), static_cast<HRESULT>(E_PRINTCAPABILITIES_FORMAT),
         "constraint: there is no feature 'psk:PageColour'"},
    };
    for (const auto& [queue, result, text] : rows) {
        try {
            const PrintTicketMerge merge(queue);
            ADD_FAILURE() << text;
        } catch (const PrintTicketError& error) {
            EXPECT_EQ(error.Result(), result) << text;
            EXPECT_THAT(error.what(), HasSubstr(text));
        }
    }
}

} // namespace
