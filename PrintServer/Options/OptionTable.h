#pragma once

#include "Queue/QueueOffer.h"

#include <span>
#include <string_view>

namespace OvPrintServer {

/// A word of a client, and the option of the printer that it stands for. Several rows of one word are tried
/// in their order, until the printer has the option.
struct OptionWord {
    std::string_view word;
    std::string_view option;
};

/// How an option of the print server becomes a setting of the ticket.
enum class How {
    Choice,        // an option of a feature: by the row's words, else by its own name
    Bool,          // as Choice, of true and false
    Size,          // a paper by its size: an option of the feature, or a size of the job's own
    Media,         // sizes, trays and kinds of paper by one list
    MediaCol,      // a collection of them
    Resolution,    // an option by its dots per inch
    PagesPerSheet, // an option by its count
    Finishings,    // a list; each word has a feature of its own
    Setting,       // a setting of the job by the device's own name, in the public document settings
    Passcode,      // the job waits for it at the printer
    Pages,         // the pages of the job that are printed
    Obey           // whether the job is to fail where an option cannot be had
};

/// Who says so. An attribute of IPP wins over a keyword of a PPD.
enum class Vocabulary { Ipp, Ppd };

struct OptionRow {
    std::string_view name;
    Vocabulary vocabulary;
    How how;
    std::string_view setting; // the feature or parameter without its prefix, or the device's name
    std::span<const OptionWord> words;
    /// What stands there for jobs that do not care: no wish of theirs. "default": the choice of the
    /// default ticket, which the server fills in.
    std::string_view filler = {};
};
inline constexpr std::string_view fillerOfQueue = "default";

/// A word of finishings, the feature that carries it out, and the option there.
struct FinishingWord {
    std::string_view word;
    std::string_view feature;
    std::string_view option;
};

/// All options that are known: those of IPP, then those of PPDs. An option may have several rows, each with
/// another setting.
std::span<const OptionRow> GetOptionRows() noexcept;
std::span<const FinishingWord> GetFinishingWords() noexcept;

/// Whether an option is known by its name alone: what a server adds for itself.
bool IsServersOwn(std::string_view name) noexcept;

// Names that the parts of `media` and `media-col` have there, and their features.
inline constexpr std::string_view mediaSizeFeature = "PageMediaSize";
inline constexpr std::string_view mediaSourceFeature = "PageInputBin";
inline constexpr std::string_view mediaTypeFeature = "PageMediaType";
inline constexpr std::string_view mediaColorFeature = "PageMediaColor";
inline constexpr std::string_view passcodeFeature = "JobPasscode";
inline constexpr std::string_view passcodeParameter = "JobPasscodeString";
inline constexpr std::string_view copiesParameter = "JobCopiesAllDocuments";
inline constexpr std::string_view settingsParameter = "JobOrvelPublicDocSettings";

std::span<const OptionWord> GetMediaSourceWords() noexcept;
std::span<const OptionWord> GetMediaTypeWords() noexcept;

/// Why an option is left that nothing more can be said of.
inline constexpr const char* noSuchOption = "the printer does not have it";

/// The option that the first row of the word names which the printer has; where no row has the word, one of
/// the printer's own names. Null where there is none.
const OfferedOption* FindByWords(const OfferedFeature& feature, std::span<const OptionWord> words,
                                 std::string_view value);

} // namespace OvPrintServer
