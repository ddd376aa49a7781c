// What the page on JSON says of the commands, held against what they print.
#include "CommandRun.h"
#include "Support/SampleJob.h"

#include <Arguments/CommandTable.h>

#include <gmock/gmock.h>

#include <regex>
#include <set>

using namespace OvPipeline;

namespace {

std::set<std::string> Matches(const std::string& text, const std::string& pattern) {
    std::set<std::string> found;
    const std::regex expression(pattern);
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        found.insert((*match)[1]);
    return found;
}

// The part of the page under a heading.
std::string Section(const std::string& page, const std::string& heading) {
    const std::size_t start = page.find("\n## " + heading + "\n");
    if (start == std::string::npos) return {};
    return page.substr(start, page.find("\n## ", start + 1) - start);
}

class JsonSchemaTest : public InOwnFolder {};

TEST_F(JsonSchemaTest, EveryMemberThatACommandPrintsIsExplained) {
    SampleJob job;
    job.pageTicket = SampleTicket("PageOrientation", "Landscape");
    job.Write("job.xps");
    job.jobTicket = SampleTicket("PageOutputColor", "Grayscale");
    job.Write("other.xps");
    const std::map<std::string, std::vector<std::vector<std::string>>> calls{
        {"run", {{"job.xps"}, {"missing.xps"}, {"job.xps", "other.xps", "missing.xps"}}},
        {"ticket", {{"job.xps"}}},
        {"features", {{"job.xps"}}},
        {"settings", {{"job.xps"}}},
        {"annotations", {{"job.xps"}}},
        {"header", {{"job.xps"}, {"job.xps", "--why"}}},
        {"parts", {{"job.xps"}}},
        {"policy", {{}}},
        {"queue", {{"ColorOffice"}}},
        {"capabilities", {{}}},
        {"diff", {{"job.xps", "other.xps"}}},
        {"translate", {{"PageOutputColor"}, {"5421"}}}};
    const std::string page = TemporaryFolder::Read(OV_SOURCE_DIR "/docs/json.md");
    for (const CommandRow& row : CommandRows()) {
        if (FindOption(row, "--json") == nullptr) continue;
        SCOPED_TRACE(row.name);
        const std::string section = Section(page, row.name);
        ASSERT_NE("", section);
        const std::set<std::string> explained = Matches(section, "`([A-Za-z]+)`");
        const auto found = calls.find(row.name);
        ASSERT_NE(calls.end(), found) << "no call of this command is tried";
        for (std::vector<std::string> arguments : found->second) {
            arguments.insert(arguments.begin(), {row.name, "--json"});
            const CommandRun result(arguments);
            const std::set<std::string> printed = Matches(result.out, "\"([A-Za-z]+)\": ");
            EXPECT_FALSE(printed.empty()) << result.errors;
            for (const std::string& member : printed)
                EXPECT_TRUE(explained.contains(member)) << member;
        }
    }
}

} // namespace
