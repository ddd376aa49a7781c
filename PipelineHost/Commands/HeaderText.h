#pragma once

#include <DeviceControl/DeviceFamily.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace OvPipeline {

/// What a family's generator wrote, in the pieces that stand or fall together: lines of PJL and of comments,
/// and whole features of PostScript. The pieces of a section one behind the other are its text.
struct HeaderText {
    using Pieces = std::vector<std::string>;

    enum Section : std::size_t { Pjl, Setup, Trailer, sectionCount };
    /// What a section is called for people, for all families at once, and in JSON.
    struct SectionNames {
        const char* title;
        const char* commonTitle;
        const char* key;
    };
    static constexpr SectionNames names[sectionCount] = {
        {"PJL header", "PJL header", "pjlCommands"},
        {"set-up", "set-up, page ticket", "setupCommands"},
        {"comments", "comments", "trailerComments"},
    };

    std::array<Pieces, sectionCount> sections;

    static HeaderText Of(const DeviceInstructions& instructions);

    /// What a section of that family holds.
    static const char* Title(const DeviceFamily& family, std::size_t section);
};

/// Which of the pieces the others lack, as positions: what must go so that the one becomes the other.
std::vector<std::size_t> MissingPieces(const HeaderText::Pieces& pieces, const HeaderText::Pieces& others);

/// The lines of a piece, without their line feeds; the one that stands before a feature opens no line.
/// Carriage returns stay, to be seen: families differ in them.
HeaderText::Pieces PieceLines(std::string_view piece);

} // namespace OvPipeline
