// What two tickets say differently, however they write it.
#include "Support/Rows.h"

#include <Comparison/TicketComparison.h>
#include <PrintTicket/SchemaFormatError.h>

#include <gmock/gmock.h>

using namespace OvPipeline;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::string Ticket(const std::string& content) {
    return R"(<psf:PrintTicket version="1")"
           R"( xmlns:psf="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework")"
           R"( xmlns:psk="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords")"
           R"( xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance")"
           R"( xmlns:xsd="http://www.w3.org/2001/XMLSchema" xmlns:p="urn:private">)" +
           content + "</psf:PrintTicket>";
}

std::string Value(const std::string& type, const std::string& text) {
    return "<psf:Value xsi:type=\"xsd:" + type + "\">" + text + "</psf:Value>";
}

std::string Copies(const std::string& value) {
    return "<psf:ParameterInit name=\"psk:Copies\">" + value + "</psf:ParameterInit>";
}

std::string Feature(const std::string& name, const std::string& content) {
    return "<psf:Feature name=\"" + name + "\">" + content + "</psf:Feature>";
}

std::string Option(const std::string& name, const std::string& content = {}) {
    return "<psf:Option name=\"" + name + "\">" + content + "</psf:Option>";
}

std::string Scored(const std::string& name, const std::string& value) {
    return "<psf:ScoredProperty name=\"" + name + "\">" + value + "</psf:ScoredProperty>";
}

// Each as "what: a -> b", with a - for what one has not got.
std::vector<std::string> Differences(const std::string& a, const std::string& b) {
    using Change = DifferenceReport::Change;
    DifferenceReport report("print ticket");
    CompareTickets(ComparedTicket::Read(a), ComparedTicket::Read(b), report);
    std::vector<std::string> lines;
    for (const auto& group : report.Groups())
        for (const auto& each : group.differences)
            lines.push_back(each.what + ": " + (each.change == Change::OnlyInB ? "-" : each.a) + " -> " +
                            (each.change == Change::OnlyInA ? "-" : each.b));
    return lines;
}

TEST(TicketComparison, WhatIsWrittenOtherwiseIsTheSame) {
    const std::string a = Ticket(Feature("psk:PageA", Option("psk:X") + Option("p:Y")) +
                                 Feature("p:PageB", Option("p:X")) + Copies(Value("integer", "2")));
    const std::string b =
        R"(<?xml version="1.0"?><PrintTicket version="1"
            xmlns="http://schemas.microsoft.com/windows/2003/08/printing/printschemaframework"
            xmlns:k="http://schemas.microsoft.com/windows/2003/08/printing/printschemakeywords"
            xmlns:psk="urn:private" xmlns:f="urn:foreign" f:mark="1">
            <!-- --> <f:Extra/>
            <ParameterInit name="k:Copies"><Value> +02 </Value></ParameterInit>
            <Feature name="psk:PageB"> <Option name="psk:X"/> </Feature>
            <Feature name="k:PageA"><Option name="psk:Y"/><Option name="k:X"/></Feature>
            <Feature name="k:PageA"><Option name="k:Repeated"/></Feature></PrintTicket>)";
    EXPECT_THAT(Differences(a, b), IsEmpty());
}

TEST(TicketComparison, TellsEachSettingByItsName) {
    const auto size = [](const char* width) { return Scored("psk:Width", Value("integer", width)); };
    const Rows<std::string, std::string, std::vector<std::string>> rows{
        {Feature("psk:A", Option("psk:X")), Feature("psk:A", Option("p:X")), {"psk:A: psk:X -> p:X"}},
        {Feature("psk:A", Option("psk:X")), "", {"psk:A: psk:X -> -"}},
        {"", Feature("psk:A", ""), {"psk:A: - -> (no option)"}},
        // What an option brings along is told with it.
        {Feature("psk:A", Option("psk:X")),
         Feature("psk:A", Option("psk:Custom", size("7"))),
         {"psk:A: psk:X -> psk:Custom (psk:Width=7)"}},
        {Feature("psk:A", Option("psk:X", size("7"))),
         Feature("psk:A", Option("psk:X", size("8"))),
         {"psk:A / psk:X / psk:Width: 7 -> 8"}},
        {Feature("psk:A", Option("psk:X", Scored("psk:Width", "<psf:ParameterRef name=\"psk:W\"/>"))),
         Feature("psk:A", Option("psk:X", Scored("psk:Width", "<psf:ParameterRef name=\"p:W\"/>"))),
         {"psk:A / psk:X / psk:Width: psk:W -> p:W"}},
        {Feature("psk:A", "<psf:Option>" + size("7") + "</psf:Option>"),
         Feature("psk:A", "<psf:Option>" + size("9") + "</psf:Option>"),
         {"psk:A: (psk:Width=7) -> (psk:Width=9)"}},
        {Feature("psk:A", Option("psk:X") + Feature("psk:N", Option("psk:Y"))),
         Feature("psk:A", Option("psk:X") + Feature("psk:N", Option("psk:Z"))),
         {"psk:A / psk:N: psk:Y -> psk:Z"}},
        {"<psf:Property name=\"p:P\"><psf:Property name=\"p:Q\">" + Value("string", "a") +
             "</psf:Property></psf:Property>",
         "<psf:Property name=\"p:P\"><psf:Property name=\"p:Q\">" + Value("string", "A") +
             "</psf:Property></psf:Property>",
         {"p:P / p:Q: a -> A"}},
    };
    for (const auto& [a, b, lines] : rows)
        EXPECT_EQ(lines, Differences(Ticket(a), Ticket(b))) << a << "\n" << b;
}

TEST(TicketComparison, ValuesAreComparedByWhatTheyMean) {
    const Rows<std::string, std::string, bool> rows{
        {Value("integer", "5"), Value("string", "5"), true},
        {Value("decimal", "5.50"), Value("decimal", "05.5"), true},
        {Value("integer", "-0"), Value("integer", "0"), true},
        {Value("integer", "10"), Value("integer", "100"), false},
        {Value("string", "05"), Value("string", "5"), false},
        {Value("string", " a"), Value("string", "a"), false},
        {Value("QName", "psk:On"), Value("QName", "p:On"), false},
        {Value("QName", "psk:On"), Value("string", "psk:On"), false},
    };
    for (const auto& [a, b, isSame] : rows)
        EXPECT_EQ(isSame, Differences(Ticket(Copies(a)), Ticket(Copies(b))).empty()) << a << " " << b;
}

TEST(TicketComparison, RefusesWhatIsNoTicket) {
    EXPECT_THROW(ComparedTicket::Read("<PrintTicket/>"), OvPlatform::SchemaFormatError);
    EXPECT_THROW(ComparedTicket::Read(Ticket("<psf:Option name=\"psk:X\"/>")), OvPlatform::SchemaFormatError);
}

} // namespace
