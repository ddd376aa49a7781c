#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace OvPipeline {

/// A part that a page uses, or a ticket.
struct OutlinePart {
    std::string kind;
    std::string name;
    std::uint64_t bytes = 0; // unpacked
    bool isShown = false;    // for an earlier page, or level
    bool viaDictionary = false;
};

/// The job itself, a document or a page, and where the rest of the report speaks of it.
struct OutlineLevel {
    enum class Kind { Job, Document, Page };

    Kind kind = Kind::Job;
    std::uint64_t number = 0;             // of a document or a page in the job, from 1
    std::string name;                     // of the part
    std::uint64_t bytes = 0;              // of its markup, unpacked
    std::string size;                     // of a page, as its document says it, in 1/96 inch; may be empty
    std::string problem;                  // what keeps a page from being read, in words
    std::optional<std::string> ticket;    // the name of its own
    std::vector<OutlinePart> parts;       // its ticket, and what it uses
    std::size_t settings = 0;             // which table of settings holds for it
    std::vector<std::size_t> annotations; // of a page: which tables say what is put onto it

    /// "Job", "Document 2", "Page 3".
    std::string Title() const;
};

/// A job's documents and pages, in order: the job, and each document before its pages.
struct JobOutline {
    std::string file;
    std::string format; // "XPS" or "OpenXPS"
    std::uint64_t bytes = 0;
    std::uint64_t parts = 0;
    std::uint64_t documents = 0;
    std::uint64_t pages = 0; // that are in the report
    std::vector<OutlineLevel> levels;

    /// What levels are called together, "the job, document 1, pages 1-98 and 100", by their places in levels,
    /// ascending. Pages are counted through the job.
    std::string Names(const std::vector<std::size_t>& places) const;
};

/// "2-5,9": ascending numbers as ranges.
std::string RangesOf(const std::vector<std::uint64_t>& numbers);

} // namespace OvPipeline
