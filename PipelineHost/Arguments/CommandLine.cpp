#include "Arguments/CommandLine.h"

#include "Arguments/CommandTable.h"
#include "Arguments/NearestName.h"
#include "Common/Text.h"

#include <charconv>
#include <filesystem>
#include <set>

namespace OvPipeline {

namespace {

constexpr unsigned long mostAtATime = 256;
constexpr unsigned long mostCopies = 999'999'999;

// Behind --filter stand modules and the job. What is called like a job, or like an output, is no module.
bool IsCalledLikeAJob(const std::string& argument) {
    const std::string extension = LowerAscii(std::filesystem::path(argument).extension().string());
    return argument == standardStream || extension == ".xps" || extension == ".oxps" || extension == ".prn";
}

std::string SuggestionFor(const std::string& name, const std::vector<std::string>& known) {
    const std::string nearest = NearestName(name, known);
    return nearest.empty() ? std::string() : "; is it " + nearest + "?";
}

class Parser {
public:
    CommandOptions Read(const std::vector<std::string>& arguments) {
        m_next = arguments.begin();
        m_end = arguments.end();
        while (m_next != m_end)
            Take(*m_next++);
        if (m_row == nullptr && !m_options.wantsHelp && !m_options.wantsVersion)
            throw UsageError("which command? " + AllCommands());
        if (m_options.command == "help") TakeHelp();
        if (!m_options.wantsHelp && !m_options.wantsVersion) Complete();
        return std::move(m_options);
    }

private:
    void Take(const std::string& argument) {
        if (m_isBehindOptions)
            m_options.operands.push_back(argument);
        else if (argument == "--version")
            m_options.wantsVersion = true;
        else if (argument == "--help" || argument == "-h")
            m_options.wantsHelp = true;
        else if (m_row == nullptr)
            TakeCommand(argument);
        else if (argument == "--")
            m_isBehindOptions = true;
        else if (argument.size() > 1 && argument[0] == '-')
            TakeOption(argument);
        else if (m_isBehindFilter && !IsCalledLikeAJob(argument)) {
            m_options.filters.push_back(argument);
            m_lastModule = m_options.filters.size();
        } else
            m_options.operands.push_back(argument);
    }

    void TakeCommand(const std::string& name) {
        m_row = FindCommand(name);
        if (m_row == nullptr) {
            std::vector<std::string> known;
            for (const CommandRow& row : CommandRows())
                known.emplace_back(row.name);
            throw UsageError(name.starts_with('-')
                                 ? "a command comes before the option " + name
                                 : "there is no command " + name + SuggestionFor(name, known));
        }
        m_options.command = name;
    }

    // --opt value, --opt=value, -o value, -ovalue.
    void TakeOption(const std::string& argument) {
        std::string name = argument;
        std::optional<std::string> value;
        if (const std::size_t equals = argument.find('=');
            argument.starts_with("--") && equals != std::string::npos) {
            name.resize(equals);
            value = argument.substr(equals + 1);
        } else if (!argument.starts_with("--") && argument.size() > 2) {
            name.resize(2);
            value = argument.substr(2);
        }
        const OptionRow* const option = FindOption(*m_row, name);
        if (option == nullptr) RefuseOption(name);
        if (!option->HasValue() && value) throw UsageError(name + " takes no value");
        if (option->HasValue() && !value) {
            if (m_next == m_end) throw UsageError(name + " wants a value");
            value = *m_next++;
        }
        Set(*option, name, std::move(value));
        m_isBehindFilter = std::string_view(option->name) == "--filter";
    }

    [[noreturn]] void RefuseOption(const std::string& name) const {
        std::vector<std::string> known;
        for (const ShownOption& each : OptionsOf(*m_row))
            known.emplace_back(each.option->name);
        throw UsageError("ov-pipeline " + m_options.command + " has no option " + name +
                         SuggestionFor(name, known));
    }

    void Set(const OptionRow& option, const std::string& name, std::optional<std::string> value) {
        if (value && value->empty()) throw UsageError(name + " is given an empty value");
        std::visit(
            [&](auto place) {
                auto& target = m_options.*place;
                using Target = std::remove_reference_t<decltype(target)>;
                if constexpr (std::is_same_v<Target, bool>) {
                    target = true;
                } else if constexpr (std::is_same_v<Target, std::vector<std::string>>) {
                    target.push_back(std::move(*value));
                } else {
                    if (!m_given.insert(option.name).second) throw UsageError(name + " is given twice");
                    if constexpr (std::is_same_v<Target, std::string>)
                        target = std::move(*value);
                    else if constexpr (std::is_same_v<Target, PageRanges>)
                        target = Ranges(name, *value);
                    else
                        target = Number(name, *value);
                }
            },
            option.place);
    }

    static unsigned long Number(const std::string& option, const std::string& text) {
        unsigned long number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || number == 0)
            throw UsageError(option + " wants a number from 1, not \"" + text + "\"");
        return number;
    }

    static PageRanges Ranges(const std::string& option, const std::string& text) {
        try {
            return PageRanges(text);
        } catch (const std::invalid_argument& error) {
            throw UsageError(option + ": " + error.what());
        }
    }

    static std::string AllCommands() {
        std::string text;
        for (const CommandRow& row : CommandRows())
            text += (text.empty()                    ? ""
                     : &row == &CommandRows().back() ? " or "
                                                     : ", ") +
                    std::string(row.name);
        return text + "?";
    }

    void TakeHelp() {
        RequireOperands();
        m_options.wantsHelp = true;
        m_options.command.clear();
        if (m_options.operands.empty()) return;
        const std::string& name = m_options.operands.front();
        m_row = nullptr;
        TakeCommand(name);
    }

    // What is asked of the whole, once all is read.
    void Complete() {
        // The last of all is the job; until one more came, it could have been a module.
        if (m_options.operands.empty() && m_lastModule > 0) {
            const auto job = m_options.filters.begin() + static_cast<std::ptrdiff_t>(m_lastModule) - 1;
            m_options.operands.push_back(std::move(*job));
            m_options.filters.erase(job);
        }
        RequireOperands();
        RequireAgreement();
        if (m_options.operands.empty()) return;
        const std::string& first = m_options.operands.front();
        if (m_row->operand.naming == Naming::Folder)
            m_options.queue = first;
        else if (m_row->operand.naming != Naming::Nothing)
            m_options.job = std::filesystem::path(first);
    }

    void RequireOperands() const {
        const OperandRow& wanted = m_row->operand;
        const auto& given = m_options.operands;
        for (const std::string& each : given)
            if (each.empty()) throw UsageError(Which());
        if (!m_options.devmode.empty()) {
            if (!given.empty() || m_options.explain || m_options.json || !m_options.ticket.empty() ||
                m_options.copies || m_options.document || m_options.page)
                throw UsageError("--devmode stands for a job: it goes with --queue alone");
        } else if (given.size() < wanted.fewest)
            throw UsageError(Which());
        else if (wanted.most > 0 && given.size() > wanted.most)
            throw UsageError("one " + std::string(wanted.kind) + " at a time: " + given[wanted.most - 1] +
                             " or " + given[wanted.most] + "?");
        else if (wanted.word == nullptr && !given.empty())
            throw UsageError("ov-pipeline " + m_options.command + " takes no " + given.front());
    }

    std::string Which() const {
        return "which " + std::string(m_row->operand.kind) + "? ov-pipeline " + m_row->name + " wants " +
               m_row->operand.what;
    }

    void RequireAgreement() const {
        if (!m_options.config.empty() && !m_options.filters.empty())
            throw UsageError("--config and --filter exclude each other");
        if (!m_options.family.empty() && m_options.all)
            throw UsageError("--family and --all exclude each other");
        if (!m_options.pages.AreAll() && (m_options.page || m_options.document))
            throw UsageError("--pages excludes --page and --document");
        if (m_options.command == "policy" && !m_options.operands.empty() && !m_options.queue.empty())
            throw UsageError("a file and --queue exclude each other");
        if (m_options.parallel.value_or(1) > mostAtATime)
            throw UsageError("--jobs goes up to " + std::to_string(mostAtATime));
        if (m_options.copies.value_or(1) > mostCopies)
            throw UsageError("--copies goes up to " + std::to_string(mostCopies));
    }

    CommandOptions m_options;
    const CommandRow* m_row = nullptr;
    std::vector<std::string>::const_iterator m_next;
    std::vector<std::string>::const_iterator m_end;
    std::set<std::string_view> m_given;
    bool m_isBehindOptions = false;
    bool m_isBehindFilter = false; // operands there are further modules, but for the last
    std::size_t m_lastModule = 0;  // of those, counted from 1
};

} // namespace

CommandOptions ParseCommandLine(const std::vector<std::string>& arguments) {
    return Parser().Read(arguments);
}

} // namespace OvPipeline
