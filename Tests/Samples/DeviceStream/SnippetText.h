#pragma once

#include <optional>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

/// A feature's command in its frame, as text.
struct SnippetText {
    std::string name;    // the feature and the option, as the comment has them
    std::string command; // with what the option has on further lines
    std::string whole;

    /// Of all frames of a text that is nothing but frames; none where it is not.
    static std::vector<SnippetText> Of(std::string_view setup) {
        constexpr std::string_view begin = "\nfeaturebegin{\n%%BeginFeature: *";
        constexpr std::string_view end = "\n%%EndFeature\n}featurecleanup\n";
        std::vector<SnippetText> snippets;
        while (!setup.empty()) {
            const std::size_t length = setup.find(end);
            if (!setup.starts_with(begin) || length == std::string_view::npos) return {};
            const std::string_view inside = setup.substr(begin.size(), length - begin.size());
            const std::size_t line = inside.find('\n');
            if (line == std::string_view::npos) return {};
            snippets.push_back({std::string(inside.substr(0, line)), std::string(inside.substr(line)),
                                std::string(setup.substr(0, length + end.size()))});
            setup.remove_prefix(length + end.size());
        }
        return snippets;
    }

    /// PostScript that leaves true where the page device and the color dictionaries have what the command
    /// names, read from the text alone: the entries of each dictionary that is set, or what is put where.
    /// None for a command that computes what it sets.
    std::optional<std::string> Check() const {
        static const std::regex brackets(R"(\((<<|>>) ?\) ?cvx exec)");
        std::string text = std::regex_replace(command, brackets, " $1 ");
        text = std::regex_replace(text, std::regex("/ HWResolution"), "/HWResolution ");
        if (text.find("currentpagedevice") != std::string::npos || text.find("ifelse") != std::string::npos ||
            text.find(" exec") != std::string::npos)
            return std::nullopt;
        return text.find("setpagedevice") != std::string::npos ? CheckOfEntries(text) : CheckOfPuts(text);
    }

private:
    static std::vector<std::string> Tokens(const std::string& text) {
        static const std::regex token(R"(<<|>>|\[[^\]]*\]|\([^)]*\)|/?[^\s/\[\](){}<>]+)");
        return {std::sregex_token_iterator(text.begin(), text.end(), token), {}};
    }

    /// "true", with a test for each entry. A later dictionary has the last word.
    static std::string CheckOfEntries(const std::string& text) {
        std::string check = "true";
        int depth = 0;
        std::string value;
        std::string key;
        const auto finish = [&] {
            if (!key.empty()) check += " " + key + " device" + value + " same and";
            key.clear();
            value.clear();
        };
        for (const std::string& token : Tokens(text)) {
            if (token == ">>" && --depth == 0) finish();
            if (depth == 1 && token.starts_with('/') && (key.empty() || !value.empty())) {
                finish();
                key = token;
            } else if (depth > 0) {
                value += " " + token;
            }
            if (token == "<<") ++depth;
        }
        return check;
    }

    static std::string CheckOfPuts(const std::string& text) {
        std::string check = "true";
        std::vector<std::string> clause;
        for (const std::string& token : Tokens(text)) {
            if (token != "put") {
                clause.push_back(token);
                continue;
            }
            check += " " + clause.at(0) + " " + clause.at(1) + " get";
            for (std::size_t index = 2; index < clause.size(); ++index)
                check += " " + clause[index];
            check += " same and";
            clause.clear();
        }
        return check;
    }
};
