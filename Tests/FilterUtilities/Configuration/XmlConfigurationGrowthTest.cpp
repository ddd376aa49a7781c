#include "Support/ConfiguredQueue.h"
#include "Support/Growth.h"
#include "Support/InApartment.h"

#include <Configuration/XmlConfigurationReading.h>

#include <gtest/gtest.h>

namespace {

std::string Repeat(std::size_t n, const std::string& text) {
    return Times(n, [&](std::size_t) { return text; });
}

const GrowthCase growthCases[] = {
    {"Features",
     [](std::size_t n) {
         const std::string xml =
             "<c>" + Repeat(n, ConfiguredFeature("Nobody", "x") + "<!-- --><UID/>\n") + "</c>";
         return [text = CPString(xml.c_str())] { XmlConfigurationReading reading(text); };
     }},
    {"LostFeatures",
     [](std::size_t n) {
         const std::string xml =
             "<c>" + Repeat(n, ConfiguredFeature("Staple", "x")) + "<Foo/>" + Repeat(n, "<Bar/>") + "</c>";
         return [text = CPString(xml.c_str())] { XmlConfigurationReading reading(text); };
     }},
    {"LongNamesAndComments",
     [](std::size_t n) {
         const std::string xml = "<c><Feature Name='" + std::string(n, 'n') + "'>" + Repeat(n, "<!---->") +
                                 "<Setting Name='" + std::string(n, 'v') + "' Behavior='" +
                                 std::string(n, 'b') + "'/></Feature></c>";
         return [text = CPString(xml.c_str())] { XmlConfigurationReading reading(text); };
     }},
};

class XmlConfigurationGrowthTest : public InApartment<testing::TestWithParam<GrowthCase>> {};
TEST_P(XmlConfigurationGrowthTest, IsLinear) { ExpectLinearGrowth(GetParam()); }
INSTANTIATE_TEST_SUITE_P(All, XmlConfigurationGrowthTest, testing::ValuesIn(growthCases), GrowthName);

} // namespace
