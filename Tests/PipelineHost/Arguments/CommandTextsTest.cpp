// What is said of the commands: help, manual pages and completions come from one table.
#include <Arguments/CommandTable.h>
#include <Arguments/Completion.h>
#include <Arguments/HelpText.h>
#include <Arguments/ManualPage.h>
#include <Arguments/NearestName.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

using namespace OvPipeline;
using testing::HasSubstr;

namespace {

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// What a command prints.
std::string Heard(const std::string& command) {
    std::string text;
    FILE* const pipe = popen(command.c_str(), "r");
    char chunk[4096];
    while (const std::size_t count = fread(chunk, 1, sizeof chunk, pipe))
        text.append(chunk, count);
    return pclose(pipe) == 0 ? text : "failed: " + text;
}

TEST(CommandTexts, EveryOptionOfACommandIsExplainedWhereverItIsShown) {
    const std::string bash = BashCompletion();
    const std::string zsh = ZshCompletion();
    const std::string program = ManualPage({});
    for (const CommandRow& row : CommandRows()) {
        SCOPED_TRACE(row.name);
        const std::string help = HelpText(row.name, 100);
        const std::string page = ManualPage(row.name);
        EXPECT_THAT(bash, HasSubstr(std::string("\n    ") + row.name + ")\n"));
        EXPECT_THAT(zsh, HasSubstr(std::string("\n    ") + row.name + ")\n"));
        EXPECT_THAT(program, HasSubstr(std::string("\\fB") + row.name + "\\fR"));
        for (const ShownOption& each : OptionsOf(row)) {
            EXPECT_THAT(help, HasSubstr(each.option->name));
            EXPECT_THAT(page,
                        HasSubstr("\\fB" +
                                  std::regex_replace(std::string(each.option->name), std::regex("-"), "\\-") +
                                  "\\fR"));
            EXPECT_NE(nullptr, FindOption(row, each.option->name));
            EXPECT_FALSE(std::string_view(each.help).empty());
        }
    }
}

TEST(CommandTexts, HelpFitsTheWidthAndBreaksOnlyBetweenWords) {
    for (const std::size_t width : {60u, 80u, 200u})
        for (const CommandRow& row : CommandRows()) {
            std::string words; // without breaks and indents
            for (const std::string& line : LinesOf(HelpText(row.name, width))) {
                const bool isSynopsis = line.starts_with("ov-pipeline " + std::string(row.name));
                EXPECT_TRUE(isSynopsis || line.size() <= width) << line;
                std::istringstream stream(line);
                for (std::string word; stream >> word;)
                    words += word + " ";
            }
            for (const ShownOption& each : OptionsOf(row)) {
                std::string said;
                std::istringstream stream(each.help);
                for (std::string word; stream >> word;)
                    said += word + " ";
                EXPECT_THAT(words, HasSubstr(said));
            }
        }
}

TEST(CommandTexts, BashCompletesCommandsOptionsAndNames) {
    const auto complete = [](const std::string& typed) {
        const std::filesystem::path script =
            std::filesystem::temp_directory_path() / ("ov-completion-" + std::to_string(getpid()));
        std::ofstream(script) << BashCompletion();
        std::string answer = Heard(
            "bash -c 'source " + script.string() + "; COMP_WORDS=(" + typed +
            "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _ov_pipeline 2>/dev/null; echo ${COMPREPLY[@]}'");
        std::filesystem::remove(script);
        return answer;
    };
    EXPECT_EQ("ticket translate\n", complete("ov-pipeline t"));
    EXPECT_EQ("--ticket --title\n", complete("ov-pipeline run --ti"));
    EXPECT_EQ("Merlin MerlinPCL6\n", complete("ov-pipeline header --family M"));
    EXPECT_EQ("stamp\n", complete("ov-pipeline help st"));
}

TEST(NearestName, FindsWhatWasMistypedAndNothingFarther) {
    const std::vector<std::string> names{"ticket", "features", "--pages", "--page", "run"};
    const std::pair<const char*, const char*> cases[] = {{"tikcet", "ticket"},
                                                         {"feature", "features"},
                                                         {"--pgaes", "--pages"},
                                                         {"rnu", "run"}, // two letters swapped are one slip
                                                         {"rbb", ""},
                                                         {"tcikte", "ticket"},
                                                         {"tbbbet", ""},
                                                         {"print", ""},
                                                         {"", ""},
                                                         {"x", ""}};
    for (const auto& [typed, meant] : cases)
        EXPECT_EQ(meant, NearestName(typed, names)) << typed;
    EXPECT_EQ("", NearestName(std::string(100'000, 'p'), names));
}

} // namespace
