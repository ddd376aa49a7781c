// The device capabilities document: what it answers, and what it refuses.

#include "Support/InApartment.h"
#include "Support/Rows.h"
#include "Support/SkipOnWindows.h"

#include <Com/FaultInjection.h>
#include <DeviceDescription/SimpleOcapParser.h>
#include <LowLevelFacilities/Failures/CPComException.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

CPString document(const std::string& features, const std::string& version = "1.0") {
    return CPString("<DeviceCapabilities version=\"" + version + "\">" + features + "</DeviceCapabilities>");
}

class DeviceCapabilities : public InApartment<> {};

/// The message of the refusal; empty if the text is taken.
std::string refusalOf(const CPString& xml) {
    try {
        const SimpleOcapParser device(xml);
        return {};
    } catch (const CPComException& refused) {
        EXPECT_TRUE(FAILED(refused.GetHresult()));
        return refused.what();
    }
}

// The same name stands at all three places, each time as another feature.
TEST_F(DeviceCapabilities, TellPlacesApart) {
    const SimpleOcapParser device(
        document("<Integer name='weight' required='true' default='5' defaultSpecified='false'/>"
                 "<Collection name='media' opif='1'>"
                 "  <Collection name='cover'><Integer name='weight' default='-7'/><Text name='deep'/>"
                 "  </Collection>"
                 "  <Text name='weight'/>"
                 "</Collection>"));
    EXPECT_TRUE(device.IsCpssFeatureSupported("weight"));
    EXPECT_TRUE(device.IsCpssFeatureSupported("media", "weight"));
    EXPECT_TRUE(device.IsCpssFeatureSupported("media", "cover", "weight"));
    EXPECT_TRUE(device.IsCpssFeatureSupported("media", "cover", "deep"));
    EXPECT_FALSE(device.IsCpssFeatureSupported("deep"));
    EXPECT_FALSE(device.IsCpssFeatureSupported("media", "deep"));
    EXPECT_FALSE(device.IsCpssFeatureSupported("cover", "weight")) << "cover stands in media only";
    EXPECT_FALSE(device.IsCpssFeatureSupported("weight", "weight")) << "no collection";

    EXPECT_TRUE(device.IsCpssFeatureRequired("weight"));
    EXPECT_FALSE(device.IsCpssFeatureRequired("media"));
    EXPECT_TRUE(device.IsCpssFeatureOutputInOpif("media"));
    EXPECT_FALSE(device.IsCpssFeatureOutputInOpif("weight"));

    bool found = true;
    EXPECT_EQ(device.GetFactoryDefaultValueAsInteger("weight", found, true), 5) << "the top comes first";
    EXPECT_FALSE(found) << "given, but not specified";
    EXPECT_EQ(device.GetFactoryDefaultValueAsString("weight", found, false), "5");
    EXPECT_THAT(device.GetSupportedFeatureOrValuesFromOcap("media", true), ElementsAre("cover", "weight"));
    EXPECT_THAT(device.GetSupportedFeatureOrValuesFromOcap("media", false), IsEmpty());
}

TEST_F(DeviceCapabilities, GiveValuesAndDefaults) {
    const SimpleOcapParser device(
        document("<Option name='correction' default='Japan Color 2001 (Type1:Art) CMYK'>"
                 "  <Value name='Adobe RGB'/><Value name='adobe-rgb'/><Value name='&lt;&#x20AC;&gt;'/>"
                 "  <Value name='Japan Color 2001 (Type1:Art) CMYK'/></Option>"
                 "<Option name='tray' installable='true' default='4'><Value name='4'/></Option>"
                 "<Option name='booklet' installable='1'><Value name='installed'/></Option>"
                 "<Option name='bin' installable='false'><Value name='upper'/></Option>"
                 "<Collection name='media'><Integer name='weight' default='-2147483648' max='0'/>"
                 "  <Text name='note' default=' two  words '/></Collection>"
                 "<Text name='job-password' maxLength='10'/><Text name='endless'/>"));
    CXString factoryDefault(L"old");
    EXPECT_THAT(device.GetSupportedFeatureOrValuesFromOcap("correction", false, &factoryDefault),
                ElementsAre("Adobe RGB", "adobe-rgb", "<\xE2\x82\xAC>", "Japan Color 2001 (Type1:Art) CMYK"));
    EXPECT_EQ(factoryDefault, L"Japan Color 2001 (Type1:Art) CMYK");
    EXPECT_THAT(device.GetSupportedFeatureOrValuesFromOcap("weight", false, &factoryDefault), IsEmpty());
    EXPECT_TRUE(factoryDefault.IsEmpty());
    EXPECT_THAT(device.GetSupportedInstallableOptionFeaturesFromOcap(), ElementsAre(L"tray", L"booklet"));

    bool found = false;
    EXPECT_EQ(device.GetFactoryDefaultValueAsString("tray", found, false), "4");
    EXPECT_TRUE(found);
    EXPECT_EQ(device.GetFactoryDefaultValueAsInteger("tray", found, false), 0) << "an option has no integer";
    EXPECT_FALSE(found);
    EXPECT_EQ(device.GetFactoryDefaultValueAsInteger("weight", found, false), 0) << "not at the top";
    EXPECT_FALSE(found);
    EXPECT_EQ(device.GetFactoryDefaultValueAsInteger("weight", found, true),
              (std::numeric_limits<int>::min)());
    EXPECT_TRUE(found);
    EXPECT_EQ(device.GetFactoryDefaultValueAsString("note", found, true), " two  words ");
    EXPECT_EQ(device.GetFactoryDefaultValueAsString("booklet", found, false), "");
    EXPECT_FALSE(found);

    unsigned shortest = 77, longest = 77;
    EXPECT_FALSE(device.GetTextLengthRange("endless", shortest, longest));
    EXPECT_EQ(shortest, 77u);
    EXPECT_TRUE(device.GetTextLengthRange("job-password", shortest, longest));
    EXPECT_EQ(shortest, 0u);
    EXPECT_EQ(longest, 10u);
}

TEST_F(DeviceCapabilities, PassOverWhatIsNewerOrOfOthers) {
    const std::string ofOthers =
        "<m:Own xmlns:m='urn:maker'><Option/>text</m:Own><Text xmlns:m='urn:maker' m:unit='mm' name='a'/>";
    const std::string newer = "<Future><Deep/>text</Future><Text name='a' unit='mm'/>";
    EXPECT_EQ(refusalOf(document(ofOthers)), "");
    EXPECT_THAT(refusalOf(document(newer)), HasSubstr("<Future>"));
    EXPECT_EQ(refusalOf(document(newer, "1.1")), "");
    const SimpleOcapParser device(document(ofOthers + "<Text name='b'/>"));
    EXPECT_TRUE(device.IsCpssFeatureSupported("a") && device.IsCpssFeatureSupported("b"));

    const SimpleOcapParser blank(" \r\n\t");
    EXPECT_FALSE(blank.IsCpssFeatureSupported("a") || blank.IsCpssFeatureRequired("a"));
    EXPECT_THAT(blank.GetSupportedInstallableOptionFeaturesFromOcap(), IsEmpty());
    EXPECT_EQ(refusalOf("\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?>\r\n<!-- a mark -->"
                        "<DeviceCapabilities version='1.0'/>"),
              "");
}

TEST_F(DeviceCapabilities, RefuseInWords) {
    const auto optionWith = [](const std::string& attributes) {
        return document("<Option name='a' " + attributes + "><Value name='x'/></Option>");
    };
    const auto integerWith = [](const std::string& attributes) {
        return document("<Integer name='a' " + attributes + "/>");
    };
    std::string nested;
    for (int i = 0; i < 100'000; ++i)
        nested += nested.empty() ? "<x:x xmlns:x='urn:x'>" : "<x:x>";
    const Rows<CPString, const char*> rows{
        {"<DeviceCapabilities version='1.0'>\n<Option", "line 2"},
        {"<!DOCTYPE d [<!ENTITY e 'x'>]><DeviceCapabilities version='1.0'/>", "DTD"},
        {"<DeviceCapabilities xmlns='urn:d' version='1.0'/>", "the root"},
        {"<DeviceCapabilities/>", "no version"},
        {document("", "2.0"), "version 2.0"},
        {document("", "1"), "'1'"},
        {document("text"), "text"},
        {document("\n\n<Feature name='a'/>"), "line 3: the element <Feature>"},
        {document("<Value name='a'/>"), "<Value>"},
        {document("<Option name='a'><Value name='x'><Text name='y'/></Value></Option>"), "no feature"},
        {document("<Text/>"), "no name"},
        {document("<Text name=' a'/>"), "name"},
        {document("<Text name='a&#10;b'/>"), "name"},
        {document("<Text name='" + std::string(256, 'a') + "'/>"), "name"},
        {document("<Text name='a'/><Collection name='b'/><Integer name='a'/>"), "two features 'a'"},
        {document("<Option name='a'></Option>"), "no values"},
        {document("<Option name='a'><Value name='x'/><Value name='y'/><Value name='x'/></Option>"), "twice"},
        {optionWith("default='y'"), "'y'"},
        {optionWith("defaultSpecified='true'"), "has none"},
        {optionWith("requierd='true'"), "requierd"},
        {optionWith("required='yes'"), "'yes'"},
        {document("<Collection name='a'><Option name='b' installable='1'><Value name='x'/></Option>"
                  "</Collection>"),
         "installable"},
        {integerWith("default='1.5'"), "'1.5'"},
        {integerWith("default='2147483648'"), "2147483648"},
        {integerWith("default='11' max='10'"), "range"},
        {integerWith("min='2' max='1'"), "above"},
        {document("<Text name='a' minLength='1'/>"), "no maxLength"},
        {document("<Text name='a' minLength='5' maxLength='4'/>"), "above"},
        {document("<Collection name='a'><Collection name='b'><Collection name='c'><Text name='d'/>"
                  "</Collection></Collection></Collection>"),
         "more than 2 collections"},
        {document(nested), "nested"},
    };
    for (const auto& [xml, problem] : rows) {
        if (IsWine() && std::string_view(problem) == "DTD") continue; // it takes them
        EXPECT_THAT(refusalOf(xml), HasSubstr(problem)) << std::string(xml.view().substr(0, 300));
    }
}

TEST_F(DeviceCapabilities, MayBeOfTheLargestSize) {
    std::string features;
    for (int i = 0; i < 10'000; ++i)
        features += "<Text name='" + std::to_string(i) + "'/>";
    const std::string blanks((4u << 20) - document(features).view().size(), ' ');
    const CPString xml = document(features + blanks);
    const SimpleOcapParser device(xml);
    EXPECT_TRUE(device.IsCpssFeatureSupported("9999"));
    EXPECT_THAT(refusalOf(document(features + blanks + " ")), HasSubstr("bytes"));
    EXPECT_THAT(refusalOf(document(features + "<Text name='a'/>")), HasSubstr("10000 features"));
}

TEST_F(DeviceCapabilities, ReportEachFailureOfThePlatform) {
    const CPString xml =
        document("<Collection name='a'><Text name='b' xmlns:x='urn:x' x:y=''/></Collection>");
    OvPlatform::FaultInjection::CountCalls();
    EXPECT_EQ(refusalOf(xml), "");
    const LONG calls = OvPlatform::FaultInjection::CallCount();
    EXPECT_GT(calls, 5);
    for (LONG call = 1; call <= calls; ++call) {
        const OvPlatform::FaultInjectionScope scope(call, E_ACCESSDENIED);
        HRESULT result = S_OK;
        try {
            const SimpleOcapParser device(xml);
            EXPECT_TRUE(device.IsCpssFeatureSupported("a", "b"));
        } catch (const CPComException& failed) {
            result = failed.GetHresult();
        }
        // The line for a message is not what it is about.
        EXPECT_TRUE(result == E_ACCESSDENIED || result == S_OK)
            << "call " << call << ": " << std::hex << result;
    }
    OvPlatform::FaultInjection::Reset();
}

} // namespace
