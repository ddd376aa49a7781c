// The names of features and values, by the program's command in this process.
#include "PipelineHost/Commands/CommandRun.h"

#include <Commands/NameTranslation.h>
#include <DataModel/NativeXmlConfigCpssOptionValueDictionary.h>
#include <DataModel/NativeXmlConfigOptionValueDictionary.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace DataModelIds;
using namespace OvPipeline;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

// Without the widths of columns: one space between cells.
struct Translation : CommandRun {
    explicit Translation(std::vector<std::string> arguments)
        : CommandRun((arguments.insert(arguments.begin(), "translate"), arguments)) {
        const auto isSecond = [](char left, char right) { return left == ' ' && right == ' '; };
        out.erase(std::unique(out.begin(), out.end(), isSecond), out.end());
    }
};

TEST(TranslateCommandTest, AFeatureIsFoundByEachOfItsNamesAndListsItsValues) {
    for (const char* const name : {"SIDES", "2-SidedPrinting", "psk:JobDuplexAllDocumentsContiguously",
                                   "DataModelIds::FEAT_SIDES_IMAGED", "41"}) {
        const Translation result({name});
        EXPECT_EQ(ExitOk, result.code) << name;
        EXPECT_THAT(Lines(result.out),
                    ElementsAre("FEAT_SIDES_IMAGED", " number 41",
                                " ticket name JobDuplexAllDocumentsContiguously",
                                " configuration name 2-SidedPrinting", " CPSS name sides",
                                " kind option of the document; the ticket tells whether it is supported", "",
                                " number value ticket name configuration name CPSS name",
                                " 5420 VAL_SIDES_ONE_SIDED OneSided OneSided one-sided",
                                " 5421 VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE TwoSidedLongEdge TwoSidedLongEdge "
                                "two-sided-long-edge",
                                " 5422 VAL_SIDES_TWO_SIDED_FLIP_SHORT_EDGE TwoSidedShortEdge "
                                "TwoSidedShortEdge two-sided-short-edge",
                                " 5423 VAL_SIDES_TWO_SIDED_ANY _TwoSidedAny_ TwoSidedAny -"))
            << name;
    }
}

TEST(TranslateCommandTest, AValueIsFoundByEachOfItsNames) {
    for (const char* const name : {"5421", "VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE", "twosidedlongedge"})
        EXPECT_EQ(Translation({name}).out,
                  "number value feature ticket name configuration name CPSS name\n"
                  "5421 VAL_SIDES_TWO_SIDED_FLIP_LONG_EDGE FEAT_SIDES_IMAGED TwoSidedLongEdge "
                  "TwoSidedLongEdge two-sided-long-edge\n")
            << name;
    // A number may be a name; names may hold spaces and colons; old configurations have names of their own; a
    // size is in the ticket what the table of media sizes says.
    const std::pair<const char*, const char*> others[] = {
        {"2", "7241 VAL_PAGE_LAYOUT_NUP_2 FEAT_PAGE_LAYOUT 2 2 2-up"},
        {"Japan Color 2001 (Type2:Matte) CMYK",
         " FEAT_DISPLAY_COLOR_CORRECTION - - Japan Color 2001 (Type2:"},
        {"psk:ISOA4", "6436 VAL_MEDIA_SIZE_OPTIONS_A4_210X297 FEAT_APPLICATION_MEDIA_SIZE_OPTION ISOA4 - -"},
    };
    for (const auto& [name, words] : others) {
        const std::vector<std::string> lines = Lines(Translation({name}).out);
        EXPECT_THAT(lines, testing::Contains(HasSubstr(words))) << name;
    }
}

TEST(TranslateCommandTest, EverythingThatHasTheNameIsShownUnlessAFeatureIsNamed) {
    EXPECT_THAT(Translation({"JobStapleAllDocuments"}).out,
                AllOf(HasSubstr("FEAT_FINISHING_STAPLE\n"), HasSubstr("\nFEAT_FINISHING_2_STAPLES\n")));
    EXPECT_LT(5u, Lines(Translation({"none"}).out).size());
    EXPECT_THAT(Lines(Translation({"none", "--feature", "job-type-api"}).out),
                ElementsAre(StartsWith("number"), "7904 VAL_JOB_TYPE_NONE FEAT_JOB_TYPE - - none"));
    // A collection shows its members, and a member its collection.
    EXPECT_THAT(Translation({"media-col"}).out, HasSubstr("FEAT_INPUT_TRAY"));
    EXPECT_THAT(Lines(Translation({"FEAT_INPUT_TRAY"}).out), testing::Contains(" part of FEAT_MEDIA_COL"));
    // An identifier without names is still one.
    EXPECT_THAT(Lines(Translation({"90030"}).out), testing::Contains("FEAT_SAVE_NAME"));
}

TEST(TranslateCommandTest, JsonHoldsTheSame) {
    EXPECT_EQ(R"({
  "features": [],
  "values": [
    {
      "number": 5423,
      "value": "VAL_SIDES_TWO_SIDED_ANY",
      "feature": "FEAT_SIDES_IMAGED",
      "cpssName": null,
      "configurationName": "TwoSidedAny",
      "ticketName": "_TwoSidedAny_"
    }
  ]
}
)",
              CommandRun({"translate", "--json", "TwoSidedAny"}).out);
    EXPECT_THAT(Translation({"PageOutputColor", "--json"}).out,
                AllOf(HasSubstr(R"("number": 105)"), HasSubstr(R"("supportKnownBy": "ticket")"),
                      HasSubstr(R"("cpssName": "monochrome-grayscale")")));
}

TEST(TranslateCommandTest, WhatIsNotFoundIsOneLine) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{":"}, "ov-pipeline: there is no feature and no value \":\""},
        {{"SIDES_IM"}, "\"SIDES_IM\"; similar: FEAT_SIDES_IMAGED\n"},
        {{"--feature", "side", "x"}, "ov-pipeline: there is no feature \"side\"; similar: "},
        {{"--feature", "sides", "none"},
         "ov-pipeline: FEAT_SIDES_IMAGED has no value \"none\"; its values: "},
    };
    for (const auto& [arguments, words] : cases) {
        const Translation result(arguments);
        EXPECT_EQ(1, result.code);
        EXPECT_EQ("", result.out);
        EXPECT_THAT(result.errors, HasSubstr(words));
        EXPECT_EQ(1, std::count(result.errors.begin(), result.errors.end(), '\n'));
    }
    for (const auto& arguments :
         std::vector<std::vector<std::string>>{{}, {""}, {"a", "b"}, {"a", "--queue", "b"}})
        EXPECT_EQ(ExitUsage, Translation(arguments).code);
}

// What is found by a name of an entry must hold that entry: none is lost or put to another value.
TEST(NameTranslationTest, EveryEntryOfTheDictionariesIsFoundByItsNames) {
    const NameTranslation names;
    const auto expectFound = [&](const std::string& name, tagFeatureEnum feature, tagValueEnum value,
                                 std::string NameTranslation::Value::*world) {
        const auto found = names.FindValues(name);
        EXPECT_EQ(1, std::count_if(found.begin(), found.end(),
                                   [&](const NameTranslation::Value* one) {
                                       return one->feature == feature && one->number == value &&
                                              one->*world == name && one->enumerator.starts_with("VAL_");
                                   }))
            << name;
    };
    using Value = NameTranslation::Value;
    std::vector<const NativeXmlConfigOptionValueEntry*> options;
    NativeXmlConfigOptionValueDictionary::Instance()->GetAllEntries(options);
    for (const auto* const one : options) {
        expectFound(one->xmlConfigOptionName.utf8Bytes(), one->feature, one->value,
                    &Value::configurationName);
        expectFound(one->printTicketOptionName.utf8Bytes(), one->feature, one->value, &Value::ticketName);
    }
    std::vector<const NativeXmlConfigCpssOptionValueEntry*> cpssOptions;
    NativeXmlConfigCpssOptionValueDictionary::Instance()->GetAllEntries(cpssOptions);
    for (const auto* const one : cpssOptions)
        expectFound(one->cpssOptionName.utf8Bytes(), one->feature, one->value, &Value::cpssName);
}

} // namespace
