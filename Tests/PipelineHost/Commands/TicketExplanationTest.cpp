#include "Support/TicketText.h"

#include <ComSupport/MsSafeCoinit.h>
#include <Commands/TicketExplanation.h>
#include <Report/FilterWords.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OvPipeline;
using testing::HasSubstr;
using testing::Not;

namespace {

TicketExplanation Explanation(const char* queue) {
    return TicketExplanation(
        OvPlatform::QueueFolder::Load(std::string(OV_SOURCE_DIR) + "/Samples/Queues/" + queue));
}

void Add(TicketExplanation& explanation, const char* level, EPrintTicketScope scope,
         const std::string& elements) {
    const std::string ticket = TicketText(elements);
    explanation.Add(level, scope, &ticket);
}

std::string Custom(int width, int height) {
    const auto scored = [](const char* name, int value) {
        return std::string("<psf:ScoredProperty name=\"psk:") + name +
               "\"><psf:Value xsi:type=\"xsd:integer\">" + std::to_string(value) +
               "</psf:Value></psf:ScoredProperty>";
    };
    return "<psf:Feature name=\"psk:PageMediaSize\"><psf:Option name=\"psk:CustomMediaSize\">" +
           scored("MediaSizeWidth", width) + scored("MediaSizeHeight", height) +
           "</psf:Option></psf:Feature>";
}

struct Expected {
    const char* setting;
    const char* value;
    const char* origin;
    const char* remark = ""; // a part of it
};

void ExpectRows(const TicketExplanation& explanation, const std::vector<Expected>& expected) {
    const auto rows = explanation.Rows();
    for (const Expected& one : expected) {
        const auto row = std::find_if(rows.begin(), rows.end(),
                                      [&](const auto& other) { return other.setting == one.setting; });
        ASSERT_NE(row, rows.end()) << one.setting;
        EXPECT_EQ(row->value, one.value) << one.setting;
        EXPECT_EQ(row->origin, one.origin) << one.setting;
        EXPECT_EQ(row->remark.empty(), !*one.remark) << one.setting << ": " << row->remark;
        EXPECT_THAT(row->remark, HasSubstr(one.remark)) << one.setting;
    }
}

TEST(TicketExplanation, NamesTheLevelThatEachValueComesFrom) {
    TicketExplanation explanation = Explanation("MonoOffice");
    Add(explanation, "job", kPTJobScope,
        Choice("psk:PageOrientation", "psk:Landscape") + Choice("psk:PageOutputColor", "psk:Color") +
            Choice("psk:PageInputBin", "psk:AutoSelect") + Choice("psk:JobNonsense", "psk:On"));
    ExpectRows(explanation, {{"psk:PageOrientation", "psk:Landscape", "job"},
                             {"psk:PageMediaSize", "psk:ISOA4", "default"},
                             {"psk:JobNonsense", "", "changed by validation", "psk:On was asked for"}});

    Add(explanation, "page", kPTPageScope,
        Choice("psk:PageOrientation", "psk:Portrait") + Custom(150000, 200000));
    ExpectRows(explanation,
               {{"psk:PageOrientation", "psk:Portrait", "page"},
                {"psk:PageMediaSize", "psk:CustomMediaSize", "page"},
                {"psk:PageMediaSizeMediaSizeWidth", "150000", "page"},
                {"psk:PageInputBin", "psk:AutoSelect", "job"},
                {"psk:PageOutputColor", "psk:Monochrome", "changed by validation", "psk:Color was asked for"},
                {"psk:PageMediaType", "psk:Plain", "default"}});
    for (const auto& row : explanation.Rows())
        EXPECT_TRUE(row.setting.starts_with("psk:Page") || row.setting.starts_with("ok:Page")) << row.setting;
}

TEST(TicketExplanation, IsATableThatFitsAScreen) {
    TicketExplanation explanation = Explanation("ColorOffice");
    const std::string snapshot(3000, 'Q');
    Add(explanation, "job", kPTJobScope,
        "<psf:Feature name=\"psk:DocumentNUp\"><psf:Option><psf:ScoredProperty "
        "name=\"psk:PagesPerSheet\"><psf:Value "
        "xsi:type=\"xsd:integer\">4</psf:Value></psf:ScoredProperty></psf:Option></psf:Feature>");
    auto rows = explanation.Rows();
    rows.push_back({"ok:PageDevmodeSnapshot", snapshot, "page", {}});
    rows.push_back({"ok:PageNote", std::string(31, 'n') + std::string(40, '\n'), "page", {}});
    const std::string table = FormatExplanation(rows);

    EXPECT_THAT(table, HasSubstr("\npsk:DocumentNUp "));
    EXPECT_THAT(table, HasSubstr("\n  psk:PresentationDirection "));
    EXPECT_THAT(table, Not(HasSubstr(std::string(40, 'Q'))));
    EXPECT_THAT(table, HasSubstr("QQ... (2952 more) ...QQ"));
    EXPECT_THAT(table, HasSubstr("n... (32 more) ...\\n\\n"));

    std::size_t column = table.find("from"); // of the heading
    for (std::size_t line = 0; line + 1 < table.size(); line = table.find('\n', line) + 1)
        EXPECT_THAT(table.substr(line + column - 2, 3), testing::MatchesRegex("  [a-z]"))
            << table.substr(line, table.find('\n', line) - line);
}

TEST(TicketExplanation, NamesThePolicyWhereItOverruledTheTickets) {
    const MsSafeCoInit apartment;
    constexpr auto duplex = "psk:JobDuplexAllDocumentsContiguously";
    TicketExplanation explanation = Explanation("ColorOffice");
    const auto add = [&](const char* level, EPrintTicketScope scope, const char* sides) {
        Add(explanation, level, scope, Choice(duplex, sides));
    };
    explanation.Add("job", kPTJobScope, nullptr); // obeyed without a ticket too
    const char* const remark = "psk:OneSided was asked for: the administrator's 2-SidedPrinting is "
                               "\"TwoSidedAny\" (EnforcedDefault)";
    ExpectRows(explanation, {{duplex, "psk:TwoSidedLongEdge", "policy", remark}});

    explanation = Explanation("ColorOffice");
    add("job", kPTJobScope, "psk:OneSided");
    ExpectRows(explanation,
               {{duplex, "psk:TwoSidedLongEdge", "policy", remark},
                {"ok:JobIdentification", "ok:JobIdPrintFirstPage", "policy", "ok:JobIdOff was asked for"},
                {"psk:JobNUpAllDocumentsContiguously", "(psk:PagesPerSheet=1)", "default"}});
    EXPECT_NE(explanation.Ticket().find("psk:TwoSidedLongEdge"), std::string::npos);

    // What obeys is the job's own.
    explanation = Explanation("ColorOffice");
    add("job", kPTJobScope, "psk:TwoSidedShortEdge");
    ExpectRows(explanation, {{duplex, "psk:TwoSidedShortEdge", "job"}});
    const FilterWords words;
    Explanation("ColorOffice");
    EXPECT_THAT(words.Heard(), testing::IsEmpty());
    Explanation("MonoOffice");
    EXPECT_THAT(words.Heard(), testing::ElementsAre(HasSubstr("enforcedSetting")));
}

} // namespace
