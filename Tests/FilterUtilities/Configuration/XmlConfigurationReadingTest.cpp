#include "Support/ConfiguredQueue.h"
#include "Support/InApartment.h"
#include "Support/ReportRecorder.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <Configuration/XmlConfigurationReading.h>
#include <Xml/MicrosoftXmlParser.h>

#include <gtest/gtest.h>

namespace {

using XmlConfigurationReadingTest = InApartment<>;
using Reading = XmlConfigurationReading;

std::string Repeat(std::size_t n, const std::string& text) {
    std::string repeated;
    while (n-- > 0)
        repeated += text;
    return repeated;
}

// The elements by name and what became of them, then the fault and its line.
std::string Told(const Reading& reading) {
    constexpr const char* outcomes[] = {"taken", "repeated", "unknown", "faulty", "lost"};
    std::string told;
    for (const auto& [name, outcome] : reading.GetElements())
        told += std::string(name.view()) + " " + outcomes[static_cast<std::size_t>(outcome)] + "; ";
    if (const auto& fault = reading.GetFault())
        told += std::string(fault->message.view()) + " in " + std::to_string(fault->line);
    return told;
}

TEST_F(XmlConfigurationReadingTest, TellsWhatBecameOfEachElementAndWhereItStopped) {
    const std::string staple = ConfiguredFeature("Staple", "None");
    const Rows<std::string, std::string> configurations{
        {"", ""},
        {"<c/>", ""},
        {"<any>" + staple + "</any>", "Staple taken; "},
        {"<c><!-- x --> <?pi x?>\n<ModelName>M</ModelName><UID/>" + staple +
             "<Feature Name='Color'> <!-- x --><Setting Name='x'/><Foo/></Feature></c>",
         "Staple taken; Color taken; "},
        {"<c><Feature Name='Nobody'><Setting Name='x'/></Feature>" + staple + staple + "</c>",
         "Nobody unknown; Staple taken; Staple repeated; "},
        {"<c>" + staple + "<Foo>\n<Setting/></Foo>" + staple + "<UID/><Bar/>" + "</c>",
         "Staple taken; <Foo> faulty; Staple lost; <Bar> lost; "
         "Encountered <Foo> element when expecting a <Feature> element in 1"},
        {"<c>\n<UID><UID/></UID>\n<Feature>\n<Setting Name='1'/></Feature>" + staple + "</c>",
         "<Feature> faulty; Staple lost; Encountered a <Feature> element without a Name attribute in 3"},
        {"<c>\n" + staple + "\n<Feature Name='Color'\n>\n\n</Feature></c>",
         "Staple taken; Color faulty; Missing <Setting> element. in 4"},
        {"<c>\n<Feature Name='Color'><!-- \n -->\n<Foo/></Feature></c>",
         "Color faulty; Expected a <Setting> element but found <Foo> in 4"},
        {"<c>\n<Feature Name='Color'>\n<Setting name='x'/></Feature></c>",
         "Color faulty; Encountered a <Setting> element without a Name attribute in 3"},
        {"<c>\n<Feature Name='Nobody'>\n<Setting Name='x' Behavior='default'/></Feature></c>",
         "Nobody faulty; Invalid Behavior attribute value 'default' in 3"},
        // Neither what stands inside an element that is passed over, nor inside the faulty one, is its place.
        {"<c>" + staple + "<ModelName>M</ModelName>\n<Foo>\n<x/></Foo></c>",
         "Staple taken; <Foo> faulty; Encountered <Foo> element when expecting a <Feature> element in 2"},
        {"<c>" + staple + "\ntext</c>",
         "Staple taken; <#text> faulty; Encountered <#text> element when expecting a <Feature> element in 2"},
        {"<c><Feature Name='Color'>text<Setting Name='x'/></Feature></c>",
         "Color faulty; Expected a <Setting> element but found <#text> in 1"},
        {"<c><x:Feature xmlns:x='u' Name='Color'/></c>",
         "<x:Feature> faulty; Encountered <x:Feature> element when expecting a <Feature> element in 1"},
    };
    for (const auto& [xml, expected] : configurations)
        EXPECT_EQ(Told(Reading(CPString(xml.c_str()))), expected) << xml;
}

TEST_F(XmlConfigurationReadingTest, WhatIsNoXmlHoldsNothing) {
    const std::string staple = ConfiguredFeature("Staple", "None");
    const Rows<std::string, int> texts{
        // and the line of the fault
        {"no XML", 1},
        {"<c>\n" + staple + "\n<Feature></c>", 3},
        {"<!DOCTYPE c [<!ENTITY e 'x'>]>\n<c>" + staple + "</c>", 1},
        {Repeat(100'000, "<a>") + Repeat(100'000, "</a>"), 1},
        {"<c>\n" + std::string("\x01") + "</c>", 2},
    };
    const bool isWine = IsWine(); // takes documents with a DTD, and does not always say where a text is wrong
    for (const auto& [xml, line] : texts) {
        if (isWine && xml.starts_with("<!DOCTYPE")) continue;
        const Reading reading{CPString(xml.c_str())};
        const std::string start = xml.substr(0, 60);
        EXPECT_TRUE(reading.GetFeatures().empty() && reading.GetElements().empty()) << start;
        ASSERT_TRUE(reading.GetFault()) << start;
        EXPECT_FALSE(reading.GetFault()->isInContent) << start;
        EXPECT_FALSE(reading.GetFault()->message.isEmpty()) << start;
        EXPECT_TRUE(isWine || reading.GetFault()->line == line) << start << reading.GetFault()->line;
    }
}

TEST_F(XmlConfigurationReadingTest, TheSetIsTheHeadOfABrokenConfigurationWithOneReport) {
    struct Integrator : SourceDataIntegratorInterfaces {
        void AddSourceData(const CXString& fileName, const CPString& text) override {
            given += std::string(CPString(fileName).view()) + ": " + std::string(text.view());
        }
        std::string given;
    };
    const std::string head = ConfiguredFeature("Staple", "None") + ConfiguredFeature("Color", "x") +
                             ConfiguredFeature("DraftMode", "x");
    const std::string unknownFault = "Unknown exception occurred";
    const Rows<std::string, std::size_t, std::string> configurations{
        {"", 0, ""},
        {"<c>" + head + "</c>", 3, ""},
        {"<c>" + head + "<Foo/>" + ConfiguredFeature("Outlines", "x") + "</c>", 3,
         "Encountered <Foo> element when expecting a <Feature> element"},
        {"<c>" + head, 0, unknownFault},
    };
    for (const auto& [xml, members, fault] : configurations) {
        const ReportRecorder recorder;
        ConfiguredQueue queue(xml);
        Integrator integrator;
        const NativeXmlConfigurationFeatureSet set(integrator, queue);
        EXPECT_EQ(set.NumberOfFeatures(), members) << xml;
        EXPECT_EQ(NativeXmlConfigurationFeatureSet(set).NumberOfFeatures(), members);
        const bool isXml = !xml.empty() && fault != unknownFault;
        EXPECT_EQ(integrator.given, isXml ? "Input_XML_Configuration.xml: " + xml : "");
        ASSERT_EQ(ReportRecorder::reports().size(), fault.empty() ? 0u : 1u) << xml;
        if (fault.empty()) continue;
        EXPECT_EQ(ReportRecorder::reports()[0].text, fault);
        EXPECT_EQ(ReportRecorder::reports()[0].caption, "Error Parsing XML Configuration Data");
        ReportRecorder::reports().clear();
        EXPECT_EQ(NativeXmlConfigurationFeatureSet(queue).NumberOfFeatures(), members);
        EXPECT_EQ(ReportRecorder::reports().size(), 1u);
    }
}

} // namespace
