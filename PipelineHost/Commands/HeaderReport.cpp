#include "Commands/HeaderReport.h"

#include <algorithm>

namespace OvPipeline {

namespace {

using Lines = std::vector<std::string>;

constexpr std::size_t sectionCount = HeaderText::sectionCount;

std::string Whole(const HeaderText::Pieces& pieces) {
    std::string text;
    for (const std::string& piece : pieces)
        text += piece;
    return text;
}

std::string Line(const FamilyHeader::Cause& cause) {
    const std::string source = cause.answer.SourceName();
    const std::string value = cause.answer.Text();
    return "      <- " + cause.name + (value.empty() ? "" : " = " + value) +
           (source.empty() ? "" : " (" + source + ")");
}

void WriteCauses(JsonText& json, const std::vector<FamilyHeader::Cause>& causes) {
    json.Key("causes").BeginArray();
    for (const auto& [name, answer] : causes) {
        json.BeginObject().Key("name").Text(name).Key("value").Text(answer.Text());
        json.Key("source").Text(answer.SourceName()).EndObject();
    }
    json.EndArray();
}

// The texts of a section, each once, in an order that suits all of them: what only one family has stands
// behind what it has before it, or before what it has behind it.
HeaderText::Pieces Merged(const std::vector<FamilyHeader>& headers, std::size_t section) {
    HeaderText::Pieces merged;
    for (const FamilyHeader& header : headers) {
        const HeaderText::Pieces& pieces = header.Text().sections[section];
        const auto isKnown = [&](const std::string& piece) { return std::ranges::count(merged, piece) != 0; };
        const auto firstKnown = std::ranges::find_if(pieces, isKnown);
        auto place = firstKnown == pieces.end() ? merged.end() : std::ranges::find(merged, *firstKnown);
        for (const std::string& piece : pieces) {
            const auto known = std::ranges::find(merged, piece);
            place = (known != merged.end() ? known : merged.insert(place, piece)) + 1;
        }
    }
    return merged;
}

bool Has(const FamilyHeader& header, std::size_t section, const std::string& piece) {
    return std::ranges::count(header.Text().sections[section], piece) != 0;
}

} // namespace

std::vector<std::string> HeaderReport::AsLines() const {
    Lines lines;
    for (const FamilyHeader& header : m_headers) {
        if (!lines.empty()) lines.emplace_back();
        lines.push_back(std::string(header.Family().name));
        for (std::size_t section = 0; section < sectionCount; ++section) {
            const HeaderText::Pieces& pieces = header.Text().sections[section];
            if (pieces.empty()) continue;
            lines.push_back(std::string("  ") + HeaderText::Title(header.Family(), section));
            for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
                for (const std::string& line : PieceLines(pieces[piece]))
                    lines.push_back("    " + line);
                for (const FamilyHeader::Cause& cause : header.Causes(section, piece))
                    lines.push_back(Line(cause));
                if (m_withCauses && header.Causes(section, piece).empty())
                    lines.emplace_back("      <- the family, where nothing else is asked for");
            }
        }
    }
    return lines;
}

std::vector<std::string> HeaderReport::AsComparison() const {
    Lines lines;
    std::string columns;
    for (const FamilyHeader& header : m_headers)
        columns += std::string(header.Family().name) + "  ";
    for (std::size_t section = 0; section < sectionCount; ++section) {
        const HeaderText::Pieces merged = Merged(m_headers, section);
        if (merged.empty()) continue;
        if (!lines.empty()) lines.emplace_back();
        lines.push_back(columns + HeaderText::names[section].commonTitle);
        for (const std::string& piece : merged) {
            std::string marks;
            for (const FamilyHeader& header : m_headers) {
                marks += Has(header, section, piece) ? 'x' : '.';
                marks.append(header.Family().name.size() + 1, ' ');
            }
            for (const std::string& line : PieceLines(piece)) {
                lines.push_back(marks + line);
                marks.assign(marks.size(), ' ');
            }
        }
    }
    return lines;
}

JsonText HeaderReport::AsJson() const {
    JsonText json;
    json.BeginArray();
    for (const FamilyHeader& header : m_headers) {
        json.BeginObject().Key("family").Text(header.Family().name);
        for (std::size_t section = 0; section < sectionCount; ++section)
            json.Key(HeaderText::names[section].key).Text(Whole(header.Text().sections[section]));
        if (m_withCauses) {
            json.Key("pieces").BeginArray();
            for (std::size_t section = 0; section < sectionCount; ++section) {
                const HeaderText::Pieces& pieces = header.Text().sections[section];
                for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
                    json.BeginObject()
                        .Key("of")
                        .Text(HeaderText::names[section].key)
                        .Key("text")
                        .Text(pieces[piece]);
                    WriteCauses(json, header.Causes(section, piece));
                    json.EndObject();
                }
            }
            json.EndArray();
        }
        json.EndObject();
    }
    json.EndArray();
    return json;
}

} // namespace OvPipeline
