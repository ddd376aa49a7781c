#include "Arguments/ManualPage.h"

#include "Arguments/CommandTable.h"
#include "Arguments/ProgramAccount.h"

#include <sstream>

namespace OvPipeline {

namespace {

// Text that is no request, with hyphens that can be copied.
std::string Plain(std::string_view text) {
    std::string plain;
    if (text.starts_with('.') || text.starts_with('\'')) plain += "\\&";
    for (const char c : text)
        if (c == '\\')
            plain += "\\e";
        else if (c == '-')
            plain += "\\-";
        else
            plain += c;
    return plain;
}

class Page {
public:
    Page(const std::string& title, const std::string& summary) {
        m_text = ".TH " + Upper(title) + " 1 \"\" \"ov-pipeline " OV_VERSION "\" \"ov-pipeline\"\n";
        Section("NAME");
        Line(Plain(title) + " \\- " + Plain(summary));
    }

    void Section(const char* name) { Line(std::string(".SH ") + name); }
    void Paragraphs(const std::string& text) {
        std::istringstream lines(text);
        bool isAsItStands = false;
        for (std::string line; std::getline(lines, line);) {
            const bool wasAsItStands = isAsItStands;
            isAsItStands = line.starts_with(' ');
            if (isAsItStands != wasAsItStands) Line(isAsItStands ? ".nf" : ".fi");
            Line(line.empty() ? ".PP" : Plain(line));
        }
        if (isAsItStands) Line(".fi");
    }
    void Tagged(const std::string& tag, const std::string& text) {
        Line(".TP");
        Line(tag);
        Line(Plain(text));
    }
    void Line(const std::string& line) { m_text += line + "\n"; }
    void Named(const char* section, std::span<const ExplainedName> names) {
        Section(section);
        for (const ExplainedName& each : names)
            Tagged("\\fB" + Plain(each.name) + "\\fR", each.meaning);
    }

    const std::string& Text() const { return m_text; }

private:
    static std::string Upper(std::string text) {
        for (char& c : text)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        return text;
    }

    std::string m_text;
};

std::string Tag(const OptionRow& option) {
    std::string tag;
    if (option.shortName != nullptr) tag = "\\fB" + Plain(option.shortName) + "\\fR, ";
    tag += "\\fB" + Plain(option.name) + "\\fR";
    if (option.HasValue()) tag += " \\fI" + Plain(option.value) + "\\fR";
    return tag;
}

std::string PageOfCommand(const CommandRow& command) {
    Page page(std::string("ov-pipeline-") + command.name, command.summary);
    page.Section("SYNOPSIS");
    std::istringstream synopses(command.synopses);
    page.Line(".nf");
    for (std::string line; std::getline(synopses, line);)
        page.Line("\\fBov\\-pipeline\\fR " + Plain(line));
    page.Line(".fi");
    page.Section("DESCRIPTION");
    page.Paragraphs(command.description);
    page.Section("OPTIONS");
    for (const ShownOption& each : OptionsOf(command))
        page.Tagged(Tag(*each.option), each.help);
    page.Named("EXIT STATUS", ExitCodes());
    page.Named("ENVIRONMENT", EnvironmentVariables());
    page.Section("SEE ALSO");
    page.Line(".BR ov\\-pipeline (1)");
    return page.Text();
}

std::string PageOfProgram() {
    Page page("ov-pipeline", programSummary);
    page.Section("SYNOPSIS");
    page.Line("\\fBov\\-pipeline\\fR \\fICOMMAND\\fR [\\fIOPTION\\fR...] [\\fIJOB.xps\\fR]");
    page.Section("DESCRIPTION");
    page.Paragraphs(programDescription);
    page.Line(".PP");
    page.Paragraphs(argumentRules);
    page.Section("COMMANDS");
    for (const CommandRow& row : CommandRows())
        page.Tagged("\\fB" + Plain(row.name) + "\\fR", row.summary);
    page.Named("EXIT STATUS", ExitCodes());
    page.Named("ENVIRONMENT", EnvironmentVariables());
    page.Section("SEE ALSO");
    std::string others;
    for (const CommandRow& row : CommandRows())
        if (std::string_view(row.name) != "help")
            others += (others.empty() ? ".BR ov\\-pipeline\\-" : " ,\n.BR ov\\-pipeline\\-") +
                      Plain(row.name) + " (1)";
    page.Line(others);
    return page.Text();
}

} // namespace

std::string ManualPage(const std::string& command) {
    const CommandRow* const row = FindCommand(command);
    return row != nullptr ? PageOfCommand(*row) : PageOfProgram();
}

} // namespace OvPipeline
