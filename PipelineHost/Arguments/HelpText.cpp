#include "Arguments/HelpText.h"

#include "Arguments/CommandTable.h"
#include "Arguments/ProgramAccount.h"

#include <utf8coder.h>

#include <algorithm>
#include <sstream>
#include <utility>

namespace OvPipeline {

namespace {

constexpr std::size_t widestLabel = 24; // what a line's text begins behind, at most

// "name  text", with the text in a column of its own.
struct Item {
    std::string label;
    std::string text;
};

std::string Items(const std::vector<Item>& items, std::size_t width) {
    std::size_t column = 0;
    for (const Item& item : items)
        if (item.label.size() <= widestLabel) column = std::max(column, item.label.size());
    const std::string indent(column + 4, ' ');
    std::string text;
    for (const Item& item : items) {
        const std::string body = WrappedText(item.text, width, indent);
        std::string head = "  " + item.label;
        if (head.size() + 2 <= indent.size())
            text += head + body.substr(head.size());
        else
            text += head + "\n" + body;
    }
    return text;
}

std::string Label(const OptionRow& option) {
    std::string label = option.shortName != nullptr ? std::string(option.shortName) + ", " : std::string();
    label += option.name;
    if (option.HasValue()) label += " " + std::string(option.value);
    return label;
}

std::string Synopses(const CommandRow& command, const std::string& indent) {
    std::istringstream lines(command.synopses);
    std::string text;
    for (std::string line; std::getline(lines, line);)
        text.append(indent).append("ov-pipeline ").append(line).append("\n");
    return text;
}

std::string ProgramHelp(std::size_t width) {
    std::vector<Item> commands;
    for (const CommandRow& row : CommandRows())
        commands.push_back({row.name, row.summary});
    std::vector<Item> codes;
    for (const ExplainedName& code : ExitCodes())
        codes.push_back({code.name, code.meaning});
    return "ov-pipeline " + std::string(programSummary) + ".\n\n" +
           "  ov-pipeline COMMAND [OPTION...] [JOB.xps]\n"
           "  ov-pipeline COMMAND --help    says more of a command\n"
           "  ov-pipeline --version\n\n" +
           "Commands:\n" + Items(commands, width) + "\n" + WrappedText(argumentRules, width) +
           "\nExit codes:\n" + Items(codes, width);
}

} // namespace

std::string WrappedText(const std::string& text, std::size_t width, const std::string& indent) {
    const std::size_t room = width > indent.size() + 20 ? width - indent.size() : 20;
    std::string wrapped;
    std::string current; // a line that is being filled
    const auto end = [&] {
        if (!current.empty()) wrapped += indent + std::exchange(current, {}) + "\n";
    };
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line.front() == ' ') {
            end();
            wrapped += (line.empty() ? std::string() : indent + line) + "\n";
            continue;
        }
        std::istringstream words(line);
        for (std::string word; words >> word;) {
            using OvPlatform::Utf8::CountCharacters;
            if (!current.empty() && CountCharacters(current) + 1 + CountCharacters(word) > room) end();
            current += (current.empty() ? "" : " ") + word;
        }
    }
    end();
    return wrapped;
}

std::string HelpText(const std::string& command, std::size_t width) {
    const CommandRow* const row = FindCommand(command);
    if (row == nullptr) return ProgramHelp(width);
    std::vector<Item> options;
    for (const ShownOption& each : OptionsOf(*row))
        options.push_back({Label(*each.option), each.help});
    return Synopses(*row, "") + "\n" + WrappedText(row->description, width) + "\n" + Items(options, width);
}

} // namespace OvPipeline
