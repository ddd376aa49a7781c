#include "Arguments/Completion.h"

#include "Arguments/CommandTable.h"

#include <DeviceControl/DeviceFamily.h>

namespace OvPipeline {

namespace {

std::string Families() {
    std::string names;
    for (const DeviceFamily& family : DeviceFamilies())
        names += (names.empty() ? "" : " ") + std::string(family.name);
    return names;
}

std::string Commands() {
    std::string names;
    for (const CommandRow& row : CommandRows())
        names += (names.empty() ? "" : " ") + std::string(row.name);
    return names;
}

// The action that completes such a word in bash; $word is what is there of it.
const char* BashAction(Naming naming) {
    switch (naming) {
    case Naming::Job:
        return "_ov_pipeline_files 'xps|oxps|XPS|OXPS'";
    case Naming::Ticket:
        return "_ov_pipeline_files 'xps|oxps|XPS|OXPS|xml'";
    case Naming::Module:
        return "_ov_pipeline_files 'so|dll|xps|oxps'";
    case Naming::File:
        return "_ov_pipeline_files ''";
    case Naming::Folder:
        return "COMPREPLY=($(compgen -d -- \"$word\"))";
    case Naming::Family:
        return "COMPREPLY=($(compgen -W \"$families\" -- \"$word\"))";
    case Naming::Command:
        return "COMPREPLY=($(compgen -W \"$commands\" -- \"$word\"))";
    case Naming::Nothing:
        break;
    }
    return "COMPREPLY=()";
}

const char* ZshAction(Naming naming) {
    switch (naming) {
    case Naming::Job:
        return "_files -g \"*.(xps|oxps)\"";
    case Naming::Ticket:
        return "_files -g \"*.(xps|oxps|xml)\"";
    case Naming::Module:
        return "_files -g \"*.(so|dll)\"";
    case Naming::File:
        return "_files";
    case Naming::Folder:
        return "_files -/";
    case Naming::Family:
        return "($families)";
    case Naming::Command:
        return "($commands)";
    case Naming::Nothing:
        break;
    }
    return "";
}

// For a word between single quotes, inside the brackets of an option's description.
std::string ZshText(std::string_view text) {
    std::string quoted;
    for (const char c : text)
        if (c == '\'')
            quoted += "'\\''";
        else if (c == '[' || c == ']' || c == ':' || c == '\\')
            quoted.append(1, '\\').append(1, c);
        else
            quoted += c;
    return quoted;
}

std::string ZshOption(const ShownOption& shown) {
    const OptionRow& option = *shown.option;
    const std::string description =
        "[" +
        ZshText(std::string_view(shown.help).substr(0, std::string_view(shown.help).find_first_of(".;:"))) +
        "]";
    const std::string value =
        option.HasValue() ? ":" + ZshText(option.value) + ":" + ZshAction(option.naming) : std::string();
    const char* const repeats =
        std::holds_alternative<std::vector<std::string> CommandOptions::*>(option.place) ? "*" : "";
    std::string text;
    if (option.shortName != nullptr)
        text += std::string(" \\\n            '") + option.shortName + description + value + "'";
    return text + " \\\n            '" + repeats + option.name + description + value + "'";
}

} // namespace

std::string BashCompletion() {
    std::string text = R"sh(# Completion of ov-pipeline for bash.

_ov_pipeline_files() { # endings that files have to have
    local IFS=$'\n'
    compopt -o filenames 2>/dev/null
    COMPREPLY=($(compgen -d -- "$word"))
    if [ -n "$1" ]; then
        shopt -q extglob && COMPREPLY+=($(compgen -f -X "!*.@($1)" -- "$word"))
        shopt -q extglob || COMPREPLY+=($(compgen -f -- "$word"))
    else
        COMPREPLY+=($(compgen -f -- "$word"))
    fi
}

_ov_pipeline() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command= options=
    local commands=')sh" +
                       Commands() + R"sh(' families=')sh" + Families() + R"sh('
    [ "$COMP_CWORD" -gt 1 ] && command=${COMP_WORDS[1]}
    COMPREPLY=()
    case $before in
)sh";
    for (const OptionRow& option : OptionRows()) {
        if (!option.HasValue()) continue;
        text += "    ";
        if (option.shortName != nullptr) text += std::string(option.shortName) + "|";
        text += std::string(option.name) + ") " + BashAction(option.naming) + "; return ;;\n";
    }
    text += "    esac\n    case $command in\n    '') COMPREPLY=($(compgen -W \"$commands --help --version\" "
            "-- \"$word\")); return ;;\n";
    for (const CommandRow& row : CommandRows()) {
        std::string options;
        for (const ShownOption& each : OptionsOf(row))
            options += (options.empty() ? "" : " ") + std::string(each.option->name);
        text += std::string("    ") + row.name + ")\n        options='" + options +
                "'\n        [[ $word == -* ]] || " + BashAction(row.operand.naming) + " ;;\n";
    }
    return text + R"sh(    esac
    if [[ $word == -* ]]; then COMPREPLY=($(compgen -W "$options" -- "$word")); fi
}
complete -F _ov_pipeline ov-pipeline
)sh";
}

std::string ZshCompletion() {
    std::string text =
        "#compdef ov-pipeline\n# Completion of ov-pipeline for zsh.\n\n_ov-pipeline() {\n    local -a "
        "commands families\n"
        "    commands=(" +
        Commands() + ")\n    families=(" + Families() +
        ")\n    if (( CURRENT == 2 )); then\n        local -a described\n        described=(\n";
    for (const CommandRow& row : CommandRows())
        text += std::string("            '") + row.name + ":" + ZshText(row.summary) + "'\n";
    text += "        )\n        _describe command described\n        return\n    fi\n    local "
            "command=$words[2]\n    shift words\n    (( CURRENT-- ))\n    case $command in\n";
    for (const CommandRow& row : CommandRows()) {
        text += std::string("    ") + row.name + ")\n        _arguments -s";
        for (const ShownOption& each : OptionsOf(row))
            text += ZshOption(each);
        if (row.operand.word != nullptr)
            text += " \\\n            '*:" + ZshText(row.operand.word) + ":" + ZshAction(row.operand.naming) +
                    "'";
        text += " ;;\n";
    }
    return text + "    esac\n}\n\n_ov-pipeline \"$@\"\n";
}

} // namespace OvPipeline
