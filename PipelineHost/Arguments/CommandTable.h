#pragma once

#include "Arguments/CommandOptions.h"

#include <span>
#include <string_view>
#include <variant>

namespace OvPipeline {

/// What a value or an operand names, for those who complete what is typed.
enum class Naming { Nothing, Job, Ticket, File, Folder, Module, Family, Command };

/// An option, the same for all commands that know it.
struct OptionRow {
    using Place = std::variant<bool CommandOptions::*, std::string CommandOptions::*,
                               std::vector<std::string> CommandOptions::*,
                               std::optional<unsigned long> CommandOptions::*, PageRanges CommandOptions::*>;

    const char* name;      // "--output"
    const char* shortName; // "-o"; null for none
    const char* value;     // "OUT"; null where the option stands alone
    Naming naming;         // of the value
    Place place;
    const char* help; // what it is, where a command does not say it in its own words

    bool HasValue() const { return value != nullptr; }
};

/// What a command says of an option that it knows.
struct KnownOption {
    const char* name;
    const char* help = nullptr; // null: as the option's row has it
};

/// What stands behind a command that belongs to no option.
struct OperandRow {
    const char* word = nullptr; // "JOB.xps"; null: there is none
    Naming naming = Naming::Nothing;
    const char* kind = ""; // "job": which job?
    const char* what = ""; // "an XPS file": the command wants one
    std::size_t fewest = 0;
    std::size_t most = 0; // 0: as many as there are
};

struct CommandRow {
    const char* name;
    const char* summary;  // one line, without a period
    const char* synopses; // one in a line, without the program's name
    /// Paragraphs, an empty line between them. A line that begins with a blank stands as it is; others are
    /// filled.
    const char* description;
    OperandRow operand;
    std::span<const KnownOption> options;
};

/// The one account of what can be asked of the program: what is read, what help says, and what manual pages
/// and completions are made of.
std::span<const CommandRow> CommandRows();
/// Null for a name that is none.
const CommandRow* FindCommand(std::string_view name);

std::span<const OptionRow> OptionRows();
/// By its long or its short name; null where the command does not know it.
const OptionRow* FindOption(const CommandRow& command, std::string_view name);
/// In the command's order, those that every command knows behind its own. help is never null.
struct ShownOption {
    const OptionRow* option;
    const char* help;
};
std::vector<ShownOption> OptionsOf(const CommandRow& command);

} // namespace OvPipeline
