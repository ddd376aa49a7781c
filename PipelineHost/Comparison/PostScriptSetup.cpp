#include "Comparison/PostScriptSetup.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace OvPipeline {

namespace {

constexpr std::string_view blanks = std::string_view(" \t\r\n\f\0", 6);
constexpr std::string_view delimiters = std::string_view(" \t\r\n\f\0()<>[]{}/%", 16);

// What stands around each feature of a set-up and says nothing itself.
constexpr std::array frames{std::string_view("featurebegin {"), std::string_view("} featurecleanup")};

struct Token {
    std::string_view text;
    std::size_t line;
};

class Scanner {
public:
    explicit Scanner(std::string_view text) : m_text(text) {}

    std::optional<Token> Next() {
        SkipBlanks();
        if (m_at >= m_text.size()) return std::nullopt;
        const std::size_t begin = m_at;
        const std::size_t line = m_line;
        m_at = End(begin);
        const std::string_view token = m_text.substr(begin, m_at - begin);
        m_line += static_cast<std::size_t>(std::ranges::count(token, '\n'));
        return Token{token, line};
    }

private:
    void SkipBlanks() {
        for (; m_at < m_text.size(); ++m_at) {
            if (m_text[m_at] == '%') {
                m_at = (std::min)(m_text.find_first_of("\r\n", m_at), m_text.size());
                if (m_at == m_text.size()) return;
            } else if (blanks.find(m_text[m_at]) == std::string_view::npos) {
                return;
            }
            if (m_text[m_at] == '\n') ++m_line;
        }
    }

    // Behind the token that begins there.
    std::size_t End(std::size_t begin) const {
        const std::string_view rest = m_text.substr(begin);
        switch (rest.front()) {
        case '(':
            return begin + StringLength(rest);
        case '<':
            if (rest.starts_with("<<")) return begin + 2;
            return (std::min)(m_text.find('>', begin), m_text.size() - 1) + 1;
        case '>':
            return begin + (rest.starts_with(">>") ? 2 : 1);
        case '[':
        case ']':
        case '{':
        case '}':
        case ')':
            return begin + 1;
        default:
            // A name is its slash, or both of them, and what follows.
            const std::size_t name = (std::min)(rest.find_first_not_of('/'), std::size_t{2});
            return (std::min)(m_text.find_first_of(delimiters, begin + name), m_text.size());
        }
    }

    static std::size_t StringLength(std::string_view text) {
        std::size_t depth = 0;
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (text[at] == '\\')
                ++at;
            else if (text[at] == '(')
                ++depth;
            else if (text[at] == ')' && --depth == 0)
                return at + 1;
        }
        return text.size();
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    std::size_t m_line = 0;
};

bool Opens(std::string_view token) { return token == "<<" || token == "[" || token == "{"; }
bool Closes(std::string_view token) { return token == ">>" || token == "]" || token == "}"; }

// Behind the object that begins there: a token, or all of a bracket.
std::size_t ObjectEnd(const std::vector<Token>& tokens, std::size_t begin, std::size_t end) {
    std::size_t depth = 0;
    for (std::size_t at = begin; at < end; ++at) {
        if (Opens(tokens[at].text)) ++depth;
        if (Closes(tokens[at].text) && depth > 0) --depth;
        if (depth == 0) return at + 1;
    }
    return end;
}

std::string Text(const std::vector<Token>& tokens, std::size_t begin, std::size_t end) {
    std::string text;
    for (std::size_t at = begin; at < end; ++at)
        text.append(text.empty() ? "" : " ").append(tokens[at].text);
    return text;
}

// A key that is a name and its value, one behind the other. Where the entries are computed, all stands as
// one.
void AddEntries(DeviceStream::Values& device, const std::vector<Token>& tokens, std::size_t begin,
                std::size_t end) {
    std::vector<std::pair<std::string, std::string>> entries;
    for (std::size_t at = begin; at < end;) {
        const std::size_t value = at + 1;
        if (!tokens[at].text.starts_with('/') || value >= end) {
            device["(computed)"].push_back(Text(tokens, begin, end));
            return;
        }
        const std::size_t next = ObjectEnd(tokens, value, end);
        entries.emplace_back(tokens[at].text, Text(tokens, value, next));
        at = next;
    }
    for (auto& [key, value] : entries)
        device[key].push_back(std::move(value));
}

} // namespace

PostScriptSetup PostScriptSetup::Read(std::string_view text) {
    std::vector<Token> tokens;
    Scanner scanner(text);
    while (const auto token = scanner.Next())
        tokens.push_back(*token);

    PostScriptSetup setup;
    std::vector<bool> isTaken(tokens.size());
    std::vector<std::size_t> open; // the places of <<
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        if (tokens[at].text == "<<") open.push_back(at);
        if (tokens[at].text != ">>" || open.empty()) continue;
        const std::size_t begin = open.back();
        open.pop_back();
        if (!open.empty() || at + 1 == tokens.size() || tokens[at + 1].text != "setpagedevice") continue;
        AddEntries(setup.device, tokens, begin + 1, at);
        std::fill(isTaken.begin() + static_cast<std::ptrdiff_t>(begin),
                  isTaken.begin() + static_cast<std::ptrdiff_t>(at) + 2, true);
    }
    std::optional<std::size_t> line;
    const auto dropFrame = [&] {
        if (!setup.commands.empty() && std::ranges::find(frames, setup.commands.back()) != frames.end())
            setup.commands.pop_back();
    };
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        if (isTaken[at]) continue;
        if (line != tokens[at].line) {
            dropFrame();
            setup.commands.emplace_back();
        }
        line = tokens[at].line;
        std::string& command = setup.commands.back();
        command.append(command.empty() ? "" : " ").append(tokens[at].text);
    }
    dropFrame();
    return setup;
}

} // namespace OvPipeline
